// How often a workstation asks its server and waits for it: over a network each time costs the way there and
// back, whatever is asked.
#include "platform/dao/dao_shop.h"
#include "platform/dao/database_impl.h"

using namespace dao;
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
