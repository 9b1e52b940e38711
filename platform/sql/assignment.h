#pragma once

#include <string>

#include "platform/sql/expressions.h"

namespace sql::writing {

// Writes what the fields of a table are to be set to, in the form that the store keeps them in.
class AssignmentWriter {
 public:
    // Both outlive it.
    AssignmentWriter(const NameResolver& names, Context& context)
        : dialect_(context.dialect), values_(names, context) {}

    // Throws SyntaxError for a value that the column cannot hold.
    std::string write(const Expression& e, const ColumnInfo& column);

 private:
    std::string number(const Expression& e, const Sql& number, const ColumnInfo& column) const;
    std::string currency(const Expression& e, const Sql& sql) const;
    std::string text(const Expression& e, const Sql& sql) const;

    const Dialect& dialect_;
    ExpressionWriter values_;
};

}  // namespace sql::writing
