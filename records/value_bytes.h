#pragma once

#include <cstddef>
#include <string>

#include "platform/dao/value.h"

// Values as bytes, end to end: the place of what a value holds among all that one may hold, and then what it
// holds. Of two values that differ the bytes do too.
namespace value_bytes {

void append(std::string& bytes, const dao::Value& value);

// A value whose bytes begin at `at`.
std::size_t sizeAt(const char* at);
void read(const char* at, dao::Value& value);  // reuses the memory of `value`

}  // namespace value_bytes
