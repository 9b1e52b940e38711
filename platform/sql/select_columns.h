#pragma once

#include <string>
#include <vector>

#include "platform/sql/select_source.h"

namespace sql::writing {

// One column of a result.
struct SelectColumn {
    ScopeField field;      // field.source counts through all leaves
    std::string leafName;  // empty: computed
    std::string leafField;
};

// The columns that a SELECT asks for, in their order: fields, all fields (*), what is computed; each under
// the name that the result calls it by.
class SelectColumns {
 public:
    // `rows`: the leaves as their fields stand within counting functions; `leaves`: outside of them. All of
    // them outlive it.
    SelectColumns(const SelectSource& source, const std::vector<Leaf>& rows, const std::vector<Leaf>& leaves,
                  Context& context)
        : source_(source), rows_(rows), leaves_(leaves), context_(context) {}

    std::vector<SelectColumn> write();  // once; throws NameError and SyntaxError

 private:
    void add(const SelectItem& item);
    void addStar(const SelectItem& item);
    SelectColumn columnOf(int leaf, const ScopeField& field) const;
    SelectColumn written(const SelectItem& item) const;
    std::string aliasOf(const SelectItem& item);
    void tellApart();

    const SelectSource& source_;
    const std::vector<Leaf>& rows_;
    const std::vector<Leaf>& leaves_;
    Context& context_;
    std::vector<SelectColumn> columns_;
    std::vector<std::string> aliases_;
    int nextExpression_ = 1000;
};

}  // namespace sql::writing
