#pragma once

#include <cstdint>

// Days of the engine's calendar: whole days since 30 December 1899, and what day that is.
namespace dao {

struct CivilDay {
    std::int64_t year = 0;
    int month = 0;
    int day = 0;
};

CivilDay civilFromDays(std::int64_t days);
std::int64_t daysFromCivil(const CivilDay& day);

// A date before the first day still has its time of day counted forward: -1.25 is six in the morning of the
// 29th. This gives the point on a straight line, in days.
double linearDays(double date);

// This computer's date and time of day, to the second.
double currentDate();

}  // namespace dao
