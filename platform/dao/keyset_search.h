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
    // What meets a criterion: the keys of its rows, and the only one of them where it came with its key.
    struct Met {
        std::vector<std::int64_t> keys;
        RowBlock row;
    };

    std::optional<Key> keyIn(const sql::Expression& criterion) const;
    std::optional<std::size_t> findByKey(const Key& key);
    std::optional<std::size_t> findByStatement(const sql::Expression& criterion);
    // Nothing: the tables have changed, or it failed.
    std::optional<Met> metAsTablesStood(const sql::Expression& criterion) const;
    Met rowsThatMeet(const sql::Expression& criterion) const;
    bool readFirst(const sql::WrittenSelect& find, Met& met) const;
    std::optional<std::size_t> fetchFirstOf(Met&& met);

    const KeysetView& set_;
    KeyedBlock& rows_;
};

}  // namespace dao
