#include <filesystem>
#include <map>
#include <set>

#include "platform/dao/dao_shop.h"
#include "platform/dao/shop_content.h"
#include "platform/dao/sqlite/file_place.h"
#include "platform/dao/sqlite/pages.h"

using namespace dao;
using daotest::Content;
using daotest::errorOf;
using daotest::openShop;
using daotest::rowsIn;
namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPage = 4096;

class RepairTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(400);
        db.setForm(7);
        content = read();
        db.Close();
        whole = daotest::readFile(path);
        pages = whole.size() / kPage;
    }
    Content read() { return daotest::contentOf(db); }
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
    // Pages of the trees of tables that hold no rows themselves.
    static std::vector<std::size_t> pagesThatLead(const std::string& file) {
        const auto place = std::make_shared<FilePlace>(file, "lozinka", saltOf(file));
        driver::PageFile pages(driver::pagesOfClosed(file), place->request(false).key);
        std::vector<std::size_t> found;
        for (driver::PageNumber page = 2; page <= pages.size(); ++page) {
            if (pages.page(page).front() == '\x5') {
                found.push_back(page);
            }
        }
        return found;
    }
    // What is left of a file whose tables have lost the pages that lead to their rows. It is open in `db`
    // then.
    Content repairWithoutLeads(const std::string& file) {
        std::vector<char> bytes = daotest::readFile(file);
        for (const std::size_t page : pagesThatLead(file)) {
            bytes[(page - 1) * kPage + 100] ^= 1;
        }
        daotest::writeFile(file, bytes);
        DBEngine::RepairDatabase(file);
        db = openShop(file);
        Content now = read();
        expectSubset(now);
        return now;
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

// The first page leads to all others; the file tells elsewhere, too, what stands on it.
TEST_F(RepairTest, AFileWhoseFirstPageIsHurtKeepsEveryRow) {
    for (const std::size_t from : {std::size_t{16}, std::size_t{100}, std::size_t{4080}}) {
        SCOPED_TRACE(from);
        std::vector<char> bytes = whole;
        for (std::size_t i = from; i < kPage; ++i) {
            bytes[i] = static_cast<char>(bytes[i] ^ '\x55');
        }
        daotest::writeFile(path, bytes);
        EXPECT_EQ(errorOf([&] { openShop(path); }), errCannotOpen);
        repairAndOpen();
        EXPECT_EQ(read(), content);
        EXPECT_EQ(DBEngine::LastRepair().rowsLost, 0);
        EXPECT_EQ(db.Relations().size(), 4U);
        EXPECT_EQ(db.QueryDefs().Count(), 1);
        EXPECT_EQ(db.Form(), 7);
        db.Close();
        DBEngine::RepairDatabase(path);
        EXPECT_FALSE(DBEngine::LastRepair().damaged);
    }
}

// Both that and one of the two places where it is told again.
TEST_F(RepairTest, TheFileTellsTwiceWhatStandsOnItsFirstPage) {
    for (std::size_t page = 2; page <= pages; ++page) {
        SCOPED_TRACE(page);
        std::vector<char> bytes = whole;
        for (const std::size_t hurt : {std::size_t{1}, page}) {
            for (std::size_t i = (hurt - 1) * kPage + 16; i < hurt * kPage; ++i) {
                bytes[i] = 'x';
            }
        }
        daotest::writeFile(path, bytes);
        repairAndOpen();
        const Content now = read();
        expectSubset(now);
        EXPECT_EQ(now.size(), content.size());
        EXPECT_GT(rowsIn(now) + 300, rowsIn(content));
        db.Close();
    }
}

TEST_F(RepairTest, ACopyOfTheFileTellsTheSaltThatIsGone) {
    const std::string copy = folder.file("Shop.bkp");
    daotest::writeFile(copy, whole);
    std::vector<char> bytes = whole;
    std::fill(bytes.begin(), bytes.begin() + 16, '\0');
    daotest::writeFile(path, bytes);
    EXPECT_EQ(errorOf([&] { openShop(path); }), errUnrecognisedFormat);
    daotest::writeFile(folder.file("Text"), std::vector<char>(9000, 't'));
    daotest::createShop(folder.file("Other.mdb"));  // under the same password
    for (const std::string& other :
         {std::string(), folder.file("Text"), folder.file("No"), folder.file("Other.mdb")}) {
        EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path, daotest::kConnect, other); }),
                  errUnrecognisedFormat);
    }
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path, ";pwd=x", copy); }), errUnrecognisedFormat);
    EXPECT_EQ(daotest::readFile(path), bytes);
    DBEngine::RepairDatabase(path, daotest::kConnect, copy);
    EXPECT_TRUE(DBEngine::LastRepair().damaged);
    db = openShop(path);
    EXPECT_EQ(read(), content);
}

TEST_F(RepairTest, ANoteOfTheWorkstationTellsTheSaltThatIsGone) {
    const std::string notes = folder.file("notes");
    DBEngine::setNotesFile(notes);
    openShop(path).Close();
    std::vector<char> bytes = whole;
    std::fill(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(kPage), '\x7');
    daotest::writeFile(path, bytes);
    DBEngine::RepairDatabase(path, daotest::kConnect);
    db = openShop(path);
    EXPECT_EQ(read(), content);
    DBEngine::setNotesFile({});
    EXPECT_EQ(fs::status(notes).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(RepairTest, TheHurtFileIsKeptAndTheLossToldByTable) {
    const std::string kept = folder.file("Shop.damaged.mdb");
    for (const std::size_t page : {pages - 5, pages - 6}) {
        breakPage(page, '\x55');
        const std::vector<char> broken = daotest::readFile(path);
        DBEngine::RepairDatabase(path);
        EXPECT_EQ(daotest::readFile(kept), broken);
        db = openShop(path);
        const Content now = read();
        db.Close();
        const RepairReport& report = DBEngine::LastRepair();
        ASSERT_EQ(report.tables.size(), content.size());
        std::int64_t lost = 0;
        for (const RepairReport::TableCount& table : report.tables) {
            EXPECT_EQ(table.kept, static_cast<std::int64_t>(now.at(table.table).size())) << table.table;
            EXPECT_EQ(table.kept + table.lost, static_cast<std::int64_t>(content.at(table.table).size()))
                << table.table;
            lost += table.lost;
        }
        EXPECT_EQ(lost, report.rowsLost);
    }
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

// Two tables of one shape, and nothing that leads to their pages any more: whose they are an index tells, if
// there is one. Without, they are lost; never does a row change its table.
TEST_F(RepairTest, RowsWithoutALeadGoToTheirOwnTableOrNowhere) {
    for (const bool indexed : {true, false}) {
        SCOPED_TRACE(indexed);
        const std::string twins = folder.file(indexed ? "Indexed.mdb" : "Plain.mdb");
        db = DBEngine::CreateDatabase(twins, daotest::kConnect);
        for (const char* name : {"Grupe", "Proizvodjaci"}) {
            TableDef table = db.CreateTableDef(name);
            table.Append({"ID", dbLong, 0, true});
            table.Append({"Broj", dbLong});
            table.Append({"Naziv", dbText, 100});
            db.TableDefs().Append(table);
            if (indexed) {
                db.CreateIndex(name, "Broj");
            }
            for (int i = 1; i <= 400; ++i) {
                db.Execute(std::string("INSERT INTO ") + name + " (Broj, Naziv) VALUES (" +
                           std::to_string(name[0] == 'G' ? i : 1000 - i) + ", '" + name + "')");
            }
        }
        content = read();
        db.Close();
        const Content now = repairWithoutLeads(twins);
        EXPECT_EQ(rowsIn(now), indexed ? 800U : 0U);
        EXPECT_EQ(DBEngine::LastRepair().rowsLost, indexed ? 0 : 800);
        db.Close();
    }
}

// A number that a table has never given tells, too, that a row is none of its own.
TEST_F(RepairTest, RowsWithoutALeadAreNotTakenForThoseOfATableThatNeverGaveTheirNumbers) {
    const std::string twins = folder.file("Counted.mdb");
    db = DBEngine::CreateDatabase(twins, daotest::kConnect);
    for (const auto& [name, count] : {std::pair{"Grupe", 800}, std::pair{"Proizvodjaci", 400}}) {
        TableDef table = db.CreateTableDef(name);
        table.Append({"ID", dbLong, 0, true});
        table.Append({"Naziv", dbText, 100});
        db.TableDefs().Append(table);
        for (int i = 1; i <= count; ++i) {
            db.Execute(std::string("INSERT INTO ") + name + " (Naziv) VALUES ('" + name + "')");
        }
    }
    content = read();
    db.Close();
    const Content now = repairWithoutLeads(twins);
    EXPECT_GE(now.at("Grupe").size(), 400U);
    EXPECT_EQ(now.at("Proizvodjaci").size(), 0U);
    EXPECT_EQ(DBEngine::LastRepair().rowsLost, static_cast<std::int64_t>(1200 - rowsIn(now)));
    db.Close();
}

// An earlier release copies the rows that tell of the file's tables into a compacted one, where they are
// wrong.
TEST_F(RepairTest, WhatIsToldOfAnotherFileIsNotBelieved) {
    {
        const auto place = std::make_shared<FilePlace>(path, "lozinka", saltOf(path));
        driver::SqliteStore store(place->request(true));
        for (const char* copy : {"dao_layout_1", "dao_layout_2"}) {
            store.connection().execute(std::string("UPDATE ") + copy +
                                       " SET mark='what this file holds, form 1, 00', number=number+1");
        }
    }
    std::vector<char> bytes = daotest::readFile(path);
    std::fill(bytes.begin() + 16, bytes.begin() + static_cast<std::ptrdiff_t>(kPage), 'x');
    daotest::writeFile(path, bytes);
    const int number = errorOf([&] { DBEngine::RepairDatabase(path); });
    if (number == 0) {  // by what is left of the first page's own list
        db = openShop(path);
        EXPECT_EQ(read(), content);
    } else {
        EXPECT_EQ(number, errCannotOpen);
    }
}

TEST_F(RepairTest, WrongCallsAreRefused) {
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(folder.file("No.mdb")); }), errFileNotFound);
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(folder.path()); }), errPathInvalid);
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path, ";pwd=x"); }), errInvalidPassword);
    daotest::writeFile(folder.file("Text.mdb"), std::vector<char>(9000, 't'));
    EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(folder.file("Text.mdb")); }), errUnrecognisedFormat);
}

}  // namespace
