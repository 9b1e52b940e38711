#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dao {

// PBKDF2 with HMAC-SHA1: `size` bytes out of a password and a salt.
std::string pbkdf2(std::string_view password, std::string_view salt, int rounds, std::size_t size);

}  // namespace dao
