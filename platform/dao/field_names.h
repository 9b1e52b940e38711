#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/sql/writer.h"

namespace dao {

// Which column of a record set goes by a name, for those who name ten fields of each row of a long list.
class FieldNames {
 public:
    void assign(const std::vector<sql::ResultColumn>& columns);
    // `columns` are those of assign. Without regard to case; of two of one name the first; -1: there is none.
    int find(std::string_view name, const std::vector<sql::ResultColumn>& columns) const;

 private:
    static constexpr std::size_t kSlots = 128;
    static constexpr std::size_t kMost = kSlots / 2;  // columns that have a slot: half of them stay free
    static std::size_t slotOf(std::string_view name);

    std::array<std::int16_t, kSlots> slots_{};
};

}  // namespace dao
