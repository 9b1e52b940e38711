#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dao::postgres {

// The server's own numbers for the types that we send and read.
enum class Type : unsigned {
    kBoolean = 16,
    kBytes = 17,
    kName = 19,
    kInteger8 = 20,
    kInteger2 = 21,
    kInteger4 = 23,
    kText = 25,
    kOid = 26,
    kReal4 = 700,
    kReal8 = 701,
    kTexts = 1009,
    kIntegers8 = 1016,
    kPaddedText = 1042,
    kLimitedText = 1043,
};

// The values for $1, $2, ... of a statement, in their order, each with its type: the server never has to
// guess a type from the statement, and no value ever becomes a part of its text.
class Parameters {
 public:
    Parameters& integer8(std::int64_t value);
    Parameters& integer4(std::int32_t value);
    Parameters& integer2(std::int16_t value);
    Parameters& real8(double value);
    Parameters& real4(float value);
    Parameters& boolean(bool value);
    Parameters& text(std::string_view value);  // UTF-8; the server refuses a zero character
    Parameters& bytes(std::span<const char> value);
    Parameters& integers8(std::span<const std::int64_t> values);
    Parameters& texts(std::span<const std::string> values);
    Parameters& null(Type type);

    // As the client library takes them: one entry a value, valid until the next change.
    const std::vector<unsigned>& types() const { return types_; }
    const std::vector<int>& lengths() const { return lengths_; }
    std::vector<const char*> values() const;  // nullptr: Null

 private:
    Parameters& add(Type type, std::string_view bytes);

    std::string data_;  // all of them, end to end
    std::vector<unsigned> types_;
    std::vector<int> lengths_;  // -1: Null
};

}  // namespace dao::postgres
