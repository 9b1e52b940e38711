#pragma once

#include <cstdint>

#include "platform/dao/currency.h"

namespace platform {

// The shortest decimal of a number: digits times ten to the exponent. What people see on a bill, and what
// rounding has to go by: 1.005 is a little less in binary, and nobody at the counter would believe it.
struct Decimal {
    bool negative = false;
    std::uint64_t digits = 0;
    int exponent = 0;
};

// The value must be finite.
Decimal decimalOf(double value);
Decimal decimalOf(float value);
Decimal decimalOf(dao::Currency value);

// The same amount with no more than `decimals` places behind the point, half away from zero.
Decimal roundedHalfAway(Decimal number, int decimals);

// Nearest binary number to the decimal.
double toDouble(const Decimal& number);

}  // namespace platform
