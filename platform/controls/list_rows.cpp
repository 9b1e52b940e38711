#include "platform/controls/list_rows.h"

#include <algorithm>
#include <utility>

#include "platform/controls/long_wait.h"

namespace platform {

void ListRows::clear() {
    lastSerial_ = 0;
    gone_.clear();
    items_.clear();
    keys_.clear();
    toEnter_.clear();
    make_ = {};
    find_ = {};
}

void ListRows::setLazy(int count, Make make, Find find) {
    clear();
    lastSerial_ = std::max(count, 0);
    make_ = std::move(make);
    find_ = std::move(find);
}

void ListRows::checkNewKey(const QString& key) const {
    if (key.isEmpty() || rowOf(key) >= 0) {
        refuseKey(key);
    }
}

void ListRows::add(ListItem item) {
    keys_.put(item.Key, ++lastSerial_);
    items_.put(lastSerial_, std::move(item));
}

void ListRows::change(int row, const std::function<void(ListItem&)>& change) {
    ListItem changed = item(row);
    const QString oldKey = changed.Key;
    change(changed);
    const int serial = serialOf(row);
    if (changed.Key != oldKey) {
        checkNewKey(changed.Key);
        keys_.remove(oldKey);
        keys_.put(changed.Key, serial);
    }
    items_.put(serial, std::move(changed));
}

void ListRows::remove(int row) {
    const int serial = serialOf(row);
    if (const ListItem* const made = items_.find(serial)) {
        madeKeys();
        keys_.remove(made->Key);
        items_.remove(serial);
    }
    gone_.insert(std::ranges::lower_bound(gone_, serial), serial);
}

const ListItem& ListRows::item(int row) const {
    const int serial = serialOf(row);
    if (const ListItem* const made = items_.find(serial)) {
        return *made;
    }
    if (LongWait::isAway()) {
        static const ListItem unread;
        return unread;
    }
    const ListItem& made = items_.put(serial, make_(serial));
    toEnter_.push_back(serial);
    return made;
}

// As many serials lie before the row's as rows, and those that were taken away between them.
int ListRows::serialOf(int row) const {
    const auto staysAbove = [&](const int& gone) { return gone - (&gone - gone_.data()) - 1 <= row; };
    const auto behind = std::ranges::partition_point(gone_, staysAbove);
    return row + 1 + static_cast<int>(behind - gone_.begin());
}

const RowKeys<QString>& ListRows::madeKeys() const {
    for (const int serial : toEnter_) {
        keys_.put(items_.find(serial)->Key, serial);
    }
    toEnter_.clear();
    return keys_;
}

int ListRows::rowOfSerial(int serial) const {
    const auto place = std::ranges::lower_bound(gone_, serial);
    const bool isThere = serial <= lastSerial_ && (place == gone_.end() || *place != serial);
    return isThere ? serial - 1 - static_cast<int>(place - gone_.begin()) : -1;
}

int ListRows::rowOf(const QString& key) const {
    if (const int made = madeKeys().find(key); made > 0) {
        return rowOfSerial(made);
    }
    const int serial = find_ ? find_(key) : 0;
    // A row that is made and not among the keys above goes by another key now.
    return serial > 0 && !items_.contains(serial) ? rowOfSerial(serial) : -1;
}

}  // namespace platform
