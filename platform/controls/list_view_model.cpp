#include "platform/controls/list_view_model.h"

#include <algorithm>
#include <utility>

#include "platform/system/trap.h"

namespace platform {
int ListViewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_.count();
}

int ListViewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant ListViewModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant(columns.at(index.column()).alignment | Qt::AlignVCenter);
    }
    const bool wantsRow = role == Qt::DisplayRole || (role == Qt::DecorationRole && index.column() == 0);
    if (!wantsRow) {
        return {};
    }
    // Somebody may have deleted the record since the list was opened. Its line stays blank, and the window
    // lives.
    Trap reading;
    const ListItem* row = nullptr;
    reading([&] { row = &rows_.item(index.row()); });
    if (reading.failed()) {
        return {};
    }
    if (role == Qt::DecorationRole) {
        return row->SmallIcon.isEmpty() ? QVariant() : QVariant(smallIcons.value(row->SmallIcon));
    }
    return index.column() == 0 ? row->Text : row->subItems.value(index.column() - 1);
}

QVariant ListViewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columns.size()) {
        return {};
    }
    const Column& column = columns.at(section);
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {  // a narrow column still tells what it is
        return column.text;
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant(column.alignment | Qt::AlignVCenter);
    }
    if (role == Qt::DecorationRole && columnImages.contains(column.icon)) {
        return columnImages.value(column.icon);
    }
    return {};
}

Qt::ItemFlags ListViewModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

void ListViewModel::addColumn(const Column& column) {
    const int at = static_cast<int>(columns.size());
    beginInsertColumns({}, at, at);
    columns.append(column);
    endInsertColumns();
}

void ListViewModel::headerChanged() {
    if (!columns.isEmpty()) {
        emit headerDataChanged(Qt::Horizontal, 0, static_cast<int>(columns.size()) - 1);
    }
}

void ListViewModel::clear() {
    beginResetModel();
    rows_.clear();
    endResetModel();
}

void ListViewModel::setLazy(int count, ListRows::Make make, ListRows::Find find) {
    beginResetModel();
    rows_.setLazy(count, std::move(make), std::move(find));
    endResetModel();
}

void ListViewModel::add(ListItem item) {
    rows_.checkNewKey(item.Key);
    beginInsertRows({}, rowCount(), rowCount());
    rows_.add(std::move(item));
    endInsertRows();
}

void ListViewModel::change(int row, const std::function<void(ListItem&)>& change) {
    rows_.change(row, change);
    emit dataChanged(index(row, 0), index(row, std::max(columnCount() - 1, 0)));
}

void ListViewModel::remove(int row) {
    beginRemoveRows({}, row, row);
    rows_.remove(row);
    endRemoveRows();
}

}  // namespace platform
