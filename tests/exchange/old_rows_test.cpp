#include "exchange/old_rows.h"

#include <gmock/gmock.h>

#include <cmath>

#include "exchange/new_shop.h"
#include "support/places.h"

namespace {

using dao::Value;
using exchange::OldShop;
using exchange::OldTable;

std::vector<std::string> ourTables() {
    std::vector<std::string> names;
    for (const dao::TableDef& table : exchange::NewShop::tables()) {
        names.push_back(table.Name());
    }
    return names;
}

class OldRowsTest : public ::testing::Test {
 protected:
    static const OldShop& shop() {
        static const OldShop read =
            exchange::readOldShop(std::string(tests::kSourceFolder) + "/exchange/old-shop.mdb", ourTables());
        return read;
    }
    static Value cell(const std::string& table, std::size_t row, const std::string& column) {
        const OldTable* found = shop().table(table);
        Value value;
        found->rows.get(row, static_cast<std::size_t>(found->indexOf(column)), value);
        return value;
    }
};

TEST_F(OldRowsTest, FindsEveryRowThatTheTablesTellOf) {
    const std::map<std::string, std::size_t> expected{
        {"Customers", 300},  {"Computers", 600}, {"Services", 900}, {"ServiceTypes", 7},   {"Grupe", 7},
        {"Proizvodjaci", 7}, {"JM", 5},          {"Oprema", 400},   {"InvoiceData", 1800}, {"DocNumber", 1}};
    for (const auto& [table, rows] : expected) {
        ASSERT_NE(shop().table(table), nullptr) << table;
        EXPECT_EQ(shop().table(table)->rows.rows(), rows) << table;
        EXPECT_EQ(shop().table(table)->toldRows, static_cast<std::int64_t>(rows)) << table;
        EXPECT_TRUE(shop().table(table)->badRows.empty()) << table;
        EXPECT_TRUE(shop().table(table)->unsoundTexts.empty()) << table;
    }
}

TEST_F(OldRowsTest, ReadsAmountsToTheLastTenThousandth) {
    EXPECT_EQ(cell("Services", 0, "ID").asLong(), 1);
    EXPECT_EQ(cell("Services", 0, "Price").asCurrency().scaled(), 4395100);
    EXPECT_EQ(cell("Services", 2, "Paid").asCurrency().scaled(), 447000);
}

TEST_F(OldRowsTest, ReadsTheEmptyDateAsItIs) {
    EXPECT_EQ(cell("Services", 0, "ServiceFinished").asDate().days, 1.0);
    EXPECT_EQ(cell("Services", 0, "ServiceStarted").asDate().days, 38019.0);
}

TEST_F(OldRowsTest, TellsNullFromTheEmptyText) {
    EXPECT_TRUE(cell("Oprema", 0, "Opis").isNull());
    EXPECT_EQ(cell("Oprema", 1, "Opis").asText(), "Opis artikla 1");
}

TEST_F(OldRowsTest, KeepsQuotesLettersAndLineBreaks) {
    EXPECT_EQ(cell("Oprema", 0, "Naziv").asText(), "Artikal 1 d'Or");
    EXPECT_EQ(cell("Oprema", 1, "Naziv").asText(), "Artikal 2 3.5\"");
    EXPECT_EQ(cell("Oprema", 2, "Naziv").asText(), "Artikal 3 čevlić");
    EXPECT_EQ(cell("Oprema", 0, "Napomena").asText(), "napomena, red 1\r\nred 2");
    EXPECT_EQ(cell("Oprema", 0, "Stanje").asSingle(), 22.5F);
}

}  // namespace
