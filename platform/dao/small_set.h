#pragma once

#include <cstdint>
#include <memory>
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
    static std::shared_ptr<const SmallSet> read(const KeysetView& set);

    KeyList keys() const;
    // Whether the rows are those that the file has at that version.
    bool stand(std::int64_t generation, std::int64_t version) const {
        return generation == generation_ && version == version_;
    }
    const RowBlock& rows() const { return rows_; }

 private:
    bool readFrom(const KeysetView& set, std::size_t key);

    RowBlock rows_;
    std::vector<std::int64_t> keys_;
    std::int64_t generation_ = -1;
    std::int64_t version_ = -1;
};

}  // namespace dao
