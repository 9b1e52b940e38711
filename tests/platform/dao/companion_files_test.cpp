#include "platform/dao/sqlite/companion_files.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

struct Names {
    const char* database;
    const char* journal;
    const char* lock;
    const char* numbers;
};

// The names of 1.0.1: workstations of both releases stand on one share.
constexpr Names kNames[] = {
    {"/shop/Shop.mdb", "/shop/Shop.mdb-journal", "/shop/Shop.ldb", "/shop/Shop.numbers"},
    {"Shop.mdb", "Shop.mdb-journal", "Shop.ldb", "Shop.numbers"},
    {"/shop/Shop", "/shop/Shop-journal", "/shop/Shop.ldb", "/shop/Shop.numbers"},
    {"/shop.old/Shop", "/shop.old/Shop-journal", "/shop.old/Shop.ldb", "/shop.old/Shop.numbers"},
    {"/shop/.mdb", "/shop/.mdb-journal", "/shop/.mdb.ldb", "/shop/.mdb.numbers"},
    {"/shop/Shop.2.mdb", "/shop/Shop.2.mdb-journal", "/shop/Shop.2.ldb", "/shop/Shop.2.numbers"},
};

TEST(CompanionFiles, LieBesideTheirDatabaseUnderItsName) {
    for (const Names& names : kNames) {
        EXPECT_EQ(dao::journalOf(names.database), names.journal);
        EXPECT_EQ(dao::lockFileOf(names.database), names.lock);
        EXPECT_EQ(dao::numbersFileOf(names.database), names.numbers);
    }
}

TEST(CompanionFiles, TwoProcessesDoNotWriteTheSameUnfinishedFile) {
    EXPECT_EQ(dao::unfinishedOf("/shop/Shop.mdb"), "/shop/Shop.mdb.part" + std::to_string(getpid()));
}

TEST(CompanionFiles, AnUnfinishedFileNamesItsWriter) {
    for (const char* name : {"Shop.mdb.part17", "Shop.mdb.part17-journal", "Shop.mdb.part17.part17",
                             "Shop.mdb.part17.part17-journal"}) {
        EXPECT_EQ(dao::writerOf("/shop/Shop.mdb", name), 17) << name;
    }
    for (const char* name : {"Shop.mdb", "Shop.mdb.part", "Shop.mdb.part17.part18", "Shop.mdb.part17.txt",
                             "Shop2.mdb.part17", "Shop.mdb.partition"}) {
        EXPECT_EQ(dao::writerOf("/shop/Shop.mdb", name), 0) << name;
    }
}

}  // namespace
