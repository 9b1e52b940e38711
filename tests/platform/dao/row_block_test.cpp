#include "platform/dao/row_block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <variant>
#include <vector>

using dao::RowBlock;
using dao::Type;
using dao::Value;

namespace {

TEST(RowBlockTest, ATextLiesThereWhereTheValueIsOne) {
    RowBlock rows;
    rows.reset({Type::Text, Type::Null, Type::Long, Type::Text, Type::Text, Type::Text});
    rows.startRow();
    rows.addText("Petrović");
    rows.addText("");
    rows.addText("12");  // somebody has written into the file by other means
    rows.addInteger(12);
    rows.addNull();
    rows.addUnread();
    rows.endRow();
    EXPECT_EQ(rows.text(0, 0), "Petrović");
    EXPECT_EQ(rows.text(0, 1), "");
    EXPECT_EQ(rows.text(0, 2), std::nullopt);
    EXPECT_EQ(rows.text(0, 3), std::nullopt);
    EXPECT_EQ(rows.text(0, 4), "");
    EXPECT_EQ(rows.text(0, 5), std::nullopt);
}

TEST(RowBlockTest, ATextIsTheOneOfTheValue) {
    RowBlock rows;
    rows.reset({Type::Text, Type::Text, Type::Long});
    rows.startRow();
    rows.addText("Petrović");
    rows.addInteger(12);
    rows.addText("12");
    rows.endRow();
    Value value;
    rows.get(0, 0, value);
    EXPECT_EQ(rows.text(0, 0), value.textRef());
    rows.get(0, 1, value);
    EXPECT_EQ(value, Value("12"));
    rows.get(0, 2, value);
    EXPECT_EQ(value, Value(12));
}

// A column of these cells: texts, numbers and Nulls.
using Cell = std::variant<std::monostate, std::int64_t, double, const char*>;

std::optional<std::vector<std::int64_t>> orderOf(std::initializer_list<Cell> cells) {
    RowBlock rows;
    rows.reset({Type::Null});
    for (const Cell& cell : cells) {
        rows.startRow();
        if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
            rows.addInteger(*whole);
        } else if (const auto* real = std::get_if<double>(&cell)) {
            rows.addReal(*real);
        } else if (const auto* text = std::get_if<const char*>(&cell)) {
            rows.addText(*text);
        } else {
            rows.addNull();
        }
        rows.endRow();
    }
    return rows.orderOf(0);
}

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();

TEST(RowBlockTest, WholeNumbersStandInTheirOrderNullFirst) {
    EXPECT_EQ(orderOf({std::int64_t{7}, Cell(), std::int64_t{-3}}),
              (std::vector{std::int64_t{7}, kLowest, std::int64_t{-3}}));
    EXPECT_EQ(orderOf({}), std::vector<std::int64_t>());
    EXPECT_EQ(orderOf({Cell(), Cell()}), (std::vector{kLowest, kLowest}));
}

TEST(RowBlockTest, OtherNumbersStandInTheirOrderToo) {
    constexpr double kNoEnd = std::numeric_limits<double>::infinity();
    const auto order =
        orderOf({Cell(), -kNoEnd, -1e300, -2.5, -2.25, -1e-300, 0.0, 1e-300, 1.0, 40000.5, kNoEnd});
    ASSERT_TRUE(order);
    EXPECT_TRUE(std::is_sorted(order->begin(), order->end(), std::less_equal<>()));
    const auto zeros = orderOf({0.0, -0.0});
    ASSERT_TRUE(zeros);
    EXPECT_EQ(zeros->front(), zeros->back());
}

TEST(RowBlockTest, WhatIsOfMoreThanOneKindHasNoOrderHere) {
    EXPECT_EQ(orderOf({"text"}), std::nullopt);
    EXPECT_EQ(orderOf({Cell(), std::int64_t{1}, "text"}), std::nullopt);
    EXPECT_EQ(orderOf({std::int64_t{1}, 1.5}), std::nullopt);
    EXPECT_EQ(orderOf({1.5, std::int64_t{1}}), std::nullopt);
    EXPECT_EQ(orderOf({Cell(), kLowest}), std::nullopt);
    RowBlock rows;
    rows.reset({Type::Long});
    rows.startRow();
    rows.addUnread();
    rows.endRow();
    EXPECT_EQ(rows.orderOf(0), std::nullopt);
}

}  // namespace
