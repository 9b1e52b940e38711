#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

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

// One of several workstations, as a process of its own: makes its queries and narrows its view to a client of
// its own number.
class Copy {
 public:
    Copy(const std::string& file, const std::string& connect, int client)
        : client_(client), process_([=](const SecondProcess::Side& side) {
              dao::Database database = dao::DBEngine::OpenDatabase(file, false, false, connect);
              const int suffix = CreateWorkQueries(database);
              dao::QueryDef clients = database.QueryDefs()["QDCustomers" + std::to_string(suffix)];
              const bool wasReset = clients.SQL() == "SELECT * FROM Customers";
              clients.setSQL(view(client));
              side.say(static_cast<char>((wasReset ? '0' : 'a') + suffix));
              side.untilReleased();
              DropWorkQueries(database, suffix);
              side.ready();
          }) {
        number_ = process_.next() - '0';
    }
    int number() const { return number_; }  // far too high where the queries were not reset
    std::string view() const { return view(client_); }
    void leave() {
        process_.release();
        EXPECT_TRUE(process_.waitReady());
        EXPECT_EQ(process_.wait(), 0);
    }
    void crash() { process_.kill(); }

 private:
    static std::string view(int client) {
        return "SELECT * FROM Customers WHERE CustID=" + std::to_string(client);
    }
    int client_;
    SecondProcess process_;
    int number_ = -1;
};

// Three copies, and the order in which they come and go: "ABaCbc" is A and B come, A goes, and so on. With
// `crashing` bit 0 set A is killed in the place of leaving, with bit 1 B, with bit 2 C.
class ComingAndGoing : public WorkQueriesTest {
 protected:
    void play(const std::string& order, int crashing) {
        SCOPED_TRACE(order + " crashing " + std::to_string(crashing));
        std::map<char, std::unique_ptr<Copy>> running;
        for (const char what : order) {
            if (what <= 'C') {
                come(running, what);
            } else {
                go(running, static_cast<char>(what - 'a' + 'A'), crashing);
            }
            expectEverybodysView(running);
        }
    }

 private:
    using Running = std::map<char, std::unique_ptr<Copy>>;

    void come(Running& running, char who) {
        std::set<int> held;
        for (const auto& [name, copy] : running) {
            held.insert(copy->number());
        }
        int expected = (static_cast<int>(queries().size()) + 1) / 3;
        while (held.contains(expected)) {
            ++expected;
        }
        closeDatabases();
        running[who] = std::make_unique<Copy>(file(), connect(), who - 'A' + 100);
        EXPECT_EQ(running[who]->number(), expected);
    }
    void go(Running& running, char who, int crashing) {
        const std::string clients = "QDCustomers" + std::to_string(running[who]->number());
        const bool crashes = (crashing >> (who - 'A') & 1) != 0;
        if (crashes) {
            running[who]->crash();
        } else {
            running[who]->leave();
        }
        running.erase(who);
        EXPECT_EQ(std::ranges::count(queries(), clients), crashes ? 1 : 0);
        closeDatabases();
    }
    void expectEverybodysView(const Running& running) {
        for (const auto& [name, copy] : running) {
            const std::string number = std::to_string(copy->number());
            EXPECT_EQ(textOf("QDCustomers" + number), copy->view()) << name;
            EXPECT_EQ(textOf("QDComputers" + number), "SELECT * FROM Computers") << name;
            EXPECT_EQ(textOf("QDServices" + number), "SELECT * FROM Services") << name;
        }
        closeDatabases();
    }
};

TEST_F(ComingAndGoing, OfThreeCopiesInEveryOrderDisturbsNobody) {
    const QByteArray delivered = bytesOf(databaseFile());
    std::string order = "ABCabc";
    std::ranges::sort(order);
    int played = 0;
    do {
        const auto at = [&](char what) { return order.find(what); };
        // A comes before B and B before C: the copies are all alike.
        if (at('A') > at('B') || at('B') > at('C') || at('A') > at('a') || at('B') > at('b') ||
            at('C') > at('c')) {
            continue;
        }
        for (const int crashing : {0, 1, 2, 4}) {
            write(databaseFile(), delivered);
            play(order, crashing);
            ++played;
        }
    } while (std::ranges::next_permutation(order).found && !HasFailure());
    EXPECT_EQ(played, 15 * 4);
}

// A shop where copies come for a whole day and one is killed now and then: each newcomer gets a number that
// nobody has, and the orphans' numbers are used again.
TEST_F(ComingAndGoing, OrphansStayUntilTheirNumberComesRound) {
    Copy first(file(), connect(), 1);
    Copy second(file(), connect(), 2);
    second.crash();
    ASSERT_EQ(second.number(), 1);
    Copy third(file(), connect(), 3);
    EXPECT_EQ(third.number(), 2);
    first.leave();
    third.leave();
    EXPECT_THAT(queries(), ElementsAre("OpremaGrupe", "QDComputers1", "QDCustomers1", "QDServices1"));
    closeDatabases();
    Copy fourth(file(), connect(), 4);
    EXPECT_EQ(fourth.number(), 1);  // and was reset, or it would not be a number
}

TEST_F(WorkQueriesTest, ACopyThatReopensKeepsItsNumber) {
    SecondProcess first([this](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file(), false, false, connect());
        const int number = CreateWorkQueries(database);
        database.QueryDefs()["QDServices0"].setSQL("SELECT * FROM Services WHERE ID=5");
        database.Close();
        side.say(static_cast<char>('0' + number));
        side.untilReleased();
        database = dao::DBEngine::OpenDatabase(file(), false, false, connect());
        side.say(static_cast<char>('0' + CreateWorkQueries(database)));
        side.untilReleased();
        DropWorkQueries(database, 0);
        side.ready();
    });
    ASSERT_EQ(first.next(), '0');
    // While it has the file closed another one comes, and finds its number held all the same.
    openDatabase().QueryDefs().Delete("QDCustomers0");
    openDatabase().QueryDefs().Delete("QDComputers0");
    openDatabase().QueryDefs().Delete("QDServices0");
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 1);
    first.release();
    EXPECT_EQ(first.next(), '0');
    EXPECT_EQ(textOf("QDServices0"), "SELECT * FROM Services");
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 1);
    first.release();
    ASSERT_TRUE(first.waitReady());
    EXPECT_THAT(queries(), ElementsAre("OpremaGrupe", "QDComputers1", "QDCustomers1", "QDServices1"));
    DropWorkQueries(openDatabase(), 1);
}

TEST_F(WorkQueriesTest, CompactingKeepsTheNumberAndTheQueries) {
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 0);
    closeDatabases();
    QString reason;
    ASSERT_TRUE(RepairAndCompactDatabase(reason, true)) << reason.toStdString();
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 0);
    EXPECT_EQ(openDatabase().QueryDefs().Count(), 4);
    DropWorkQueries(openDatabase(), 0);
}

TEST_F(WorkQueriesTest, ADroppedNumberIsForgotten) {
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 0);
    DropWorkQueries(openDatabase(), 0);
    for (const char* name : {"Extra1", "Extra2", "Extra3", "Extra4"}) {
        openDatabase().CreateQueryDef(name, "SELECT * FROM JM");
    }
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 2);
    DropWorkQueries(openDatabase(), 2);
}

TEST_F(WorkQueriesTest, TheFirstQueryThatCannotBeMadeIsToldAndTheOthersAreMade) {
    for (const char* name : {"QDCustomers0", "QDServices0"}) {
        dao::TableDef table = openDatabase().CreateTableDef(name);
        table.Append(table.CreateField("ID", dao::dbLong));
        openDatabase().TableDefs().Append(table);
    }
    try {
        CreateWorkQueries(openDatabase());
        FAIL();
    } catch (const dao::Error& e) {
        EXPECT_EQ(e.Number(), dao::errObjectExists);
        EXPECT_EQ(e.Description(), "Object 'QDCustomers0' already exists.");
    }
    EXPECT_THAT(queries(), ElementsAre("OpremaGrupe", "QDComputers0"));
    // The next try is no other copy.
    openDatabase().TableDefs().Delete("QDCustomers0");
    openDatabase().TableDefs().Delete("QDServices0");
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 0);
    DropWorkQueries(openDatabase(), 0);
}

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
