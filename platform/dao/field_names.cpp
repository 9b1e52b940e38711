#include "platform/dao/field_names.h"

#include <algorithm>
#include <cstring>

#include "platform/dao/names.h"

namespace dao {
namespace {

template <typename Word>
bool sameWord(const char* a, const char* b) {
    Word x = 0;
    Word y = 0;
    std::memcpy(&x, a, sizeof x);
    std::memcpy(&y, b, sizeof y);
    return x == y;
}

// Two names of one length, mostly the very same letters: as many of them at a time as the machine takes. The
// last word overlaps the one before.
bool sameLetters(std::string_view a, std::string_view b) {
    const std::size_t size = a.size();
    if (size >= 8) {
        for (std::size_t at = 0; at + 8 < size; at += 8) {
            if (!sameWord<std::uint64_t>(a.data() + at, b.data() + at)) {
                return false;
            }
        }
        return sameWord<std::uint64_t>(a.data() + size - 8, b.data() + size - 8);
    }
    if (size >= 4) {
        return sameWord<std::uint32_t>(a.data(), b.data()) &&
               sameWord<std::uint32_t>(a.data() + size - 4, b.data() + size - 4);
    }
    return size == 0 || (a[0] == b[0] && a[size / 2] == b[size / 2] && a[size - 1] == b[size - 1]);
}

}  // namespace

std::size_t FieldNames::slotOf(std::string_view name) {
    if (name.empty()) {
        return 0;
    }
    // Small and capital letters differ in one bit; a name's middle tells more than its beginning.
    const auto letter = [](char c) { return static_cast<std::size_t>(c & 0x1F); };
    return (name.size() + letter(name.front()) * 5 + letter(name[name.size() / 2]) * 11 +
            letter(name.back()) * 37) %
           kSlots;
}

void FieldNames::assign(const std::vector<sql::ResultColumn>& columns) {
    slots_.fill(-1);
    for (std::size_t i = 0; i < std::min(columns.size(), kMost); ++i) {
        std::size_t slot = slotOf(columns[i].name);
        while (slots_[slot] >= 0) {
            slot = (slot + 1) % kSlots;
        }
        slots_[slot] = static_cast<std::int16_t>(i);
    }
}

int FieldNames::find(std::string_view name, const std::vector<sql::ResultColumn>& columns) const {
    const auto isColumn = [&](std::size_t column) {
        const std::string& known = columns[column].name;
        return known.size() == name.size() && (sameLetters(known, name) || sameName(known, name));
    };
    for (std::size_t slot = slotOf(name); slots_[slot] >= 0; slot = (slot + 1) % kSlots) {
        if (isColumn(static_cast<std::size_t>(slots_[slot]))) {
            return slots_[slot];
        }
    }
    for (std::size_t i = kMost; i < columns.size(); ++i) {
        if (isColumn(i)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

}  // namespace dao
