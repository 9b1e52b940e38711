#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace alphabet {

// Puts many texts in order at once: the names of a shop's clients, while somebody waits for the list of them.
class TextOrder {
 public:
    // For about so many texts; they may be more.
    void expect(std::size_t texts);
    void add(std::string_view text);  // of fewer than 2^32 texts; std::length_error beyond

    // The numbers of the texts, from 0 as they were added, in the order of the texts. Those that differ in
    // nothing but case stay in the order in which they came.
    std::vector<std::uint32_t> order() const;

 private:
    // Eight bytes of a key in one number that orders as they do, and whose they are.
    struct Head {
        std::uint64_t bytes;
        std::uint32_t text;
    };

    std::size_t sizeOf(std::uint32_t text) const { return ends_[text] - startOf(text); }
    std::size_t startOf(std::uint32_t text) const { return text == 0 ? 0 : ends_[text - 1]; }
    std::uint64_t bytesFrom(std::uint32_t text, std::size_t from) const;
    void sort(std::span<Head> heads, std::size_t from, std::vector<Head>& spare) const;
    void sortAlike(std::span<Head> heads, std::size_t from, std::vector<Head>& spare) const;

    std::string keys_;  // end to end
    std::vector<std::size_t> ends_;
};

}  // namespace alphabet
