#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

// Numbers as they travel between a workstation and the server: the highest byte first.
namespace dao::postgres {

template <typename Integer>
void appendInteger(std::string& out, Integer value) {
    using Bits = std::make_unsigned_t<Integer>;
    for (int shift = static_cast<int>(sizeof(Integer) * 8) - 8; shift >= 0; shift -= 8) {
        out += static_cast<char>(static_cast<Bits>(value) >> shift & 0xFF);
    }
}

// `bytes` holds at least as many as an Integer has.
template <typename Integer>
Integer readInteger(const char* bytes) {
    std::make_unsigned_t<Integer> bits = 0;
    for (std::size_t at = 0; at < sizeof(Integer); ++at) {
        bits = static_cast<std::make_unsigned_t<Integer>>(bits << 8 | static_cast<unsigned char>(bytes[at]));
    }
    return static_cast<Integer>(bits);
}

}  // namespace dao::postgres
