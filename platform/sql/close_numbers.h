#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// The numbers of rows lie close together, as a counter gives them: each is a place on a strip then, and
// nothing has to be compared or searched.
namespace sql {

// How many whole numbers follow `first` up to `last`. A lower `last` counts from the top, as unsigned numbers
// do: further than any strip from `first` to a number above it.
constexpr std::uint64_t spanOf(std::int64_t first, std::int64_t last) {
    return static_cast<std::uint64_t>(last) - static_cast<std::uint64_t>(first);
}

// Whether a strip from `first` to `last` has about `places` places, or fewer, for each of `count` numbers.
// Never of none.
constexpr bool areClose(std::int64_t first, std::int64_t last, std::size_t count, std::uint64_t places) {
    return spanOf(first, last) / places < count;
}

// Ascending, each once.
void sortOnce(std::vector<std::int64_t>& numbers);

}  // namespace sql
