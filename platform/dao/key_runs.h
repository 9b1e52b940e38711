#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace dao {

// Numbers in ascending order, told by the runs between those that are missing: few of them where few are. The
// place of a number counts from 0.
class KeyRuns {
 public:
    KeyRuns() = default;
    // `first` and those that follow it. Without any it does not matter which that is.
    KeyRuns(std::int64_t first, std::size_t count);
    // Of numbers that ascend. Empty where so many are missing that the runs would spare nothing.
    static KeyRuns of(const std::vector<std::int64_t>& numbers);

    bool isEmpty() const { return runs_.empty(); }
    std::int64_t at(std::size_t place) const;
    std::optional<std::size_t> find(std::int64_t number) const;
    std::vector<std::int64_t> each() const;

    // False, and nothing is done, where there is none before it that it is greater than.
    bool append(std::int64_t number);
    void erase(std::size_t place);

 private:
    // Numbers that follow one by one, from `first` at `place` to the next run.
    struct Run {
        std::int64_t first;
        std::size_t place;
    };
    std::size_t runOf(std::size_t place) const;
    std::size_t endOf(std::size_t run) const {
        return run + 1 < runs_.size() ? runs_[run + 1].place : count_;
    }

    std::vector<Run> runs_;
    std::size_t count_ = 0;
};

}  // namespace dao
