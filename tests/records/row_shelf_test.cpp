#include "records/row_shelf.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "platform/system/trap.h"

namespace {

class RowShelfTest : public testing::Test {
 protected:
    QTemporaryDir folder;
};

TEST_F(RowShelfTest, GivesBackWhatWasPutThere) {
    for (const std::size_t memory : {0, 7, 100}) {
        RowShelf shelf(folder.path(), 3, memory);
        shelf.put(0, "one ");
        shelf.put(2, "two ");
        shelf.put(0, "three ");
        shelf.put(0, std::string(50, 'x'));
        EXPECT_EQ(shelf.take(0), "one three " + std::string(50, 'x')) << memory;
        EXPECT_EQ(shelf.take(1), "") << memory;
        EXPECT_EQ(shelf.take(2), "two ") << memory;
    }
}

TEST_F(RowShelfTest, WhatWasTakenIsGoneAndThePlaceCanBeUsedAgain) {
    RowShelf shelf(folder.path(), 1, 2);
    shelf.put(0, "first");
    EXPECT_EQ(shelf.take(0), "first");
    EXPECT_EQ(shelf.take(0), "");
    shelf.put(0, "second");
    EXPECT_EQ(shelf.take(0), "second");
}

TEST_F(RowShelfTest, LeavesNothingInTheFolder) {
    {
        RowShelf shelf(folder.path(), 1, 0);
        shelf.put(0, "a name that is nobody else's business");
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

TEST_F(RowShelfTest, SaysThatThereIsNoRoomForItsFile) {
    RowShelf shelf(folder.path() + "/nowhere", 1, 4);
    shelf.put(0, "four");
    EXPECT_THROW(shelf.put(0, "more"), platform::RunError);
}

}  // namespace
