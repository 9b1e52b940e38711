// Joins that do nothing but follow numbers, as the filters do: from the services to their computers and on to
// the clients. The same selection with a text of the outer tables is an ordinary join, and gives the same
// rows.
#include <string>
#include <vector>

#include "platform/dao/dao_shop.h"

namespace {

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

using Rows = std::vector<std::string>;

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
