#include "platform/dao/driver.h"

#include "platform/dao/calendar.h"

namespace dao::driver {

std::optional<Value> Statement::scalar(Type type) {
    RowBlock block;
    block.reset({type});
    if (readRows(block, 0, nullptr, 1) == 0) {
        return std::nullopt;
    }
    Value value;
    block.get(0, 0, value);
    return value;
}

int bindParameters(Statement& statement, const std::vector<sql::Parameter>& parameters) {
    int index = 0;
    for (const sql::Parameter& parameter : parameters) {
        ++index;
        switch (parameter.kind) {
            case sql::Parameter::Kind::Ids:
                statement.bindNumbers(index, parameter.ids);
                break;
            case sql::Parameter::Kind::Now:
                statement.bind(index, Value(Date{currentDate()}));
                break;
        }
    }
    return index + 1;
}

}  // namespace dao::driver
