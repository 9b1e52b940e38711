#include "catalogue/catalogue_routines.h"

#include "catalogue/catalogue_parts.h"

CatalogueRoutines::CatalogueRoutines(QWidget* window, WindowCommands& commands)
    : CatalogueNames(window, commands), window_(window) {}

void CatalogueRoutines::DataUpdate(int index, const QString& selectKey, bool reset) {
    if (index >= 0 && index < kPanes) {
        parts_->pane(index).update(selectKey, reset);
    }
}

void CatalogueRoutines::RefreshProduct(bool reset) {
    parts_->products.refresh(reset);
}

void CatalogueRoutines::ToolbarUpdate() {
    parts_->bars.update();
}

platform::SortTag CatalogueRoutines::GetSortTagData(const QString& tag) {
    return readSortTag(tag, window_);
}

QString CatalogueRoutines::SetSortTagData(bool sorted, const QString& field, const QString& order) {
    return writeSortTag({sorted, field, order}, window_);
}

void CatalogueRoutines::cP_Click(int item) {
    parts_->menus.click(item);
}

void CatalogueRoutines::cP_ItemHighlight(int item, bool enabled, bool separator) {
    parts_->menus.highlight(item, enabled, separator);
}

void CatalogueRoutines::ShowStatusText(const QString& text, bool sticky) {
    parts_->status.showText(text, sticky);
}

void CatalogueRoutines::SortList(int mode, bool force) {
    const int list = parts_->bars.focusedList(false);
    if (list >= 0) {
        (list == kGroups ? parts_->groups : parts_->manufacturers)
            .order()
            .sortBy(static_cast<SortMode>(mode), force);
    }
}

void CatalogueRoutines::AddNewProduct() {
    parts_->productCommands.add();
}

void CatalogueRoutines::EditProduct() {
    parts_->productCommands.edit();
}

void CatalogueRoutines::DeleteProduct() {
    parts_->productCommands.remove();
}

void CatalogueRoutines::DeleteAllProduct() {
    parts_->productCommands.removeAll();
}

void CatalogueRoutines::AddNewGrpMft() {
    parts_->bars.runOnList(CatalogueCommand::New);
}

void CatalogueRoutines::EditGrpMft() {
    parts_->bars.runOnList(CatalogueCommand::Edit);
}

void CatalogueRoutines::DeleteGrpMft() {
    parts_->bars.runOnList(CatalogueCommand::Delete);
}

void CatalogueRoutines::DeleteAllGrpMft() {
    parts_->bars.runOnList(CatalogueCommand::DeleteAll);
}

void CatalogueRoutines::TrebovanjeExecute() {
    parts_->draw.execute();
}

QAction* CatalogueRoutines::toolbarButton(const QString& key) const {
    return parts_->bars.button(key);
}

const QString& CatalogueRoutines::dragIcon() const {
    return parts_->drag.icon();
}
