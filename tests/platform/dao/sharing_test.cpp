#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::openShop;
namespace fs = std::filesystem;

namespace {

// Another workstation that has the file open and does nothing until it is told to go.
class SharingTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(3);
        db.Close();
    }
    auto idle(bool exclusive = false) {
        return [this, exclusive](Child& child) {
            Database here = openShop(path, exclusive);
            child.tell("in");
            child.hear();
            return 0;
        };
    }
    // Another workstation in the middle of an Edit of product 1.
    auto editing() {
        return [this](Child& child) {
            Database here = openShop(path);
            Recordset set = here.OpenRecordset("Oprema");
            set.FindFirst("ID=1");
            set.Edit();
            child.tell("editing");
            child.hear();
            set.Fields("Stanje") = Value(set["Stanje"].asSingle() - 1);
            set.Update();
            return 0;
        };
    }
    // The system lets a dead process's locks on a file go at once; a server first has to notice that it is
    // dead.
    static int errorSoon(const std::function<void()>& body) {
        const auto until =
            std::chrono::steady_clock::now() + std::chrono::seconds(daotest::onServer() ? 5 : 0);
        int number = errorOf(body);
        while (number != 0 && std::chrono::steady_clock::now() < until) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            number = errorOf(body);
        }
        return number;
    }
};

// What holds for a file alone: an Edit keeps all of it, and it stands in a folder.
class FileSharingTest : public SharingTest {};

TEST_F(SharingTest, AnotherIdleProcessKeepsExclusiveUseAway) {
    Child other(idle());
    ASSERT_EQ(other.hear(), "in");
    EXPECT_EQ(errorOf([&] { openShop(path, true); }), errFileInUse);
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path, daotest::kConnect); }), errFileInUse);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, folder.file("c.mdb"), daotest::kConnect); }),
              errFileInUse);
    EXPECT_FALSE(fs::exists(folder.file("c.mdb")));
    EXPECT_EQ(errorOf([&] { openShop(path); }), 0);
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(errorOf([&] { openShop(path, true); }), 0);
}

TEST_F(FileSharingTest, AnotherIdleProcessKeepsTheFileInItsPlace) {
    Child other(idle());
    ASSERT_EQ(other.hear(), "in");
    EXPECT_EQ(errorOf([&] { DBEngine::DeleteDatabase(path); }), errFileInUse);
    EXPECT_EQ(errorOf([&] { DBEngine::RenameDatabase(path, folder.file("r.mdb")); }), errFileInUse);
    EXPECT_TRUE(fs::exists(path));
}

TEST_F(FileSharingTest, NoFileTakesTheNameOfOneThatAnotherProcessHasOpen) {
    const std::string fresh = folder.file("Fresh.mdb");
    daotest::createShop(fresh);
    Child other(idle());
    ASSERT_EQ(other.hear(), "in");
    EXPECT_EQ(errorOf([&] { DBEngine::RenameDatabase(fresh, path); }), errFileInUse);
    EXPECT_TRUE(fs::exists(fresh));
    EXPECT_EQ(openShop(path).OpenRecordset("Customers").RecordCount(), 3);
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(errorOf([&] { DBEngine::RenameDatabase(fresh, path); }), 0);
}

TEST_F(SharingTest, OurOwnWindowsDoNotCount) {
    Database first = openShop(path);
    Database second = openShop(path, true);
    Database third = openShop(path);
    EXPECT_EQ(third.OpenRecordset("Customers").RecordCount(), 3);
    second.Close();
    first.Close();
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, folder.file("c.mdb")); }), 0);
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path); }), 0);
    EXPECT_EQ(third.OpenRecordset("Customers").RecordCount(), 3);
}

TEST_F(SharingTest, WhoHasTheFileExclusivelyKeepsOthersOut) {
    Child other(idle(true));
    ASSERT_EQ(other.hear(), "in");
    EXPECT_EQ(errorOf([&] { openShop(path); }), errExclusiveByOther);
    EXPECT_EQ(errorOf([&] { openShop(path, true); }), errExclusiveByOther);
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(errorOf([&] { openShop(path); }), 0);
}

TEST_F(SharingTest, ExclusiveUseEndsWithItsDatabase) {
    Child other([this](Child& child) {
        Database shared = openShop(path);
        Database exclusive = openShop(path, true);
        child.tell("exclusive");
        child.hear();
        exclusive.Close();
        child.tell("shared");
        child.hear();
        return 0;
    });
    ASSERT_EQ(other.hear(), "exclusive");
    EXPECT_EQ(errorOf([&] { openShop(path); }), errExclusiveByOther);
    other.tell("on");
    ASSERT_EQ(other.hear(), "shared");
    EXPECT_EQ(errorOf([&] { openShop(path); }), 0);
    EXPECT_EQ(errorOf([&] { openShop(path, true); }), errFileInUse);
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
}

TEST_F(SharingTest, ARefusedExclusiveOpeningKeepsOurPlace) {
    Child other([this](Child& child) {
        for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
            Database here;
            child.tell(std::to_string(errorOf([&] { here = openShop(path, line == "exclusive"); })));
            child.hear();
        }
        return 0;
    });
    Database ours = openShop(path);
    other.tell("shared");
    ASSERT_EQ(other.hear(), "0");
    EXPECT_EQ(errorOf([&] { openShop(path, true); }), errFileInUse);
    other.tell("close");
    other.tell("exclusive");
    EXPECT_EQ(other.hear(), std::to_string(errFileInUse));
    other.tell("close");
    ours.Close();
    other.tell("exclusive");
    EXPECT_EQ(other.hear(), "0");
    other.tell("close");
}

TEST_F(SharingTest, ACrashedProcessLeavesNoLock) {
    {
        Child other(editing());
        ASSERT_EQ(other.hear(), "editing");
        other.kill();
        other.wait();
    }
    EXPECT_EQ(errorSoon([&] { openShop(path, true); }), 0);
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    DBEngine::setLockTimeout(100);
    set.Edit();
    EXPECT_EQ(set["Stanje"].asSingle(), 100);
    set.CancelUpdate();
}

TEST_F(FileSharingTest, TheLastToLeaveTakesTheLockFileAway) {
    const std::string lock = folder.file("Shop.ldb");
    EXPECT_FALSE(fs::exists(lock));
    Child other(idle());
    ASSERT_EQ(other.hear(), "in");
    Database here = openShop(path);
    EXPECT_TRUE(fs::exists(lock));
    here.Close();
    EXPECT_TRUE(fs::exists(lock));
    other.tell("go");
    other.wait();
    EXPECT_FALSE(fs::exists(lock));
}

TEST_F(SharingTest, AnEditElsewhereIsWaitedForAndThenReported) {
    Child other(editing());
    ASSERT_EQ(other.hear(), "editing");
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    EXPECT_EQ(set["Stanje"].asSingle(), 100);  // reading does not wait
    DBEngine::setLockTimeout(150);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errLocked);
    const auto waited = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(waited, std::chrono::milliseconds(140));
    EXPECT_LT(waited, std::chrono::seconds(8));
    EXPECT_EQ(set.EditMode(), Recordset::EditModeKind::None);
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
    set.Edit();
    EXPECT_EQ(set["Stanje"].asSingle(), 99);
    set.Fields("Stanje") = Value(set["Stanje"].asSingle() - 1);
    set.Update();
    EXPECT_EQ(set["Stanje"].asSingle(), 98);
}

TEST_F(FileSharingTest, AnEditElsewhereKeepsEveryWriteWaiting) {
    Child other(editing());
    ASSERT_EQ(other.hear(), "editing");
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    DBEngine::setLockTimeout(150);
    EXPECT_EQ(errorOf([&] { here.Execute("DELETE * FROM Oprema"); }), errLocked);
    EXPECT_EQ(errorOf([&] { set.AddNew(); }), errLocked);
    EXPECT_EQ(errorOf([&] { DBEngine::BeginTrans(); }), errLocked);
    EXPECT_EQ(errorOf([&] { DBEngine::Rollback(); }), errTransactionWithoutBegin);
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(errorOf([&] { set.Edit(); }), 0);
}

TEST_F(SharingTest, TheLockIsLetGoHoweverAnEditEnds) {
    DBEngine::setLockTimeout(50);
    Child other([this](Child& child) {
        DBEngine::setLockTimeout(50);
        Database here = openShop(path);
        Recordset set = here.OpenRecordset("Computers");
        for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
            const int number = errorOf([&] { set.Edit(); });
            if (number == 0) {
                set.CancelUpdate();
            }
            child.tell(std::to_string(number));
        }
        return 0;
    });
    Database here = openShop(path);
    const auto isFree = [&] {
        other.tell("try");
        return other.hear() == "0";
    };
    Recordset set = here.OpenRecordset("Computers");
    set.Edit();
    EXPECT_FALSE(isFree());
    set.Update();
    EXPECT_TRUE(isFree());
    set.Edit();
    set.CancelUpdate();
    EXPECT_TRUE(isFree());
    set.Edit();
    set.MoveNext();
    EXPECT_TRUE(isFree());
    set.Edit();
    set.FindFirst("MachineID=1");
    EXPECT_TRUE(isFree());
    set.Edit();
    set.Requery();
    EXPECT_TRUE(isFree());
    set.Edit();
    set.AddNew();
    EXPECT_TRUE(isFree());
    set.CancelUpdate();
    EXPECT_EQ(errorOf([&] { here.Execute("UPDATE Computers SET CustID=99"); }), errRelatedRecordRequired);
    EXPECT_TRUE(isFree());
    set.MoveFirst();
    set.Edit();
    set.Fields("CustID") = Value(99);
    EXPECT_EQ(errorOf([&] { set.Update(); }), errRelatedRecordRequired);
    EXPECT_FALSE(isFree());
    set.CancelUpdate();
    EXPECT_TRUE(isFree());
    set.Edit();
    set.Close();
    EXPECT_TRUE(isFree());
    {
        Recordset dropped = here.OpenRecordset("Computers");
        dropped.Edit();
        EXPECT_FALSE(isFree());
    }
    EXPECT_TRUE(isFree());
    Recordset pending = here.OpenRecordset("Computers");
    pending.Edit();
    here.Close();
    EXPECT_TRUE(isFree());
}

TEST_F(FileSharingTest, TwoEditsHoldTheLockUntilBothHaveEnded) {
    DBEngine::setLockTimeout(50);
    Child other([this](Child& child) {
        DBEngine::setLockTimeout(50);
        Database here = openShop(path);
        for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
            child.tell(std::to_string(errorOf([&] { here.Execute("UPDATE Oprema SET Cena=5 WHERE ID=3"); })));
        }
        return 0;
    });
    Database here = openShop(path);
    Recordset first = here.OpenRecordset("Oprema");
    Recordset second = here.OpenRecordset("Customers");
    first.Edit();
    second.Edit();
    second.Fields("City") = Value("Novi Sad");
    second.Update();
    other.tell("try");
    EXPECT_EQ(other.hear(), std::to_string(errLocked));
    first.Fields("Stanje") = Value(55);
    first.Update();
    other.tell("try");
    EXPECT_EQ(other.hear(), "0");
    EXPECT_EQ(first["Stanje"].asSingle(), 55);
    EXPECT_EQ(second["City"].asText(), "Novi Sad");
}

TEST_F(SharingTest, OthersChangesShowAfterIdle) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        child.hear();
        here.Execute("UPDATE Customers SET Surname='Drugi' WHERE CustID=1");
        here.Execute("DELETE * FROM Customers WHERE CustID=2");
        child.tell("done");
        return 0;
    });
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Customers");
    Recordset snapshot = here.OpenRecordset("Customers", dbOpenSnapshot);
    EXPECT_EQ(set["Surname"].asText(), "Klijent 1");
    other.tell("go");
    ASSERT_EQ(other.hear(), "done");
    DBEngine::Idle(dbRefreshCache);
    EXPECT_EQ(set["Surname"].asText(), "Drugi");
    EXPECT_EQ(snapshot["Surname"].asText(), "Klijent 1");
    set.MoveNext();
    EXPECT_EQ(errorOf([&] { set["Surname"]; }), errRecordDeleted);
    snapshot.MoveNext();
    EXPECT_EQ(snapshot["Surname"].asText(), "Klijent 2");
    set.MoveNext();
    EXPECT_EQ(set["Surname"].asText(), "Klijent 3");
}

// A long walk reads no more than what is looked at; the rest of a row is asked for when somebody does.
TEST_F(SharingTest, ARowThatOthersDeleteStaysDeletedWhenTheRestOfItIsAskedFor) {
    {
        Database more = openShop(path);
        Recordset clients = more.OpenRecordset("Customers");
        for (int i = 0; i < 100; ++i) {
            clients.AddNew();
            clients.Update();
        }
    }
    Child other([this](Child& child) {
        Database here = openShop(path);
        child.hear();
        here.Execute("DELETE * FROM Customers WHERE CustID=50");
        child.tell("done");
        return 0;
    });
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Customers");
    while (set["CustID"].asLong() < 50) {
        set.MoveNext();
    }
    other.tell("go");
    ASSERT_EQ(other.hear(), "done");
    EXPECT_EQ(errorOf([&] { set["City"]; }), errRecordDeleted);
    EXPECT_EQ(errorOf([&] { set["City"]; }), errRecordDeleted);
    set.MoveNext();
    EXPECT_EQ(set["CustID"].asLong(), 51);
}

TEST_F(SharingTest, FindFirstAsksTheFileAsItIsNow) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        child.hear();
        here.Execute("UPDATE Oprema SET Stanje=7 WHERE ID=2");
        here.Execute("DELETE * FROM Oprema WHERE ID=3");
        child.tell("done");
        return 0;
    });
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Oprema");
    for (; !set.EOF(); set.MoveNext()) {
        EXPECT_EQ(set["Stanje"].asSingle(), 100);
    }
    other.tell("go");
    ASSERT_EQ(other.hear(), "done");
    set.FindFirst("ID=2");
    EXPECT_EQ(set["Stanje"].asSingle(), 7);
    set.FindFirst("ID=3");
    EXPECT_TRUE(set.NoMatch());
}

TEST_F(SharingTest, StoredQueriesAreSeenAtOnce) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        child.hear();
        here.CreateQueryDef("QDCustomers7", "SELECT * FROM Customers WHERE CustID>1");
        child.tell("created");
        child.hear();
        here.QueryDefs()["QDCustomers7"].setSQL("SELECT * FROM Customers WHERE CustID=1");
        child.tell("changed");
        child.hear();
        here.QueryDefs().Delete("QDCustomers7");
        child.tell("dropped");
        return 0;
    });
    Database here = openShop(path);
    EXPECT_EQ(errorOf([&] { here.OpenRecordset("SELECT * FROM QDCustomers7"); }), errUnknownObject);
    other.tell("go");
    other.hear();
    Recordset set = here.OpenRecordset("SELECT * FROM QDCustomers7");
    EXPECT_EQ(numbers(set, "CustID"), (std::vector{2, 3}));
    other.tell("go");
    other.hear();
    EXPECT_EQ(numbers(here.OpenRecordset("SELECT * FROM QDCustomers7"), "CustID"), (std::vector{1}));
    EXPECT_EQ(set.RecordCount(), 2);
    set.Requery();
    EXPECT_EQ(set.RecordCount(), 1);
    other.tell("go");
    other.hear();
    EXPECT_EQ(errorOf([&] { set.Requery(); }), errUnknownObject);
    EXPECT_EQ(errorOf([&] { here.OpenRecordset("SELECT * FROM QDCustomers7"); }), errUnknownObject);
}

TEST_F(SharingTest, TablesMadeElsewhereAreSeenAtOnce) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        child.hear();
        TableDef table = here.CreateTableDef("DocNumber");
        table.Append(table.CreateField("RacunBroj", dbLong));
        here.TableDefs().Append(table);
        child.tell("created");
        return 0;
    });
    Database here = openShop(path);
    const int before = here.TableDefs().Count();
    EXPECT_EQ(errorOf([&] { here.OpenRecordset("DocNumber"); }), errUnknownObject);
    other.tell("go");
    other.hear();
    EXPECT_EQ(here.TableDefs().Count(), before + 1);
    EXPECT_EQ(here.OpenRecordset("DocNumber").RecordCount(), 0);
}

// Two workstations add at once: no number is given to both.
TEST_F(SharingTest, NumbersGivenAtAddNewAreDifferentEverywhere) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        Recordset set = here.OpenRecordset("Customers");
        child.hear();
        for (int i = 0; i < 50; ++i) {
            set.AddNew();
            child.tell(std::to_string(set["CustID"].asLong()));
            if (i % 3 == 0) {
                set.CancelUpdate();
            } else {
                set.Update();
            }
        }
        return 0;
    });
    Database here = openShop(path);
    Recordset set = here.OpenRecordset("Customers");
    other.tell("go");
    std::vector<int> given;
    for (int i = 0; i < 50; ++i) {
        set.AddNew();
        given.push_back(set["CustID"].asLong());
        if (i % 2 == 0) {
            set.Update();
        }
    }
    for (std::string line = other.hear(); !line.empty(); line = other.hear()) {
        given.push_back(std::stoi(line));
    }
    EXPECT_EQ(given.size(), 100U);
    std::sort(given.begin(), given.end());
    EXPECT_EQ(std::adjacent_find(given.begin(), given.end()), given.end());
    EXPECT_EQ(other.wait(), 0);
}

// The set was opened before, and is searched by the tables as they are.
TEST_F(SharingTest, ASearchKnowsTheTablesThatOthersHaveMadeAnew) {
    Child other([this](Child& child) {
        child.hear();
        Database here = openShop(path);
        const auto make = [&here](const char* field, int number) {
            TableDef table = here.CreateTableDef("Extra");
            table.Append({"ID", dbLong, 0, true});
            table.Append(table.CreateField(field, dbLong));
            here.TableDefs().Append(table);
            Recordset rows = here.OpenRecordset("Extra");
            rows.AddNew();
            rows.Fields(field) = Value(number);
            rows.Update();
        };
        make("Old", 5);
        child.tell("made");
        child.hear();
        here.TableDefs().Delete("Extra");
        make("New", 6);
        child.tell("made anew");
        child.hear();
        here.TableDefs().Delete("Extra");
        child.tell("gone");
        child.hear();
        return 0;
    });
    other.tell("go");
    ASSERT_EQ(other.hear(), "made");
    db = openShop(path);
    Recordset rows = db.OpenRecordset("SELECT * FROM Extra");
    rows.FindFirst("Old=5");
    EXPECT_FALSE(rows.NoMatch());
    other.tell("go");
    ASSERT_EQ(other.hear(), "made anew");
    EXPECT_EQ(errorOf([&] { rows.FindFirst("Old=5"); }), errTooFewParameters);
    EXPECT_EQ(errorOf([&] { rows.FindFirst("New=6"); }), 0);
    EXPECT_TRUE(rows.NoMatch()) << "a row with a new number, which the set does not have";
    other.tell("go");
    ASSERT_EQ(other.hear(), "gone");
    EXPECT_EQ(errorOf([&] { rows.FindFirst("New=6"); }), errUnknownObject);
    other.tell("go");
    EXPECT_EQ(other.wait(), 0);
}

// A field of the same name that now keeps amounts: asked as a whole number, it would find nothing.
TEST_F(SharingTest, ASearchKnowsTheTypeThatAFieldHasNow) {
    const auto make = [this](FieldType type) {
        Database here = openShop(path);
        TableDef table = here.CreateTableDef("Extra");
        table.Append({"ID", dbLong, 0, true});
        table.Append(table.CreateField("Worth", type));
        here.TableDefs().Append(table);
    };
    const auto addFive = [this] {
        Database here = openShop(path);
        Recordset rows = here.OpenRecordset("Extra");
        rows.AddNew();
        rows.Fields("Worth") = Value(5);
        rows.Update();
    };
    Child maker([&](Child& child) {
        make(dbLong);
        addFive();
        child.tell("made");
        child.hear();
        openShop(path).TableDefs().Delete("Extra");
        make(dbCurrency);
        child.tell("made anew");
        return 0;
    });
    Child filler([&](Child& child) {  // knows nothing of the numbers that the first table gave
        child.hear();
        addFive();
        child.tell("filled");
        return 0;
    });
    ASSERT_EQ(maker.hear(), "made");
    db = openShop(path);
    Recordset rows = db.OpenRecordset("SELECT * FROM Extra");
    ASSERT_EQ(rows.RecordCount(), 1);
    maker.tell("go");
    ASSERT_EQ(maker.hear(), "made anew");
    filler.tell("go");
    ASSERT_EQ(filler.hear(), "filled");
    rows.FindFirst("Worth=5");
    EXPECT_FALSE(rows.NoMatch());
    EXPECT_EQ(maker.wait(), 0);
    EXPECT_EQ(filler.wait(), 0);
}

}  // namespace
