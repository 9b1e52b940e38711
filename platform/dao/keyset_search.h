#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/dao/keyed_block.h"

namespace dao {

// Finds the first row of a keyset that meets a criterion; whoever finds one has it in hand.
class KeysetSearch {
 public:
    KeysetSearch(const KeysetView& set, KeyedBlock& rows) : set_(set), rows_(rows) {}

    // In the order of the set. 3075, 3061 and the like for a criterion that is none.
    std::optional<std::size_t> find(std::string_view criterion);

 private:
    struct Key {
        std::int64_t number;
        int source;
    };
    using Keys = std::vector<std::int64_t>;

    std::optional<Key> keyIn(const sql::Expression& criterion) const;
    std::optional<std::size_t> findByKey(const Key& key);
    std::optional<std::size_t> findByStatement(const sql::Expression& criterion);
    // Nothing: the tables have changed, or it failed.
    std::optional<Keys> keysAsTablesStood(const sql::Expression& criterion) const;
    Keys keysThatMeet(const sql::Expression& criterion) const;
    std::optional<std::size_t> fetchFirstOf(const Keys& keys);

    const KeysetView& set_;
    KeyedBlock& rows_;
};

}  // namespace dao
