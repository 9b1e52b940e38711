#include "platform/report/preview.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QWheelEvent>
#include <optional>

#include "platform/controls/boxes.h"
#include "platform/report/page_view.h"
#include "platform/report/print_dialog.h"
#include "support/spoken.h"
#include "support/wheel.h"
#include "tests/platform/report/sample.h"

// The preview window, worked with keys and clicks as its user works with it.
namespace {

using namespace sample;
using report::PageView;

class Preview : public ::testing::Test {
 protected:
    void TearDown() override { report::setPrintDialog({}); }

    // Rows "1", "2", ..., ten on a page.
    report::Document document(int rows, bool contents = false) {
        report.title = "Racun 17/2026";
        tenRowPage(report);
        auto& detail = report.section(Part::Detail, "Detail", 1000);
        detail.add(label("Word", "Proizvod", 2000));
        detail.add(field("N", "Naziv"));
        if (contents) {
            report.onFormat = [this](report::Section& section) {
                const int row =
                    section.Controls("N").DataValue.isNull() ? 0 : section.Controls("N").Text.toInt();
                report.addToContents(QString("Red %1").arg(row), row % 5 == 1 ? 0 : 1);
            };
        }
        report.give(numbered(rows));
        return *report.run();
    }
    void open(int rows, bool contents = false) {
        window.emplace(document(rows, contents));
        window->resize(900, 700);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&*window));
    }
    template <typename Widget>
    Widget* named(const char* name) {
        Widget* found = window->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* focus = window->focusWidget();
        QTest::keyClick(focus ? focus : &*window, key, modifiers);
    }
    PageView& pages() { return window->pages(); }
    QString path(const QString& name) const { return folder.path() + '/' + name; }

    Report report;
    std::optional<report::ReportPreview> window;
    QTemporaryDir folder;
};

TEST_F(Preview, F1AsksForTheHelpThatWasSet) {
    static int asked;
    asked = 0;
    open(1, false);
    press(Qt::Key_F1);
    report::setPreviewHelp([] { ++asked; });
    press(Qt::Key_F1);
    report::setPreviewHelp(nullptr);
    EXPECT_EQ(asked, 1);
}

TEST_F(Preview, EveryControlHasItsNames) {
    open(30, true);
    expectSpoken(*window);
    expectTabFollowsTheEye(*window);
    EXPECT_EQ(window->objectName(), "Preview");
    EXPECT_EQ(window->windowTitle(), "Racun 17/2026");
    for (const char* name : {"PageView", "Find", "Page", "Zoom", "Contents"}) {
        EXPECT_FALSE(named<QWidget>(name)->accessibleName().isEmpty()) << name;
    }
    for (const char* name : {"Print", "Pdf", "PageFirst", "PagePrevious", "PageNext", "PageLast", "ZoomIn",
                             "ZoomOut", "FitPage", "FitWidth", "FindText", "ShowContents"}) {
        EXPECT_FALSE(named<QAction>(name)->text().isEmpty()) << name;
    }
    for (QToolButton* button : window->findChildren<QToolButton*>(QRegularExpression("^Button\\("))) {
        EXPECT_FALSE(button->accessibleName().isEmpty());
    }
    if (qEnvironmentVariableIsSet("REPORT_PICTURES")) {
        press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(named<QLineEdit>("Find"), "proizvod");
        press(Qt::Key_Return);
        window->resize(1024, 720);
        QTest::qWait(50);
        window->grab().save(qEnvironmentVariable("REPORT_PICTURES") + "/report-preview.png");
    }
}

TEST_F(Preview, HomeAndEndGoToTheFirstAndTheLastPage) {
    open(95);
    EXPECT_EQ(pages().page(), 1);
    press(Qt::Key_End);
    EXPECT_EQ(pages().page(), 10);
    EXPECT_EQ(named<QSpinBox>("Page")->value(), 10);
    EXPECT_EQ(named<QSpinBox>("Page")->text(), "10 / 10");
    press(Qt::Key_Home);
    EXPECT_EQ(pages().page(), 1);
}

TEST_F(Preview, PageKeysGoAScreenfulAndWithCtrlAPage) {
    open(95);
    EXPECT_EQ(pages().verticalScrollBar()->value(), 0);
    press(Qt::Key_PageDown);
    EXPECT_EQ(pages().verticalScrollBar()->value(), pages().verticalScrollBar()->pageStep());
    press(Qt::Key_PageUp);
    EXPECT_EQ(pages().verticalScrollBar()->value(), 0);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(pages().page(), 3);
    press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(pages().page(), 2);
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(pages().page(), 10);
}

TEST_F(Preview, ButtonsAndThePageFieldLeafThroughTheDocument) {
    open(95);
    const auto click = [&](const char* name) {
        QTest::mouseClick(named<QToolButton>(name), Qt::LeftButton);
        return pages().page();
    };
    EXPECT_EQ(click("Button(PageNext)"), 2);
    EXPECT_EQ(click("Button(PageLast)"), 10);
    EXPECT_EQ(click("Button(PagePrevious)"), 9);
    EXPECT_EQ(click("Button(PageFirst)"), 1);
    press(Qt::Key_G, Qt::ControlModifier);
    ASSERT_TRUE(named<QSpinBox>("Page")->hasFocus());
    QTest::keyClicks(named<QSpinBox>("Page"), "7");
    press(Qt::Key_Return);
    EXPECT_EQ(pages().page(), 7);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Preview, TheWheelOverPageAndZoomChangesNothingUnlessTheyHaveTheFocus) {
    open(95);
    pages().setFocus();
    const double zoom = pages().zoom().factor();
    for (QWidget* field : QList<QWidget*>{named<QSpinBox>("Page"), named<QComboBox>("Zoom")}) {
        rollOver(field);
        rollOver(field->findChild<QLineEdit*>());
        EXPECT_FALSE(field->hasFocus());
    }
    EXPECT_EQ(pages().page(), 1);
    EXPECT_DOUBLE_EQ(pages().zoom().factor(), zoom);
    press(Qt::Key_G, Qt::ControlModifier);
    rollOver(named<QSpinBox>("Page"), 1);
    EXPECT_EQ(pages().page(), 2);
}

TEST_F(Preview, ZoomKeysWheelAndField) {
    open(95);
    press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pages().zoom().factor(), 1.0);
    EXPECT_EQ(named<QComboBox>("Zoom")->currentText(), "100%");
    press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pages().zoom().factor(), 1.25);
    press(Qt::Key_Minus, Qt::ControlModifier);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(pages().zoom().factor(), 0.8);
    QWheelEvent wheel(QPointF(300, 300), pages().mapToGlobal(QPointF(300, 300)), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(pages().viewport(), &wheel);
    EXPECT_DOUBLE_EQ(pages().zoom().factor(), 1.0);
    QLineEdit* zoom = named<QComboBox>("Zoom")->lineEdit();
    zoom->setFocus();
    zoom->selectAll();
    QTest::keyClicks(zoom, "150");
    press(Qt::Key_Return);
    EXPECT_DOUBLE_EQ(pages().zoom().factor(), 1.5);
    zoom->setFocus();
    zoom->setText("blue");
    press(Qt::Key_Return);
    EXPECT_DOUBLE_EQ(pages().zoom().factor(), 1.5);
    EXPECT_EQ(zoom->text(), "150%");
    pages().zoom().set(1000);
    EXPECT_DOUBLE_EQ(pages().zoom().factor(), report::PageZoom::kMost);
}

TEST_F(Preview, FitsThePageAndItsWidthAlsoWhenTheWindowChanges) {
    open(95);
    named<QAction>("FitWidth")->trigger();
    const QRectF sheet(0, 0, 12000, 12000);
    const double wide = pages().placeInView(1, sheet).width();
    EXPECT_NEAR(wide, pages().viewport()->width(), 40);
    EXPECT_EQ(pages().horizontalScrollBar()->maximum(), 0);
    window->resize(700, 500);
    QTest::qWait(10);
    EXPECT_NEAR(pages().placeInView(1, sheet).width(), wide - 200, 4);
    named<QAction>("FitPage")->trigger();
    EXPECT_LE(pages().placeInView(1, sheet).height(), pages().viewport()->height());
    EXPECT_GT(pages().placeInView(1, sheet).height(), pages().viewport()->height() - 40);
    pages().showPage(4);
    window->resize(800, 620);
    QTest::qWait(10);
    EXPECT_EQ(pages().page(), 4);
}

TEST_F(Preview, TheLastPageIsReachedAlsoWhereManyAreSeenAtOnce) {
    open(95);
    pages().zoom().set(0.25);
    for (int page = 2; page <= 10; ++page) {
        press(Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(named<QSpinBox>("Page")->value(), page);
    }
    pages().verticalScrollBar()->setValue(0);
    EXPECT_LT(pages().page(), 4);
}

TEST_F(Preview, ZoomKeepsWhatIsLookedAt) {
    open(95);
    pages().zoom().set(1);
    pages().showPlace(5, 3000);
    pages().zoom().set(2.5);
    EXPECT_EQ(pages().page(), 5);
}

TEST_F(Preview, FindMarksAndScrollsToEachPlaceInTurn) {
    open(95);
    press(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(named<QLineEdit>("Find")->hasFocus());
    QTest::keyClicks(named<QLineEdit>("Find"), "55");
    press(Qt::Key_Return);
    EXPECT_EQ(pages().page(), 6);
    EXPECT_EQ(named<QLabel>("Found")->text(), "1 od 1");
    const QRectF place = pages().placeInView(6, pages().hits().at(0).place);
    EXPECT_TRUE(QRectF(pages().viewport()->rect()).contains(place));
    // What is found shows in colour, where the page is otherwise black on white.
    const QImage seen = pages().viewport()->grab().toImage();
    const QColor mark = seen.pixelColor(place.topLeft().toPoint() + QPoint(1, 1));
    EXPECT_GT(mark.red() - mark.blue(), 60);

    named<QLineEdit>("Find")->setText("PROIZVOD");
    press(Qt::Key_F3);
    EXPECT_EQ(pages().hits().size(), 95);
    EXPECT_EQ(named<QLabel>("Found")->text(), "51 od 95");  // from the page that is looked at
    press(Qt::Key_F3);
    EXPECT_EQ(named<QLabel>("Found")->text(), "52 od 95");
    press(Qt::Key_F3, Qt::ShiftModifier);
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(named<QLabel>("Found")->text(), "50 od 95");
    EXPECT_EQ(pages().page(), 5);
}

TEST_F(Preview, FindGoesAroundAtBothEnds) {
    open(12);
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(named<QLineEdit>("Find"), "12");
    press(Qt::Key_Return);
    press(Qt::Key_F3);
    EXPECT_EQ(named<QLabel>("Found")->text(), "1 od 1");
    named<QLineEdit>("Find")->setText("Proizvod");
    pages().showPage(1);
    press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(named<QLabel>("Found")->text(), "12 od 12");
    press(Qt::Key_Return);
    EXPECT_EQ(named<QLabel>("Found")->text(), "1 od 12");
}

TEST_F(Preview, WhatIsNotFoundIsTold) {
    open(12);
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(named<QLineEdit>("Find"), "nema toga");
    press(Qt::Key_Return);
    EXPECT_EQ(named<QLabel>("Found")->text(), "Tekst nije nadjen.");
    EXPECT_TRUE(named<QLabel>("Found")->isVisible());
    EXPECT_TRUE(pages().hits().isEmpty());
}

TEST_F(Preview, ASearchOnceClosedFindsTheSameWordAgain) {
    open(12);
    for (int round = 1; round <= 2; ++round) {
        press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(named<QLineEdit>("Find"), "proizvod");  // over the word of the last time
        press(Qt::Key_Return);
        EXPECT_EQ(pages().hits().size(), 12) << round;
        press(Qt::Key_Escape);
        EXPECT_TRUE(pages().hits().isEmpty()) << round;
    }
}

// What stands on the screen is the paper: the same print, at the same place of the sheet.
TEST_F(Preview, TheSheetOnTheScreenShowsThePaper) {
    open(5);
    named<QAction>("FitPage")->trigger();
    const report::Document& paper = window->document();
    const QRectF sheet = pages().placeInView(1, QRectF(0, 0, paper.width, paper.height));
    EXPECT_GE(sheet.top(), 12);
    EXPECT_LE(sheet.bottom(), pages().viewport()->height() - 11) << "and there is a rim around it";
    const QImage screen = pages().viewport()->grab(sheet.toAlignedRect()).toImage();
    QImage wanted(screen.size(), QImage::Format_RGB32);
    wanted.fill(Qt::white);
    {
        QPainter painter(&wanted);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.scale(sheet.width() / paper.width, sheet.width() / paper.width);
        paper.paint(painter, 1);
    }
    int ink = 0, wrong = 0;
    for (int y = 2; y < screen.height() - 2; ++y) {
        for (int x = 2; x < screen.width() - 2; ++x) {
            const int there = qGray(screen.pixel(x, y)), due = qGray(wanted.pixel(x, y));
            ink += due < 128;
            wrong += std::abs(there - due) > 128;
        }
    }
    EXPECT_GT(ink, 50);
    EXPECT_LT(wrong, ink / 5);
}

TEST_F(Preview, EscapeClosesTheSearchAndThenTheWindow) {
    open(12);
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_Escape);
    EXPECT_FALSE(named<QWidget>("FindBar")->isVisible());
    EXPECT_TRUE(window->isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Preview, ContentsLeadToTheirPlaces) {
    open(40, true);
    auto* contents = named<QTreeWidget>("Contents");
    ASSERT_EQ(contents->topLevelItemCount(), 8);
    EXPECT_EQ(contents->topLevelItem(7)->text(0), "Red 36");
    ASSERT_EQ(contents->topLevelItem(0)->childCount(), 4);
    contents->setFocus();
    contents->setCurrentItem(contents->topLevelItem(5));
    EXPECT_EQ(pages().page(), 3);
    const double top = pages().placeInView(3, QRectF(0, 6000, 10, 10)).top();
    EXPECT_NEAR(top, 12, 2);
    named<QAction>("ShowContents")->trigger();
    EXPECT_FALSE(contents->isVisible());
}

TEST_F(Preview, WithoutEntriesThereIsNoContentsPane) {
    open(5);
    EXPECT_EQ(window->findChild<QTreeWidget*>("Contents"), nullptr);
    EXPECT_EQ(window->findChild<QAction*>("ShowContents"), nullptr);
}

TEST_F(Preview, PrintHonoursThePageRange) {
    open(45);
    const QString paper = path("paper.pdf");
    report::setPrintDialog([&](QPrinter& printer, QWidget*) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(paper);
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
        return true;
    });
    press(Qt::Key_P, Qt::ControlModifier);
    const QString text = tool("pdftotext", {"-layout"}, paper, {"-"});
    EXPECT_TRUE(tool("pdfinfo", {}, paper).contains(QRegularExpression("Pages: +2\n")));
    EXPECT_TRUE(text.contains(QRegularExpression("\\b11\\b")) &&
                text.contains(QRegularExpression("\\b30\\b")));
    EXPECT_FALSE(text.contains(QRegularExpression("\\b10\\b")) ||
                 text.contains(QRegularExpression("\\b31\\b")));
}

TEST_F(Preview, PrintTakesTheCurrentPageAndLastFirst) {
    QPrinter printer;
    EXPECT_EQ(report::pagesToPrint(printer, 3, 2), (QList<int>{1, 2, 3}));
    printer.setPrintRange(QPrinter::CurrentPage);
    EXPECT_EQ(report::pagesToPrint(printer, 3, 2), (QList<int>{2}));
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(2, 9);
    EXPECT_EQ(report::pagesToPrint(printer, 3, 1), (QList<int>{2, 3}));
    printer.setPrintRange(QPrinter::AllPages);
    printer.setPageOrder(QPrinter::LastPageFirst);
    EXPECT_EQ(report::pagesToPrint(printer, 3, 2), (QList<int>{3, 2, 1}));
}

TEST_F(Preview, CancelledPrintDialogPrintsNothing) {
    open(5);
    const platform::BoxScript boxes;
    int asked = 0;
    report::setPrintDialog([&](QPrinter& printer, QWidget*) {
        printer.setOutputFileName(path("paper.pdf"));
        ++asked;
        return false;
    });
    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(QFile::exists(path("paper.pdf")));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Preview, APrinterThatTakesNothingIsTold) {
    open(5);
    const platform::BoxScript boxes;
    report::setPrintDialog([&](QPrinter& printer, QWidget*) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path("no such folder/paper.pdf"));
        return true;
    });
    press(Qt::Key_P, Qt::ControlModifier);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith("Dokument nije odstampan.")) << boxes.lastText().toStdString();
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Preview, SavesAPdfUnderTheTitlesName) {
    open(25);
    platform::BoxScript boxes;
    boxes.files = {path("racun")};
    press(Qt::Key_S, Qt::ControlModifier);
    ASSERT_EQ(boxes.fileQuestions.size(), 1);
    EXPECT_EQ(boxes.fileQuestions[0].name, "Racun 17-2026.pdf");
    EXPECT_TRUE(tool("pdfinfo", {}, path("racun.pdf")).contains(QRegularExpression("Pages: +3\n")));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Preview, PdfThatCannotBeSavedIsTold) {
    open(5);
    platform::BoxScript boxes;
    boxes.files = {path("no/such/a.pdf")};
    press(Qt::Key_S, Qt::ControlModifier);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith("PDF datoteka nije sacuvana.\n[75] "))
        << boxes.lastText().toStdString();
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Preview, AFileThatIsThereIsReplacedOnlyAfterAYes) {
    open(5);
    QFile old(path("old.pdf"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    platform::BoxScript boxes;
    boxes.files = {path("old.pdf"), std::nullopt};
    boxes.answers = {platform::BoxAnswer::No};
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(boxes.lastText(), "Datoteka old.pdf vec postoji. Zameniti je?");
    EXPECT_EQ(QFileInfo(old).size(), 3);
    boxes.files = {path("old.pdf")};
    boxes.answers = {platform::BoxAnswer::Yes};
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_GT(QFileInfo(path("old.pdf")).size(), 1000);
}

TEST_F(Preview, ManyPagesStaySmooth) {
    open(100000);
    EXPECT_EQ(window->document().pageCount(), 10000);
    QElapsedTimer clock;
    clock.start();
    for (int i = 1; i <= 50; ++i) {
        pages().showPage(i * 199);
        pages().viewport()->repaint();
    }
    const double frame = static_cast<double>(clock.elapsed()) / 50;
    std::cout << "one leap among 10,000 pages: " << frame << " ms\n";
    EXPECT_LT(frame, 100);
}

// --- Show
// ---------------------------------------------------------------------------------------------------

// Looks for a window again and again while Show has the word; gives up after some seconds.
void whenThere(const char* name, std::function<void(QWidget*)> act) {
    auto* timer = new QTimer(qApp);
    timer->setInterval(5);
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1String(name) && window->isVisible()) {
                timer->stop();
                timer->deleteLater();
                act(window);
                return;
            }
        }
        if (++*tries > 2000) {
            ADD_FAILURE() << name << " did not come up";
            timer->stop();
            for (QWidget* window : QApplication::topLevelWidgets()) {
                window->close();
            }
        }
    });
    timer->start();
}

class ReportShow : public ::testing::Test {
 protected:
    void SetUp() override {
        tenRowPage(report);
        report.title = "Racun";
        report.section(Part::Detail, "Detail", 1000).add(field("N", "Naziv"));
    }
    // Takes about `milliseconds` for all rows.
    void slow(int rows, int milliseconds) {
        report.give(numbered(rows));
        report.onFormat = [=](report::Section&) { QThread::usleep(milliseconds * 1000UL / rows); };
    }
    Report report;
    platform::BoxScript boxes;
};

TEST_F(ReportShow, ShowsThePreviewAndReturnsWhenItIsClosed) {
    report.give(numbered(25));
    for (const bool modal : {true, false}) {
        int pages = 0;
        bool sawModal = false;
        whenThere("Preview", [&](QWidget* window) {
            pages = qobject_cast<report::ReportPreview*>(window)->document().pageCount();
            sawModal = window->isModal();
            QTest::keyClick(window, Qt::Key_Escape);
        });
        EXPECT_TRUE(report.Show(modal, nullptr));
        EXPECT_EQ(pages, 3);
        EXPECT_EQ(sawModal, modal);
    }
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ReportShow, AShortRunShowsNoProgress) {
    report.give(numbered(25));
    bool progress = false;
    report.onFormat = [&](report::Section&) {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            progress = progress || (window->objectName() == "Progress" && window->isVisible());
        }
    };
    whenThere("Preview", [](QWidget* window) { window->close(); });
    EXPECT_TRUE(report.Show(true, nullptr));
    EXPECT_FALSE(progress);
}

TEST_F(ReportShow, TheWindowsTurnBeforeTheProgressComesUp) {
    slow(50, 200);
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++turns; });
    timer.start(0);
    int turnsOfTheRun = 0;
    const auto takeTime = report.onFormat;
    report.onFormat = [&](report::Section& section) {
        takeTime(section);
        turnsOfTheRun = turns;
    };
    whenThere("Preview", [](QWidget* window) { window->close(); });
    EXPECT_TRUE(report.Show(true, nullptr));
    EXPECT_GT(turnsOfTheRun, 0);
}

TEST_F(ReportShow, ALongRunCanBeCancelledByTheButton) {
    slow(2000, 5000);
    whenThere("Progress", [](QWidget* window) {
        EXPECT_EQ(window->windowTitle(), "Priprema dokumenta...");
        if (qEnvironmentVariableIsSet("REPORT_PICTURES")) {
            window->grab().save(qEnvironmentVariable("REPORT_PICTURES") + "/report-progress.png");
        }
        QTest::mouseClick(window->findChild<QPushButton*>("Command1"), Qt::LeftButton);
    });
    EXPECT_FALSE(report.Show(true, nullptr));
    EXPECT_LT(report.events.count("Format Detail"), 1500);
    EXPECT_EQ(report.events.last(), "ReportEnd");
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ReportShow, ALongRunCanBeCancelledByEscape) {
    slow(2000, 5000);
    whenThere("Progress", [](QWidget* window) { QTest::keyClick(window, Qt::Key_Escape); });
    EXPECT_FALSE(report.Show(true, nullptr));
    EXPECT_LT(report.events.count("Format Detail"), 1500);
}

TEST_F(ReportShow, ALongRunThatIsLeftAloneEndsInThePreview) {
    slow(500, 700);
    bool progress = false;
    whenThere("Progress", [&](QWidget*) { progress = true; });
    whenThere("Preview", [](QWidget* window) { window->close(); });
    EXPECT_TRUE(report.Show(true, nullptr));
    EXPECT_TRUE(progress);
    EXPECT_EQ(report.events.count("Format Detail"), 500);
}

TEST_F(ReportShow, AnErrorOfTheRowsIsToldInABox) {
    report.give(numbered(25))->failAt = 12;
    EXPECT_FALSE(report.Show(true, nullptr));
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Dokument nije pripremljen.\n[3167] Record is deleted.");
    EXPECT_EQ(boxes.asked.last().title, "Racun");
    EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    report.title.clear();
    EXPECT_FALSE(report.Show(true, nullptr));
    EXPECT_EQ(boxes.asked.last().title, QGuiApplication::applicationDisplayName());
}

}  // namespace
