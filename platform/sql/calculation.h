#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sql::writing {

// How a floating number comes of others, in postfix notation: for stores that take it as one call. Their own
// arithmetic looks at every step what kind its operands are, and a shop that asks what is still owed takes a
// dozen such steps for each service that it ever did.
class Calculation {
 public:
    // Of what the store reads as `text`. A whole number becomes one of the steps.
    static Calculation ofOperand(std::string text);
    // `sign` is one of + - * /. Empty where that would take too many steps.
    static Calculation of(char sign, const Calculation& left, const Calculation& right);

    bool isEmpty() const { return steps_.empty(); }
    // Whether the call takes less time than the steps would.
    bool isLong() const { return operations_ >= kLong && !operands_.empty(); }
    // "FUNCTION('a 100 / ...', OPERAND, ...)": the operands are called a, b, ... by their order.
    std::string call(std::string_view function) const;

 private:
    static constexpr std::size_t kLong = 4;
    static constexpr std::size_t kMostOperations = 16;

    struct Step {
        char kind = 0;  // the sign of an operation, or one of those of call()
        std::int64_t number = 0;
    };

    std::vector<Step> steps_;
    std::vector<std::string> operands_;
    std::size_t operations_ = 0;
};

}  // namespace sql::writing
