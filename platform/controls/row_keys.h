#pragma once

#include <QHash>
#include <QString>

#include "platform/system/trap.h"

namespace platform {

// Throws RunError 35602: a row has to have a key, and one that no other row of its list has.
[[noreturn]] inline void refuseKey(const QString& key) {
    throw RunError(35602, QStringLiteral("Key is not unique in collection: %1").arg(key));
}

// The rows of a list, numbered from 1, by their keys; `Key` is whatever tells them apart, the key itself or
// the number that it is made of.
template <typename Key>
class RowKeys {
 public:
    int count() const { return static_cast<int>(rows_.size()); }
    int find(const Key& key) const { return rows_.value(key); }  // 0: none
    void reserve(qsizetype rows) { rows_.reserve(rows); }

    // Throws RunError 35602 where a row has the key already; `textOf` gives it as its list writes it.
    template <typename TextOf>
    void needNew(const Key& key, const TextOf& textOf) const {
        if (rows_.contains(key)) {
            refuseKey(textOf(key));
        }
    }
    void put(const Key& key, int row) { rows_.insert(key, row); }
    void remove(const Key& key) { rows_.remove(key); }
    void clear() { rows_.clear(); }

 private:
    QHash<Key, int> rows_;
};

}  // namespace platform
