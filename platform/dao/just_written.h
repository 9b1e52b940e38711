#pragma once

#include <cstddef>
#include <cstdint>

namespace dao {

class OpenFile;

// The row of a keyset that an Update has written last.
class JustWritten {
 public:
    void note(std::size_t row, OpenFile& in);
    // Whether that was the last that was asked of a store that is far: then nobody need ask whether the row
    // is there. Whoever looks at it fetches it all the same, as it is by then.
    bool isLast(std::size_t row, OpenFile& in) const;

 private:
    std::size_t row_ = 0;
    std::int64_t generation_ = -1;
    std::int64_t asked_ = -1;  // how often the store had been asked by then
};

}  // namespace dao
