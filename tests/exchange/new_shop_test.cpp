#include "exchange/new_shop.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <set>

#include "platform/dao/postgres/connection.h"
#include "platform/dao/postgres/signpost.h"
#include "support/fixture.h"
#include "support/server_cluster.h"

namespace {

using dao::Value;
using exchange::NewShop;
using testing::HasSubstr;

// A block of rows of a table's fields, as whoever fills a shop has them.
class Rows {
 public:
    Rows(const std::string& table, std::vector<std::string_view> fields) : fields_(std::move(fields)) {
        std::vector<dao::Type> types;
        for (const std::string_view field : fields_) {
            for (const dao::FieldDef& one : NewShop::table(table)->Fields()) {
                if (one.Name == field) {
                    types.push_back(NewShop::typeOf(one));
                }
            }
        }
        block_.reset(types);
    }
    Rows& number(std::int64_t key, const std::string& text) {
        block_.startRow();
        block_.addInteger(key);
        block_.addText(text);
        block_.endRow();
        return *this;
    }
    Rows& numbers(std::int64_t one, std::int64_t other) {
        block_.startRow();
        block_.addInteger(one);
        block_.addInteger(other);
        block_.endRow();
        return *this;
    }
    void into(NewShop& shop, const std::string& table) { shop.add(table, fields_, block_); }

 private:
    std::vector<std::string_view> fields_;
    dao::RowBlock block_;
};

int failureOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const dao::Error& error) {
        return error.Number();
    }
    return 0;
}

class NewShopTest : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        before_ = names();
    }
    std::string target() const { return path("Nova.mdb").toStdString(); }
    std::string kept() const { return path("Nova.old.mdb").toStdString(); }
    static std::string firstLine(const std::string& file) {
        std::string line;
        std::getline(std::ifstream(file), line);
        return line;
    }
    std::set<std::string> names() const {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(path("").toStdString())) {
            all.insert(entry.path().filename());
        }
        return all;
    }
    dao::Database open(const std::string& file) {
        return dao::DBEngine::OpenDatabase(file, false, false, connectText().toStdString());
    }
    static void fill(NewShop& shop) {
        Rows("Grupe", {"ID", "Grupa"}).number(7, "MONITORI").number(3, "MIŠEVI").into(shop, "Grupe");
        Rows("DocNumber", {"PredracunBroj", "RacunBroj"}).numbers(41, 17).into(shop, "DocNumber");
        shop.keep();
    }

    // Of the file at target(), which holds "old".
    void takePlace() {
        {
            NewShop shop(target());
            fill(shop);
            shop.replace(kept());
        }
        EXPECT_EQ(firstLine(kept()), "old");
        dao::Database database = open(target());
        EXPECT_EQ(database.OpenRecordset("Grupe").RecordCount(), 2);
        database.Close();
    }

    std::set<std::string> before_;
};

TEST_F(NewShopTest, IsThereWithItsNumbersWhenItIsWhole) {
    NewShop shop(target());
    fill(shop);
    EXPECT_FALSE(std::filesystem::exists(target()));
    shop.appear();
    dao::Database database = open(target());
    dao::Recordset groups = database.OpenRecordset("Grupe");
    EXPECT_EQ(groups.RecordCount(), 2);
    groups.AddNew();
    EXPECT_EQ(groups.Fields("ID").Value().asLong(), 8) << "behind the highest, which came first";
    groups.CancelUpdate();
    groups.FindFirst("ID=3");
    EXPECT_EQ(groups["Grupa"].asText(), "MIŠEVI");
    EXPECT_EQ(database.OpenRecordset("DocNumber")["RacunBroj"].asLong(), 17);
    EXPECT_EQ(database.OpenRecordset("OpremaGrupe").RecordCount(), 0);
    EXPECT_EQ(database.Form(), 1);
    database.Close();
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(target()).permissions(), perms::owner_read | perms::owner_write);
}

TEST_F(NewShopTest, HasNoDocumentNumbersThatNobodyAdded) {
    NewShop shop(target());
    shop.keep();
    shop.appear();
    dao::Database database = open(target());
    EXPECT_EQ(database.TableDefs().Count(), 9);
    database.Close();
}

TEST_F(NewShopTest, LeavesNothingWhereItIsGivenUp) {
    {
        NewShop shop(target());
        fill(shop);
    }
    EXPECT_EQ(names(), before_);
}

TEST_F(NewShopTest, SparesAFileThatHasComeMeanwhile) {
    NewShop shop(target());
    fill(shop);
    std::ofstream(target()) << "a letter";
    EXPECT_EQ(failureOf([&] { shop.appear(); }), dao::errObjectExists);
    EXPECT_EQ(firstLine(target()), "a letter");
}

TEST_F(NewShopTest, TakesThePlaceOfAFileThatStaysBesideIt) {
    std::ofstream(target()) << "old";
    takePlace();
}

TEST_F(NewShopTest, IsForThoseWhoCouldUseTheFileBefore) {
    std::ofstream(target()) << "old";
    std::filesystem::permissions(target(), std::filesystem::perms(0660));
    NewShop shop(target());
    fill(shop);
    shop.replace(kept());
    EXPECT_EQ(std::filesystem::status(target()).permissions(), std::filesystem::perms(0660));
}

// A kill between keeping the old file and putting the new one there.
TEST_F(NewShopTest, TakesThePlaceOfAFileThatIsKeptAlready) {
    std::ofstream(target()) << "old";
    std::filesystem::create_hard_link(target(), kept());
    takePlace();
}

TEST_F(NewShopTest, NeverReplacesWhatWasKeptBefore) {
    std::ofstream(target()) << "old";
    std::ofstream(kept()) << "older";
    NewShop shop(target());
    fill(shop);
    EXPECT_EQ(failureOf([&] { shop.replace(kept()); }), dao::errObjectExists);
    EXPECT_EQ(firstLine(target()), "old");
}

TEST_F(NewShopTest, RefusesARowWithoutTheOneItBelongsTo) {
    NewShop shop(target());
    Rows services("Services", {"ID", "MachineID"});
    EXPECT_NE(failureOf([&] {
                  services.numbers(1, 99).into(shop, "Services");
                  shop.keep();
              }),
              0);
}

TEST_F(NewShopTest, RefusesANumberTwice) {
    NewShop shop(target());
    Rows groups("Grupe", {"ID", "Grupa"});
    EXPECT_EQ(failureOf([&] { groups.number(1, "A").number(1, "B").into(shop, "Grupe"); }),
              dao::errDuplicateKey);
}

TEST_F(NewShopTest, TellsHowFarItIs) {
    NewShop shop(target());
    std::vector<std::string> told;
    shop.watch(3, [&](const dao::RowState& state) {
        told.push_back(state.table + (state.comparing ? " again " : " ") + std::to_string(state.done) + "/" +
                       std::to_string(state.all));
    });
    fill(shop);
    EXPECT_THAT(told,
                testing::ElementsAre("Grupe 2/3", "DocNumber 3/3", "Grupe again 2/3", "DocNumber again 3/3"));
}

class NewShopOnServer : public NewShopTest {
 protected:
    void SetUp() override {
        NewShopTest::SetUp();
        dao::postgres::writeSignpost(target(), database_.place());
        before_ = names();
    }
    bool isEmpty() {
        dao::postgres::Connection server(database_.place());
        return !server.run("SELECT to_regclass('dao.shop') IS NOT NULL").boolean(0, 0);
    }

    tests::ServerDatabase database_;
};

TEST_F(NewShopOnServer, FillsTheEmptyDatabaseBehindASignpost) {
    {
        NewShop shop(target());
        fill(shop);
        shop.appear();
    }
    EXPECT_EQ(names(), before_);
    dao::Database database = open(target());
    dao::Recordset groups = database.OpenRecordset("Grupe");
    EXPECT_EQ(groups.RecordCount(), 2);
    groups.AddNew();
    EXPECT_EQ(groups.Fields("ID").Value().asLong(), 8);
    groups.Close();
    EXPECT_EQ(database.OpenRecordset("DocNumber")["PredracunBroj"].asLong(), 41);
    database.Close();
}

TEST_F(NewShopOnServer, LeavesTheDatabaseAsEmptyAsItWasWhereItIsGivenUp) {
    {
        NewShop shop(target());
        fill(shop);
        EXPECT_FALSE(isEmpty()) << "it is being filled";
    }
    EXPECT_TRUE(isEmpty());
    EXPECT_EQ(names(), before_);
}

TEST_F(NewShopOnServer, SparesAShopThatIsThereAlready) {
    {
        NewShop shop(target());
        fill(shop);
        shop.appear();
    }
    EXPECT_EQ(failureOf([&] { NewShop(target()).keep(); }), dao::errObjectExists);
    dao::Database database = open(target());
    EXPECT_EQ(database.OpenRecordset("Grupe").RecordCount(), 2);
    database.Close();
}

}  // namespace
