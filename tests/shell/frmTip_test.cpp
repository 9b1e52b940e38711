#include "shell/frmTip.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QTest>

#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "shell/Main.h"
#include "shell/frmSplash.h"
#include "support/fixture.h"
#include "support/modal.h"

using platform::BoxIcon;

namespace {

// The main window's tip, while it is up.
frmTip* tipOnShow() {
    return qobject_cast<frmTip*>(QApplication::activeModalWidget());
}

class Tips : public DeliveredFixture {
 protected:
    void TearDown() override {
        window.reset();
        DeliveredFixture::TearDown();
    }
    void write(const QByteArray& bytes) const {
        QFile file(path("tipoftheday.txt"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    frmTip& make() {
        window = std::make_unique<frmTip>();
        return *window;
    }
    frmTip& open(const QByteArray& bytes) {
        write(bytes);
        make().Display();
        return *window;
    }
    QPushButton* button(const char* name) { return window->findChild<QPushButton*>(QLatin1String(name)); }
    QCheckBox* check(const char* name) { return window->findChild<QCheckBox*>(QLatin1String(name)); }
    QString text(const char* name = "lblTipText") {
        return window->findChild<QLabel*>(QLatin1String(name))->text();
    }
    void next() { QTest::mouseClick(button("cmdNextTip"), Qt::LeftButton); }
    void previous() { QTest::mouseClick(button("cmdPreviousTip"), Qt::LeftButton); }
    bool canStep() {
        EXPECT_EQ(button("cmdNextTip")->isEnabled(), button("cmdPreviousTip")->isEnabled());
        return button("cmdNextTip")->isEnabled();
    }
    static QString stored(const char* key) {
        return platform::GetSetting("Tarvello", "Settings", key, "(none)");
    }

    std::unique_ptr<frmTip> window;
};

TEST_F(Tips, TheWindowSaysWhatItIs) {
    open("one\ntwo\n");
    EXPECT_EQ(window->windowTitle(), " Jeste li znali?!");
    EXPECT_EQ(text("Label1"), "Jeste li znali...");
    EXPECT_EQ(button("cmdOK")->text(), "OK");
    EXPECT_EQ(button("cmdNextTip")->text(), "&Sledeci tip");
    EXPECT_EQ(button("cmdPreviousTip")->text(), "&Prethodni Tip");
    EXPECT_EQ(check("chkLoadTipsAtStartup")->text(), "P&rikazi pri pokretanju programa");
    EXPECT_EQ(check("chkShowTipsAtRandom")->text(), "&Napomene menjaj po slucajnom rasporedu");
    EXPECT_FALSE(window->findChild<QLabel*>("Picture1")->pixmap().isNull());
    EXPECT_FALSE(window->findChild<QLabel*>("Image1")->pixmap().isNull());
    EXPECT_TRUE(window->isModal());
}

TEST_F(Tips, EachLineAsItStandsIsATip) {
    open("first\n\n  third, <b>as</b> it stands & no more  \nlast");
    EXPECT_EQ(window->count(), 4);
    EXPECT_EQ(window->CurrentTip, 1);
    EXPECT_EQ(text(), "first");
    next();
    EXPECT_EQ(text(), "");
    next();
    EXPECT_EQ(text(), "  third, <b>as</b> it stands & no more  ");
    EXPECT_EQ(window->findChild<QLabel*>("lblTipText")->textFormat(), Qt::PlainText);
    next();
    EXPECT_EQ(text(), "last");
    next();
    EXPECT_EQ(text(), "first");
}

TEST_F(Tips, LinesFromAnotherSystemAreLinesAsWell) {
    open("first\r\nsecond\r\n");
    EXPECT_EQ(window->count(), 2);
    EXPECT_EQ(text(), "first");
    open("\xEF\xBB\xBF\xC5\xA0ta\n");
    EXPECT_EQ(window->count(), 1);
    EXPECT_EQ(text(), QString::fromUtf8("Šta"));
}

TEST_F(Tips, SteppingBackFromTheFirstLandsOnTheLast) {
    open("one\ntwo\nthree\n");
    EXPECT_TRUE(canStep());
    previous();
    EXPECT_EQ(window->CurrentTip, 3);
    EXPECT_EQ(text(), "three");
    previous();
    EXPECT_EQ(text(), "two");
    next();
    next();
    EXPECT_EQ(window->CurrentTip, 1);
    EXPECT_EQ(text(), "one");
}

TEST_F(Tips, AFileOfOneLineShowsItAndOffersNoStep) {
    open("only one\n");
    EXPECT_EQ(text(), "only one");
    EXPECT_FALSE(canStep());
}

TEST_F(Tips, ByChanceEachTipComesAndOneMayComeTwice) {
    ShowTipsAtRandom = true;
    write("one\ntwo\nthree\nfour\n");
    QList<double> chances = {0.0, 0.9999999, 0.5, 0.5, 0.25};
    make().Rnd = [&] { return chances.takeFirst(); };
    window->Display();
    EXPECT_EQ(text(), "one");
    next();
    EXPECT_EQ(text(), "four");
    previous();
    EXPECT_EQ(text(), "three");
    next();
    EXPECT_EQ(text(), "three");
    previous();
    EXPECT_EQ(text(), "two");
}

TEST_F(Tips, ChanceIsSeededAndStaysWithinTheFile) {
    ShowTipsAtRandom = true;
    write("1\n2\n3\n4\n5\n6\n7\n8\n");
    QSet<QString> starts;
    for (int i = 0; i < 60; ++i) {
        make().Display();
        starts.insert(text());
        ASSERT_GE(window->CurrentTip, 1);
        ASSERT_LE(window->CurrentTip, 8);
    }
    EXPECT_GT(starts.size(), 3);
}

TEST_F(Tips, AMissingFileIsToldInTheWindowAndOkStillClosesIt) {
    QFile::remove(path("tipoftheday.txt"));
    make().Display();
    EXPECT_EQ(
        text(),
        "Da fajl \"tipoftheday.txt\" nije pronadjen?\n\nZato nije moguce prikazati interesantne napomene "
        "vezane za rad programa.");
    EXPECT_FALSE(canStep());
    EXPECT_TRUE(boxes.asked.isEmpty());
    QTest::mouseClick(button("cmdOK"), Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Tips, AnEmptyFileIsToldInTheWindow) {
    open("");
    EXPECT_EQ(
        text(),
        "Da fajl \"tipoftheday.txt\" postoji, ali da nema ni jedne jedine interesantne napone vezane za "
        "rad programa?!");
    EXPECT_FALSE(canStep());
    EXPECT_EQ(window->count(), 0);
    window->DisplayCurrentTip();
    EXPECT_TRUE(text().startsWith("Da fajl"));
}

TEST_F(Tips, AFileThatCannotBeReadIsToldInTheWindow) {
    if (!QFile::exists("/proc/self/mem")) {
        GTEST_SKIP() << "no file here that opens and cannot be read";
    }
    QFile::remove(path("tipoftheday.txt"));
    ASSERT_TRUE(QFile::link("/proc/self/mem", path("tipoftheday.txt")));
    make().Display();
    const QString told = text();
    EXPECT_TRUE(
        told.startsWith("Da je doslo do neocekivane greske prilikom ucitavanja napomena vezanih za rad "
                        "programa? Greska je data kao:\r\n\r\n[57] Device I/O error in line: "))
        << told.toStdString();
    EXPECT_GT(told.mid(told.lastIndexOf(' ') + 1).toInt(), 0);
    EXPECT_FALSE(canStep());
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Tips, LoadTipsTellsWhetherTheFileWasThere) {
    make();
    QString errorText = "before";
    bool ok = true;
    window->LoadTips(errorText, {}, ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(errorText, "");
    ok = true;
    window->LoadTips(errorText, path("nowhere.txt"), ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(errorText, "");
    write("one\ntwo\n");
    window->LoadTips(errorText, path("tipoftheday.txt"), ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(window->CurrentTip, 1);
    EXPECT_EQ(text(), "one");
}

TEST_F(Tips, TheBoxesShowTheSwitchesAndLookingWritesNothing) {
    for (const bool atStart : {true, false}) {
        ShowTipsAtStartup = atStart;
        ShowTipsAtRandom = !atStart;
        open("one\ntwo\n");
        EXPECT_EQ(check("chkLoadTipsAtStartup")->isChecked(), atStart);
        EXPECT_EQ(check("chkShowTipsAtRandom")->isChecked(), !atStart);
    }
    EXPECT_EQ(stored("ShowTipsAtStartup"), "(none)");
    EXPECT_EQ(stored("ShowTipsAtRandom"), "(none)");
}

TEST_F(Tips, AClickedBoxIsStoredAtOnce) {
    open("one\ntwo\n");
    check("chkLoadTipsAtStartup")->click();
    EXPECT_FALSE(ShowTipsAtStartup);
    EXPECT_EQ(stored("ShowTipsAtStartup"), "False");
    EXPECT_EQ(stored("ShowTipsAtRandom"), "(none)");
    check("chkShowTipsAtRandom")->click();
    EXPECT_TRUE(ShowTipsAtRandom);
    EXPECT_EQ(stored("ShowTipsAtRandom"), "True");
    check("chkLoadTipsAtStartup")->click();
    EXPECT_TRUE(ShowTipsAtStartup);
    EXPECT_EQ(stored("ShowTipsAtStartup"), "True");
}

TEST_F(Tips, ASwitchThatCannotBeStoredIsTold) {
    open("one\ntwo\n");
    platform::setSettingsFolder("/proc/nowhere");
    const std::pair<const char*, QString> boxesOfWindow[] = {
        {"chkLoadTipsAtStartup", "frmTip -> chkLoadTipsAtStartup -> Linija: "},
        {"chkShowTipsAtRandom", "frmTip -> chkShowTipsAtRandom -> Linija: "}};
    for (const auto& [name, where] : boxesOfWindow) {
        check(name)->click();
        const QStringList lines = boxes.lastText().split("\r\n");
        ASSERT_EQ(lines.size(), 3) << boxes.lastText().toStdString();
        EXPECT_EQ(lines[0], "Doslo je do neocekivane greske prilikom snimanja u Registry:");
        EXPECT_EQ(lines[1], "[75] Path/File access error: /proc/nowhere/Tarvello.ini");
        EXPECT_TRUE(lines[2].startsWith(where)) << lines[2].toStdString();
        EXPECT_GT(lines[2].mid(where.size()).toInt(), 0);
        EXPECT_EQ(boxes.asked.last().title, "Tarvello");
    }
    EXPECT_EQ(boxes.asked.size(), 2);
    // What was chosen holds until the program is closed.
    EXPECT_FALSE(ShowTipsAtStartup);
    EXPECT_TRUE(ShowTipsAtRandom);
}

TEST_F(Tips, AFailedLoadIsToldTakesTheSplashAwayAndClosesTheWindow) {
    write("one\ntwo\n");
    make().onFormLoad = [] { throw platform::RunError(7, "Out of memory"); };
    int splashTaken = 0;
    window->onLoadFailure = [&] { ++splashTaken; };
    window->Display();
    ASSERT_EQ(boxes.asked.size(), 1);
    const QStringList lines = boxes.lastText().split("\r\n");
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0], "Doslo je do neocekivane greske prilikom ucitavanja forme:");
    EXPECT_EQ(lines[1], "[7] Out of memory");
    EXPECT_TRUE(lines[2].startsWith("frmTip -> Form_Load-> Linija: "));
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_EQ(splashTaken, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isVisible(); }));
}

TEST_F(Tips, OkHasTheFocusSoThatSpaceClosesItToo) {
    open("one\ntwo\n");
    ASSERT_TRUE(waitUntilActive(*window));
    EXPECT_TRUE(button("cmdOK")->hasFocus());
    QTest::keyClick(window->windowHandle(), Qt::Key_Space);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(ShowTipsAtStartup);
}

TEST_F(Tips, EnterAndEscapeCloseIt) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        open("one\ntwo\n");
        ASSERT_TRUE(waitUntilActive(*window));
        QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_FALSE(window->isVisible());
    }
}

TEST_F(Tips, EnterOnAStepButtonTakesThatStep) {
    open("one\ntwo\nthree\n");
    ASSERT_TRUE(waitUntilActive(*window));
    button("cmdNextTip")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(window->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(text(), "two");
    QTest::keyClick(window->windowHandle(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(text(), "three");
    button("cmdPreviousTip")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(window->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(text(), "two");
    check("chkShowTipsAtRandom")->setFocus();
    QTest::keyClick(window->windowHandle(), Qt::Key_Return);
    EXPECT_FALSE(window->isVisible()) << "elsewhere it is OK";
    EXPECT_FALSE(ShowTipsAtRandom);
}

TEST_F(Tips, ALongTipDoesNotMakeTheWindowGrow) {
    open("short\n" + QByteArray("word ").repeated(2000) + "\n");
    const auto* bar = window->findChild<QScrollArea*>()->verticalScrollBar();
    QCoreApplication::processEvents();
    EXPECT_FALSE(bar->isVisible());
    const QSize before = window->size();
    next();
    QCoreApplication::processEvents();
    EXPECT_EQ(window->size(), before);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_LE(window->width(), 700);
}

// The tips that the shop is given ---------------------------------------------------------------------------

TEST_F(Tips, TheDeliveredTipsAreManyPlainAndAllDifferent) {
    QFile file(deliveredFile("tipoftheday.txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    open(bytes);
    EXPECT_GE(window->count(), 30);
    QSet<QString> seen;
    for (int i = 0; i < window->count(); ++i) {
        const QString tip = text();
        EXPECT_TRUE(tip.startsWith("da ")) << tip.toStdString();  // behind "Jeste li znali..."
        EXPECT_TRUE(tip.contains('?')) << tip.toStdString();
        for (const QChar letter : tip) {
            EXPECT_TRUE(letter.unicode() >= 32 && letter.unicode() < 127) << tip.toStdString();
        }
        seen.insert(tip);
        next();
    }
    EXPECT_EQ(seen.size(), window->count());
}

// At the program's start ------------------------------------------------------------------------------------

class StartWithTip : public Tips {
 protected:
    void TearDown() override {
        main.reset();
        Tips::TearDown();
    }
    std::unique_ptr<frmMain> main;
};

TEST_F(StartWithTip, TheTipComesUpOverTheMainWindow) {
    write("one\ntwo\n");
    main = Main();
    ASSERT_NE(main, nullptr);
    EXPECT_TRUE(main->isVisible());
    QPointer<frmTip> tip = tipOnShow();
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(tip->parentWidget(), main.get());
    EXPECT_EQ(tip->findChild<QLabel*>("lblTipText")->text(), "one");
    ASSERT_TRUE(waitUntilActive(*tip));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(tip.isNull());
    EXPECT_EQ(tipOnShow(), nullptr);
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(StartWithTip, NotWhereThePersonWantsNone) {
    settings::setText(settings::ShowTipsAtStartup, "0");
    main = Main();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(tipOnShow(), nullptr);
}

TEST_F(StartWithTip, SwitchedOffInTheTipItStaysAwayTheNextDay) {
    write("one\ntwo\n");
    main = Main();
    ASSERT_NE(tipOnShow(), nullptr);
    tipOnShow()->findChild<QCheckBox*>("chkLoadTipsAtStartup")->click();
    tipOnShow()->close();
    main->close();
    main = Main();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(tipOnShow(), nullptr);
}

TEST_F(StartWithTip, TheSplashPictureGoesWhenTheTipFails) {
    // Nothing in the shop makes the tip's window fail; the road from it to the picture is tried by hand.
    write("one\n");
    main = Main();
    ASSERT_NE(main->start.splash.window(), nullptr);
    ASSERT_NE(tipOnShow(), nullptr);
    tipOnShow()->onLoadFailure();
    EXPECT_EQ(main->start.splash.window(), nullptr);
}

TEST_F(StartWithTip, TheSplashTimerRunsUnderneath) {
    write("one\n");
    main = Main();
    ASSERT_NE(main->start.splash.window(), nullptr);
    main->start.splash.window()->setTimerInterval(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return main->start.splash.window() == nullptr; }));
    EXPECT_NE(tipOnShow(), nullptr);
}

TEST_F(StartWithTip, ADatabaseThatFailsBringsNoTip) {
    QFile::remove(path("Tarvello.mdb"));
    main = Main();
    EXPECT_EQ(main, nullptr);
    EXPECT_EQ(tipOnShow(), nullptr);
}

}  // namespace
