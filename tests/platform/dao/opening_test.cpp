#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::openShop;
namespace fs = std::filesystem;

namespace {

// Root may write everything, so it becomes somebody else; what is the tests' user's own goes by its rights
// for him, too.
bool giveUpRights() {
    constexpr uid_t kNobody = 65534;
    return geteuid() != 0 || seteuid(kNobody) == 0;
}

class OpeningTest : public daotest::ShopTest {
 protected:
    int errorOpening(const std::string& file, const std::string& connect = daotest::kConnect) {
        return errorOf([&] { DBEngine::OpenDatabase(file, false, false, connect); });
    }
    void damage(std::size_t offset, std::size_t length) {
        std::vector<char> bytes = daotest::readFile(path);
        for (std::size_t i = offset; i < offset + length && i < bytes.size(); ++i) {
            bytes[i] = static_cast<char>(bytes[i] ^ 0x55);
        }
        daotest::writeFile(path, bytes);
    }
};

// Passwords, pages and the rights to a file.
class FileOpeningTest : public OpeningTest {};

TEST_F(OpeningTest, WhatIsNotThereIsSaidSo) {
    EXPECT_EQ(errorOpening(folder.file("Nowhere.mdb")), errFileNotFound);
    EXPECT_EQ(errorOpening(folder.file("no/such/Shop.mdb")), errPathInvalid);
    EXPECT_EQ(errorOpening(path + "/Shop.mdb"), errPathInvalid);
    EXPECT_EQ(errorOpening(folder.path()), errPathInvalid);
    EXPECT_EQ(errorOpening(""), errFileNotFound);
    EXPECT_FALSE(fs::exists(folder.file("Nowhere.ldb")));
}

TEST_F(OpeningTest, WhatIsNoDatabaseIsSaidSo) {
    const std::string other = folder.file("Other.mdb");
    for (const std::vector<char>& bytes : {std::vector<char>{}, std::vector<char>(100, 'x'),
                                           std::vector<char>(8192, 'x'), std::vector<char>(8192, 0)}) {
        daotest::writeFile(other, bytes);
        EXPECT_EQ(errorOpening(other), errUnrecognisedFormat) << bytes.size();
        EXPECT_EQ(daotest::readFile(other), bytes);
    }
    std::vector<char> plain(8192, 0);
    const std::string head = "SQLite format 3";
    std::copy(head.begin(), head.end(), plain.begin());
    daotest::writeFile(other, plain);
    EXPECT_EQ(errorOpening(other), errUnrecognisedFormat);
}

TEST_F(FileOpeningTest, OnlyTheRightPasswordOpens) {
    db.Close();
    EXPECT_EQ(errorOpening(path, ";pwd=pogresna"), errInvalidPassword);
    EXPECT_EQ(errorOpening(path, ""), errInvalidPassword);
    EXPECT_EQ(errorOpening(path, ";pwd="), errInvalidPassword);
    EXPECT_EQ(errorOpening(path, ";PWD=LOZINKA"), errInvalidPassword);
    EXPECT_EQ(errorOpening(path, ";PwD=lozinka"), 0);
    EXPECT_EQ(errorOpening(path, "Something=1;Pwd=lozinka;"), 0);
}

TEST_F(FileOpeningTest, WithoutPasswordOneIsLetInWhereThisProcessIsInAlready) {
    EXPECT_EQ(errorOpening(path, ""), 0);
    EXPECT_EQ(errorOpening(path, ";pwd=pogresna"), errInvalidPassword);
    fs::create_symlink(path, folder.file("Link.mdb"));
    EXPECT_EQ(errorOpening(folder.file("Link.mdb"), ""), 0);
    db.Close();
    EXPECT_EQ(errorOpening(path, ""), errInvalidPassword);
}

TEST_F(FileOpeningTest, NothingOfTheFileIsReadableWithoutThePassword) {
    fill(20);
    db.Close();
    const std::vector<char> bytes = daotest::readFile(path);
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_EQ(text.find("Klijent"), std::string::npos);
    EXPECT_EQ(text.find("Customers"), std::string::npos);
    EXPECT_EQ(text.find("SQLite"), std::string::npos);
}

TEST_F(FileOpeningTest, ADamagedHeadOrATruncatedFileDoesNotOpen) {
    fill(200);
    db.Close();
    const std::vector<char> whole = daotest::readFile(path);
    damage(300, 10);
    EXPECT_EQ(errorOpening(path), errCannotOpen);
    for (const std::size_t size : {whole.size() - 4096, std::size_t{4096}, std::size_t{5000}}) {
        daotest::writeFile(path, {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
        EXPECT_EQ(errorOpening(path), errCannotOpen) << size;
    }
    daotest::writeFile(path, whole);
    EXPECT_EQ(errorOpening(path), 0);
}

TEST_F(FileOpeningTest, ADamagedPageIsMetWhenItIsRead) {
    fill(500);
    db.Close();
    damage(4096UL * 30, 4096);
    db = openShop(path);
    int failures = 0;
    for (const char* table : {"Customers", "Computers", "Services", "Oprema", "Grupe"}) {
        const int number = errorOf([&] { db.OpenRecordset(table, dbOpenSnapshot); });
        EXPECT_TRUE(number == 0 || number == errCannotOpen) << number;
        failures += number != 0;
    }
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(errorOf([&] { db.OpenRecordset("Grupe", dbOpenSnapshot); }), 0);
}

TEST_F(FileOpeningTest, AReadOnlyFileOpensOnlyForReading) {
    fill(3);
    db.Close();
    chmod(path.c_str(), 0444);
    Child child([&](Child&) {
        if (!giveUpRights()) {
            return 98;
        }
        EXPECT_EQ(errorOf([&] { openShop(path); }), errReadOnly);
        Database reader = openShop(path, false, true);
        Recordset set = reader.OpenRecordset("Customers");
        EXPECT_EQ(set.RecordCount(), 3);
        EXPECT_FALSE(set.Updatable());
        EXPECT_EQ(errorOf([&] { set.Edit(); }), errReadOnly);
        EXPECT_EQ(errorOf([&] { set.AddNew(); }), errReadOnly);
        EXPECT_EQ(errorOf([&] { set.Delete(); }), errReadOnly);
        EXPECT_EQ(errorOf([&] { reader.Execute("DELETE * FROM Customers"); }), errReadOnly);
        EXPECT_EQ(errorOf([&] { reader.CreateQueryDef("Q", "SELECT * FROM Customers"); }), errReadOnly);
        return ::testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
}

TEST_F(FileOpeningTest, AReadOnlyFolderTakesNoLockFile) {
    fill(3);
    db.Close();
    chmod(path.c_str(), 0666);
    chmod(folder.path().c_str(), 0555);
    Child child([&](Child&) {
        if (!giveUpRights()) {
            return 98;
        }
        EXPECT_EQ(errorOf([&] { openShop(path); }), errCannotLockFile);
        EXPECT_EQ(errorOf([&] { openShop(path, true, true); }), errCannotLockFile);
        Database reader = openShop(path, false, true);
        EXPECT_EQ(reader.OpenRecordset("Customers").RecordCount(), 3);
        return ::testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
    chmod(folder.path().c_str(), 0777);
}

TEST_F(FileOpeningTest, AFileOfAnotherUserGivesNoPermission) {
    db.Close();
    chmod(path.c_str(), geteuid() == 0 ? 0600 : 0);
    Child child([&](Child&) {
        if (!giveUpRights()) {
            return 98;
        }
        EXPECT_EQ(errorOf([&] { openShop(path); }), errNoPermission);
        EXPECT_EQ(errorOf([&] { openShop(path, false, true); }), errNoPermission);
        return ::testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(child.wait(), 0);
}

TEST_F(OpeningTest, AReadOnlyOpeningWritesNothingAlthoughTheFileCouldBeWritten) {
    fill(1);
    Database reader = openShop(path, false, true);
    Recordset set = reader.OpenRecordset("Customers");
    EXPECT_EQ(errorOf([&] { set.Edit(); }), errReadOnly);
    EXPECT_EQ(errorOf([&] { reader.QueryDefs()["OpremaGrupe"].setSQL("SELECT * FROM Oprema"); }),
              errReadOnly);
    Recordset writable = db.OpenRecordset("Customers");
    writable.Edit();
    writable.Fields("City") = Value("Niš");
    writable.Update();
    EXPECT_EQ(set["City"].asText(), "Niš");
}

TEST_F(OpeningTest, CreatingOverAFileIsRefused) {
    EXPECT_EQ(errorOf([&] { DBEngine::CreateDatabase(path, daotest::kConnect); }), errObjectExists);
    EXPECT_EQ(errorOf([&] { DBEngine::CreateDatabase(folder.file("no/New.mdb"), daotest::kConnect); }),
              errPathInvalid);
    Database unprotected = DBEngine::CreateDatabase(folder.file("Open.mdb"), "");
    unprotected.Close();
    EXPECT_EQ(errorOpening(folder.file("Open.mdb"), ""), 0);
}

TEST_F(OpeningTest, ACrashedCreationLeavesNoTrace) {
    const std::string target = folder.file("New.mdb");
    daotest::writeFile(target + "-journal", std::vector<char>(2000, 'x'));
    Database fresh = DBEngine::CreateDatabase(target, daotest::kConnect);
    EXPECT_EQ(fresh.TableDefs().Count(), 0);
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        EXPECT_EQ(entry.path().string().find(".part"), std::string::npos) << entry.path();
    }
}

TEST_F(OpeningTest, ThereIsOneWorkspace) {
    EXPECT_EQ(errorOf([] { DBEngine::Workspaces(1); }), errItemNotFound);
    EXPECT_EQ(errorOf([&] { DBEngine::Workspaces(0).OpenDatabase(path, false, false, daotest::kConnect); }),
              0);
}

}  // namespace
