#pragma once

#include <QString>

#include "common/settings.h"

// The entries of the document window that are kept from one document to the next.
namespace print_invoice {

// The kinds of document.
constexpr int kProForma = 0, kInvoice = 1;

struct ComboRow {
    int index;  // of Combo1
    const settings::Setting& setting;
    int usual;
};
constexpr ComboRow kCombos[] = {{0, settings::document.NumberDelimiter, 0},
                                {1, settings::document.NumberSuffix, 0},
                                {2, settings::document.PriceRoundUp, 2}};

}  // namespace print_invoice
