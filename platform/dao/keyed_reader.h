#pragma once

#include <vector>

#include "platform/dao/block_ahead.h"
#include "platform/dao/keyset_view.h"
#include "platform/dao/row_block.h"
#include "platform/dao/row_run.h"

namespace dao {

// Reads rows of a keyset by their keys, with as few statements as the keys allow.
class KeyedReader {
 public:
    static constexpr std::size_t kMissing = static_cast<std::size_t>(-1);
    static constexpr std::size_t kWholeRows =
        32;  // more of them at once are read with the asked fields alone

    // `asked`: of each column, whether it has been looked at.
    KeyedReader(const KeysetView& set, const std::vector<char>& asked) : set_(set), asked_(asked) {}

    // Adds the rows to the block; `places` tells for each of the run where it lies there, kMissing where it
    // has been deleted.
    void read(const RowRun& run, RowBlock& block, std::vector<std::size_t>& places);
    // Whether those rows are read with the fields that have been looked at, and without the others.
    bool readsAskedAlone(const RowRun& run) const { return run.rows > kWholeRows && isDense(run); }
    // Has a store that is far get rows of one range ready that will be read next. Not within a transaction.
    void askAhead(const RowRun& run);
    // Called now and then until they are read: the store goes on sending.
    void takeIn() const { ahead_.takeIn(); }
    void forget() {  // the statement is another one
        ahead_.drop();
        projection_ = {};
    }

 private:
    // The statement cut down to the fields that have been looked at.
    struct Projection {
        std::vector<char> asked;
        CompiledPtr compiled;
        std::vector<int> places;  // as readRows takes them
    };

    bool isDense(const RowRun& run) const;
    std::shared_ptr<driver::Statement> rangeStatement(const RowRun& run);
    BlockAhead::Rows rowsToRead(const RowRun& run) const;
    void readRange(const RowRun& run, RowBlock& block, std::vector<std::size_t>& places);
    void readList(const RowRun& run, RowBlock& block, std::vector<std::size_t>& places) const;
    void readSingly(const RowRun& run, RowBlock& block, std::vector<std::size_t>& places) const;
    const Projection& projection();
    Projection projected() const;

    const KeysetView& set_;
    const std::vector<char>& asked_;
    Projection projection_;
    BlockAhead ahead_;
};

}  // namespace dao
