#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "exchange/price_numbers.h"
#include "exchange/sheet.h"

namespace exchange {

// What a supplier tells of a product.
enum class PriceField { Group, Manufacturer, Name, Price, Description, Stock, Unit, Note };
inline constexpr std::size_t kPriceFields = 8;
const char* nameOf(PriceField field);  // "group", as --map has it

// Where each stands in a supplier's table.
class PriceColumns {
 public:
    // `maps`: "FIELD=COLUMN", several of them parted by commas; a column is told by its heading or its number
    // from 1. What is not told is guessed from the heading, in Serbian or English. The heading is the first
    // of the upper rows in which group, manufacturer, name and price are found. Throws std::runtime_error
    // where there is none, or where two columns might be meant.
    PriceColumns(const std::vector<SheetRow>& rows, const std::vector<std::string>& maps);

    // The rows behind the heading begin here.
    std::size_t firstRow() const { return firstRow_; }
    bool has(PriceField field) const { return places_[index(field)].has_value(); }
    // Of that row; an empty one where the row or the table has none.
    const SheetCell& cell(const SheetRow& row, PriceField field) const;
    // As people find it again: its heading, or its number.
    std::string heading(PriceField field) const;
    // The currency in the heading of the price.
    std::optional<Money> money() const { return money_; }

 private:
    using Places = std::array<std::optional<std::size_t>, kPriceFields>;
    static constexpr std::size_t index(PriceField field) { return static_cast<std::size_t>(field); }

    Places places_;
    std::vector<std::string> headings_;
    std::size_t firstRow_ = 0;
    std::optional<Money> money_;
};

}  // namespace exchange
