// What an Edit keeps from whom on a server, and what a transaction there bears.
#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::openShop;

namespace {

class ServerEditTest : public daotest::ServerShopTest {
 protected:
    void SetUp() override {
        ServerShopTest::SetUp();
        fill(3);
        db.Close();
    }
    // Another workstation that runs each statement that it is told, and tells the error's number.
    auto running() {
        return [this](Child& child) {
            Database here = openShop(path);
            child.tell("in");
            for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
                child.tell(std::to_string(errorOf([&] { here.Execute(line); })));
            }
            return 0;
        };
    }
    // Another one in the middle of an Edit of product 1.
    auto editing() {
        return [this](Child& child) {
            Database here = openShop(path);
            Recordset set = here.OpenRecordset("Oprema");
            set.Edit();
            child.tell("editing");
            child.hear();
            return 0;
        };
    }
};

TEST_F(ServerEditTest, EditsOfTwoRowsDoNotWaitForEachOther) {
    Child other(editing());
    ASSERT_EQ(other.hear(), "editing");
    DBEngine::setLockTimeout(300);
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errLocked);
    set.MoveNext();
    set.Edit();
    set.Fields("Stanje") = Value(55);
    set.Update();
    EXPECT_EQ(set["Stanje"].asSingle(), 55);
    set.AddNew();
    set.Fields("Naziv") = Value("Nov");
    EXPECT_EQ(errorOf([&] { set.Update(); }), 0);
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
}

TEST_F(ServerEditTest, ARowThatAStatementChangedSinceTheEditIsNotOverwritten) {
    Child other(running());
    ASSERT_EQ(other.hear(), "in");
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    set.Edit();
    other.tell("UPDATE Oprema SET Stanje=7 WHERE ID=1");
    ASSERT_EQ(other.hear(), "0");
    set.Fields("Stanje") = Value(1);
    EXPECT_EQ(errorOf([&] { set.Update(); }), errDataChanged);
    set.CancelUpdate();
    EXPECT_EQ(set["Stanje"].asSingle(), 7);
}

TEST_F(ServerEditTest, ARowThatAStatementDeletedSinceTheEditIsSaidToBeGone) {
    Child other(running());
    ASSERT_EQ(other.hear(), "in");
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    set.Edit();
    other.tell("DELETE * FROM Oprema WHERE ID=1");
    ASSERT_EQ(other.hear(), "0");
    set.Fields("Stanje") = Value(1);
    EXPECT_EQ(errorOf([&] { set.Update(); }), errRecordDeleted);
}

TEST_F(ServerEditTest, ARowThatSomebodyIsEditingIsNotDeletedUnderHisHands) {
    Child other(editing());
    ASSERT_EQ(other.hear(), "editing");
    DBEngine::setLockTimeout(300);
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    EXPECT_EQ(errorOf([&] { set.Delete(); }), errLocked);
    EXPECT_EQ(set["ID"].asLong(), 1) << "the row stays, and is the current one";
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errLocked) << "the failed try has let the other's lock alone";
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
    set.Delete();
    EXPECT_EQ(numbers(here.OpenRecordset("Oprema"), "ID"), std::vector<int>({2, 3}));
    set.Close();
    here.Close();
    Child next(editing());
    ASSERT_EQ(next.hear(), "editing") << "what was deleted leaves no lock behind";
    next.tell("go");
    EXPECT_EQ(next.wait(), 0);
}

// A transaction that is open on one workstation holds what it wrote, and nothing else.
TEST_F(ServerEditTest, ATransactionKeepsOthersFromItsOwnRowsOnly) {
    Child other([this](Child& child) {
        DBEngine::setLockTimeout(100);
        Database here = openShop(path);
        child.tell("in");
        for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
            child.tell(std::to_string(errorOf([&] { here.Execute(line); })));
        }
        return 0;
    });
    ASSERT_EQ(other.hear(), "in");
    Database here = openShop(path);
    DBEngine::BeginTrans();
    here.Execute("UPDATE Oprema SET Stanje=9 WHERE ID=2");
    other.tell("UPDATE Oprema SET Stanje=8 WHERE ID=1");
    EXPECT_EQ(other.hear(), "0");
    other.tell("UPDATE Oprema SET Stanje=8 WHERE ID=2");
    EXPECT_EQ(other.hear(), std::to_string(errLocked));
    DBEngine::CommitTrans();
    other.tell("UPDATE Oprema SET Stanje=8 WHERE ID=2");
    EXPECT_EQ(other.hear(), "0");
}

// The server by itself takes nothing more in a transaction in which it has refused something.
TEST_F(ServerEditTest, WhatIsRefusedInATransactionLeavesTheRestOfItStanding) {
    Child other(editing());
    ASSERT_EQ(other.hear(), "editing");
    DBEngine::setLockTimeout(300);
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    const char* tooLarge = "SELECT Stanje * 1E300 * 1E300 FROM Oprema";
    ASSERT_NE(errorOf([&] { here.OpenRecordset(tooLarge, dbOpenSnapshot); }), 0);
    DBEngine::BeginTrans();
    EXPECT_NE(errorOf([&] { here.OpenRecordset(tooLarge, dbOpenSnapshot); }), 0);
    here.Execute("UPDATE Oprema SET Stanje=5 WHERE ID=2");
    EXPECT_NE(errorOf([&] { here.OpenRecordset(tooLarge, dbOpenSnapshot); }), 0);
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errLocked);
    DBEngine::BeginTrans();
    here.Execute("UPDATE Oprema SET Stanje=6 WHERE ID=3");
    EXPECT_NE(errorOf([&] { here.OpenRecordset(tooLarge, dbOpenSnapshot); }), 0);
    EXPECT_EQ(errorOf([&] { here.Execute("UPDATE Computers SET CustID=99"); }), errRelatedRecordRequired);
    DBEngine::Rollback();
    here.Execute("UPDATE Oprema SET Cena=4 WHERE ID=3");
    DBEngine::CommitTrans();
    EXPECT_EQ(numbers(here.OpenRecordset("SELECT Stanje FROM Oprema ORDER BY ID"), "Stanje"),
              (std::vector{100, 5, 100}));
    EXPECT_EQ(numbers(here.OpenRecordset("SELECT Cena FROM Oprema WHERE ID=3"), "Cena"), (std::vector{4}));
}

}  // namespace
