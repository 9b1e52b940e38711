#include "exchange/csv.h"

#include <gmock/gmock.h>

namespace {

using exchange::CsvError;
using exchange::CsvField;
using exchange::CsvReader;
using testing::ElementsAre;

using Table = std::vector<std::vector<std::string>>;

// Each field as it stands, one between quotes with a mark before it.
Table read(std::string_view text, char separator = ',',
           CsvReader::Manner manner = CsvReader::Manner::Strict) {
    CsvReader reader(text, separator, manner);
    Table table;
    for (std::vector<CsvField> record; reader.next(record);) {
        table.emplace_back();
        for (const CsvField& field : record) {
            table.back().push_back((field.quoted ? "'" : "") + field.text);
        }
    }
    return table;
}

int failingLine(std::string_view text) {
    try {
        read(text);
    } catch (const CsvError& error) {
        return error.line();
    }
    return 0;
}

TEST(Csv, LinesEndInAllThreeWays) {
    EXPECT_EQ(read("a,b\r\nc,d\ne,f\rg,h"), (Table{{"a", "b"}, {"c", "d"}, {"e", "f"}, {"g", "h"}}));
    EXPECT_EQ(read("a\r\n"), (Table{{"a"}}));
    EXPECT_EQ(read(""), Table{});
}

TEST(Csv, NothingAndAnEmptyTextAreTwoThings) {
    EXPECT_EQ(read(",\"\",\r\n\"\"\r\n\r\n"), (Table{{"", "'", ""}, {"'"}, {""}}));
}

TEST(Csv, BetweenQuotesEverythingIsText) {
    EXPECT_EQ(read("\"a,b\",\"say \"\"so\"\"\",\"x\r\ny\nz\"\r\nn"),
              (Table{{"'a,b", "'say \"so\"", "'x\r\ny\nz"}, {"n"}}));
}

TEST(Csv, LinesAreCountedThroughBreaksInTexts) {
    CsvReader reader("h\r\n\"x\r\ny\rz\"\r\nlast", ',', CsvReader::Manner::Strict);
    std::vector<CsvField> record;
    std::vector<int> lines;
    while (reader.next(record)) {
        lines.push_back(reader.line());
    }
    EXPECT_THAT(lines, ElementsAre(1, 2, 5));
}

TEST(Csv, WhatIsNotByTheBookIsToldWithItsLine) {
    EXPECT_EQ(failingLine("a\nb\"c\n"), 2);
    EXPECT_EQ(failingLine("a\n\n\"b\"c\n"), 3);
    EXPECT_EQ(failingLine("a\n\"b\nc\nd"), 2);
}

TEST(Csv, ListsTypedByHandMayHaveInchesAndAnySeparator) {
    EXPECT_EQ(read("Monitor 19\";\"LG\" crni;5", ';', CsvReader::Manner::Lenient),
              (Table{{"Monitor 19\"", "'LG crni", "5"}}));
    EXPECT_EQ(read("a\tb,c", '\t', CsvReader::Manner::Lenient), (Table{{"a", "b,c"}}));
}

TEST(Csv, TextsAreWrittenSoThatTheyReadBack) {
    for (const std::string text : {"", "plain", "a,b", "\"", "x\ny", "x\ry", "Đorđe; 19\""}) {
        std::string written;
        exchange::addCsvText(written, text);
        CsvReader reader(written, ',', CsvReader::Manner::Strict);
        std::vector<CsvField> record;
        ASSERT_TRUE(reader.next(record));
        ASSERT_EQ(record.size(), 1U);
        EXPECT_EQ(record[0].text, text);
        EXPECT_EQ(record[0].text.empty(), text.empty() && record[0].quoted);
    }
    std::string plain;
    exchange::addCsvText(plain, "Pera; 5");
    EXPECT_EQ(plain, "Pera; 5");
}

}  // namespace
