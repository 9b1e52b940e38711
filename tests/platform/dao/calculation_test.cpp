// Comparisons of what is reckoned from several fields, as the filters ask for what is still owed. A column of
// the same reckoning is the store's own arithmetic: both must come to the same.
#include <sqlcipher/sqlite3.h>

#include <iomanip>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "platform/dao/dao_shop.h"
#include "platform/dao/sqlite/connection.h"

namespace {

const std::string kOwed = "(1-Discount/100)*Price*(1+(GST/100))-Paid";

class CalculationTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        db = daotest::createEmptyShop(path);
        dao::TableDef table = db.CreateTableDef("Jobs");
        const std::vector<dao::FieldDef> fields = {{"ID", dao::dbLong, 0, true}, {"Discount", dao::dbSingle},
                                                   {"Price", dao::dbCurrency},   {"GST", dao::dbSingle},
                                                   {"Paid", dao::dbCurrency},    {"Hours", dao::dbLong},
                                                   {"Started", dao::dbDate}};
        for (const dao::FieldDef& field : fields) {
            table.Append(field);
        }
        db.TableDefs().Append(table);
    }

    void add(const std::string& discount, const std::string& price, const std::string& gst,
             const std::string& paid, int hours) {
        db.Execute("INSERT INTO Jobs (Discount, Price, GST, Paid, Hours, Started) VALUES (" + discount +
                   ", " + price + ", " + gst + ", " + paid + ", " + std::to_string(hours) +
                   ", #3/4/2020 5:06:07#)");
    }
    void addMany() {
        for (int i = 1; i <= 60; ++i) {
            add(std::to_string(i % 13) + ".7", std::to_string(i * 37) + "." + std::to_string(i),
                std::to_string(i % 7 * 3) + ".1", std::to_string(i * 35) + ".25", i % 5);
        }
    }

    std::vector<int> ids(const std::string& where) {
        return numbers(db.OpenRecordset("SELECT ID FROM Jobs WHERE " + where, dao::dbOpenSnapshot), "ID");
    }
    // Whether comparisons find the rows in which the store's own arithmetic gives more; that it gives a
    // number in so many of them.
    void expectTheSame(const std::string& calculation, std::size_t rows) {
        dao::Recordset all =
            db.OpenRecordset("SELECT ID, " + calculation + " AS Rest FROM Jobs", dao::dbOpenSnapshot);
        std::map<int, double> rests;
        for (; !all.EOF(); all.MoveNext()) {
            if (!all.Fields("Rest").Value().isNull()) {
                rests[all.Fields("ID").Value().asLong()] = all.Fields("Rest").Value().asDouble();
            }
        }
        ASSERT_EQ(rests.size(), rows) << calculation;
        for (const double bound : boundsOf(rests)) {
            std::vector<int> more, rest;
            for (const auto& [id, value] : rests) {
                (value > bound ? more : rest).push_back(id);
            }
            const std::string text = (std::ostringstream() << std::setprecision(17) << bound).str();
            EXPECT_EQ(ids(calculation + " > " + text), more) << calculation << " > " << text;
            EXPECT_EQ(ids(calculation + " <= " + text), rest) << calculation << " <= " << text;
        }
    }
    // Between each two of them.
    static std::vector<double> boundsOf(const std::map<int, double>& rests) {
        std::set<double> values;
        for (const auto& rest : rests) {
            values.insert(rest.second);
        }
        std::vector<double> bounds = {0.1};
        for (auto value = values.begin(); value != values.end() && std::next(value) != values.end();
             ++value) {
            bounds.push_back(*value / 2 + *std::next(value) / 2);
        }
        return bounds;
    }
};

TEST_F(CalculationTest, EachOperationIsThatOfTheStore) {
    addMany();
    expectTheSame(kOwed, 60);
    expectTheSame("Discount+GST+Price+Paid+Hours+1.25", 60);
    expectTheSame("Discount-GST-(Price-Paid-(Hours-3))", 60);
    expectTheSame("Discount*GST*Price*(Paid*Discount)*3", 60);
    expectTheSame("Price/7/(GST+1)/3/1.1", 60);
}

TEST_F(CalculationTest, WholeNumbersAreReckonedAsSuch) {
    addMany();
    expectTheSame("Hours*3+2-Hours*4+Hours*GST", 60);
    expectTheSame("Hours/4+Hours/3-Hours/2+1/3+Price", 60);
    expectTheSame("(Hours\\2)*GST+(Hours Mod 3)*Price-4.5*2", 60);
    expectTheSame("Price*2*3*4*5-12345678901", 60);
}

TEST_F(CalculationTest, DatesAndSignsStandInIt) {
    addMany();
    expectTheSame("-(Discount*2-GST)*3+(-Price)*2-1.5", 60);
    expectTheSame("(Started-GST)*2-Hours*3-(#1/1/2020#-1)*4", 60);
}

TEST_F(CalculationTest, NullMakesNull) {
    add("1", "100", "20", "50", 1);
    add("NULL", "100", "20", "50", 1);
    add("1", "NULL", "20", "50", 1);
    add("1", "100", "NULL", "50", 1);
    add("1", "100", "20", "NULL", 1);
    expectTheSame(kOwed, 1);
    expectTheSame("Price*2*3*4*5-Null", 0);
}

TEST_F(CalculationTest, DivisionByZeroMakesNull) {
    add("0", "100", "20", "50", 0);
    add("2", "100", "20", "50", 0);
    expectTheSame("Price/Discount*2*3*4", 1);
    expectTheSame("Price*2*3*4/Hours", 0);
    expectTheSame("Price*2*3*4/0", 0);
}

TEST_F(CalculationTest, LongOnesGoOnInTheStoresOwnArithmetic) {
    addMany();
    std::string chain = "Discount";
    for (int i = 0; i < 20; ++i) {
        chain += " + Price*1.1 - GST/3";
    }
    expectTheSame(chain, 60);
}

// What a selection within reckons is a column of its own to whoever asks it.
TEST_F(CalculationTest, ColumnsOfSelectionsWithinAreReckonedOnWith) {
    addMany();
    db.CreateQueryDef("Owing", "SELECT ID, " + kOwed + " AS Rest FROM Jobs");
    db.CreateQueryDef("OwingOnce", "SELECT DISTINCT ID, " + kOwed + " AS Rest FROM Jobs");
    const std::vector<int> expected = ids(kOwed + " > 100");
    ASSERT_FALSE(expected.empty());
    ASSERT_LT(expected.size(), 60U);
    for (const std::string query : {"Owing", "OwingOnce"}) {
        EXPECT_EQ(
            numbers(db.OpenRecordset("SELECT ID FROM " + query + " WHERE Rest*2*3*4*5 > 12000 ORDER BY ID",
                                     dao::dbOpenSnapshot),
                    "ID"),
            expected)
            << query;
    }
}

TEST_F(CalculationTest, NumbersAloneAreReckonedByTheStore) {
    addMany();
    EXPECT_EQ(ids("1/2*3/4*5 > 1.8").size(), 60U);
    EXPECT_TRUE(ids("1/2*3/4*5 > 1.9").empty());
}

// --- The function by itself.

class FileCalculationTest : public testing::Test {
 protected:
    FileCalculationTest() {
        sqlite3_open(":memory:", &db_);
        dao::driver::installCalculations(db_);
    }
    ~FileCalculationTest() override { sqlite3_close(db_); }
    FileCalculationTest(const FileCalculationTest&) = delete;
    FileCalculationTest& operator=(const FileCalculationTest&) = delete;

    // The first column of the first row; "refused" where there is none.
    std::string select(const std::string& text) {
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(db_, text.c_str(), -1, &statement, nullptr), SQLITE_OK) << text;
        const bool given = sqlite3_step(statement) == SQLITE_ROW;
        const std::string value =
            given ? reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)) : "refused";
        sqlite3_finalize(statement);
        return value;
    }
    std::string of(const std::string& arguments) {
        return select("SELECT ifnull(dao_calculate(" + arguments + "), 'Null')");
    }

 private:
    sqlite3* db_ = nullptr;
};

TEST_F(FileCalculationTest, StepsAreTakenInTheirOrder) {
    EXPECT_EQ(of("'a b -', 5, 3"), "2.0");
    EXPECT_EQ(of("'b a -', 5, 3"), "-2.0");
    EXPECT_EQ(of("'10 a / b *', 4, 3"), "7.5");
    EXPECT_EQ(of("'1 2 3 4 + + +'"), "10.0");
    EXPECT_EQ(of("'a 0 /', 4"), "Null");
    EXPECT_EQ(of("'a 1 +', NULL"), "Null");
}

TEST_F(FileCalculationTest, WhatIsNoCalculationIsRefused) {
    for (const char* const arguments :
         {"''", "'+'", "'a'", "'a b', 1, 2", "'a +', 1", "'a b + +', 1, 2", "'c', 1, 2", "'1x'", "'1  2 +'",
          "'a b ^', 1, 2", "NULL", "'A', 1", "'99999999999999999999'"}) {
        EXPECT_EQ(of(arguments), "refused") << arguments;
    }
}

TEST_F(FileCalculationTest, ThirtyTwoValuesMayWait) {
    std::string steps = "1";
    for (int i = 1; i < 32; ++i) {
        steps += " 1";
    }
    std::string signs;
    for (int i = 1; i < 32; ++i) {
        signs += " +";
    }
    EXPECT_EQ(of("'" + steps + signs + "'"), "32.0");
    EXPECT_EQ(of("'" + steps + " 1" + signs + " +'"), "refused");
}

TEST_F(FileCalculationTest, NumbersAreThoseOfTheLibraryToTheLastBit) {
    select(
        "CREATE TABLE r AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000)"
        " SELECT random() / 1e9 AS a, random() / 1e15 AS b, random() % 1000000 AS c FROM n");
    EXPECT_EQ(select("SELECT count(*) || ' ' || sum(dao_calculate('1 a 100 / - b 10000 / * c + a b / -', a, "
                     "b, c) IS NOT (1 - a / 100.0) * (b / 10000.0) + c - a / b) FROM r"),
              "20000 0");
}

// An infinite number less another is none.
TEST_F(FileCalculationTest, EndlessNumbersAreThoseOfTheLibrary) {
    EXPECT_EQ(of("'a 10 *', 1e308"), "Inf");
    EXPECT_EQ(of("'a 10 * b 10 * -', 1e308, 1e308"), "Null");
}

TEST_F(FileCalculationTest, EachRowHasItsOwnOperands) {
    EXPECT_EQ(select("SELECT group_concat(dao_calculate('a 2 *', x)) FROM (SELECT 1 AS x UNION SELECT 2)"),
              "2.0,4.0");
}

}  // namespace
