#include "catalogue/product_fields.h"

#include <cstddef>

namespace {

constexpr ProductFieldRow kRows[] = {
    {ProductField::Name, "&Naziv:", "Naziv proizvoda.", nullptr, 0, 0, 3},
    {ProductField::Description, "&Opis:", "Detaljniji opis komponente.", nullptr, 1, 0, 3},
    {ProductField::Price, "&Cena [EUR]:", "Cena komponente u EUR.", "Cena proizvoda", 2, 0, 1},
    {ProductField::Stock, "&Stanje:", "Raspoloziva kolicina komponente u magacinu.", "Kolicina proizvoda", 2,
     2, 1},
    {ProductField::Note, "N&apomena:", "Dodatne napomene vezane za komponentu.", nullptr, 4, 0, 0},
    {ProductField::Unit, "&Jedinica mere:", nullptr, nullptr, 3, 0, 1},
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
