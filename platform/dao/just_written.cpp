#include "platform/dao/just_written.h"

#include "platform/dao/open_file.h"

namespace dao {

void JustWritten::note(std::size_t row, OpenFile& in) {
    row_ = row;
    generation_ = in.generation();
    asked_ = in.store().roundTrips();
}

bool JustWritten::isLast(std::size_t row, OpenFile& in) const {
    const driver::Store& store = in.store();
    return store.isFar() && row == row_ && in.generation() == generation_ && store.roundTrips() == asked_;
}

}  // namespace dao
