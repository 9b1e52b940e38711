#include "platform/dao/moving.h"

#include <climits>
#include <filesystem>
#include <functional>

#include "failures.h"
#include "platform/dao/dao_shop.h"
#include "platform/dao/postgres/connection.h"
#include "platform/dao/postgres/place.h"
#include "platform/dao/postgres/shop_making.h"
#include "platform/dao/postgres/signpost.h"
#include "platform/dao/sqlite/file_kind.h"
#include "proxy.h"
#include "support/server_cluster.h"

using namespace dao;
using daotest::errorOf;
using daotest::kConnect;

namespace {

namespace fs = std::filesystem;

// A shop in a file, and an empty database on a server.
class MovingTest : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_FALSE(daotest::onServer()) << "these tests make their own server's shop";
        daotest::createShop(path);
        Database db = daotest::openShop(path);
        daotest::fillShop(db, 25);
        Recordset clients = db.OpenRecordset("Customers");
        clients.MoveLast();
        clients.Edit();
        clients.Fields("Surname") = Value("O'Đorđević \"Ž\"\nŁ");
        clients.Fields("City") = Value();
        clients.Fields("BirthDate") = Value(Date{-1.25});
        clients.Fields("Comments") = Value("");
        clients.Update();
        clients.AddNew();  // a number that was given and never used
        clients.CancelUpdate();
        Recordset services = db.OpenRecordset("Services");
        services.Edit();
        services.Fields("Price") = Value(Currency::fromScaled(123456789012345));
        services.Fields("Discount") = Value(0.1F);
        services.Fields("Paid") = Value(Currency::fromScaled(-1));
        services.Update();
        Recordset kinds = db.OpenRecordset("ServiceTypes");
        for (const char* kind : {"Čišćenje", "instalacija"}) {
            kinds.AddNew();
            kinds.Fields("Service") = Value(kind);
            kinds.Update();
        }
        db.CreateIndex("Customers", "Surname");
        db.setForm(3);
    }

    std::string server() const {
        const postgres::Address place = database.place();
        return "host='" + place.host + "' dbname='" + place.dbname + "' user='" + place.user + "'" +
               (place.port.empty() ? "" : " port=" + place.port);
    }

    // Everything that a reader can see of a shop, as one text.
    static std::string everythingIn(const std::string& shop) {
        Database db = daotest::openShop(shop);
        std::string text = "form " + std::to_string(db.Form()) + '\n';
        for (int t = 0; t < db.TableDefs().Count(); ++t) {
            const TableDef table = db.TableDefs()[t];
            text += table.Name() + '\n';
            for (const FieldDef& field : table.Fields()) {
                text += field.Name + ' ' + std::to_string(field.Type) + ' ' + std::to_string(field.Size) +
                        (field.counter ? " counter\n" : "\n");
            }
            Recordset rows = db.OpenRecordset(table.Name());
            for (; !rows.EOF(); rows.MoveNext()) {
                for (int f = 0; f < rows.FieldCount(); ++f) {
                    const Value& value = rows.Fields(f).Value();
                    text += value.isNull() ? "(Null)|" : value.asText() + '|';
                }
                text += '\n';
            }
        }
        for (const Relation& relation : db.Relations()) {
            text += relation.table + '.' + relation.field + ' ' + relation.foreignTable + '.' +
                    relation.foreignField + (relation.cascadeDelete ? " cascade\n" : "\n");
        }
        for (int q = 0; q < db.QueryDefs().Count(); ++q) {
            text += db.QueryDefs()[q].Name() + ": " + db.QueryDefs()[q].SQL() + '\n';
        }
        return text;
    }

    static int nextClient(const std::string& shop) {
        Database db = daotest::openShop(shop);
        Recordset clients = db.OpenRecordset("Customers");
        clients.AddNew();
        return clients["CustID"].asLong();
    }

    daotest::TempFolder folder;
    std::string path = folder.file("Tarvello.mdb");
    std::string kept = folder.file("Tarvello.before-server.mdb");
    tests::ServerDatabase database;
};

TEST_F(MovingTest, AShopArrivesOnTheServerAsItWas) {
    const std::string before = everythingIn(path);
    moveToServer(path, kConnect, server());
    EXPECT_TRUE(postgres::isSignpost(path));
    EXPECT_TRUE(DBEngine::IsOnServer(path));
    EXPECT_FALSE(DBEngine::IsOnServer(kept));
    EXPECT_EQ(everythingIn(path), before);
    EXPECT_EQ(everythingIn(kept), before);
    EXPECT_EQ(nextClient(path), 27) << "26 was given before, though never used";
}

TEST_F(MovingTest, AShopComesHomeAsItIs) {
    moveToServer(path, kConnect, server());
    {
        Database db = daotest::openShop(path);
        db.Execute("UPDATE Customers SET City = 'Niš' WHERE CustID = 3");
        db.Execute("DELETE FROM Computers WHERE MachineID = 4");
        db.CreateQueryDef("Mine", "SELECT * FROM Services");
    }
    const std::string onServer = everythingIn(path);
    const std::string home = folder.file("Home.mdb");
    moveHome(path, home, kConnect);
    EXPECT_EQ(everythingIn(home), onServer);
    EXPECT_EQ(errorOf([&] { DBEngine::OpenDatabase(home, false, false, ";pwd=wrong"); }), 3031);
    EXPECT_EQ(everythingIn(path), onServer) << "the server keeps its shop";
    EXPECT_EQ(nextClient(home), 27);
    EXPECT_EQ(errorOf([&] { moveHome(path, home, kConnect); }), 3012);
}

TEST_F(MovingTest, WatchersAreToldHowFarItIs) {
    std::vector<std::int64_t> seen;
    moveToServer(path, kConnect, server(), [&](const RowState& state) {
        EXPECT_LE(state.done, state.all);
        seen.push_back(state.done);
    });
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), 25 * 4 + 2 + 2) << "at the end of the comparing all rows were seen again";
}

TEST_F(MovingTest, WhileSomebodyHasTheFileOpenNothingMoves) {
    const std::vector<char> before = daotest::readFile(path);
    daotest::Child other([&](daotest::Child& child) {
        Database db = daotest::openShop(path);
        child.tell("open");
        child.hear();
        return 0;
    });
    other.hear();
    EXPECT_EQ(errorOf([&] { moveToServer(path, kConnect, server()); }), 3045);
    other.tell("close");
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(daotest::readFile(path), before);
    EXPECT_FALSE(fs::exists(kept));
}

TEST_F(MovingTest, AShopThatIsThereIsNotReplaced) {
    moveToServer(path, kConnect, server());
    const std::string second = folder.file("Second.mdb");
    daotest::createShop(second);
    EXPECT_EQ(errorOf([&] { moveToServer(second, kConnect, server()); }), 3012);
    EXPECT_FALSE(postgres::isSignpost(second));
    fs::remove(path);
    fs::copy_file(kept, path);
    EXPECT_EQ(errorOf([&] { moveToServer(path, kConnect, server()); }), 3012) << "the name is taken, too";
}

TEST_F(MovingTest, ACopyThatABrokenTryLeftIsReplaced) {
    {
        postgres::NewShop unfinished(database.place());
        TableDef table("Customers");
        table.Append({"CustID", dbLong, 0, true});
        unfinished.store().definitions().createTable(table);
    }
    const std::string signpost = folder.file("Early.mdb");
    postgres::writeSignpost(signpost, database.place());
    EXPECT_EQ(errorOf([&] { daotest::openShop(signpost); }), 3343) << "nobody works on half a shop";
    const std::string before = everythingIn(path);
    moveToServer(path, kConnect, server());
    EXPECT_EQ(everythingIn(path), before);
}

TEST_F(MovingTest, AWrongPasswordOrAServerThatIsNotThereChangesNothing) {
    const std::vector<char> before = daotest::readFile(path);
    EXPECT_EQ(errorOf([&] { moveToServer(path, ";pwd=wrong", server()); }), 3031);
    EXPECT_NE(errorOf([&] { moveToServer(path, kConnect, "host=/nowhere dbname=shop"); }), 0);
    EXPECT_EQ(errorOf([&] { moveToServer(path, kConnect, "host=localhost password=x dbname=shop"); }), 3001);
    EXPECT_EQ(daotest::readFile(path), before);
    EXPECT_FALSE(fs::exists(kept));
}

// An earlier version took such texts, and files of that time still hold them.
void writeUnsound(const std::string& path, std::string_view table, std::int64_t key, std::string_view field,
                  const std::string& text) {
    const std::unique_ptr<driver::Store> store = fileKind().examine(path, kConnect, false)->open();
    const Value value(text);
    const driver::FieldValue change{field, &value};
    store->transaction().beginWrite();
    ASSERT_TRUE(store->rows().updateRow(std::string(table), key, {&change, 1}));
    store->transaction().commit();
}

TEST_F(MovingTest, TextsThatNoServerKeepsAreNamedBeforeAnythingMoves) {
    writeUnsound(path, "Customers", 7, "City", "Ni\xB9");
    writeUnsound(path, "Customers", 25, "Comments", std::string("a\0b", 3));
    writeUnsound(path, "ServiceTypes", 2, "Service", "\xC0\x80");
    {
        const std::unique_ptr<driver::Store> store = fileKind().examine(path, kConnect, false)->open();
        store->transaction().beginWrite();
        store->storedQueries().writeQuery("Old", "SELECT * FROM Customers WHERE City = 'Ni\xB9'");
        store->transaction().commit();
    }
    const std::vector<char> before = daotest::readFile(path);
    EXPECT_EQ(errorOf([&] { moveToServer(path, kConnect, server()); }), errTextNotSound);
    EXPECT_EQ(
        DBEngine::Errors().front().Description,
        "The shop holds texts that a server does not keep; they are not valid UTF-8, or they hold a zero "
        "character. Type them anew first:"
        "\ntable Customers, key 7, field City"
        "\ntable Customers, key 25, field Comments"
        "\ntable ServiceTypes, key 2, field Service"
        "\nstored query Old");
    EXPECT_EQ(daotest::readFile(path), before);
    EXPECT_FALSE(fs::exists(kept));
    EXPECT_FALSE(postgres::Connection(database.place())
                     .run("SELECT to_regclass('dao.shop') IS NOT NULL")
                     .boolean(0, 0))
        << "nothing was begun on the server";
}

TEST_F(MovingTest, OfManySuchTextsTheFirstAreNamed) {
    for (int client = 1; client <= 22; ++client) {
        writeUnsound(path, "Customers", client, "City", "\xFF");
    }
    EXPECT_EQ(errorOf([&] { moveToServer(path, kConnect, server()); }), errTextNotSound);
    const std::string said = DBEngine::Errors().front().Description;
    EXPECT_NE(said.find("\ntable Customers, key 20, field City\nand 2 more"), std::string::npos) << said;
}

TEST_F(MovingTest, TextsThatNoServerKeepsDoNotSetItBackHalfway) {
    const std::string backup = folder.file("Tarvello.bkp");
    fs::copy_file(path, backup);
    moveToServer(path, kConnect, server());
    const std::string before = everythingIn(path);
    writeUnsound(backup, "Computers", 3, "MachineName", "\xE6");
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(backup, path); }), errTextNotSound);
    EXPECT_NE(DBEngine::Errors().front().Description.find("\ntable Computers, key 3, field MachineName"),
              std::string::npos);
    EXPECT_EQ(everythingIn(path), before);
}

TEST_F(MovingTest, EveryLetterTravelsBothWays) {
    const std::string letters = "\x01\t\x7F\xC2\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF\xF4\x8F\xBF\xBF";
    {
        Database db = daotest::openShop(path);
        Recordset clients = db.OpenRecordset("Customers");
        clients.Edit();
        clients.Fields("Comments") = Value(letters);
        clients.Update();
    }
    moveToServer(path, kConnect, server());
    const std::string home = folder.file("Home.mdb");
    moveHome(path, home, kConnect);
    for (const std::string& shop : {path, home}) {
        EXPECT_EQ(daotest::openShop(shop).OpenRecordset("Customers")["Comments"].asText(), letters) << shop;
    }
}

TEST_F(MovingTest, ABackupOfTheServerOpensByItself) {
    moveToServer(path, kConnect, server());
    const std::string backup = folder.file("Tarvello.bkp");
    daotest::writeFile(backup, {'o', 'l', 'd'});
    Database working = daotest::openShop(path);
    DBEngine::CopyDatabase(path, backup);
    EXPECT_EQ(everythingIn(backup), everythingIn(path));
    EXPECT_EQ(errorOf([&] { DBEngine::OpenDatabase(backup, false, false, ";pwd=wrong"); }), 3031);
}

TEST_F(MovingTest, AViewOfTheShopIsOfOneMomentAndKeepsNobodyOut) {
    moveToServer(path, kConnect, server());
    const std::string before = everythingIn(path);
    ShopView view(path);
    {
        Database alone = daotest::openShop(path, true);
        alone.Execute("DELETE FROM Customers WHERE CustID = 1");
    }
    view.copyTo(folder.file("Tarvello.bkp"));
    EXPECT_EQ(everythingIn(folder.file("Tarvello.bkp")), before);
    EXPECT_NE(everythingIn(path), before);
}

TEST_F(MovingTest, TheStateOfAShopIsAnotherOnceSomethingHasChanged) {
    moveToServer(path, kConnect, server());
    const std::string first = ShopView(path).state();
    Database db = daotest::openShop(path);
    db.CreateQueryDef("Mine", "SELECT * FROM Services");
    db.QueryDefs()["Mine"].setSQL("SELECT * FROM Computers");
    db.QueryDefs().Delete("Mine");
    EXPECT_EQ(ShopView(path).state(), first) << "a stored query is nobody's record";
    const auto changes = [&](const std::function<void()>& change) {
        const std::string before = ShopView(path).state();
        change();
        return ShopView(path).state() != before;
    };
    EXPECT_TRUE(changes([&] { db.Execute("UPDATE Customers SET City = 'Niš' WHERE CustID = 3"); }));
    EXPECT_TRUE(changes([&] { db.OpenRecordset("Customers").AddNew(); })) << "a number was given";
    EXPECT_TRUE(changes([&] { db.setForm(4); }));
    EXPECT_TRUE(changes([&] { db.CreateIndex("Customers", "City"); }));
}

// A server that was set back to an earlier day by its keeper goes on counting from there.
TEST_F(MovingTest, TheStateOfAShopDoesNotComeBack) {
    moveToServer(path, kConnect, server());
    Database db = daotest::openShop(path);
    db.Execute("UPDATE Customers SET City = 'Niš'");
    const std::string state = ShopView(path).state();
    postgres::Connection keeper(database.place());
    keeper.execute(
        "UPDATE dao.writers SET version = version - 1"
        " WHERE changed = (SELECT max(changed) FROM dao.writers)");
    db.Execute("UPDATE Customers SET City = 'Bor'");
    EXPECT_NE(ShopView(path).state(), state);
}

TEST_F(MovingTest, AServerThatIsTooOldTakesNoShop) {
    Proxy proxy(database.place());
    proxy.replace(std::string("server_version\0"
                              "15.",
                              18),
                  std::string("server_version\0"
                              "14.",
                              18));
    const std::vector<char> before = daotest::readFile(path);
    const Failure failure = failureOf([&] {
        moveToServer(path, kConnect,
                     "host=" + proxy.place().host + " port=" + proxy.place().port +
                         " dbname=" + database.place().dbname + " user=" + database.place().user);
    });
    EXPECT_EQ(failure.number, errUnrecognisedFormat);
    EXPECT_TRUE(failure.says(" is too old: it is PostgreSQL 14.")) << failure.sentence;
    EXPECT_EQ(daotest::readFile(path), before);
    EXPECT_FALSE(fs::exists(kept));
    EXPECT_FALSE(postgres::Connection(database.place())
                     .run("SELECT to_regclass('dao.shop') IS NOT NULL")
                     .boolean(0, 0));
    const std::string signpost = folder.file("Old.mdb");
    postgres::writeSignpost(signpost, proxy.place());
    EXPECT_EQ(errorOf([&] { daotest::openShop(signpost); }), 3343);
}

// Whatever an older program did to it would take away what that program does not know.
TEST_F(MovingTest, AShopOfANewerProgramIsLeftAsItIs) {
    moveToServer(path, kConnect, server());
    const std::string backup = folder.file("Tarvello.bkp");
    daotest::openShop(path).setForm(4);
    fs::copy_file(kept, backup);
    const std::string before = everythingIn(path);
    DBEngine::setKnownForm(3);
    const std::string home = folder.file("Home.mdb");
    for (const std::function<void()>& road : std::initializer_list<std::function<void()>>{
             [&] { daotest::openShop(path); },
             [&] { DBEngine::RepairDatabase(path, kConnect); },
             [&] { moveHome(path, home, kConnect); },
             [&] { DBEngine::CopyDatabase(path, home); },
             [&] { DBEngine::CopyDatabase(backup, path); },
         }) {
        const Failure failure = failureOf(road);
        EXPECT_EQ(failure.number, errNewerForm);
        EXPECT_EQ(failure.sentence, "The database was written by a newer version of the program.");
    }
    EXPECT_FALSE(fs::exists(home));
    DBEngine::setKnownForm(INT_MAX);
    EXPECT_EQ(everythingIn(path), before);
}

TEST_F(MovingTest, TheServerIsSetBackToABackupAsAWhole) {
    moveToServer(path, kConnect, server());
    const std::string backup = folder.file("Tarvello.bkp");
    const std::string before = everythingIn(path);
    DBEngine::CopyDatabase(path, backup);
    {
        Database db = daotest::openShop(path);
        db.Execute("DELETE FROM Customers");
        db.CreateQueryDef("Mine", "SELECT * FROM Services");
    }
    ASSERT_NE(everythingIn(path), before);
    DBEngine::CopyDatabase(backup, path);
    EXPECT_EQ(everythingIn(path), before);
    EXPECT_TRUE(postgres::isSignpost(path)) << "the signpost is not what is replaced";
}

// As docs/server.md has it: a role that nobody logs in as owns the shop, and each member of staff has one of
// his own.
TEST_F(MovingTest, WhatOnePersonMakesTheOthersCanChange) {
    postgres::Address place = database.place();
    const std::string owner = place.dbname + "_owner";
    const std::string mira = place.dbname + "_mira";
    const std::string jovan = place.dbname + "_jovan";
    const std::string guest = place.dbname + "_guest";
    {
        postgres::Connection keeper(place);
        keeper.execute("CREATE ROLE " + owner + " NOLOGIN; CREATE ROLE " + mira + " LOGIN IN ROLE " + owner +
                       "; CREATE ROLE " + jovan + " LOGIN IN ROLE " + owner + "; CREATE ROLE " + guest +
                       " LOGIN; ALTER DATABASE " + place.dbname + " OWNER TO " + owner);
    }
    place.user = mira;
    moveToServer(path, kConnect,
                 "host='" + place.host + "' dbname='" + place.dbname + "' user='" + mira + "'");
    place.user = jovan;
    const std::string other = folder.file("Jovan.mdb");
    postgres::writeSignpost(other, place);
    {
        Database db = daotest::openShop(other);
        db.CreateQueryDef("Ours", "SELECT * FROM Services");
        db.Execute("DELETE FROM Services WHERE ID = 7");
        db.TableDefs().Delete("ServiceTypes");
        DBEngine::CompactDatabase(other, {}, kConnect);
    }
    EXPECT_EQ(daotest::openShop(path).QueryDefs()["Ours"].SQL(), "SELECT * FROM Services");
    place.user = guest;
    const std::string outside = folder.file("Guest.mdb");
    postgres::writeSignpost(outside, place);
    EXPECT_NE(errorOf([&] { daotest::openShop(outside); }), 0) << "who is no member does not get in";
    EXPECT_NE(DBEngine::Errors().front().Description.find("permission"), std::string::npos);
}

TEST_F(MovingTest, RepairAndCompactionLeaveTheServersShopInItsPlace) {
    moveToServer(path, kConnect, server());
    const std::string before = everythingIn(path);
    DBEngine::RepairDatabase(path, kConnect);
    EXPECT_FALSE(DBEngine::LastRepair().damaged);
    DBEngine::CompactDatabase(path, folder.file("Dense.mdb"), kConnect);
    EXPECT_FALSE(fs::exists(folder.file("Dense.mdb")));
    EXPECT_EQ(everythingIn(path), before);
    EXPECT_NE(errorOf([&] { DBEngine::DeleteDatabase(path); }), 0);
    EXPECT_EQ(everythingIn(path), before);
}

}  // namespace
