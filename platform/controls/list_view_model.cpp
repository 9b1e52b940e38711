#include "platform/controls/list_view_model.h"

#include <algorithm>
#include <utility>

#include "platform/system/trap.h"

namespace platform {
namespace {

void refuseDuplicate(const QString& key) {
    throw RunError(35602, QStringLiteral("Key is not unique in collection: %1").arg(key));
}

}  // namespace

int ListViewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
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
    reading([&] { row = &item(index.row()); });
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

void ListViewModel::forgetRows() {
    rows_.clear();
    made_.clear();
    nextSerial_ = 1;
    make_ = {};
    find_ = {};
}

void ListViewModel::clear() {
    beginResetModel();
    forgetRows();
    endResetModel();
}

void ListViewModel::setLazy(int count, Make make, Find find) {
    beginResetModel();
    forgetRows();
    rows_.reserve(static_cast<size_t>(std::max(count, 0)));
    for (; nextSerial_ <= count; ++nextSerial_) {
        rows_.push_back({nextSerial_, nullptr});
    }
    make_ = std::move(make);
    find_ = std::move(find);
    endResetModel();
}

void ListViewModel::add(ListItem item) {
    if (item.Key.isEmpty() || rowOf(item.Key) >= 0) {
        refuseDuplicate(item.Key);
    }
    beginInsertRows({}, rowCount(), rowCount());
    made_.insert(item.Key, nextSerial_);
    rows_.push_back({nextSerial_++, std::make_unique<ListItem>(std::move(item))});
    endInsertRows();
}

void ListViewModel::change(int row, const std::function<void(ListItem&)>& change) {
    ListItem changed = item(row);
    const QString oldKey = changed.Key;
    change(changed);
    const Row& place = rows_[static_cast<size_t>(row)];
    if (changed.Key != oldKey) {
        if (changed.Key.isEmpty() || rowOf(changed.Key) >= 0) {
            refuseDuplicate(changed.Key);
        }
        made_.remove(oldKey);
        made_.insert(changed.Key, place.serial);
    }
    *place.item = std::move(changed);
    emit dataChanged(index(row, 0), index(row, std::max(columnCount() - 1, 0)));
}

void ListViewModel::remove(int row) {
    beginRemoveRows({}, row, row);
    const auto place = rows_.begin() + row;
    if (place->item) {
        made_.remove(place->item->Key);
    }
    rows_.erase(place);
    endRemoveRows();
}

const ListItem& ListViewModel::item(int row) const {
    const Row& place = rows_[static_cast<size_t>(row)];
    if (!place.item) {
        ListItem made = make_(place.serial);
        made_.insert(made.Key, place.serial);
        place.item = std::make_unique<ListItem>(std::move(made));
    }
    return *place.item;
}

int ListViewModel::rowOfSerial(int serial) const {
    const auto before = [](const Row& row, int wanted) { return row.serial < wanted; };
    const auto found = std::lower_bound(rows_.begin(), rows_.end(), serial, before);
    return found != rows_.end() && found->serial == serial ? static_cast<int>(found - rows_.begin()) : -1;
}

int ListViewModel::rowOf(const QString& key) const {
    if (const auto made = made_.constFind(key); made != made_.constEnd()) {
        return rowOfSerial(*made);
    }
    const int serial = find_ ? find_(key) : 0;
    const int row = serial > 0 ? rowOfSerial(serial) : -1;
    // A row that is made and not among the keys above goes by another key now.
    return row >= 0 && !rows_[static_cast<size_t>(row)].item ? row : -1;
}

}  // namespace platform
