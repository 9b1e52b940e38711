#include "common/list_columns.h"

#include <gtest/gtest.h>

#include "platform/controls/list_view.h"
#include "platform/system/trap.h"

namespace {

struct ListColumns : testing::Test {
    ListColumns() {
        for (const char* key : {"Naziv", "Opis", "Cena"}) {
            list.columns().add(key, key, platform::HeaderAlignment::Left);
        }
    }
    platform::ListView list;
    platform::Trap step;
};

TEST_F(ListColumns, WidthsAndPlacesComeBackAsTheyWereKept) {
    placeColumns(list, "1500;750;3000", "3;1;2", step);
    EXPECT_FALSE(step.failed());
    EXPECT_EQ(columnWidths(list), "1500;750;3000");
    EXPECT_EQ(columnPositions(list), "3;1;2");
}

TEST_F(ListColumns, AnEmptyFigureIsNoWidthAtAll) {
    placeColumns(list, "1500;;3000", "1;2;3", step);
    EXPECT_FALSE(step.failed());
    EXPECT_EQ(list.columns().width(2), 0);
}

TEST_F(ListColumns, AFigureTooManyFailsAndTheOthersStand) {
    placeColumns(list, "1500;750;3000;1440", "2;1;3", step);
    EXPECT_EQ(step.number(), 35600);
    EXPECT_EQ(columnWidths(list), "1500;750;3000");
    EXPECT_EQ(columnPositions(list), "2;1;3");
}

}  // namespace
