#include "shell/help_place_list.h"

#include "platform/controls/cut_texts.h"

namespace {

constexpr int kAddressRole = Qt::UserRole;

}  // namespace

HelpPlaceList::HelpPlaceList(QWidget* parent) : QListWidget(parent) {
    platform::tellCutTexts(*this);
    connect(this, &QListWidget::itemActivated, this, &HelpPlaceList::follow);
    connect(this, &QListWidget::itemClicked, this, &HelpPlaceList::follow);
}

void HelpPlaceList::add(const QString& text, const HelpPlace& place) {
    auto* item = new QListWidgetItem(text, this);
    item->setData(kAddressRole, place.address());
}

void HelpPlaceList::follow(const QListWidgetItem* item) {
    if (item != nullptr) {
        emit chosen(item->data(kAddressRole).toString());
    }
}
