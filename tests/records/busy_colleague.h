#pragma once

#include "platform/dao/database.h"
#include "platform/dao/dbengine.h"
#include "support/second_process.h"

// A colleague whose program is writing into the file, from hold() to letGo(): nothing else can be written
// meanwhile. Made before the test opens the file. The test's own program waits for a short time only.
class BusyColleague {
 public:
    BusyColleague(const QString& file, const QString& connect)
        : process_([path = file.toStdString(), word = connect.toStdString()](const auto& side) {
              side.untilReleased();
              dao::Database database = dao::DBEngine::OpenDatabase(path, false, false, word);
              dao::DBEngine::BeginTrans();
              database.Execute("UPDATE JM SET Naziv='x'");
              side.ready();
              side.untilReleased();
              dao::DBEngine::Rollback();
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
