#include <filesystem>
#include <map>
#include <set>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::errorOf;
using daotest::openShop;
namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPage = 4096;

// Each table's content as text lines, so that two files can be compared row by row.
using Content = std::map<std::string, std::set<std::string>>;

class RepairTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(400);
        content = read();
        db.Close();
        whole = daotest::readFile(path);
        pages = whole.size() / kPage;
    }
    Content read() {
        Content found;
        for (int i = 0; i < db.TableDefs().Count(); ++i) {
            const std::string name = db.TableDefs()[i].Name();
            Recordset set = db.OpenRecordset(name, dbOpenSnapshot);
            std::set<std::string>& rows = found[name];
            for (; !set.EOF(); set.MoveNext()) {
                std::string row;
                for (int field = 0; field < set.FieldCount(); ++field) {
                    row += set.Fields(field).Value().asText() + '|';
                }
                rows.insert(row);
            }
        }
        return found;
    }
    static std::size_t rowsIn(const Content& of) {
        std::size_t rows = 0;
        for (const auto& [name, lines] : of) {
            rows += lines.size();
        }
        return rows;
    }
    // What is there after a repair must have been there before: no row made up, none in another's table.
    void expectSubset(const Content& now) const {
        for (const auto& [name, rows] : now) {
            ASSERT_TRUE(content.contains(name)) << name;
            for (const std::string& row : rows) {
                EXPECT_TRUE(content.at(name).contains(row)) << name << ": " << row;
            }
        }
    }
    void breakPage(std::size_t page, char how) const {
        std::vector<char> bytes = whole;
        for (std::size_t i = (page - 1) * kPage; i < page * kPage; ++i) {
            bytes[i] = how == 0 ? '\0' : static_cast<char>(bytes[i] ^ how);
        }
        daotest::writeFile(path, bytes);
    }
    void repairAndOpen() {
        DBEngine::RepairDatabase(path);
        db = openShop(path);
    }

    Content content;
    std::vector<char> whole;
    std::size_t pages = 0;
};

TEST_F(RepairTest, AWholeFileIsNotTouched) {
    const auto time = fs::last_write_time(path);
    DBEngine::RepairDatabase(path);
    EXPECT_FALSE(DBEngine::LastRepair().damaged);
    EXPECT_EQ(daotest::readFile(path), whole);
    EXPECT_EQ(fs::last_write_time(path), time);
}

TEST_F(RepairTest, EveryOnePageMayBreak) {
    std::size_t refused = 0;
    std::size_t lossless = 0;
    for (std::size_t page = 1; page <= pages; ++page) {
        for (const char how : {'\0', '\x55'}) {
            SCOPED_TRACE("page " + std::to_string(page) + (how == 0 ? " zeroed" : " overwritten"));
            breakPage(page, how);
            const std::vector<char> broken = daotest::readFile(path);
            const int number = errorOf([&] { DBEngine::RepairDatabase(path); });
            if (number != 0) {
                EXPECT_EQ(page, 1U);
                EXPECT_EQ(number, errUnrecognisedFormat);  // the salt is gone with it
                EXPECT_EQ(daotest::readFile(path), broken);
                ++refused;
                continue;
            }
            EXPECT_TRUE(DBEngine::LastRepair().damaged);
            db = openShop(path);
            const Content now = read();
            expectSubset(now);
            const std::size_t kept = rowsIn(now);
            EXPECT_EQ(DBEngine::LastRepair().rowsKept, static_cast<std::int64_t>(kept));
            EXPECT_EQ(DBEngine::LastRepair().rowsLost, static_cast<std::int64_t>(rowsIn(content) - kept));
            // One page holds so many rows at most.
            EXPECT_GT(kept + 300, rowsIn(content));
            lossless += kept == rowsIn(content);
            EXPECT_EQ(db.Relations().size(), 4U);
            db.Close();
            DBEngine::RepairDatabase(path);
            EXPECT_FALSE(DBEngine::LastRepair().damaged);
        }
    }
    EXPECT_EQ(refused, 2U);
    EXPECT_GT(lossless, 10U);  // pages of indexes, and pages that only lead to others
    EXPECT_LT(lossless, 2 * pages - 20);
}

TEST_F(RepairTest, ADamagedFirstPageLeavesTheFileUntouched) {
    std::vector<char> bytes = whole;
    for (std::size_t i = 100; i < 200; ++i) {
        bytes[i] = 'x';
    }
    daotest::writeFile(path, bytes);
    EXPECT_EQ(errorOf([&] { openShop(path); }), errCannotOpen);
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path); }), errCannotOpen);
    EXPECT_EQ(daotest::readFile(path), bytes);
}

TEST_F(RepairTest, ATruncatedFileGivesWhatIsLeft) {
    for (const std::size_t left : {pages / 2, pages - 1, std::size_t{20}}) {
        SCOPED_TRACE(left);
        std::vector<char> bytes(whole.begin(),
                                whole.begin() + static_cast<std::ptrdiff_t>(left * kPage + 17));
        daotest::writeFile(path, bytes);
        EXPECT_EQ(errorOf([&] { openShop(path); }), errCannotOpen);
        repairAndOpen();
        EXPECT_TRUE(DBEngine::LastRepair().damaged);
        const Content now = read();
        expectSubset(now);
        EXPECT_EQ(DBEngine::LastRepair().rowsKept, static_cast<std::int64_t>(rowsIn(now)));
        db.Close();
    }
}

TEST_F(RepairTest, ManyBrokenPagesStillGiveTheRest) {
    std::vector<char> bytes = whole;
    for (std::size_t page = 20; page < pages; page += 3) {
        for (std::size_t i = 0; i < 300; ++i) {
            bytes[page * kPage + i] = static_cast<char>(i);
        }
    }
    daotest::writeFile(path, bytes);
    repairAndOpen();
    const Content now = read();
    expectSubset(now);
    EXPECT_GT(rowsIn(now), rowsIn(content) / 3);
    EXPECT_GT(DBEngine::LastRepair().rowsLost, 0);
    EXPECT_FALSE(DBEngine::LastRepair().notes.empty());
}

TEST_F(RepairTest, ARepairedFileWorksOn) {
    // The page that a table begins with.
    for (std::size_t page = 3; page < 20; ++page) {
        breakPage(page, '\x55');
        DBEngine::RepairDatabase(path);
        db = openShop(path);
        Recordset set = db.OpenRecordset("Customers");
        set.AddNew();
        EXPECT_GT(set["CustID"].asLong(), 400) << page;
        set.Fields("Surname") = Value("Posle popravke");
        set.Update();
        EXPECT_EQ(errorOf([&] { db.Execute("INSERT INTO Computers (CustID) VALUES (9999)"); }),
                  errRelatedRecordRequired);
        EXPECT_LE(db.QueryDefs().Count(), 1);
        set.Close();
        db.Close();
    }
}

TEST_F(RepairTest, OwnWindowsGoOnWithTheRepairedFile) {
    breakPage(pages - 5, '\x55');
    db = openShop(path);
    Recordset set = db.OpenRecordset("Grupe");
    DBEngine::RepairDatabase(path);
    EXPECT_TRUE(DBEngine::LastRepair().damaged);
    EXPECT_EQ(set["Grupa"].asText(), "Monitori");
    set.Edit();
    set.Fields("Grupa") = Value("Ekrani");
    set.Update();
    db.Close();
    db = openShop(path);
    EXPECT_EQ(db.OpenRecordset("Grupe")["Grupa"].asText(), "Ekrani");
}

TEST_F(RepairTest, WrongCallsAreRefused) {
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(folder.file("No.mdb")); }), errFileNotFound);
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(folder.path()); }), errPathInvalid);
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path, ";pwd=x"); }), errInvalidPassword);
    daotest::writeFile(folder.file("Text.mdb"), std::vector<char>(9000, 't'));
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(folder.file("Text.mdb")); }), errUnrecognisedFormat);
}

}  // namespace
