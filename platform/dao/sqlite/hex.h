#pragma once

#include <string>
#include <string_view>

// Bytes as hexadecimal text: two small digits each.
namespace dao {

std::string toHex(std::string_view bytes);
// Two digits at a time; each must be one.
std::string fromHex(std::string_view digits);

}  // namespace dao
