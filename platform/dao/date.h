#pragma once

#include <compare>

namespace dao {

// A point in time: days since 30 December 1899, the time of day behind the point.
struct Date {
    double days = 0;
    constexpr auto operator<=>(const Date&) const = default;
};

}  // namespace dao
