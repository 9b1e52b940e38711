#include "platform/dao/postgres/server_statement.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/network_order.h"

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

// How a column of an answer goes into a block. Looked at once for a column, and not for each of its cells.
using AddCell = void (*)(RowBlock& block, std::string_view cell);

template <typename Integer>
void addInteger(RowBlock& block, std::string_view cell) {
    block.addInteger(readInteger<Integer>(cell.data()));
}

template <typename Real, typename Bits>
void addReal(RowBlock& block, std::string_view cell) {
    block.addReal(std::bit_cast<Real>(readInteger<Bits>(cell.data())));
}

void addText(RowBlock& block, std::string_view cell) {
    block.addText(cell);
}

// A column of a type that no record has, which does no harm as long as nothing stands in it.
void refuseCell(RowBlock&, std::string_view) {
    fail(errTypeMismatch);
}

// The server sends each of these types in its one width.
AddCell adderOf(unsigned type) {
    switch (static_cast<Type>(type)) {
        case Type::kInteger2:
            return &addInteger<std::int16_t>;
        case Type::kInteger4:
            return &addInteger<std::int32_t>;
        case Type::kInteger8:
            return &addInteger<std::int64_t>;
        case Type::kReal4:
            return &addReal<float, std::uint32_t>;
        case Type::kReal8:
            return &addReal<double, std::uint64_t>;
        case Type::kText:
        case Type::kName:
        case Type::kPaddedText:
        case Type::kLimitedText:
            return &addText;
        default:
            return &refuseCell;
    }
}

// Where the cells of a block's column stand in an answer, -1: nowhere; and how they go into the block.
struct Cells {
    int column;
    AddCell add;
};

std::vector<Cells> cellsOf(const Result& answer, std::size_t columns, int skip,
                           const std::vector<int>* places) {
    std::vector<Cells> cells;
    for (std::size_t column = 0; column < columns; ++column) {
        const int place = places == nullptr ? static_cast<int>(column) : (*places)[column];
        if (place == driver::kNowhere) {
            cells.push_back({-1, nullptr});
        } else {
            cells.push_back({place + skip, adderOf(answer.type(place + skip))});
        }
    }
    return cells;
}

void addCell(RowBlock& block, const Result& answer, int row, const Cells& from) {
    if (from.column < 0) {
        block.addUnread();
        return;
    }
    const std::string_view cell = answer.raw(row, from.column);
    if (cell.data() == nullptr) {
        block.addNull();
    } else {
        from.add(block, cell);
    }
}

void addRow(RowBlock& block, const Result& answer, int row, const std::vector<Cells>& cells) {
    block.startRow();
    for (const Cells& each : cells) {
        addCell(block, answer, row, each);
    }
    block.endRow();
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

StatementRunner& ServerStatement::store() const {
    if (*store_ == nullptr) {
        fail(errObjectClosed);
    }
    return **store_;
}

Parameters ServerStatement::parameters() const {
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
    return parameters;
}

Result ServerStatement::ask(const std::string& text) {
    return store().run(text, parameters());
}

void ServerStatement::askAhead() {
    dropAhead();
    ahead_ = store().askAhead(text_, parameters());
}

void ServerStatement::takeIn() {
    if (ahead_) {
        store().takeIn();
    }
}

Result ServerStatement::takeAnswer() {
    if (const std::optional<AskedAhead> asked = std::exchange(ahead_, std::nullopt)) {
        if (std::optional<Result> answer = store().takeAhead(*asked)) {
            return std::move(*answer);
        }
    }
    return ask(text_);
}

void ServerStatement::dropAhead() noexcept {
    if (ahead_ && *store_ != nullptr) {
        (*store_)->dropAhead(*ahead_);
    }
    ahead_.reset();
}

std::int64_t ServerStatement::run() {
    const std::int64_t affected = ask(text_).affected();
    if (affected > 0) {
        store().noteWritten();
    }
    return affected;
}

// One column travels as one value, in less than half the time that as many rows would take.
void ServerStatement::readKeys(std::vector<std::int64_t>& out, int columns) {
    if (columns == 1) {
        ask("SELECT ARRAY(" + text_ + ")").appendKeys(0, 0, driver::kNoRow, out);
        return;
    }
    const Result answer = ask(text_);
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
    const Result answer = takeAnswer();
    const std::vector<Cells> cells = cellsOf(answer, block.columns(), skip, places);
    const std::size_t rows = std::min(limit, static_cast<std::size_t>(answer.rows()));
    block.expect(rows);
    for (std::size_t row = 0; row < rows; ++row) {
        const int at = static_cast<int>(row);
        if (keys != nullptr) {
            keys->push_back(answer.key(at, 0));
        }
        addRow(block, answer, at, cells);
    }
    return rows;
}

void ServerStatement::readBlocks(RowBlock& block, const std::function<void()>& take) {
    store().runInPieces(text_, parameters(), [&](const Result& answer) {
        const std::vector<Cells> cells = cellsOf(answer, block.columns(), 0, nullptr);
        for (int row = 0; row < answer.rows(); ++row) {
            addRow(block, answer, row, cells);
            if (block.rows() == driver::kRowsAtOnce || row + 1 == answer.rows()) {
                take();
                block.clear();
            }
        }
    });
}

}  // namespace dao::postgres
