#include "common/list_cells.h"

#include <gtest/gtest.h>

namespace {

enum class Column { First, Second, Third };

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

}  // namespace
