#include "documents/requisition_names.h"

#include "documents/requisition_parts.h"

RequisitionNames::RequisitionNames(QDialog& window)
    : parts_(std::make_unique<RequisitionParts>(window)),
      Data1(&parts_->list.data()),
      Data1Tag(parts_->list.order().tag),
      ListView1(&parts_->list.view()),
      Toolbar1(parts_->bar.toolbar()),
      StatusBar1(&parts_->status.bar()),
      ProgressBar1(parts_->list.cover().progress()) {}

RequisitionNames::~RequisitionNames() = default;

void RequisitionNames::setServiceView(const ServiceView* view) {
    parts_->print.service = view;
}

void RequisitionNames::setServiceID(qint32 id) {
    parts_->list.serviceId = id;
}

qint32 RequisitionNames::ServiceID() const {
    return parts_->list.serviceId;
}

float RequisitionNames::TotalForPayment() const {
    return parts_->list.total();
}

void RequisitionNames::UpdateDATA(const QString& itemKey, bool resetSort) {
    parts_->list.update(itemKey, resetSort);
}

void RequisitionNames::TrebovanjeRefresh(bool resetSort) {
    parts_->list.refresh(resetSort);
}

platform::SortTag RequisitionNames::GetSortTagData(const QString& tag) const {
    return parts_->list.order().read(tag);
}

void RequisitionNames::TrebovanjeDelete() {
    parts_->giveBack.selected();
}

void RequisitionNames::TrebovanjeDeleteAll() {
    parts_->giveBack.all();
}

CatalogueParent& RequisitionNames::catalogueParent() const {
    return parts_->catalogue;
}

QAction* RequisitionNames::toolbarButton(const QString& key) const {
    return parts_->bar.button(key);
}

QAction* RequisitionNames::action(RequisitionCommand command) const {
    return parts_->bar.action(command);
}
