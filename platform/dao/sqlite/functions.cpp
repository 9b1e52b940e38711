#include <cmath>
#include <string>
#include <string_view>

#include "platform/dao/calendar.h"
#include "platform/dao/names.h"
#include "platform/dao/sqlite/connection.h"
#include "platform/dao/sqlite/function_state.h"
#include "platform/text/order.h"

namespace dao::driver {
namespace {

int compareTexts(void*, int sizeA, const void* textA, int sizeB, const void* textB) {
    return alphabet::compare({static_cast<const char*>(textA), static_cast<std::size_t>(sizeA)},
                             {static_cast<const char*>(textB), static_cast<std::size_t>(sizeB)});
}

std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

struct Moment {
    std::int64_t day;
    std::int64_t seconds;  // since the calendar's start, on a straight line
    CivilDay civil;
};

Moment momentOf(double date) {
    const double line = linearDays(date);
    Moment moment;
    moment.seconds = std::llround(line * 86400.0);
    moment.day = floorDiv(moment.seconds, 86400);
    moment.civil = civilFromDays(moment.day);
    return moment;
}

using Counter = std::int64_t (*)(const Moment&, int firstDay);

struct Interval {
    std::string_view name;
    Counter count;
};

// The difference counts the borders crossed: from 31 December to 1 January is a year.
constexpr Interval kIntervals[] = {
    {"yyyy", [](const Moment& m, int) { return m.civil.year; }},
    {"q", [](const Moment& m, int) { return m.civil.year * 4 + (m.civil.month - 1) / 3; }},
    {"m", [](const Moment& m, int) { return m.civil.year * 12 + m.civil.month; }},
    {"y", [](const Moment& m, int) { return m.day; }},
    {"d", [](const Moment& m, int) { return m.day; }},
    {"ww", [](const Moment& m, int firstDay) { return floorDiv(m.day + 6 - (firstDay - 1), 7); }},
    {"h", [](const Moment& m, int) { return floorDiv(m.seconds, 3600); }},
    {"n", [](const Moment& m, int) { return floorDiv(m.seconds, 60); }},
    {"s", [](const Moment& m, int) { return m.seconds; }},
};

void dateDiff(sqlite3_context* context, int count, sqlite3_value** values) {
    if (count < 3 || count > 5) {
        sqlite3_result_error_code(context, SQLITE_MISMATCH);
        return;
    }
    for (int i = 0; i < 3; ++i) {
        if (sqlite3_value_type(values[i]) == SQLITE_NULL) {
            return;  // the difference to no date is Null
        }
    }
    for (int i = 1; i < 3; ++i) {
        const int type = sqlite3_value_numeric_type(values[i]);
        const double date = sqlite3_value_double(values[i]);
        if ((type != SQLITE_INTEGER && type != SQLITE_FLOAT) || !(std::fabs(date) < 1e8)) {
            sqlite3_result_error_code(context, SQLITE_MISMATCH);
            return;
        }
    }
    const std::string_view name = textOf(values[0]);
    const int firstDay = count > 3 ? std::max(1, sqlite3_value_int(values[3])) : 1;
    const Moment from = momentOf(sqlite3_value_double(values[1]));
    const Moment to = momentOf(sqlite3_value_double(values[2]));
    if (sameName(name, "w")) {
        sqlite3_result_int64(context, (to.day - from.day) / 7);
        return;
    }
    for (const Interval& interval : kIntervals) {
        if (sameName(name, interval.name)) {
            sqlite3_result_int64(context, interval.count(to, firstDay) - interval.count(from, firstDay));
            return;
        }
    }
    sqlite3_result_error_code(context, SQLITE_MISMATCH);
}

void now(sqlite3_context* context, int, sqlite3_value**) {
    sqlite3_result_double(context, currentDate());
}

void text(sqlite3_context* context, int, sqlite3_value** values) {
    switch (sqlite3_value_type(values[0])) {
        case SQLITE_NULL:
            sqlite3_result_text(context, "", 0, SQLITE_STATIC);
            break;
        case SQLITE_FLOAT: {
            const std::string number = Value(sqlite3_value_double(values[0])).asText();
            sqlite3_result_text(context, number.c_str(), static_cast<int>(number.size()), SQLITE_TRANSIENT);
            break;
        }
        case SQLITE_INTEGER: {
            const std::string number = std::to_string(sqlite3_value_int64(values[0]));
            sqlite3_result_text(context, number.c_str(), static_cast<int>(number.size()), SQLITE_TRANSIENT);
            break;
        }
        default:
            sqlite3_result_value(context, values[0]);
            break;
    }
}

}  // namespace

void installFunctions(sqlite3* db) {
    constexpr int kPure = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_collation_v2(db, "DAO_TEXT", SQLITE_UTF8, nullptr, &compareTexts, nullptr);
    sqlite3_create_function_v2(db, "dao_datediff", -1, kPure, nullptr, &dateDiff, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "dao_now", 0, SQLITE_UTF8, nullptr, &now, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "dao_text", 1, kPure, nullptr, &text, nullptr, nullptr, nullptr);
}

}  // namespace dao::driver
