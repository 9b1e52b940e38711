#include "platform/report/contents_pane.h"

#include <QList>
#include <algorithm>

#include "platform/controls/cut_texts.h"
#include "platform/report/page_view.h"

namespace report {
namespace {

constexpr int kPageRole = Qt::UserRole;
constexpr int kTopRole = Qt::UserRole + 1;

}  // namespace

ContentsPane::ContentsPane(const std::vector<ContentsEntry>& contents, PageView& view, QWidget* parent)
    : QTreeWidget(parent) {
    setObjectName(QStringLiteral("Contents"));
    setAccessibleName(QStringLiteral("Sadrzaj"));
    setHeaderLabel(QStringLiteral("Sadrzaj"));
    setMinimumWidth(140);
    platform::tellCutTexts(*this);
    fill(contents);
    connect(this, &QTreeWidget::currentItemChanged, this, [&view](QTreeWidgetItem* item) {
        if (item) {
            view.showPlace(item->data(0, kPageRole).toInt(), item->data(0, kTopRole).toDouble());
        }
    });
}

void ContentsPane::fill(const std::vector<ContentsEntry>& contents) {
    QList<QTreeWidgetItem*> open;  // the last entry of each level
    for (const ContentsEntry& entry : contents) {
        const qsizetype level = std::clamp<qsizetype>(entry.level, 0, open.size());
        open.resize(level);
        auto* item = open.isEmpty() ? new QTreeWidgetItem(this) : new QTreeWidgetItem(open.last());
        item->setText(0, entry.text);
        item->setToolTip(0, entry.text);
        item->setData(0, kPageRole, entry.page);
        item->setData(0, kTopRole, entry.top);
        open.append(item);
    }
    expandAll();
    setRootIsDecorated(open.size() > 1 || topLevelItemCount() < static_cast<int>(contents.size()));
}

}  // namespace report
