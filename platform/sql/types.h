#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace sql {

// Names of tables, queries, fields and functions are the same name in any case.
bool sameName(std::string_view a, std::string_view b);

// What a column or an expression holds, as the table declares it. Long is 32 bits wide, Single is a float,
// Currency a 64-bit count of ten-thousandths, Date the days since 30 December 1899 as a double, Text is
// UTF-8. Double comes only out of expressions; no table has a column of it.
enum class Type : std::uint8_t { Null, YesNo, Long, Single, Double, Currency, Date, Text };

// A statement the grammar does not know. `position` counts bytes from the start of the text, from 0.
class SyntaxError : public std::runtime_error {
 public:
    SyntaxError(const std::string& message, std::size_t position)
        : std::runtime_error(message), position_(position) {}
    std::size_t position() const { return position_; }

 private:
    std::size_t position_;
};

// A table, stored query or field that the file does not have.
class NameError : public std::runtime_error {
 public:
    enum class Kind { Table, Field };
    NameError(Kind kind, std::string name) : std::runtime_error(name), kind_(kind), name_(std::move(name)) {}
    Kind kind() const { return kind_; }
    const std::string& name() const { return name_; }

 private:
    Kind kind_;
    std::string name_;
};

struct ColumnInfo {
    std::string name;
    Type type = Type::Text;
    int size = 0;          // characters a Text may hold; 0: no limit
    bool counter = false;  // the engine gives the number of a new row
};

struct TableInfo {
    std::string name;  // as the file spells it
    std::vector<ColumnInfo> columns;
    // Index of the column without regard to case, -1 where there is none.
    int indexOf(std::string_view column) const;
    // The column that the engine numbers; nullptr where there is none.
    const ColumnInfo* counter() const;
};

struct Statement;  // ast.h
using StatementPtr = std::shared_ptr<const Statement>;
struct Expression;  // ast.h
using ExpressionPtr = std::shared_ptr<const Expression>;

// What the file holds, as the writer needs to know it. Names are matched without regard to case.
class Catalog {
 public:
    virtual ~Catalog() = default;
    virtual const TableInfo* findTable(std::string_view name) const = 0;  // nullptr: no such table
    virtual StatementPtr findQuery(std::string_view name) const = 0;      // nullptr: no such stored query
};

}  // namespace sql
