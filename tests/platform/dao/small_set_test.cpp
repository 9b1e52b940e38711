#include "platform/dao/small_set.h"

#include <functional>
#include <random>

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

TEST_F(SmallSetTest, ARequeryShowsWhatOthersHaveWritten) {
    for (const char* rows : {kGroup, "SELECT * FROM Oprema"}) {
        db.Close();
        Child other(doing("UPDATE Oprema SET Stanje=Stanje+1 WHERE ID=1"));
        db = openShop(path);
        Recordset set = db.OpenRecordset(rows);
        const float before = set["Stanje"].asSingle();
        letGo(other);
        set.Requery();
        EXPECT_EQ(set["Stanje"].asSingle(), before + 1) << rows;
    }
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

// --- The same rows in another order, while somebody still has them.

class TurnedSetTest : public SmallSetTest {
 protected:
    static constexpr const char* kServices = "SELECT * FROM Services WHERE MachineID=2";

    void SetUp() override {
        SmallSetTest::SetUp();
        std::minstd_rand random(5);
        const auto any = [&](int among) { return static_cast<int>(random() % static_cast<unsigned>(among)); };
        DBEngine::BeginTrans();
        Recordset services = db.OpenRecordset("Services");
        for (int i = 0; i < 300; ++i) {
            services.AddNew();
            services.Fields("MachineID") = Value(2);
            services.Fields("Comments") = Value(std::string(1, static_cast<char>('a' + any(5))));
            services.Fields("ServiceStarted") = Value(Date{any(40) / 8.0 - 2});
            services.Fields("Price") = Value(Currency::fromScaled(any(7) * 1'000'000'000'000'000 - 3));
            services.Fields("Discount") = any(3) == 0 ? Value() : Value(static_cast<float>(any(9)) / 3 - 1);
            services.Update();
        }
        DBEngine::CommitTrans();
    }
    std::vector<int> inOrder(const std::string& order) {
        return numbers(db.OpenRecordset(std::string(kServices) + order), "ID");
    }
    static void readAnew() { DBEngine::Idle(dbRefreshCache); }
};

TEST_F(TurnedSetTest, StandsAsTheStoreWouldPutIt) {
    std::vector<std::string> orders{" ORDER BY Discount DESC, Price",
                                    " ORDER BY Price, ID DESC",
                                    " ORDER BY Price, Comments",
                                    " ORDER BY Services.Price DESC",
                                    " ORDER BY Price*2",
                                    " ORDER BY 3",
                                    ""};
    for (const char* field : {"ID", "MachineID", "ServiceStarted", "Comments", "Price", "Discount", "Paid"}) {
        orders.push_back(std::string(" ORDER BY ") + field);
        orders.push_back(std::string(" ORDER BY ") + field + " DESC");
    }
    for (const std::string& order : orders) {
        readAnew();
        const std::vector<int> expected = inOrder(order);
        for (const char* before : {"", " ORDER BY Price DESC", " ORDER BY Comments"}) {
            readAnew();
            const Recordset held = db.OpenRecordset(std::string(kServices) + before);
            EXPECT_EQ(inOrder(order), expected) << order << " after" << before;
        }
    }
}

TEST_F(TurnedSetTest, AColumnOfTheSetIsNotTheFieldOfItsName) {
    const std::string negated = "SELECT ID, -Price AS Price FROM Services WHERE MachineID=2";
    for (const char* order : {" ORDER BY Price", " ORDER BY Services.Price"}) {
        readAnew();
        const std::vector<int> expected = numbers(db.OpenRecordset(negated + order), "ID");
        readAnew();
        const Recordset held = db.OpenRecordset(negated);
        EXPECT_EQ(numbers(db.OpenRecordset(negated + order), "ID"), expected) << order;
    }
}

TEST_F(TurnedSetTest, ShowsWhatOthersHaveWritten) {
    db.Close();
    Child other(doing("UPDATE Services SET Price=900000000000 WHERE ID=2"));
    db = openShop(path);
    const std::string byPrice = std::string(kServices) + " ORDER BY Price DESC";
    const Recordset held = db.OpenRecordset(byPrice);
    EXPECT_NE(held["ID"].asLong(), 2);
    letGo(other);
    EXPECT_EQ(db.OpenRecordset(byPrice)["ID"].asLong(), 2);
}

TEST_F(TurnedSetTest, ShowsWhatWasWrittenHereAndWhatWasTakenBack) {
    const std::string byPrice = std::string(kServices) + " ORDER BY Price DESC";
    const int usual = db.OpenRecordset(byPrice)["ID"].asLong();
    ASSERT_NE(usual, 2);
    const Recordset held = db.OpenRecordset(kServices);
    DBEngine::BeginTrans();
    db.Execute("UPDATE Services SET Price=900000000000 WHERE ID=2");
    const Recordset within = db.OpenRecordset(byPrice);
    EXPECT_EQ(within["ID"].asLong(), 2);
    DBEngine::Rollback();
    EXPECT_EQ(db.OpenRecordset(byPrice)["ID"].asLong(), usual);
}

TEST_F(TurnedSetTest, OtherRowsAreNotTakenForThem) {
    const Recordset held = db.OpenRecordset(kServices);
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT * FROM Services WHERE MachineID=3 ORDER BY Price"), "ID"),
              (std::vector{3}));
    EXPECT_EQ(numbers(db.OpenRecordset(std::string(kServices) + " AND ID<7 ORDER BY Price"), "ID").size(), 2);
    const Recordset few = db.OpenRecordset("SELECT ID, Price FROM Services WHERE MachineID=2 ORDER BY Price");
    EXPECT_EQ(errorOf([&] { few["Comments"]; }), errItemNotFound);
}

TEST_F(TurnedSetTest, GoesOnAsAnyOther) {
    const Recordset held = db.OpenRecordset(kServices);
    Recordset turned = db.OpenRecordset(std::string(kServices) + " ORDER BY Price DESC, ID DESC");
    const int last = turned["ID"].asLong();
    turned.Edit();
    turned.Fields("Paid") = Value(12);
    turned.Update();
    EXPECT_EQ(turned["Paid"].asLong(), 12);
    turned.FindFirst("ID=2");
    ASSERT_FALSE(turned.NoMatch());
    EXPECT_EQ(turned["Comments"].asText(), std::string(100, 'c'));
    turned.MoveFirst();
    turned.Delete();
    turned.FindFirst("ID=" + std::to_string(last));
    EXPECT_TRUE(turned.NoMatch());
}

}  // namespace
