#include "platform/sql/calculation.h"

#include <charconv>
#include <optional>
#include <utility>

namespace sql::writing {
namespace {

constexpr char kNumber = '#';
constexpr char kOperand = 'a';
constexpr std::int64_t kExact = std::int64_t{1} << 53;  // beyond it a floating number leaves some out

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = failure == std::errc() && end == text.data() + text.size();
    return whole && number >= 0 && number <= kExact ? std::optional(number) : std::nullopt;
}

}  // namespace

Calculation Calculation::ofOperand(std::string text) {
    Calculation result;
    if (const std::optional<std::int64_t> number = wholeNumber(text)) {
        result.steps_.push_back({kNumber, *number});
        return result;
    }
    result.steps_.push_back({kOperand, 0});
    result.operands_.push_back(std::move(text));
    return result;
}

Calculation Calculation::of(char sign, const Calculation& left, const Calculation& right) {
    Calculation result = left;
    result.operations_ += right.operations_ + 1;
    if (result.operations_ > kMostOperations) {
        return {};
    }
    for (Step step : right.steps_) {
        step.number += step.kind == kOperand ? static_cast<std::int64_t>(left.operands_.size()) : 0;
        result.steps_.push_back(step);
    }
    result.operands_.insert(result.operands_.end(), right.operands_.begin(), right.operands_.end());
    result.steps_.push_back({sign, 0});
    return result;
}

std::string Calculation::call(std::string_view function) const {
    std::string text(function);
    text += "('";
    for (const Step& step : steps_) {
        text += &step == steps_.data() ? "" : " ";
        if (step.kind == kNumber) {
            text += std::to_string(step.number);
        } else {
            text += static_cast<char>(step.kind + (step.kind == kOperand ? step.number : 0));
        }
    }
    text += '\'';
    for (const std::string& operand : operands_) {
        text += ", " + operand;
    }
    return text + ")";
}

}  // namespace sql::writing
