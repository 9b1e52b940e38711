#include "platform/dao/added_row.h"

namespace dao {

void AddedRow::begin(OpenFile& to) {
    const int into = set_.unique();
    number_ = set_.counterOf(into) == nullptr ? 0 : to.transaction().nextNumber(set_.table(into));
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const sql::ResultColumn& column = set_.columns[i];
        const bool isOurs = column.source == into;
        fields_[i].changed = false;
        fields_[i].value = isOurs && column.type == Type::YesNo ? Value(false) : Value();
        if (number_ != 0 && isOurs && set_.isCounter[i] != 0) {
            fields_[i].value = Value(static_cast<std::int32_t>(number_));
        }
    }
}

std::int64_t AddedRow::insert(OpenFile& to) {
    const std::string& table = set_.table(set_.unique());
    const Value number(static_cast<std::int32_t>(number_));
    const std::vector<driver::FieldValue> fields = given(set_.counterOf(set_.unique()), number);
    std::int64_t key = 0;
    to.transaction().write([&] { key = to.store().rows().insertRow(table, fields); });
    return key;
}

std::vector<driver::FieldValue> AddedRow::given(const sql::ColumnInfo* counter, const Value& number) const {
    std::vector<driver::FieldValue> fields;
    if (counter != nullptr) {
        fields.push_back({counter->name, &number});
    }
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (set_.columns[i].source == set_.unique() && fields_[i].changed && set_.isCounter[i] == 0) {
            fields.push_back({set_.columns[i].field, &fields_[i].value});
        }
    }
    return fields;
}

}  // namespace dao
