#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/filling.h"
#include "platform/dao/row_block.h"
#include "platform/dao/row_state.h"
#include "platform/dao/table_reader.h"

namespace exchange {

// A whole new shop, made from rows that come from somewhere else, with the numbers that they have there.
// Nobody sees it before it is whole; where it is given up, nothing is left of it.
class NewShop {
 public:
    // `target`: a path where the shop's file is to stand, or the signpost of an empty server database. Throws
    // dao::Error: 3012 where that database holds a shop already, and as files and servers fail.
    explicit NewShop(const std::string& target);

    // What a shop has, in the order in which it is to be filled: a row needs those that it belongs to. The
    // last one is DocNumber, which is made only where rows are added to it.
    static std::vector<dao::TableDef> tables();
    // The table of that name without regard to case; nullptr where a shop has none such.
    static const dao::TableDef* table(std::string_view name);
    // What a column of that field holds, for a block of rows.
    static dao::Type typeOf(const dao::FieldDef& field);

    // For progress: of `allRows` of all tables, first as they are added and then as they are compared.
    void watch(std::int64_t allRows, dao::RowWatch watch);
    // Rows of one table; the block has a column for each of `fields`, of typeOf's type. Fields left out are
    // Null. Throws dao::Error: 3022 for a number twice, 3201 for a row without the one it belongs to, and
    // what the store cannot take.
    void add(const std::string& table, std::span<const std::string_view> fields, const dao::RowBlock& rows);
    // The table's counter goes on behind this number, and behind the highest of its rows.
    void countFrom(const std::string& table, std::int64_t highest);

    // Everything is written; from here on it is read. Throws dao::Error 3043 where what is read back is not
    // what was added.
    void keep();
    // All rows of a table of the schema as they were kept, a block at a time, and nothing for DocNumber where
    // it was not made.
    using RowReader = std::function<void(const dao::RowBlock&)>;
    void read(const std::string& table, const RowReader& reader);

    // See dao::Filling. Both after keep().
    void appear() { filling_.appear(); }
    void replace(const std::string& kept) { filling_.replace(kept); }

 private:
    // What the rows of a table come to, in whatever order they are taken.
    struct Sum {
        std::uint64_t rows = 0;
        std::uint64_t digest = 0;
        bool operator==(const Sum&) const = default;
    };
    static void addTo(Sum& sum, const dao::RowBlock& rows, std::span<const std::size_t> places);
    void createTables();
    void compare(const dao::TableDef& table);
    void tell(const std::string& table, std::size_t rows);

    dao::Filling filling_;
    std::map<std::string, Sum> added_;             // by the table's name
    std::map<std::string, std::int64_t> highest_;  // the same
    dao::RowState state_;
    dao::RowWatch watch_;
};

}  // namespace exchange
