#pragma once

#include <bit>
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

// The same number with its bytes the other way round: one instruction of the processor, where a loop over
// them stays a loop.
template <typename Bits>
Bits turned(Bits bits) {
    if constexpr (sizeof(Bits) == sizeof(std::uint16_t)) {
        return __builtin_bswap16(bits);
    } else if constexpr (sizeof(Bits) == sizeof(std::uint32_t)) {
        return __builtin_bswap32(bits);
    } else {
        static_assert(sizeof(Bits) == sizeof(std::uint64_t));
        return __builtin_bswap64(bits);
    }
}

// `bytes` holds at least as many as an Integer has.
template <typename Integer>
Integer readInteger(const char* bytes) {
    std::make_unsigned_t<Integer> bits = 0;
    std::memcpy(&bits, bytes, sizeof bits);
    if constexpr (std::endian::native == std::endian::little) {
        bits = turned(bits);
    }
    return static_cast<Integer>(bits);
}

}  // namespace dao::postgres
