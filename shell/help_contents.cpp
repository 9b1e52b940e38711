#include "shell/help_contents.h"

#include <QHash>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QStyle>

#include "platform/controls/cut_texts.h"
#include "shell/help_controls.h"

namespace {

constexpr int kPageRole = Qt::UserRole;

}  // namespace

HelpContents::HelpContents(QWidget* parent) : QTreeWidget(parent) {
    named(this, "Contents", QStringLiteral("Contents"));
    header()->hide();
    platform::tellCutTexts(*this);
    connect(this, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item != nullptr) {
            emit chosen(item->data(0, kPageRole).toString());
        }
    });
}

void HelpContents::fill(const HelpBook& book) {
    const QSignalBlocker quiet(this);
    clear();
    QHash<QString, QTreeWidgetItem*> items;
    for (const HelpPage& page : book.pages()) {
        auto* item = new QTreeWidgetItem({page.title});
        item->setData(0, kPageRole, page.id);
        items.insert(page.id, item);
    }
    for (const HelpPage& page : book.pages()) {
        QTreeWidgetItem* above = items.value(page.parent);
        above != nullptr ? above->addChild(items.value(page.id)) : addTopLevelItem(items.value(page.id));
    }
    expandAll();
}

void HelpContents::mark(const QString& page) {
    const QSignalBlocker quiet(this);
    for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
        if ((*item)->data(0, kPageRole).toString() == page) {
            setCurrentItem(*item);
        }
    }
}

int HelpContents::wantedWidth() const {
    return sizeHintForColumn(0) + 2 * style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}
