// The columns of the product list by their names, and what a row keeps behind them.
#include "catalogue/product_columns.h"

#include <gtest/gtest.h>

#include "common/list_cells.h"
#include "platform/system/numbers.h"
#include "support/letters.h"

namespace {

using platform::HeaderAlignment;

TEST(ProductColumns, EachNameStandsForItsOwnField) {
    EXPECT_EQ(fieldOf(ProductColumn::Manufacturer), "Proizvodjac");
    EXPECT_EQ(fieldOf(ProductColumn::Name), "Naziv");
    EXPECT_EQ(fieldOf(ProductColumn::Description), "Opis");
    EXPECT_EQ(fieldOf(ProductColumn::Price), "Cena1");
    EXPECT_EQ(fieldOf(ProductColumn::Stock), "Stanje");
}

TEST(ProductColumns, OnlyNumbersStandAtTheRightAndOnlyThePriceTellsItsUnit) {
    QStringList right, money;
    for (const ListColumn& column : productColumns()) {
        if (column.alignment == HeaderAlignment::Right) {
            right.append(column.field);
        }
        if (column.isMoney) {
            money.append(column.field);
        }
    }
    EXPECT_EQ(right, (QStringList{"Cena1", "Stanje"}));
    EXPECT_EQ(money, QStringList{"Cena1"});
}

// Who has never moved a column finds the list as the table describes it.
TEST(ProductColumns, TheSettingsBeginWithTheTable) {
    expectNothingCut(productColumns(), [] {
        platform::ListItem row;
        row.Key = productKey(1);
        setCell(row, ProductColumn::Manufacturer, QStringLiteral("Samsung"));
        setCell(row, ProductColumn::Price, platform::formatGrouped(141058.75));
        return row;
    });
    EXPECT_EQ(defaultWidths(productColumns()), "1440;1440;1440;1440;1440");
    EXPECT_EQ(defaultPositions(productColumns()), "1;2;3;4;5");
}

TEST(ProductColumns, AKeyGivesBackItsNumber) {
    EXPECT_EQ(productKey(17), "K17");
    EXPECT_EQ(productId("K17"), 17);
    EXPECT_EQ(productId(productKey(2147483647)), 2147483647);
    EXPECT_EQ(productId(""), 0);
    EXPECT_EQ(productId("K"), 0);
}

TEST(ProductColumns, EachTextComesBackFromItsOwnColumnWhateverTheOrder) {
    constexpr ProductColumn kAll[] = {ProductColumn::Stock, ProductColumn::Manufacturer, ProductColumn::Price,
                                      ProductColumn::Name, ProductColumn::Description};
    ProductRow row;
    for (const ProductColumn column : kAll) {
        row.setText(column, fieldOf(column) + QStringLiteral("!"));
    }
    for (const ProductColumn column : kAll) {
        EXPECT_EQ(row.text(column), fieldOf(column) + QStringLiteral("!"));
    }
    EXPECT_EQ(row.item().Text, "Proizvodjac!");
    EXPECT_EQ(row.item().subItems, (QList<QString>{"Naziv!", "Opis!", "Cena1!", "Stanje!"}));
}

TEST(ProductColumns, NumbersAreReadFromWhatIsShown) {
    ProductRow row;
    row.setText(ProductColumn::Price, platform::formatGrouped(1234.5));
    row.setText(ProductColumn::Stock, platform::textOfSingle(2.5F));
    EXPECT_EQ(row.price(), 1234.5);
    EXPECT_EQ(row.stock(), 2.5F);
    row.setText(ProductColumn::Price, QString());
    row.setText(ProductColumn::Stock, QString());
    EXPECT_EQ(row.price(), std::nullopt);
    EXPECT_EQ(row.stock(), 0.0F);
}

TEST(ProductColumns, ANoteMayHoldBarsAndAUnitBeEmpty) {
    struct Case {
        const char *note, *unit;
    };
    for (const Case& each : {Case{"", ""}, Case{"", "Kom."}, Case{"uz ventilator", "Kom."}, Case{"a|b|", "m"},
                             Case{"two\nlines|", ""}}) {
        ProductRow row;
        row.setNoteAndUnit(each.note, each.unit);
        EXPECT_EQ(row.note(), each.note) << row.item().Tag.toStdString();
        EXPECT_EQ(row.unit(), each.unit) << row.item().Tag.toStdString();
    }
}

TEST(ProductColumns, ARowIsMarkedByWhetherThereIsAnyOfIt) {
    ProductRow texts;
    texts.setText(ProductColumn::Name, "17 inca");
    struct Case {
        float pieces;
        const char* icon;
    };
    for (const Case& each :
         {Case{5, "stanjeok"}, Case{0.5F, "stanjeok"}, Case{0, "stanjenula"}, Case{-1, "stanjenula"}}) {
        const platform::ListItem item = productItem(17, texts, each.pieces);
        EXPECT_EQ(item.SmallIcon, each.icon) << each.pieces;
        EXPECT_EQ(ProductRow(item).id(), 17);
        EXPECT_EQ(cellOf(item, ProductColumn::Name), "17 inca");
    }
}

}  // namespace
