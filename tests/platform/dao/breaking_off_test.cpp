#include "platform/dao/breaking_off.h"

#include <atomic>
#include <chrono>
#include <thread>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::errorOf;

namespace {

class LeavingTest : public daotest::ShopTest {
 protected:
    // One statement that takes longer than anybody waits.
    void readForEver() {
        db.OpenRecordset(
            "SELECT a.ID FROM Services AS a, Services AS b, Services AS c, Services AS d WHERE "
            "a.ID+b.ID+c.ID+d.ID<0",
            dbOpenSnapshot);
    }
};

TEST_F(LeavingTest, OneStatementThatIsAtWorkIsLeft) {
    fill(1000);
    std::atomic<bool> left{false};
    std::thread person([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        left = true;
    });
    {
        const Leavable work(left);
        EXPECT_EQ(errorOf([&] { readForEver(); }), errCancelled);
    }
    person.join();
    EXPECT_TRUE(isGoingOn());
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT ID FROM Services", dbOpenSnapshot), "ID").size(), 1000U)
        << "and the shop goes on";
}

TEST_F(LeavingTest, ATransactionThatIsLeftLeavesNothing) {
    fill(1000);
    const std::atomic<bool> left{true};
    DBEngine::BeginTrans();
    db.Execute("DELETE * FROM Services WHERE ID>900");
    {
        const Leavable work(left);
        EXPECT_EQ(errorOf([&] { readForEver(); }), errCancelled);
        DBEngine::Rollback();
    }
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT ID FROM Services", dbOpenSnapshot), "ID").size(), 1000U);
}

TEST_F(LeavingTest, WhatHasToComeToItsEndDoes) {
    const std::atomic<bool> left{true};
    const Leavable work(left);
    EXPECT_TRUE(isLeft());
    {
        const Unleavable whole;
        EXPECT_TRUE(isGoingOn());
    }
    EXPECT_FALSE(isGoingOn());
}

}  // namespace
