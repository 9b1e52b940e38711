// What a workstation reads while the server is still answering: the block ahead of a long walk, and a long
// answer piece by piece.
#include <chrono>
#include <stdexcept>
#include <thread>

#include "platform/dao/dao_shop.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/postgres/connection.h"
#include "platform/dao/postgres/signpost.h"
#include "platform/dao/row_walk.h"

using namespace dao;
using daotest::errorOf;

namespace {

// A walk reads 1, 32 and 512 rows, and then thousands at a time.
constexpr int kFirstFar = 1 + 32 + 512 + 1;
constexpr int kFarBlock = 8192;
constexpr int kRows = kFirstFar + 2 * kFarBlock + 99;

class ServerAheadTest : public daotest::ServerShopTest {
 protected:
    void SetUp() override {
        ServerShopTest::SetUp();
        fill(1);
        keeper().run(
            "INSERT INTO shop.\"Services\" (\"MachineID\", \"Price\", \"Comments\")"
            " SELECT 1, 10000, repeat('a', 100) FROM generate_series(2, " +
            std::to_string(kRows) + ")");
    }
    postgres::Connection keeper() const { return postgres::Connection(postgres::readSignpost(path)); }
    std::int64_t roundTrips() { return db.impl()->file().store().roundTrips(); }
    // Where the set then stands.
    static int walkTo(Recordset& rows, int number) {
        while (rows["ID"].asLong() < number) {
            rows.MoveNext();
        }
        return rows["ID"].asLong();
    }
    // As the keeper of a server would.
    void endOtherSessions() {
        keeper().run(
            "SELECT pg_terminate_backend(pid) FROM pg_stat_activity"
            " WHERE datname = current_database() AND pid <> pg_backend_pid()");
    }
    // The numbers of the services, and what is done at the one that is the last of some.
    std::vector<int> walked(const std::string& statement, int last = 0,
                            const std::function<void()>& atLast = {}) {
        std::vector<int> found;
        walkRows(db, statement, [&](const Recordset& rows) {
            return [&, number = rows.Fields(0)] {
                found.push_back(number.Value().asLong());
                if (found.back() == last) {
                    atLast();
                }
                seen_ = found.size();
            };
        });
        return found;
    }
    std::size_t seen_ = 0;
};

TEST_F(ServerAheadTest, TheNextBlockIsThereWhenAWalkComesToIt) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    ASSERT_EQ(walkTo(services, kFirstFar - 1), kFirstFar - 1);
    const std::int64_t before = roundTrips();
    walkTo(services, kFirstFar);
    EXPECT_EQ(roundTrips(), before + 2) << "its own block and the next one, and no more of them";
    walkTo(services, kFirstFar + kFarBlock);
    EXPECT_EQ(roundTrips(), before + 3);
    EXPECT_EQ(walkTo(services, kRows), kRows);
    EXPECT_EQ(roundTrips(), before + 3) << "the last block had been asked for";
    services.MoveNext();
    EXPECT_TRUE(services.EOF());
}

TEST_F(ServerAheadTest, NothingIsAskedAheadForWhoeverTakesLong) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    walkTo(services, kFirstFar - 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(3100));
    const std::int64_t before = roundTrips();
    walkTo(services, kFirstFar);
    EXPECT_EQ(roundTrips(), before + 1) << "its own block";
}

TEST_F(ServerAheadTest, WhatIsWrittenMeanwhileIsSeenInTheNextBlock) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    const Field price = services.Fields("Price");
    walkTo(services, kFirstFar);
    db.Execute("UPDATE Services SET Price=77 WHERE ID=" + std::to_string(kFirstFar + kFarBlock + 5));
    walkTo(services, kFirstFar + kFarBlock + 5);
    EXPECT_EQ(price.Value().asDouble(), 77);
}

TEST_F(ServerAheadTest, WhoeverAsksForOtherThingsOnTheWayGetsThemAndTheRows) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    int number = 0;
    for (; !services.EOF(); services.MoveNext()) {
        ASSERT_EQ(services["ID"].asLong(), ++number);
        if (number % 1000 == 0) {
            const Recordset one = db.OpenRecordset(
                "SELECT ID FROM Services WHERE ID=" + std::to_string(number), dbOpenSnapshot);
            ASSERT_EQ(one["ID"].asLong(), number);
        }
    }
    EXPECT_EQ(number, kRows);
}

TEST_F(ServerAheadTest, AWalkThatStopsLeavesTheShopToWhateverComesNext) {
    for (int i = 0; i < 3; ++i) {
        Recordset services = db.OpenRecordset("SELECT * FROM Services");
        walkTo(services, kFirstFar);
        if (i > 0) {
            services.Close();
        }
        EXPECT_EQ(db.OpenRecordset("SELECT Surname FROM Customers")["Surname"].asText(), "Klijent 1");
        db.Execute("UPDATE Customers SET City='Niš'");
    }
}

TEST_F(ServerAheadTest, AnErrorInTheBlockAheadComesAtThatBlock) {
    db.Execute("UPDATE Services SET Discount=0");
    db.Execute("UPDATE Services SET Discount=1 WHERE ID=" + std::to_string(kFirstFar + kFarBlock + 5));
    Recordset services = db.OpenRecordset("SELECT ID, Discount*1E300*1E300 AS Much FROM Services");
    const Field much = services.Fields("Much");
    for (; services["ID"].asLong() < kFirstFar + kFarBlock - 1; services.MoveNext()) {
        ASSERT_EQ(much.Value().asDouble(), 0);
    }
    services.MoveNext();
    EXPECT_EQ(errorOf([&] { services["ID"].asLong(); }), errOverflow);
    EXPECT_EQ(db.OpenRecordset("SELECT Surname FROM Customers")["Surname"].asText(), "Klijent 1");
}

TEST_F(ServerAheadTest, AWalkGoesOnAfterTheConnectionWasLostInTheBlockAhead) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    walkTo(services, kFirstFar);
    endOtherSessions();
    EXPECT_EQ(walkTo(services, kRows), kRows);
}

TEST_F(ServerAheadTest, InATransactionNothingIsAskedAhead) {
    DBEngine::BeginTrans();
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    walkTo(services, kFirstFar - 1);
    const std::int64_t before = roundTrips();
    walkTo(services, kFirstFar);
    EXPECT_LE(roundTrips(), before + 2);
    db.Execute("UPDATE Services SET Price=78 WHERE ID=" + std::to_string(kRows));
    EXPECT_EQ(walkTo(services, kRows), kRows);
    EXPECT_EQ(services["Price"].asDouble(), 78);
    DBEngine::Rollback();
    services.Requery();
    EXPECT_EQ(services["Price"].asDouble(), 1);
}

// --- A long answer. That it is long shows the first time.

TEST_F(ServerAheadTest, ALongAnswerIsTheSameInPieces) {
    for (const std::string statement :
         {"SELECT ID, Price FROM Services", "SELECT ID FROM Services ORDER BY ID DESC",
          "SELECT ID, Comments FROM Services WHERE ID<=4000", "SELECT ID FROM Services WHERE ID<0"}) {
        const std::vector<int> whole = walked(statement);
        EXPECT_EQ(whole, numbers(db.OpenRecordset(statement, dbOpenSnapshot), "ID")) << statement;
        const std::int64_t before = roundTrips();
        EXPECT_EQ(walked(statement), whole) << statement;
        EXPECT_EQ(roundTrips(), before + 2) << statement << ": one to see that nothing has changed";
    }
}

TEST_F(ServerAheadTest, TheFirstRowsAreTakenBeforeTheLastHaveCome) {
    const std::string statement = "SELECT ID, Discount*1E300*1E300 AS Much FROM Services";
    db.Execute("UPDATE Services SET Discount=0");
    EXPECT_EQ(walked(statement).size(), static_cast<std::size_t>(kRows));
    db.Execute("UPDATE Services SET Discount=1 WHERE ID=9000");
    EXPECT_EQ(errorOf([&] { walked(statement); }), errOverflow);
    EXPECT_GE(seen_, 2000U);
    EXPECT_LT(seen_, 9000U);
    EXPECT_EQ(walked("SELECT ID FROM Services").size(), static_cast<std::size_t>(kRows));
}

TEST_F(ServerAheadTest, WhatIsThrownAtARowEndsTheReading) {
    EXPECT_EQ(walked("SELECT ID FROM Services").size(), static_cast<std::size_t>(kRows));
    EXPECT_THROW(walked("SELECT ID FROM Services", 2500, [] { throw std::length_error("no room"); }),
                 std::length_error);
    EXPECT_EQ(seen_, 2499U);
    db.Execute("UPDATE Customers SET City='Niš'");
    EXPECT_EQ(walked("SELECT ID FROM Services").size(), static_cast<std::size_t>(kRows));
}

TEST_F(ServerAheadTest, ALossInTheMiddleOfALongAnswerIsTold) {
    const std::string statement = "SELECT ID, Comments FROM Services";
    EXPECT_EQ(walked(statement).size(), static_cast<std::size_t>(kRows));
    EXPECT_EQ(errorOf([&] { walked(statement, 2000, [&] { endOtherSessions(); }); }), errDiskIo);
    EXPECT_EQ(walked(statement).size(), static_cast<std::size_t>(kRows));
}

}  // namespace
