#include "platform/dao/row_block.h"

#include <gtest/gtest.h>

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

}  // namespace
