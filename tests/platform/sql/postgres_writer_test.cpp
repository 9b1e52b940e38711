// What the server's dialect promises whoever binds and runs its texts.
#include <gtest/gtest.h>

#include <string>

#include "platform/sql/parser.h"
#include "platform/sql/sample_catalog.h"
#include "platform/sql/writer.h"

namespace {

class PostgresWriter : public ::testing::Test {
 protected:
    sql::WrittenSelect select(const std::string& text) const {
        return sql::postgresWriter().select(*sql::parse(text), catalog, 7);
    }
    sql::WrittenAction action(const std::string& text) const {
        return sql::postgresWriter().action(*sql::parse(text), catalog, 7);
    }
    static bool holds(const std::string& text, const std::string& piece) {
        return text.find(piece) != std::string::npos;
    }
    static std::string manyNumbers(const std::string& field) {
        std::string text = field + "=1";
        for (int i = 2; i <= 100; ++i) {
            text += " OR " + field + "=" + std::to_string(i);
        }
        return "(" + text + ")";
    }

    SampleCatalog catalog;
};

TEST_F(PostgresWriter, RowKeysAreNumberedBehindWhatTheStatementAsksFor) {
    const sql::WrittenSelect written = select("SELECT ID FROM Services WHERE " + manyNumbers("MachineID") +
                                              " AND ServiceStarted < Now() AND " + manyNumbers("ID"));
    ASSERT_EQ(written.parameters.size(), 3U);
    EXPECT_EQ(written.parameters[0].kind, sql::Parameter::Kind::Ids);
    EXPECT_EQ(written.parameters[0].ids->size(), 100U);
    EXPECT_TRUE(written.idSets.empty());
    EXPECT_TRUE(holds(written.fetch, "= $4::bigint")) << written.fetch;
    EXPECT_TRUE(holds(written.fetchRange, "BETWEEN $4::bigint AND $5::bigint")) << written.fetchRange;
}

// A server that looks through the table would compare every row with it.
TEST_F(PostgresWriter, TheFirstRowIsSearchedForWithoutABound) {
    const sql::WrittenSelect written = sql::postgresWriter().find(
        *sql::parse("SELECT * FROM Services WHERE MachineID=3"), *sql::parseCriterion("Price=7"), catalog, 7);
    EXPECT_TRUE(holds(written.firstRow, "LIMIT 1")) << written.firstRow;
    EXPECT_FALSE(holds(written.firstRow, "$")) << written.firstRow;
    EXPECT_TRUE(holds(written.firstKeys, "> $1::bigint")) << written.firstKeys;
    EXPECT_TRUE(holds(written.firstKeys, "LIMIT $2::bigint")) << written.firstKeys;
}

TEST_F(PostgresWriter, OneMomentIsOneParameter) {
    const sql::WrittenSelect written =
        select("SELECT Now() AS A, Now() - ServiceStarted AS B FROM Services WHERE ServiceStarted < Now()");
    ASSERT_EQ(written.parameters.size(), 1U);
    EXPECT_EQ(written.parameters[0].kind, sql::Parameter::Kind::Now);
    EXPECT_FALSE(holds(written.rows, "$2"));
}

TEST_F(PostgresWriter, AKeyThatMayBeAbsentIsComparedWithNullToo) {
    const std::string fetch =
        select("SELECT * FROM Customers LEFT JOIN Computers ON Customers.CustID = Computers.CustID").fetch;
    EXPECT_TRUE(holds(fetch, "\"CustID\" = $1::bigint")) << fetch;
    EXPECT_TRUE(holds(fetch, "\"MachineID\" IS NOT DISTINCT FROM $2::bigint")) << fetch;
}

// The server would look for a shorter name.
TEST_F(PostgresWriter, NamesThatTheServerCutsOffAreRefused) {
    const std::string longest(63, 'a');
    catalog.addTable("Fits", "k.ID t." + longest);
    catalog.addTable("Exceeds", "k.ID t." + longest + "b");
    catalog.addTable(longest + "c", "k.ID");
    EXPECT_TRUE(holds(select("SELECT * FROM Fits").rows, longest));
    EXPECT_THROW(select("SELECT * FROM Exceeds"), sql::SizeError);
    EXPECT_THROW(action("DELETE * FROM Exceeds"), sql::SizeError);
    EXPECT_THROW(action("INSERT INTO " + longest + "c (ID) VALUES (1)"), sql::SizeError);
}

TEST_F(PostgresWriter, MoreColumnsThanTheServerTakesAreRefused) {
    std::string columns = "ID";
    for (int i = 0; i < 1600; ++i) {
        columns += ", ID+" + std::to_string(i);
    }
    EXPECT_THROW(select("SELECT " + columns + " FROM Grupe"), sql::SizeError);
}

TEST_F(PostgresWriter, TextsAreQuotedAsTheServerReadsThem) {
    const std::string text = action("UPDATE Grupe SET Grupa = 'O''Neil \\'").text;
    EXPECT_TRUE(holds(text, "'O''Neil \\'::text")) << text;
}

}  // namespace
