#include "platform/dao/postgres/parameters.h"

#include <bit>

#include "platform/dao/postgres/network_order.h"

namespace dao::postgres {
namespace {

template <typename Integer>
std::string traveling(Integer value) {
    std::string out;
    appendInteger(out, value);
    return out;
}

// The head of an array of one dimension without Nulls. An empty array has no dimension at all.
std::string arrayHead(Type element, std::size_t count) {
    std::string out;
    appendInteger(out, count == 0 ? 0 : 1);
    appendInteger(out, 0);
    appendInteger(out, static_cast<unsigned>(element));
    if (count != 0) {
        appendInteger(out, static_cast<std::int32_t>(count));
        appendInteger(out, 1);  // the number of the first element
    }
    return out;
}

}  // namespace

Parameters& Parameters::integer8(std::int64_t value) {
    return add(Type::kInteger8, traveling(value));
}

Parameters& Parameters::integer4(std::int32_t value) {
    return add(Type::kInteger4, traveling(value));
}

Parameters& Parameters::integer2(std::int16_t value) {
    return add(Type::kInteger2, traveling(value));
}

Parameters& Parameters::real8(double value) {
    return add(Type::kReal8, traveling(std::bit_cast<std::uint64_t>(value)));
}

Parameters& Parameters::real4(float value) {
    return add(Type::kReal4, traveling(std::bit_cast<std::uint32_t>(value)));
}

Parameters& Parameters::boolean(bool value) {
    return add(Type::kBoolean, std::string_view(value ? "\1" : "\0", 1));
}

Parameters& Parameters::text(std::string_view value) {
    return add(Type::kText, value);
}

Parameters& Parameters::bytes(std::span<const char> value) {
    return add(Type::kBytes, std::string_view(value.data(), value.size()));
}

Parameters& Parameters::integers8(std::span<const std::int64_t> values) {
    std::string out = arrayHead(Type::kInteger8, values.size());
    out.reserve(out.size() + values.size() * (sizeof(std::int32_t) + sizeof(std::int64_t)));
    for (const std::int64_t value : values) {
        appendInteger(out, static_cast<std::int32_t>(sizeof value));
        appendInteger(out, value);
    }
    return add(Type::kIntegers8, out);
}

Parameters& Parameters::texts(std::span<const std::string> values) {
    std::string out = arrayHead(Type::kText, values.size());
    for (const std::string& value : values) {
        appendInteger(out, static_cast<std::int32_t>(value.size()));
        out += value;
    }
    return add(Type::kTexts, out);
}

Parameters& Parameters::null(Type type) {
    types_.push_back(static_cast<unsigned>(type));
    lengths_.push_back(-1);
    return *this;
}

std::vector<const char*> Parameters::values() const {
    std::vector<const char*> values;
    values.reserve(lengths_.size());
    const char* next = data_.c_str();
    for (const int length : lengths_) {
        values.push_back(length < 0 ? nullptr : next);
        next += length < 0 ? 0 : length;
    }
    return values;
}

Parameters& Parameters::add(Type type, std::string_view bytes) {
    data_ += bytes;
    types_.push_back(static_cast<unsigned>(type));
    lengths_.push_back(static_cast<int>(bytes.size()));
    return *this;
}

}  // namespace dao::postgres
