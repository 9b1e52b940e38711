#include "catalogue/ActiveReport1.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <algorithm>

#include "catalogue/frmKonfigPrint_rules.h"
#include "platform/report/preview.h"
#include "support/fixture.h"
#include "support/modal.h"
#include "support/second_process.h"

namespace {

// A shop with a catalogue of its own and no window.
struct ActiveReport1Test : DeliveredFixture {
    void SetUp() override {
        DeliveredFixture::SetUp();
        CeneDinarske = false;
    }
    void TearDown() override {
        report.setRows(nullptr);
        DeliveredFixture::TearDown();
    }

    void clearCatalogue() {
        for (const char* table : {"Oprema", "Grupe", "Proizvodjaci"}) {
            openDatabase().Execute(std::string("DELETE * FROM ") + table);
        }
    }
    int group(const std::string& name) { return addRow("Grupe", "ID", {{"Grupa", name}}); }
    int maker(const std::string& name) { return addRow("Proizvodjaci", "ID", {{"Proizvodjac", name}}); }
    int product(int groupId, int makerId, const std::string& name, float price,
                const std::string& description = {}) {
        return addRow("Oprema", "ID",
                      {{"IDGrupe", groupId},
                       {"IDProizvodjaca", makerId},
                       {"Naziv", name},
                       {"Opis", description},
                       {"Napomena", ""},
                       {"JM", "Kom."},
                       {"Stanje", 1.0F},
                       {"Cena", price}});
    }
    // So many products in each of so many groups.
    void fill(int groups, int products) {
        clearCatalogue();
        const int makerId = maker("Adler");
        for (int g = 1; g <= groups; ++g) {
            const int groupId = group("Grupa " + std::to_string(g));
            for (int p = 1; p <= products; ++p) {
                product(groupId, makerId, "Proizvod " + std::to_string(100 * g + p), 10);
            }
        }
    }
    dao::Recordset rows() { return openDatabase().OpenRecordset(price_list::statement({}).toStdString()); }
    report::Document make() {
        report.setRecordset(rows());
        return report.run().value();
    }
    report::Control& control(const char* section, const char* name) {
        return report.Sections(section).Controls(name);
    }
    static int occurrences(const report::Document& document, const QString& text) {
        return static_cast<int>(document.find(text).size());
    }

    ActiveReport1 report;
};

}  // namespace

TEST_F(ActiveReport1Test, ARowShowsMakerNameDescriptionAndPrice) {
    clearCatalogue();
    product(group("Monitori"), maker("Adler"), "17 inca", 1234.5F, "ravan ekran");
    const report::Document document = make();
    ASSERT_EQ(document.pageCount(), 1);
    EXPECT_EQ(document.textOfPage(1).trimmed(), "Monitori\nAdler 17 inca ravan ekran 1,234.50\n1 / 1");
}

TEST_F(ActiveReport1Test, EveryControlHasItsPlaceAndItsField) {
    struct Row {
        const char *section, *name, *field;
    };
    for (const Row& row : {Row{"GroupHeader1", "txtGrupa", "Grupa"}, Row{"Detail", "Field1", "Proizvodjac"},
                           Row{"Detail", "Field2", "Naziv"}, Row{"Detail", "Field3", "Opis"},
                           Row{"Detail", "txtCena", "Cena1"}}) {
        EXPECT_EQ(control(row.section, row.name).DataField, row.field) << row.name;
    }
    EXPECT_EQ(control("PageHeader", "lblHeader").Width, 9000);
    EXPECT_EQ(control("PageFooter", "txtFooter").Width, 9000);
    EXPECT_EQ(report.Sections("GroupHeader1").DataField, "Grupa");
    EXPECT_TRUE(report.Sections("GroupFooter1").all().empty());
    EXPECT_EQ(control("Detail", "Line1").kind, report::Control::Kind::Line);
    EXPECT_EQ(control("PageFooter", "Line2").kind, report::Control::Kind::Line);
}

TEST_F(ActiveReport1Test, EmptyHeaderAndFooterHideBothControls) {
    fill(1, 1);
    make();
    EXPECT_FALSE(control("PageHeader", "lblHeader").Visible);
    EXPECT_FALSE(control("PageFooter", "txtFooter").Visible);
}

TEST_F(ActiveReport1Test, HeaderAndFooterStandOnEveryPage) {
    fill(2, 80);
    report.setReportHeader("Cenovnik za mart");
    report.setReportFooter("Lipova 1\n026/1");
    const report::Document document = make();
    ASSERT_GT(document.pageCount(), 2);
    for (int page = 1; page <= document.pageCount(); ++page) {
        const QString text = document.textOfPage(page);
        EXPECT_TRUE(text.startsWith("Cenovnik za mart\n")) << page;
        EXPECT_TRUE(text.contains(QString("Lipova 1 %1 / %2\n026/1").arg(page).arg(document.pageCount())))
            << text.toStdString();
    }
    EXPECT_TRUE(control("PageHeader", "lblHeader").Visible);
    EXPECT_TRUE(control("PageFooter", "txtFooter").Visible);
}

TEST_F(ActiveReport1Test, TextsTakenAwayAreGoneFromTheNextList) {
    fill(1, 1);
    report.setReportHeader("Cenovnik");
    report.setReportFooter("Lipova 1");
    make();
    report.setReportHeader({});
    report.setReportFooter({});
    const QString text = make().textOfPage(1);
    EXPECT_FALSE(text.contains("Cenovnik"));
    EXPECT_FALSE(text.contains("Lipova"));
}

TEST_F(ActiveReport1Test, PricesAreShownRoundedAndKeptAsTheyAre) {
    clearCatalogue();
    const int id = product(group("Monitori"), maker("Adler"), "17 inca", 1234.55F);
    const struct {
        int decimals;
        const char *format, *shown;
    } wanted[] = {{0, "#,##0", " 1,235\n"}, {1, "#,##0.0", " 1,234.6\n"}, {2, "#,##0.00", " 1,234.55\n"}};
    for (const auto& row : wanted) {
        report.setPriceRoundUp(row.decimals);
        EXPECT_TRUE(make().textOfPage(1).contains(row.shown)) << row.decimals;
        EXPECT_EQ(control("Detail", "txtCena").OutputFormat, row.format);
        EXPECT_FLOAT_EQ(static_cast<float>(control("Detail", "txtCena").DataValue.asDouble()), 1234.55F);
    }
    EXPECT_FLOAT_EQ(valueOf("Oprema", "ID", id, "Cena").asSingle(), 1234.55F);
}

TEST_F(ActiveReport1Test, PricesStandInTheUsersForm) {
    clearCatalogue();
    product(group("Monitori"), maker("Adler"), "17 inca", 1234.5F);
    QLocale::setDefault(QLocale("sr_Latn_RS"));
    EXPECT_TRUE(make().textOfPage(1).contains(" 1.234,50\n"));
}

TEST_F(ActiveReport1Test, WithoutAWordTwoDecimals) {
    fill(1, 1);
    EXPECT_TRUE(make().textOfPage(1).contains(" 10.00\n"));
}

TEST_F(ActiveReport1Test, EachGroupHasItsHeadingOnceAndItsLineInTheContents) {
    fill(3, 70);
    const report::Document document = make();
    ASSERT_EQ(document.contents.size(), 3U);
    for (int g = 1; g <= 3; ++g) {
        const report::ContentsEntry& entry = document.contents[static_cast<size_t>(g - 1)];
        EXPECT_EQ(entry.text, QString("Grupa %1").arg(g));
        EXPECT_EQ(entry.level, 0);
        const QList<report::Hit> places = document.find(entry.text);
        ASSERT_EQ(places.size(), 1);
        EXPECT_EQ(places[0].page, entry.page);
        EXPECT_GE(places[0].place.top(), entry.top);
        EXPECT_LT(places[0].place.top(), entry.top + 500);
    }
    EXPECT_EQ(document.contents[0].page, 1);
    EXPECT_GT(document.contents[1].page, 1);
}

TEST_F(ActiveReport1Test, GroupsAndMakersComeInTheOrderOfTheirNames) {
    clearCatalogue();
    const int b = maker("Bergen"), a = maker("Adler");
    const int z = group("Zvucnici"), k = group("Kucista");
    product(z, b, "Z-B", 1);
    product(k, b, "K-B", 1);
    product(z, a, "Z-A", 1);
    product(k, a, "K-A", 1);
    const QString text = make().textOfPage(1);
    EXPECT_EQ(text.trimmed(),
              "Kucista\nAdler K-A 1.00\nBergen K-B 1.00\nZvucnici\nAdler Z-A 1.00\nBergen Z-B 1.00\n1 / 1");
}

TEST_F(ActiveReport1Test, NoGroupsHeadingIsAloneAtThePagesFoot) {
    fill(60, 1);
    const report::Document document = make();
    ASSERT_GT(document.pageCount(), 1);
    for (int page = 1; page < document.pageCount(); ++page) {
        const QStringList lines = document.textOfPage(page).trimmed().split('\n');
        EXPECT_TRUE(lines.at(lines.size() - 2).contains("Proizvod")) << lines.join('|').toStdString();
    }
}

TEST_F(ActiveReport1Test, LongTextsGoOnBelowAndNothingIsCutOff) {
    clearCatalogue();
    QStringList words;
    for (int i = 1; i <= 24; ++i) {
        words += QString("osobina%1").arg(i);
    }
    const int g = group("Monitori"), m = maker("Proizvodjac Sa Dosta Dugackim Imenom");
    product(g, m, std::string(50, 'W'), 12345678.0F, words.join(' ').toStdString());
    product(g, m, "Sledeci", 1);
    const report::Document document = make();
    for (const QString& word : words) {
        EXPECT_EQ(occurrences(document, word + (word == words.last() ? "" : " ")) > 0, true)
            << word.toStdString();
    }
    EXPECT_EQ(occurrences(document, QString(50, 'W')), 1);
    EXPECT_EQ(occurrences(document, "12,345,678.00"), 1);
    EXPECT_FALSE(document.textOfPage(1).contains(QChar(0x2026)));
    const QList<report::Hit> last = document.find(words.last()), next = document.find("Sledeci");
    ASSERT_EQ(next.size(), 1);
    ASSERT_EQ(last.size(), 1);
    EXPECT_GT(next[0].place.top(), last[0].place.bottom());
}

TEST_F(ActiveReport1Test, NothingOfARowTouchesItsNeighbour) {
    clearCatalogue();
    product(group("Monitori"), maker("Adler"), std::string(40, 'W') + " " + std::string(30, 'W'), 99999999.0F,
            std::string(60, 'W'));
    const report::Document document = make();
    const auto& items = document.pages[0].items;
    for (size_t i = 0; i < items.size(); ++i) {
        for (size_t j = i + 1; j < items.size(); ++j) {
            if (items[i].kind == report::PageItem::Kind::Text &&
                items[j].kind == report::PageItem::Kind::Text) {
                EXPECT_FALSE(items[i].place.adjusted(1, 1, -1, -1).intersects(items[j].place))
                    << items[i].text.toStdString() << " / " << items[j].text.toStdString();
            }
        }
    }
}

TEST_F(ActiveReport1Test, ARowDeletedMeanwhileIsLeftOut) {
    // More rows than are fetched ahead, so that the last ones have still to be read.
    SecondProcess other([this](const SecondProcess::Side& side) {
        side.untilReleased();
        dao::Database file = dao::DBEngine::OpenDatabase(databaseFile().toStdString(), false, false,
                                                         connectText().toStdString());
        file.Execute("DELETE * FROM Oprema WHERE Naziv='Proizvod 149'");
        file.Close();
        side.ready();
    });
    fill(1, 49);
    report.setRecordset(rows());
    other.release();
    ASSERT_TRUE(other.waitReady());
    const report::Document document = report.run().value();
    EXPECT_EQ(occurrences(document, "Proizvod 149"), 0);
    EXPECT_EQ(occurrences(document, "Proizvod 148"), 1);
}

TEST_F(ActiveReport1Test, RowsWithoutTheListsFieldsLeaveItEmpty) {
    addClient();
    addClient("Anic", "Ana");
    report.setRecordset(openDatabase().OpenRecordset("SELECT * FROM Customers"));
    const report::Document document = report.run().value();
    EXPECT_EQ(document.textOfPage(1).trimmed(), "1 / 1");
    EXPECT_TRUE(document.contents.empty());
    const auto& items = document.pages[0].items;
    EXPECT_EQ(std::count_if(items.begin(), items.end(),
                            [](const auto& item) { return item.kind == report::PageItem::Kind::Line; }),
              3)
        << "a line under each row, and the footer's";
}

TEST_F(ActiveReport1Test, WithoutThePaneTheListHasNoContents) {
    fill(2, 1);
    report.setTOCVisible(false);
    EXPECT_TRUE(make().contents.empty());
}

TEST_F(ActiveReport1Test, ThePreviewGoesToTheGroupThatIsChosen) {
    fill(3, 70);
    report.setRecordset(rows());
    inModal<report::ReportPreview>([&] { EXPECT_TRUE(report.Show(true, nullptr)); },
                                   [&](report::ReportPreview& preview) {
                                       EXPECT_EQ(preview.windowTitle(), "Cenovnik");
                                       auto* contents = preview.findChild<QTreeWidget*>("Contents");
                                       if (contents != nullptr) {
                                           EXPECT_EQ(contents->topLevelItemCount(), 3);
                                           EXPECT_EQ(contents->topLevelItem(2)->text(0), "Grupa 3");
                                           EXPECT_TRUE(contents->isVisible());
                                       } else {
                                           ADD_FAILURE() << "no contents";
                                       }
                                       preview.reject();
                                   });
}

TEST_F(ActiveReport1Test, ThePdfCanBeReadBack) {
    fill(2, 60);
    report.setReportHeader("Cenovnik za mart");
    report.setReportFooter("Lipova 1, Smederevo 11300\n026/1  ···  026/2");
    QTemporaryDir folder;
    const QString file = folder.path() + "/cenovnik.pdf";
    const report::Document document = make();
    document.savePdf(file);
    QProcess reader;
    reader.start("pdftotext", {"-layout", file, "-"});
    if (!reader.waitForStarted()) {
        GTEST_SKIP() << "there is no reader of PDF files here";
    }
    ASSERT_TRUE(reader.waitForFinished());
    const QString text = QString::fromUtf8(reader.readAllStandardOutput());
    for (const char* part : {"Cenovnik za mart", "Grupa 1", "Grupa 2", "Adler", "Proizvod 101",
                             "Proizvod 260", "10.00", "Lipova 1, Smederevo 11300", "026/1", "···"}) {
        EXPECT_TRUE(text.contains(part)) << part;
    }
    const int pages = document.pageCount();
    EXPECT_EQ(text.count(QChar('\f')), pages);
    for (int page = 1; page <= pages; ++page) {
        EXPECT_TRUE(text.contains(QRegularExpression(QString("\\b%1 ?/ ?%2\\b").arg(page).arg(pages))));
    }
}
