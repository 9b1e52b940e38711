#pragma once

#include <cstdint>

namespace dao {

// Whether what was read once may still be shown: until others may have written.
class RowAge {
 public:
    // `generation` counts up once rows read earlier may no longer be as they were.
    void follow(const std::int64_t& generation) { generation_ = &generation; }
    void follow(const RowAge& other) { generation_ = other.generation_; }
    void followNothing() { generation_ = &kNeverOld; }

    void noteRead() { seen_ = *generation_; }
    bool isAsRead() const { return *generation_ == seen_; }

 private:
    static constexpr std::int64_t kNeverOld = 0;

    const std::int64_t* generation_ = &kNeverOld;
    std::int64_t seen_ = -1;
};

}  // namespace dao
