#include "platform/dao/small_set.h"

#include <functional>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::openShop;

namespace {

constexpr const char* kGroup = "SELECT * FROM Oprema WHERE IDGrupe=2";  // products 1, 3, 5 ...

class SmallSetTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(5);
    }
    void addProducts(int group, int count) {
        DBEngine::BeginTrans();
        Recordset products = db.OpenRecordset("Oprema");
        for (int i = 0; i < count; ++i) {
            products.AddNew();
            products.Fields("IDGrupe") = Value(group);
            products.Fields("Naziv") = Value("Deo " + std::to_string(i));
            products.Update();
        }
        DBEngine::CommitTrans();
    }
    // Another workstation that does it once it is told to.
    auto doing(const std::string& statement) {
        return [this, statement](Child& child) {
            Database here = openShop(path);
            child.hear();
            here.Execute(statement);
            child.tell("done");
            return 0;
        };
    }
};

void letGo(Child& other) {
    other.tell("go");
    ASSERT_EQ(other.hear(), "done");
}

TEST_F(SmallSetTest, ComeInTheOrderOfTheStatement) {
    EXPECT_EQ(numbers(db.OpenRecordset(kGroup), "ID"), (std::vector{1, 3, 5}));
    EXPECT_EQ(numbers(db.OpenRecordset(std::string(kGroup) + " ORDER BY Naziv DESC"), "ID"),
              (std::vector{5, 3, 1}));
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT * FROM OpremaGrupe WHERE IDGrupe=2"), "ID"),
              (std::vector{1, 3, 5}));
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT Naziv, ID FROM Oprema WHERE IDGrupe=2 AND ID>1"), "ID"),
              (std::vector{3, 5}));
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT * FROM Oprema WHERE IDGrupe=7"), "ID"), std::vector<int>());
}

TEST_F(SmallSetTest, OfAnyNumberAreAllThere) {
    const int more = static_cast<int>(SmallSet::kMost) - 3;
    addProducts(2, more);
    EXPECT_EQ(db.OpenRecordset(kGroup).RecordCount(), more + 3);
    addProducts(2, 7);
    Recordset set = db.OpenRecordset(kGroup);
    EXPECT_EQ(set.RecordCount(), more + 10);
    set.MoveLast();
    EXPECT_EQ(set["Naziv"].asText(), "Deo 6");
}

TEST_F(SmallSetTest, WhatOthersHaveWrittenSinceShowsAtTheFirstLook) {
    db.Close();
    Child other(doing("UPDATE Oprema SET Stanje=7 WHERE ID=1"));
    db = openShop(path);
    Recordset set = db.OpenRecordset(kGroup);
    Recordset clone = set.Clone();
    letGo(other);
    EXPECT_EQ(set["Stanje"].asSingle(), 7);
    EXPECT_EQ(clone["Stanje"].asSingle(), 7);
}

TEST_F(SmallSetTest, WhatOthersHaveDeletedSinceIsGoneAtTheFirstLook) {
    db.Close();
    Child other(doing("DELETE * FROM Oprema WHERE ID=3"));
    db = openShop(path);
    Recordset set = db.OpenRecordset(kGroup);
    EXPECT_EQ(set["ID"].asLong(), 1);
    letGo(other);
    set.MoveNext();
    EXPECT_EQ(errorOf([&] { set["ID"]; }), errRecordDeleted);
    set.MoveNext();
    EXPECT_EQ(set["ID"].asLong(), 5);
}

TEST_F(SmallSetTest, WhatWasWrittenHereSinceShows) {
    Recordset set = db.OpenRecordset(kGroup);
    EXPECT_EQ(set["Stanje"].asSingle(), 100);
    db.Execute("UPDATE Oprema SET Stanje=8 WHERE ID=3");
    set.MoveNext();
    EXPECT_EQ(set["Stanje"].asSingle(), 8);
    set.Delete();
    EXPECT_EQ(numbers(set.Clone(), "ID"), (std::vector{1, 5}));
    set.AddNew();
    set.Fields("IDGrupe") = Value(2);
    set.Fields("Naziv") = Value("Novi");
    set.Update();
    set.MoveLast();
    EXPECT_EQ(set["Naziv"].asText(), "Novi");
    EXPECT_EQ(numbers(set.Clone(), "ID"), (std::vector{1, 5, 6}));
}

TEST_F(SmallSetTest, WhatWasTakenBackShowsNoMore) {
    DBEngine::BeginTrans();
    db.Execute("UPDATE Oprema SET Stanje=9 WHERE ID=1");
    Recordset set = db.OpenRecordset(kGroup);
    DBEngine::Rollback();
    EXPECT_EQ(set["Stanje"].asSingle(), 100);
}

TEST_F(SmallSetTest, ARequeryReadsThemAnew) {
    Recordset set = db.OpenRecordset(kGroup);
    addProducts(2, 1);
    db.Execute("UPDATE Oprema SET Stanje=8 WHERE ID=1");
    set.Requery();
    EXPECT_EQ(set.RecordCount(), 4);
    EXPECT_EQ(set["Stanje"].asSingle(), 8);
}

// As on any long walk: what nobody has looked at yet is asked for when somebody does.
TEST_F(SmallSetTest, ARowThatOthersDeleteStaysDeletedWhenTheRestOfItIsAskedFor) {
    addProducts(1, 100);
    db.Close();
    Child other(doing("DELETE * FROM Oprema WHERE ID=55"));
    db = openShop(path);
    Recordset set = db.OpenRecordset("SELECT * FROM Oprema WHERE IDGrupe=1");
    while (set["ID"].asLong() < 55) {
        set.MoveNext();
    }
    letGo(other);
    EXPECT_EQ(errorOf([&] { set["Naziv"]; }), errRecordDeleted);
    set.MoveNext();
    EXPECT_EQ(set["ID"].asLong(), 56);
    EXPECT_EQ(set["Naziv"].asText(), "Deo 50");
}

}  // namespace
