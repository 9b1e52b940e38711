#pragma once

#include "platform/dao/database.h"
#include "stock.h"

// A shop that is measured, as our side of a measure sees it, wherever its records lie.
class MeasuredShop {
 public:
    MeasuredShop() = default;
    MeasuredShop(const MeasuredShop&) = delete;
    MeasuredShop& operator=(const MeasuredShop&) = delete;
    virtual ~MeasuredShop() = default;

    virtual dao::Database& ours() = 0;
    virtual const Stock& stock() const = 0;

    static constexpr int kServices = 300000;
};
