#include "catalogue/product_figures.h"

#include <QLineEdit>
#include <QWidget>

#include "support/fixture.h"

namespace {

struct ProductFiguresTest : DeliveredFixture {
    bool isRefused(const QString& text) {
        line.setText(text);
        return figures.isRefused(line, "Cena proizvoda");
    }
    QWidget window;
    QLineEdit line{&window};
    ProductFigures figures{&window};
};

TEST_F(ProductFiguresTest, ANumberIsTaken) {
    EXPECT_FALSE(isRefused("12.5"));
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(line.text(), "12.5");
}

TEST_F(ProductFiguresTest, NothingIsZero) {
    EXPECT_FALSE(isRefused(""));
    EXPECT_EQ(line.text(), "0");
}

TEST_F(ProductFiguresTest, WhatIsNoNumberIsToldByItsName) {
    EXPECT_TRUE(isRefused("1.2.3"));
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Cena proizvoda mora da bude ispravna numericka vrednost. Proverite unos.");
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(line.text(), "1.2.3");
}

TEST_F(ProductFiguresTest, WhileItsBoxIsUpItIsRefusedWithoutAnother) {
    bool again = false;
    boxes.onBox = [&](const platform::Box&) { again = figures.isRefused(line, "Cena proizvoda"); };
    EXPECT_TRUE(isRefused("x"));
    EXPECT_TRUE(again);
    EXPECT_EQ(boxes.asked.size(), 1);
    boxes.onBox = nullptr;
    EXPECT_TRUE(isRefused("x"));
    EXPECT_EQ(boxes.asked.size(), 2) << "once it is gone, the next one is told again";
}

}  // namespace
