#include "platform/dao/postgres/result.h"

#include <libpq-fe.h>

#include <bit>
#include <cstdlib>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/network_order.h"
#include "platform/dao/postgres/parameters.h"

namespace dao::postgres {
namespace {

// Dimensions, whether Nulls are among them, the type of the elements, how many, the number of the first.
constexpr std::size_t kArrayHead = 5 * sizeof(std::int32_t);

std::int64_t integerOfWidth(std::string_view value) {
    switch (value.size()) {
        case 2:
            return readInteger<std::int16_t>(value.data());
        case 4:
            return readInteger<std::int32_t>(value.data());
        case 8:
            return readInteger<std::int64_t>(value.data());
        default:
            fail(errTypeMismatch);
    }
}

}  // namespace

void Result::Clear::operator()(pg_result* answer) const {
    PQclear(answer);
}

Result::Result(pg_result* answer) : answer_(answer) {}
Result::~Result() = default;
Result::Result(Result&&) noexcept = default;
Result& Result::operator=(Result&&) noexcept = default;

int Result::rows() const {
    return PQntuples(answer_.get());
}

int Result::columns() const {
    return PQnfields(answer_.get());
}

unsigned Result::type(int column) const {
    return column >= 0 && column < columns() ? PQftype(answer_.get(), column) : 0;
}

std::int64_t Result::affected() const {
    return std::strtoll(PQcmdTuples(answer_.get()), nullptr, 10);
}

bool Result::isNull(int row, int column) const {
    const bool there = row >= 0 && row < rows() && column >= 0 && column < columns();
    return !there || PQgetisnull(answer_.get(), row, column) != 0;
}

std::int64_t Result::integer(int row, int column) const {
    const std::string_view bytes = value(row, column);
    switch (static_cast<Type>(type(column))) {
        case Type::kInteger8:
        case Type::kInteger4:
        case Type::kInteger2:
            return integerOfWidth(bytes);
        case Type::kOid:
            return readInteger<std::uint32_t>(bytes.data());
        default:
            fail(errTypeMismatch);
    }
}

double Result::real(int row, int column) const {
    const std::string_view bytes = value(row, column);
    switch (static_cast<Type>(type(column))) {
        case Type::kReal8:
            return std::bit_cast<double>(readInteger<std::uint64_t>(bytes.data()));
        case Type::kReal4:
            return std::bit_cast<float>(readInteger<std::uint32_t>(bytes.data()));
        default:
            fail(errTypeMismatch);
    }
}

bool Result::boolean(int row, int column) const {
    const std::string_view bytes = value(row, column);
    if (static_cast<Type>(type(column)) != Type::kBoolean) {
        fail(errTypeMismatch);
    }
    return bytes.front() != 0;
}

std::string_view Result::text(int row, int column) const {
    const std::string_view bytes = value(row, column);
    switch (static_cast<Type>(type(column))) {
        case Type::kText:
        case Type::kName:
        case Type::kPaddedText:
        case Type::kLimitedText:
            return bytes;
        default:
            fail(errTypeMismatch);
    }
}

std::span<const char> Result::bytes(int row, int column) const {
    const std::string_view found = value(row, column);
    if (static_cast<Type>(type(column)) != Type::kBytes) {
        fail(errTypeMismatch);
    }
    return {found.data(), found.size()};
}

std::vector<std::int64_t> Result::integers(int row, int column) const {
    const std::string_view bytes = value(row, column);
    if (static_cast<Type>(type(column)) != Type::kIntegers8) {
        fail(errTypeMismatch);
    }
    if (readInteger<std::int32_t>(bytes.data()) > 1) {
        fail(errTypeMismatch);  // rows of rows
    }
    std::vector<std::int64_t> found;
    for (std::size_t at = kArrayHead; at < bytes.size(); at += sizeof(std::int64_t)) {
        const auto length = readInteger<std::int32_t>(bytes.data() + at);
        if (length < 0) {
            fail(errInvalidUseOfNull);
        }
        at += sizeof length;
        found.push_back(readInteger<std::int64_t>(bytes.data() + at));
    }
    return found;
}

std::string_view Result::value(int row, int column) const {
    if (isNull(row, column)) {
        fail(errInvalidUseOfNull);
    }
    return {PQgetvalue(answer_.get(), row, column),
            static_cast<std::size_t>(PQgetlength(answer_.get(), row, column))};
}

}  // namespace dao::postgres
