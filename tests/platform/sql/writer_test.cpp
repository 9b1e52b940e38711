#include "platform/sql/writer.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/sql/parser.h"
#include "platform/sql/sample_catalog.h"

namespace {

using sql::KeyCriterion;
using sql::NameError;
using sql::SyntaxError;
using sql::Type;
using sql::WrittenSelect;

class WriterTest : public testing::Test {
 protected:
    WrittenSelect select(const std::string& text, int base = 0) const {
        return sql::sqliteWriter().select(*sql::parse(text), catalog, base);
    }
    WrittenSelect find(const std::string& text, const std::string& criterion, int base = 0) const {
        return sql::sqliteWriter().find(*sql::parse(text), *sql::parseCriterion(criterion), catalog, base);
    }
    std::string action(const std::string& text) const {
        return sql::sqliteWriter().action(*sql::parse(text), catalog, 0).text;
    }
    // The store's text for a value of a service.
    std::string value(const std::string& text) const {
        const std::string rows = select("SELECT " + text + " FROM Services").rows;
        const std::string head = "SELECT ";
        return rows.substr(head.size(), rows.find(" FROM ") - head.size());
    }
    // The store's text for a condition on products.
    std::string condition(const std::string& text) const {
        const std::string rows = select("SELECT ID FROM Oprema WHERE " + text).rows;
        const std::size_t from = rows.find(" WHERE ") + 7;
        return rows.substr(from, rows.rfind(" ORDER BY ") - from);
    }
    Type typeOf(const std::string& text) const {
        return select("SELECT " + text + " FROM Services").columns[0].type;
    }
    std::string uniqueTable(const std::string& text) const {
        const WrittenSelect written = select(text);
        return written.uniqueSource < 0
                   ? ""
                   : written.sources[static_cast<std::size_t>(written.uniqueSource)].table;
    }
    static std::string ids(int count) { return idsOf("CustID", count); }
    static std::string idsOf(const std::string& field, int count, int apart = 1) {
        std::string text = field + "=1";
        for (int i = 1; i < count; ++i) {
            text += " OR " + field + "=" + std::to_string(1 + i * apart);
        }
        return text;
    }
    bool contains(const std::string& text, const std::string& piece) const {
        return text.find(piece) != std::string::npos;
    }

    SampleCatalog catalog;
};

TEST_F(WriterTest, ColumnsHaveTheTypesOfTheirFields) {
    EXPECT_EQ(typeOf("ID"), Type::Long);
    EXPECT_EQ(typeOf("Price"), Type::Currency);
    EXPECT_EQ(typeOf("GST"), Type::Single);
    EXPECT_EQ(typeOf("ServiceStarted"), Type::Date);
    EXPECT_EQ(typeOf("ServiceTypes"), Type::Text);
    EXPECT_EQ(select("SELECT FirmAddress FROM Customers").columns[0].type, Type::YesNo);
    EXPECT_EQ(select("SELECT ServiceTypes FROM Services").columns[0].size, 255);
    EXPECT_EQ(select("SELECT Comments FROM Services").columns[0].size, 0);
}

TEST_F(WriterTest, ExpressionsHaveTypesToo) {
    EXPECT_EQ(typeOf("Price*2"), Type::Double);
    EXPECT_EQ(typeOf("Price-Paid"), Type::Double);
    EXPECT_EQ(typeOf("ID/2"), Type::Double);
    EXPECT_EQ(typeOf("ID\\2"), Type::Long);
    EXPECT_EQ(typeOf("ID & ''"), Type::Text);
    EXPECT_EQ(typeOf("Price>0"), Type::YesNo);
    EXPECT_EQ(typeOf("Price IS NULL"), Type::YesNo);
    EXPECT_EQ(typeOf("DateDiff('d',Now(),ServiceStarted)"), Type::Long);
    EXPECT_EQ(typeOf("Now()"), Type::Date);
    EXPECT_EQ(typeOf("ServiceStarted+1"), Type::Date);
    EXPECT_EQ(typeOf("ServiceFinished-ServiceStarted"), Type::Double);
    EXPECT_EQ(typeOf("Sum(Price)"), Type::Currency);
    EXPECT_EQ(typeOf("Count(*)"), Type::Long);
    EXPECT_EQ(typeOf("Null"), Type::Null);
}

TEST_F(WriterTest, MoneyCountsInUnitsInsideExpressions) {
    EXPECT_EQ(value("Price"), "t0.\"Price\"");
    EXPECT_EQ(value("Price*2"), "t0.\"Price\" / 10000.0 * 2");
    EXPECT_EQ(value("2*Price"), "2 * (t0.\"Price\" / 10000.0)");
    EXPECT_EQ(value("Price>Paid"), "-(t0.\"Price\" > t0.\"Paid\")");
    EXPECT_EQ(value("Price>0.1"), "-(t0.\"Price\" > 1000)");
    EXPECT_EQ(value("Price>0.00001"), "-(t0.\"Price\" / 10000.0 > 1e-05)");
    EXPECT_EQ(value("Price>GST"), "-(t0.\"Price\" / 10000.0 > t0.\"GST\")");
    EXPECT_EQ(value("Price & ''"), "dao_text(t0.\"Price\" / 10000.0) || ''");
    EXPECT_EQ(value("Price BETWEEN 1 AND 2.5"), "-(t0.\"Price\" BETWEEN 10000 AND 25000)");
}

TEST_F(WriterTest, DivisionNeverCutsOff) {
    EXPECT_EQ(value("5/2"), "5 / 2.0");
    EXPECT_EQ(value("ID/MachineID"), "1.0 * t0.\"ID\" / t0.\"MachineID\"");
    EXPECT_EQ(value("GST/ID"), "t0.\"GST\" / t0.\"ID\"");
    EXPECT_EQ(value("ID/-2"), "t0.\"ID\" / -2.0");
    EXPECT_EQ(value("(ID+1)/(ID+2)"), "1.0 * (t0.\"ID\" + 1) / (t0.\"ID\" + 2)");
}

TEST_F(WriterTest, OperatorsKeepTheirOrder) {
    EXPECT_EQ(value("1-(2-3)"), "1 - (2 - 3)");
    EXPECT_EQ(value("(1-2)-3"), "1 - 2 - 3");
    EXPECT_EQ(value("(1+2)*3"), "(1 + 2) * 3");
    EXPECT_EQ(value("-(1+2)"), "-(1 + 2)");
    EXPECT_EQ(value("1- -2"), "1 - -2");
    EXPECT_EQ(value("-(-ID)"), "-(-t0.\"ID\")");
    EXPECT_EQ(condition("(ID=1 OR Stanje=2) AND NOT (Cena=3 AND JM='x')"),
              "(t0.\"ID\" = 1 OR t0.\"Stanje\" = 2) AND NOT (t0.\"Cena\" = 3 AND t0.\"JM\" = 'x' COLLATE "
              "DAO_TEXT)");
    EXPECT_EQ(condition("(ID=1)=(ID=2)"), "-(t0.\"ID\" = 1) = -(t0.\"ID\" = 2)");
}

TEST_F(WriterTest, TextsCompareAsTheEngineCompares) {
    EXPECT_EQ(condition("Naziv='x'"), "t0.\"Naziv\" = 'x' COLLATE DAO_TEXT");
    EXPECT_EQ(condition("Naziv<Opis"), "t0.\"Naziv\" < t0.\"Opis\" COLLATE DAO_TEXT");
    EXPECT_EQ(condition("Naziv & Opis = 'x'"),
              "dao_text(t0.\"Naziv\") || dao_text(t0.\"Opis\") = 'x' COLLATE DAO_TEXT");
    EXPECT_EQ(condition("Naziv IN ('x','y')"), "t0.\"Naziv\" COLLATE DAO_TEXT IN ('x', 'y')");
    EXPECT_TRUE(
        contains(select("SELECT * FROM JM ORDER BY Naziv").rows, "ORDER BY t0.\"Naziv\" COLLATE DAO_TEXT"));
}

TEST_F(WriterTest, QuotesInTextsAreDoubled) {
    EXPECT_EQ(condition("Naziv=\"O'Neil\""), "t0.\"Naziv\" = 'O''Neil' COLLATE DAO_TEXT");
    EXPECT_EQ(condition("Naziv='19\"'"), "t0.\"Naziv\" = '19\"' COLLATE DAO_TEXT");
}

TEST_F(WriterTest, TextAndNumberDoNotMix) {
    for (const char* text :
         {"Naziv=5", "5=Naziv", "Naziv+1=2", "Naziv*2=2", "-Naziv=2", "Naziv IN (1,2)", "Naziv IN ('x',2)",
          "ID=1 OR Naziv=1 OR Naziv=2", "Naziv BETWEEN 1 AND 2", "Naziv", "NOT Naziv", "Cena='5'",
          "DateDiff('d','x',Now())=1", "DateDiff(1,Now(),Now())=1"}) {
        EXPECT_THROW(condition(text), SyntaxError) << text;
    }
    EXPECT_NO_THROW(condition("Naziv=Null"));
    EXPECT_EQ(condition("Naziv+Opis='x'"), "t0.\"Naziv\" || t0.\"Opis\" = 'x' COLLATE DAO_TEXT");
}

TEST_F(WriterTest, DateDifferencesKnowTheirIntervals) {
    EXPECT_EQ(condition("DateDiff(\"d\",Now(),#1/1/1900#,2)<=5"),
              "dao_datediff('d', dao_now(), 2.0, 2) <= 5");
    EXPECT_THROW(condition("DateDiff('days',Now(),Now())=1"), SyntaxError);
    EXPECT_THROW(value("ServiceStarted & ''"), SyntaxError);
}

TEST_F(WriterTest, AStoredQueryOfOneTableIsThatTable) {
    catalog.setQuery("QDServices0", "SELECT * FROM Services WHERE MachineID=7");
    const WrittenSelect written = select("SELECT * FROM QDServices0 WHERE Price>0");
    ASSERT_EQ(written.sources.size(), 1U);
    EXPECT_EQ(written.sources[0].table, "Services");
    EXPECT_EQ(written.uniqueSource, 0);
    EXPECT_TRUE(contains(
        written.keys,
        "FROM \"Services\" AS t0 WHERE t0.\"MachineID\" = 7 AND t0.\"Price\" > 0 ORDER BY t0.rowid"));
    EXPECT_FALSE(
        contains(written.fetch, "MachineID\" = 7"));  // a row that has left the set is still that row
    EXPECT_FALSE(written.fetchRange.empty());
}

TEST_F(WriterTest, StoredQueriesMayStandInStoredQueries) {
    catalog.setQuery("A", "SELECT ID, Price*2 AS Duplo FROM Services WHERE Price>0");
    catalog.setQuery("B", "SELECT * FROM A WHERE Duplo>5 ORDER BY Duplo DESC");
    const WrittenSelect written = select("SELECT * FROM B WHERE ID<10");
    EXPECT_EQ(
        written.rows,
        "SELECT t0.\"ID\", t0.\"Price\" / 10000.0 * 2 FROM \"Services\" AS t0 WHERE t0.\"Price\" > 0 AND "
        "t0.\"Price\" / 10000.0 * 2 > 5 AND t0.\"ID\" < 10 ORDER BY t0.\"Price\" / 10000.0 * 2 DESC, "
        "t0.rowid");
    EXPECT_EQ(written.columns[1].source, -1);
    EXPECT_THROW(select("SELECT Price FROM B"), NameError);  // the stored query does not show it
}

TEST_F(WriterTest, CirclesOfStoredQueriesAreFound) {
    catalog.setQuery("A", "SELECT * FROM B");
    catalog.setQuery("B", "SELECT * FROM A");
    EXPECT_THROW(select("SELECT * FROM A"), SyntaxError);
    for (int i = 0; i < 100; ++i) {
        catalog.setQuery("D" + std::to_string(i), "SELECT * FROM D" + std::to_string(i + 1));
    }
    catalog.setQuery("D100", "SELECT * FROM JM");
    EXPECT_THROW(select("SELECT * FROM D0"), SyntaxError);
    EXPECT_NO_THROW(select("SELECT * FROM D90"));
}

TEST_F(WriterTest, StoredQueriesThatDoubleEachOtherAreRefused) {
    catalog.setQuery("T0", "SELECT Naziv AS a FROM Oprema");
    catalog.setQuery("U0", "SELECT COUNT(*) AS n FROM Oprema");
    for (int i = 1; i < 31; ++i) {
        const std::string last = std::to_string(i - 1);
        catalog.setQuery("T" + std::to_string(i), "SELECT a & a AS a FROM T" + last);
        catalog.setQuery("U" + std::to_string(i),
                         "SELECT COUNT(*) AS n FROM U" + last + " AS x, U" + last + " AS y");
    }
    EXPECT_NO_THROW(select("SELECT * FROM T5"));
    EXPECT_THROW(select("SELECT * FROM T30"), SyntaxError);
    EXPECT_NO_THROW(select("SELECT * FROM U5"));
    EXPECT_THROW(select("SELECT * FROM U30"), SyntaxError);
}

TEST_F(WriterTest, AnActionIsNoTable) {
    catalog.setQuery("Brisanje", "DELETE * FROM Oprema");
    EXPECT_THROW(select("SELECT * FROM Brisanje"), SyntaxError);
    EXPECT_THROW(sql::sqliteWriter().select(*sql::parse("DELETE * FROM JM"), catalog, 0), SyntaxError);
    EXPECT_THROW(action("SELECT * FROM JM"), SyntaxError);
}

TEST_F(WriterTest, TheManySideOfAJoinIsTheOneThatRowsAreAddedTo) {
    EXPECT_EQ(uniqueTable("SELECT * FROM Grupe INNER JOIN Oprema ON Grupe.ID = Oprema.IDGrupe"), "Oprema");
    EXPECT_EQ(uniqueTable("SELECT * FROM Oprema INNER JOIN Grupe ON Oprema.IDGrupe = Grupe.ID"), "Oprema");
    EXPECT_EQ(uniqueTable("SELECT * FROM Grupe LEFT JOIN Oprema ON Grupe.ID = Oprema.IDGrupe"), "Oprema");
    EXPECT_EQ(uniqueTable("SELECT * FROM Grupe RIGHT JOIN Oprema ON Grupe.ID = Oprema.IDGrupe"), "Oprema");
    EXPECT_EQ(uniqueTable(
                  "SELECT * FROM Customers LEFT JOIN (Computers LEFT JOIN Services ON Computers.MachineID = "
                  "Services.MachineID) ON Customers.CustID = Computers.CustID"),
              "Services");
    EXPECT_EQ(
        uniqueTable("SELECT OpremaGrupe.ID FROM Proizvodjaci RIGHT JOIN OpremaGrupe ON Proizvodjaci.ID = "
                    "OpremaGrupe.IDProizvodjaca"),
        "Oprema");
    EXPECT_EQ(uniqueTable("SELECT * FROM OpremaGrupe"), "Oprema");
    EXPECT_EQ(uniqueTable("SELECT * FROM Grupe, Proizvodjaci"), "");
    EXPECT_EQ(uniqueTable("SELECT * FROM JM INNER JOIN Oprema ON JM.Naziv = Oprema.JM"), "");
    EXPECT_EQ(uniqueTable("SELECT * FROM Grupe INNER JOIN Proizvodjaci ON Grupe.ID = Proizvodjaci.ID"),
              "Grupe");
    // Two lists hang on one client: neither row stands once.
    EXPECT_EQ(uniqueTable("SELECT * FROM (Grupe INNER JOIN Oprema ON Grupe.ID = Oprema.IDGrupe) INNER JOIN "
                          "InvoiceData ON Grupe.ID = InvoiceData.OpremaID"),
              "");
}

TEST_F(WriterTest, TheOuterSideMayBeAbsent) {
    const WrittenSelect left = select("SELECT * FROM Grupe LEFT JOIN Oprema ON Grupe.ID = Oprema.IDGrupe");
    EXPECT_FALSE(left.sources[0].nullable);
    EXPECT_TRUE(left.sources[1].nullable);
    EXPECT_TRUE(contains(left.fetch, "WHERE t0.rowid = ?1 AND t1.rowid IS ?2"));
    const WrittenSelect right = select("SELECT * FROM Grupe RIGHT JOIN Oprema ON Grupe.ID = Oprema.IDGrupe");
    EXPECT_TRUE(right.sources[0].nullable);
    EXPECT_FALSE(right.sources[1].nullable);
    EXPECT_TRUE(contains(right.rows, "FROM \"Oprema\" AS t1 LEFT JOIN \"Grupe\" AS t0 ON"));
    EXPECT_EQ(right.columns[0].name, "Grupe.ID");
}

TEST_F(WriterTest, AConditionOnTheOuterSideMakesAnInnerJoin) {
    const std::string join = "SELECT Grupa FROM Grupe LEFT JOIN Oprema ON Grupe.ID = Oprema.IDGrupe WHERE ";
    for (const char* strict :
         {"Oprema.Stanje>0", "Oprema.ID IS NOT NULL", "NOT Oprema.ID=5", "Oprema.Cena*2+1>3",
          "Oprema.ID=1 OR Oprema.ID=2", "Oprema.ID=1 OR Oprema.Stanje=2", "Oprema.Stanje BETWEEN 1 AND 2",
          "Oprema.Naziv IN ('x')", "Oprema.ID NOT IN (1,2)"}) {
        const WrittenSelect written = select(join + strict);
        EXPECT_TRUE(contains(written.rows, "INNER JOIN")) << strict;
        EXPECT_FALSE(written.sources[1].nullable) << strict;
    }
    for (const char* loose :
         {"Oprema.ID IS NULL", "Grupe.ID>0", "Oprema.Naziv & 'x'='x'", "Oprema.ID=1 OR Grupe.ID=2",
          "NOT (Oprema.ID=1 AND Grupe.ID=2)", "(Oprema.ID IS NULL)=True"}) {
        const WrittenSelect written = select(join + loose);
        EXPECT_TRUE(contains(written.rows, "LEFT JOIN")) << loose;
        EXPECT_TRUE(written.sources[1].nullable) << loose;
    }
}

TEST_F(WriterTest, NumbersAreFollowedInMemoryWhereNothingElseIsAskedFor) {
    const std::string joins =
        " FROM (Customers INNER JOIN Computers ON Customers.CustID = Computers.CustID) INNER JOIN Services "
        "ON "
        "Computers.MachineID = Services.MachineID";
    const auto follows = [this](const std::string& text) { return contains(select(text).rows, "dao_link("); };
    for (const std::string& numbers :
         {"SELECT Customers.CustID, Services.ID" + joins + " WHERE Price>0",
          "SELECT Computers.CustID, Services.Comments" + joins + " WHERE Price>0 AND Services.ID<9",
          "SELECT Customers.CustID+Computers.MachineID AS Zbir" + joins + " WHERE Price>0",
          std::string("SELECT Proizvodjaci.ID FROM Grupe INNER JOIN Proizvodjaci ON Grupe.ID = "
                      "Proizvodjaci.ID WHERE Grupa='x'"),
          std::string("SELECT Grupe.ID FROM (Grupe INNER JOIN Oprema ON Grupe.ID = Oprema.IDGrupe) INNER "
                      "JOIN Proizvodjaci ON Proizvodjaci.ID = Oprema.IDProizvodjaca WHERE Oprema.Naziv='x'"),
          std::string("SELECT Grupe.ID FROM (Grupe INNER JOIN Oprema ON Grupe.ID = Oprema.IDGrupe) INNER "
                      "JOIN InvoiceData ON Oprema.ID = InvoiceData.OpremaID WHERE InvoiceData.Naziv='x'")}) {
        EXPECT_TRUE(follows(numbers)) << numbers;
        EXPECT_FALSE(contains(select(numbers).fetch, "dao_link")) << numbers;
    }
    for (const std::string& other :
         {"SELECT Customers.CustID, Services.ID" + joins,
          "SELECT Surname, Services.ID" + joins + " WHERE Price>0", "SELECT *" + joins + " WHERE Price>0",
          "SELECT Services.ID" + joins + " WHERE Price>0 AND Surname='x'",
          "SELECT Services.ID" + joins + " WHERE Price>0 AND Customers.CustID<9",
          "SELECT Services.ID" + joins + " WHERE Price>0 ORDER BY Surname",
          "SELECT COUNT(Services.ID)" + joins + " WHERE Price>0",
          "SELECT DISTINCT Services.ID" + joins + " WHERE Price>0",
          std::string("SELECT Services.ID FROM Computers INNER JOIN Services ON Computers.MachineID < "
                      "Services.MachineID WHERE Price>0"),
          std::string("SELECT Services.ID FROM Computers LEFT JOIN Services ON Computers.MachineID = "
                      "Services.MachineID WHERE Services.ID IS NULL"),
          std::string("SELECT Oprema.ID FROM JM INNER JOIN Oprema ON JM.Naziv = Oprema.JM WHERE Stanje>0"),
          std::string(
              "SELECT Oprema.ID FROM Grupe INNER JOIN Oprema ON Grupe.ID = Oprema.Stanje WHERE Cena>0"),
          // Of a product two numbers would have to be passed on.
          std::string("SELECT InvoiceData.OpremaID FROM ((Grupe INNER JOIN Oprema ON Grupe.ID = "
                      "Oprema.IDGrupe) INNER JOIN Proizvodjaci ON Proizvodjaci.ID = Oprema.IDProizvodjaca) "
                      "INNER JOIN InvoiceData ON Oprema.ID = InvoiceData.OpremaID WHERE "
                      "InvoiceData.Naziv='x'")}) {
        EXPECT_FALSE(follows(other)) << other;
    }
    for (const std::string& narrowed : {std::string("CustID<100"), ids(1000)}) {
        catalog.setQuery("Stari", "SELECT * FROM Customers WHERE " + narrowed);
        EXPECT_FALSE(
            follows("SELECT Computers.MachineID FROM Stari INNER JOIN Computers ON Stari.CustID = "
                    "Computers.CustID WHERE MachineName='x'"));
    }
}

TEST_F(WriterTest, WhatTakesLittleIsAskedFirst) {
    EXPECT_EQ(condition("Stanje*2+1>Cena AND Naziv & 'x'='yx' AND ID<5 AND Cena=3"),
              "t0.\"ID\" < 5 AND t0.\"Cena\" = 3 AND t0.\"Stanje\" * 2 + 1 > t0.\"Cena\" AND "
              "dao_text(t0.\"Naziv\") || 'x' = 'yx' COLLATE DAO_TEXT");
}

TEST_F(WriterTest, AStoredQueryOnTheOuterSideFiltersBeforeTheJoin) {
    catalog.setQuery("NaStanju", "SELECT * FROM Oprema WHERE Stanje>0");
    EXPECT_TRUE(
        contains(select("SELECT Grupa FROM Grupe LEFT JOIN NaStanju ON Grupe.ID = NaStanju.IDGrupe").rows,
                 "LEFT JOIN \"Oprema\" AS t1 ON t1.\"Stanje\" > 0 AND t0.\"ID\" = t1.\"IDGrupe\""));
    EXPECT_TRUE(
        contains(select("SELECT Grupa FROM NaStanju LEFT JOIN Grupe ON Grupe.ID = NaStanju.IDGrupe").rows,
                 "LEFT JOIN \"Grupe\" AS t1 ON t1.\"ID\" = t0.\"IDGrupe\" WHERE t0.\"Stanje\" > 0"));
}

// What stands in parentheses the store would put into a table of its own first, all services for five of
// them.
TEST_F(WriterTest, JoinsInParenthesesAreReadFromTheLeft) {
    const std::string clients = "SELECT Services.ID FROM Customers ";
    const std::string outer = "(Computers LEFT JOIN Services ON Computers.MachineID = Services.MachineID) ";
    const std::string inner = "(Computers INNER JOIN Services ON Computers.MachineID = Services.MachineID) ";
    EXPECT_TRUE(
        contains(select(clients + "LEFT JOIN " + outer + "ON Customers.CustID = Computers.CustID").rows,
                 "FROM \"Customers\" AS t0 LEFT JOIN \"Computers\" AS t1 ON t0.\"CustID\" = t1.\"CustID\" "
                 "LEFT JOIN \"Services\" AS t2 ON t1.\"MachineID\" = t2.\"MachineID\" ORDER BY"));
    EXPECT_TRUE(
        contains(select(clients + "INNER JOIN " + outer + "ON Customers.CustID = Computers.CustID").rows,
                 "INNER JOIN \"Computers\" AS t1 ON t0.\"CustID\" = t1.\"CustID\" LEFT JOIN \"Services\""));
    EXPECT_TRUE(
        contains(select(clients + "INNER JOIN " + inner + "ON Customers.CustID = Computers.CustID").rows,
                 "INNER JOIN \"Computers\" AS t1 INNER JOIN \"Services\" AS t2 ON"));
    // Not where it would mean something else: the parentheses hold an inner join, or the outer condition
    // names what may be absent, or the inner condition does not ask for its left side.
    for (const std::string& other :
         {"LEFT JOIN " + inner + "ON Customers.CustID = Computers.CustID",
          "LEFT JOIN " + outer + "ON Customers.CustID = Computers.CustID OR Services.ID IS NULL",
          std::string("LEFT JOIN (Computers LEFT JOIN Services ON Services.ID=5) ON Customers.CustID = "
                      "Computers.CustID")}) {
        EXPECT_TRUE(contains(select(clients + other).rows, "LEFT JOIN (SELECT")) << other;
    }
}

// A client's row without a computer has no computer because none met the stored query's condition: fetched
// without that condition it would suddenly have one, and count as deleted.
TEST_F(WriterTest, AnAbsentRowIsFetchedWithTheConditionThatMadeItAbsent) {
    catalog.setQuery("NaStanju", "SELECT * FROM Oprema WHERE Stanje>0");
    EXPECT_TRUE(
        contains(select("SELECT Grupa FROM Grupe LEFT JOIN NaStanju ON Grupe.ID = NaStanju.IDGrupe").fetch,
                 "\"Stanje\" > 0"));
    EXPECT_TRUE(
        contains(select("SELECT Proizvodjac FROM Proizvodjaci LEFT JOIN (NaStanju INNER JOIN Grupe ON "
                        "Grupe.ID = NaStanju.IDGrupe) ON Proizvodjaci.ID = NaStanju.IDProizvodjaca")
                     .fetch,
                 "\"Stanje\" > 0"));
    EXPECT_FALSE(
        contains(select("SELECT Grupa FROM Grupe INNER JOIN NaStanju ON Grupe.ID = NaStanju.IDGrupe").fetch,
                 "\"Stanje\" > 0"));
}

TEST_F(WriterTest, ALargeSetIsLookedUpByItsNumbers) {
    catalog.setQuery("QDCustomers0", "SELECT * FROM Customers WHERE " + idsOf("CustID", 1000, 4));
    const WrittenSelect written = select("SELECT * FROM QDCustomers0", 7);
    ASSERT_EQ(written.idSets.size(), 1U);
    EXPECT_EQ(written.idSets[0]->size(), 1000U);
    EXPECT_EQ(
        written.keys,
        "SELECT t0.rowid FROM idset(7) AS s7 CROSS JOIN \"Customers\" AS t0 WHERE t0.\"CustID\" = s7.value");
    EXPECT_FALSE(contains(written.fetch, "idset"));
    EXPECT_TRUE(contains(select("SELECT * FROM QDCustomers0 ORDER BY Surname").keys,
                         "ORDER BY t0.\"Surname\" COLLATE DAO_TEXT, t0.rowid"));
    EXPECT_TRUE(contains(find("SELECT * FROM QDCustomers0", "City='Nis'").keys,
                         "= s0.value AND t0.\"City\" = 'Nis' COLLATE DAO_TEXT"));
}

TEST_F(WriterTest, RowsOfALargeSetOfCloseNumbersAreGoneThrough) {
    for (const int apart : {1, 2, 3}) {
        catalog.setQuery("QDCustomers0", "SELECT * FROM Customers WHERE " + idsOf("CustID", 1000, apart));
        const WrittenSelect written = select("SELECT CustID, Surname FROM QDCustomers0", 7);
        EXPECT_TRUE(contains(written.keys,
                             "SELECT t0.rowid FROM \"Customers\" AS t0 WHERE t0.\"CustID\" "
                             "BETWEEN 1 AND " +
                                 std::to_string(1 + 999 * apart) + " AND dao_in_idset(7, t0.\"CustID\")"))
            << written.keys;
        EXPECT_NE(written.keySet, nullptr);
    }
}

TEST_F(WriterTest, ALargeSetGivesWayToOneValueOfAField) {
    catalog.setQuery("QDComputers0", "SELECT * FROM Computers WHERE " + idsOf("MachineID", 1000, 4));
    for (const char* pinned :
         {"CustID=2", "2=CustID", "MachineID=2", "MachineName='x'", "CustID<9 AND CustID=1+1"}) {
        const std::string keys = select(std::string("SELECT * FROM QDComputers0 WHERE ") + pinned, 3).keys;
        EXPECT_TRUE(contains(keys,
                             "FROM \"Computers\" AS t0 WHERE EXISTS (SELECT 1 FROM idset(3) WHERE value = "
                             "t0.\"MachineID\") AND "))
            << keys;
        EXPECT_TRUE(contains(keys, "ORDER BY t0.rowid")) << keys;
    }
    for (const char* other : {"CustID<2", "CustID<>2", "CustID=MachineID", "CustID IN (1,2)", "CustID+1=2"}) {
        const std::string keys = select(std::string("SELECT * FROM QDComputers0 WHERE ") + other).keys;
        EXPECT_TRUE(contains(keys, "CROSS JOIN")) << keys;
    }
}

// What a filter leaves of a table is known without reading it.
TEST_F(WriterTest, ALargeSetAndNothingElseIsTheKeysOfItsRows) {
    catalog.setQuery("QDCustomers0", "SELECT * FROM Customers WHERE " + ids(1000));
    const sql::IdSetPtr keys = select("SELECT * FROM QDCustomers0").keySet;
    ASSERT_NE(keys, nullptr);
    EXPECT_EQ(keys->size(), 1000U);
    for (const char* other :
         {"SELECT * FROM Customers", "SELECT * FROM QDCustomers0 WHERE CustID<9",
          "SELECT * FROM QDCustomers0 WHERE CustID=9", "SELECT * FROM QDCustomers0 ORDER BY Surname",
          "SELECT Surname FROM QDCustomers0 INNER JOIN Computers ON QDCustomers0.CustID = Computers.CustID",
          "SELECT DISTINCT Surname FROM QDCustomers0"}) {
        EXPECT_EQ(select(other).keySet, nullptr) << other;
    }
}

TEST_F(WriterTest, ALargeSetInsideAConditionIsAskedFor) {
    EXPECT_TRUE(contains(select("SELECT * FROM Computers WHERE " + ids(1000)).keys,
                         "WHERE t0.\"CustID\" IN (SELECT value FROM idset(0)) ORDER BY t0.rowid"));
    catalog.setQuery("Neki", "SELECT * FROM Customers WHERE " + ids(1000));
    EXPECT_TRUE(contains(select("SELECT Computers.MachineID FROM Neki INNER JOIN Computers ON Neki.CustID = "
                                "Computers.CustID")
                             .keys,
                         "IN (SELECT value FROM idset(0))"));
    EXPECT_EQ(action("DELETE * FROM Neki"),
              "DELETE FROM \"Customers\" WHERE \"Customers\".\"CustID\" IN (SELECT value FROM idset(0))");
    EXPECT_TRUE(contains(select("SELECT * FROM Computers WHERE " + ids(5)).keys, "IN (1,2,3,4,5)"));
}

TEST_F(WriterTest, LongChainsOfTextsAreGrouped) {
    std::string text = "Naziv='0'";
    for (int i = 1; i < 5000; ++i) {
        text += " OR Naziv='" + std::to_string(i) + "'";
    }
    const std::string written = condition(text);
    int depth = 0;
    int deepest = 0;
    for (const char c : written) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        deepest = std::max(deepest, depth);
    }
    EXPECT_EQ(depth, 0);
    EXPECT_LE(deepest, 4);
    EXPECT_TRUE(contains(written, "'4999'"));
}

TEST_F(WriterTest, DeepExpressionsAreRefusedBeforeTheStoreSeesThem) {
    std::string text = "ID";
    for (int i = 0; i < 100; ++i) {
        text = "1-(" + text + ")";
    }
    EXPECT_THROW(value(text), SyntaxError);
}

TEST_F(WriterTest, OrderByTakesAliasesFieldsAndExpressions) {
    const std::string head = "SELECT Naziv AS N, Cena*80 AS Cena1 FROM Oprema ORDER BY ";
    EXPECT_TRUE(contains(select(head + "Cena1 DESC").rows, "ORDER BY t0.\"Cena\" * 80 DESC, t0.rowid"));
    EXPECT_TRUE(contains(select(head + "N").rows, "ORDER BY t0.\"Naziv\" COLLATE DAO_TEXT, t0.rowid"));
    EXPECT_TRUE(contains(select(head + "Stanje, Oprema.Opis ASC").rows,
                         "ORDER BY t0.\"Stanje\", t0.\"Opis\" COLLATE DAO_TEXT, t0.rowid"));
    EXPECT_TRUE(contains(select(head + "2").rows, "ORDER BY t0.\"Cena\" * 80, t0.rowid"));
    EXPECT_THROW(select(head + "3"), SyntaxError);
    EXPECT_THROW(select(head + "0"), SyntaxError);
    EXPECT_THROW(select(head + "Nema"), NameError);
}

TEST_F(WriterTest, ColumnsWithoutANameGetOne) {
    const WrittenSelect written = select("SELECT Cena*2, Naziv, Cena*3 FROM Oprema");
    EXPECT_EQ(written.columns[0].name, "Expr1000");
    EXPECT_EQ(written.columns[1].name, "Naziv");
    EXPECT_EQ(written.columns[2].name, "Expr1001");
    EXPECT_THROW(select("SELECT Cena AS X, Naziv AS x FROM Oprema"), SyntaxError);
}

TEST_F(WriterTest, NamesAreFoundInAnyCase) {
    EXPECT_EQ(select("select NAZIV from OPREMA where [oprema].[stanje]>0").rows,
              select("SELECT Naziv FROM Oprema WHERE Oprema.Stanje>0").rows);
    EXPECT_EQ(select("select NAZIV from OPREMA").columns[0].name, "Naziv");
}

TEST_F(WriterTest, UnknownNamesAreTold) {
    try {
        select("SELECT * FROM Nema");
        FAIL();
    } catch (const NameError& error) {
        EXPECT_EQ(error.kind(), NameError::Kind::Table);
        EXPECT_EQ(error.name(), "Nema");
    }
    try {
        select("SELECT * FROM Oprema WHERE Oprema.Nema=5");
        FAIL();
    } catch (const NameError& error) {
        EXPECT_EQ(error.kind(), NameError::Kind::Field);
        EXPECT_EQ(error.name(), "Oprema.Nema");
    }
}

TEST_F(WriterTest, AliasesReplaceTheTablesName) {
    EXPECT_NO_THROW(select("SELECT O.Naziv FROM Oprema AS O"));
    EXPECT_THROW(select("SELECT Oprema.Naziv FROM Oprema AS O"), NameError);
    EXPECT_NO_THROW(select("SELECT A.ID FROM Oprema A INNER JOIN Oprema B ON A.ID = B.ID"));
}

TEST_F(WriterTest, AJoinConditionStaysInsideItsJoin) {
    EXPECT_THROW(select("SELECT * FROM (Grupe INNER JOIN Oprema ON Grupe.ID = Proizvodjaci.ID) INNER JOIN "
                        "Proizvodjaci ON Proizvodjaci.ID = Oprema.IDProizvodjaca"),
                 NameError);
    EXPECT_THROW(
        select(
            "SELECT * FROM Proizvodjaci INNER JOIN (Grupe INNER JOIN Oprema ON Grupe.ID = Proizvodjaci.ID) "
            "ON Proizvodjaci.ID = Oprema.IDProizvodjaca"),
        SyntaxError);
}

TEST_F(WriterTest, GroupsHaveNoKeys) {
    for (const char* text : {"SELECT DISTINCT Naziv FROM Oprema", "SELECT COUNT(*) FROM Oprema",
                             "SELECT Naziv, MAX(Cena) FROM Oprema GROUP BY Naziv"}) {
        const WrittenSelect written = select(text);
        EXPECT_TRUE(written.sources.empty()) << text;
        EXPECT_TRUE(written.keys.empty()) << text;
        EXPECT_EQ(written.uniqueSource, -1) << text;
        EXPECT_EQ(written.columns[0].source, -1) << text;
    }
    EXPECT_THROW(select("SELECT Naziv, COUNT(*) FROM Oprema"), SyntaxError);
    EXPECT_THROW(select("SELECT *, COUNT(*) FROM Oprema"), SyntaxError);
    EXPECT_THROW(select("SELECT COUNT(COUNT(*)) FROM Oprema"), SyntaxError);
    EXPECT_THROW(select("SELECT COUNT(*) FROM Oprema ORDER BY Naziv"), SyntaxError);
    EXPECT_THROW(find("SELECT COUNT(*) AS N FROM Oprema", "N=5"), SyntaxError);
}

TEST_F(WriterTest, FindLooksAtTheResultsFields) {
    const std::string text =
        "SELECT Oprema.ID, Oprema.Naziv AS N, Oprema.Cena*80 AS Cena1 FROM Oprema WHERE Stanje>0";
    EXPECT_TRUE(contains(find(text, "Cena1>100").keys, "WHERE t0.\"Stanje\" > 0 AND t0.\"Cena\" * 80 > 100"));
    EXPECT_TRUE(contains(find(text, "N='x' OR ID=5").keys,
                         "AND (t0.\"Naziv\" = 'x' COLLATE DAO_TEXT OR t0.\"ID\" = 5) ORDER BY"));
    EXPECT_NO_THROW(find(text, "Oprema.Naziv='x'"));
    EXPECT_NO_THROW(find(text, "[Oprema.Naziv]='x'"));
    EXPECT_THROW(find(text, "Opis='x'"), NameError);
    const WrittenSelect found = find(text, "ID=5");
    EXPECT_EQ(found.sources.size(), 1U);
    EXPECT_TRUE(found.rows.empty());
}

TEST_F(WriterTest, KeyCriteriaAreRecognised) {
    KeyCriterion key;
    ASSERT_TRUE(sql::isKeyCriterion(*sql::parseCriterion("CustID=17"), key));
    EXPECT_EQ(key.field, "CustID");
    EXPECT_EQ(key.number, 17);
    ASSERT_TRUE(sql::isKeyCriterion(*sql::parseCriterion("(-3 = [ID])"), key));
    EXPECT_EQ(key.field, "ID");
    EXPECT_EQ(key.number, -3);
    for (const char* text :
         {"CustID>17", "CustID=17.5", "CustID='17'", "CustID=17 OR CustID=18", "CustID=MachineID",
          "T.CustID=17", "[T.CustID]=17", "NOT CustID=17", "CustID+0=17"}) {
        EXPECT_FALSE(sql::isKeyCriterion(*sql::parseCriterion(text), key)) << text;
    }
}

TEST_F(WriterTest, AssignedValuesTakeTheFieldsForm) {
    EXPECT_EQ(action("UPDATE Services SET Price=12.345"), "UPDATE \"Services\" SET \"Price\" = 123450");
    EXPECT_EQ(action("UPDATE Services SET Price=0.00005"), "UPDATE \"Services\" SET \"Price\" = 1");
    EXPECT_EQ(action("UPDATE Services SET Price=Paid"),
              "UPDATE \"Services\" SET \"Price\" = \"Services\".\"Paid\"");
    EXPECT_EQ(action("UPDATE Services SET GST=0.1"), "UPDATE \"Services\" SET \"GST\" = 0.10000000149011612");
    EXPECT_EQ(action("UPDATE Services SET MachineID=2.5"),
              "UPDATE \"Services\" SET \"MachineID\" = CAST(ROUND(2.5) AS INTEGER)");
    EXPECT_EQ(action("UPDATE Services SET ServiceFinished=#12/31/1899#"),
              "UPDATE \"Services\" SET \"ServiceFinished\" = 1.0");
    EXPECT_EQ(action("UPDATE Services SET Comments=5"), "UPDATE \"Services\" SET \"Comments\" = '5'");
    EXPECT_EQ(action("UPDATE Services SET Comments=Null"), "UPDATE \"Services\" SET \"Comments\" = NULL");
    EXPECT_EQ(action("UPDATE Customers SET FirmAddress=(City='Nis')"),
              "UPDATE \"Customers\" SET \"FirmAddress\" = -(-(\"Customers\".\"City\" = 'Nis' COLLATE "
              "DAO_TEXT) <> 0)");
    EXPECT_EQ(action("UPDATE Services SET [Services]![Paid]=0 WHERE Services.ID=5"),
              "UPDATE \"Services\" SET \"Paid\" = 0 WHERE \"Services\".\"ID\" = 5");
}

TEST_F(WriterTest, ValuesThatDoNotFitAreRefused) {
    for (const char* text : {"UPDATE Services SET Price='5'", "UPDATE Services SET Price=1e18",
                             "UPDATE Services SET MachineID=3000000000", "UPDATE Services SET GST=1e60",
                             "UPDATE Services SET ServiceFinished='x'", "UPDATE Services SET ID=5",
                             "UPDATE Services SET Paid=1, Paid=2", "UPDATE Services SET Comments=Now()",
                             "UPDATE Services SET MachineID=Now()"}) {
        EXPECT_THROW(action(text), SyntaxError) << text;
    }
    EXPECT_THROW(action("INSERT INTO JM (Naziv) VALUES (Naziv)"), NameError);
}

TEST_F(WriterTest, ManyTablesAreRefused) {
    std::string text = "SELECT A0.ID FROM Grupe AS A0";
    for (int i = 1; i < 32; ++i) {
        text += ", OpremaGrupe AS A" + std::to_string(i);
    }
    EXPECT_THROW(select(text), SyntaxError);
}

TEST_F(WriterTest, ToldApartIsWhatAsksTheTime) {
    EXPECT_FALSE(select("SELECT * FROM Services WHERE MachineID=2 ORDER BY Price").asksTheTime);
    EXPECT_TRUE(select("SELECT * FROM Services WHERE ServiceStarted<Now()").asksTheTime);
    EXPECT_TRUE(
        select("SELECT * FROM (SELECT * FROM Services WHERE DateDiff('d',Now(),ServiceStarted)=1) AS s "
               "WHERE MachineID=2")
            .asksTheTime);
}

}  // namespace
