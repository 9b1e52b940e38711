#include "platform/dao/postgres/result.h"

#include <libpq-fe.h>

#include <algorithm>
#include <bit>
#include <cstdlib>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/network_order.h"
#include "platform/dao/postgres/parameters.h"

namespace dao::postgres {
namespace {

// Dimensions, whether Nulls are among them, the type of the elements, how many, the number of the first.
constexpr std::size_t kArrayHead = 5 * sizeof(std::int32_t);
constexpr std::size_t kElementType = 2 * sizeof(std::int32_t);
constexpr std::size_t kEmptyArray = 3 * sizeof(std::int32_t);  // the same, where it has no dimension

// A shop's own types have numbers above those that the server brings along.
bool mayBeKey(unsigned type) {
    constexpr unsigned kFirstOwn = 16384;
    return type >= kFirstOwn || static_cast<Type>(type) == Type::kInteger4 ||
           static_cast<Type>(type) == Type::kInteger8;
}

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

void Result::appendKeys(int row, int column, std::int64_t none, std::vector<std::int64_t>& out) const {
    std::string_view left = value(row, column);
    if (left.size() < kEmptyArray || readInteger<std::int32_t>(left.data()) > 1 ||
        !mayBeKey(readInteger<std::uint32_t>(left.data() + kElementType))) {
        fail(errTypeMismatch);
    }
    left.remove_prefix(std::min(kArrayHead, left.size()));
    out.reserve(out.size() + left.size() / (2 * sizeof(std::int32_t)));
    while (left.size() >= sizeof(std::int32_t)) {
        const auto length = readInteger<std::int32_t>(left.data());
        left.remove_prefix(sizeof length);
        const std::size_t size = length < 0 ? 0 : static_cast<std::size_t>(length);
        if (size > left.size()) {
            fail(errTypeMismatch);
        }
        out.push_back(length < 0 ? none : integerOfWidth(left.substr(0, size)));
        left.remove_prefix(size);
    }
}

std::string_view Result::raw(int row, int column) const {
    const pg_result* const answer = answer_.get();
    const int length = PQgetlength(answer, row, column);
    if (length == 0 && PQgetisnull(answer, row, column) != 0) {
        return {};
    }
    return {PQgetvalue(answer, row, column), static_cast<std::size_t>(length)};
}

std::int64_t Result::key(int row, int column) const {
    return integerOfWidth(raw(row, column));
}

std::string_view Result::value(int row, int column) const {
    if (isNull(row, column)) {
        fail(errInvalidUseOfNull);
    }
    return {PQgetvalue(answer_.get(), row, column),
            static_cast<std::size_t>(PQgetlength(answer_.get(), row, column))};
}

}  // namespace dao::postgres
