#include "platform/dao/dao_shop.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/store_kinds.h"

using namespace dao;
using daotest::errorOf;

namespace {

constexpr const char* kFirst = "SELECT * FROM Customers WHERE CustID=1";
constexpr const char* kSecond = "SELECT * FROM Customers WHERE CustID=2";
constexpr const char* kThird = "SELECT * FROM Customers WHERE CustID=3";

class StoredQueryTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(3);
        db.CreateQueryDef("Q", kFirst);
    }
    driver::Store& store() { return db.impl()->file().store(); }
    std::vector<int> found() { return numbers(db.OpenRecordset("Q"), "CustID"); }
    // As another workstation does.
    std::int64_t writeFromOutside(const std::string& text) {
        const std::unique_ptr<driver::Store> other = kindOf(path).examine(path, {}, true)->open();
        other->transaction().beginWrite();
        const std::int64_t version = other->storedQueries().writeQuery("Q", text);
        other->transaction().commit();
        return version;
    }
};

TEST_F(StoredQueryTest, EachTextBearsAVersionOfItsOwn) {
    const std::int64_t first = store().storedQueries().queryVersion("Q");
    db.QueryDefs()["Q"].setSQL(kSecond);
    const std::int64_t second = store().storedQueries().queryVersion("Q");
    db.QueryDefs().Delete("Q");
    EXPECT_EQ(store().storedQueries().queryVersion("Q"), 0);
    db.CreateQueryDef("Q", kSecond);
    const std::int64_t third = store().storedQueries().queryVersion("Q");
    EXPECT_GT(second, first);
    EXPECT_GT(third, second) << "a list elsewhere still knows the query that was dropped";
}

TEST_F(StoredQueryTest, ATextFromAnotherWorkstationIsReadAtOnce) {
    ASSERT_EQ(found(), std::vector<int>{1});
    writeFromOutside(kSecond);
    EXPECT_EQ(found(), std::vector<int>{2});
}

// The version that the text had goes to the next one, from wherever that comes.
TEST_F(StoredQueryTest, ATextThatWasTakenBackIsForgotten) {
    DBEngine::BeginTrans();
    db.QueryDefs()["Q"].setSQL(kSecond);
    ASSERT_EQ(found(), std::vector<int>{2});
    const std::int64_t takenBack = store().storedQueries().queryVersion("Q");
    DBEngine::Rollback();
    // A server never gives a text's number again; a file does, and that is the harder case.
    ASSERT_EQ(writeFromOutside(kThird) == takenBack, !daotest::onServer());
    EXPECT_EQ(found(), std::vector<int>{3});
}

TEST_F(StoredQueryTest, ATextIsForgottenAlsoWhereOnlyAnotherChangeFailedBefore) {
    DBEngine::BeginTrans();
    db.QueryDefs()["Q"].setSQL(kSecond);
    const std::int64_t takenBack = store().storedQueries().queryVersion("Q");
    EXPECT_EQ(errorOf([&] { db.CreateQueryDef("Q", kFirst); }), errObjectExists);
    ASSERT_EQ(found(), std::vector<int>{2});
    DBEngine::Rollback();
    // A server never gives a text's number again; a file does, and that is the harder case.
    ASSERT_EQ(writeFromOutside(kThird) == takenBack, !daotest::onServer());
    EXPECT_EQ(found(), std::vector<int>{3});
}

// The counter of the texts stands beside those of the tables, also where there is no table yet.
TEST_F(StoredQueryTest, AFileOfQueriesOnlyIsCompacted) {
    const std::string bare = folder.file("Bare.mdb");
    Database empty = DBEngine::CreateDatabase(bare, daotest::kConnect);
    empty.CreateQueryDef("Q", kFirst);
    EXPECT_EQ(empty.TableDefs().Count(), 0);
    empty.Close();
    DBEngine::CompactDatabase(bare, folder.file("Dense.mdb"), daotest::kConnect);
    EXPECT_EQ(daotest::openShop(folder.file("Dense.mdb")).QueryDefs()["Q"].SQL(), kFirst);
}

// The store takes some two thousand columns; nothing else that the grammar lets pass is too much for it.
TEST_F(StoredQueryTest, ASelectionOfTooManyColumnsIsTooComplex) {
    std::string columns = "CustID AS c0";
    for (int i = 1; i < 2100; ++i) {
        columns += ",CustID AS c" + std::to_string(i);
    }
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("SELECT " + columns + " FROM Customers"); }), errTooComplex);
    std::string order = "CustID";
    for (int i = 1; i < 2100; ++i) {
        order += ",CustID";
    }
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("SELECT * FROM Customers ORDER BY " + order); }), errTooComplex);
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("SELECT CustID FROM Customers GROUP BY " + order); }),
              errTooComplex);
}

}  // namespace
