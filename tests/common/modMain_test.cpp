#include "common/modMain.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QLocale>
#include <QScreen>
#include <QSet>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include "common/help.h"
#include "common/scramble.h"
#include "common/settings.h"
#include "common/window_places.h"
#include "platform/controls/boxes.h"
#include "platform/dao/database.h"
#include "platform/dao/dbengine.h"
#include "platform/system/files.h"
#include "platform/system/launch.h"
#include "platform/system/settings_store.h"
#include "platform/system/trap.h"
#include "support/own_folder.h"
#include "support/sizes.h"

using platform::BoxAnswer;
using platform::BoxIcon;

namespace {

// Answered boxes, and a point for the decimals.
class ModMain : public OwnFolderFixture {
 protected:
    void SetUp() override {
        OwnFolderFixture::SetUp();
        usePoint();
    }
    void TearDown() override {
        platform::setShellExecuteHook({});
        usePoint();
        OwnFolderFixture::TearDown();
    }
    static void usePoint() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
    static void useComma() { QLocale::setDefault(QLocale(QStringLiteral("sr_Latn_RS"))); }
    QString make(const QString& name) const {
        QFile file(folder_.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }

    platform::BoxScript boxes_;
};

// All 256 codes of the page as characters: what comes out of the scrambling of every code can be put in
// again.
QString allCharacters() {
    QSet<QChar> seen;
    QString all;
    for (int code = 0; code < 0x10000; ++code) {
        const QChar c(code);
        if (!c.isSurrogate() && ScrambleChars(c) != QString(c) && !seen.contains(c)) {
            seen.insert(c);
            all += c;
        }
    }
    return all;
}

}  // namespace

TEST_F(ModMain, ATextWithoutPairsKeepsItsPlaceholders) {
    EXPECT_EQ(GetResString(1015), "Repair database failed\n%1\nDo you wish to use backup database instead?");
    EXPECT_EQ(GetResString(10510), "Broj |1 u bazi podataka: |2");
}

TEST_F(ModMain, EachPlaceholderIsReplacedWhereverItOccurs) {
    EXPECT_EQ(GetResString(118, {{"%1", "Peric, Pera"}}),
              "Sorry, Peric, Pera is not found in the database. First item will be selected.");
    EXPECT_EQ(GetResString(10510, {{"|1", "grupa"}, {"|2", "7"}}), "Broj grupa u bazi podataka: 7");
    EXPECT_EQ(GetResString(157, {{"P", "Unp"}}), "Unpaid") << "at the very beginning";
    EXPECT_EQ(GetResString(128, {{"customer", "client"}}).count("client"), 1);
    EXPECT_EQ(GetResString(113, {{"e", ""}}).count('e'), 0);
}

TEST_F(ModMain, AValueCanHoldALaterPlaceholder) {
    EXPECT_EQ(GetResString(10510, {{"|1", "|2"}, {"|2", "x"}}), "Broj x u bazi podataka: x");
}

TEST_F(ModMain, AValueWithItsOwnPlaceholderGoesInOnceAndNothingHangs) {
    EXPECT_EQ(GetResString(118, {{"%1", "100%1"}}),
              "Sorry, 100%1 is not found in the database. First item will be selected.");
    EXPECT_EQ(GetResString(118, {{"", "x"}}), GetResString(118));
}

TEST_F(ModMain, EngineErrorsAreListedOneALineWithoutABreakBehindTheLast) {
    platform::Trap step;
    step([&] { dao::DBEngine::OpenDatabase(folder_.filePath("nobody.mdb").toStdString()); });
    ASSERT_TRUE(step.failed());
    EXPECT_EQ(GetDAOErrors(), QStringLiteral("[3024] ") + step.description());
}

TEST_F(ModMain, TheDecimalAndTheThousandsSeparatorOfTheLocaleAreKnown) {
    EXPECT_EQ(GetLocaleValue(14), ".");
    EXPECT_EQ(GetLocaleValue(15), ",");
    useComma();
    EXPECT_EQ(GetLocaleValue(14), ",");
    EXPECT_EQ(GetLocaleValue(15), ".");
    EXPECT_EQ(GetLocaleValue(16), "");
}

TEST_F(ModMain, ConvertCaseKnowsFiveModes) {
    EXPECT_EQ(ConvertCase(QStringLiteral("mati\u010Dna Plo\u010Da"), 0),
              QStringLiteral("MATI\u010CNA PLO\u010CA"));
    EXPECT_EQ(ConvertCase("Ana MARIJA", 1), "ana marija");
    EXPECT_EQ(ConvertCase("ana mARIJA", 2), "Ana mARIJA");
    EXPECT_EQ(ConvertCase(QStringLiteral("\u0161kola"), 2), QStringLiteral("\u0160kola"));
    EXPECT_EQ(ConvertCase("x", 5), "");
    EXPECT_EQ(ConvertCase("x", -1), "");
    for (int mode = 0; mode <= 4; ++mode) {
        EXPECT_EQ(ConvertCase("", mode), "");
    }
}

TEST_F(ModMain, ConvertCaseInModeThreeLeavesOneBlankBetweenNames) {
    EXPECT_EQ(ConvertCase("ana    marija", 3), "Ana Marija");
    EXPECT_EQ(ConvertCase("  ana mARIJA  ", 3), "Ana MARIJA");
}

TEST_F(ModMain, ConvertCaseInModeFourBeginsSentencesWithACapital) {
    EXPECT_EQ(ConvertCase("one. two! three? four.five", 4), "One. Two! Three? Four.five");
    EXPECT_EQ(ConvertCase("  one.  two ", 4), "One. Two");
    EXPECT_EQ(ConvertCase("one. \ntwo", 4), "One. \ntwo");
    EXPECT_EQ(ConvertCase("done. ", 4), "Done.");
}

TEST_F(ModMain, LocaleSingleTakesTheFirstOtherCharacterForTheSeparator) {
    EXPECT_EQ(LocaleSingle("12"), 12.0F);
    EXPECT_EQ(LocaleSingle("76,5"), 76.5F);
    EXPECT_EQ(LocaleSingle("76.5"), 76.5F);
    EXPECT_EQ(LocaleSingle(" 76'5 "), 76.5F);
    EXPECT_EQ(LocaleSingle("-5"), 0.5F);
    EXPECT_EQ(LocaleSingle(""), 0.0F);
    EXPECT_EQ(LocaleSingle("abc"), 0.0F);
    useComma();
    EXPECT_EQ(LocaleSingle("76,5"), 76.5F);
    EXPECT_EQ(LocaleSingle("76.5"), 76.5F);
}

TEST_F(ModMain, LocaleSingleFailsOnTwoKindsOfSeparator) {
    EXPECT_EQ(LocaleSingle("1.234,5"), 0.0F);
    useComma();
    EXPECT_EQ(LocaleSingle("1.234,5"), 0.0F);
}

TEST_F(ModMain, TheRateIsEightyAtTheFirstStartAndIsWrittenBack) {
    EXPECT_EQ(ReadKursKupovni(), 80.0F);
    EXPECT_EQ(platform::GetSetting("Tarvello", "Settings", "KursKupovni", "missing"), "80");
}

TEST_F(ModMain, AStoredRateWithACommaIsReadUnderAPointAndRewritten) {
    settings::setText(settings::KursKupovni, "76,5");
    EXPECT_EQ(ReadKursKupovni(), 76.5F);
    EXPECT_EQ(settings::text(settings::KursKupovni), "76.5");
    useComma();
    EXPECT_EQ(ReadKursKupovni(), 76.5F);
    EXPECT_EQ(settings::text(settings::KursKupovni), "76,5");
}

TEST_F(ModMain, ARateThatIsNoNumberIsAnErrorOfItsCaller) {
    settings::setText(settings::KursKupovni, "eighty");
    platform::Trap step;
    step([] { ReadKursKupovni(); });
    EXPECT_EQ(step.line(), "[13] Type mismatch");
    settings::setText(settings::KursKupovni, "1" + QString(40, '0'));
    step([] { ReadKursKupovni(); });
    EXPECT_EQ(step.line(), "[6] Overflow");
    settings::setText(settings::KursKupovni, "");
    EXPECT_EQ(ReadKursKupovni(), 0.0F);
}

TEST_F(ModMain, FileNameOfTakesWhatStandsBehindTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(FileNameOf("Tarvello.mdb"), "Tarvello.mdb");
    EXPECT_EQ(FileNameOf("C:\\shop\\Tarvello.mdb"), "Tarvello.mdb");
    EXPECT_EQ(FileNameOf("/shop/data\\Tarvello.mdb"), "Tarvello.mdb");
    EXPECT_EQ(FileNameOf("\\shop/Tarvello.mdb"), "Tarvello.mdb");
    EXPECT_EQ(FileNameOf("folder\\"), "");
    EXPECT_EQ(FileNameOf(""), "");
}

TEST_F(ModMain, TryKillFileDeletesAndSaysNothing) {
    const QString file = make("Tarvello.$$1");
    TryKillFile(file);
    EXPECT_FALSE(QFile::exists(file));
    TryKillFile(file);
    TryKillFile(folder_.path());
    EXPECT_TRUE(boxes_.asked.isEmpty());
}

TEST_F(ModMain, ALaunchAboveThirtyTwoIsSuccess) {
    QString target;
    platform::setShellExecuteHook([&](const QString& asked) {
        target = asked;
        return 33;
    });
    EXPECT_TRUE(LaunchAssociated(nullptr, "http://example.com"));
    EXPECT_EQ(target, "http://example.com");
    EXPECT_TRUE(boxes_.asked.isEmpty());
}

TEST_F(ModMain, EachFailureToLaunchHasItsSentence) {
    const QList<std::pair<int, int>> expected = {{0, 132},  {2, 134},  {3, 135},  {5, 136},  {8, 144},
                                                 {11, 133}, {26, 146}, {27, 137}, {28, 140}, {29, 139},
                                                 {30, 138}, {31, 143}, {32, 141}, {1, 147},  {4, 147}};
    for (const auto& [value, id] : expected) {
        platform::setShellExecuteHook([value = value](const QString&) { return value; });
        EXPECT_FALSE(LaunchAssociated(nullptr, "x"));
        ASSERT_FALSE(boxes_.asked.isEmpty());
        EXPECT_EQ(boxes_.asked.last().text, LoadResString(id)) << value;
        EXPECT_EQ(boxes_.asked.last().title, "Tarvello");
        EXPECT_EQ(boxes_.asked.last().icon, BoxIcon::Critical);
    }
}

TEST_F(ModMain, TheHelpFileInTheProgramFolderIsFoundWithoutAQuestion) {
    const QString file = make("Tarvello.hlp");
    EXPECT_TRUE(CheckHelpFile());
    EXPECT_EQ(helpFile(), file);
    EXPECT_EQ(platform::GetSetting("Tarvello", "Settings", "HelpFilePath", ""), file);
    EXPECT_TRUE(boxes_.asked.isEmpty());
}

TEST_F(ModMain, TheNameOfTheHelpFileComparesWithoutCase) {
    settings::setText(settings::HelpFilePath, make("TARVELLO.HLP"));
    EXPECT_TRUE(CheckHelpFile());
    EXPECT_TRUE(boxes_.asked.isEmpty());
}

TEST_F(ModMain, AMissingHelpFileIsAskedForAndNoIsAnAnswer) {
    boxes_.answers = {BoxAnswer::No};
    EXPECT_FALSE(CheckHelpFile());
    ASSERT_EQ(boxes_.asked.size(), 1);
    EXPECT_EQ(boxes_.asked[0].text, "Help file is missing. Would you like to try to find it?");
    EXPECT_EQ(boxes_.asked[0].icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes_.asked[0].buttons, platform::BoxButtons::YesNo);
    EXPECT_EQ(boxes_.asked[0].title, "Tarvello");
    EXPECT_TRUE(boxes_.fileQuestions.isEmpty());
}

TEST_F(ModMain, ACancelledSearchForTheHelpFileIsANo) {
    boxes_.answers = {BoxAnswer::Yes};
    boxes_.files = {std::nullopt};
    EXPECT_FALSE(CheckHelpFile());
    ASSERT_EQ(boxes_.fileQuestions.size(), 1);
    EXPECT_EQ(boxes_.fileQuestions[0].title, "Find missing \"Tarvello.hlp\" help file...");
    EXPECT_EQ(boxes_.fileQuestions[0].filter,
              "Microsoft Windows Help Files (*.hlp)|*.hlp|Svi Fajlovi (*.*)|*.*");
    EXPECT_EQ(boxes_.fileQuestions[0].folder, folder_.path());
}

TEST_F(ModMain, AWrongFileAndAMissingOneEachHaveTheirQuestionAndTheRightOneIsKept) {
    settings::setText(settings::HelpFilePath, make("Another.hlp"));
    const QString right = folder_.filePath("sub/tarvello.HLP");
    ASSERT_TRUE(QDir(folder_.path()).mkdir("sub"));
    make("sub/tarvello.HLP");
    boxes_.answers = {BoxAnswer::Yes, BoxAnswer::Yes, BoxAnswer::Yes};
    boxes_.files = {folder_.filePath("Another.hlp"), folder_.filePath("gone.hlp"),
                    QString("  " + right + " ")};
    EXPECT_TRUE(CheckHelpFile());
    ASSERT_EQ(boxes_.asked.size(), 3);
    EXPECT_EQ(boxes_.asked[0].text,
              "This is the wrong help file. Would you like to try to find the real one?");
    EXPECT_EQ(boxes_.asked[1].text,
              "This is the wrong help file. Would you like to try to find the real one?");
    EXPECT_EQ(boxes_.asked[2].text, "This is not the file needed for this application. Try again?");
    EXPECT_EQ(settings::text(settings::HelpFilePath), right);
    EXPECT_EQ(helpFile(), right);
}

TEST_F(ModMain, ThePointerGoesToNormalForTheQuestionAndBackAfterwards) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Qt::CursorShape during = Qt::WaitCursor;
    boxes_.onBox = [&](const platform::Box&) { during = QApplication::overrideCursor()->shape(); };
    boxes_.answers = {BoxAnswer::No};
    EXPECT_FALSE(CheckHelpFile());
    EXPECT_EQ(during, Qt::ArrowCursor);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

namespace {

QList<int> viewed;
bool noteView(const QString&, HelpCommand command, int context) {
    viewed += {static_cast<int>(command), context};
    return true;
}

}  // namespace

TEST_F(ModMain, HelpAsksTheViewerForTheTopicAndAsksForTheFileAgainEachTime) {
    viewed.clear();
    setHelpViewer(&noteView);
    boxes_.answers = {BoxAnswer::No};
    showHelp(501);
    EXPECT_TRUE(viewed.isEmpty());
    EXPECT_EQ(boxes_.asked.size(), 1);
    make("Tarvello.hlp");
    showHelp(501);
    EXPECT_EQ(viewed, QList<int>({1, 501}));
    EXPECT_TRUE(WinHelp(helpFile(), HELP_QUIT));
    EXPECT_EQ(viewed, QList<int>({1, 501, 2, 0}));
    setHelpViewer(nullptr);
    EXPECT_FALSE(WinHelp(helpFile(), HELP_FINDER));
}

TEST_F(ModMain, AWindowComesToTheTopWithoutMovingOrTakingTheFocus) {
    QWidget window;
    window.move(30, 40);
    window.show();
    const QPoint place = window.pos();
    SetTopMost(&window, true);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.pos(), place);
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    SetTopMost(&window, false);
    EXPECT_FALSE(window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(ModMain, APlaceIsInTwipsOfFifteenToAPixel) {
    QWidget window;
    window.resize(200, 100);
    moveToPlace(&window, "1500;3000");
    EXPECT_EQ(window.pos(), QPoint(100, 200));
    EXPECT_EQ(placeOf(&window), "1500;3000");
    moveToPlace(&window, "500;500");
    EXPECT_EQ(window.pos(), QPoint(33, 33));
}

TEST_F(ModMain, WhatIsNoPlaceLeavesTheWindowWhereItIs) {
    QWidget window;
    window.resize(200, 100);
    window.move(50, 60);
    for (const char* place : {"", "1500", ";", "a;b", "1500;", "nan;0", "1e300;0"}) {
        moveToPlace(&window, place);
        EXPECT_EQ(window.pos(), QPoint(50, 60)) << place;
    }
}

constexpr int kFrame = 4;  // the thickest of the frames around the windows of the tests

TEST_F(ModMain, AWindowOffTheScreenComesBackOnIt) {
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    for (const char* place : {"900000;900000", "-900000;300", "11000;300", "300;11500", "-300;-300"}) {
        QWidget window;
        window.resize(200, 100);
        moveToPlace(&window, place);
        window.show();
        EXPECT_TRUE(room.contains(window.frameGeometry())) << place;
    }
    QWidget window;
    window.resize(200, 100);
    moveToPlace(&window, "11000;300");
    window.show();
    EXPECT_EQ(window.frameGeometry().right(), room.right()) << "no further than it has to";
    EXPECT_NEAR(window.y(), 20, kFrame);
}

TEST_F(ModMain, OfAWindowThatIsTooLargeTheUpperLeftCornerIsOnTheScreen) {
    QWidget window;
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    window.resize(2000, 300);
    window.setMinimumWidth(1500);
    moveToPlace(&window, "3000;3000");
    window.show();
    EXPECT_EQ(window.x(), room.left());
    EXPECT_EQ(window.size(), QSize(1500, 300));
    QWidget large;
    moveToPlaceAndSize(&large, "3000;3000;900000;9000");
    large.resize(2000, 300);
    large.show();
    EXPECT_EQ(large.frameGeometry().width(), room.width()) << "as large as there is room for";
}

TEST_F(ModMain, OnceItIsThereAWindowGoesWhereThePersonPutsIt) {
    QWidget window;
    window.resize(200, 100);
    moveToPlace(&window, "300;300");
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    window.move(-50, 700);
    window.hide();
    window.show();
    EXPECT_EQ(window.pos(), QPoint(-50, 700));
}

TEST_F(ModMain, APlaceAndSizeIsLeftTopWidthAndHeight) {
    QWidget window;
    moveToPlaceAndSize(&window, "1500;3000;4500;3000");
    EXPECT_EQ(window.geometry(), QRect(QPoint(100, 200), sizeOfTwips(4500, 3000)));
    EXPECT_EQ(placeAndSizeOf(&window), "1500;3000;4500;3000");
    window.resize(150, 90);
    const double twips = 15 / platform::letterFactor();
    EXPECT_EQ(placeAndSizeOf(&window),
              QString("1500;3000;%1;%2").arg(qRound(150 * twips)).arg(qRound(90 * twips)));
}

TEST_F(ModMain, AToldSizeIsKeptAsItIsUntilAPersonChangesIt) {
    for (const char* frame : {"1500;3000;4507;3001", "0;0;1234;777", "0;0;900000;900000"}) {
        QWidget window;
        moveToPlaceAndSize(&window, frame);
        window.show();
        EXPECT_EQ(placeAndSizeOf(&window), frame);
    }
}

TEST_F(ModMain, WithFewerThanFourFiguresTheSizeIsTheUsualOne) {
    QWidget window;
    const QSize usual = sizeOfTwips(12000, 8000);
    moveToPlaceAndSize(&window, "150;300;4500");
    EXPECT_EQ(window.geometry(), QRect(QPoint(10, 20), usual));
    window.resize(90, 80);
    moveToPlaceAndSize(&window, "");
    EXPECT_EQ(window.geometry(), QRect(QPoint(10, 20), usual));
}

TEST_F(ModMain, ASizeThatIsNoneIsLeftAloneAndNoneIsLargerThanTheScreen) {
    QWidget window;
    window.resize(90, 80);
    moveToPlaceAndSize(&window, "150;300;x;4500");
    EXPECT_EQ(window.size(), QSize(90, 80));
    moveToPlaceAndSize(&window, "150;300;-15;4500");
    EXPECT_EQ(window.size(), QSize(90, 80));
    moveToPlaceAndSize(&window, "150;300;900000;900000");
    EXPECT_EQ(window.size(), window.screen()->availableSize());
}

TEST_F(ModMain, ScrambleOrderTurnsAbcdeIntoBdaec) {
    EXPECT_EQ(ScrambleOrder("abcde", false), "bdaec");
    EXPECT_EQ(ScrambleOrder("bdaec", true), "abcde");
}

TEST_F(ModMain, ScrambleOrderLeavesTextsShorterThanThreeAlone) {
    for (const char* text : {"", "a", "ab"}) {
        EXPECT_EQ(ScrambleOrder(text, false), text);
        EXPECT_EQ(ScrambleOrder(text, true), text);
    }
}

TEST_F(ModMain, ScrambleOrderUndoesItselfAtEveryLength) {
    const QString letters = "abcdefghijklmnopqrstuvwxyz";
    for (int length = 0; length <= 20; ++length) {
        const QString text = letters.left(length);
        EXPECT_EQ(ScrambleOrder(ScrambleOrder(text, false), true), text);
        EXPECT_EQ(ScrambleOrder(ScrambleOrder(text, true), false), text);
        if (length >= 3) {
            EXPECT_NE(ScrambleOrder(text, false), text);
        }
    }
    // Even length: pass B swaps all pairs, pass A leaves the first and the last where they are.
    EXPECT_EQ(ScrambleOrder("abcd", false), "bdac");
    EXPECT_EQ(ScrambleOrder("abc", false), "bca");
}

TEST_F(ModMain, ScrambleCharsTakesPositionAndCodeFromTwoHundredAndFiftySix) {
    const QString scrambled = ScrambleChars("AB");
    EXPECT_EQ(scrambled[0], QChar(0x013E));                                    // 256 - 1 - 65 = 190
    EXPECT_EQ(scrambled[1], QChar(0x013D));                                    // 256 - 2 - 66 = 188
    EXPECT_EQ(ScrambleChars(QStringLiteral("\u0161")), QString(QChar(0x65)));  // 256 - 1 - 154 = 101
}

TEST_F(ModMain, ScrambleCharsUndoesItselfForAllCodesAtAllPlaces) {
    const QString all = allCharacters();
    // 256 codes, of which none stays itself at the first place: 255 - code never equals the code.
    ASSERT_EQ(all.size(), 256);
    EXPECT_EQ(ScrambleChars(ScrambleChars(all)), all);
    for (int place = 0; place < 20; ++place) {
        for (const QChar c : all) {
            const QString text = QString(place, QLatin1Char('x')) + c;
            EXPECT_EQ(ScrambleChars(ScrambleChars(text)), text);
        }
    }
    const QString longer = QString("x").repeated(600);
    EXPECT_EQ(ScrambleChars(ScrambleChars(longer)), longer);
}

TEST_F(ModMain, ThePageIsThatOfCentralEurope) {
    // Made apart from the program's table: the page's characters in their order, each with the one it turns
    // into.
    unsigned sum = 0;
    unsigned place = 0;
    for (const QChar c : allCharacters()) {
        ++place;
        sum = (sum + place * c.unicode() + place * 7 * ScrambleChars(c)[0].unicode()) % 1000003U;
    }
    EXPECT_EQ(sum, 89747U);
}

TEST_F(ModMain, CharactersOutsideThePagePassUnchanged) {
    const QString text =
        QStringLiteral("\u0428\u043E\u043F \u4E2D ") + QString::fromUcs4(U"\U0001F600") + "abc";
    const QString scrambled = ScrambleChars(text);
    EXPECT_EQ(scrambled[0], text[0]);
    EXPECT_EQ(ScrambleChars(scrambled), text);
    EXPECT_EQ(ScrambleOrder(ScrambleChars(ScrambleChars(ScrambleOrder(text, false))), true), text);
}
