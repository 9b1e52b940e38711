#include "data/catalogue.h"

#include <gmock/gmock.h>

#include <set>
#include <sstream>

#include "support/fixture.h"
#include "support/looks.h"

namespace {

using data::Catalogue;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

Catalogue read(const std::string& text) {
    std::istringstream stream(text);
    return data::readCatalogue(stream, "catalogue", {"Kom.", "m"}, {"Ostale usluge"});
}

const std::string kHead = "manufacturer A\nmanufacturer B\ngroup G\n";

TEST(CatalogueText, TellsGroupsManufacturersAndProducts) {
    const Catalogue catalogue = read(kHead +
                                     "    A | One | text one | Kom. | 3 | 12.50 | a note\n"
                                     "    B | Two | text two | m | 0 | 0.75\n");
    EXPECT_THAT(catalogue.groups, ElementsAre("G"));
    EXPECT_THAT(catalogue.manufacturers, ElementsAre("A", "B"));
    ASSERT_THAT(catalogue.products, SizeIs(2));
    EXPECT_EQ(catalogue.products[0].name, "One");
    EXPECT_EQ(catalogue.products[0].note, "a note");
    EXPECT_EQ(catalogue.products[0].description, "text one");
    EXPECT_EQ(catalogue.products[0].unit, "Kom.");
    EXPECT_EQ(catalogue.products[0].group, 0);
    EXPECT_EQ(catalogue.products[0].manufacturer, 0);
    EXPECT_EQ(catalogue.products[0].stock, 3.0F);
    EXPECT_EQ(catalogue.products[0].price, 12.5F);
    EXPECT_EQ(catalogue.products[1].name, "Two");
    EXPECT_EQ(catalogue.products[1].stock, 0.0F);
    EXPECT_EQ(catalogue.products[1].price, 0.75F);
    EXPECT_EQ(catalogue.products[1].manufacturer, 1);
    EXPECT_EQ(catalogue.products[1].unit, "m");
    EXPECT_EQ(catalogue.products[1].note, "");
}

TEST(CatalogueText, RefusesABadLineByItsNumber) {
    const std::string good = "    B | Two | text | m | 0 | 1\n";
    const struct {
        std::string text;
        int line;
        const char* reason;
    } cases[] = {
        {"    A | One | t | Kom. | 1 | 1\n", 1, "before the first group"},
        {kHead + "    A | One | t | Kom. | 1\n", 4, "expected"},
        {kHead + "    C | One | t | Kom. | 1 | 1\n", 4, "no manufacturer C"},
        {kHead + "    A | One | t | kg | 1 | 1\n", 4, "no unit kg"},
        {kHead + "    A | One | t | Kom. | 1 | 0\n", 4, "no good number"},
        {kHead + "    A | One | t | Kom. | 1 | 1,5\n", 4, "no good number"},
        {kHead + "    A | One | t | Kom. | -1 | 1\n", 4, "no good number"},
        {kHead + "    A |  | t | Kom. | 1 | 1\n", 4, "missing"},
        {kHead + good + "    A | Two | t | Kom. | 1 | 1\n", 5, "twice"},
        {kHead + "    A | One | " + std::string(256, 'x') + " | Kom. | 1 | 1\n", 4, "255"},
        {kHead + good + "group H\n", 5, "no product"},
        {kHead + good, 4, "manufacturer A has no product"},
        {"group G\ngroup G\n", 2, "G"},
        {"product X\n", 1, "expected"},
    };
    for (const auto& c : cases) {
        try {
            read(c.text);
            FAIL() << c.text;
        } catch (const data::TextError& e) {
            EXPECT_EQ(e.line(), c.line) << c.text;
            EXPECT_THAT(std::string(e.what()), HasSubstr(c.reason)) << c.text;
        }
    }
}

TEST(NamesText, GivesOneNameALine) {
    std::istringstream stream("# units\n\nKom.\n  m  \n");
    EXPECT_THAT(data::readNames(stream, "units", 25), ElementsAre("Kom.", "m"));
}

TEST(NamesText, RefusesRepeatedLongAndNoNames) {
    for (const char* text : {"m\nm\n", "# nothing\n", "abcdefghijklmnopqrstuvwxyz\n"}) {
        std::istringstream stream(text);
        EXPECT_THROW(data::readNames(stream, "units", 25), data::TextError) << text;
    }
}

class DeliveredCatalogue : public DeliveredFixture {
 protected:
    std::vector<std::string> column(const std::string& statement) {
        std::vector<std::string> values;
        dao::Recordset rows = openDatabase().OpenRecordset(statement, dao::dbOpenSnapshot);
        for (; !rows.EOF(); rows.MoveNext()) {
            values.push_back(rows.Fields(0).Value().asText());
        }
        rows.Close();
        return values;
    }
};

TEST_F(DeliveredCatalogue, HoldsSomeHundredAndFiftyProductsWithNamesOfTheirOwn) {
    const auto names = column("SELECT Naziv FROM Oprema");
    EXPECT_GE(names.size(), 140U);
    EXPECT_LE(names.size(), 160U);
    EXPECT_THAT(std::set<std::string>(names.begin(), names.end()), SizeIs(names.size()));
}

TEST_F(DeliveredCatalogue, HasAPriceAndADescriptionForEachProduct) {
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE Cena<=0"), 0);
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE Stanje<0"), 0);
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE Opis=''"), 0);
    EXPECT_GT(countRows("SELECT * FROM Oprema WHERE Stanje=0"), 0);  // some are on order only
    EXPECT_GT(countRows("SELECT * FROM Oprema WHERE Napomena<>''"), 10);
}

TEST_F(DeliveredCatalogue, MeasuresEveryProductInAUnitOfTheTable) {
    const auto units = column("SELECT Naziv FROM JM");
    for (const std::string& unit : column("SELECT JM FROM Oprema")) {
        ASSERT_THAT(units, testing::Contains(unit));
    }
    // What the product window starts with is found in its list.
    EXPECT_EQ(units.front(), "Kom.");
}

TEST_F(DeliveredCatalogue, PutsEveryProductIntoAGroupAndGivesItAManufacturer) {
    EXPECT_EQ(
        countRows("SELECT Oprema.ID FROM (Oprema INNER JOIN Grupe ON Oprema.IDGrupe = Grupe.ID) INNER JOIN "
                  "Proizvodjaci ON Oprema.IDProizvodjaca = Proizvodjaci.ID"),
        countRows("Oprema"));
    EXPECT_GT(countRows("Grupe"), 15);
    EXPECT_GT(countRows("Proizvodjaci"), 30);
}

// Every product with each of its cells, as the text of the catalogue tells it.
TEST_F(DeliveredCatalogue, IsTheOneThatWasWritten) {
    QString found;
    dao::Recordset rows = openDatabase().OpenRecordset(
        "SELECT Grupe.Grupa, Proizvodjaci.Proizvodjac, Oprema.Naziv, Oprema.JM, Oprema.Stanje, Oprema.Cena, "
        "Oprema.Napomena, Oprema.Opis FROM (Oprema INNER JOIN Grupe ON Oprema.IDGrupe = Grupe.ID) INNER JOIN "
        "Proizvodjaci ON Oprema.IDProizvodjaca = Proizvodjaci.ID ORDER BY Oprema.ID",
        dao::dbOpenSnapshot);
    for (; !rows.EOF(); rows.MoveNext()) {
        for (int i = 0; i < rows.FieldCount(); ++i) {
            found += QString::fromStdString(rows.Fields(i).Value().asText()) + QLatin1Char('|');
        }
        found += QLatin1Char('\n');
    }
    rows.Close();
    expectText(found, QStringLiteral("delivered_catalogue"));
}

TEST_F(DeliveredCatalogue, WritesNoBarIntoANote) {
    // The product list keeps note and unit in one text with a bar between.
    for (const std::string& note : column("SELECT Napomena FROM Oprema")) {
        EXPECT_EQ(note.find('|'), std::string::npos);
    }
}

TEST_F(DeliveredCatalogue, OffersKindsOfWorkInTheOrderOfTheText) {
    dao::Recordset rows = openDatabase().OpenRecordset("ServiceTypes", dao::dbOpenTable);
    std::vector<std::string> kinds;
    for (; !rows.EOF(); rows.MoveNext()) {
        kinds.push_back(rows["Service"].asText());
    }
    rows.Close();
    ASSERT_EQ(kinds.size(), 16U);
    EXPECT_EQ(kinds[0], "Ostale usluge");
    EXPECT_EQ(kinds[1], "Dijagnostika kvara");
    EXPECT_EQ(kinds[15], "Servis stampaca");
}

}  // namespace
