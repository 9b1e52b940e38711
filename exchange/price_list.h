#pragma once

#include <optional>
#include <string>
#include <vector>

#include "exchange/price_columns.h"

namespace exchange {

// A line of a supplier's table, as far as the table alone tells. Texts are as the shop keeps them: groups and
// manufacturers in capitals while MakeProperCase is on. Empty where nothing stands there.
struct PriceLine {
    int line = 0;
    std::string group, manufacturer, name, description, unit, note;
    float price = 0;  // euro
    std::optional<float> stock;
};

struct BadLine {
    int line = 0;
    std::string column;  // its heading
    std::string why;
};

struct PriceListChoices {
    std::optional<Money>
        money;       // nothing: what the heading of the price says, and euro where it says nothing
    float rate = 0;  // dinars for one euro
    DecimalMark decimal = DecimalMark::Unknown;  // Unknown: what the table's numbers tell together
};

struct PriceList {
    std::vector<PriceLine> lines;
    std::vector<BadLine> bad;
};

// Reads the rows behind the heading. A number that may be read in two ways, and that no other number of the
// table decides, makes its line a bad one; so do a missing text, a text longer than the shop keeps, and a
// currency beside a price that is not the table's. Throws std::runtime_error for prices in dinars without a
// rate.
PriceList readPriceList(const std::vector<SheetRow>& rows, const PriceColumns& columns,
                        const PriceListChoices& choices);

}  // namespace exchange
