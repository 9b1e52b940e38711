#pragma once

#include <string>
#include <string_view>

#include "platform/dao/definitions.h"
#include "platform/dao/value.h"

// Values as texts that every program reads and that read back as the same value, to the last bit: points in
// numbers, no grouping, dates as 2026-11-22 or 2026-11-22T14:05:00, true and false. A date outside of the
// years 1 to 9999, or a time of day that no decimal comes to, stands as its number of days since 30 December
// 1899.
namespace exchange {

// Of a value that is not Null. A text as it is.
std::string plainText(const dao::Value& value);

// Throws std::invalid_argument with what the text is not: "is no date such as 2026-11-22".
dao::Value plainValue(std::string_view text, dao::FieldType type);

}  // namespace exchange
