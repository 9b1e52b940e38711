#include "platform/text/text_order.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <utility>

#include "platform/text/order.h"

namespace alphabet {
namespace {

constexpr std::size_t kHead = 8;    // bytes
constexpr std::size_t kFew = 512;   // are sorted quicker by comparing them than by counting their bytes
constexpr std::size_t kUsual = 24;  // bytes of a name

constexpr auto kBefore = [](const auto& a, const auto& b) {
    return a.bytes != b.bytes ? a.bytes < b.bytes : a.text < b.text;
};

// By one byte after the other, the last first; each turn leaves alike ones as they stand. A byte that all
// have in common costs the counting alone.
template <typename Head>
void sortByCounting(std::span<Head> heads, std::vector<Head>& spare) {
    spare.resize(std::max(spare.size(), heads.size()));
    std::span<Head> from = heads;
    std::span<Head> to(spare.data(), heads.size());
    for (unsigned shift = 0; shift < 64; shift += 8) {
        std::array<std::size_t, 256> places{};
        for (const Head& head : from) {
            ++places[(head.bytes >> shift) & 0xFFU];
        }
        if (places[(from.front().bytes >> shift) & 0xFFU] == from.size()) {
            continue;
        }
        std::size_t next = 0;
        for (std::size_t& place : places) {
            next += std::exchange(place, next);
        }
        for (const Head& head : from) {
            to[places[(head.bytes >> shift) & 0xFFU]++] = head;
        }
        std::swap(from, to);
    }
    if (from.data() != heads.data()) {
        std::copy(from.begin(), from.end(), heads.begin());
    }
}

}  // namespace

void TextOrder::expect(std::size_t texts) {
    ends_.reserve(texts);
    keys_.reserve(texts * kUsual);
}

void TextOrder::add(std::string_view text) {
    if (ends_.size() == std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("too many texts to put in order");
    }
    appendOrderKey(keys_, text);
    ends_.push_back(keys_.size());
}

std::vector<std::uint32_t> TextOrder::order() const {
    std::vector<Head> heads;
    heads.reserve(ends_.size());
    for (std::uint32_t text = 0; text < ends_.size(); ++text) {
        heads.push_back({0, text});
    }
    std::vector<Head> spare;
    sort(heads, 0, spare);
    std::vector<std::uint32_t> order;
    order.reserve(heads.size());
    for (const Head& head : heads) {
        order.push_back(head.text);
    }
    return order;
}

// A key that ends counts as one that goes on with zeroes, which no letter is.
std::uint64_t TextOrder::bytesFrom(std::uint32_t text, std::size_t from) const {
    const std::size_t start = startOf(text) + from;
    const std::size_t end = std::min(start + kHead, ends_[text]);
    std::uint64_t bytes = 0;
    for (std::size_t at = start; at < end; ++at) {
        bytes = (bytes << 8) | static_cast<unsigned char>(keys_[at]);
    }
    return end <= start ? 0 : bytes << (8 * (start + kHead - end));
}

// `heads` are alike up to there, and stand in the order in which they came.
void TextOrder::sort(std::span<Head> heads, std::size_t from, std::vector<Head>& spare) const {
    for (Head& head : heads) {
        head.bytes = bytesFrom(head.text, from);
    }
    if (!std::is_sorted(heads.begin(), heads.end(), kBefore)) {
        if (heads.size() <= kFew) {
            std::sort(heads.begin(), heads.end(), kBefore);
        } else {
            sortByCounting(heads, spare);
        }
    }
    sortAlike(heads, from + kHead, spare);
}

// Those whose heads are the same, by what comes behind.
void TextOrder::sortAlike(std::span<Head> heads, std::size_t from, std::vector<Head>& spare) const {
    for (std::size_t first = 0; first < heads.size();) {
        std::size_t next = first + 1;
        bool goesOn = sizeOf(heads[first].text) > from;
        while (next < heads.size() && heads[next].bytes == heads[first].bytes) {
            goesOn = goesOn || sizeOf(heads[next].text) > from;
            ++next;
        }
        if (goesOn && next - first > 1) {
            sort(heads.subspan(first, next - first), from, spare);
        }
        first = next;
    }
}

}  // namespace alphabet
