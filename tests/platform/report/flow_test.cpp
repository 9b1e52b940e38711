#include <gtest/gtest.h>

#include "tests/platform/report/sample.h"

// How rows and sections come onto pages, and in which order the handlers are asked.
namespace {

using namespace sample;

TEST(ReportEvents, ComeInTheOrderTold) {
    Report report;
    tenRowPage(report);
    report.section(Part::ReportHeader, "ReportHeader", 500);
    report.section(Part::PageHeader, "PageHeader", 500);
    report.section(Part::GroupHeader, "GroupHeader1", 500);
    report.section(Part::Detail, "Detail", 1000).add(field("N", "Naziv"));
    report.section(Part::GroupFooter, "GroupFooter1", 500);
    report.section(Part::PageFooter, "PageFooter", 500);
    report.section(Part::ReportFooter, "ReportFooter", 500);
    report.give(numbered(2));
    ASSERT_TRUE(report.run());
    EXPECT_EQ(report.events,
              (QStringList{"ReportStart", "PageStart", "Format ReportHeader", "BeforePrint ReportHeader",
                           "Format PageHeader", "BeforePrint PageHeader", "Format GroupHeader1",
                           "BeforePrint GroupHeader1", "Format Detail", "BeforePrint Detail", "Format Detail",
                           "BeforePrint Detail", "Format GroupFooter1", "BeforePrint GroupFooter1",
                           "Format ReportFooter", "BeforePrint ReportFooter", "Format PageFooter",
                           "BeforePrint PageFooter", "ReportEnd"}));
}

TEST(ReportEvents, PageStartComesBeforeTheFirstRowOfItsPage) {
    Report report;
    tenRowPage(report);
    report.section(Part::Detail, "Detail", 1000).add(field("N", ""));
    int next = 1;
    report.onPage = [&] { next = 1; };
    report.onFormat = [&](report::Section& section) { section.Controls("N").Text = QString::number(next++); };
    report.give(numbered(25));
    const auto document = report.run();
    ASSERT_TRUE(document);
    ASSERT_EQ(document->pageCount(), 3);
    EXPECT_EQ(texts(*document, 1), "1|2|3|4|5|6|7|8|9|10");
    EXPECT_EQ(texts(*document, 2), "1|2|3|4|5|6|7|8|9|10");
    EXPECT_EQ(texts(*document, 3), "1|2|3|4|5");
}

TEST(ReportEvents, ArrangeDecidesWhetherTheRowStillFits) {
    Report report;
    tenRowPage(report);
    auto& detail = report.section(Part::Detail, "Detail", 0);
    detail.CanShrink = true;
    detail.add(field("N", "Naziv", 0, 0, 4000, 1000));
    detail.add(label("More", "more", 0, 1000, 4000, 1000));
    int next = 1;
    report.onPage = [&] { next = 1; };
    // Only every tenth row takes two rows' room: the tenth has none left on the first page.
    report.onArrange = [](report::Section& section) {
        section.Controls("More").Visible = section.Controls("N").Text.endsWith('0');
    };
    QStringList counted;
    report.onFormat = [&](report::Section&) { counted.append(QString::number(next++)); };
    report.give(numbered(11));
    const auto document = report.run();
    ASSERT_TRUE(document);
    EXPECT_EQ(texts(*document, 1), "1|2|3|4|5|6|7|8|9");
    EXPECT_EQ(texts(*document, 2), "10|more|11");
    EXPECT_EQ(counted.mid(8), (QStringList{"9", "1", "2"}));
}

TEST(ReportEvents, FormatSeesTheRowAndItsTextHoldsForThatRowOnly) {
    Report report;
    tenRowPage(report);
    auto& detail = report.section(Part::Detail, "Detail", 1000);
    detail.add(field("N", "Naziv"));
    detail.add(field("B", "Broj", 5000));
    report.onFormat = [](report::Section& section) {
        if (section.Controls("B").DataValue.asLong() == 2) {
            section.Controls("N").Text = "two";
        }
    };
    report.give(numbered(3));
    EXPECT_EQ(texts(*report.run(), 1), "1 1|two 2|3 3");
}

TEST(ReportEvents, PageStartMaySetTheFormatOfItsFirstRow) {
    Report report;
    tenRowPage(report);
    auto& detail = report.section(Part::Detail, "Detail", 1000);
    detail.add(field("B", "Broj"));
    report.onPage = [&] {
        detail.Controls("B").OutputFormat = report.pageNumber() == 1 ? "#,##0.0" : "#,##0.00";
    };
    report.give(numbered(11));
    const auto document = report.run();
    EXPECT_TRUE(texts(*document, 1).startsWith("1.0|2.0"));
    EXPECT_EQ(texts(*document, 2), "11.00");
}

TEST(ReportEvents, FooterShowsTheLastRowOfItsGroup) {
    Report report;
    tenRowPage(report);
    report.section(Part::GroupHeader, "GroupHeader1", 500).DataField = "Grupa";
    report.Sections("GroupHeader1").add(field("G", "Grupa"));
    report.section(Part::Detail, "Detail", 500).add(field("N", "Naziv"));
    report.section(Part::GroupFooter, "GroupFooter1", 500).add(field("F", "Naziv", 5000));
    report.give({{{"Grupa", "A"}, {"Naziv", "1"}},
                 {{"Grupa", "a"}, {"Naziv", "2"}},
                 {{"Grupa", "B"}, {"Naziv", "3"}}});
    EXPECT_EQ(texts(*report.run(), 1), "A|1|2|2|B|3|3");
}

TEST(ReportFlow, NestedGroupsOpenAndCloseFromTheOutside) {
    Report report;
    report.section(Part::GroupHeader, "Outer", 500).DataField = "G";
    report.section(Part::GroupHeader, "Inner", 500).DataField = "H";
    report.section(Part::Detail, "Detail", 500).add(field("N", "N"));
    report.section(Part::GroupFooter, "InnerEnd", 500);
    report.section(Part::GroupFooter, "OuterEnd", 500);
    const auto row = [](const char* g, const char* h) { return Row{{"G", g}, {"H", h}, {"N", "x"}}; };
    report.give({row("1", "a"), row("1", "b"), row("2", "b")});
    ASSERT_TRUE(report.run());
    QStringList order = report.events.filter("Format ");
    order.replaceInStrings("Format ", "");
    EXPECT_EQ(order, (QStringList{"Outer", "Inner", "Detail", "InnerEnd", "Inner", "Detail", "InnerEnd",
                                  "OuterEnd", "Outer", "Inner", "Detail", "InnerEnd", "OuterEnd"}));
}

TEST(ReportFlow, SectionsStandAtTheirPlaces) {
    Report report;
    tenRowPage(report);
    report.section(Part::ReportHeader, "ReportHeader", 700).add(label("", "report header"));
    report.section(Part::PageHeader, "PageHeader", 600).add(label("", "page header"));
    report.section(Part::Detail, "Detail", 500).add(field("N", "Naziv", 0, 100));
    report.section(Part::PageFooter, "PageFooter", 400).add(label("", "page footer"));
    report.give(numbered(30));
    const auto document = report.run();
    ASSERT_EQ(document->pageCount(), 2);
    const auto top = [&](size_t page, const QString& text) {
        const report::PageItem* item = itemWith(document->pages[page], text);
        return item ? item->place.top() : -1;
    };
    EXPECT_EQ(top(0, "report header"), 1000);
    EXPECT_EQ(top(0, "page header"), 1700);
    EXPECT_EQ(top(0, "1"), 2400);
    EXPECT_EQ(top(0, "16"), 2300 + 15 * 500 + 100);
    EXPECT_EQ(top(0, "17"), -1);  // would run into the footer
    EXPECT_EQ(top(0, "page footer"), 10600);
    EXPECT_EQ(top(1, "report header"), -1);
    EXPECT_EQ(top(1, "page header"), 1000);
    EXPECT_EQ(top(1, "17"), 1700);
    EXPECT_EQ(top(1, "page footer"), 10600);
    EXPECT_EQ(itemWith(document->pages[0], "1")->place.left(), 1000);
}

TEST(ReportFlow, NoRowIsTornAcrossPages) {
    Report report;
    tenRowPage(report);
    auto& detail = report.section(Part::Detail, "Detail", 300);
    report::Control text = field("N", "Naziv", 0, 0, 3000, 250);
    text.CanGrow = true;
    detail.add(text);
    std::vector<Row> rows;
    for (int i = 0; i < 60; ++i) {
        rows.push_back({{"Naziv", QString("row%1 ").arg(i).repeated(1 + i * 7 % 40).toStdString()}});
    }
    report.give(std::move(rows));
    const auto document = report.run();
    ASSERT_GT(document->pageCount(), 3);
    QStringList seen;
    for (int page = 1; page <= document->pageCount(); ++page) {
        QStringList here;
        for (const report::PageItem& item : document->pages[static_cast<size_t>(page - 1)].items) {
            EXPECT_LE(item.place.bottom(), 11000.5);
            here.append(item.text.split(' ', Qt::SkipEmptyParts));
        }
        here.removeDuplicates();
        for (const QString& word : here) {
            EXPECT_FALSE(seen.contains(word)) << word.toStdString() << " on page " << page;
        }
        seen += here;
    }
    EXPECT_EQ(seen.size(), 60);
}

TEST(ReportFlow, RowThatGrowsInFormatStillIsNotTorn) {
    Report report;
    tenRowPage(report);
    auto& detail = report.section(Part::Detail, "Detail", 1000);
    detail.add(field("N", "Naziv"));
    detail.add(label("More", "more", 0, 1000, 4000, 1000)).Visible = false;
    report.onFormat = [](report::Section& section) {
        section.Controls("More").Visible = section.Controls("N").Text == "10";
    };
    report.give(numbered(10));
    const auto document = report.run();
    EXPECT_EQ(texts(*document, 1), "1|2|3|4|5|6|7|8|9");
    EXPECT_EQ(texts(*document, 2), "10|more");
}

TEST(ReportFlow, WhatNoPageCanHoldIsCutAtThePagesEnd) {
    Report report;
    tenRowPage(report);
    auto& detail = report.section(Part::Detail, "Detail", 300);
    report::Control text = field("N", "Naziv", 0, 0, 3000, 250);
    text.CanGrow = true;
    detail.add(text);
    detail.add(line("L", 0, 250, 3000, 250));
    report.give({{{"Naziv", QString("word ").repeated(2000).toStdString()}}, {{"Naziv", "after"}}});
    const auto document = report.run();
    ASSERT_EQ(document->pageCount(), 2);
    EXPECT_GT(document->pages[0].items.size(), 40U);
    for (const report::PageItem& item : document->pages[0].items) {
        EXPECT_LE(item.place.bottom(), 11000.5);
    }
    EXPECT_EQ(texts(*document, 2), "after");
}

// Column titles above rows: on each page that has rows of theirs.
class ColumnTitles : public ::testing::Test {
 protected:
    void SetUp() override {
        tenRowPage(report);
        auto& header = report.section(Part::GroupHeader, "GroupHeader1", 1000);
        header.add(label("", "titles"));
        header.RepeatOnPage = true;
        report.section(Part::Detail, "Detail", 1000).add(field("N", "Naziv"));
        report.section(Part::GroupFooter, "GroupFooter1", 2000).add(label("Sum", "sum"));
    }
    Report report;
};

TEST_F(ColumnTitles, AreRepeatedWhereRowsGoOn) {
    report.give(numbered(12));
    const auto document = report.run();
    ASSERT_EQ(document->pageCount(), 2);
    EXPECT_EQ(texts(*document, 1), "titles|1|2|3|4|5|6|7|8|9");
    EXPECT_EQ(texts(*document, 2), "titles|10|11|12|sum");
}

TEST_F(ColumnTitles, AreNotRepeatedAboveAFooterThatStandsAlone) {
    report.give(numbered(8));
    const auto document = report.run();
    ASSERT_EQ(document->pageCount(), 2);
    EXPECT_EQ(texts(*document, 1), "titles|1|2|3|4|5|6|7|8");
    EXPECT_EQ(texts(*document, 2), "sum");
    EXPECT_EQ(itemWith(document->pages[1], "sum")->place.top(), 1000);
}

TEST_F(ColumnTitles, AreNotRepeatedWhereNotAskedFor) {
    report.Sections("GroupHeader1").RepeatOnPage = false;
    report.give(numbered(12));
    EXPECT_EQ(texts(*report.run(), 2), "10|11|12|sum");
}

TEST_F(ColumnTitles, NeverStandAloneAtAPagesFoot) {
    report.Sections("GroupHeader1").DataField = "Naziv";
    report.Sections("GroupFooter1").Height = 0;
    report.Sections("GroupFooter1").Visible = false;
    report.section(Part::ReportHeader, "ReportHeader", 1000);
    report.give(numbered(6));
    const auto document = report.run();
    EXPECT_EQ(texts(*document, 1), "titles|1|titles|2|titles|3|titles|4");
    EXPECT_EQ(texts(*document, 2), "titles|5|titles|6");
}

TEST_F(ColumnTitles, GoAlongWithARowThatGrowsInFormat) {
    report.Sections("GroupHeader1").DataField = "Naziv";
    report.Sections("GroupFooter1").Visible = false;
    report.Sections("Detail").add(label("More", "more", 0, 1000, 4000, 1000)).Visible = false;
    QList<int> starts;
    report.onPage = [&] { starts.append(report.events.count("Format Detail")); };
    report.onFormat = [this](report::Section& section) {
        if (section.name() == "GroupHeader1") {
            report.addToContents("group");
        }
        if (section.name() == "Detail") {
            section.Controls("More").Visible = section.Controls("N").Text == "5";
        }
    };
    report.give(numbered(6));
    const auto document = report.run();
    EXPECT_EQ(texts(*document, 1), "titles|1|titles|2|titles|3|titles|4");
    EXPECT_EQ(texts(*document, 2), "titles|5|more|titles|6");
    ASSERT_EQ(document->contents.size(), 6U);
    EXPECT_EQ(document->contents[4].page, 2);
    EXPECT_EQ(document->contents[4].top, 1000);
}

TEST(ReportFlow, OuterGroupsTitlesStandAboveItsRowsOnTheNextPage) {
    Report report;
    tenRowPage(report);
    auto& outer = report.section(Part::GroupHeader, "Outer", 1000);
    outer.DataField = "G";
    outer.RepeatOnPage = true;
    outer.add(field("", "G"));
    auto& inner = report.section(Part::GroupHeader, "Inner", 1000);
    inner.DataField = "H";
    inner.RepeatOnPage = true;
    inner.add(field("", "H"));
    report.section(Part::Detail, "Detail", 1000).add(field("", "N"));
    std::vector<Row> rows;
    for (int i = 1; i <= 12; ++i) {
        rows.push_back({{"G", "G"}, {"H", i < 9 ? "H1" : "H2"}, {"N", std::to_string(i)}});
    }
    report.give(std::move(rows));
    const auto document = report.run();
    EXPECT_EQ(texts(*document, 1), "G|H1|1|2|3|4|5|6|7|8");
    EXPECT_EQ(texts(*document, 2), "G|H2|9|10|11|12");
}

TEST(ReportFlow, FooterThatGrowsBeforePrintStaysWhole) {
    Report report;
    tenRowPage(report);
    report.section(Part::GroupHeader, "GroupHeader1", 0);
    report.section(Part::Detail, "Detail", 1000).add(field("N", "Naziv"));
    auto& footer = report.section(Part::GroupFooter, "GroupFooter1", 500);
    report::Control words = label("Words", "", 0, 0, 3000, 250);
    words.CanGrow = true;
    footer.add(words);
    report.onBeforePrint = [](report::Section& section) {
        if (section.name() == "GroupFooter1") {
            section.Controls("Words").Caption = QString("word ").repeated(60).trimmed();
        }
    };
    report.give(numbered(9));
    const auto document = report.run();
    ASSERT_EQ(document->pageCount(), 2);
    EXPECT_EQ(texts(*document, 1), "1|2|3|4|5|6|7|8|9");
    EXPECT_EQ(document->textOfPage(2).count("word"), 60);
    EXPECT_EQ(report.events.count("BeforePrint GroupFooter1"), 1);
}

TEST(ReportFlow, WithoutRowsThereIsOnePageWithoutGroups) {
    Report report;
    report.section(Part::ReportHeader, "ReportHeader", 500).add(label("", "head"));
    report.section(Part::GroupHeader, "GroupHeader1", 500).add(label("", "titles"));
    report.section(Part::Detail, "Detail", 500).add(field("", "Naziv"));
    report.section(Part::PageFooter, "PageFooter", 500).add(label("", "foot"));
    report.give({});
    const auto document = report.run();
    ASSERT_EQ(document->pageCount(), 1);
    EXPECT_EQ(texts(*document, 1), "head|foot");
}

TEST(ReportFlow, PageNumbersTellHowManyThereAre) {
    Report report;
    tenRowPage(report);
    report.section(Part::Detail, "Detail", 1000);
    auto number = control(Kind::PageNumber, "Number", 6000, 0, 4000, 300);
    number.Caption = "Strana %1 od %2";
    number.style.align = report::Align::Right;
    report.section(Part::PageFooter, "PageFooter", 400).add(number);
    report.give(numbered(20));
    const auto document = report.run();
    ASSERT_EQ(document->pageCount(), 3);
    EXPECT_EQ(texts(*document, 1), "Strana 1 od 3");
    EXPECT_EQ(texts(*document, 3), "Strana 3 od 3");
    EXPECT_NEAR(document->pages[0].items[0].place.right(), 11000, 0.5);
}

TEST(ReportFlow, InvisibleSectionsTakeNoRoom) {
    Report report;
    tenRowPage(report);
    report.section(Part::PageHeader, "PageHeader", 5000).add(label("", "head"));
    report.Sections("PageHeader").Visible = false;
    report.section(Part::Detail, "Detail", 1000).add(field("", "Naziv"));
    report.give(numbered(10));
    const auto document = report.run();
    EXPECT_EQ(document->pageCount(), 1);
    EXPECT_FALSE(itemWith(document->pages[0], "head"));
}

TEST(ReportFlow, TheSameReportRunsAgain) {
    Report report;
    tenRowPage(report);
    report.section(Part::Detail, "Detail", 1000).add(field("", "Naziv"));
    report.give(numbered(12));
    const QString first = report.run()->textOfPage(2);
    EXPECT_EQ(first, "11\n12");
    EXPECT_EQ(report.run()->textOfPage(2), first);
}

TEST(ReportContents, PointAtTheSectionThatWasLaidOut) {
    Report report;
    tenRowPage(report);
    auto& header = report.section(Part::GroupHeader, "GroupHeader1", 1000);
    header.DataField = "Broj";
    header.add(field("G", "Broj"));
    report.section(Part::Detail, "Detail", 2000);
    report.onFormat = [&](report::Section& section) {
        if (section.name() == "GroupHeader1") {
            report.addToContents("Grupa " + section.Controls("G").Text, 0);
        }
    };
    report.onBeforePrint = [&](report::Section& section) {
        if (section.name() == "Detail") {
            report.addToContents("red", 1);
        }
    };
    report.give(numbered(4));
    const auto document = report.run();
    ASSERT_EQ(document->contents.size(), 8U);
    EXPECT_EQ(document->contents[0].text, "Grupa 1");
    EXPECT_EQ(document->contents[0].top, 1000);
    EXPECT_EQ(document->contents[1].level, 1);
    EXPECT_EQ(document->contents[1].top, 2000);
    EXPECT_EQ(document->contents[6].text, "Grupa 4");
    EXPECT_EQ(document->contents[6].page, 2);
    EXPECT_EQ(document->contents[6].top, 1000);
}

TEST(ReportRun, CancelKeepsNothingAndStillEnds) {
    Report report;
    report.section(Part::Detail, "Detail", 1000).add(field("", "Naziv"));
    report.give(numbered(100));
    qint64 told = 0;
    const auto document = report.run([&](qint64 done, qint64 all) {
        EXPECT_EQ(all, 100);
        told = done;
        return done < 7;
    });
    EXPECT_FALSE(document);
    EXPECT_EQ(told, 7);
    EXPECT_EQ(report.events.count("Format Detail"), 7);
    EXPECT_EQ(report.events.last(), "ReportEnd");
    EXPECT_EQ(report.pageNumber(), 0);
    EXPECT_TRUE(report.run());
}

TEST(ReportRun, ErrorOfTheRowsIsThrownAndTheReportCanRunAgain) {
    Report report;
    report.section(Part::Detail, "Detail", 1000).add(field("", "Naziv"));
    Rows* rows = report.give(numbered(5));
    rows->failAt = 3;
    try {
        report.run();
        FAIL() << "no error";
    } catch (const dao::Error& error) {
        EXPECT_EQ(error.Number(), 3167);
    }
    EXPECT_EQ(report.events.last(), "ReportEnd");
    rows->failAt = -1;
    EXPECT_TRUE(report.run());
}

TEST(ReportRun, UnknownFieldIsAnError) {
    Report report;
    report.section(Part::Detail, "Detail", 1000).add(field("", "NoSuch"));
    report.give(numbered(1));
    EXPECT_THROW(report.run(), dao::Error);
}

TEST(ReportRun, DoesNotBeginAnewInItsMidst) {
    Report report;
    report.section(Part::Detail, "Detail", 1000);
    report.give(numbered(1));
    report.onFormat = [&](report::Section&) { EXPECT_THROW(report.run(), platform::RunError); };
    EXPECT_TRUE(report.run());
}

TEST(ReportDesign, NamesAreUnique) {
    Report report;
    auto& detail = report.section(Part::Detail, "Detail", 1000);
    detail.add(label("A", "a"));
    detail.add(label("", "x"));
    detail.add(label("", "y"));
    const auto number = [](auto act) {
        platform::Trap step;
        step(act);
        return step.number();
    };
    EXPECT_EQ(number([&] { detail.add(label("A", "b")); }), 457);
    EXPECT_EQ(number([&] { report.addSection(Part::Detail, "Detail"); }), 457);
    EXPECT_EQ(number([&] { detail.Controls("B"); }), 35601);
    EXPECT_EQ(number([&] { report.Sections("Nowhere"); }), 35601);
    EXPECT_EQ(detail.Controls("A").Caption, "a");
}

}  // namespace
