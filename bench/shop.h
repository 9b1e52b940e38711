#pragma once

#include <string>

#include "measured_shop.h"
#include "plain_shop.h"

// The generated shop twice, so that neither side reads pages that the other has just deciphered or written:
// one copy of the file open through the engine, the other through the plain C API.
class Shop final : public MeasuredShop {
 public:
    // The file at `plainPath` is made: a copy of the other, once that has its catalogue.
    Shop(const std::string& ourPath, const std::string& plainPath);

    dao::Database& ours() override { return ours_; }
    PlainShop& plain() { return plain_; }
    const Stock& stock() const override { return stock_; }
    // Closes ours, and looks whether each file holds what it held before and both the same rows. Ends the
    // program where not. Nothing of ours may be open any more.
    void checkNothingLeft();

 private:
    std::string ourPath_;
    Stock stock_;
    PlainShop plain_;
    Lines schema_;
    dao::Database ours_;
};
