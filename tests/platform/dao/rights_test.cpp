// Who may read what the engine makes: its user alone, or whoever may read the database that it belongs to.
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::errorOf;
using daotest::openShop;
namespace fs = std::filesystem;

namespace {

constexpr int kOwn = 0600;
constexpr int kShared = 0660;

class FileRights : public daotest::ShopTest {
 protected:
    // A system that would let everybody in.
    void SetUp() override {
        umaskBefore_ = umask(0);
        ShopTest::SetUp();
        fill(20);
    }
    void TearDown() override {
        ShopTest::TearDown();
        umask(umaskBefore_);
    }

    static int rightsOf(const std::string& file) {
        struct stat found {};
        return stat(file.c_str(), &found) == 0 ? static_cast<int>(found.st_mode & 07777) : -1;
    }
    void share() const { fs::permissions(path, static_cast<fs::perms>(kShared)); }
    void hurt() const {
        std::vector<char> bytes = daotest::readFile(path);
        std::fill_n(bytes.end() - 3 * 4096, 100, 'x');
        daotest::writeFile(path, bytes);
    }
    // Everything beside the database: lock file, numbers, journal.
    void checkCompanions() {
        const HeldNumber number(db, 0);
        DBEngine::BeginTrans();
        db.Execute("UPDATE Customers SET City='x'");
        DBEngine::CommitTrans();
        for (const char* name : {"Shop.ldb", "Shop.numbers", "Shop.mdb-journal"}) {
            EXPECT_EQ(rightsOf(folder.file(name)), rightsOf(path)) << name;
        }
    }

 private:
    mode_t umaskBefore_ = 0;
};

TEST_F(FileRights, WhatIsMadeIsForItsUserAlone) {
    EXPECT_EQ(rightsOf(path), kOwn);
    checkCompanions();
    DBEngine::CopyDatabase(path, folder.file("Shop.bkp"));
    EXPECT_EQ(rightsOf(folder.file("Shop.bkp")), kOwn);
    db.Close();
    DBEngine::CompactDatabase(path, folder.file("Shop.$$1"));
    EXPECT_EQ(rightsOf(folder.file("Shop.$$1")), kOwn);
    DBEngine::setNotesFile(folder.file("Shop.notes"));
    openShop(path).Close();
    DBEngine::setNotesFile({});
    EXPECT_EQ(rightsOf(folder.file("Shop.notes")), kOwn);
    hurt();
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, folder.file("Shop.bkp")); }), errCannotOpen);
    EXPECT_EQ(rightsOf(path + ".damaged"), kOwn);
    DBEngine::RepairDatabase(path);
    EXPECT_TRUE(DBEngine::LastRepair().damaged);
    EXPECT_EQ(rightsOf(path), kOwn);
    EXPECT_EQ(rightsOf(folder.file("Shop.damaged.mdb")), kOwn);
}

TEST_F(FileRights, WhatIsReplacedKeepsItsRights) {
    const std::string backup = folder.file("Shop.bkp");
    DBEngine::CopyDatabase(path, backup);
    fs::permissions(backup, static_cast<fs::perms>(0640));
    DBEngine::CopyDatabase(path, backup);
    EXPECT_EQ(rightsOf(backup), 0640);
    db.Close();
    share();
    DBEngine::CopyDatabase(backup, path);
    EXPECT_EQ(rightsOf(path), kShared);
    hurt();
    DBEngine::RepairDatabase(path);
    EXPECT_TRUE(DBEngine::LastRepair().damaged);
    EXPECT_EQ(rightsOf(path), kShared);
    const std::string notes = folder.file("Shop.notes");
    daotest::writeFile(notes, {});
    fs::permissions(notes, static_cast<fs::perms>(0644));
    DBEngine::setNotesFile(notes);
    openShop(path).Close();
    DBEngine::setNotesFile({});
    EXPECT_GT(fs::file_size(notes), 0U);
    EXPECT_EQ(rightsOf(notes), 0644);
}

// A colleague who writes to the same database has to lock, to number and to put back a crash's journal.
TEST_F(FileRights, WhatLiesBesideASharedDatabaseIsShared) {
    db.Close();
    share();
    umask(022);
    db = openShop(path);
    checkCompanions();
    db.Close();
    hurt();
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, folder.file("Shop.bkp")); }), errCannotOpen);
    EXPECT_EQ(rightsOf(path + ".damaged"), kShared);
}

TEST_F(FileRights, TheFirstCopyOfASharedDatabaseIsShared) {
    share();
    DBEngine::CopyDatabase(path, folder.file("Shop.bkp"));
    EXPECT_EQ(rightsOf(folder.file("Shop.bkp")), kShared);
}

}  // namespace
