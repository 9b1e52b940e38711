#include "platform/dao/calendar.h"

#include <cmath>
#include <ctime>

namespace dao {
namespace {

// From 1 March of the year 0 to 30 December 1899; a year that begins in March keeps its odd day for the end.
constexpr std::int64_t kDaysToEpoch = 719468 - 25569;
constexpr std::int64_t kDaysInEra = 146097;  // 400 years

}  // namespace

CivilDay civilFromDays(std::int64_t days) {
    const std::int64_t z = days + kDaysToEpoch;
    const std::int64_t era = (z >= 0 ? z : z - (kDaysInEra - 1)) / kDaysInEra;
    const std::int64_t dayOfEra = z - era * kDaysInEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
    CivilDay result;
    result.day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
    result.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
    result.year = yearOfEra + era * 400 + (result.month <= 2 ? 1 : 0);
    return result;
}

std::int64_t daysFromCivil(const CivilDay& day) {
    const std::int64_t year = day.month <= 2 ? day.year - 1 : day.year;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t shifted = day.month > 2 ? day.month - 3 : day.month + 9;
    const std::int64_t dayOfYear = (153 * shifted + 2) / 5 + day.day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kDaysInEra + dayOfEra - kDaysToEpoch;
}

double linearDays(double date) {
    const double whole = std::trunc(date);
    return whole + std::fabs(date - whole);
}

double currentDate() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    tm local{};
    localtime_r(&time.tv_sec, &local);
    const std::int64_t day = daysFromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday});
    const int seconds = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
    return static_cast<double>(day) + seconds / 86400.0;
}

}  // namespace dao
