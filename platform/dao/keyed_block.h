#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/dao/keyed_reader.h"
#include "platform/dao/small_set.h"
#include "platform/dao/walk_pace.h"

namespace dao {

// The rows of a keyset that are in hand: a block ahead of whoever walks, dropped where others may have
// written.
class KeyedBlock {
 public:
    KeyedBlock(const KeysetView& set, RowBlock& rows, const std::vector<char>& asked)
        : set_(set), reader_(set, asked), rows_(rows), asked_(asked) {}

    const RowBlock& rows() const { return rows_; }
    // For another statement, or the same with its keys anew. `small`: the rows that came with the keys, where
    // they did.
    void restart(std::shared_ptr<const SmallSet> small);
    const std::shared_ptr<const SmallSet>& small() const { return small_; }
    void release() noexcept;
    void drop() noexcept;            // the next fetch reads
    void endWalk() { pace_.end(); }  // the row that is fetched next is no step of one
    // True: whether others have written is not known, and the current row is to be fetched again.
    bool distrust();

    // Where it lies among rows(); nothing: somebody has deleted it.
    std::optional<std::size_t> fetch(std::size_t row);
    // The row as it is now, with all its fields and without any other. False: somebody has deleted it.
    bool fetchAlone(std::size_t row);
    // The same where the row has been read already.
    void keep(std::size_t row, RowBlock&& read);

 private:
    bool holds(std::size_t row) const { return row - first_ < places_.size(); }
    void loadOnTheWay(std::size_t row);
    void load(const RowRun& run);
    bool readSmall(const RowRun& run);

    const KeysetView& set_;
    KeyedReader reader_;
    std::shared_ptr<const SmallSet> small_;
    RowBlock& rows_;
    const std::vector<char>& asked_;
    std::vector<std::size_t> places_;  // where among them the rows from first_ on lie
    std::size_t first_ = 0;
    std::int64_t generation_ = -1;
    std::optional<std::int64_t> version_;  // nothing: nobody has asked
    WalkPace pace_;
};

}  // namespace dao
