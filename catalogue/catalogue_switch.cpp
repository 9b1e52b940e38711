#include "catalogue/catalogue_switch.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/dressing.h"
#include "platform/controls/pictures.h"

namespace {

constexpr int kMargin = 4, kIconSize = 16;  // logical pixels
constexpr int kFirstHolder = 3;             // the panes have the numbers before

// Grey, but still to be read from a chair's distance.
QColor greyOf(const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText), ground = palette.color(QPalette::Window);
    const auto mix = [](int a, int b) { return (a + b) / 2; };
    return QColor(mix(text.red(), ground.red()), mix(text.green(), ground.green()),
                  mix(text.blue(), ground.blue()));
}

}  // namespace

CatalogueSwitch::CatalogueSwitch(int index, const Facts& facts, QWidget* parent)
    : QWidget(parent), facts_(facts) {
    setObjectName(arrayName("Picture1", kFirstHolder + index));
    auto* picture = new QLabel(this);
    platform::keepDressed(*picture, [picture, name = facts.picture] {
        picture->setPixmap(platform::icon(QLatin1String(name)).pixmap(kIconSize));
    });
    label_ = new QLabel(GetResString(facts.label), this);
    label_->setObjectName(arrayName("Label1", index));
    label_->setAccessibleName(label_->text());
    label_->setFocusPolicy(Qt::TabFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kMargin, 0, kMargin, 0);
    row->setSpacing(kMargin);
    row->addWidget(picture);
    row->addWidget(label_);
}

void CatalogueSwitch::refresh() {
    platform::keepDressed(*label_, [this] { showWhetherOn(); });
    const QString tip = GetResString(on ? facts_.tipOn : facts_.tipOff);
    label_->setToolTip(tip);
    setToolTip(tip);
    emit refreshed();
}

void CatalogueSwitch::showWhetherOn() {
    QPalette colours;
    if (!on) {
        colours.setColor(QPalette::WindowText, greyOf(QApplication::palette(label_)));
    }
    label_->setPalette(colours);
}

void CatalogueSwitch::turn() {
    on = !on;
    refresh();
    emit turned();
}

bool CatalogueSwitch::isHitBy(const QObject* watched) const {
    return watched == this || watched->parent() == this;
}
