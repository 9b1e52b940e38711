#include <gtest/gtest.h>

#include "platform/dao/dao.h"
#include "platform/report/field_text.h"
#include "platform/report/typeface.h"
#include "tests/platform/report/sample.h"
#include "tests/platform/system/locale_scope.h"

// Texts in the room they have: wrapped, grown, cut, pushed down; values as fields show them.
namespace {

using namespace sample;

report::Document laidOut(const std::function<void(report::Section&)>& design, int height = 300) {
    Report report;
    tenRowPage(report);
    design(report.section(Part::Detail, "Detail", height));
    report.give(numbered(1));
    return *report.run();
}

report::Control growing(report::Control made) {
    made.CanGrow = true;
    return made;
}

QStringList lines(const report::Document& document) {
    QStringList all;
    for (const report::PageItem& item : document.pages.at(0).items) {
        if (item.kind == report::PageItem::Kind::Text) {
            all.append(item.text);
        }
    }
    return all;
}

TEST(ReportText, LongTextWrapsAtBlanksAndGrows) {
    const auto document = laidOut([](report::Section& section) {
        section.add(growing(label("A", "one two three four five six seven eight nine ten", 0, 0, 1500, 250)));
    });
    const QStringList all = lines(document);
    ASSERT_GT(all.size(), 2);
    EXPECT_EQ(all.join(' '), "one two three four five six seven eight nine ten");
    for (const report::PageItem& item : document.pages[0].items) {
        EXPECT_LE(item.place.width(), 1500.5);
    }
    for (int i = 1; i < all.size(); ++i) {
        EXPECT_EQ(document.pages[0].items[i].place.top(), document.pages[0].items[i - 1].place.bottom());
    }
}

TEST(ReportText, WordLongerThanTheLineBreaksAnywhere) {
    const QString word = QString("jednahiljadadvestotinetridesetcetiri").repeated(4);
    const auto document = laidOut([&](report::Section& section) {
        section.add(growing(label("A", "Slovima: " + word, 0, 0, 3000, 250)));
    });
    const QStringList all = lines(document);
    ASSERT_GT(all.size(), 3);
    EXPECT_TRUE(all[0].startsWith("Slovima: jedna")) << all[0].toStdString();
    EXPECT_EQ(all.join(""), "Slovima: " + word);
    for (const report::PageItem& item : document.pages[0].items) {
        EXPECT_LE(item.place.width(), 3000.5);
    }
}

TEST(ReportText, LineBreaksAreKept) {
    const auto document = laidOut([](report::Section& section) {
        section.add(label("A", "Robu izdao:\n\n____", 0, 0, 3000, 700));
        section.add(growing(label("B", "x\r\ny", 4000, 0, 3000, 200)));
    });
    const auto& items = document.pages[0].items;
    ASSERT_EQ(items.size(), 5U);
    EXPECT_EQ(items[0].text, "Robu izdao:");
    EXPECT_EQ(items[2].text, "____");
    EXPECT_NEAR(items[2].place.top(), items[0].place.top() + 2 * items[0].place.height(), 0.01);
    EXPECT_EQ(items[3].text + items[4].text, "xy");
}

// Addresses are pasted in from letters and web pages, each with breaks of its own.
TEST(ReportText, EveryKindOfBreakIsABreakAndATabABlank) {
    const auto document = laidOut([](report::Section& section) {
        const QString text =
            QString("a\rb%1c%2d\te").arg(QChar(QChar::LineSeparator)).arg(QChar(QChar::ParagraphSeparator));
        section.add(growing(label("A", text, 0, 0, 3000, 200)));
    });
    QStringList lines;
    for (const report::PageItem& item : document.pages[0].items) {
        lines += item.text;
    }
    EXPECT_EQ(lines.join('|'), "a|b|c|d e");
}

TEST(ReportText, CutTextHasAnEllipsisOnlyWhereItDoesNotFit) {
    const auto document = laidOut([](report::Section& section) {
        section.add(label("A", "Maticna ploca sa veoma dugackim nazivom", 0, 0, 1500, 250));
        section.add(label("B", "Mis", 3000, 0, 1500, 250));
        section.add(label("C", "one two three four five six seven", 5000, 0, 1500, 440));
    });
    const QStringList all = lines(document);
    ASSERT_EQ(all.size(), 4);
    EXPECT_TRUE(all[0].startsWith("Maticna"));
    EXPECT_TRUE(all[0].endsWith(QChar(0x2026)));
    EXPECT_LE(document.pages[0].items[0].place.width(), 1500.5);
    EXPECT_EQ(all[1], "Mis");
    EXPECT_FALSE(all[2].endsWith(QChar(0x2026)));
    EXPECT_TRUE(all[3].endsWith(QChar(0x2026)));
}

TEST(ReportText, TextAsWideAsItsBoxIsNotCut) {
    report::ItemStyle style;
    const report::Typeface face(style);
    const QString text = "Ukupno bez PDV-a:";
    const int width = static_cast<int>(std::ceil(face.width(text)));
    const auto document = laidOut([&](report::Section& section) {
        section.add(label("A", text, 0, 0, width, 250));
        section.add(label("B", text, 5000, 0, width - 5, 250));
    });
    EXPECT_EQ(lines(document)[0], text);
    EXPECT_NE(lines(document)[1], text);
}

TEST(ReportText, AlignmentHoldsToTheTwip) {
    const auto document = laidOut([](report::Section& section) {
        auto right = label("A", "1,234.50", 2000, 0, 3000);
        right.style.align = report::Align::Right;
        section.add(right);
        auto centre = label("B", "M.P.", 5000, 0, 3000);
        centre.style.align = report::Align::Center;
        section.add(centre);
    });
    EXPECT_NEAR(document.pages[0].items[0].place.right(), 1000 + 5000, 0.01);
    EXPECT_NEAR(document.pages[0].items[1].place.center().x(), 1000 + 6500, 0.01);
}

TEST(ReportText, MeasuresWhatThePainterDraws) {
    for (const double points : {8.0, 9.0, 11.5, 14.0, 20.0}) {
        report::ItemStyle style;
        style.points = points;
        const report::Typeface face(style);
        for (const QString& text : {QString("Fiskalni racun br. 17/2026"), QString("1,234,567.89 [EUR]"),
                                    QString::fromUtf8("Šabac, Čačak, Đurđevac €"), QString("AVATAR To."),
                                    QString::fromUtf8("Кафа e\u0301 日本")}) {
            const double exact = QFontMetricsF(face.font()).horizontalAdvance(text);
            EXPECT_NEAR(face.width(text), exact, exact * 0.002) << points << text.toStdString();
        }
    }
}

TEST(ReportText, LettersAreNotPartedFromTheirMarks) {
    const QString text = QString::fromUtf8("e\u0301").repeated(60);
    const auto document =
        laidOut([&](report::Section& section) { section.add(growing(label("A", text, 0, 0, 800, 250))); });
    const QStringList all = lines(document);
    ASSERT_GT(all.size(), 2);
    for (const QString& line : all) {
        EXPECT_EQ(line.size() % 2, 0);
    }
}

TEST(ReportGrow, EverythingBelowMovesDownByAsMuch) {
    const auto document = laidOut([](report::Section& section) {
        section.add(growing(label("A", "1\n2\n3", 0, 0, 3000, 210)));
        section.add(label("Beside", "beside", 4000, 100, 3000, 250));
        section.add(label("Below", "below", 4000, 210, 3000, 250));
        section.add(line("Rule", 0, 210, 3000, 210));
        section.add(line("Upright", 3500, 0, 3500, 210));
    });
    const auto& page = document.pages[0];
    const double grown = 3 * itemWith(page, "1")->place.height() - 210;
    ASSERT_GT(grown, 300);
    EXPECT_EQ(itemWith(page, "beside")->place.top(), 1100);
    EXPECT_EQ(itemWith(page, "below")->place.top(), 1210 + grown);
    QList<QRectF> rules;
    for (const report::PageItem& item : page.items) {
        if (item.kind == report::PageItem::Kind::Line) {
            rules.append(item.place);
        }
    }
    EXPECT_EQ(rules[0].top(), 1210 + grown);
    EXPECT_EQ(rules[0].bottom(), 1210 + grown);
    EXPECT_EQ(rules[1].top(), 1000);
    EXPECT_EQ(rules[1].bottom(), 1210 + grown);
}

TEST(ReportGrow, TwoBesideEachOtherPushOnceTwoUnderEachOtherPushTwice) {
    const auto document = laidOut([](report::Section& section) {
        section.add(growing(label("A", "1\n2\n3", 0, 0, 1000, 210)));
        section.add(growing(label("B", "4\n5", 2000, 0, 1000, 210)));
        section.add(growing(label("C", "6\n7", 0, 210, 1000, 210)));
        section.add(label("D", "end", 0, 420, 1000, 210));
    });
    const auto& page = document.pages[0];
    const double height = itemWith(page, "1")->place.height();
    EXPECT_EQ(itemWith(page, "6")->place.top(), 1000 + 3 * height);
    EXPECT_EQ(itemWith(page, "end")->place.top(), 1000 + 5 * height);
}

TEST(ReportGrow, FrameStretchesAroundWhatGrowsInsideIt) {
    const auto document = laidOut([](report::Section& section) {
        section.add(control(Kind::Shape, "Box", 0, 0, 3000, 400));
        section.add(control(Kind::Shape, "Other", 5000, 0, 3000, 400));
        section.add(growing(label("A", "1\n2\n3", 100, 50, 2000, 300)));
    });
    const auto& items = document.pages[0].items;
    EXPECT_EQ(items[0].place.height(), 400 + 3 * items[2].place.height() - 300);
    EXPECT_EQ(items[1].place.height(), 400);
}

TEST(ReportGrow, HiddenControlsNeitherGrowNorPush) {
    const auto document = laidOut([](report::Section& section) {
        section.add(growing(label("A", "1\n2\n3", 0, 0, 3000, 210))).Visible = false;
        section.add(label("B", "below", 0, 210, 3000, 250));
    });
    EXPECT_EQ(itemWith(document.pages[0], "below")->place.top(), 1210);
}

TEST(ReportGrow, SectionThatCanShrinkEndsWithItsLowestEdge) {
    Report report;
    tenRowPage(report);
    auto& detail = report.section(Part::Detail, "Detail", 2000);
    detail.CanShrink = true;
    detail.add(field("N", "Naziv", 0, 0, 2000, 250));
    detail.add(label("SN", "serial", 0, 250, 2000, 250));
    report.onFormat = [](report::Section& section) {
        section.Controls("SN").Visible = section.Controls("N").Text == "1";
    };
    report.give(numbered(3));
    const auto document = report.run();
    EXPECT_EQ(itemWith(document->pages[0], "2")->place.top(), 1500);
    EXPECT_EQ(itemWith(document->pages[0], "3")->place.top(), 1750);
}

TEST(ReportGrow, SectionIsAtLeastAsHighAsDesigned) {
    Report report;
    tenRowPage(report);
    report.section(Part::Detail, "Detail", 600).add(growing(field("N", "Naziv", 0, 0, 2000, 250)));
    report.give({{{"Naziv", "a\nb"}}, {{"Naziv", "c\nd\ne\nf\ng"}}, {{"Naziv", "h"}}});
    const auto document = report.run();
    const double height = itemWith(document->pages[0], "a")->place.height();
    EXPECT_EQ(itemWith(document->pages[0], "c")->place.top(), 1600);
    EXPECT_EQ(itemWith(document->pages[0], "h")->place.top(), 1600 + 5 * height);
}

struct Shown {
    dao::Value value;
    const char* format;
    const char* point;
    const char* comma;
};

TEST(ReportField, ShowsValuesByFormatAndLocale) {
    const Shown all[] = {
        {1234.5F, "#,##0.00", "1,234.50", "1.234,50"},
        {1234.5F, "#,##0.0", "1,234.5", "1.234,5"},
        {1234.5F, "#,##0", "1,235", "1.235"},
        {0.335F, "#,##0.00", "0.34", "0,34"},
        {1234567, "#,##0", "1,234,567", "1.234.567"},
        {1234.565, "#,##0.00", "1,234.57", "1.234,57"},
        {dao::Currency::fromScaled(123450000), "#,##0.00", "12,345.00", "12.345,00"},
        {1234.5F, "", "1234.5", "1234,5"},
        {0.1F, "", "0.1", "0,1"},
        {1234567, "", "1234567", "1234567"},
        {dao::Currency::fromScaled(15000), "", "1.5", "1,5"},
        {dao::Value(), "#,##0.00", "", ""},
        {dao::Value(), "", "", ""},
        {std::string("Mi\xC5\xA1"), "#,##0.00", "Mi\xC5\xA1", "Mi\xC5\xA1"},
        {true, "", "True", "True"},
        {-0.001F, "#,##0.00", "0.00", "0,00"},
        // Reckoned in binary these end a hair below the half; the customer's pocket calculator does not.
        {6.375 * 1.2, "#,##0.0", "7.7", "7,7"},
        {-6.375 * 1.2, "#,##0.0", "-7.7", "-7,7"},
        {1.15 * 100.5, "#,##0.00", "115.58", "115,58"},
        {123456789012.345, "#,##0.00", "123,456,789,012.35", "123.456.789.012,35"},
    };
    for (const Shown& shown : all) {
        const LocaleScope point("en_US");
        EXPECT_EQ(report::fieldText(shown.value, shown.format), QString::fromUtf8(shown.point));
        const LocaleScope comma("de_DE");
        EXPECT_EQ(report::fieldText(shown.value, shown.format), QString::fromUtf8(shown.comma));
    }
}

TEST(ReportField, TakesItsRowsFromARecordSet) {
    QTemporaryDir folder;
    const std::string path = (folder.path() + "/r.mdb").toStdString();
    dao::Database database = dao::DBEngine::CreateDatabase(path, ";pwd=report");
    dao::TableDef table = database.CreateTableDef("T");
    table.Append({"Naziv", dao::dbText, 50});
    table.Append({"Cena", dao::dbSingle});
    database.TableDefs().Append(table);
    dao::Recordset rows = database.OpenRecordset("SELECT * FROM T");
    rows.AddNew();
    rows.Fields("Naziv") = "Mis";
    rows.Fields("Cena") = 2.5F;
    rows.Update();
    rows.AddNew();
    rows.Fields("Naziv") = "Ekran";
    rows.Update();
    rows.MoveLast();
    Report report;
    auto& detail = report.section(Part::Detail, "Detail", 500);
    detail.add(field("N", "Naziv"));
    detail.add(field("C", "Cena", 5000)).OutputFormat = "#,##0.00";
    report.setRows(report::rowsOf(rows));
    EXPECT_EQ(texts(*report.run(), 1), "Mis 2.50|Ekran");
    EXPECT_EQ(texts(*report.run(), 1), "Mis 2.50|Ekran");
    // Somebody deletes the first row while the report is being laid out again.
    report.setRows(report::rowsOf(database.OpenRecordset("SELECT * FROM T")));
    database.Execute("DELETE FROM T WHERE Naziv='Mis'");
    EXPECT_EQ(texts(*report.run(), 1), "Ekran");
    dao::Recordset none = database.OpenRecordset("SELECT * FROM T WHERE Naziv='x'");
    report.setRows(report::rowsOf(none));
    EXPECT_EQ(texts(*report.run(), 1), "");
    rows.Close();
    none.Close();
    database.Close();
}

}  // namespace
