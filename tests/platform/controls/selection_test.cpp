#include "platform/controls/selection.h"

#include <gtest/gtest.h>

using platform::Selection;

namespace {

const Selection kComputers = Selection::all(QStringLiteral("QDComputers0"));
const Selection kServices = Selection::all(QStringLiteral("QDServices3"), Selection::Words::Initials);

TEST(Selection, GivesTheShopsStatementsLetterByLetter) {
    const struct {
        Selection selection;
        const char* text;
    } cases[] = {
        {{}, ""},
        {kComputers, "SELECT * FROM QDComputers0"},
        {kComputers.matching("CustID=-1"), "SELECT * FROM QDComputers0 WHERE CustID=-1"},
        {kComputers.orderedBy("Price DESC"), "SELECT * FROM QDComputers0 ORDER BY Price DESC"},
        {kComputers.matching("CustID=7").orderedBy("Price ASC"),
         "SELECT * FROM QDComputers0 WHERE CustID=7 ORDER BY Price ASC"},
        {kServices, "Select * FROM QDServices3"},
        {kServices.matching("MachineID=12").orderedBy("Paid ASC"),
         "Select * FROM QDServices3 Where MachineID=12 ORDER BY Paid ASC"},
        {{"MachineID, MachineName", "QDComputers0", "CustID=7", {}, Selection::Words::Capitals},
         "SELECT MachineID, MachineName FROM QDComputers0 WHERE CustID=7"},
        {Selection::statement("SELECT * FROM JM"), "SELECT * FROM JM"},
        {Selection::statement("SELECT * FROM JM").orderedBy("Naziv ASC"),
         "SELECT * FROM JM ORDER BY Naziv ASC"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(each.selection.text(), each.text);
    }
}

TEST(Selection, AnOrderTakesThePlaceOfTheOneBefore) {
    const Selection byPrice = kComputers.matching("CustID=7").orderedBy("Price DESC");
    EXPECT_EQ(byPrice.orderedBy("Paid ASC").text(),
              "SELECT * FROM QDComputers0 WHERE CustID=7 ORDER BY Paid ASC");
    EXPECT_EQ(byPrice.orderedBy({}).text(), "SELECT * FROM QDComputers0 WHERE CustID=7");
}

TEST(Selection, AnOrderStandsOneBlankBehindAStatementThatEndsInBlanks) {
    const Selection loose = Selection::statement("SELECT * FROM Oprema   ");
    EXPECT_EQ(loose.text(), "SELECT * FROM Oprema   ");
    EXPECT_EQ(loose.orderedBy("Cena ASC").text(), "SELECT * FROM Oprema ORDER BY Cena ASC");
    EXPECT_EQ(loose.orderedBy({}).text(), "SELECT * FROM Oprema");
}

TEST(Selection, NothingSelectedHasNoText) {
    EXPECT_TRUE(Selection().isEmpty());
    EXPECT_FALSE(kComputers.isEmpty());
    EXPECT_EQ(Selection::all({}).text(), "");
}

TEST(Selection, SameRowsWhateverTheSpelling) {
    const Selection capitals = Selection::all("QDServices3").matching("MachineID=12");
    EXPECT_TRUE(sameRows(capitals, kServices.matching("MachineID=12")));
    EXPECT_TRUE(sameRows(capitals, Selection::all("qdservices3").matching("machineid=12")));
    EXPECT_FALSE(sameRows(capitals, capitals.matching("MachineID=13")));
    EXPECT_FALSE(sameRows(capitals, capitals.orderedBy("Paid ASC")));
    EXPECT_FALSE(sameRows(capitals, Selection::all("QDServices4").matching("MachineID=12")));
    EXPECT_FALSE(sameRows(capitals, {"ID", capitals.source, capitals.where, {}, capitals.words}));
}

}  // namespace
