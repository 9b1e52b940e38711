#include <csignal>
#include <filesystem>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/breaking_off.h"
#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::openShop;
namespace fs = std::filesystem;

namespace {

class MaintenanceTest : public daotest::ShopTest {
 protected:
    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder.path())) {
            found.push_back(entry.path().filename());
        }
        std::sort(found.begin(), found.end());
        return found;
    }
    // No file of this process may grow past this.
    static void limitFiles(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
};

// By itself: a program that was asked to end does not work on.
TEST_F(MaintenanceTest, CompactingIsBrokenOffAndLeavesNothing) {
    fill(500);
    db.Close();
    const std::vector<std::string> before = names();
    Child child([&](Child&) {
        breakOff();
        const int error =
            errorOf([&] { DBEngine::CompactDatabase(path, folder.file("Dense.mdb"), daotest::kConnect); });
        return error == errCancelled && names() == before ? 0 : 1;
    });
    EXPECT_EQ(child.wait(), 0);
}

TEST_F(MaintenanceTest, ACompactedCopyHoldsTheSameAndIsSmaller) {
    fill(500);
    db.CreateIndex("Customers", "Surname");
    db.Execute("DELETE * FROM Customers WHERE CustID>50 AND CustID<490");
    Recordset set = db.OpenRecordset("Customers");
    set.AddNew();  // number 501, never written
    set.CancelUpdate();
    set.Close();
    db.Close();
    const std::string target = folder.file("Shop.$$1");
    DBEngine::CompactDatabase(path, target);
    EXPECT_LT(fs::file_size(target), fs::file_size(path) / 2);
    EXPECT_EQ(names(), (std::vector<std::string>{"Shop.$$1", "Shop.mdb"}));
    Database copy = openShop(target);
    EXPECT_EQ(copy.OpenRecordset("Services").RecordCount(), 61);
    EXPECT_EQ(copy.Relations().size(), 4U);
    EXPECT_EQ(copy.QueryDefs().Count(), 1);
    EXPECT_EQ(copy.OpenRecordset("OpremaGrupe").RecordCount(), 500);
    Recordset customers = copy.OpenRecordset("Customers");
    customers.AddNew();
    EXPECT_EQ(customers["CustID"].asLong(), 502);
    customers.CancelUpdate();
    copy.Execute("DELETE * FROM Customers WHERE CustID=1");
    EXPECT_EQ(copy.OpenRecordset("Services").RecordCount(), 60);
    EXPECT_EQ(errorOf([&] { DBEngine::OpenDatabase(target, false, false, ";pwd=x"); }), errInvalidPassword);
}

TEST_F(MaintenanceTest, CompactingNeedsAFreeTargetAndASoundSource) {
    db.Close();
    const std::string target = folder.file("Target.mdb");
    daotest::writeFile(target, {'x'});
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, target); }), errObjectExists);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, path); }), errObjectExists);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, folder.file("no/T.mdb")); }), errPathInvalid);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(folder.file("No.mdb"), folder.file("T.mdb")); }),
              errFileNotFound);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(target, folder.file("T.mdb")); }),
              errUnrecognisedFormat);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, folder.file("T.mdb"), ";pwd=x"); }),
              errInvalidPassword);
    std::vector<char> bytes = daotest::readFile(path);
    std::fill(bytes.begin() + 4096L * 3, bytes.begin() + 4096L * 4, 'x');
    daotest::writeFile(path, bytes);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, folder.file("T.mdb")); }), errCannotOpen);
    EXPECT_EQ(names(), (std::vector<std::string>{"Shop.mdb", "Target.mdb"}));
}

TEST_F(MaintenanceTest, ThePasswordIsNeededByAProcessThatNeverHadIt) {
    db.Close();
    const std::string program = "/proc/self/exe";
    Child child([&](Child&) {
        // A process of its own that has forgotten everything: the file gets a salt this one has never seen.
        const std::string other = folder.file("Other.mdb");
        Child maker([&](Child&) {
            daotest::createShop(other);
            return 0;
        });
        if (maker.wait() != 0) {
            return 97;
        }
        EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(other); }), errInvalidPassword);
        EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(other, folder.file("T.mdb")); }),
                  errInvalidPassword);
        EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(other, folder.file("T.mdb"), daotest::kConnect); }),
                  0);
        EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(other); }), 0);
        return ::testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
}

TEST_F(MaintenanceTest, ACopyIsTheSameByteForByte) {
    fill(100);
    const std::string target = folder.file("Shop.bkp");
    daotest::writeFile(target, {'o', 'l', 'd'});
    DBEngine::CopyDatabase(path, target);
    EXPECT_EQ(daotest::readFile(target), daotest::readFile(path));
    db.Close();
    DBEngine::CopyDatabase(path, folder.file("second.bkp"));
    EXPECT_EQ(daotest::readFile(folder.file("second.bkp")), daotest::readFile(path));
    EXPECT_EQ(names(), (std::vector<std::string>{"Shop.bkp", "Shop.mdb", "second.bkp"}));
}

TEST_F(MaintenanceTest, ACopyDoesNotLoseOurLocks) {
    fill(3);
    Recordset set = db.OpenRecordset("Oprema");
    Child* other = nullptr;
    set.Close();
    db.Close();
    Child probe([this](Child& child) {
        DBEngine::setLockTimeout(50);
        Database here = openShop(path);
        child.tell("in");
        for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
            child.tell(std::to_string(errorOf([&] { here.Execute("UPDATE Oprema SET Stanje=1"); })));
        }
        return 0;
    });
    other = &probe;
    ASSERT_EQ(other->hear(), "in");
    db = openShop(path);
    set = db.OpenRecordset("Oprema");
    set.Edit();
    set.Fields("Stanje") = Value(42);
    DBEngine::CopyDatabase(path, folder.file("Shop.bkp"));
    other->tell("try");
    EXPECT_EQ(other->hear(), std::to_string(errLocked));
    set.Update();
    EXPECT_EQ(set["Stanje"].asSingle(), 42);
}

TEST_F(MaintenanceTest, WhatIsNoDatabaseIsCopiedAsItLies) {
    const std::string source = folder.file("broken.mdb");
    const std::vector<char> bytes(10001, 'q');
    daotest::writeFile(source, bytes);
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("Nowhere"); }), errUnknownObject);
    DBEngine::CopyDatabase(source, folder.file("copy.mdb"));
    EXPECT_EQ(daotest::readFile(folder.file("copy.mdb")), bytes);
    EXPECT_EQ(DBEngine::Errors().front().Number, errUnknownObject);  // what went well leaves no error
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(folder.file("No.mdb"), folder.file("x.mdb")); }),
              errFileNotFound);
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, folder.file("no/x.mdb")); }), errPathInvalid);
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, folder.path()); }), errPathInvalid);
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, path); }), errInvalidOperation);
    EXPECT_FALSE(fs::exists(folder.file("x.mdb")));
}

// Copies taken while another workstation moves money between two services: in each copy the sum is whole.
TEST_F(MaintenanceTest, ACopyTakenWhileAnotherWritesIsConsistent) {
    fill(3000);
    db.Execute("UPDATE Services SET Comments='" + std::string(1500, 'c') + "'");
    db.Execute("UPDATE Services SET Price=1000");
    db.Close();
    Child writer([this](Child& child) {
        Database here = openShop(path);
        Recordset set = here.OpenRecordset("Services");
        child.tell("in");
        for (int i = 0; i < 100000; ++i) {
            DBEngine::BeginTrans();
            here.Execute("UPDATE Services SET Price=Price-1 WHERE ID=1");
            here.Execute("UPDATE Services SET Price=Price+1 WHERE ID=3000");
            DBEngine::CommitTrans();
        }
        return 0;
    });
    ASSERT_EQ(writer.hear(), "in");
    std::vector<std::int64_t> firsts;
    for (int i = 0; i < 15; ++i) {
        const std::string copy = folder.file("copy.bkp");
        DBEngine::CopyDatabase(path, copy);
        Database opened = openShop(copy);
        Recordset set = opened.OpenRecordset("Services", dbOpenSnapshot);
        std::int64_t sum = 0;
        firsts.push_back(set["Price"].asCurrency().scaled());
        for (; !set.EOF(); set.MoveNext()) {
            sum += set["Price"].asCurrency().scaled();
        }
        EXPECT_EQ(sum, 3000LL * 1000 * 10000);
        set.Close();
        opened.Close();
        DBEngine::RepairDatabase(copy);
        EXPECT_FALSE(DBEngine::LastRepair().damaged);
    }
    EXPECT_NE(firsts.front(), firsts.back());  // the other did write meanwhile
}

TEST_F(MaintenanceTest, AFullDiskLeavesTheOldBackup) {
    fill(300);
    const std::string target = folder.file("Shop.bkp");
    daotest::writeFile(target, {'o', 'l', 'd'});
    db.Close();
    Child child([&](Child&) {
        limitFiles(100UL * 1024);
        EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, target); }), errNotEnoughSpace);
        EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, folder.file("c.mdb"), daotest::kConnect); }),
                  errNotEnoughSpace);
        return ::testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
    EXPECT_EQ(daotest::readFile(target), (std::vector<char>{'o', 'l', 'd'}));
    EXPECT_EQ(names(), (std::vector<std::string>{"Shop.bkp", "Shop.mdb"}));
}

TEST_F(MaintenanceTest, AFullDiskInAnUpdateLeavesTheOldState) {
    fill(300);
    db.Close();
    const std::uintmax_t size = fs::file_size(path);
    Child child([&](Child&) {
        Database here = openShop(path);
        Recordset set = here.OpenRecordset("Services");
        limitFiles(size);
        set.Edit();
        set.Fields("Comments") = Value(std::string(200000, 'x'));
        EXPECT_EQ(errorOf([&] { set.Update(); }), errNotEnoughSpace);
        EXPECT_EQ(set.EditMode(), Recordset::EditModeKind::InProgress);
        set.CancelUpdate();
        EXPECT_EQ(set["Comments"].asText().size(), 100U);
        set.AddNew();
        set.Fields("Comments") = Value(std::string(200000, 'x'));
        EXPECT_EQ(errorOf([&] { set.Update(); }), errNotEnoughSpace);
        set.CancelUpdate();
        EXPECT_EQ(here.OpenRecordset("Services").RecordCount(), 300);
        set.Edit();
        set.Fields("Comments") = Value("short");
        set.Update();  // what fits still goes in
        EXPECT_EQ(set["Comments"].asText(), "short");
        return ::testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
    DBEngine::RepairDatabase(path, daotest::kConnect);
    EXPECT_FALSE(DBEngine::LastRepair().damaged);
}

TEST_F(MaintenanceTest, AFullDiskInATransactionUndoesAllOfIt) {
    fill(300);
    db.Close();
    const std::uintmax_t size = fs::file_size(path);
    Child child([&](Child&) {
        Database here = openShop(path);
        limitFiles(size);
        DBEngine::BeginTrans();
        here.Execute("UPDATE Customers SET City='Niš'");
        here.Execute("UPDATE Services SET Comments='" + std::string(3000, 'x') + "'");
        EXPECT_EQ(errorOf([&] { DBEngine::CommitTrans(); }), errNotEnoughSpace);
        EXPECT_EQ(here.OpenRecordset("Customers")["City"].asText(), "Beograd");
        EXPECT_EQ(here.OpenRecordset("Services")["Comments"].asText().size(), 100U);
        EXPECT_EQ(errorOf([] { DBEngine::Rollback(); }), errTransactionWithoutBegin);
        return ::testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
}

TEST_F(MaintenanceTest, AReplacedFileIsFoundByTheWindowsThatHadTheOld) {
    fill(5);
    Recordset set = db.OpenRecordset("Customers");
    const std::string target = folder.file("Shop.$$1");
    DBEngine::CompactDatabase(path, target);
    DBEngine::DeleteDatabase(path);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("Customers"); }), errFileNotFound);
    DBEngine::RenameDatabase(target, path);
    set.MoveLast();
    EXPECT_EQ(set["CustID"].asLong(), 5);
    set.Edit();
    set.Fields("City") = Value("Niš");
    set.Update();
    db.Close();
    db = openShop(path);
    Recordset again = db.OpenRecordset("Customers");
    again.MoveLast();
    EXPECT_EQ(again["City"].asText(), "Niš");
}

TEST_F(MaintenanceTest, ACopyOverAnOpenFileIsFoundByTheWindowsThatHadTheOld) {
    fill(5);
    DBEngine::CopyDatabase(path, folder.file("Shop.bkp"));
    db.Execute("DELETE * FROM Customers WHERE CustID>2");
    EXPECT_EQ(db.OpenRecordset("Customers").RecordCount(), 2);
    DBEngine::CopyDatabase(folder.file("Shop.bkp"), path);
    EXPECT_EQ(db.OpenRecordset("Customers").RecordCount(), 5);
    db.Execute("UPDATE Customers SET City='Niš' WHERE CustID=5");
    db.Close();
    db = openShop(path);
    EXPECT_EQ(db.OpenRecordset("SELECT * FROM Customers WHERE City='Niš'").RecordCount(), 1);
}

TEST_F(MaintenanceTest, ANewFileTakesOverTheRightsOfTheFormer) {
    fill(5);
    db.Close();
    const std::string target = folder.file("Shop.bkp");
    daotest::writeFile(target, {'o', 'l', 'd'});
    const auto shared = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                        fs::perms::group_write | fs::perms::others_read;
    fs::permissions(target, shared);
    DBEngine::CopyDatabase(path, target);
    EXPECT_EQ(fs::status(target).permissions(), shared);
    // A file that was only to be read can still be written by its owner afterwards.
    fs::permissions(target, fs::perms::owner_read);
    DBEngine::CopyDatabase(path, target);
    EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(MaintenanceTest, NothingIsWrittenInThePlaceOfALink) {
    fill(5);
    db.Close();
    const std::string link = folder.file("Link.mdb");
    fs::create_symlink(folder.file("Away.mdb"), link);
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, link); }), errPathInvalid);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, link, daotest::kConnect); }), errPathInvalid);
    EXPECT_EQ(errorOf([&] { DBEngine::CreateDatabase(link, daotest::kConnect); }), errPathInvalid);
    EXPECT_EQ(errorOf([&] { DBEngine::RenameDatabase(path, link); }), errPathInvalid);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(names(), (std::vector<std::string>{"Link.mdb", "Shop.mdb"}));
    daotest::writeFile(folder.file("Away.mdb"), {'o', 'l', 'd'});
    DBEngine::CopyDatabase(path, link);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(daotest::readFile(folder.file("Away.mdb")), daotest::readFile(path));
}

TEST_F(MaintenanceTest, AStaleJournalNeverMeetsAnotherFile) {
    fill(5);
    db.Close();
    const std::vector<char> whole = daotest::readFile(path);
    Child crashed([&](Child&) {
        Database here = openShop(path);
        DBEngine::BeginTrans();
        here.Execute("UPDATE Customers SET City='Nikad'");
        return 0;
    });
    EXPECT_EQ(crashed.wait(), 0);
    daotest::writeFile(path + "-journal", std::vector<char>(5000, 'j'));
    const std::string other = folder.file("Other.mdb");
    daotest::createShop(other);
    DBEngine::RenameDatabase(other, path);
    EXPECT_FALSE(fs::exists(path + "-journal"));
    daotest::writeFile(path + "-journal", std::vector<char>(5000, 'j'));
    DBEngine::DeleteDatabase(path);
    EXPECT_FALSE(fs::exists(path + "-journal"));
    EXPECT_EQ(errorOf([&] { DBEngine::DeleteDatabase(path); }), errFileNotFound);
    daotest::writeFile(path + "-journal", std::vector<char>(5000, 'j'));
    daotest::writeFile(other, whole);
    DBEngine::CopyDatabase(other, path);
    EXPECT_FALSE(fs::exists(path + "-journal"));
    EXPECT_EQ(errorOf([&] { openShop(path); }), 0);
}

TEST_F(MaintenanceTest, NothingIsReplacedInTheMiddleOfAnEdit) {
    fill(2);
    Recordset set = db.OpenRecordset("Customers");
    set.Edit();
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path); }), errFileInUse);
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, folder.file("c.mdb")); }), errFileInUse);
    EXPECT_EQ(errorOf([&] { DBEngine::DeleteDatabase(path); }), errFileInUse);
    const std::string other = folder.file("Other.mdb");
    daotest::createShop(other);
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(other, path); }), errFileInUse);
    EXPECT_EQ(names(), (std::vector<std::string>{"Other.mdb", "Shop.ldb", "Shop.mdb", "Shop.mdb-journal"}));
    set.Fields("City") = Value("Niš");
    set.Update();
    EXPECT_EQ(set["City"].asText(), "Niš");
}

}  // namespace
