#include <sqlcipher/sqlite3.h>

#include <climits>
#include <fstream>
#include <iterator>

#include "platform/dao/dao_shop.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/password.h"

namespace {

using dao::Database;
using dao::DBEngine;
using daotest::errorOf;

// The order of the programs before the shop had one alphabet, as far as it matters here: by the bytes.
int earlierOrder(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return std::string_view(static_cast<const char*>(a), static_cast<size_t>(sizeA))
        .compare({static_cast<const char*>(b), static_cast<size_t>(sizeB)});
}

class FileFormTest : public daotest::ShopTest {
 protected:
    void TearDown() override {
        DBEngine::setKnownForm(INT_MAX);
        ShopTest::TearDown();
    }

    // What another program does to the closed file, by the library itself.
    void runOnFile(const std::string& statements) {
        db.Close();
        sqlite3* file = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &file), SQLITE_OK);
        sqlite3_create_collation_v2(file, "DAO_TEXT", SQLITE_UTF8, nullptr, &earlierOrder, nullptr);
        const std::string head = "PRAGMA key = \"x'" + dao::rawKey("lozinka", dao::readSalt(path)) +
                                 "'\"; PRAGMA cipher_page_size = 4096; PRAGMA kdf_iter = 64000;";
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(file, (head + statements).c_str(), nullptr, nullptr, &message), SQLITE_OK)
            << (message == nullptr ? "" : message);
        sqlite3_free(message);
        sqlite3_close(file);
    }
    void giveForm(int form) {
        db.setForm(form);
        db.Close();
    }
    std::string bytes() const {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void open() { db = daotest::openShop(path); }
};

// What the file tells of itself once more is written when it is opened, and then the others may write.
TEST_F(FileFormTest, WhatIsAddedInOpeningAFileKeepsNobodyFromWriting) {
    daotest::Child other([this](daotest::Child& child) {
        child.hear();
        DBEngine::setLockTimeout(300);
        Database there = daotest::openShop(path);
        child.tell(std::to_string(
            errorOf([&] { there.Execute("INSERT INTO Grupe (Grupa) VALUES ('Tastature')"); })));
        child.hear();
        return 0;
    });
    runOnFile("DELETE FROM dao_layout_1; DELETE FROM dao_layout_2;");
    open();
    other.tell("go");
    EXPECT_EQ(other.hear(), "0");
    EXPECT_EQ(db.OpenRecordset("Grupe").RecordCount(), 1);
    other.tell("go");
    const std::string before = bytes();
    db.Close();
    open();
    EXPECT_EQ(bytes(), before);  // it is written once
}

TEST_F(FileFormTest, AFileKeepsTheFormThatTheProgramGivesIt) {
    EXPECT_EQ(db.Form(), 0);
    giveForm(3);
    open();
    EXPECT_EQ(db.Form(), 3);
}

TEST_F(FileFormTest, AFormIsPartOfATransaction) {
    DBEngine::BeginTrans();
    db.setForm(3);
    DBEngine::Rollback();
    EXPECT_EQ(db.Form(), 0);
}

TEST_F(FileFormTest, CompactionAndCopyCarryTheForm) {
    giveForm(3);
    const std::string dense = folder.file("Dense.mdb");
    const std::string copy = folder.file("Copy.mdb");
    DBEngine::CompactDatabase(path, dense, daotest::kConnect);
    DBEngine::CopyDatabase(path, copy);
    EXPECT_EQ(daotest::openShop(dense).Form(), 3);
    EXPECT_EQ(daotest::openShop(copy).Form(), 3);
}

TEST_F(FileFormTest, AHigherFormThanTheProgramKnowsIsRefusedOnEveryRoadAndLeftAlone) {
    giveForm(3);
    const std::string before = bytes();
    DBEngine::setKnownForm(2);
    EXPECT_EQ(errorOf([&] { open(); }), dao::errNewerForm);
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path, daotest::kConnect); }), dao::errNewerForm);
    const std::string dense = folder.file("Dense.mdb");
    EXPECT_EQ(errorOf([&] { DBEngine::CompactDatabase(path, dense, daotest::kConnect); }), dao::errNewerForm);
    EXPECT_FALSE(std::ifstream(dense).good());
    EXPECT_EQ(bytes(), before);
    DBEngine::setKnownForm(3);
    open();
    EXPECT_EQ(db.Form(), 3);
}

TEST_F(FileFormTest, AnOrderOfTextsThatTheProgramDoesNotKnowIsRefused) {
    runOnFile("PRAGMA application_id = 1000");
    EXPECT_EQ(errorOf([&] { open(); }), dao::errNewerForm);
}

class EarlierOrderTest : public FileFormTest {
 protected:
    void SetUp() override {
        FileFormTest::SetUp();
        db.CreateIndex("Customers", "Surname");
        db.Execute("INSERT INTO Customers (Surname) VALUES ('Zoran')");
        db.Execute("INSERT INTO Customers (Surname) VALUES ('Mika')");
        db.Execute("INSERT INTO Customers (Surname) VALUES ('Łukasz')");
        db.Execute("INSERT INTO Customers (Surname) VALUES ('lazar')");
        runOnFile("REINDEX DAO_TEXT; PRAGMA application_id = 0");
    }
    std::string namesInOrder() {
        std::string names;
        for (auto rows = db.OpenRecordset("SELECT Surname FROM Customers ORDER BY Surname"); !rows.EOF();
             rows.MoveNext()) {
            names += rows["Surname"].asText() + ' ';
        }
        return names;
    }
    bool finds(const std::string& name) {
        return !db.OpenRecordset("SELECT CustID FROM Customers WHERE Surname='" + name + "'").EOF();
    }
    void expectPresentOrder() {
        EXPECT_EQ(namesInOrder(), "lazar Łukasz Mika Zoran ");
        for (const char* name : {"LAZAR", "łukasz", "mika", "zoran"}) {
            EXPECT_TRUE(finds(name)) << name;
        }
    }
};

TEST_F(EarlierOrderTest, ItsIndexesAreMadeAnewAtTheFirstOpening) {
    open();
    expectPresentOrder();
    db.Close();
    const std::string raised = bytes();
    open();
    expectPresentOrder();
    db.Close();
    EXPECT_EQ(bytes(), raised);  // the second time there is nothing to do
}

TEST_F(EarlierOrderTest, ItIsCompactedInThePresentOrder) {
    const std::string dense = folder.file("Dense.mdb");
    DBEngine::CompactDatabase(path, dense, daotest::kConnect);
    path = dense;
    open();
    expectPresentOrder();
}

TEST_F(EarlierOrderTest, ACopyOfItThatTakesThePlaceOfAnOpenFileFollows) {
    const std::string former = folder.file("Former.mdb");
    DBEngine::CopyDatabase(path, former);
    open();
    DBEngine::CopyDatabase(former, path);
    expectPresentOrder();
}

}  // namespace
