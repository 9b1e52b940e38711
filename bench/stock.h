#pragma once

#include <QtGlobal>

class Shop;

// A catalogue of 50,000 products and a requisition of 5,000 rows in the measured copy of the shop, put there
// once: 5,000 manufacturers, ten groups of 5,000 products each.
struct Stock {
    static constexpr int kManufacturers = 5000;
    static constexpr int kGroups = 10;
    static constexpr int kProducts = 50000;
    static constexpr int kDrawn = 5000;

    qint32 firstGroup = 0;
    qint32 firstProduct = 0;  // of the first group; its products follow
    qint32 service = 0;       // with kDrawn rows of that group
    qint32 otherService = 0;  // with none
};
const Stock& stockOf(Shop& shop);
