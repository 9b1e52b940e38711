#pragma once

class PlainShop;

// A catalogue of 50,000 products and a requisition of 5,000 rows in the measured shop: 5,000 manufacturers,
// ten groups of 5,000 products each.
struct Stock {
    static constexpr int kManufacturers = 5000;
    static constexpr int kGroups = 10;
    static constexpr int kProducts = 50000;
    static constexpr int kDrawn = 5000;

    int firstGroup = 0;
    int firstProduct = 0;  // of the first group; its products follow
    int service = 0;       // with kDrawn rows of that group
};
Stock fillStock(const PlainShop& shop);
