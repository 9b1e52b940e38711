#include "catalogue/product_fields.h"

#include <cstddef>

namespace {

constexpr ProductFieldRow kRows[] = {
    {"&Naziv:", "Naziv proizvoda.", nullptr, ProductField::Name, 0, 0, 3},
    {"&Opis:", "Detaljniji opis komponente.", nullptr, ProductField::Description, 1, 0, 3},
    {"&Cena [EUR]:", "Cena komponente u EUR.", "Cena proizvoda", ProductField::Price, 2, 0, 1},
    {"&Stanje:", "Raspoloziva kolicina komponente u magacinu.", "Kolicina proizvoda", ProductField::Stock, 2,
     2, 1},
    {"N&apomena:", "Dodatne napomene vezane za komponentu.", nullptr, ProductField::Note, 4, 0, 0},
    {"&Jedinica mere:", nullptr, nullptr, ProductField::Unit, 3, 0, 1},
};

}  // namespace

std::span<const ProductFieldRow> productFields() {
    return kRows;
}

const ProductFieldRow& rowOf(ProductField field) {
    return kRows[static_cast<std::size_t>(field)];
}

bool isFigure(ProductField field) {
    return rowOf(field).refusal != nullptr;
}
