// How often a workstation asks its server and waits for it: over a network each time costs the way there and
// back, whatever is asked.
#include "platform/dao/dao_shop.h"
#include "platform/dao/database_impl.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::openShop;

namespace {

class ServerRoundTripsTest : public daotest::ServerShopTest {
 protected:
    void SetUp() override {
        ServerShopTest::SetUp();
        fill(100);
        db.CreateQueryDef("QDComputers1", "SELECT * FROM Computers");
        // What is asked once for a session is not what is counted here.
        changePrice(db.OpenRecordset("SELECT * FROM Services"));
    }
    static void changePrice(Recordset services) {
        services.Edit();
        services.Fields("Price") =
            Value(Currency::fromScaled(services["Price"].asCurrency().scaled() + 10000));
        services.Update();
    }
    // As a stage is read for the client on show: the rows, the first of them, the names to choose from.
    void showComputersOf(int client) {
        const std::string rows = " FROM QDComputers1 WHERE CustID=" + std::to_string(client);
        computers_ = db.OpenRecordset("SELECT *" + rows);
        EXPECT_EQ(computers_["CustID"].asLong(), client);
        const Recordset names = db.OpenRecordset("SELECT MachineID, MachineName" + rows, dbOpenSnapshot);
        EXPECT_EQ(names.RecordCount(), 1);
    }
    template <typename Body>
    std::int64_t roundTripsOf(Body&& body) {
        driver::Store& store = db.impl()->file().store();
        const std::int64_t before = store.roundTrips();
        body();
        return store.roundTrips() - before;
    }

    Recordset computers_;
};

TEST_F(ServerRoundTripsTest, AStageIsChangedInFive) {
    showComputersOf(1);
    const std::int64_t asked = roundTripsOf([&] { showComputersOf(2); });
    EXPECT_GE(asked, 1);
    EXPECT_LE(asked, 5);
}

TEST_F(ServerRoundTripsTest, ARecordIsFoundByItsNumberInOne) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    EXPECT_EQ(roundTripsOf([&] {
                  services.FindFirst("ID=57");
                  EXPECT_EQ(services["ID"].asLong(), 57);
              }),
              1);
}

// The record comes with its number, by the tables as they were.
TEST_F(ServerRoundTripsTest, ARecordIsFoundByAnotherFieldInOne) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    EXPECT_EQ(roundTripsOf([&] {
                  services.FindFirst("MachineID=57");
                  EXPECT_EQ(services["MachineID"].asLong(), 57);
                  EXPECT_EQ(services["Price"].asCurrency(), Currency::fromScaled(570000));
              }),
              1);
    EXPECT_EQ(roundTripsOf([&] {
                  services.FindFirst("MachineID=101");
                  EXPECT_TRUE(services.NoMatch());
              }),
              1);
}

TEST_F(ServerRoundTripsTest, AWholeTableIsOpenedAtTheSameCostWhereANumberIsMissing) {
    const auto open = [&](int rows) {
        EXPECT_EQ(db.OpenRecordset("SELECT * FROM Services").RecordCount(), rows);
    };
    const std::int64_t whole = roundTripsOf([&] { open(100); });
    db.Execute("DELETE * FROM Services WHERE ID=50");
    open(99);  // which hears of the change
    EXPECT_EQ(roundTripsOf([&] { open(99); }), whole);
    EXPECT_LE(whole, 2);
}

// One to lock and read it, one to compare, write and commit.
TEST_F(ServerRoundTripsTest, ARecordIsEditedAndUpdatedInTwo) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    services.FindFirst("ID=57");
    EXPECT_EQ(roundTripsOf([&] { changePrice(services); }), 2);
    EXPECT_EQ(services["Price"].asCurrency(), Currency::fromScaled(580000));
}

// That it is there was said with the answer to the writing.
TEST_F(ServerRoundTripsTest, ARecordThatWasJustWrittenIsGoneToInNone) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    services.FindFirst("ID=57");
    EXPECT_EQ(roundTripsOf([&] {
                  changePrice(services);
                  services.setBookmark(services.LastModified());
                  DBEngine::Idle(dbRefreshCache);
              }),
              2);
    EXPECT_EQ(services["Price"].asCurrency(), Currency::fromScaled(580000));
    services.AddNew();
    services.Fields("MachineID") = Value(57);
    services.Update();
    EXPECT_EQ(roundTripsOf([&] { services.setBookmark(services.LastModified()); }), 0);
    EXPECT_EQ(services["ID"].asLong(), 101);
}

class ServerWrittenRowTest : public ServerRoundTripsTest {
 protected:
    // Service 57 has been written here, and then another workstation runs the statement.
    void writeBefore(const std::string& statement) {
        db.Close();
        const Child other([&](Child& child) {
            Database there = openShop(path);
            child.tell("in");
            child.hear();
            there.Execute(statement);
            child.tell("done");
            return 0;
        });
        ASSERT_EQ(other.hear(), "in");
        db = openShop(path);
        services_ = db.OpenRecordset("SELECT * FROM Services");
        services_.FindFirst("ID=57");
        changePrice(services_);
        other.tell("go");
        ASSERT_EQ(other.hear(), "done");
    }
    Recordset services_;
};

TEST_F(ServerWrittenRowTest, IsLookedAtAsOthersHaveChangedItSince) {
    writeBefore("UPDATE Services SET Price=7 WHERE ID=57");
    services_.setBookmark(services_.LastModified());
    EXPECT_EQ(services_["Price"].asCurrency(), Currency::fromScaled(70000));
}

TEST_F(ServerWrittenRowTest, IsSaidToBeGoneToWhoeverLooksAtIt) {
    writeBefore("DELETE * FROM Services WHERE ID=57");
    services_.setBookmark(services_.LastModified());
    EXPECT_EQ(errorOf([&] { services_["Price"].asCurrency(); }), errRecordDeleted);
}

TEST_F(ServerWrittenRowTest, IsLookedForOnceAnythingElseWasAsked) {
    writeBefore("DELETE * FROM Services WHERE ID=57");
    const Recordset computers = db.OpenRecordset("SELECT * FROM Computers");
    EXPECT_EQ(errorOf([&] { services_.setBookmark(services_.LastModified()); }), errRecordDeleted);
}

TEST_F(ServerWrittenRowTest, IsLookedForOnceRowsReadBeforeCountAsOld) {
    writeBefore("DELETE * FROM Services WHERE ID=57");
    DBEngine::Idle(dbRefreshCache);
    EXPECT_EQ(errorOf([&] { services_.setBookmark(services_.LastModified()); }), errRecordDeleted);
}

TEST_F(ServerWrittenRowTest, IsNotTakenForAnother) {
    writeBefore("DELETE * FROM Services WHERE ID=56");
    EXPECT_EQ(errorOf([&] { services_.setBookmark({56}); }), errRecordDeleted);
}

TEST_F(ServerRoundTripsTest, ABlockOfRecordsComesInOne) {
    Recordset services = db.OpenRecordset("SELECT * FROM Services");
    EXPECT_EQ(services["ID"].asLong(), 1);
    EXPECT_EQ(roundTripsOf([&] {
                  for (int number = 2; number <= 30; ++number) {
                      services.MoveNext();
                      EXPECT_EQ(services["ID"].asLong(), number);
                  }
              }),
              1);
}

}  // namespace
