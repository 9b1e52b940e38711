#include "platform/controls/list_rows.h"

#include <algorithm>
#include <utility>

namespace platform {

void ListRows::clear() {
    rows_.clear();
    made_.clear();
    toEnter_.clear();
    nextSerial_ = 1;
    make_ = {};
    find_ = {};
}

void ListRows::setLazy(int count, Make make, Find find) {
    clear();
    rows_.reserve(static_cast<size_t>(std::max(count, 0)));
    for (; nextSerial_ <= count; ++nextSerial_) {
        rows_.push_back({nextSerial_, nullptr});
    }
    make_ = std::move(make);
    find_ = std::move(find);
}

void ListRows::checkNewKey(const QString& key) const {
    if (key.isEmpty() || rowOf(key) >= 0) {
        refuseKey(key);
    }
}

void ListRows::add(ListItem item) {
    made_.put(item.Key, nextSerial_);
    rows_.push_back({nextSerial_++, std::make_unique<ListItem>(std::move(item))});
}

void ListRows::change(int row, const std::function<void(ListItem&)>& change) {
    ListItem changed = item(row);
    const QString oldKey = changed.Key;
    change(changed);
    const Row& place = rows_[static_cast<size_t>(row)];
    if (changed.Key != oldKey) {
        checkNewKey(changed.Key);
        made_.remove(oldKey);
        made_.put(changed.Key, place.serial);
    }
    *place.item = std::move(changed);
}

void ListRows::remove(int row) {
    const auto place = rows_.begin() + row;
    if (place->item) {
        madeKeys();
        made_.remove(place->item->Key);
    }
    rows_.erase(place);
}

const ListItem& ListRows::item(int row) const {
    const Row& place = rows_[static_cast<size_t>(row)];
    if (!place.item) {
        place.item = std::make_unique<ListItem>(make_(place.serial));
        toEnter_.push_back(place.serial);
    }
    return *place.item;
}

const RowKeys<QString>& ListRows::madeKeys() const {
    for (const int serial : toEnter_) {
        made_.put(rows_[static_cast<std::size_t>(rowOfSerial(serial))].item->Key, serial);
    }
    toEnter_.clear();
    return made_;
}

int ListRows::rowOfSerial(int serial) const {
    const auto before = [](const Row& row, int wanted) { return row.serial < wanted; };
    const auto found = std::lower_bound(rows_.begin(), rows_.end(), serial, before);
    return found != rows_.end() && found->serial == serial ? static_cast<int>(found - rows_.begin()) : -1;
}

int ListRows::rowOf(const QString& key) const {
    if (const int made = madeKeys().find(key); made > 0) {
        return rowOfSerial(made);
    }
    const int serial = find_ ? find_(key) : 0;
    const int row = serial > 0 ? rowOfSerial(serial) : -1;
    // A row that is made and not among the keys above goes by another key now.
    return row >= 0 && !rows_[static_cast<size_t>(row)].item ? row : -1;
}

}  // namespace platform
