#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dao {

// Texts end to end, each known by the place where it begins.
class PackedTexts {
 public:
    std::uint64_t add(std::string_view text);  // error 6 where it is longer than a block has words for
    std::string_view at(std::uint64_t place) const;
    void clear() { size_ = 0; }  // keeps the memory

 private:
    void makeRoom(std::size_t size);

    std::string texts_;  // with some room behind what is filled
    std::size_t size_ = 0;
};

}  // namespace dao
