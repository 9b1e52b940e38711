// Who holds which number on one database: several processes that come, go and are killed.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <set>
#include <thread>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::openShop;
namespace fs = std::filesystem;

namespace {

class HeldNumberTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        db.Close();
    }
    // Another process that takes `wanted` or what comes next, tells it, and goes when told to.
    auto holder(int wanted) {
        return [this, wanted](Child& child) {
            Database here = openShop(path);
            const HeldNumber held(here, wanted);
            child.tell(std::to_string(held.value()));
            child.hear();
            return 0;
        };
    }
    // The system takes a dead process's number back at once; a server first has to notice that it is dead.
    static bool comesFree(const Database& here, int number) {
        const auto until =
            std::chrono::steady_clock::now() + std::chrono::seconds(daotest::onServer() ? 5 : 0);
        bool isFree = HeldNumber(here, number).value() == number;
        while (!isFree && std::chrono::steady_clock::now() < until) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            isFree = HeldNumber(here, number).value() == number;
        }
        return isFree;
    }
    std::string numbersFile() const { return folder.file("Shop.numbers"); }
};

class FileHeldNumberTest : public HeldNumberTest {};

TEST_F(HeldNumberTest, TheWantedOneIsGivenWhileNobodyHoldsIt) {
    const Database here = openShop(path);
    EXPECT_EQ(HeldNumber(here, 0).value(), 0);
    EXPECT_EQ(HeldNumber(here, 7).value(), 7);
}

TEST_F(HeldNumberTest, AnotherProcessGetsTheNextThatNobodyHolds) {
    Child third(holder(3));
    ASSERT_EQ(third.hear(), "3");
    Child fourth(holder(4));
    ASSERT_EQ(fourth.hear(), "4");
    Child next(holder(3));
    EXPECT_EQ(next.hear(), "5");
    const Database here = openShop(path);
    EXPECT_EQ(HeldNumber(here, 2).value(), 2);
    EXPECT_EQ(HeldNumber(here, 3).value(), 6);
}

TEST_F(HeldNumberTest, OneProcessDoesNotGetANumberTwice) {
    const Database here = openShop(path);
    const HeldNumber first(here, 1);
    const HeldNumber second(here, 1);
    EXPECT_EQ(first.value(), 1);
    EXPECT_EQ(second.value(), 2);
}

TEST_F(HeldNumberTest, ANumberLetGoIsFreeAtOnce) {
    Child other(holder(0));
    ASSERT_EQ(other.hear(), "0");
    const Database here = openShop(path);
    HeldNumber held(here, 0);
    ASSERT_EQ(held.value(), 1);
    other.tell("go");
    ASSERT_EQ(other.wait(), 0);
    EXPECT_EQ(HeldNumber(here, 0).value(), 0);
    held.leave();
    EXPECT_EQ(held.value(), -1);
    EXPECT_FALSE(held.isOn(here));
    EXPECT_EQ(HeldNumber(here, 1).value(), 1);
}

TEST_F(HeldNumberTest, ANumberLetGoIsFreeForOthersWhileItsHolderKeepsAnother) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        HeldNumber first(here, 0);
        const HeldNumber second(here, 1);
        first.leave();
        child.tell("left");
        child.hear();
        return 0;
    });
    ASSERT_EQ(other.hear(), "left");
    const Database here = openShop(path);
    EXPECT_EQ(HeldNumber(here, 0).value(), 0);
    EXPECT_EQ(HeldNumber(here, 1).value(), 2);
}

TEST_F(HeldNumberTest, AKilledProcessHoldsNothing) {
    Child other(holder(0));
    ASSERT_EQ(other.hear(), "0");
    other.kill();
    other.wait();
    const Database here = openShop(path);
    EXPECT_TRUE(comesFree(here, 0));
}

TEST_F(HeldNumberTest, ItOutlivesTheConnectionItWasTakenOn) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        const HeldNumber held(here, 0);
        here.Close();
        child.tell("closed");
        child.hear();
        here = openShop(path);
        child.tell(held.isOn(here) && held.value() == 0 ? "kept" : "lost");
        child.hear();
        return 0;
    });
    ASSERT_EQ(other.hear(), "closed");
    EXPECT_EQ(HeldNumber(openShop(path), 0).value(), 1);
    other.tell("reopen");
    EXPECT_EQ(other.hear(), "kept");
}

// Who keeps his number while the file is closed must not keep others from repairing it.
TEST_F(HeldNumberTest, ItIsNoUseOfTheFile) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        const HeldNumber held(here, 0);
        here.Close();
        child.tell("closed");
        child.hear();
        return 0;
    });
    ASSERT_EQ(other.hear(), "closed");
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path, daotest::kConnect); }), 0);
    EXPECT_EQ(errorOf([&] { openShop(path, true).Close(); }), 0);
}

TEST_F(FileHeldNumberTest, ItStaysWhileTheFileIsReplaced) {
    Child other([this](Child& child) {
        Database here = openShop(path);
        const HeldNumber held(here, 0);
        here.Close();
        DBEngine::RepairDatabase(path);
        DBEngine::CompactDatabase(path, folder.file("Compact.mdb"));
        DBEngine::RenameDatabase(folder.file("Compact.mdb"), path);
        here = openShop(path);
        child.tell(held.isOn(here) ? "kept" : "lost");
        child.hear();
        return 0;
    });
    ASSERT_EQ(other.hear(), "kept");
    EXPECT_EQ(HeldNumber(openShop(path), 0).value(), 1);
}

TEST_F(HeldNumberTest, ItIsOnItsOwnDatabaseOnly) {
    fs::create_symlink(path, folder.file("Link.mdb"));
    const Database here = openShop(path);
    const Database other = DBEngine::CreateDatabase(folder.file("Other.mdb"), daotest::kConnect);
    const HeldNumber held(here, 0);
    EXPECT_TRUE(held.isOn(here));
    EXPECT_TRUE(held.isOn(openShop(folder.file("Link.mdb"))));
    EXPECT_FALSE(held.isOn(other));
    EXPECT_EQ(HeldNumber(other, 0).value(), 0);
    EXPECT_FALSE(HeldNumber().isOn(here));
}

TEST_F(HeldNumberTest, AMovedOneIsHeldOnce) {
    const Database here = openShop(path);
    HeldNumber first(here, 0);
    HeldNumber second = std::move(first);
    EXPECT_EQ(second.value(), 0);
    EXPECT_EQ(HeldNumber(here, 0).value(), 1);
    second = HeldNumber(here, 5);
    EXPECT_EQ(second.value(), 5);
    EXPECT_EQ(HeldNumber(here, 0).value(), 0);
    EXPECT_EQ(HeldNumber(here, 5).value(), 6);
}

TEST_F(FileHeldNumberTest, TheLastHolderTakesTheFileOfNumbersAway) {
    Child other(holder(0));
    ASSERT_EQ(other.hear(), "0");
    EXPECT_TRUE(fs::exists(numbersFile()));
    HeldNumber(openShop(path), 0).leave();
    EXPECT_TRUE(fs::exists(numbersFile()));
    other.tell("go");
    other.wait();
    EXPECT_FALSE(fs::exists(numbersFile()));
    EXPECT_FALSE(fs::exists(folder.file("Shop.ldb")));
}

TEST_F(FileHeldNumberTest, AFolderWithoutRoomForIt) {
    const Database here = openShop(path);
    fs::create_directory(numbersFile());
    EXPECT_EQ(errorOf([&] { HeldNumber(here, 0); }), errCannotLockFile);
}

TEST_F(HeldNumberTest, AClosedDatabaseGivesNone) {
    Database here = openShop(path);
    here.Close();
    EXPECT_EQ(errorOf([&] { HeldNumber(here, 0); }), errObjectClosed);
}

// A workstation that still runs the release before this one locks every byte of the lock file for reading.
TEST_F(FileHeldNumberTest, AnEarlierReleaseInTheSameFileHoldsNobodyUp) {
    Child earlier([this](Child& child) {
        const int lock = open(folder.file("Shop.ldb").c_str(), O_RDWR | O_CREAT, 0666);
        struct flock whole {};
        whole.l_type = F_RDLCK;
        whole.l_whence = SEEK_SET;
        child.tell(fcntl(lock, F_OFD_SETLK, &whole) == 0 ? "in" : "out");
        child.hear();
        return 0;
    });
    ASSERT_EQ(earlier.hear(), "in");
    const Database here = openShop(path);
    EXPECT_EQ(HeldNumber(here, 0).value(), 0);
    EXPECT_EQ(errorOf([&] { openShop(path, true); }), errFileInUse);
}

TEST_F(HeldNumberTest, ManyWhoComeAtOnceGetANumberEach) {
    constexpr int kMany = 8;
    std::vector<std::unique_ptr<Child>> crowd;
    for (int i = 0; i < kMany; ++i) {
        crowd.push_back(std::make_unique<Child>([this](Child& child) {
            Database here = openShop(path);
            child.tell("ready");
            child.hear();
            for (int turn = 0; turn < 200; ++turn) {
                HeldNumber(here, 0).leave();
            }
            const HeldNumber held(here, 0);
            child.tell(std::to_string(held.value()));
            child.hear();
            return 0;
        }));
    }
    for (const auto& one : crowd) {
        ASSERT_EQ(one->hear(), "ready");
    }
    for (const auto& one : crowd) {
        one->tell("go");
    }
    std::set<std::string> numbers;
    for (const auto& one : crowd) {
        numbers.insert(one->hear());
    }
    EXPECT_EQ(numbers.size(), 8U);
}

}  // namespace
