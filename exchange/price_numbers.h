#pragma once

#include <optional>
#include <string>
#include <string_view>

// Numbers as people write them in price lists.
namespace exchange {

enum class Money { Euro, Dinars };

// A number's digits and marks, without blanks and apostrophes between the thousands and the currency around
// them.
struct TypedNumber {
    std::string digits;          // of 0-9, ',' and '.', perhaps a '-' before
    std::optional<Money> money;  // what stands beside it, if anything
};
// Nothing where there is anything else.
std::optional<TypedNumber> typedNumber(std::string_view text);

// Which mark begins the decimals, as far as that is known.
enum class DecimalMark { Unknown, Comma, Point };

// What the digits alone tell: "1.234,5" has a comma, "12.50" a point, "1.234" may be either, and so may "7".
DecimalMark markIn(const std::string& digits);

// The number under that mark, the other one being for thousands, between groups of three; nothing where it is
// none.
std::optional<double> numberUnder(DecimalMark mark, const std::string& digits);

}  // namespace exchange
