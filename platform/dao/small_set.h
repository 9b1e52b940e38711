#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/dao/keyset_view.h"
#include "platform/dao/row_block.h"

namespace dao {

// The rows of a small set as they came with their keys when it was opened: looked up by these, each would be
// searched for a second time. They serve for as long as nobody has written.
class SmallSet {
 public:
    static constexpr std::size_t kMost = 8192;

    // Of a set that asks for the rows with one number in a field, as the services of a computer are; nullptr
    // where it asks for others, has more rows than kMost, is far, or its rows cannot be read as they are.
    // The same rows in another order are turned round where they lie, as long as somebody holds them.
    static std::shared_ptr<const SmallSet> read(const KeysetView& set);

    KeyList keys() const;
    // Whether the rows are those that the file has at that version.
    bool stand(std::int64_t generation, std::int64_t version) const {
        return generation == generation_ && version == version_;
    }
    const RowBlock& rows() const { return rows_; }

 private:
    // A column that the rows are ordered by.
    struct Term {
        std::size_t column;
        bool descending;
    };

    static std::vector<Term> orderOf(const KeysetView& set);

    void note(const KeysetView& set);
    void readFrom(const KeysetView& set, std::size_t key);
    bool turnRound(const SmallSet& other, const std::vector<Term>& order);
    bool isWhole() const { return rows_.rows() <= kMost && keys_.size() == rows_.rows(); }

    RowBlock rows_;
    std::vector<std::int64_t> keys_;
    std::string which_;  // what the statement says on which rows they are; empty: there is more to it
    std::int64_t generation_ = -1;
    std::int64_t version_ = -1;
};

}  // namespace dao
