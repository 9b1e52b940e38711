#include "platform/dao/row_walk.h"

#include <stdexcept>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::errorOf;

namespace {

class RowWalkTest : public daotest::ShopTest {
 protected:
    // The numbers of the services, in the order in which a walk comes upon them.
    std::vector<int> walked(const std::string& statement) {
        std::vector<int> found;
        walkRows(db, statement, [&](const Recordset& rows) {
            return [&, number = rows.Fields("ID")] {
                most = std::max(most, rows.RecordCount());
                found.push_back(number.Value().asLong());
            };
        });
        return found;
    }
    std::int64_t most = 0;  // rows that were held at a time
};

TEST_F(RowWalkTest, ComesUponEveryRowInItsOrder) {
    fill(4500);
    for (const std::string statement :
         {"SELECT ID, Price FROM Services", "SELECT ID, Price FROM Services ORDER BY Price DESC",
          "SELECT ID, Price FROM Services WHERE ID<=2000", "SELECT ID, Price FROM Services WHERE ID=7",
          "SELECT ID, Price FROM Services WHERE ID<0"}) {
        EXPECT_EQ(walked(statement), numbers(db.OpenRecordset(statement, dbOpenSnapshot), "ID")) << statement;
    }
}

TEST_F(RowWalkTest, HoldsSomeOfTheRowsAtATime) {
    fill(4500);
    EXPECT_EQ(walked("SELECT ID FROM Services").size(), 4500U);
    EXPECT_EQ(walked("SELECT ID FROM Services ORDER BY Price DESC").size(), 4500U);
    EXPECT_LT(most, 4500);
}

TEST_F(RowWalkTest, AFailureOnTheWayEndsItAndTheShopGoesOn) {
    fill(3000);
    int seen = 0;
    const auto walk = [&] {
        walkRows(db, "SELECT ID FROM Services", [&](const Recordset&) {
            return [&] {
                if (++seen == 2500) {
                    throw std::length_error("no room");
                }
            };
        });
    };
    EXPECT_THROW(walk(), std::length_error);
    EXPECT_EQ(seen, 2500);
    db.Execute("DELETE * FROM Services WHERE ID>10");
    EXPECT_EQ(walked("SELECT ID FROM Services").size(), 10U);
}

TEST_F(RowWalkTest, FailsAsASnapshotDoes) {
    EXPECT_EQ(errorOf([&] { walked("SELECT ID FROM"); }), errSyntax);
    EXPECT_EQ(errorOf([&] { walked("SELECT ID FROM Nowhere"); }), errUnknownObject);
    EXPECT_EQ(errorOf([&] { walked("SELECT Price FROM Services"); }), errItemNotFound);
    db.Close();
    EXPECT_EQ(errorOf([&] { walked("SELECT ID FROM Services"); }), errObjectClosed);
}

}  // namespace
