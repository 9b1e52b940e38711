#include "platform/dao/postgres/server_statement.h"

#include <algorithm>

#include "platform/dao/failure.h"

namespace dao::postgres {
namespace {

Type columnType(dao::Type type) {
    switch (type) {
        case dao::Type::YesNo:
            return Type::kInteger2;
        case dao::Type::Long:
            return Type::kInteger4;
        case dao::Type::Single:
            return Type::kReal4;
        case dao::Type::Currency:
            return Type::kInteger8;
        case dao::Type::Double:
        case dao::Type::Date:
            return Type::kReal8;
        case dao::Type::Text:
        case dao::Type::Null:
            break;
    }
    return Type::kText;
}

struct Binder {
    Parameters& to;
    Type empty;
    void operator()(std::monostate) const { to.null(empty); }
    void operator()(bool v) const { to.integer2(v ? -1 : 0); }
    void operator()(std::int32_t v) const { to.integer4(v); }
    void operator()(float v) const { to.real4(v); }
    void operator()(double v) const { to.real8(v); }
    void operator()(Currency v) const { to.integer8(v.scaled()); }
    void operator()(Date v) const { to.real8(v.days); }
    void operator()(const std::string& v) const { to.text(v); }
};

// How a column of an answer goes into a block.
enum class CellKind { kInteger, kReal, kText };

CellKind kindOfCell(unsigned type) {
    switch (static_cast<Type>(type)) {
        case Type::kInteger2:
        case Type::kInteger4:
        case Type::kInteger8:
            return CellKind::kInteger;
        case Type::kReal4:
        case Type::kReal8:
            return CellKind::kReal;
        default:
            return CellKind::kText;
    }
}

void addCell(RowBlock& block, const Result& answer, int row, int column, CellKind kind) {
    if (answer.isNull(row, column)) {
        block.addNull();
        return;
    }
    switch (kind) {
        case CellKind::kInteger:
            block.addInteger(answer.integer(row, column));
            break;
        case CellKind::kReal:
            block.addReal(answer.real(row, column));
            break;
        case CellKind::kText:
            block.addText(answer.text(row, column));
            break;
    }
}

}  // namespace

void bindValue(Parameters& parameters, const Value& value, dao::Type type) {
    std::visit(Binder{parameters, columnType(type)}, value.store());
}

ServerStatement::ServerStatement(std::shared_ptr<StatementRunner*> store, std::string text)
    : store_(std::move(store)), text_(std::move(text)) {}

ServerStatement::Bound& ServerStatement::at(int index) {
    const auto place = static_cast<std::size_t>(index);
    bound_.resize(std::max(bound_.size(), place));
    return bound_[place - 1];
}

void ServerStatement::bind(int index, const Value& value) {
    at(index) = value;
}
void ServerStatement::bindInteger(int index, std::int64_t value) {
    at(index) = value;
}
void ServerStatement::bindRowKey(int index, std::int64_t key) {
    at(index) = key;
}
void ServerStatement::bindNumbers(int index, sql::IdSetPtr numbers) {
    at(index) = std::move(numbers);
}

Result ServerStatement::ask() {
    if (*store_ == nullptr) {
        fail(errObjectClosed);
    }
    Parameters parameters;
    for (const Bound& each : bound_) {
        if (const auto* numbers = std::get_if<sql::IdSetPtr>(&each)) {
            parameters.integers8(**numbers);
        } else if (const auto* value = std::get_if<Value>(&each)) {
            bindValue(parameters, *value, dao::Type::Text);
        } else if (const auto* number = std::get_if<std::int64_t>(&each);
                   number != nullptr && *number != driver::kNoRow) {
            parameters.integer8(*number);
        } else {
            parameters.null(Type::kInteger8);
        }
    }
    return (*store_)->run(text_, parameters);
}

std::int64_t ServerStatement::run() {
    const std::int64_t affected = ask().affected();
    if (affected > 0) {
        (*store_)->noteWritten();
    }
    return affected;
}

void ServerStatement::readKeys(std::vector<std::int64_t>& out, int columns) {
    const Result answer = ask();
    const int rows = answer.rows();
    out.reserve(out.size() + static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            out.push_back(answer.isNull(row, column) ? driver::kNoRow : answer.integer(row, column));
        }
    }
}

std::size_t ServerStatement::readRows(RowBlock& block, int skip, std::vector<std::int64_t>* keys,
                                      std::size_t limit, const std::vector<int>* places) {
    const Result answer = ask();
    const auto columns = static_cast<int>(block.columns());
    std::vector<int> from;
    std::vector<CellKind> kinds;
    for (int column = 0; column < columns; ++column) {
        const int place = places == nullptr ? column : (*places)[static_cast<std::size_t>(column)];
        from.push_back(place < 0 ? -1 : place + skip);
        kinds.push_back(place < 0 ? CellKind::kText : kindOfCell(answer.type(place + skip)));
    }
    const std::size_t rows = std::min(limit, static_cast<std::size_t>(answer.rows()));
    for (std::size_t row = 0; row < rows; ++row) {
        if (keys != nullptr) {
            keys->push_back(answer.integer(static_cast<int>(row), 0));
        }
        block.startRow();
        for (std::size_t column = 0; column < from.size(); ++column) {
            if (from[column] < 0) {
                block.addUnread();
            } else {
                addCell(block, answer, static_cast<int>(row), from[column], kinds[column]);
            }
        }
        block.endRow();
    }
    return rows;
}

}  // namespace dao::postgres
