#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "platform/dao/currency.h"
#include "platform/dao/date.h"
#include "platform/sql/types.h"

namespace dao {

using sql::Type;

// A field's value. Null is a value of its own; reading it as a number or a date throws Error 94 ("Invalid use
// of Null"), reading it as a text gives the empty text.
class Value {
 public:
    Value() = default;  // Null
    Value(bool v) : v_(v) {}
    Value(std::int32_t v) : v_(v) {}
    Value(float v) : v_(v) {}
    Value(double v) : v_(v) {}
    Value(Currency v) : v_(v) {}
    Value(Date v) : v_(v) {}
    Value(std::string v) : v_(std::move(v)) {}
    Value(const char* v) : v_(std::string(v)) {}

    bool isNull() const { return v_.index() == 0; }
    Type type() const;

    // Conversions as the engine makes them: between numbers freely, from a text where it reads as a number
    // with a point. Throws Error 94 for Null, 13 (type mismatch), 6 (overflow).
    bool asBool() const;
    std::int32_t asLong() const;
    float asSingle() const;
    double asDouble() const;
    Currency asCurrency() const;
    Date asDate() const;
    // Null gives the empty text; a number its shortest text with a point; True "True".
    std::string asText() const;
    // Of that type, as the conversions above make it; as it is where `type` is Null.
    Value as(Type type) const;
    // The text itself, without a copy; the empty text where the value is Null or no text.
    const std::string& textRef() const;

    bool operator==(const Value&) const = default;

    using Store =
        std::variant<std::monostate, bool, std::int32_t, float, double, Currency, Date, std::string>;
    const Store& store() const { return v_; }
    Store& store() { return v_; }

 private:
    Store v_;
};

}  // namespace dao
