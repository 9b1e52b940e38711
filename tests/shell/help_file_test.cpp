#include "shell/help_file.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QFile>

#include "records/main_fields.h"
#include "support/places.h"

namespace {

HelpPage pageOf(const QString& id, const QString& source) {
    HelpPage page;
    QString errorText;
    EXPECT_TRUE(HelpBook::parsePage(id, source, page, errorText)) << errorText.toStdString();
    return page;
}

QString errorOf(const QString& source) {
    HelpPage page;
    QString errorText;
    EXPECT_FALSE(HelpBook::parsePage("x", source, page, errorText));
    return errorText;
}

HelpBook smallBook() {
    HelpBook book;
    book.add(pageOf(
        "second",
        "---\ntitle: Second\norder: 2\nparent: first\ncontexts: 7, 10-12=part\nkeywords: one, two=part\n"
        "---\nText.\n\n## A part {#part}\n\nSee [the first](first) and [above](#part).\n"));
    book.add(pageOf("first", "---\ntitle: First\norder: 1\n---\n![a mark](mark.svg) [on](second#part)\n"));
    book.addPicture("mark.svg", "<svg/>");
    return book;
}

HelpBook delivered() {
    HelpBook book;
    QFile file(QLatin1String(tests::kDeliveredFolder) + QStringLiteral("/Tarvello.hlp"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QString errorText;
    EXPECT_TRUE(book.fromFile(file.readAll(), errorText)) << errorText.toStdString();
    return book;
}

}  // namespace

TEST(HelpPageTest, ItsHeadIsRead) {
    const HelpPage page = smallBook().pages().at(1);
    EXPECT_EQ(page.id, "second");
    EXPECT_EQ(page.title, "Second");
    EXPECT_EQ(page.parent, "first");
    EXPECT_EQ(page.contexts.size(), 4);
    EXPECT_EQ(page.keywords.size(), 2);
    EXPECT_EQ(page.keywords[1].word, "two");
    EXPECT_EQ(page.keywords[1].anchor, "part");
    EXPECT_EQ(page.headingAnchors(), QStringList("part"));
    EXPECT_TRUE(page.plainMarkdown().contains("## A part\n"));
    EXPECT_FALSE(page.plainMarkdown().contains("{#"));
}

TEST(HelpPageTest, AMistakeInItsHeadIsNamedWithItsLine) {
    EXPECT_EQ(errorOf("# Text"), "line 1: the head of the page, between two lines ---, is missing");
    EXPECT_EQ(errorOf("---\ntitle: x\n"), "line 3: the head of the page does not end");
    EXPECT_EQ(errorOf("---\norder: 1\n---\n"), "line 3: the page has no title");
    EXPECT_EQ(errorOf("---\ntitle: x\ncolour: red\n---\n"), "line 3: not understood: colour: red");
    EXPECT_EQ(errorOf("---\ntitle: x\norder: first\n---\n"), "line 3: not understood: order: first");
    EXPECT_EQ(errorOf("---\ntitle: x\ncontexts: 5-3\n---\n"), "line 3: not understood: contexts: 5-3");
    EXPECT_EQ(errorOf("---\ntitle: x\ncontexts: 5=Big Name\n---\n"),
              "line 3: not understood: contexts: 5=Big Name");
}

TEST(HelpBookTest, PagesStandInTheirOrderAndTopicsLeadToThem) {
    const HelpBook book = smallBook();
    EXPECT_EQ(book.pages().first().id, "first");
    EXPECT_EQ(book.target(7).page, "second");
    EXPECT_EQ(book.target(7).anchor, "");
    EXPECT_EQ(book.target(11).anchor, "part");
    EXPECT_EQ(book.target(8).page, "");
    EXPECT_EQ(book.faults(), QStringList());
}

TEST(HelpBookTest, WhatAReaderWouldStumbleOverIsFound) {
    const std::pair<const char*, const char*> kCases[] = {
        {"---\ntitle: x\ncontexts: 7\n---\n", "x: topic 7 is told in second already"},
        {"---\ntitle: x\ncontexts: 8=nowhere\n---\n", "x: topic 8: no such anchor: nowhere"},
        {"---\ntitle: x\nkeywords: word=nowhere\n---\n", "x: keyword word: no such anchor: nowhere"},
        {"---\ntitle: x\nparent: nobody\n---\n", "x: no such parent: nobody"},
        {"---\ntitle: x\nparent: x\n---\n", "x: no such parent: x"},
        {"---\ntitle: x\n---\n[a](nobody)", "x: leads nowhere: [a](nobody)"},
        {"---\ntitle: x\n---\n[a](second#gone)", "x: leads nowhere: [a](second#gone)"},
        {"---\ntitle: x\n---\n![a](gone.svg)", "x: leads nowhere: ![a](gone.svg)"},
        {"---\ntitle: x\n---\n## A {#a}\n## B {#a}", "x: two headings with the anchor a"}};
    for (const auto& [source, fault] : kCases) {
        HelpBook book = smallBook();
        HelpPage page = pageOf("x", source);
        page.order = 9;
        book.add(page);
        EXPECT_EQ(book.faults(), QStringList(fault)) << source;
    }
    HelpBook twice = smallBook();
    HelpPage again = pageOf("first", "---\ntitle: x\norder: 9\n---\n");
    twice.add(again);
    EXPECT_EQ(twice.faults(), QStringList("first: two pages of this name"));
}

TEST(HelpFileTest, HoldsEverythingThatWasPutIn) {
    const HelpBook book = smallBook();
    HelpBook read;
    QString errorText;
    ASSERT_TRUE(read.fromFile(book.toFile(), errorText)) << errorText.toStdString();
    ASSERT_EQ(read.pages().size(), 2);
    EXPECT_EQ(read.page("second")->markdown, book.page("second")->markdown);
    EXPECT_EQ(read.page("second")->title, "Second");
    EXPECT_EQ(read.page("second")->parent, "first");
    EXPECT_EQ(read.target(12).anchor, "part");
    EXPECT_EQ(read.page("second")->keywords[1].word, "two");
    EXPECT_EQ(read.picture("mark.svg"), "<svg/>");
    EXPECT_EQ(read.toFile(), book.toFile());
}

TEST(HelpFileTest, AWrongFileIsToldApartFromADamagedOne) {
    HelpBook book = smallBook();
    QString errorText;
    EXPECT_FALSE(book.fromFile("", errorText));
    EXPECT_EQ(errorText, "This is not a help file of this program.");
    EXPECT_FALSE(book.fromFile(QByteArray(5000, 'x'), errorText));
    EXPECT_EQ(errorText, "This is not a help file of this program.");
    QByteArray later = book.toFile();
    later[11] = 9;
    EXPECT_FALSE(book.fromFile(later, errorText));
    EXPECT_EQ(errorText, "This help file was made for another version of the program.");
    EXPECT_EQ(book.pages().size(), 2);  // what was read before stands
}

TEST(HelpFileTest, EveryTruncationAndEveryChangedByteIsNoticed) {
    const QByteArray whole = smallBook().toFile();
    QString errorText;
    for (qsizetype length = 0; length < whole.size(); ++length) {
        HelpBook book;
        EXPECT_FALSE(book.fromFile(whole.left(length), errorText)) << length;
        EXPECT_FALSE(errorText.isEmpty());
    }
    for (qsizetype at = 0; at < whole.size(); ++at) {
        QByteArray damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
        HelpBook book;
        EXPECT_FALSE(book.fromFile(damaged, errorText)) << at;
        EXPECT_TRUE(book.pages().isEmpty());
    }
    HelpBook book;
    EXPECT_FALSE(book.fromFile(whole + "x", errorText));
}

TEST(HelpFileTest, AClaimOfMoreThanPackingEverSavesIsDamage) {
    QByteArray file = smallBook().toFile();
    constexpr qsizetype kDigest = 16;
    constexpr qsizetype kPacked = kDigest + 32;
    file.replace(kPacked, 4, QByteArray::fromHex("7fffffff"));
    file.replace(kDigest, 32, QCryptographicHash::hash(file.mid(kPacked), QCryptographicHash::Sha256));
    HelpBook book;
    QString errorText;
    EXPECT_FALSE(book.fromFile(file, errorText));
    EXPECT_EQ(errorText, "The help file is damaged.");
}

TEST(DeliveredHelp, IsWithoutFaults) {
    EXPECT_EQ(delivered().faults(), QStringList());
}

TEST(DeliveredHelp, HasAPageForEveryTopicOfTheMainWindowAndTheServiceEditor) {
    const HelpBook book = delivered();
    const std::pair<int, int> kRanges[] = {{501, 528}, {601, 621}, {701, 703}, {301, 318}, {7002, 7002}};
    for (const auto& [first, last] : kRanges) {
        for (int topic = first; topic <= last; ++topic) {
            EXPECT_NE(book.target(topic).page, "") << topic;
        }
    }
}

TEST(DeliveredHelp, TheFieldsLeadToTheirOwnParagraph) {
    const HelpBook book = delivered();
    for (int stage = 0; stage < 2; ++stage) {
        for (const EntryRow& row : entryPane(stage).rows) {
            const HelpPlace target = book.target(row.helpContext);
            EXPECT_EQ(target.page, stage == 0 ? "client-fields" : "computer-fields") << row.field;
            EXPECT_NE(target.anchor, "") << row.field;
        }
        EXPECT_EQ(book.target(entryPane(stage).typeAheadContext).page, "finding");
        EXPECT_EQ(book.target(entryPane(stage).selectorContext).page, "finding");
    }
    EXPECT_EQ(book.target(506).anchor, "birth");
    EXPECT_EQ(book.target(517).anchor, "address");
    EXPECT_EQ(book.target(618).anchor, "system");
    EXPECT_EQ(book.target(kServiceListHelp).page, "services");
    EXPECT_EQ(book.target(306).anchor, "price");
    EXPECT_EQ(book.target(7002).anchor, "");
}

TEST(DeliveredHelp, EveryPageButTheFirstIsReachedByALinkAndHasWordsInTheIndex) {
    const HelpBook book = delivered();
    for (const HelpPage& page : book.pages()) {
        EXPECT_FALSE(page.keywords.isEmpty()) << page.id.toStdString();
        bool linked = page.id == book.pages().first().id;
        for (const HelpPage& other : book.pages()) {
            linked = linked || other.markdown.contains("](" + page.id);
        }
        EXPECT_TRUE(linked) << page.id.toStdString();
    }
}
