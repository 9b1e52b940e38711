// Every single fault of one day: the n-th call to the disk fails, for each n, and the power goes after each.
// A share is drawn here, all are tried by scripts/faults: TARVELLO_FAULTS=all, TARVELLO_FAULT_SEED; by
// several processes, each of which takes its part of them: TARVELLO_FAULT_PARTS, TARVELLO_FAULT_PART from 0.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <map>
#include <random>

#include <unistd.h>

#include "platform/dao/faults/faulty_disk.h"
#include "platform/dao/faults/faulty_memory.h"
#include "platform/dao/faults/kept_disk.h"
#include "platform/dao/faults/shop_day.h"
#include "platform/dao/sqlite/file_paths.h"

using namespace dao;
using daotest::Child;
using daotest::ShopDay;
namespace disk = daotest::disk;
namespace memory = daotest::memory;
namespace fs = std::filesystem;

namespace {

int failuresSoFar() {
    return ::testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

bool allOfThem() {
    return std::getenv("TARVELLO_FAULTS") != nullptr;
}

class FaultTest : public ::testing::Test {
 protected:
    void SetUp() override {
        DBEngine::setLockTimeout(1000);
        day.prepare();
        fs::create_directories(before);
        for (const char* name : {"Shop.mdb", "Shop.mdb-journal", "Shop.bkp"}) {
            ASSERT_TRUE(fs::exists(folder.file(name))) << name;
            fs::copy_file(folder.file(name), before + '/' + name);
        }
        seed = daotest::numberFrom("TARVELLO_FAULT_SEED").value_or(1);
        random.seed(seed);
    }
    void TearDown() override { disk::unwatch(); }

    void clear() {
        for (const auto& entry : fs::directory_iterator(folder.path())) {
            fs::remove(entry.path());
        }
    }
    void startAfresh() {
        clear();
        for (const auto& entry : fs::directory_iterator(before)) {
            fs::copy_file(entry.path(), folder.file(entry.path().filename()));
        }
    }
    // The calls to be tried out of so many.
    std::vector<std::uint64_t> drawn(std::uint64_t all, std::size_t share) {
        std::vector<std::uint64_t> calls;
        for (std::uint64_t n = 1; n <= all; ++n) {
            calls.push_back(n);
        }
        if (allOfThem()) {
            const std::uint64_t parts = daotest::numberFrom("TARVELLO_FAULT_PARTS").value_or(1);
            const std::uint64_t part = daotest::numberFrom("TARVELLO_FAULT_PART").value_or(0);
            if (part >= parts) {
                ADD_FAILURE() << "parts are counted from 0: there is no part " << part << " of " << parts;
            }
            std::erase_if(calls, [&](std::uint64_t n) { return n % parts != part; });
        } else {
            std::shuffle(calls.begin(), calls.end(), random);
            calls.resize(std::min(calls.size(), share));
        }
        return calls;
    }

    daotest::TempFolder folder;
    daotest::TempFolder elsewhere;
    std::string before = elsewhere.file("before");
    ShopDay day{folder.path()};
    std::uint64_t seed = 0;
    std::mt19937_64 random;
};

// What steps ended in, over all faults.
using Endings = std::map<std::pair<std::string, int>, int>;

void print(const char* what, std::size_t faults, std::uint64_t calls, const Endings& endings) {
    std::printf("%s: %zu faults of %llu calls\n", what, faults, static_cast<unsigned long long>(calls));
    for (const auto& [ending, count] : endings) {
        std::printf("  %s: %d, %d times\n", ending.first.c_str(), ending.second, count);
    }
}

class DiskFaults : public FaultTest {
 protected:
    // The calls of the day; nothing failed.
    std::uint64_t callsOfTheDay(disk::Fault fault) {
        startAfresh();
        Child child([&](Child& self) {
            const int failures = failuresSoFar();
            disk::watch(folder.path());
            disk::failAt(fault, ~0ULL);
            day.run([](int step, int number) { EXPECT_EQ(number, 0) << ShopDay::nameOf(step); });
            self.tell(std::to_string(disk::calls()));
            disk::unwatch();
            ShopDay::Facts facts;
            facts.fill(ShopDay::Fact::Must);
            day.check(facts);
            return failuresSoFar() > failures ? 1 : 0;
        });
        const std::uint64_t calls = std::strtoull(child.hear().c_str(), nullptr, 10);
        EXPECT_EQ(child.wait(), 0);
        return calls;
    }

    // In a process of its own; it says which step ended in which number.
    int tryOne(Child& self, disk::Fault fault, std::uint64_t n, const std::vector<int>& allowed) {
        alarm(60);
        const int failures = failuresSoFar();
        ShopDay::Facts facts;
        disk::watch(folder.path());
        disk::failAt(fault, n);
        day.run([&](int step, int number) {
            facts[static_cast<std::size_t>(step)] = number == 0 ? ShopDay::Fact::Must : ShopDay::Fact::May;
            if (number != 0) {
                self.tell(std::string(ShopDay::nameOf(step)) + ' ' + std::to_string(number));
                EXPECT_TRUE(std::count(allowed.begin(), allowed.end(), number) != 0)
                    << ShopDay::nameOf(step) << ' ' << number;
            }
        });
        EXPECT_TRUE(disk::hasFailed());
        disk::unwatch();
        day.check(facts);
        return failuresSoFar() > failures ? 1 : 0;
    }

    void tryAll(const char* what, disk::Fault fault, std::size_t share, const std::vector<int>& allowed) {
        const std::uint64_t calls = callsOfTheDay(fault);
        ASSERT_GT(calls, 100U);
        Endings endings;
        const std::vector<std::uint64_t> tried = drawn(calls, share);
        for (const std::uint64_t n : tried) {
            SCOPED_TRACE(std::string(what) + ", call " + std::to_string(n));
            startAfresh();
            Child child([&](Child& self) { return tryOne(self, fault, n, allowed); });
            for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
                const std::size_t space = line.rfind(' ');
                ++endings[{line.substr(0, space), std::atoi(line.c_str() + space)}];
            }
            EXPECT_EQ(child.wait(), 0);
        }
        print(what, tried.size(), calls, endings);
    }
};

// The library opens what it cannot open for writing once more for reading, and forgets why a write failed.
const std::vector<int> kErrorsOfTheDisk{errDiskIo, errNotEnoughSpace, errReadOnly, errCannotOpen,
                                        errCannotLockFile};

TEST_F(DiskFaults, AFullDiskLosesNothingReported) {
    tryAll("full disk", disk::Fault::Full, 40, kErrorsOfTheDisk);
}

TEST_F(DiskFaults, AnErrorOfTheDiskLosesNothingReported) {
    tryAll("one error", disk::Fault::FailsOnce, 60, kErrorsOfTheDisk);
}

TEST_F(DiskFaults, ADyingDiskLosesNothingReported) {
    tryAll("dying disk", disk::Fault::Dead, 40, kErrorsOfTheDisk);
}

// A journal that cannot be read may be the one way back to a sound file.
TEST_F(DiskFaults, AJournalThatCannotBeReadIsNotTakenAway) {
    for (std::uint64_t n = 1; n <= 5; ++n) {
        startAfresh();
        disk::watch(folder.path());
        disk::failAt(disk::Fault::FailsOnce, n);
        removeSpentJournal(day.file());
        EXPECT_EQ(disk::hasFailed(), n <= 2) << n;
        disk::unwatch();
        EXPECT_TRUE(fs::exists(folder.file("Shop.mdb-journal"))) << n;
    }
}

// Nobody is told that his file is none of the engine's, or not there, where the disk does not answer.
TEST_F(DiskFaults, AFileOnADeadDiskIsNotTakenForAnother) {
    for (std::uint64_t n = 1; n <= 6; ++n) {
        startAfresh();
        disk::watch(folder.path());
        disk::failAt(disk::Fault::Dead, n);
        EXPECT_EQ(daotest::errorOf([&] { DBEngine::CopyDatabase(day.file(), folder.file("Copy.mdb")); }),
                  errDiskIo)
            << n;
        EXPECT_EQ(daotest::errorOf([&] { daotest::openShop(day.file()); }), errDiskIo) << n;
        disk::unwatch();
    }
}

// What it wrote is not what it was told: the backup from before stays.
TEST_F(DiskFaults, ACopyThatReadsBackAsSomethingElseReplacesNoBackup) {
    const std::vector<char> backup = daotest::readFile(day.backup());
    for (std::uint64_t n = 1; n < 100; ++n) {
        disk::watch(folder.path());
        disk::failAt(disk::Fault::Forgets, n);
        const int number = daotest::errorOf([&] { DBEngine::CopyDatabase(day.file(), day.backup()); });
        const bool failed = disk::hasFailed();
        disk::unwatch();
        EXPECT_EQ(number, failed ? errDiskIo : 0) << n;
        EXPECT_EQ(daotest::readFile(day.backup()) == backup, failed) << n;
        if (!failed) {
            EXPECT_GT(n, 1U);
            return;
        }
    }
    FAIL();
}

class MemoryFaults : public FaultTest {
 protected:
    std::uint64_t requestsOfTheDay(memory::Whose whose) {
        startAfresh();
        Child child([&](Child& self) {
            memory::failAt(whose, ~0ULL);
            day.run([](int, int) {});
            self.tell(std::to_string(memory::requests()));
            return 0;
        });
        return std::strtoull(child.hear().c_str(), nullptr, 10);
    }

    static constexpr int kGaveUp = 3;

    // The day in a process of its own, which tells what each step ended in; what it cannot carry on without
    // may end it, as a kill would. Whoever stops it for another reason has found its memory in disorder.
    int runOne(Child& self, memory::Whose whose, std::uint64_t n) {
        alarm(60);
        std::set_terminate([] { _exit(kGaveUp); });
        memory::failAt(whose, n);
        day.run([&](int, int number) { self.tell(std::to_string(number)); });
        EXPECT_TRUE(memory::hasFailed());
        return 0;
    }

    void tryAll(const char* what, memory::Whose whose, std::size_t share) {
        const std::uint64_t requests = requestsOfTheDay(whose);
        ASSERT_GT(requests, 100U);
        Endings endings;
        const std::vector<std::uint64_t> tried = drawn(requests, share);
        for (const std::uint64_t n : tried) {
            SCOPED_TRACE(std::string(what) + ", request " + std::to_string(n));
            startAfresh();
            Child child([&](Child& self) { return runOne(self, whose, n); });
            ShopDay::Facts facts;
            facts.fill(ShopDay::Fact::MustNot);
            int step = 0;
            for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
                const int number = std::atoi(line.c_str());
                facts[static_cast<std::size_t>(step)] =
                    number == 0 ? ShopDay::Fact::Must : ShopDay::Fact::May;
                if (number != 0) {
                    ++endings[{ShopDay::nameOf(step), number}];
                }
                ++step;
            }
            if (step < ShopDay::kSteps) {
                facts[static_cast<std::size_t>(step)] = ShopDay::Fact::May;
            }
            const int code = child.wait();
            if (code == kGaveUp) {
                ++endings[{std::string("ended in ") + ShopDay::nameOf(step), code}];
            } else {
                EXPECT_EQ(code, 0);
            }
            day.check(facts);
        }
        print(what, tried.size(), requests, endings);
    }
};

TEST_F(MemoryFaults, TheLibraryWithoutMemoryLosesNothingReported) {
    tryAll("memory of the library", memory::Whose::Library, 60);
}

TEST_F(MemoryFaults, TheEngineWithoutMemoryLosesNothingReported) {
    tryAll("memory of the engine", memory::Whose::Engine, 60);
}

class PowerCuts : public FaultTest {};

TEST_F(PowerCuts, WhateverTheDiskHadTakenNothingReportedIsLost) {
    startAfresh();
    disk::KeptDisk kept(folder.path());
    disk::watch(folder.path());
    disk::startRecording();
    day.run([](int step, int number) {
        EXPECT_EQ(number, 0) << ShopDay::nameOf(step);
        disk::tell(step);
    });
    const std::vector<disk::Event> events = disk::stopRecording();
    disk::unwatch();
    ASSERT_GT(events.size(), 100U);
    std::vector<std::uint64_t> tried = drawn(events.size(), 40);
    std::sort(tried.begin(), tried.end());
    ShopDay::Facts facts;
    facts.fill(ShopDay::Fact::MustNot);
    facts[0] = ShopDay::Fact::May;
    std::size_t cuts = 0;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const disk::Event& event = events[i];
        kept.happen(event);
        if (event.kind == disk::Event::Kind::Told) {
            facts[static_cast<std::size_t>(event.file)] = ShopDay::Fact::Must;
            if (event.file + 1 < ShopDay::kSteps) {
                facts[static_cast<std::size_t>(event.file) + 1] = ShopDay::Fact::May;
            }
        }
        if (!std::binary_search(tried.begin(), tried.end(), i + 1)) {
            continue;
        }
        for (const auto how : {disk::KeptDisk::Kept::All, disk::KeptDisk::Kept::OnlySynced,
                               disk::KeptDisk::Kept::Some, disk::KeptDisk::Kept::Some}) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", after event " + std::to_string(i + 1) +
                         ", kept " + std::to_string(static_cast<int>(how)));
            clear();
            kept.restore(folder.path(), how, random);
            day.check(facts);
            ++cuts;
            if (HasFailure()) {
                return;
            }
        }
    }
    std::printf("%zu power cuts in %zu events\n", cuts, events.size());
}

}  // namespace
