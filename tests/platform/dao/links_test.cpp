// Joins that do nothing but follow numbers, as the filters do: from the services to their computers and on to
// the clients. The same selection with a text of the outer tables is an ordinary join, and gives the same
// rows.
#include <sqlcipher/sqlite3.h>

#include <atomic>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "platform/dao/breaking_off.h"
#include "platform/dao/dao_shop.h"
#include "platform/dao/failure.h"
#include "platform/dao/sqlite/connection.h"
#include "platform/dao/sqlite/table_halves.h"

namespace {

using Rows = std::vector<std::string>;

// Three lists that nothing ties to each other, so that a number may lead nowhere.
class LinksTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        db = daotest::createEmptyShop(path);
        append("Owners", {{"OwnerID", dao::dbLong, 0, true}, {"Town", dao::dbText, 20}});
        append("Things",
               {{"ThingID", dao::dbLong, 0, true}, {"OwnerID", dao::dbLong}, {"Name", dao::dbText, 20}});
        append("Jobs", {{"JobID", dao::dbLong, 0, true},
                        {"ThingID", dao::dbLong},
                        {"Price", dao::dbCurrency},
                        {"Note", dao::dbText, 20}});
        db.CreateIndex("Things",
                       "OwnerID");  // which lists the things in another order than that of their keys
    }

    void append(const std::string& name, const std::vector<dao::FieldDef>& fields) {
        dao::TableDef table = db.CreateTableDef(name);
        for (const dao::FieldDef& field : fields) {
            table.Append(field);
        }
        db.TableDefs().Append(table);
    }
    void add(const std::string& row) { db.Execute("INSERT INTO " + row); }
    void addOwner(int id) { add("Owners (OwnerID, Town) VALUES (" + std::to_string(id) + ", 'Nis')"); }
    void addThing(int id, const std::string& owner) {
        add("Things (ThingID, OwnerID, Name) VALUES (" + std::to_string(id) + ", " + owner + ", 'PC')");
    }
    void addJob(const std::string& thing, int price, const std::string& note = "NULL") {
        add("Jobs (ThingID, Price, Note) VALUES (" + thing + ", " + std::to_string(price) + ", " + note +
            ")");
    }

    // Owner, thing and job of each row, in the set's order.
    std::vector<std::string> rows(const std::string& columns, const std::string& where) {
        dao::Recordset set = db.OpenRecordset(
            "SELECT Owners.OwnerID, Things.ThingID, Jobs.JobID" + columns +
                " FROM Owners LEFT JOIN (Things LEFT JOIN Jobs ON Things.ThingID = Jobs.ThingID) "
                "ON Owners.OwnerID = Things.OwnerID WHERE " +
                where,
            dao::dbOpenSnapshot);
        std::vector<std::string> found;
        for (; !set.EOF(); set.MoveNext()) {
            std::string row;
            for (int i = 0; i < 3; ++i) {
                row += set.Fields(i).Value().asText() + (i < 2 ? "-" : "");
            }
            found.push_back(row);
        }
        return found;
    }
    std::vector<std::string> followed(const std::string& where) { return rows("", where); }
    std::vector<std::string> joined(const std::string& where) { return rows(", Owners.Town", where); }
};

// Files are reached through this, and it counts those that are opened.
class Doorkeeper {
 public:
    Doorkeeper() {
        sqlite3_vfs_register(&layer(), 0);
        dao::driver::setFileLayer("doorkeeper");
    }
    ~Doorkeeper() {
        dao::driver::setFileLayer({});
        opened = 0;
        isShut = false;
    }
    Doorkeeper(const Doorkeeper&) = delete;
    Doorkeeper& operator=(const Doorkeeper&) = delete;

    static inline int opened = 0;       // databases
    static inline bool isShut = false;  // to more of them

 private:
    static int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
        file->pMethods = nullptr;
        const bool isDatabase = (flags & SQLITE_OPEN_MAIN_DB) != 0;
        if (isDatabase && isShut) {
            return SQLITE_CANTOPEN;
        }
        opened += isDatabase ? 1 : 0;
        sqlite3_vfs* const usual = sqlite3_vfs_find(nullptr);
        return usual->xOpen(usual, name, file, flags, outFlags);
    }
    static sqlite3_vfs& layer() {
        static sqlite3_vfs ours = [] {
            sqlite3_initialize();
            sqlite3_vfs made = *sqlite3_vfs_find(nullptr);
            made.zName = "doorkeeper";
            made.xOpen = open;
            return made;
        }();
        return ours;
    }
};

// Every file is large here.
class ReadByTwoTest : public LinksTest {
 protected:
    void SetUp() override {
        LinksTest::SetUp();
        dao::driver::readByTwoFrom() = 0;
    }
    void TearDown() override {
        dao::driver::readByTwoFrom() = before_;
        LinksTest::TearDown();
    }
    Rows readAlone(const std::string& columns, const std::string& where) {
        dao::driver::readByTwoFrom() = std::numeric_limits<std::int64_t>::max();
        const Rows found = rows(columns, where);
        dao::driver::readByTwoFrom() = 0;
        return found;
    }
    // Jobs up to that number, on things of two owners.
    void addJobs(int last) {
        addOwner(1);
        addOwner(2);
        for (int thing = 1; thing <= 5; ++thing) {
            addThing(thing, std::to_string(1 + thing % 2));
        }
        for (int job = 1; job <= last; ++job) {
            addJob(std::to_string(1 + job % 5), job, "'note " + std::to_string(job) + "'");
        }
    }

 private:
    const std::int64_t before_ = dao::driver::readByTwoFrom();
    const Doorkeeper doorkeeper_;
};

}  // namespace

TEST_F(LinksTest, NumbersLeadToTheirRows) {
    addOwner(7);
    addOwner(9);
    addThing(30, "9");
    addThing(31, "7");
    addThing(32, "9");
    for (const char* thing : {"32", "30", "31", "30"}) {
        addJob(thing, 100);
    }
    EXPECT_EQ(followed("Jobs.Price>0"), (Rows{"7-31-3", "9-30-2", "9-30-4", "9-32-1"}));
    EXPECT_EQ(followed("Jobs.JobID=2"), (Rows{"9-30-2"}));
    EXPECT_EQ(followed("Jobs.ThingID=30"), (Rows{"9-30-2", "9-30-4"}));
}

TEST_F(LinksTest, ANumberThatLeadsNowhereGivesNoRow) {
    addOwner(7);
    addThing(30, "7");
    addThing(31, "8");
    addThing(32, "NULL");
    for (const char* thing : {"30", "31", "32", "33", "NULL", "-1", "2147483647"}) {
        addJob(thing, 100);
    }
    EXPECT_EQ(followed("Jobs.Price>0"), (Rows{"7-30-1"}));
    EXPECT_EQ(joined("Jobs.Price>0"), (Rows{"7-30-1"}));
}

// The first few are looked up one by one, and all are read behind them.
TEST_F(LinksTest, ManyNumbersGiveTheRowsOfAnOrdinaryJoin) {
    constexpr int kThings = 150;
    for (int owner = 1; owner <= kThings; owner += 3) {
        addOwner(owner);
    }
    for (int thing = 1; thing <= kThings; ++thing) {
        if (thing % 5 != 0) {
            addThing(thing, thing % 7 == 0 ? "NULL" : std::to_string(kThings - thing));
        }
        addJob(std::to_string(thing), thing);
    }
    const Rows all = joined("Jobs.Price>0");
    EXPECT_GT(all.size(), 30U);
    EXPECT_LT(all.size(), 50U);
    EXPECT_EQ(followed("Jobs.Price>0"), all);
    EXPECT_EQ(followed("Jobs.Price>140"), joined("Jobs.Price>140"));
    EXPECT_EQ(followed("Jobs.Price>1000"), Rows{});
}

TEST_F(LinksTest, NumbersMayLieFarApart) {
    constexpr int kThings = 100;
    constexpr int kApart = 20'000'000;
    addOwner(1);
    addOwner(2'000'000'001);
    for (int thing = 1; thing <= kThings; ++thing) {
        addThing(thing * kApart, thing % 2 == 0 ? "1" : thing < 90 ? "2000000001" : "5");
        addJob(std::to_string(thing * kApart), 5);
        addJob(std::to_string(thing * kApart - 1), 5);
    }
    const Rows all = joined("Jobs.Price>0");
    EXPECT_EQ(all.size(), static_cast<std::size_t>(kThings - 5));
    EXPECT_EQ(followed("Jobs.Price>0"), all);
}

// The jobs are found in the order of their numbers, and stand in that of their owners and things.
TEST_F(LinksTest, WhatAJobHoldsStandsBesideItsNumbers) {
    addOwner(1);
    addOwner(2);
    addThing(10, "2");
    addThing(11, "1");
    addThing(12, "2");
    addJob("12", 5, "'last'");
    addJob("10", 6);
    addJob("12", 7, "'very last'");
    addJob("11", 8, "'first'");
    addJob("13", 9, "'nobody''s'");
    dao::Recordset set = db.OpenRecordset(
        "SELECT Jobs.Note, Things.ThingID, Jobs.Price/2 AS Half, Owners.OwnerID FROM (Owners INNER JOIN "
        "Things ON "
        "Owners.OwnerID = Things.OwnerID) INNER JOIN Jobs ON Things.ThingID = Jobs.ThingID WHERE "
        "Jobs.Price>0",
        dao::dbOpenSnapshot);
    std::vector<std::string> found;
    for (; !set.EOF(); set.MoveNext()) {
        found.push_back((set["Note"].isNull() ? "-" : set["Note"].asText()) + " " + set["ThingID"].asText() +
                        " " + set["Half"].asText() + " " + set["OwnerID"].asText());
    }
    EXPECT_EQ(found, (Rows{"first 11 4 1", "- 10 3 2", "last 12 2.5 2", "very last 12 3.5 2"}));
}

// There the rows are a table among others, and stand in no order of their own.
TEST_F(LinksTest, AStoredQueryGivesTheSameRowsToAnother) {
    addOwner(1);
    addOwner(2);
    addThing(10, "2");
    addThing(11, "1");
    addThing(12, "5");
    for (const char* thing : {"10", "11", "12", "10"}) {
        addJob(thing, 5);
    }
    db.CreateQueryDef("Done",
                      "SELECT Owners.OwnerID, Things.ThingID, Jobs.JobID FROM (Owners INNER JOIN Things ON "
                      "Owners.OwnerID = Things.OwnerID) INNER JOIN Jobs ON Things.ThingID = Jobs.ThingID "
                      "WHERE Jobs.Price>0");
    dao::Recordset set = db.OpenRecordset(
        "SELECT Done.JobID, Owners.Town FROM Done LEFT JOIN Owners ON Done.OwnerID = "
        "Owners.OwnerID ORDER BY Done.JobID DESC",
        dao::dbOpenSnapshot);
    Rows found;
    for (; !set.EOF(); set.MoveNext()) {
        found.push_back(set["JobID"].asText() + set["Town"].asText());
    }
    EXPECT_EQ(found, (Rows{"4Nis", "2Nis", "1Nis"}));
}

// What is written between two looks is seen by the second.
TEST_F(LinksTest, EachOpeningReadsTheNumbersAnew) {
    addOwner(1);
    addOwner(2);
    addThing(1, "1");
    addJob("1", 5);
    EXPECT_EQ(followed("Jobs.Price>0"), Rows{"1-1-1"});
    db.Execute("UPDATE Things SET OwnerID=2 WHERE ThingID=1");
    EXPECT_EQ(followed("Jobs.Price>0"), Rows{"2-1-1"});
    db.Execute("DELETE FROM Owners WHERE OwnerID=2");
    EXPECT_EQ(followed("Jobs.Price>0"), Rows{});
}

// A dynaset lists the rows by their numbers and reads each with the ordinary join.
TEST_F(LinksTest, ADynasetReadsAndSearchesItsRows) {
    addOwner(1);
    addThing(3, "1");
    addThing(4, "1");
    for (const char* thing : {"3", "4", "4"}) {
        addJob(thing, 10);
    }
    dao::Recordset set = db.OpenRecordset(
        "SELECT Owners.OwnerID, Things.ThingID, Jobs.JobID, Jobs.Price FROM (Owners INNER JOIN Things ON "
        "Owners.OwnerID = Things.OwnerID) INNER JOIN Jobs ON Things.ThingID = Jobs.ThingID WHERE "
        "Jobs.Price>0");
    set.MoveLast();
    EXPECT_EQ(set.RecordCount(), 3);
    EXPECT_EQ(set["JobID"].asLong(), 3);
    set.FindFirst("ThingID=4 AND OwnerID=1");
    ASSERT_FALSE(set.NoMatch());
    EXPECT_EQ(set["JobID"].asLong(), 2);
    set.Edit();
    set.Fields("Price").setValue(dao::Currency::fromScaled(250000));
    set.Update();
    EXPECT_EQ(set["Price"].asCurrency(), dao::Currency::fromScaled(250000));
    set.FindFirst("OwnerID=2");
    EXPECT_TRUE(set.NoMatch());
}

TEST_F(ReadByTwoTest, ALargeTableGivesTheSameRows) {
    addJobs(300);
    add("Jobs (JobID, ThingID, Price) VALUES (5000, 3, 7)");
    db.Execute("DELETE FROM Jobs WHERE JobID>100 AND JobID<150");
    for (const std::string where : {"Jobs.Price>0", "Jobs.Price>250", "Jobs.JobID=300", "Jobs.Price>9999"}) {
        for (const std::string columns : {", Jobs.Note", ", Jobs.Price, Jobs.Note"}) {
            const Rows alone = readAlone(columns, where);
            Doorkeeper::opened = 0;
            EXPECT_EQ(rows(columns, where), alone) << where;
            EXPECT_EQ(Doorkeeper::opened, 1) << "by somebody beside, " << where;
        }
    }
    EXPECT_EQ(followed("Jobs.Price>0").size(), 252U);
}

TEST_F(ReadByTwoTest, WhatASnapshotHoldsIsInOrderToo) {
    addJobs(40);
    dao::Recordset set = db.OpenRecordset(
        "SELECT Jobs.Note, Jobs.JobID FROM Things INNER JOIN Jobs ON Things.ThingID = Jobs.ThingID WHERE "
        "Jobs.Price>0",
        dao::dbOpenSnapshot);
    int rows = 0;
    for (; !set.EOF(); set.MoveNext(), ++rows) {
        EXPECT_EQ(set["Note"].asText(), "note " + set["JobID"].asText());
    }
    EXPECT_EQ(rows, 40);
}

TEST_F(ReadByTwoTest, FewRowsOrNone) {
    EXPECT_EQ(followed("Jobs.Price>0"), Rows{});
    addJobs(1);
    EXPECT_EQ(followed("Jobs.Price>0"), Rows{"1-2-1"});
    addJob("1", 5);
    EXPECT_EQ(followed("Jobs.Price>0"), (Rows{"1-2-1", "2-1-2"}));
    add("Jobs (JobID, ThingID, Price) VALUES (-2147483647, 3, 7)");
    add("Jobs (JobID, ThingID, Price) VALUES (2147483647, 3, 7)");
    EXPECT_EQ(followed("Jobs.Price=7"), (Rows{"2-3--2147483647", "2-3-2147483647"}));
}

TEST_F(ReadByTwoTest, WhatThisDeskHasNotYetWrittenIsThere) {
    addJobs(4);
    dao::DBEngine::BeginTrans();
    addJob("1", 9);
    EXPECT_EQ(followed("Jobs.Price>0").size(), 5U);
    dao::DBEngine::Rollback();
    EXPECT_EQ(followed("Jobs.Price>0").size(), 4U);
}

TEST_F(ReadByTwoTest, WhoeverCannotHaveASecondOneReadsAlone) {
    addJobs(50);
    const Rows all = followed("Jobs.Price>0");
    EXPECT_THROW(db.Execute("nonsense"), dao::Error);
    const std::vector<dao::ErrorEntry> told = dao::DBEngine::Errors();
    Doorkeeper::isShut = true;
    EXPECT_EQ(followed("Jobs.Price>0"), all);
    ASSERT_EQ(dao::DBEngine::Errors().size(), told.size());
    EXPECT_EQ(dao::DBEngine::Errors().front().Description, told.front().Description);
}

// Somebody has put the copy of yesterday in its place.
TEST_F(ReadByTwoTest, AFileThatIsNoLongerInItsPlaceIsReadAlone) {
    addJobs(5);
    const std::string copy = folder.file("Yesterday.mdb");
    std::filesystem::copy_file(path, copy);
    addJob("1", 5);
    const Rows all = followed("Jobs.Price>0");
    EXPECT_EQ(all.size(), 6U);
    std::filesystem::rename(path, folder.file("Moved.mdb"));
    std::filesystem::rename(copy, path);
    EXPECT_EQ(followed("Jobs.Price>0"), all);
}

TEST_F(ReadByTwoTest, NumbersThatOnlyOneConnectionKnows) {
    addJobs(50);
    std::string some = "Jobs.Price>0 AND (Jobs.JobID=1";
    for (int job = 3; job <= 41; job += 2) {
        some += " OR Jobs.JobID=" + std::to_string(job);
    }
    EXPECT_EQ(followed(some + ")").size(), 21U);
}

TEST_F(ReadByTwoTest, TheOtherOneIsLeftTogetherWithTheWork) {
    const std::atomic<bool> left{true};
    const dao::Leavable work(left);
    bool seen = false;
    dao::driver::ReadBeside beside([&] { seen = dao::isLeft(); });
    EXPECT_TRUE(beside.isDone());
    EXPECT_TRUE(seen);
}

TEST_F(ReadByTwoTest, WhatTheOtherOneFailsWithIsNobodyElses) {
    EXPECT_THROW(db.Execute("nonsense"), dao::Error);
    const int before = dao::DBEngine::Errors().front().Number;
    dao::driver::ReadBeside beside([] { dao::fail(dao::errDiskIo); });
    EXPECT_FALSE(beside.isDone());
    EXPECT_EQ(dao::DBEngine::Errors().front().Number, before);
}
