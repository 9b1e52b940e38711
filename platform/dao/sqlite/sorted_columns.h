#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dao::driver {

// A statement for rows in the order of their keys reads "SELECT dao_sorted(N, 'P P ...', 'T', A, B, ...) FROM
// ...": its first N columns are the keys, those at the places P, from 0, are what is asked for. It goes
// through the rows of the table T whose row keys are between ?1 and ?2, and hands them to the gatherer,
// behind N, the places and T. The store would sort whole records, each made up and read again.
struct SortedColumns {
    static constexpr std::string_view kHead = "SELECT dao_sorted(";
    static constexpr int kBefore = 3;  // N, the places, the table

    // Nothing is asked for where the statement reads otherwise.
    static SortedColumns of(std::string_view statement);

    std::size_t keys = 0;
    std::vector<int> shown;
    std::string table;  // as a statement names it
};

}  // namespace dao::driver
