#pragma once

#include <string>
#include <vector>

#include "platform/sql/grouping.h"
#include "platform/sql/select_columns.h"

namespace sql::writing {

// The columns of a SELECT and everything behind them, and what the names mean behind this FROM.
struct SelectBody {
    FromText from;
    std::vector<Leaf> groupLeaves;  // their fields as they stand outside of counting functions
    std::vector<SelectColumn> columns;
    std::vector<std::string> conditions;
    std::string groups;            // GROUP BY ... HAVING ...
    std::vector<OrderTerm> order;  // without the keys
};

// What a text is for: all rows; all, as a part of another FROM; or those found by their keys.
enum class SelectPurpose { All, Part, Fetch };

// Writes one such body.
class SelectBodyWriter {
 public:
    // Both outlive it.
    SelectBodyWriter(const SelectSource& source, Context& context)
        : source_(source), context_(context), grouping_(source, context) {}

    // Each of them once. Both throw NameError, SyntaxError and SizeError.
    SelectBody write(SelectPurpose purpose);
    // That of a selection from one table, with all that the table's own leaf asks for, and no text of a FROM.
    SelectBody writeMerged();

 private:
    FromText from(SelectPurpose purpose) const;
    void addColumns();
    void checkSize() const;
    void addWhere();
    void addOrder();
    OrderTerm ofColumn(const OrderItem& item) const;
    bool isColumn(const Expression& name) const;

    const SelectSource& source_;
    Context& context_;
    Grouping grouping_;
    SelectBody body_;
};

}  // namespace sql::writing
