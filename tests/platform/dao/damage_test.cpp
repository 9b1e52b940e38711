// A shop's file hurt in every way a disk, a network or a hand may hurt it. scripts/damage runs the random
// ones in greater numbers: TARVELLO_DAMAGE_COUNT files, drawn by TARVELLO_DAMAGE_SEED.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <numeric>
#include <random>
#include <set>
#include <tuple>

#include <fcntl.h>
#include <unistd.h>

#include "platform/dao/dao_shop.h"
#include "platform/dao/shop_content.h"
#include "platform/dao/sqlite/btree.h"
#include "platform/dao/sqlite/file_place.h"
#include "platform/dao/sqlite/pages.h"

using namespace dao;
using daotest::Child;
using daotest::Content;
using daotest::contentOf;
using daotest::errorOf;
using daotest::numberFrom;
using daotest::openShop;
using daotest::rowsIn;
namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kSalt = 16;

using Bytes = std::vector<char>;

bool isPartOf(const Content& now, const Content& before) {
    for (const auto& [name, rows] : now) {
        const auto known = before.find(name);
        if (known == before.end() ||
            !std::includes(known->second.begin(), known->second.end(), rows.begin(), rows.end())) {
            return false;
        }
    }
    return true;
}

class DamageTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(500);
        // Some texts that need pages of their own.
        db.Execute("UPDATE Services SET Comments='" + std::string(9000, 'k') + "' WHERE ID<10");
        content = contentOf(db);
        db.Close();
        whole = daotest::readFile(path);
        pages = whole.size() / kPage;
    }

    static void zero(Bytes& bytes, std::size_t page) {
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>((page - 1) * kPage), kPage, '\0');
    }
    void writeWithZeroes(std::size_t page) const {
        Bytes bytes = whole;
        zero(bytes, page);
        daotest::writeFile(path, bytes);
    }
    std::string mark() const { return path + ".damaged"; }
    // With each page but the first set to zeroes in turn: what is read is right, or refused. How often it is
    // refused.
    template <typename Reading>
    std::size_t refusedOfPages(const Reading& reading) {
        std::size_t refused = 0;
        for (std::size_t page = 2; page <= pages; ++page) {
            SCOPED_TRACE(page);
            writeWithZeroes(page);
            const int number = errorOf([&] {
                db = openShop(path);
                reading();
            });
            EXPECT_TRUE(number == 0 || number == errCannotOpen) << number;
            refused += number != 0;
            db.Close();
        }
        return refused;
    }

    Content content;
    Bytes whole;
    std::size_t pages = 0;
};

// The cipher takes a page of zeroes for one that holds nothing.
TEST_F(DamageTest, NothingFalseIsReadFromPagesOfZeroes) {
    EXPECT_GT(refusedOfPages([&] { EXPECT_EQ(contentOf(db), content); }), pages / 3);
}

// However the rows come: along the table on a walk, or through its links for a filter.
TEST_F(DamageTest, RowsThatAreReadAlongTheirTableAreAllThereOrRefused) {
    constexpr const char* kOfClients =
        "SELECT Services.ID FROM (Customers INNER JOIN Computers ON Customers.CustID=Computers.CustID) INNER "
        "JOIN Services ON Computers.MachineID=Services.MachineID WHERE Customers.City='Beograd'";
    std::vector<int> all(500);
    std::iota(all.begin(), all.end(), 1);
    for (const char* rows : {"SELECT * FROM Services", kOfClients}) {
        SCOPED_TRACE(rows);
        EXPECT_GT(refusedOfPages([&] { EXPECT_EQ(numbers(db.OpenRecordset(rows), "ID"), all); }), 10U);
    }
}

TEST_F(DamageTest, ADamagedFileNeverReplacesASoundBackup) {
    const std::string backup = folder.file("Shop.bkp");
    for (const bool zeroes : {true, false}) {
        for (std::size_t page = 2; page <= pages; page += 3) {
            SCOPED_TRACE(page);
            daotest::writeFile(backup, {'o', 'l', 'd'});
            Bytes bytes = whole;
            if (zeroes) {
                zero(bytes, page);
            } else {
                bytes[(page - 1) * kPage + 2000] ^= 1;
            }
            daotest::writeFile(path, bytes);
            EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, backup); }), errCannotOpen);
            EXPECT_EQ(daotest::readFile(backup), (Bytes{'o', 'l', 'd'}));
            EXPECT_TRUE(fs::exists(mark()));
            // Whoever comes next is told, though he may never come to that page.
            EXPECT_EQ(errorOf([&] { openShop(path); }), errCannotOpen);
            EXPECT_TRUE(fs::exists(mark()));
            DBEngine::RepairDatabase(path);
            EXPECT_FALSE(fs::exists(mark()));
            openShop(path).Close();
            DBEngine::CopyDatabase(path, backup);
            fs::remove(backup);
        }
    }
}

TEST_F(DamageTest, AMarkBesideASoundFileGoesWithTheNextOpening) {
    daotest::writeFile(mark(), {});
    openShop(path).Close();
    EXPECT_FALSE(fs::exists(mark()));
    EXPECT_EQ(daotest::readFile(path), whole);
}

// While the file is open, and its pages are in memory already.
TEST_F(DamageTest, ACopyOfAnOpenFileReadsThePagesFromTheDisk) {
    db = openShop(path);
    EXPECT_EQ(contentOf(db), content);
    Bytes bytes = whole;
    zero(bytes, pages / 2);
    const int file = open(path.c_str(), O_WRONLY);
    ASSERT_EQ(pwrite(file, bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
    EXPECT_EQ(errorOf([&] { DBEngine::CopyDatabase(path, folder.file("Shop.bkp")); }), errCannotOpen);
    EXPECT_FALSE(fs::exists(folder.file("Shop.bkp")));
    close(file);
}

// Compaction would leave out, without a word, what it cannot reach any more.
TEST_F(DamageTest, ADamagedTableIsNotCompacted) {
    std::size_t refused = 0;
    for (std::size_t page = 2; page <= pages; ++page) {
        SCOPED_TRACE(page);
        writeWithZeroes(page);
        const std::string target = folder.file("Shop.$$1");
        const int number = errorOf([&] { DBEngine::CompactDatabase(path, target); });
        EXPECT_TRUE(number == 0 || number == errCannotOpen);
        EXPECT_EQ(fs::exists(target), number == 0);
        if (number == 0) {  // it was a page of an index
            db = openShop(target);
            EXPECT_EQ(contentOf(db), content);
            db.Close();
            fs::remove(target);
        }
        refused += number != 0;
    }
    EXPECT_GT(refused, pages / 3);
}

TEST_F(DamageTest, WhatKilledProcessesLeftIsSweptByWhoeverHasTheFileAlone) {
    Child dead([](Child&) { return 0; });
    dead.wait();
    Child living([](Child& child) {
        child.hear();
        return 0;
    });
    const std::string ofDead = path + ".part" + std::to_string(dead.id());
    const std::string ofLiving = path + ".part" + std::to_string(living.id());
    const std::string another = folder.file("Other.mdb.part") + std::to_string(dead.id());
    for (const std::string& name : {ofDead, ofDead + "-journal", ofDead + "x", ofLiving, another}) {
        daotest::writeFile(name, {'x'});
    }
    Child other([this](Child& child) {
        const Database here = openShop(path);
        daotest::writeFile(path + ".part1000000", {'x'});
        child.tell("in");
        child.hear();
        return 0;
    });
    ASSERT_EQ(other.hear(), "in");
    EXPECT_FALSE(fs::exists(ofDead));  // it had the file alone
    openShop(path).Close();
    EXPECT_TRUE(fs::exists(path + ".part1000000"));  // we had not
    other.tell("go");
    other.wait();
    openShop(path).Close();
    EXPECT_FALSE(fs::exists(path + ".part1000000"));
    EXPECT_FALSE(fs::exists(ofDead + "-journal"));
    for (const std::string& name : {ofDead + "x", ofLiving, another}) {
        EXPECT_TRUE(fs::exists(name)) << name;
    }
}

// ----- damage drawn at random

// A file's bytes, and which of its pages were hurt.
class Victim {
 public:
    Victim(const Bytes& whole, std::uint64_t seed) : whole_(whole), bytes(whole), random_(seed) {}

    // What was done, for the report of a failure.
    std::string hurt() {
        constexpr std::pair<const char*, void (Victim::*)()> kWays[] = {
            {"zeroed", &Victim::zeroPages},       {"flipped", &Victim::flipBits},
            {"overwritten", &Victim::overwrite},  {"swapped", &Victim::swapPages},
            {"copied over", &Victim::copyPage},   {"cut off", &Victim::cutOff},
            {"first page", &Victim::hurtTheFirst}};
        const auto& [name, way] = kWays[draw(0, std::size(kWays) - 1)];
        (this->*way)();
        return name;
    }
    bool isTouched(std::size_t page) const { return touched_.contains(page); }
    const std::set<std::size_t>& touched() const { return touched_; }

 private:
    std::size_t pages() const { return whole_.size() / kPage; }
    std::size_t draw(std::size_t from, std::size_t upTo) {
        return std::uniform_int_distribution<std::size_t>(from, upTo)(random_);
    }
    // The salt stays: what becomes of a file without it is told by tests of its own.
    void put(std::size_t at, char byte) {
        if (at >= kSalt && bytes[at] != byte) {
            bytes[at] = byte;
            touched_.insert(at / kPage + 1);
        }
    }
    void zeroPages() {
        for (std::size_t i = draw(1, 5); i-- > 0;) {
            const std::size_t page = draw(1, pages());
            for (std::size_t at = (page - 1) * kPage; at < page * kPage; ++at) {
                put(at, '\0');
            }
        }
    }
    void flipBits() {
        for (std::size_t i = draw(1, 40); i-- > 0;) {
            const std::size_t at = draw(kSalt, bytes.size() - 1);
            put(at, static_cast<char>(bytes[at] ^ (1 << draw(0, 7))));
        }
    }
    void overwrite() {
        const std::size_t from = draw(kSalt, bytes.size() - 1);
        const std::size_t end = std::min(bytes.size(), from + draw(1, 5 * kPage));
        for (std::size_t at = from; at < end; ++at) {
            put(at, static_cast<char>(draw(0, 255)));
        }
    }
    void writeOver(std::size_t to, std::size_t from) {
        for (std::size_t i = 0; i < kPage; ++i) {
            put((to - 1) * kPage + i, whole_[(from - 1) * kPage + i]);
        }
    }
    void swapPages() {
        const std::size_t one = draw(1, pages());
        const std::size_t other = draw(1, pages());
        writeOver(one, other);
        writeOver(other, one);
    }
    void copyPage() { writeOver(draw(1, pages()), draw(1, pages())); }
    void cutOff() {
        bytes.resize(draw(kPage, bytes.size() - 1));
        for (std::size_t page = bytes.size() / kPage + 1; page <= pages(); ++page) {
            touched_.insert(page);
        }
    }
    void hurtTheFirst() {
        const std::size_t from = draw(kSalt, kPage - 1);
        const std::size_t end = draw(from, kPage - 1);
        for (std::size_t at = from; at <= end; ++at) {
            put(at, static_cast<char>(draw(0, 255)));
        }
    }

    const Bytes& whole_;

 public:
    Bytes bytes;

 private:
    std::mt19937_64 random_;
    std::set<std::size_t> touched_;
};

class RandomDamage : public DamageTest {
 protected:
    void SetUp() override {
        DamageTest::SetUp();
        lookAtPages();
    }

    // How many rows lie on each page, whole or in part, and which pages tell what the file holds.
    void lookAtPages() {
        const auto place = std::make_shared<FilePlace>(path, "lozinka", saltOf(path));
        driver::PageFile file(driver::pagesOfClosed(path), place->request(false).key);
        for (driver::PageNumber page = 1; page <= pages; ++page) {
            driver::TreeReader reader(file);
            driver::TreeReader::Missing missing;
            const char kind = file.page(page)[page == 1 ? 100 : 0];
            rowsOn[page] = kind == 0 ? 1 : 0;  // the rest of a long text
            reader.readStrayLeaf(
                page,
                [&](const driver::StoredRow& row) {
                    ++rowsOn[page];
                    const auto* const mark =
                        row.cells.size() == 7 ? std::get_if<std::string>(&row.cells[1]) : nullptr;
                    if (mark != nullptr && mark->rfind("what this file holds", 0) == 0) {
                        layoutPages.insert(page);
                    }
                },
                missing);
        }
    }
    std::size_t rowsAtStake(const Victim& victim) {
        std::size_t rows = 0;
        for (const std::size_t page : victim.touched()) {
            rows += rowsOn[page];
        }
        return rows;
    }
    // Every place that tells what the file holds is hurt.
    bool isLayoutLost(const Victim& victim) const {
        const auto hurt = std::count_if(layoutPages.begin(), layoutPages.end(),
                                        [&](std::size_t page) { return victim.isTouched(page); });
        return victim.isTouched(1) && hurt > 1;
    }

    // Rows lost although their pages were not hurt.
    std::size_t tryOne(const Victim& victim) {
        daotest::writeFile(path, victim.bytes);
        fs::remove(path + "-journal");
        EXPECT_TRUE(isPartOf(readAsFarAsItGoes(), content));
        const int number = errorOf([&] { DBEngine::RepairDatabase(path, daotest::kConnect); });
        if (number != 0) {
            EXPECT_EQ(number, errCannotOpen);
            EXPECT_TRUE(isLayoutLost(victim));
            EXPECT_EQ(daotest::readFile(path), victim.bytes);
            return 0;
        }
        Database repaired = openShop(path);
        const Content now = contentOf(repaired);
        repaired.Close();
        EXPECT_TRUE(isPartOf(now, content));
        DBEngine::RepairDatabase(path);
        EXPECT_FALSE(DBEngine::LastRepair().damaged);
        const std::size_t lost = rowsIn(content) - rowsIn(now);
        return isLayoutLost(victim) ? 0 : lost - std::min(lost, rowsAtStake(victim));
    }
    Content readAsFarAsItGoes() {
        Content found;
        const int number = errorOf([&] {
            Database here = openShop(path);
            contentOf(here, found);
        });
        EXPECT_TRUE(number == 0 || number == errCannotOpen || number == errUnrecognisedFormat) << number;
        return found;
    }

    std::map<std::size_t, std::size_t> rowsOn;
    std::set<std::size_t> layoutPages;
};

TEST_F(RandomDamage, LosesNoRowThatWasNotHurtAndInventsNone) {
    const std::uint64_t count = numberFrom("TARVELLO_DAMAGE_COUNT").value_or(300);
    const std::uint64_t seed = numberFrom("TARVELLO_DAMAGE_SEED").value_or(1);
    std::map<std::string, std::size_t> drawn;
    std::uint64_t lost = 0;
    std::uint64_t unhurt = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
        Victim victim(whole, seed * 1000003 + i);
        const std::string way = victim.hurt();
        ++drawn[way];
        SCOPED_TRACE(way + ", file " + std::to_string(i) + " of seed " + std::to_string(seed));
        // Each in a process of its own: one that crashes or hangs must not take the others along.
        Child child([&](Child& self) {
            alarm(120);
            self.tell(std::to_string(tryOne(victim)));
            return ::testing::Test::HasFailure() ? 1 : 0;
        });
        const std::uint64_t lostHere = std::strtoull(child.hear().c_str(), nullptr, 10);
        if (lostHere * 100 > rowsIn(content)) {
            std::printf("%s, file %llu of seed %llu: %llu rows\n", way.c_str(),
                        static_cast<unsigned long long>(i), static_cast<unsigned long long>(seed),
                        static_cast<unsigned long long>(lostHere));
        }
        lost += lostHere;
        unhurt += rowsIn(content) - std::min(rowsIn(content), rowsAtStake(victim));
        ASSERT_EQ(child.wait(), 0);
    }
    EXPECT_LE(lost * 1000, unhurt);
    for (const auto& [way, files] : drawn) {
        std::printf("%s %zu, ", way.c_str(), files);
    }
    std::printf("%zu rows each: of %llu rows on whole pages %llu were lost\n", rowsIn(content),
                static_cast<unsigned long long>(unhurt), static_cast<unsigned long long>(lost));
}

}  // namespace
