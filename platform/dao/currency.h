#pragma once

#include <compare>
#include <cstdint>

namespace dao {

// Money: a 64-bit count of ten-thousandths.
class Currency {
 public:
    constexpr Currency() = default;
    static constexpr Currency fromScaled(std::int64_t tenThousandths) {
        Currency c;
        c.scaled_ = tenThousandths;
        return c;
    }
    // Rounds half away from zero on the shortest decimal of the number. Throws Error 6 (overflow).
    static Currency fromDouble(double number);
    static Currency fromSingle(float number);  // whose shortest decimal is shorter than that of its double
    constexpr std::int64_t scaled() const { return scaled_; }
    double toDouble() const { return static_cast<double>(scaled_) / 10000.0; }
    constexpr Currency operator+(Currency o) const { return fromScaled(scaled_ + o.scaled_); }
    constexpr Currency operator-(Currency o) const { return fromScaled(scaled_ - o.scaled_); }
    constexpr auto operator<=>(const Currency&) const = default;

 private:
    std::int64_t scaled_ = 0;
};

}  // namespace dao
