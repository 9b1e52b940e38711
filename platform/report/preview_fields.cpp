#include "platform/report/preview_fields.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "platform/controls/wheel.h"
#include "platform/report/page_view.h"

namespace report {
namespace {

constexpr double kZooms[] = {0.5, 0.75, 1.0, 1.25, 1.5, 2.0, 4.0};

QString percent(double zoom) {
    return QStringLiteral("%1%").arg(std::lround(zoom * 100));
}

}  // namespace

PageField::PageField(PageView& view, int pageCount, QWidget* parent) : QSpinBox(parent) {
    setObjectName(QStringLiteral("Page"));
    setAccessibleName(QStringLiteral("Strana"));
    setToolTip(QStringLiteral("Strana (Ctrl+G)"));
    setRange(1, std::max(1, pageCount));
    setSuffix(QStringLiteral(" / %1").arg(pageCount));
    setAlignment(Qt::AlignCenter);
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setKeyboardTracking(false);
    connect(this, &QSpinBox::valueChanged, this, [&view](int page) { view.showPage(page); });
    platform::wheelNeedsFocus(this);
}

void PageField::showPage(int page) {
    const QSignalBlocker quiet(this);
    setValue(page);
}

ZoomField::ZoomField(PageView& view, QWidget* parent) : QComboBox(parent), view_(view) {
    setObjectName(QStringLiteral("Zoom"));
    setAccessibleName(QStringLiteral("Uvecanje"));
    setToolTip(QStringLiteral("Uvecanje"));
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    for (const double zoom : kZooms) {
        addItem(percent(zoom), zoom);
    }
    setMinimumContentsLength(5);
    connect(this, &QComboBox::activated, this, &ZoomField::take);
    connect(lineEdit(), &QLineEdit::returnPressed, this, &ZoomField::read);
    platform::wheelNeedsFocus(this);
}

void ZoomField::showZoom(double zoom) {
    setEditText(percent(zoom));
}

void ZoomField::take(int index) {
    view_.zoom().set(itemData(index).toDouble());
    view_.setFocus();
}

void ZoomField::read() {
    QString text = currentText();
    bool isNumber = false;
    const double typed = text.remove(u'%').trimmed().toDouble(&isNumber);
    if (isNumber && typed > 0) {
        view_.zoom().set(typed / 100);
    }
    showZoom(view_.zoom().factor());
    view_.setFocus();
}

}  // namespace report
