#pragma once

#include <span>

// What is typed of a product: its fields, by their numbers ("Text1(n)"; the unit is chosen in "Combo1").
enum class ProductField { Name, Description, Price, Stock, Note, Unit };

inline constexpr int kProductFields = 6;
inline constexpr int kProductFieldColumns = 4;  // of the grid that they stand in
inline constexpr int kProductTextLimit = 255;   // characters, as the products' table holds them

struct ProductFieldRow {
    const char* label;
    const char* hint;     // nullptr: none
    const char* refusal;  // what a text that is no number is called; nullptr: any text is taken
    ProductField name;
    int row, column;  // of the label
    int columns;      // of the field, to the label's right; 0: under it, over the whole width
};

std::span<const ProductFieldRow> productFields();  // by ProductField
const ProductFieldRow& rowOf(ProductField field);
bool isFigure(ProductField field);  // asks for a number
