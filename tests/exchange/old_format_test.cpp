#include "exchange/old_format.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/places.h"

namespace {

using exchange::holderOf;
using exchange::OldFormat;
using exchange::oldFormatOf;
using testing::HasSubstr;

// Another program that does something and then stays until it is told to go.
class OtherProgram {
 public:
    template <typename Work>
    explicit OtherProgram(const Work& work) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        process_ = fork();
        if (process_ == 0) {
            work();
            const ssize_t told = write(ready[1], "x", 1);
            pause();
            _exit(told == 1 ? 0 : 1);
        }
        char byte = 0;
        EXPECT_EQ(read(ready[0], &byte, 1), 1);
        close(ready[0]);
        close(ready[1]);
    }
    ~OtherProgram() {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }

 private:
    pid_t process_;
};

class OldFormatTest : public ::testing::Test {
 protected:
    void SetUp() override {
        std::filesystem::copy_file(std::string(tests::kSourceFolder) + "/exchange/old-shop.mdb", file());
    }
    std::string file() const { return folder_.filePath("Old.mdb").toStdString(); }
    std::string lockFile() const { return folder_.filePath("Old.ldb").toStdString(); }
    void writeHead(const std::string& mark, char version) {
        std::ofstream out(file(), std::ios::binary);
        out << std::string("\0\1\0\0", 4) << mark << '\0' << version << std::string(100, '\0');
    }
    void writeEntry() {
        std::string entry("MIRA-PC");
        entry.resize(32);
        entry += "Admin";
        entry.resize(64);
        std::ofstream(lockFile(), std::ios::binary) << entry;
    }
    std::string refusal() {
        try {
            exchange::needOldFile(file());
        } catch (const exchange::OldFileError& error) {
            return error.what();
        }
        return {};
    }

    QTemporaryDir folder_;
};

TEST_F(OldFormatTest, KnowsTheVersionsByTheirHeads) {
    EXPECT_EQ(oldFormatOf(file()), OldFormat::Version4);
    EXPECT_EQ(refusal(), "");
    writeHead("Standard Jet DB", 0);
    EXPECT_EQ(oldFormatOf(file()), OldFormat::Version3);
    EXPECT_EQ(refusal(), "");
    writeHead("Standard ACE DB", 2);
    EXPECT_EQ(oldFormatOf(file()), OldFormat::Later);
    EXPECT_THAT(refusal(), HasSubstr("later form"));
}

TEST_F(OldFormatTest, TakesNothingElseForOne) {
    std::ofstream(file()) << "a letter";
    EXPECT_EQ(oldFormatOf(file()), OldFormat::None);
    EXPECT_THAT(refusal(), HasSubstr("is no database of the old format."));
    EXPECT_EQ(oldFormatOf(folder_.path().toStdString()), OldFormat::None);
    EXPECT_EQ(oldFormatOf(std::string(tests::kDeliveredFolder) + "/Tarvello.mdb"), OldFormat::None);
    std::filesystem::remove(file());
    EXPECT_THAT(refusal(), HasSubstr("cannot be read: No such file"));
}

TEST_F(OldFormatTest, IsClosedAgainWhenItHasBeenLookedAt) {
    const auto openFiles = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    const auto before = openFiles();
    for (int i = 0; i < 3; ++i) {
        oldFormatOf(file());
        refusal();
    }
    EXPECT_EQ(openFiles(), before);
}

TEST_F(OldFormatTest, ALockFileThatACrashHasLeftHoldsNobodyUp) {
    writeEntry();
    EXPECT_EQ(holderOf(file()), std::nullopt);
    EXPECT_EQ(refusal(), "");
}

TEST_F(OldFormatTest, TellsWhoHasItOpen) {
    writeEntry();
    const OtherProgram other([&] {
        const int file = open(lockFile().c_str(), O_RDWR);
        struct flock byte {};
        byte.l_type = F_WRLCK;
        byte.l_whence = SEEK_SET;
        byte.l_start = 0x10000001;
        byte.l_len = 1;
        fcntl(file, F_SETLK, &byte);
    });
    EXPECT_EQ(holderOf(file()), "MIRA-PC (Admin)");
    EXPECT_THAT(refusal(), HasSubstr("is open in another program: MIRA-PC (Admin). Close it there first."));
}

TEST_F(OldFormatTest, SeesAProgramThatLocksTheWholeOrNothing) {
    writeEntry();
    {
        const OtherProgram other([&] { flock(open(lockFile().c_str(), O_RDWR), LOCK_SH); });
        EXPECT_EQ(holderOf(file()), "MIRA-PC (Admin)");
    }
    const OtherProgram other([&] { open(lockFile().c_str(), O_RDONLY); });
    EXPECT_EQ(holderOf(file()), "MIRA-PC (Admin)");
}

}  // namespace
