#include "platform/dao/key_runs.h"

#include <algorithm>
#include <numeric>

namespace dao {
namespace {

// In the mean, at the least: a run takes the room of two numbers, and has to be searched for.
constexpr std::size_t kNumbersOfARun = 8;

}  // namespace

KeyRuns::KeyRuns(std::int64_t first, std::size_t count) : count_(count) {
    if (count > 0) {
        runs_.push_back({first, 0});
    }
}

KeyRuns KeyRuns::of(const std::vector<std::int64_t>& numbers) {
    KeyRuns all;
    all.count_ = numbers.size();
    for (std::size_t place = 0; place < numbers.size(); ++place) {
        if (place > 0 && numbers[place] == numbers[place - 1] + 1) {
            continue;
        }
        if (all.runs_.size() > numbers.size() / kNumbersOfARun) {
            return {};
        }
        all.runs_.push_back({numbers[place], place});
    }
    return all;
}

std::size_t KeyRuns::runOf(std::size_t place) const {
    const auto behind = std::ranges::upper_bound(runs_, place, {}, &Run::place);
    return static_cast<std::size_t>(behind - runs_.begin()) - 1;
}

std::int64_t KeyRuns::at(std::size_t place) const {
    const Run& run = runs_[runOf(place)];
    return run.first + static_cast<std::int64_t>(place - run.place);
}

std::optional<std::size_t> KeyRuns::find(std::int64_t number) const {
    const auto behind = std::ranges::upper_bound(runs_, number, {}, &Run::first);
    if (behind == runs_.begin()) {
        return std::nullopt;
    }
    const auto run = static_cast<std::size_t>(behind - runs_.begin()) - 1;
    const std::uint64_t steps =
        static_cast<std::uint64_t>(number) - static_cast<std::uint64_t>(runs_[run].first);
    return steps < endOf(run) - runs_[run].place ? std::optional(runs_[run].place + steps) : std::nullopt;
}

std::vector<std::int64_t> KeyRuns::each() const {
    std::vector<std::int64_t> numbers(count_);
    for (std::size_t run = 0; run < runs_.size(); ++run) {
        const auto begin = numbers.begin();
        std::iota(begin + static_cast<std::ptrdiff_t>(runs_[run].place),
                  begin + static_cast<std::ptrdiff_t>(endOf(run)), runs_[run].first);
    }
    return numbers;
}

bool KeyRuns::append(std::int64_t number) {
    if (isEmpty()) {
        return false;
    }
    const std::int64_t last = at(count_ - 1);
    if (number <= last) {
        return false;
    }
    if (number != last + 1) {
        runs_.push_back({number, count_});
    }
    ++count_;
    return true;
}

// Those before it and those behind it are a run each, where there are any.
void KeyRuns::erase(std::size_t place) {
    const std::size_t hit = runOf(place);
    const Run before = runs_[hit];
    const Run behind = {at(place) + 1, place + 1};
    const bool hasBehind = behind.place < endOf(hit);
    auto run = runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(hit));
    if (hasBehind) {
        run = runs_.insert(run, behind);
    }
    if (before.place < place) {
        run = runs_.insert(run, before) + 1;
    }
    std::for_each(run, runs_.end(), [](Run& later) { --later.place; });
    --count_;
}

}  // namespace dao
