#pragma once

#include <string>
#include <vector>

#include "platform/sql/select_body.h"

namespace sql::writing {

// The texts that are made of one body: see WrittenSelect for what each of them gives. Row keys are bound
// behind the parameters that the context has counted by then.
class SelectTexts {
 public:
    // All of them outlive it.
    SelectTexts(const SelectSource& source, const SelectBody& body, const Context& context)
        : source_(source), body_(body), dialect_(context.dialect), numbers_(context.numbers) {}

    // Of a body for all rows.
    std::string rows() const { return ordered(columns()); }
    std::string keys() const { return ordered(keyColumns()); }
    IdSetPtr keySet() const;  // nullptr: there is none
    std::string range() const;
    std::string firstKeys() const;
    std::string firstRow() const;
    // Of a body for rows that are found by their keys.
    std::string fetch() const;
    std::string fetchList() const;
    // Of a body for a part of another FROM: without any order.
    std::string part(std::vector<SelectedColumn> columns) const;

 private:
    std::vector<SelectedColumn> columns() const;
    std::vector<SelectedColumn> keyColumns() const;
    SelectParts parts(std::vector<SelectedColumn> columns) const;
    std::string ordered(std::vector<SelectedColumn> columns) const;
    std::string linked(const std::vector<SelectedColumn>& columns) const;
    bool isBySet() const;

    const SelectSource& source_;
    const SelectBody& body_;
    const Dialect& dialect_;
    const Numbers& numbers_;
};

}  // namespace sql::writing
