#include "shell/help_search.h"

#include <gtest/gtest.h>

namespace {

HelpBook shopsBook() {
    HelpBook book;
    HelpPage database;
    database.id = "database";
    database.title = "The database";
    database.order = 1;
    database.markdown =
        "One file holds the whole shop.\n"
        "# The backup copy {#backup}\n"
        "The file is copied\n"
        "when the program closes.\n"
        "## Without a name\n"
        "Nothing is copied here.\n";
    book.add(database);
    HelpPage start;
    start.id = "start";
    start.title = "A first service";
    start.order = 2;
    start.markdown = "Press the button; a copy is made.\n";
    book.add(start);
    return book;
}

// "text -> address" of each.
QStringList found(const QStringList& words) {
    QStringList lines;
    for (const HelpHit& hit : searchHelp(shopsBook(), words)) {
        lines += hit.text + " -> " + hit.place.address();
    }
    return lines;
}

TEST(HelpSearchTest, AHitLeadsToTheHeadingAboveTheWords) {
    EXPECT_EQ(found({"closes"}), QStringList{"The database: The backup copy -> database#backup"});
}

TEST(HelpSearchTest, WordsBeforeTheFirstHeadingLeadToThePage) {
    EXPECT_EQ(found({"shop"}), QStringList{"The database -> database"});
}

TEST(HelpSearchTest, AHeadingWithoutAnAnchorLeadsToThePage) {
    EXPECT_EQ(found({"nothing"}), QStringList{"The database: Without a name -> database"});
}

TEST(HelpSearchTest, AllWordsMustStandUnderOneHeading) {
    EXPECT_EQ(found({"copied", "closes"}), QStringList{"The database: The backup copy -> database#backup"});
    EXPECT_TRUE(found({"shop", "closes"}).isEmpty());
}

TEST(HelpSearchTest, PartsOfWordsCountInWhateverCaseAndInTheOrderOfTheBook) {
    EXPECT_EQ(found({"COP"}),
              QStringList({"The database: The backup copy -> database#backup",
                           "The database: Without a name -> database", "A first service -> start"}));
}

TEST(HelpSearchTest, TitlesAndHeadingsCountAsWell) {
    EXPECT_EQ(found({"first"}), QStringList{"A first service -> start"});
    EXPECT_EQ(found({"backup"}), QStringList{"The database: The backup copy -> database#backup"});
}

TEST(HelpSearchTest, NamesOfAnchorsDoNotCount) {
    EXPECT_TRUE(found({"{#"}).isEmpty());
}

}  // namespace
