// Stored queries that name many numbers, as the filters write them for each stage: the rows are those of the
// numbers, whichever way is taken to them.
#include <algorithm>
#include <string>
#include <vector>

#include "platform/dao/dao_shop.h"

namespace {

constexpr int kClients = 900;

class NumberSetTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(kClients);
    }

    // Every number `step` apart, from the last to the first, and each twice.
    static std::string chain(const std::string& field, int first, int last, int step) {
        std::string text;
        for (int number = last; number >= first; number -= step) {
            const std::string term = field + "=" + std::to_string(number);
            text += (text.empty() ? "" : " OR ") + term + " OR " + term;
        }
        return text;
    }
    void store(const std::string& name, const std::string& table, const std::string& where) {
        db.CreateQueryDef(name, "SELECT * FROM " + table + " WHERE " + where + ";");
    }
    std::vector<int> keysOf(const std::string& statement, const std::string& field) {
        return numbers(db.OpenRecordset(statement), field);
    }
    // As a dynaset gives them.
    std::vector<int> customers() { return keysOf("SELECT * FROM Chosen", "CustID"); }
    // As a snapshot gives them, by a condition that no set stands in.
    std::vector<int> customersAmong(int first, int last, int step) {
        std::vector<int> all =
            numbers(db.OpenRecordset("SELECT * FROM Customers", dao::dbOpenSnapshot), "CustID");
        std::erase_if(all, [&](int id) { return id < first || id > last || (last - id) % step != 0; });
        return all;
    }
};

}  // namespace

TEST_F(NumberSetTest, NumbersThatTheTableHasNoRowsOfGiveNone) {
    store("Chosen", "Customers", chain("CustID", -200, kClients + 200, 3));
    const std::vector<int> found = customers();
    EXPECT_EQ(found.size(), 300U);
    EXPECT_EQ(found, customersAmong(-200, kClients + 200, 3));
}

TEST_F(NumberSetTest, NumbersAllOutsideOfTheTableGiveNone) {
    store("Chosen", "Customers", chain("CustID", kClients + 1, kClients + 500, 2));
    EXPECT_EQ(customers(), std::vector<int>{});
    db.Execute("DELETE * FROM Customers");
    EXPECT_EQ(customers(), std::vector<int>{});
}

// The shop has taken some of its clients out: many numbers of them, and few.
TEST_F(NumberSetTest, RowsThatAreGoneAreLeftOut) {
    for (const char* gone : {"CustID=2", "CustID BETWEEN 400 AND 421", "CustID=900", "CustID=1"}) {
        db.Execute(std::string("DELETE * FROM Customers WHERE ") + gone);
    }
    store("Chosen", "Customers", chain("CustID", 0, kClients, 2));
    EXPECT_EQ(customers(), customersAmong(0, kClients, 2));
    EXPECT_EQ(customers().size(), 437U);
    db.QueryDefs()["Chosen"].setSQL("SELECT * FROM Customers WHERE " + chain("CustID", 0, kClients, 12));
    EXPECT_EQ(customers(), customersAmong(0, kClients, 12));
    EXPECT_EQ(customers().size(), 72U);
}

// The computers of one client among those that a filter has found.
TEST_F(NumberSetTest, OneValueOfAFieldNarrowsTheSet) {
    db.Execute("UPDATE Computers SET CustID=7 WHERE MachineID IN (20, 4, 500, 501, 899)");
    store("Chosen", "Computers", chain("MachineID", 0, kClients, 2));
    const std::vector<int> expected = {4, 20, 500};
    EXPECT_EQ(keysOf("SELECT * FROM Chosen WHERE CustID=7", "MachineID"), expected);
    EXPECT_EQ(keysOf("SELECT * FROM Chosen WHERE 7=CustID", "MachineID"), expected);
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT MachineID FROM Chosen WHERE CustID=7", dao::dbOpenSnapshot),
                      "MachineID"),
              expected);
    EXPECT_EQ(keysOf("SELECT * FROM Chosen WHERE MachineID=21", "MachineID"), std::vector<int>{});
    EXPECT_EQ(keysOf("SELECT * FROM Chosen WHERE MachineID=20", "MachineID"), std::vector<int>{20});
    EXPECT_EQ(keysOf("SELECT * FROM Chosen WHERE CustID=7 ORDER BY MachineID DESC", "MachineID"),
              (std::vector<int>{500, 20, 4}));
}

// A set beside something else that is asked for.
TEST_F(NumberSetTest, AnotherConditionNarrowsTheSet) {
    store("Chosen", "Customers", "(" + chain("CustID", 1, kClients, 2) + ") AND CustID<=6");
    EXPECT_EQ(customers(), customersAmong(2, 6, 2));
}

TEST_F(NumberSetTest, WhatIsAddedAndDeletedIsSeenByTheNextOpening) {
    store("Chosen", "Customers", chain("CustID", kClients - 300, kClients + 1, 1));
    EXPECT_EQ(customers().size(), 301U);
    dao::Recordset all = db.OpenRecordset("Customers");
    all.AddNew();
    all.Fields("Surname").setValue(std::string("Nov"));
    all.Update();
    EXPECT_EQ(customers().back(), kClients + 1);
    db.Execute("DELETE * FROM Customers WHERE CustID=700");
    EXPECT_EQ(customers().size(), 301U);
}

// Sets that leave few numbers out, one here and many there, and rows that are gone in their turn.
TEST_F(NumberSetTest, RowsOfCloseNumbersAreThoseOfTheSet) {
    std::string terms;
    std::vector<int> expected;
    for (int id = 3; id <= kClients - 5; ++id) {
        if (id % 5 != 0 && (id < 200 || id > 230) && (id < 600 || id > 607)) {
            terms += (terms.empty() ? "" : " OR ") + std::string("CustID=") + std::to_string(id);
            expected.push_back(id);
        }
    }
    store("Chosen", "Customers", terms);
    const std::string columns = "SELECT CustID, Surname FROM Chosen";
    EXPECT_EQ(numbers(db.OpenRecordset(columns, dao::dbOpenSnapshot), "CustID"), expected);
    EXPECT_EQ(
        numbers(db.OpenRecordset(columns + " WHERE CustID > 100 ORDER BY CustID DESC", dao::dbOpenSnapshot),
                "CustID")
            .front(),
        expected.back());
    db.Execute("DELETE * FROM Customers WHERE CustID IN (3, 404, 231, 895)");
    std::erase_if(expected, [](int id) { return id == 3 || id == 404 || id == 231 || id == 895; });
    EXPECT_EQ(numbers(db.OpenRecordset(columns, dao::dbOpenSnapshot), "CustID"), expected);
}

// From the last number to the first, as another order asks for them: nothing is found twice or left out.
TEST_F(NumberSetTest, RowsOfCloseNumbersComeInAnyOrder) {
    store("Chosen", "Customers", chain("CustID", 2, kClients, 2) + " OR CustID=1");
    std::vector<int> expected = customersAmong(2, kClients, 2);
    expected.insert(expected.begin(), 1);
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(numbers(db.OpenRecordset("SELECT CustID FROM Chosen ORDER BY CustID DESC", dao::dbOpenSnapshot),
                      "CustID"),
              expected);
}
