#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "platform/controls/list_item.h"
#include "platform/controls/made_rows.h"
#include "platform/controls/row_keys.h"

namespace platform {

// The rows of a list, counted from 0, each found by its key. Each row has a serial number that only grows
// from top to bottom: rows to be made on demand carry their own index, rows added later go on from there. So
// a row is found by its serial, whatever has been taken away above it, and a list of a whole shop's services
// costs nothing a row until somebody looks.
class ListRows {
 public:
    using Make = std::function<ListItem(int)>;
    using Find = std::function<int(const QString&)>;

    int count() const { return lastSerial_ - static_cast<int>(gone_.size()); }
    int madeCount() const { return items_.count(); }
    bool allMade() const { return madeCount() == count(); }
    // The row, made now if it was not yet. Throws what `make` throws. Where the engine is at work for a
    // LongWait, a row that was not made is empty until it is looked at again.
    const ListItem& item(int row) const;
    int rowOf(const QString& key) const;  // -1: none

    void clear();
    void setLazy(int count, Make make, Find find);
    // A key that a row may be given: not empty, and no other row's. Otherwise RunError 35602.
    void checkNewKey(const QString& key) const;
    void add(ListItem item);
    void change(int row, const std::function<void(ListItem&)>& change);  // 35602
    void remove(int row);

 private:
    int serialOf(int row) const;
    int rowOfSerial(int serial) const;  // -1: taken away, or never there
    const RowKeys<QString>& madeKeys() const;

    int lastSerial_ = 0;
    std::vector<int> gone_;  // the serials that were taken away, ascending
    mutable MadeRows items_;
    // The keys of these. Rows that were made since anybody looked for a key are still to be entered.
    mutable RowKeys<QString> keys_;
    mutable std::vector<int> toEnter_;
    Make make_;
    Find find_;
};

}  // namespace platform
