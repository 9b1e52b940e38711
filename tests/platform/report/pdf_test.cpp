#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

#include "tests/platform/report/sample.h"

// One layout for screen, printer and PDF: what stands in the files, and that all look alike.
namespace {

using namespace sample;

// An invoice of the usual kind: head, column titles, rows with amounts, a total in words, page numbers.
void designInvoice(Report& report) {
    report.title = "Racun 17/2026";
    auto& head = report.section(Part::ReportHeader, "ReportHeader", 1800);
    report::Control name = label("Name", QString::fromUtf8("RAČUN br. 17/2026"), 0, 200, 6000, 450);
    name.style.points = 18;
    name.style.bold = true;
    head.add(name);
    auto picture = control(Kind::Image, "Image1", 6500, 0, 3000, 1500);
    picture.picture = "DocumentHead1";
    head.add(picture);
    report::Control box = control(Kind::Shape, "Shape1", 0, 800, 5000, 700);
    box.fill = QColor(240, 244, 250);
    head.add(box);
    head.add(label("Buyer", QString::fromUtf8("Đorđe Šećerov, Čačak"), 100, 900));
    auto& titles = report.section(Part::GroupHeader, "GroupHeader1", 400);
    titles.RepeatOnPage = true;
    titles.add(label("T1", "Naziv", 500, 50)).style.bold = true;
    titles.add(line("L1", 0, 350, 10200, 350));
    auto& detail = report.section(Part::Detail, "Detail", 280);
    report::Control text = field("N", "Naziv", 500, 20, 4000, 220);
    text.CanGrow = true;
    detail.add(text);
    const char* amounts[] = {"Stanje", "Cena", "PDV", "PDVPrice", "MedjuTotal"};
    for (int i = 0; i < 5; ++i) {
        report::Control amount = field(amounts[i], amounts[i], 4600 + i * 1120, 20, 1100, 220);
        amount.OutputFormat = "#,##0.00";
        amount.style.align = report::Align::Right;
        detail.add(amount);
    }
    detail.add(line("L3", 0, 260, 10200, 260));
    auto number = control(Kind::PageNumber, "Number", 7000, 0, 3200, 250);
    number.Caption = "Strana %1 od %2";
    number.style.align = report::Align::Right;
    report.section(Part::PageFooter, "PageFooter", 300).add(number);
}

std::vector<Row> invoiceRows(int count) {
    std::vector<Row> rows;
    for (int i = 0; i < count; ++i) {
        const float price = 10.25F + static_cast<float>(i) * 1.5F;
        rows.push_back({{"Naziv", QString("Proizvod broj %1 model X%2").arg(i).arg(i * 7).toStdString()},
                        {"Stanje", 2.0F},
                        {"Cena", price},
                        {"PDV", price * 0.18F},
                        {"PDVPrice", price * 1.18F},
                        {"MedjuTotal", price * 2.36F}});
    }
    return rows;
}

class ReportPdf : public ::testing::Test {
 protected:
    report::Document invoice(int rows) {
        designInvoice(report);
        report.give(invoiceRows(rows));
        return *report.run();
    }
    QString path(const QString& name) const { return folder.path() + '/' + name; }
    Report report;
    QTemporaryDir folder;
};

TEST_F(ReportPdf, HoldsRealTextWithItsLetters) {
    invoice(3).savePdf(path("a.pdf"));
    const QString text = tool("pdftotext", {"-layout"}, path("a.pdf"), {"-"});
    EXPECT_TRUE(text.contains(QString::fromUtf8("RAČUN br. 17/2026")));
    EXPECT_TRUE(text.contains(QString::fromUtf8("Đorđe Šećerov, Čačak")));
    EXPECT_TRUE(text.contains(QRegularExpression("Proizvod broj 1 model X7 +2\\.00 +11\\.75 +2\\.1[12] ")))
        << text.toStdString();
    EXPECT_TRUE(text.contains("Strana 1 od 1"));
    const QString fonts = tool("pdffonts", {}, path("a.pdf"));
    // Embedded, and readable back into letters.
    EXPECT_EQ(fonts.count(QRegularExpression(" yes +(yes|no) +yes ")), 2) << fonts.toStdString();
    EXPECT_EQ(tool("pdfimages", {"-list"}, path("a.pdf")).count('\n'), 2);  // its two title lines: no images
}

// Drawn as one sign, "fi" would be found by nobody who looks for "grafika".
TEST_F(ReportPdf, LettersStayLettersWhereATypefaceWouldJoinThem) {
    report.section(Part::ReportHeader, "H", 1200);
    report.Sections("H").add(label("Small", "magnetni filteri, Airflow", 0, 0, 6000, 250));
    report::Control large = label("Large", "Graficke kartice", 0, 400, 6000, 500);
    large.style.points = 16;
    report.Sections("H").add(large);
    report.run()->savePdf(path("a.pdf"));
    const QString text = tool("pdftotext", {}, path("a.pdf"), {"-"});
    EXPECT_TRUE(text.contains("magnetni filteri, Airflow")) << text.toStdString();
    EXPECT_TRUE(text.contains("Graficke kartice")) << text.toStdString();
}

TEST_F(ReportPdf, HasTheDocumentsTitlePagesAndSize) {
    const report::Document document = invoice(100);
    ASSERT_GT(document.pageCount(), 1);
    document.savePdf(path("a.pdf"));
    const QString facts = tool("pdfinfo", {}, path("a.pdf"));
    EXPECT_TRUE(facts.contains(QRegularExpression("Title: +Racun 17/2026")));
    EXPECT_TRUE(facts.contains(QRegularExpression(QString("Pages: +%1\n").arg(document.pageCount()))));
    EXPECT_TRUE(facts.contains("A4")) << facts.toStdString();
}

TEST_F(ReportPdf, OtherPaperKeepsItsSize) {
    report.page.width = 16838;
    report.page.height = 11906;
    invoice(1).savePdf(path("a.pdf"));
    EXPECT_TRUE(
        tool("pdfinfo", {}, path("a.pdf")).contains(QRegularExpression("Page size: +84[12].* x 595")));
}

TEST_F(ReportPdf, LongWordIsFoundAcrossItsLines) {
    report.section(Part::ReportHeader, "H", 1000);
    const QString word = QString("jednahiljadadvestotine").repeated(6);
    report::Control words = label("W", "Slovima: " + word + " i jos nesto iza toga", 0, 0, 3000, 250);
    words.CanGrow = true;
    report.Sections("H").add(words);
    const report::Document document = *report.run();
    const auto whole = document.find(word);
    ASSERT_EQ(whole.size(), 1);
    EXPECT_GT(whole[0].further.size(), 2);
    EXPECT_EQ(document.find("NESTO IZA").size(), 1);
    EXPECT_EQ(document.find("hiljada").size(), 6);
}

// How far the ink of two pictures of a page differs: the share of small squares whose darkness is not alike.
double difference(const QImage& a, const QImage& b) {
    constexpr int kSquare = 8;
    int squares = 0;
    int unlike = 0;
    const auto darkness = [](const QImage& image, int left, int top) {
        int sum = 0;
        for (int y = top; y < top + kSquare; ++y) {
            for (int x = left; x < left + kSquare; ++x) {
                sum += 255 - qGray(image.pixel(x, y));
            }
        }
        return sum / (kSquare * kSquare);
    };
    const int width = std::min(a.width(), b.width());
    const int height = std::min(a.height(), b.height());
    for (int y = 0; y + kSquare <= height; y += kSquare) {
        for (int x = 0; x + kSquare <= width; x += kSquare) {
            const int inkA = darkness(a, x, y);
            const int inkB = darkness(b, x, y);
            if (inkA < 4 && inkB < 4) {
                continue;
            }
            ++squares;
            unlike += std::abs(inkA - inkB) > 40;
        }
    }
    return squares == 0 ? 1.0 : static_cast<double>(unlike) / squares;
}

QImage painted(const report::Document& document, int page, int dpi) {
    QImage image(document.width * dpi / 1440, document.height * dpi / 1440, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(dpi / 1440.0, dpi / 1440.0);
    document.paint(painter, page);
    return image;
}

TEST_F(ReportPdf, LooksAsTheScreenDoes) {
    const report::Document document = invoice(60);
    document.savePdf(path("a.pdf"));
    tool("pdftoppm", {"-r", "150", "-png"}, path("a.pdf"), {path("page")});
    for (int page = 1; page <= 2; ++page) {
        const QImage sheet(path(QString("page-%1.png").arg(page)));
        ASSERT_FALSE(sheet.isNull());
        const QImage screen = painted(document, page, 150);
        EXPECT_NEAR(sheet.width(), screen.width(), 1);
        EXPECT_NEAR(sheet.height(), screen.height(), 2);  // a file counts its sheet in whole points
        EXPECT_LT(difference(sheet, screen), 0.02) << "page " << page;
        // The measure itself can tell: the same page a millimetre lower is another one.
        EXPECT_GT(difference(sheet, screen.copy(0, 6, screen.width(), screen.height())), 0.3);
    }
    if (qEnvironmentVariableIsSet("REPORT_PICTURES")) {
        painted(document, 1, 100).save(qEnvironmentVariable("REPORT_PICTURES") + "/report-page.png");
    }
}

TEST_F(ReportPdf, PaintsOnlyWhatIsAskedFor) {
    const report::Document document = invoice(30);
    QImage image(794, 1123, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(96 / 1440.0, 96 / 1440.0);
    document.paint(painter, 1, QRectF(0, 0, 11906, 1500));
    painter.end();
    for (int y = 400; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); x += 3) {
            ASSERT_EQ(image.pixel(x, y), 0xFFFFFFFF) << x << ' ' << y;
        }
    }
    EXPECT_GT(difference(image, QImage(image.size(), QImage::Format_RGB32)), 0.0);
    document.paint(painter, 99);  // no such page: nothing to paint, nothing to fall over
}

TEST_F(ReportPdf, PicturesStandInProportion) {
    const report::Document document = invoice(1);
    const auto& items = document.pages[0].items;
    const auto image = std::find_if(items.begin(), items.end(), [](const report::PageItem& item) {
        return item.kind == report::PageItem::Kind::Image;
    });
    ASSERT_NE(image, items.end());
    EXPECT_LE(image->place.width(), 3000.5);
    EXPECT_LE(image->place.height(), 1500.5);
    EXPECT_TRUE(image->place.width() > 2999 || image->place.height() > 1499);
    report.Sections("ReportHeader").Controls("Image1").picture = "NoSuchDrawing";
    const report::Document without = *report.run();
    for (const report::PageItem& item : without.pages[0].items) {
        EXPECT_NE(item.kind, report::PageItem::Kind::Image);
    }
}

TEST_F(ReportPdf, PrintsTheRangeAskedFor) {
    const report::Document document = invoice(200);
    ASSERT_GE(document.pageCount(), 4);
    {
        QPdfWriter writer(path("b.pdf"));
        EXPECT_TRUE(document.print(writer, 2, 3));
    }
    const QString text = tool("pdftotext", {}, path("b.pdf"), {"-"});
    EXPECT_FALSE(text.contains("Strana 1 od"));
    EXPECT_TRUE(text.contains("Strana 2 od") && text.contains("Strana 3 od"));
    EXPECT_FALSE(text.contains("Strana 4 od"));
}

TEST_F(ReportPdf, FileThatCannotBeWrittenIsAnErrorAndStaysAsItWas) {
    const report::Document document = invoice(1);
    EXPECT_THROW(document.savePdf(path("no/such/folder/a.pdf")), platform::RunError);
    QFile old(path("old.pdf"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    report::Document empty = document;
    empty.pages.clear();
    EXPECT_THROW(empty.savePdf(path("old.pdf")), platform::RunError);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"old.pdf"});
    EXPECT_THROW(document.savePdf("/dev/full/a.pdf"), platform::RunError);
}

TEST(ReportFind, StandsInReadingOrderWithoutRegardToCase) {
    Report report;
    auto& head = report.section(Part::ReportHeader, "H", 1000);
    head.add(label("", "zeta Racun", 5000, 0));
    head.add(label("", "racun alfa racun", 0, 600));
    head.add(label("", QString::fromUtf8("ŠKODA RACUN"), 0, 20));
    const report::Document document = *report.run();
    const auto hits = document.find("racun");
    ASSERT_EQ(hits.size(), 4);
    EXPECT_LT(hits[0].place.left(), 3000);
    EXPECT_GT(hits[1].place.left(), 5000);
    EXPECT_LT(hits[2].place.left(), hits[3].place.left());
    EXPECT_EQ(hits[2].place.top(), hits[3].place.top());
    EXPECT_EQ(document.find(QString::fromUtf8("škoda")).size(), 1);
    EXPECT_TRUE(document.find("").isEmpty());
    EXPECT_TRUE(document.find("nowhere").isEmpty());
    EXPECT_EQ(texts(document, 1), QString::fromUtf8("ŠKODA RACUN zeta Racun|racun alfa racun"));
    EXPECT_EQ(document.textOfPage(2), "");
}

// Ten thousand rows are a matter of a second or two. The bound is wide, for a machine that is busy with other
// things; what it takes is told.
TEST_F(ReportPdf, TenThousandRowsAreLaidOutSoon) {
    QElapsedTimer clock;
    designInvoice(report);
    report.give(invoiceRows(10000));
    clock.start();
    const report::Document document = *report.run();
    const qint64 layout = clock.restart();
    document.savePdf(path("long.pdf"));
    const qint64 pdf = clock.restart();
    EXPECT_EQ(document.find("Proizvod broj 9999 ").size(), 1);
    const qint64 find = clock.elapsed();
    RecordProperty("layoutMs", static_cast<int>(layout));
    std::cout << "layout " << layout << " ms, PDF " << pdf << " ms, find " << find << " ms, "
              << document.pageCount() << " pages\n";
    EXPECT_LT(layout, 6000);
    EXPECT_LT(find, 2000);
}

}  // namespace
