#include "exchange/mending.h"

#include <gmock/gmock.h>

#include <limits>

#include "exchange/new_shop.h"
#include "exchange/old_format.h"

namespace {

using dao::Type;
using dao::Value;
using exchange::MendedShop;
using exchange::MendedTable;
using exchange::OldShop;
using exchange::OldTable;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// An old shop as somebody has typed it in: tables with a few of their columns.
class OldShopText {
 public:
    OldShopText() {
        for (const char* name : {"Customers", "Computers", "Services", "ServiceTypes", "Grupe",
                                 "Proizvodjaci", "JM", "Oprema", "InvoiceData"}) {
            OldTable table;
            table.name = name;
            for (const dao::FieldDef& field : exchange::NewShop::table(name)->Fields()) {
                table.columns.push_back({field.Name, exchange::NewShop::typeOf(field)});
            }
            table.rows.reset(dao::typesOf(table.columns));
            shop.tables.push_back(std::move(table));
        }
    }
    OldTable& table(const std::string& name) {
        for (OldTable& one : shop.tables) {
            if (one.name == name) {
                return one;
            }
        }
        throw std::logic_error(name);
    }
    // Fields that are not named are Null.
    OldShopText& add(const std::string& name, const std::map<std::string, Value>& fields) {
        OldTable& to = table(name);
        to.rows.startRow();
        for (const exchange::OldColumn& column : to.columns) {
            const auto found = fields.find(column.name);
            addCell(to.rows, found == fields.end() ? Value() : found->second);
        }
        to.rows.endRow();
        ++to.toldRows;
        return *this;
    }
    OldShopText& client(int number) { return add("Customers", {{"CustID", number}, {"Surname", "Peric"}}); }
    OldShopText& computer(int number, Value client) {
        return add("Computers", {{"MachineID", number}, {"CustID", std::move(client)}});
    }
    OldShopText& service(int number, Value computer) {
        return add("Services", {{"ID", number}, {"MachineID", std::move(computer)}});
    }

    OldShop shop;

 private:
    static void addCell(dao::RowBlock& rows, const Value& value) {
        if (value.isNull()) {
            rows.addNull();
        } else if (value.type() == Type::Text) {
            rows.addText(value.textRef());
        } else if (value.type() == Type::Currency) {
            rows.addInteger(value.asCurrency().scaled());
        } else if (value.type() == Type::Date) {
            rows.addReal(value.asDate().days);
        } else {
            rows.addReal(value.asDouble());
        }
    }
};

const MendedTable& tableOf(const MendedShop& shop, const std::string& name) {
    for (const MendedTable& table : shop.tables) {
        if (table.definition.Name() == name) {
            return table;
        }
    }
    throw std::logic_error(name);
}

std::string cell(const MendedShop& shop, const std::string& table, std::size_t row,
                 const std::string& field) {
    const MendedTable& found = tableOf(shop, table);
    const Value& value = found.rows.at(row).at(static_cast<std::size_t>(found.indexOf(field)));
    return value.isNull() ? "(Null)" : value.asText();
}

class MendingTest : public ::testing::Test {
 protected:
    OldShopText old;
};

TEST_F(MendingTest, LeavesASoundShopAsItIs) {
    old.client(3).computer(4, 3).service(9, 4);
    const MendedShop shop = mend(old.shop);
    EXPECT_THAT(shop.remarks, IsEmpty());
    EXPECT_THAT(shop.notOurs, IsEmpty());
    EXPECT_THAT(shop.notThere, IsEmpty());
    EXPECT_EQ(cell(shop, "Services", 0, "ID"), "9");
    EXPECT_EQ(cell(shop, "Services", 0, "Comments"), "(Null)");
    EXPECT_EQ(shop.tables.size(), 9U) << "no numbers of documents that the old shop has not";
}

TEST_F(MendingTest, PutsAComputerWithoutItsClientUnderOneNamedForIt) {
    old.client(3).computer(4, 77).computer(5, 77).computer(6, Value());
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Customers", 1, "CustID"), "77") << "those of one client stay together";
    EXPECT_EQ(cell(shop, "Customers", 1, "Surname"), "Preuzeto bez klijenta 77");
    EXPECT_EQ(cell(shop, "Customers", 1, "BirthDate"), Value(dao::Date{1.0}).asText());
    EXPECT_EQ(cell(shop, "Customers", 2, "Surname"), "Preuzeto bez klijenta");
    EXPECT_EQ(cell(shop, "Computers", 2, "CustID"), cell(shop, "Customers", 2, "CustID"));
    EXPECT_THAT(
        shop.remarks,
        ElementsAre("Computers 4: its record 77 of Customers is gone; put under 'Preuzeto bez klijenta 77', "
                    "Customers 77",
                    "Computers 5: its record 77 of Customers is gone; put under 'Preuzeto bez klijenta 77', "
                    "Customers 77",
                    "Computers 6: belongs to no record of Customers; put under 'Preuzeto bez klijenta', "
                    "Customers 78"));
}

TEST_F(MendingTest, PutsAServiceWithoutItsComputerUnderOneOfAClientNamedForIt) {
    old.service(9, 50);
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Computers", 0, "MachineID"), "50");
    EXPECT_EQ(cell(shop, "Computers", 0, "MachineName"), "Preuzeto bez kompjutera 50");
    EXPECT_EQ(cell(shop, "Computers", 0, "CustID"), cell(shop, "Customers", 0, "CustID"));
    EXPECT_THAT(shop.remarks, ElementsAre(HasSubstr("Services 9: its record 50 of Computers is gone")));
}

TEST_F(MendingTest, PutsAProductWithoutItsGroupOrManufacturerUnderOnesNamedForIt) {
    old.add("Oprema", {{"ID", 1}, {"IDGrupe", 5}, {"IDProizvodjaca", 6}});
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Grupe", 0, "Grupa"), "Preuzeto bez grupe 5");
    EXPECT_EQ(cell(shop, "Proizvodjaci", 0, "Proizvodjac"), "Preuzeto bez proizvodjaca 6");
    EXPECT_EQ(shop.remarks.size(), 2U);
}

TEST_F(MendingTest, PutsARequisitionWithoutItsServiceUnderOneNamedForIt) {
    old.add("InvoiceData", {{"ServiceID", 8}, {"OpremaID", 2}});
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Services", 0, "ID"), "8");
    EXPECT_EQ(cell(shop, "Services", 0, "Comments"), "Preuzeto bez usluge 8");
    EXPECT_EQ(cell(shop, "Computers", 0, "MachineName"), "Preuzeto bez kompjutera");
    EXPECT_THAT(shop.remarks,
                ElementsAre(HasSubstr("InvoiceData (row 1): its record 8 of Services is gone")));
}

TEST_F(MendingTest, GivesANumberThatStandsTwiceAnewBehindTheHighest) {
    old.client(3).client(8).client(3).computer(1, 3);
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Customers", 2, "CustID"), "9");
    EXPECT_EQ(cell(shop, "Computers", 0, "CustID"), "3");
    EXPECT_THAT(shop.remarks, ElementsAre("Customers 3: stands twice; this one got the number 9"));
}

TEST_F(MendingTest, GivesTheNumberZeroAnewAndWhatBelongsToItFollows) {
    old.client(0).client(4).computer(1, 0);
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Customers", 0, "CustID"), "5");
    EXPECT_EQ(cell(shop, "Computers", 0, "CustID"), "5");
    EXPECT_EQ(tableOf(shop, "Customers").rows.size(), 2U);
}

TEST_F(MendingTest, CutsATextThatIsTooLongAndTellsTheWholeOfIt) {
    const std::string zip = "Č23456789012345678901";
    old.add("Customers", {{"CustID", 1}, {"ZIP", zip}});
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Customers", 0, "ZIP"), "Č2345678901234567890");
    EXPECT_THAT(shop.remarks,
                ElementsAre("Customers 1: the field ZIP is too long and was cut to 20 characters; the "
                            "whole of it: " +
                            zip));
}

TEST_F(MendingTest, TellsOfLettersThatAreNone) {
    old.client(1);
    old.table("Customers").unsoundTexts.emplace(0, 1);
    EXPECT_THAT(
        mend(old.shop).remarks,
        ElementsAre("Customers 1: the field Surname holds letters that are none; a mark stands in their "
                    "place"));
}

TEST_F(MendingTest, EmptiesWhatIsNoDateAndNoNumber) {
    old.client(1).computer(1, 1);
    old.add("Services", {{"ID", 1},
                         {"MachineID", 1},
                         {"ServiceStarted", dao::Date{1e300}},
                         {"GST", std::numeric_limits<double>::infinity()}});
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Services", 0, "ServiceStarted"), "(Null)");
    EXPECT_EQ(cell(shop, "Services", 0, "GST"), "(Null)");
    EXPECT_THAT(shop.remarks, ElementsAre("Services 1: the field ServiceStarted holds no date; left empty",
                                          "Services 1: the field GST holds no number; left empty"));
}

TEST_F(MendingTest, TellsOfARowThatCannotBeRead) {
    old.client(1);
    OldTable& clients = old.table("Customers");
    clients.badRows.emplace(1, "page 7, row 2");
    old.add("Customers", {});
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(tableOf(shop, "Customers").rows.size(), 1U);
    EXPECT_EQ(tableOf(shop, "Customers").left, 1);
    EXPECT_THAT(shop.remarks, ElementsAre("Customers (row 2): cannot be read (page 7, row 2); left out"));
}

TEST_F(MendingTest, NoKindOfWorkMovesUpWhereOneCannotBeRead) {
    old.add("ServiceTypes", {{"Service", "Ostalo"}})
        .add("ServiceTypes", {})
        .add("ServiceTypes", {{"Service", "Cd"}});
    old.table("ServiceTypes").badRows.emplace(1, "page 7, row 2");
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "ServiceTypes", 1, "Service"), "Preuzeto: necitljivo");
    EXPECT_EQ(cell(shop, "ServiceTypes", 2, "Service"), "Cd");
}

TEST_F(MendingTest, RenamesWhatHasANameThatStandsTwice) {
    old.add("Grupe", {{"ID", 1}, {"Grupa", "Miševi"}})
        .add("Grupe", {{"ID", 2}, {"Grupa", "MIŠEVI (2)"}})
        .add("Grupe", {{"ID", 3}, {"Grupa", "MIŠEVI"}});
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Grupe", 0, "Grupa"), "Miševi");
    EXPECT_EQ(cell(shop, "Grupe", 2, "Grupa"), "MIŠEVI (3)");
    EXPECT_THAT(shop.remarks,
                ElementsAre("Grupe 3: the name 'MIŠEVI' stands twice; this one is now 'MIŠEVI (3)'"));
}

TEST_F(MendingTest, KeepsTwoProductsOfOneNameAndTellsOfThem) {
    old.add("Grupe", {{"ID", 1}, {"Grupa", "Miševi"}})
        .add("Proizvodjaci", {{"ID", 1}, {"Proizvodjac", "Genius"}});
    for (const auto& [number, name] : {std::pair{4, "Miš"}, {7, "MIŠ"}, {8, ""}, {9, ""}}) {
        old.add("Oprema", {{"ID", number}, {"IDGrupe", 1}, {"IDProizvodjaca", 1}, {"Naziv", name}});
    }
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Oprema", 1, "Naziv"), "MIŠ");
    EXPECT_THAT(shop.remarks, IsEmpty()) << "nothing was changed";
    EXPECT_THAT(shop.alike, ElementsAre("Oprema 7: the name 'MIŠ' is that of 4, too"));
}

TEST_F(MendingTest, LeavesOutAProductThatWasDrawnTwiceForAServiceAndTellsAllOfIt) {
    old.client(1).computer(1, 1).service(1, 1);
    old.add("InvoiceData", {{"ServiceID", 1}, {"OpremaID", 2}, {"Naziv", "Kabl"}})
        .add("InvoiceData", {{"ServiceID", 1}, {"OpremaID", 2}, {"Naziv", "Duplo"}});
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(tableOf(shop, "InvoiceData").rows.size(), 1U);
    EXPECT_EQ(tableOf(shop, "InvoiceData").left, 1);
    EXPECT_THAT(shop.remarks, ElementsAre(testing::AllOf(HasSubstr("left out"), HasSubstr("Naziv Duplo"))));
}

TEST_F(MendingTest, NamesFieldsOfWhichOneSideHasNone) {
    old.table("JM").columns = {{"AID", Type::Long}, {"Slika", Type::Null}};
    old.table("JM").rows.reset({Type::Long, Type::Null});
    old.shop.others.emplace_back("the stored query Dugovi");
    old.add("JM", {{"AID", 1}});
    const MendedShop shop = mend(old.shop);
    EXPECT_THAT(shop.notOurs, ElementsAre("the stored query Dugovi", "the field JM.Slika"));
    EXPECT_THAT(shop.notThere, ElementsAre("the field JM.Naziv; it gets what an empty entry gives"));
    EXPECT_EQ(cell(shop, "JM", 0, "Naziv"), "");
}

TEST_F(MendingTest, AFieldThatIsMissingGetsItsDefault) {
    old.client(1).computer(1, 1);
    OldTable& services = old.table("Services");
    services.columns = {{"ID", Type::Long}, {"MachineID", Type::Long}};
    services.rows.reset({Type::Long, Type::Long});
    old.service(1, 1);
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "Services", 0, "ServiceFinished"), Value(dao::Date{1.0}).asText());
    EXPECT_EQ(cell(shop, "Services", 0, "Price"), "0");
}

TEST_F(MendingTest, TakesOneRowOfDocumentNumbers) {
    OldTable numbers;
    numbers.name = "DocNumber";
    numbers.columns = {{"PredracunBroj", Type::Long}, {"RacunBroj", Type::Long}};
    numbers.rows.reset({Type::Long, Type::Long});
    old.shop.tables.push_back(numbers);
    old.add("DocNumber", {{"PredracunBroj", 41}}).add("DocNumber", {{"PredracunBroj", 2}, {"RacunBroj", 3}});
    const MendedShop shop = mend(old.shop);
    EXPECT_EQ(cell(shop, "DocNumber", 0, "PredracunBroj"), "41");
    EXPECT_EQ(cell(shop, "DocNumber", 0, "RacunBroj"), "0");
    EXPECT_THAT(shop.remarks, ElementsAre(HasSubstr("left out: PredracunBroj 2, RacunBroj 3")));
}

TEST_F(MendingTest, TellsWhereATableSpeaksOfMoreRowsThanThereAre) {
    old.client(1);
    old.table("Customers").toldRows = 3;
    EXPECT_THAT(mend(old.shop).remarks,
                ElementsAre("Customers: the old table tells of 3 rows, and 1 were found"));
}

TEST_F(MendingTest, RefusesWhatIsNoShop) {
    old.shop.tables.erase(old.shop.tables.begin() + 2);
    EXPECT_THROW(mend(old.shop), exchange::OldFileError);
}

}  // namespace
