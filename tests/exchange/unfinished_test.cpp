#include "exchange/unfinished.h"

#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QDir>
#include <filesystem>
#include <functional>
#include <system_error>

#include "support/own_folder.h"

namespace {

std::function<void(int)>& beforeLock() {
    static std::function<void(int)> act;
    return act;
}

}  // namespace

// Takes the place of the C library's, so that something can happen between a folder's making and its holding.
extern "C" int flock(int file, int operation) noexcept {
    if (beforeLock()) {
        beforeLock()(file);
    }
    return static_cast<int>(syscall(SYS_flock, file, operation));
}

namespace {

using exchange::MakingFolder;
using testing::HasSubstr;

class Making : public OwnFolderFixture {
 protected:
    void TearDown() override {
        beforeLock() = {};
        OwnFolderFixture::TearDown();
    }
    std::string stem() const { return folder_.filePath("making").toStdString(); }
    QStringList left() const { return QDir(folder_.path()).entryList({"making*"}); }
    // The folder is swept away the first `times` times that somebody wants to hold it.
    void sweepAway(int times) {
        beforeLock() = [this, times](int file) mutable {
            if (times-- > 0) {
                ++swept;
                const std::string open = "/proc/self/fd/" + std::to_string(file);
                std::filesystem::remove(std::filesystem::read_symlink(open));
            }
        };
    }
    int swept = 0;
};

TEST_F(Making, AFolderThatIsSweptAwayIsMadeAgain) {
    sweepAway(2);
    const MakingFolder folder(stem());
    EXPECT_EQ(swept, 2);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
}

TEST_F(Making, AFolderThatIsSweptAwayAgainAndAgainIsTold) {
    sweepAway(3);
    try {
        const MakingFolder folder(stem());
        FAIL() << "it was made";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("was taken away as soon as it was made"));
        EXPECT_THAT(error.what(), HasSubstr(stem()));
    }
    EXPECT_EQ(swept, 3);
    EXPECT_EQ(left(), QStringList());
}

TEST_F(Making, AFolderThatCannotBeHeldIsToldWithItsReasonAndLeavesNothing) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    std::error_code told;
    try {
        const MakingFolder folder(stem());
    } catch (const std::system_error& error) {
        setrlimit(RLIMIT_NOFILE, &before);  // a checked build looks at what is thrown through a file handle
        told = error.code();
    }
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(told, std::errc::too_many_files_open);
    EXPECT_EQ(left(), QStringList());
}

}  // namespace
