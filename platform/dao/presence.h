#pragma once

#include <memory>

namespace dao {

// Who is in a shop's records: every process that has them open, or one that has them to itself. It ends with
// the process, however that ends.
class Presence {
 public:
    Presence() = default;
    Presence(const Presence&) = delete;
    Presence& operator=(const Presence&) = delete;
    virtual ~Presence() = default;

    // From here on no other process gets in, until the same number of calls to leaveExclusive. False if
    // another process is in; then nothing has changed.
    virtual bool enterExclusive() = 0;
    virtual void leaveExclusive() noexcept = 0;
};

// Numbers from 0 upwards, each for one process alone among all that work on a shop's records.
class Numbers {
 public:
    Numbers() = default;
    Numbers(const Numbers&) = delete;
    Numbers& operator=(const Numbers&) = delete;
    virtual ~Numbers() = default;

    // False if another process holds it, or this one already.
    virtual bool holdNumber(int number) = 0;
    virtual void leaveNumber(int number) noexcept = 0;
    // Whether another process has taken it although it was not let go. Where a lock lasts as long as its
    // holder that does not happen.
    virtual bool isLost(int) const { return false; }
};

// An exclusive use for the length of a block.
class ExclusiveUse {
 public:
    ExclusiveUse() = default;
    explicit ExclusiveUse(std::shared_ptr<Presence> presence);  // 3045 if another process is in
    ExclusiveUse(ExclusiveUse&& other) noexcept : presence_(std::move(other.presence_)) {}
    ExclusiveUse& operator=(ExclusiveUse&& other) noexcept;
    ~ExclusiveUse();

 private:
    std::shared_ptr<Presence> presence_;
};

}  // namespace dao
