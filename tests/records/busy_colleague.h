#pragma once

#include <gtest/gtest.h>

#include <QString>

#include "platform/dao/dbengine.h"
#include "support/second_process.h"
#include "support/shop_hold.h"

// A colleague whose program is writing into the shop, from hold() to letGo(): nothing else can be written
// meanwhile. Made before the test opens the file. The test's own program waits for a short time only.
class BusyColleague {
 public:
    explicit BusyColleague(const QString& file)
        : process_([path = file.toStdString()](const auto& side) {
              side.untilReleased();
              const tests::ShopHold hold(path, tests::ShopHold::Against::Writers);
              side.ready();
              side.untilReleased();
          }) {}
    ~BusyColleague() { dao::DBEngine::setLockTimeout(kUsualWait); }
    BusyColleague(const BusyColleague&) = delete;
    BusyColleague& operator=(const BusyColleague&) = delete;

    void hold() {
        process_.release();
        ASSERT_TRUE(process_.waitReady());
        dao::DBEngine::setLockTimeout(kShortWait);
    }
    void letGo() {
        process_.release();
        EXPECT_EQ(process_.wait(), 0);
        dao::DBEngine::setLockTimeout(kUsualWait);
    }

 private:
    static constexpr int kShortWait = 100, kUsualWait = 10000;  // milliseconds
    SecondProcess process_;
};
