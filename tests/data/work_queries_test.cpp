#include <gmock/gmock.h>

#include "data/session.h"
#include "data/session_fixture.h"

namespace {

using testing::ElementsAre;

class WorkQueriesTest : public SessionFixture {
 protected:
    std::vector<std::string> queries() {
        std::vector<std::string> names;
        const dao::QueryDefsCollection defs = openDatabase().QueryDefs();
        for (int i = 0; i < defs.Count(); ++i) {
            names.push_back(defs[i].Name());
        }
        return names;
    }
    std::string textOf(const std::string& name) { return openDatabase().QueryDefs()[name].SQL(); }

    // Another workstation that makes its queries and stays.
    std::function<void(const SecondProcess::Side&)> anotherCopy() {
        return [this](const SecondProcess::Side& side) {
            dao::Database database = dao::DBEngine::OpenDatabase(file(), false, false, connect());
            const int suffix = CreateWorkQueries(database);
            side.say(static_cast<char>('0' + suffix));
            side.untilReleased();
            DropWorkQueries(database, suffix);
            database.Close();
            side.ready();
        };
    }
};

TEST_F(WorkQueriesTest, TheFirstCopyTakesNumberZero) {
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 0);
    EXPECT_THAT(queries(), ElementsAre("OpremaGrupe", "QDComputers0", "QDCustomers0", "QDServices0"));
    EXPECT_EQ(textOf("QDCustomers0"), "SELECT * FROM Customers");
    EXPECT_EQ(textOf("QDComputers0"), "SELECT * FROM Computers");
    EXPECT_EQ(textOf("QDServices0"), "SELECT * FROM Services");
}

TEST_F(WorkQueriesTest, TheSecondCopyTakesTheNextNumberAndDoesNotTouchTheFirst) {
    SecondProcess other(anotherCopy());
    ASSERT_EQ(other.next(), '0');
    ASSERT_EQ(CreateWorkQueries(openDatabase()), 1);
    openDatabase().QueryDefs()["QDCustomers1"].setSQL("SELECT * FROM Customers WHERE CustID=1");
    EXPECT_EQ(textOf("QDCustomers0"), "SELECT * FROM Customers");
    other.release();
    ASSERT_TRUE(other.waitReady());
    EXPECT_THAT(queries(), ElementsAre("OpremaGrupe", "QDComputers1", "QDCustomers1", "QDServices1"));
    EXPECT_EQ(textOf("QDCustomers1"), "SELECT * FROM Customers WHERE CustID=1");
}

TEST_F(WorkQueriesTest, ACrashedCopysQueriesStayAndTheNextRunCountsThem) {
    SecondProcess other(anotherCopy());
    ASSERT_EQ(other.next(), '0');
    other.kill();
    EXPECT_THAT(queries(), ElementsAre("OpremaGrupe", "QDComputers0", "QDCustomers0", "QDServices0"));
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 1);
}

TEST_F(WorkQueriesTest, AReusedNumberIsResetToItsPlainText) {
    // What a crashed second copy leaves when the first has gone: its trio is number 1, and the count gives 1
    // again.
    for (const char* name : {"QDCustomers1", "QDComputers1", "QDServices1"}) {
        openDatabase().CreateQueryDef(name, "SELECT * FROM Services WHERE MachineID=5");
    }
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 1);
    EXPECT_EQ(textOf("QDCustomers1"), "SELECT * FROM Customers");
    EXPECT_EQ(textOf("QDComputers1"), "SELECT * FROM Computers");
    EXPECT_EQ(textOf("QDServices1"), "SELECT * FROM Services");
    EXPECT_EQ(openDatabase().QueryDefs().Count(), 4);
}

TEST_F(WorkQueriesTest, TheNumberIsAThirdOfTheCountToTheNearestWhole) {
    // With OpremaGrupe: 1 query gives 0, 2 to 4 give 1, 5 gives 2.
    const int expected[] = {0, 1, 1, 1, 2};
    for (int extra = 0; extra < 5; ++extra) {
        const int suffix = CreateWorkQueries(openDatabase());
        EXPECT_EQ(suffix, expected[extra]) << extra;
        DropWorkQueries(openDatabase(), suffix);
        openDatabase().CreateQueryDef("Extra" + std::to_string(extra), "SELECT * FROM JM");
    }
}

TEST_F(WorkQueriesTest, ALossOfOneIsFilledAndTheOthersReset) {
    openDatabase().CreateQueryDef("QDServices1", "SELECT * FROM Services WHERE ID=5");
    ASSERT_EQ(CreateWorkQueries(openDatabase()), 1);
    EXPECT_EQ(textOf("QDServices1"), "SELECT * FROM Services");
    EXPECT_EQ(textOf("QDCustomers1"), "SELECT * FROM Customers");
}

TEST_F(WorkQueriesTest, DroppingLeavesTheOthersAlone) {
    const int suffix = CreateWorkQueries(openDatabase());
    DropWorkQueries(openDatabase(), suffix);
    EXPECT_THAT(queries(), ElementsAre("OpremaGrupe"));
}

TEST_F(WorkQueriesTest, DroppingTellsTheFirstFailureAndStillTakesTheRest) {
    const int suffix = CreateWorkQueries(openDatabase());
    openDatabase().QueryDefs().Delete("QDCustomers0");
    try {
        DropWorkQueries(openDatabase(), suffix);
        FAIL();
    } catch (const dao::Error& e) {
        EXPECT_EQ(e.Number(), dao::errItemNotFound);
    }
    EXPECT_THAT(queries(), ElementsAre("OpremaGrupe"));
}

TEST_F(WorkQueriesTest, TheQueriesGiveTheTablesRows) {
    const int client = addClient();
    addService(addComputer(client));
    CreateWorkQueries(openDatabase());
    EXPECT_EQ(countRows("SELECT * FROM QDCustomers0"), 1);
    EXPECT_EQ(countRows("SELECT * FROM QDServices0"), 1);
    openDatabase().QueryDefs()["QDComputers0"].setSQL("SELECT * FROM Computers WHERE CustID=" +
                                                      std::to_string(client + 1));
    EXPECT_EQ(countRows("SELECT * FROM QDComputers0"), 0);
}

}  // namespace
