#include "platform/report/row_pair.h"

#include <algorithm>
#include <string>
#include <variant>

#include "platform/text/order.h"

namespace report {
namespace {

// Rows come ordered without regard to case, as the engine orders them; a group must not fall apart over a
// capital letter.
bool sameGroup(const dao::Value& a, const dao::Value& b) {
    if (a == b) {
        return true;
    }
    if (!std::holds_alternative<std::string>(a.store()) || !std::holds_alternative<std::string>(b.store())) {
        return false;
    }
    return alphabet::same(a.textRef(), b.textRef());
}

}  // namespace

void RowPair::readFieldsOf(const std::vector<std::unique_ptr<Section>>& sections) {
    for (const auto& section : sections) {
        if (section->kind() == Section::Kind::GroupHeader && !section->DataField.isEmpty()) {
            columnOf(section->DataField);
        }
        for (const auto& control : section->all()) {
            if (control->kind == Control::Kind::Field && !control->DataField.isEmpty()) {
                columnOf(control->DataField);
            }
        }
    }
}

size_t RowPair::columnOf(const QString& field) {
    const auto known = std::find(columns_.begin(), columns_.end(), field);
    const auto column = static_cast<size_t>(known - columns_.begin());
    if (known == columns_.end()) {
        columns_.push_back(field);
    }
    return column;
}

bool RowPair::begin() {
    const bool any = source_ && source_->next();
    if (any) {
        read(current_);
    }
    return any;
}

bool RowPair::peek() {
    const bool more = source_->next();
    if (more) {
        read(next_);
    }
    return more;
}

void RowPair::read(Row& row) {
    row.resize(columns_.size());
    for (size_t i = 0; i < columns_.size(); ++i) {
        row[i] = source_->value(columns_[i]);
    }
}

bool RowPair::differ(const QString& field) const {
    const auto column =
        static_cast<size_t>(std::find(columns_.begin(), columns_.end(), field) - columns_.begin());
    return column < current_.size() && column < next_.size() && !sameGroup(current_[column], next_[column]);
}

dao::Value RowPair::value(const QString& field) {
    const size_t column = columnOf(field);
    // A field bound in the midst of a run joins in with this row.
    while (current_.size() <= column && source_ && !current_.empty()) {
        current_.push_back(source_->value(columns_[current_.size()]));
    }
    return column < current_.size() ? current_[column] : dao::Value();
}

}  // namespace report
