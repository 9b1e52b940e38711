#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/dao/sqlite/connection.h"
#include "platform/dao/sqlite/function_state.h"

// dao_calculate(STEPS, A, B, ...): a calculation of floating numbers in postfix notation. STEPS are whole
// numbers, the operands as a, b, ..., and the signs + - * /, with a blank between each two. As with the
// library's own arithmetic Null makes Null, and so does what is no number: a division by zero, one infinity
// less another.
namespace dao::driver {
namespace {

constexpr double kNull = std::numeric_limits<double>::quiet_NaN();  // what goes on from it stays it

struct Step {
    char sign = 0;            // of an operation; 0: a value is put down
    std::size_t operand = 0;  // which, from 1; 0: `number`
    double number = 0;
};

class Calculation {
 public:
    // nullptr where the steps are not as told above, or there are not so many operands.
    static std::unique_ptr<Calculation> read(std::string_view text, std::size_t operands);

    // NaN: Null.
    double run(sqlite3_value** operands) const;

 private:
    static constexpr std::size_t kDeepest = 32;  // values put down at once

    static std::optional<Step> stepOf(std::string_view word, std::size_t operands);
    bool add(const Step& step);

    std::vector<Step> steps_;
    std::size_t depth_ = 0;
};

std::unique_ptr<Calculation> Calculation::read(std::string_view text, std::size_t operands) {
    auto result = std::make_unique<Calculation>();
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        const std::optional<Step> step = stepOf(word, operands);
        if (!step || !result->add(*step)) {
            return nullptr;
        }
        text.remove_prefix(std::min(text.size(), word.size() + 1));
    }
    return result->depth_ == 1 ? std::move(result) : nullptr;
}

std::optional<Step> Calculation::stepOf(std::string_view word, std::size_t operands) {
    if (word.size() == 1 && std::string_view("+-*/").find(word[0]) != std::string_view::npos) {
        return Step{.sign = word[0]};
    }
    if (word.size() == 1 && word[0] >= 'a' && word[0] <= 'z') {
        const auto operand = static_cast<std::size_t>(word[0] - 'a') + 1;
        return operand <= operands ? std::optional(Step{.operand = operand}) : std::nullopt;
    }
    std::int64_t number = 0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), number);
    return failure == std::errc() && end == word.data() + word.size()
               ? std::optional(Step{.number = static_cast<double>(number)})
               : std::nullopt;
}

// False: it finds no two values to go on from, or no room for its own.
bool Calculation::add(const Step& step) {
    if (step.sign == 0 ? depth_ == kDeepest : depth_ < 2) {
        return false;
    }
    depth_ = step.sign == 0 ? depth_ + 1 : depth_ - 1;
    steps_.push_back(step);
    return true;
}

double valueOf(sqlite3_value* operand) {
    return sqlite3_value_type(operand) == SQLITE_NULL ? kNull : sqlite3_value_double(operand);
}

double outcome(char sign, double left, double right) {
    switch (sign) {
        case '+':
            return left + right;
        case '-':
            return left - right;
        case '*':
            return left * right;
        default:
            return right == 0 ? kNull : left / right;
    }
}

double Calculation::run(sqlite3_value** operands) const {
    std::array<double, kDeepest> values;
    double* top = values.data();  // behind the last that was put down
    for (const Step& step : steps_) {
        if (step.sign == 0) {
            *top++ = step.operand == 0 ? step.number : valueOf(operands[step.operand - 1]);
        } else {
            --top;
            top[-1] = outcome(step.sign, top[-1], *top);
        }
    }
    return values[0];
}

void calculate(sqlite3_context* context, int count, sqlite3_value** values) {
    if (count == 0) {
        return sqlite3_result_error_code(context, SQLITE_MISMATCH);
    }
    withinLibrary(context, [&] {
        const auto* const calculation = keptWithStatement<Calculation>(context, [&] {
            return Calculation::read(textOf(values[0]), static_cast<std::size_t>(count) - 1);
        });
        if (calculation == nullptr) {
            return sqlite3_result_error_code(context, SQLITE_MISMATCH);
        }
        // NaN becomes Null on its own.
        sqlite3_result_double(context, calculation->run(values + 1));
    });
}

}  // namespace

void installCalculations(sqlite3* db) {
    constexpr int kPure = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(db, "dao_calculate", -1, kPure, nullptr, &calculate, nullptr, nullptr,
                               nullptr);
}

}  // namespace dao::driver
