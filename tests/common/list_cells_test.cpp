#include "common/list_cells.h"

#include <gtest/gtest.h>

namespace {

enum class Column { First, Second, Third, Count };

struct Row {
    Column name;
    ListColumn list;
};
constexpr ListColumn kFirst{"Prvi", "prvi", 0, platform::HeaderAlignment::Left};
constexpr ListColumn kSecond{"Drugi", "drugi", 0, platform::HeaderAlignment::Right};
constexpr ListColumn kThird{"Treci", "treci", 0, platform::HeaderAlignment::Left};

TEST(ListCells, ColumnsAreCountedFromOne) {
    EXPECT_EQ(columnNumber(Column::First), 1);
    EXPECT_EQ(columnNumber(Column::Third), 3);
}

TEST(ListCells, TheFirstColumnIsTheRowsText) {
    platform::ListItem row;
    row.Text = "prva";
    row.subItems = {"druga", "treca"};
    EXPECT_EQ(cellOf(row, Column::First), "prva");
    EXPECT_EQ(cellOf(row, Column::Second), "druga");
    EXPECT_EQ(cellOf(row, Column::Third), "treca");
}

TEST(ListCells, ACellThatTheRowLacksIsEmpty) {
    EXPECT_EQ(cellOf(platform::ListItem(), Column::Third), "");
}

TEST(ListCells, WhatIsSetStandsUnderItsColumnAndNoOther) {
    platform::ListItem row;
    setCell(row, Column::Third, "treca");
    setCell(row, Column::First, "prva");
    EXPECT_EQ(row.Text, "prva");
    EXPECT_EQ(row.subItems, (QList<QString>{"", "treca"}));
}

TEST(ListCells, ATableHasOneRowForEachNameInTheirOrder) {
    constexpr std::array kRows = {Row{Column::First, kFirst}, Row{Column::Second, kSecond},
                                  Row{Column::Third, kThird}};
    EXPECT_TRUE(eachStandsAtItsName(kRows));
    EXPECT_FALSE(eachStandsAtItsName(std::array{kRows[1], kRows[0], kRows[2]})) << "two have changed places";
    EXPECT_FALSE(eachStandsAtItsName(std::array{kRows[0], kRows[1]})) << "the last one lacks its row";
    constexpr auto kColumns = columnsOf(kRows);
    ASSERT_EQ(kColumns.size(), 3U);
    EXPECT_STREQ(kColumns[1].field, "Drugi");
    EXPECT_STREQ(kColumns[2].field, "Treci");
}

}  // namespace
