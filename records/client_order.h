#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The numbers of clients in the alphabetical order of their names, those of one name as they came. A name
// takes no more room than its letters: there may be half a million of them.
class ClientOrder {
 public:
    void add(std::int32_t number, const std::string* name);  // nullptr: Null, which stands before all others
    std::size_t size() const { return entries_.size(); }
    void sort();
    std::vector<std::int32_t> numbers() const;

 private:
    struct Entry {
        std::size_t at;  // where the bytes begin that it is ordered by
        std::uint32_t size;
        std::int32_t number;
    };
    std::string_view bytesOf(const Entry& entry) const { return {bytes_.data() + entry.at, entry.size}; }

    std::vector<Entry> entries_;
    std::string bytes_;
};
