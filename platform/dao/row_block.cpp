#include "platform/dao/row_block.h"

#include <bit>
#include <cmath>
#include <limits>

namespace dao {

void RowBlock::reset(std::vector<Type> types) {
    types_ = std::move(types);
    clear();
}

void RowBlock::clear() {
    texts_.clear();
    rows_ = 0;
}

void RowBlock::expect(std::size_t rows) {
    cells_.expect((rows_ + rows) * types_.size());
}

void RowBlock::putLike(const RowBlock& from, std::size_t cell) {
    const std::uint64_t slot = from.cells_.slot(cell);
    if (from.cells_.kind(cell) == Kind::Text) {
        addText(from.texts_.at(slot));
    } else {
        cells_.put(from.cells_.kind(cell), slot);
    }
}

void RowBlock::append(const RowBlock& from, std::size_t first, std::size_t rows,
                      const std::vector<char>* wanted) {
    expect(rows);
    for (std::size_t row = first; row < first + rows; ++row) {
        startRow();
        for (std::size_t column = 0; column < columns(); ++column) {
            if (wanted == nullptr || (*wanted)[column] != 0) {
                putLike(from, from.at(row, column));
            } else {
                addUnread();
            }
        }
        endRow();
    }
}

void RowBlock::reorder(std::size_t first, std::span<const std::uint32_t> order) {
    cells_.reorder(columns(), first, order);
}

void RowBlock::add(const Value& value) {
    struct Adder {
        RowBlock& to;
        void operator()(std::monostate) const { to.addNull(); }
        void operator()(bool v) const { to.addInteger(v ? 1 : 0); }
        void operator()(std::int32_t v) const { to.addInteger(v); }
        void operator()(float v) const { to.addReal(v); }
        void operator()(double v) const { to.addReal(v); }
        void operator()(Currency v) const { to.addInteger(v.scaled()); }
        void operator()(Date v) const { to.addReal(v.days); }
        void operator()(const std::string& v) const { to.addText(v); }
    };
    std::visit(Adder{*this}, value.store());
}

namespace {

bool isLong(std::int64_t number) {
    return number == static_cast<std::int32_t>(number);
}

// What follows stands apart from RowBlock::get, which every value of a list goes through: with the rare cases
// in it, it would save and restore more registers for each of them than it does anything else.

[[gnu::noinline]] void setOddInteger(Type type, std::int64_t number, Value::Store& out) {
    const auto real = static_cast<double>(number);
    if (type == Type::Text) {
        out = std::to_string(number);
    } else if (type == Type::Long) {
        out = Value(real).asLong();
    } else if (isLong(number)) {
        out = static_cast<std::int32_t>(number);
    } else {
        out = real;
    }
}

void setInteger(Type type, std::int64_t number, Value::Store& out) {
    switch (type) {
        case Type::YesNo:
            out = number != 0;
            break;
        case Type::Single:
            out = static_cast<float>(number);
            break;
        case Type::Double:
            out = static_cast<double>(number);
            break;
        case Type::Currency:
            out = Currency::fromScaled(number);
            break;
        case Type::Date:
            out = Date{static_cast<double>(number)};
            break;
        case Type::Long:
            if (isLong(number)) {
                out = static_cast<std::int32_t>(number);
                break;
            }
            [[fallthrough]];
        default:
            setOddInteger(type, number, out);
    }
}

[[gnu::noinline]] void setOddReal(Type type, double number, Value::Store& out) {
    switch (type) {
        case Type::YesNo:
            out = number != 0;
            break;
        case Type::Long:
            out = Value(number).asLong();
            break;
        case Type::Currency:
            out = Currency::fromScaled(std::llround(number));
            break;
        default:
            out = Value(number).asText();
    }
}

void setReal(Type type, double number, Value::Store& out) {
    switch (type) {
        case Type::Single:
            out = static_cast<float>(number);
            break;
        case Type::Date:
            out = Date{number};
            break;
        case Type::Double:
        case Type::Null:
            out = number;
            break;
        default:
            setOddReal(type, number, out);
    }
}

[[gnu::noinline]] void setText(Type type, std::string_view text, Value& out) {
    if (std::string* old = std::get_if<std::string>(&out.store())) {
        old->assign(text);
    } else {
        out.store() = std::string(text);
    }
    // In a column of another type: somebody has written into the file by other means than this engine.
    if (type != Type::Text && type != Type::Null) {
        out = out.as(type);
    }
}

// Reals that are no number are none in a store. Both zeros are the same.
std::int64_t orderOfReal(double number) {
    const auto bits = std::bit_cast<std::int64_t>(number + 0.0);
    return bits < 0 ? bits ^ std::numeric_limits<std::int64_t>::max() : bits;
}

}  // namespace

std::optional<std::string_view> RowBlock::text(std::size_t row, std::size_t column) const {
    const std::size_t cell = at(row, column);
    const Kind kind = cells_.kind(cell);
    if (kind == Kind::Null) {
        return std::string_view();
    }
    const bool isOfTexts = types_[column] == Type::Text || types_[column] == Type::Null;
    return kind == Kind::Text && isOfTexts ? std::optional(texts_.at(cells_.slot(cell))) : std::nullopt;
}

std::optional<std::vector<std::int64_t>> RowBlock::orderOf(std::size_t column) const {
    constexpr std::int64_t kFirst = std::numeric_limits<std::int64_t>::min();
    std::vector<std::int64_t> numbers;
    numbers.reserve(rows_);
    std::optional<Kind> kind;  // of all that are not Null
    for (std::size_t row = 0; row < rows_; ++row) {
        const std::size_t cell = at(row, column);
        if (cells_.kind(cell) == Kind::Null) {
            numbers.push_back(kFirst);
            continue;
        }
        if (!kind) {
            kind = cells_.kind(cell);
        }
        const bool isNumber = kind == Kind::Integer || kind == Kind::Real;
        numbers.push_back(kind == Kind::Real ? orderOfReal(std::bit_cast<double>(cells_.slot(cell)))
                                             : static_cast<std::int64_t>(cells_.slot(cell)));
        if (!isNumber || cells_.kind(cell) != kind || numbers.back() == kFirst) {
            return std::nullopt;
        }
    }
    return numbers;
}

void RowBlock::get(std::size_t row, std::size_t column, Value& out) const {
    const std::size_t cell = at(row, column);
    const std::uint64_t slot = cells_.slot(cell);
    Value::Store& store = out.store();
    switch (cells_.kind(cell)) {
        case Kind::Null:
        case Kind::Unread:
            store = std::monostate{};
            break;
        case Kind::Integer:
            setInteger(types_[column], static_cast<std::int64_t>(slot), store);
            break;
        case Kind::Real:
            setReal(types_[column], std::bit_cast<double>(slot), store);
            break;
        case Kind::Text:
            setText(types_[column], texts_.at(slot), out);
            break;
    }
}

}  // namespace dao
