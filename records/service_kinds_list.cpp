#include "records/service_kinds_list.h"

#include <QListWidget>

#include "platform/controls/cut_texts.h"
#include "platform/controls/link_label.h"
#include "records/field_labels.h"
#include "records/service_row.h"

namespace {
constexpr int kDeselectTopic = 317;
constexpr QLatin1Char kBetween('|');
}  // namespace

ServiceKindsList::ServiceKindsList(QWidget& window)
    : list_(new QListWidget(&window)),
      deselect_(new platform::LinkLabel(QStringLiteral("Deselect all items"), &window)) {
    list_->setObjectName(QStringLiteral("List1"));
    list_->setSelectionMode(QAbstractItemView::MultiSelection);
    list_->setMinimumWidth(window.fontMetrics().averageCharWidth() * 34);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    platform::tellCutTexts(*list_);
    deselect_->setObjectName(QStringLiteral("Label2"));
    deselect_->setProperty(kTopicProperty, kDeselectTopic);
    connect(deselect_, &platform::LinkLabel::clicked, this, [this] { select(service_row::kAnyType); });
}

void ServiceKindsList::fill() {
    list_->clear();
    if (names_.size() > 1) {
        list_->addItems(names_.mid(1));
    } else {
        list_->addItem(QStringLiteral("Other services"));
    }
}

void ServiceKindsList::select(const QString& positions) {
    if (names_.size() <= 1) {
        return;
    }
    list_->setUpdatesEnabled(false);
    list_->clearSelection();
    for (const QString& position : positions.split(kBetween)) {
        if (QListWidgetItem* item = list_->item(position.toInt() - 1)) {
            item->setSelected(true);
        }
    }
    list_->scrollToTop();
    list_->setUpdatesEnabled(true);
}

QString ServiceKindsList::selected() const {
    QStringList positions;
    for (int line = 0; line < list_->count(); ++line) {
        if (list_->item(line)->isSelected()) {
            positions.append(QString::number(line + 1));
        }
    }
    // The first kind stands for anything: it says nothing beside a kind that has a name.
    if (positions.size() > 1 && positions.first() == service_row::kAnyType) {
        positions.removeFirst();
    }
    return positions.isEmpty() ? service_row::kAnyType : positions.join(kBetween);
}
