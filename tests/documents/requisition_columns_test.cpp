#include "documents/requisition_columns.h"

#include <gtest/gtest.h>

#include "support/letters.h"

namespace {

platform::ListItem rowOf(const QString& key, const QStringList& cells) {
    platform::ListItem row;
    row.Key = key;
    row.Text = cells.first();
    row.subItems = cells.mid(1);
    return row;
}

TEST(RequisitionColumns, HeadersFitAtEverySizeOfLetters) {
    expectNothingCut(requisitionColumns(), [] {
        return rowOf("K17", {"Adler", "", "", "", "SN5", "1,200.50", "2", "2,401.00"});
    });
}

// As the list stands on screen, from left to right.
TEST(RequisitionColumns, EachCellIsReadUnderItsName) {
    const platform::ListItem item =
        rowOf("K17", {"Adler", "Monitori", "17 inca", "ravan", "SN5", "1,200.50", "2", "2,401.00"});
    const RequisitionCells row(item);
    EXPECT_EQ(row.manufacturer(), "Adler");
    EXPECT_EQ(row.group(), "Monitori");
    EXPECT_EQ(row.name(), "17 inca");
    EXPECT_EQ(row.description(), "ravan");
    EXPECT_EQ(row.price(), "1,200.50");
    EXPECT_EQ(row.quantity(), "2");
    EXPECT_EQ(row.amount(), "2,401.00");
}

TEST(RequisitionColumns, TheKeyHoldsTheProductsNumber) {
    EXPECT_EQ(requisition::keyOf("17"), "K17");
    EXPECT_EQ(requisition::idOf(rowOf("K17", {""})), "17");
    EXPECT_EQ(RequisitionCells(rowOf("K2147483647", {""})).productId(), "2147483647");
}

TEST(RequisitionColumns, OnlyTheSumIsTheTotalRow) {
    const platform::ListItem total = requisition::totalRow(1234.5F);
    EXPECT_TRUE(RequisitionCells(total).isTotal());
    EXPECT_FALSE(RequisitionCells(rowOf("K1", {"total"})).isTotal());
    EXPECT_EQ(total.Key, "total");
    EXPECT_EQ(total.Text, " ");
    EXPECT_EQ(total.subItems, (QList<QString>{"", "", "", "", " ", "TOTAL:", "1,234.50"}));
}

TEST(RequisitionColumns, TheListIsSortedByTheFieldsOfTheFile) {
    QStringList fields;
    for (int column = 0; column < static_cast<int>(RequisitionColumn::Count); ++column) {
        fields.append(fieldOf(static_cast<RequisitionColumn>(column)));
    }
    EXPECT_EQ(fields.join(' '), "Proizvodjac Grupa Naziv Opis SN Cena Stanje Medjutotal");
    EXPECT_EQ(fieldOf(RequisitionColumn::SerialNumber), "SN");
}

}  // namespace
