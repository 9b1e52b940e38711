#include "platform/dao/packed_texts.h"

#include <cstring>
#include <limits>

#include "platform/dao/failure.h"

namespace dao {

void PackedTexts::makeRoom(std::size_t size) {
    constexpr std::size_t kRoom = 4096;
    texts_.resize(size_ + size + kRoom);
}

std::uint64_t PackedTexts::add(std::string_view text) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
        fail(errOverflow);
    }
    const auto size = static_cast<std::uint32_t>(text.size());
    if (size_ + sizeof size + text.size() > texts_.size()) {
        makeRoom(sizeof size + text.size());
    }
    const std::uint64_t place = size_;
    char* const at = texts_.data() + place;
    std::memcpy(at, &size, sizeof size);
    text.copy(at + sizeof size, text.size());
    size_ += sizeof size + text.size();
    return place;
}

std::string_view PackedTexts::at(std::uint64_t place) const {
    std::uint32_t size = 0;
    std::memcpy(&size, texts_.data() + place, sizeof size);
    return {texts_.data() + place + sizeof size, size};
}

}  // namespace dao
