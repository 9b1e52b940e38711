#include "shell/frmOptions.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include "catalogue/frmJM.h"
#include "common/help.h"
#include "common/scramble.h"
#include "common/window_places.h"
#include "platform/system/launch.h"
#include "shell/program_windows.h"
#include "support/fixture.h"
#include "support/modal.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

namespace {

const QString kAsk = QStringLiteral("\nZelite li da bude upisana podrazumevana vrednost?");

struct HelpCall {
    QString file;
    HelpCommand command;
    int context;
};
QList<HelpCall>& helpCalls() {
    static QList<HelpCall> calls;
    return calls;
}
bool rememberHelp(const QString& file, HelpCommand command, int context) {
    helpCalls().append({file, command, context});
    return true;
}

class Options : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        helpCalls().clear();
        setHelpViewer(rememberHelp);
        window = std::make_unique<frmOptions>();
        window->AlwaysCreateBackupDB = true;
        window->DueDateDiff = 5;
        window->ShowFilterStatistics = true;
        window->DefaultGST = 20;
    }
    void TearDown() override {
        window.reset();
        setHelpViewer(nullptr);
        platform::setShellExecuteHook({});
        DeliveredFixture::TearDown();
    }

    // Opens the window, does `work` in it; what is still open then is cancelled.
    void with(const std::function<void()>& work) {
        inModal<frmOptions>([&] { window->Display(); },
                            [&](frmOptions&) {
                                work();
                                if (window->isVisible()) {
                                    window->reject();
                                }
                            });
    }
    template <typename Control>
    Control* get(const char* array, int index) {
        auto* control =
            window->findChild<Control*>(QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index));
        EXPECT_NE(control, nullptr) << array << index;
        return control;
    }
    QCheckBox* check(int index) { return get<QCheckBox>("Check1", index); }
    QLineEdit* number(int index) { return get<QLineEdit>("Text1", index); }
    QLineEdit* firm(int index) { return get<QLineEdit>("Text2", index); }
    QPushButton* button(int index) { return get<QPushButton>("Command1", index); }
    QTabWidget* tabs() { return window->findChild<QTabWidget*>(QStringLiteral("SSTab1")); }
    void click(int index) { QTest::mouseClick(button(index), Qt::LeftButton); }
    void type(int index, const QString& words) {
        number(index)->setFocus();
        number(index)->selectAll();
        QTest::keyClick(number(index), Qt::Key_Delete);
        QTest::keyClicks(number(index), words);
    }
    static QString stored(const char* key, const char* section = "Settings") {
        return platform::GetSetting("Tarvello", section, key, "(none)");
    }
    static bool isScrambled(const QString& text, const QString& plain) {
        return text != plain && ScrambleOrder(ScrambleChars(text), true) == plain;
    }

    std::unique_ptr<frmOptions> window;
};

// The window ------------------------------------------------------------------------------------------------

TEST_F(Options, TitleTabsAndButtonsSayWhatTheyAre) {
    with([&] {
        EXPECT_EQ(window->windowTitle(), "Options");
        EXPECT_TRUE(window->isModal());
        ASSERT_EQ(tabs()->count(), 2);
        EXPECT_EQ(tabs()->tabText(0), "&Opste");
        EXPECT_EQ(tabs()->tabText(1), "&Firma");
        EXPECT_EQ(tabs()->currentIndex(), 0);
        EXPECT_EQ(tabs()->widget(0)->objectName(), "Picture1(0)");
        EXPECT_EQ(tabs()->widget(1)->objectName(), "Picture1(1)");
        const QStringList captions = {"OK", "Cancel", "&Help", "&NBS -->", "Jedinice Mere..."};
        for (int i = 0; i < captions.size(); ++i) {
            EXPECT_EQ(button(i)->text(), captions[i]);
        }
        EXPECT_EQ(button(3)->toolTip(),
                  "Sajt Narodne Banke Srbije, stranica sa kursnom listom na zeljeni dan");
    });
}

TEST_F(Options, ChecksAndLabelsSayWhatTheyAre) {
    with([&] {
        const QStringList captions = {"&Always create database backup copy on exit",
                                      "&Show filtering statistics",
                                      "&Cene prikazi u Dinarima",
                                      "A&utomatski koriguj uneti tekst (velika i mala slova)",
                                      "Pitaj pre &brisanja stavki u bilo kojoj listi",
                                      "Pri p&okretanju programa prikazi Tip of Day",
                                      "&Menjaj Tip of Day po slucajnom redosledu"};
        for (int i = 0; i < captions.size(); ++i) {
            EXPECT_EQ(check(i)->text(), captions[i]);
        }
        QStringList labels;
        for (int i = 0; i < 3; ++i) {
            labels.append(get<QLabel>("Label1", i)->text());
        }
        EXPECT_EQ(labels, QStringList({"&Don't alert me if it's more than", "days till Service due date.",
                                       "&Porez na promet [%]:"}));
        EXPECT_EQ(get<QLabel>("Label1", 0)->buddy(), number(0));
        EXPECT_EQ(get<QLabel>("Label1", 2)->buddy(), number(1));
        const auto frames = window->findChildren<QGroupBox*>();
        QStringList titles;
        for (const QGroupBox* frame : frames) {
            titles.append(frame->title());
        }
        titles.sort();
        EXPECT_EQ(titles, QStringList({"&Kupovni kurs EUR:", "Fiskalni podaci:", "Opsti podaci:"}));
        const auto* rate = window->findChild<QGroupBox*>("Frame1");
        EXPECT_EQ(rate->title(), titles[0]);
        EXPECT_TRUE(rate->isAncestorOf(number(2)));
        EXPECT_TRUE(rate->isAncestorOf(button(3)));
    });
}

TEST_F(Options, TheSecondTabHoldsTheFirmsData) {
    with([&] {
        const QStringList labels = {
            "Adresa:",    "Grad:",      "Post. broj:", "Telefon:", "Fax:", "E-mail:",   "Sajt:",
            "Mat. broj:", "Reg. broj:", "Sifra del.:", "PIB:",     "PDV:", "Racun br.:"};
        const auto frames = tabs()->widget(1)->findChildren<QGroupBox*>();
        for (int i = 0; i < labels.size(); ++i) {
            EXPECT_EQ(get<QLabel>("Label2", i)->text(), labels[i]);
            EXPECT_TRUE(firm(i)->text().isEmpty());
            EXPECT_TRUE(frames[i < 7 ? 0 : 1]->isAncestorOf(firm(i))) << i;
        }
        EXPECT_FALSE(firm(0)->isVisible());
        QTest::keyClick(window.get(), Qt::Key_F, Qt::AltModifier);
        EXPECT_TRUE(firm(0)->isVisible());
        EXPECT_FALSE(number(0)->isVisible());
    });
}

TEST_F(Options, EveryControlHasANameToBeReadAloud) {
    with([&] {
        for (int i = 0; i < 7; ++i) {
            EXPECT_FALSE(check(i)->accessibleName().isEmpty());
        }
        for (int i = 0; i < 3; ++i) {
            EXPECT_FALSE(number(i)->accessibleName().isEmpty());
        }
        for (int i = 0; i < 13; ++i) {
            EXPECT_FALSE(firm(i)->accessibleName().isEmpty());
        }
        for (int i = 0; i < 5; ++i) {
            EXPECT_FALSE(button(i)->accessibleName().contains('&'));
        }
    });
}

TEST_F(Options, FitsTheSmallestScreenWeHave) {
    with([&] {
        EXPECT_LE(window->minimumSizeHint().width(), 1024);
        EXPECT_LE(window->minimumSizeHint().height(), 720);
    });
}

// Filling ---------------------------------------------------------------------------------------------------

TEST_F(Options, ShowsTheMembersAndTheProgramsSwitches) {
    window->AlwaysCreateBackupDB = false;
    window->ShowFilterStatistics = true;
    window->DueDateDiff = 12;
    window->DefaultGST = 8;
    CeneDinarske = false;
    MakeProperCase = true;
    AskBeforeDelete = false;
    ShowTipsAtStartup = true;
    ShowTipsAtRandom = true;
    KursKupovni = 117.25F;
    with([&] {
        const bool expected[] = {false, true, false, true, false, true, true};
        for (int i = 0; i < 7; ++i) {
            EXPECT_EQ(check(i)->isChecked(), expected[i]) << i;
        }
        EXPECT_EQ(number(0)->text(), "12");
        EXPECT_EQ(number(1)->text(), "8");
        EXPECT_EQ(number(2)->text(), "117.25");
        EXPECT_TRUE(button(0)->isEnabled());
    });
}

TEST_F(Options, TheRateStandsThereWithTheLocalesSeparator) {
    QLocale::setDefault(QLocale("sr_Latn_RS"));
    KursKupovni = 1117.25F;
    with([&] {
        EXPECT_EQ(number(2)->text(), "1117,25");
        EXPECT_TRUE(button(0)->isEnabled());
    });
}

TEST_F(Options, TheUsualValuesLieInTheTags) {
    with([&] {
        EXPECT_EQ(number(0)->property("Tag").toString(), "0");
        EXPECT_EQ(number(1)->property("Tag").toString(), "18");
        EXPECT_EQ(number(2)->property("Tag").toString(), "81");
    });
}

TEST_F(Options, TheFirmsDataIsReadInPlainForm) {
    const QString keys[] = {"frmSettAdresa", "frmSettPIB"};
    settings::setScrambled(settings::find("Settings", keys[0]), "Lipova 1");
    settings::setScrambled(settings::find("Settings", keys[1]), "123456789");
    with([&] {
        EXPECT_EQ(firm(0)->text(), "Lipova 1");
        EXPECT_EQ(firm(10)->text(), "123456789");
        EXPECT_TRUE(firm(1)->text().isEmpty());
    });
}

TEST_F(Options, PlaceIsFiveHundredTwipsAtFirstAndKeptAfterwards) {
    with([&] {
        EXPECT_EQ(placeOf(window.get()), "495;495");  // whole pixels of 15 twips
        window->move(60, 40);
    });
    EXPECT_EQ(stored("OptionsPosition"), "(none)");
    window->Unload();
    EXPECT_EQ(stored("OptionsPosition"), "900;600");
    window = std::make_unique<frmOptions>();
    with([&] { EXPECT_EQ(window->pos(), QPoint(60, 40)); });
}

TEST_F(Options, TheFirstBoxHasTheFocus) {
    with([&] { EXPECT_TRUE(check(0)->hasFocus()); });
}

TEST_F(Options, LookingWritesNothing) {
    with([] {});
    for (const char* key : {"CeneDinarske", "AskBeforeDelete", "MakeProperCase", "ShowTipsAtStartup",
                            "ShowTipsAtRandom", "KursKupovni", "frmSettAdresa"}) {
        EXPECT_EQ(stored(key), "(none)") << key;
    }
}

// What is typed ---------------------------------------------------------------------------------------------

TEST_F(Options, DaysAndTaxTakeDigitsOnly) {
    with([&] {
        for (const int index : {0, 1}) {
            type(index, "1x2.3,n-4");
            EXPECT_EQ(number(index)->text(), "1234");
        }
    });
}

TEST_F(Options, TheRateTakesDigitsAndTheSeparator) {
    with([&] {
        type(2, "n1a1,7.2-5");
        EXPECT_EQ(number(2)->text(), "117.25");
    });
}

TEST_F(Options, UnderACommaThePointAndTheLetterOfItsCodeBecomeTheComma) {
    QLocale::setDefault(QLocale("sr_Latn_RS"));
    with([&] {
        type(2, "117.25");
        EXPECT_EQ(number(2)->text(), "117,25");
        type(2, "8n5");
        EXPECT_EQ(number(2)->text(), "8,5");
        type(2, "8,5m");
        EXPECT_EQ(number(2)->text(), "8,5");
        type(1, "2n");
        EXPECT_EQ(number(1)->text(), "2");
    });
}

TEST_F(Options, TheLetterOfThePadsCodeAndThePadsPointTypeTheSeparator) {
    const auto type = [&](std::initializer_list<std::pair<Qt::Key, Qt::KeyboardModifiers>> keys) {
        number(2)->setFocus();
        number(2)->selectAll();
        for (const auto& [key, held] : keys) {
            QTest::keyClick(window->windowHandle(), key, held);
        }
        return number(2)->text();
    };
    const auto pad = Qt::KeypadModifier;
    QLocale::setDefault(QLocale("sr_Latn_RS"));
    with([&] {
        EXPECT_EQ(type({{Qt::Key_8, pad}, {Qt::Key_Period, pad}, {Qt::Key_5, pad}}), "8,5");
        EXPECT_EQ(type({{Qt::Key_8, {}}, {Qt::Key_Period, {}}, {Qt::Key_6, {}}}), "8,6");
        EXPECT_EQ(type({{Qt::Key_8, {}}, {Qt::Key_N, {}}, {Qt::Key_7, {}}}), "8,7");
    });
    QLocale::setDefault(QLocale("en_US"));
    with([&] {
        EXPECT_EQ(type({{Qt::Key_8, {}}, {Qt::Key_N, {}}, {Qt::Key_7, {}}}), "87") << "a point needs no help";
        EXPECT_EQ(type({{Qt::Key_8, pad}, {Qt::Key_Comma, pad}, {Qt::Key_5, pad}}), "8.5");
    });
}

TEST_F(Options, OkIsFreeWhileTheTextIsANumber) {
    with([&] {
        for (const int index : {0, 1, 2}) {
            number(index)->setText("abc");
            EXPECT_FALSE(button(0)->isEnabled()) << index;
            number(index)->setText("20");
            EXPECT_TRUE(button(0)->isEnabled()) << index;
            number(index)->clear();
            EXPECT_FALSE(button(0)->isEnabled()) << index;
            number(index)->setText("7");
        }
    });
}

TEST_F(Options, ARateMustBeAboveZero) {
    with([&] {
        for (const char* wrong : {"0", "0.00", "-5"}) {
            number(2)->setText(wrong);
            EXPECT_FALSE(button(0)->isEnabled()) << wrong;
        }
        number(2)->setText("0.01");
        EXPECT_TRUE(button(0)->isEnabled());
        number(0)->setText("0");
        EXPECT_TRUE(button(0)->isEnabled());
        number(1)->setText("0");
        EXPECT_TRUE(button(0)->isEnabled());
    });
}

TEST_F(Options, WhatFitsNoShortNumberIsNone) {
    with([&] {
        number(0)->setText("32767");
        EXPECT_TRUE(button(0)->isEnabled());
        number(0)->setText("32768");
        EXPECT_FALSE(button(0)->isEnabled());
        number(2)->setText("1e39");
        EXPECT_FALSE(button(0)->isEnabled());
        number(2)->setText("80");
    });
}

TEST_F(Options, APastedTextIsCaughtOnLeaving) {
    QGuiApplication::clipboard()->setText("abc");
    boxes.answers << BoxAnswer::Yes;
    with([&] {
        type(0, "");
        QTest::keyClick(number(0), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(number(0)->text(), "abc");
        EXPECT_TRUE(boxes.asked.isEmpty());
        QTest::keyClick(number(0), Qt::Key_Tab);
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(boxes.lastText(), "Uneti broj dana ne predstavlja korektnu numericku vrednost." + kAsk);
        EXPECT_EQ(boxes.asked.last().title, "Tarvello");
        EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
        EXPECT_EQ(boxes.asked.last().buttons, BoxButtons::YesNo);
        EXPECT_EQ(number(0)->text(), "0");
        EXPECT_TRUE(button(0)->isEnabled());
        EXPECT_FALSE(number(0)->hasFocus());
    });
}

TEST_F(Options, EachFieldHasItsOwnLineAndItsOwnUsualValue) {
    const QString lines[] = {"Uneti broj dana ne predstavlja korektnu numericku vrednost.",
                             "Uneta vrednost poreza ne predstavlja korektnu numericku vrednost.",
                             "Uneti kupovni kurs ne predstavlja korektnu numericku vrednost."};
    const QString usual[] = {"0", "18", "81"};
    with([&] {
        for (int i = 0; i < 3; ++i) {
            boxes.answers << BoxAnswer::Yes;
            number(i)->setFocus();
            number(i)->clear();
            QTest::keyClick(number(i), Qt::Key_Tab);
            EXPECT_EQ(boxes.lastText(), lines[i] + kAsk);
            EXPECT_EQ(number(i)->text(), usual[i]);
        }
        EXPECT_EQ(boxes.asked.size(), 3);
    });
}

TEST_F(Options, NoKeepsTheFocusInTheField) {
    boxes.answers << BoxAnswer::No << BoxAnswer::No;
    with([&] {
        number(1)->setFocus();
        number(1)->setText("12x");
        QTest::keyClick(number(1), Qt::Key_Tab);
        EXPECT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(number(1)->hasFocus());
        EXPECT_EQ(number(1)->text(), "12x");
        EXPECT_FALSE(button(0)->isEnabled());
        check(0)->setFocus(Qt::MouseFocusReason);
        EXPECT_EQ(boxes.asked.size(), 2);
        EXPECT_TRUE(number(1)->hasFocus());
    });
}

TEST_F(Options, LeavingARateOfZeroAsksTheSameWay) {
    boxes.answers << BoxAnswer::No << BoxAnswer::Yes;
    with([&] {
        type(2, "0");
        QTest::keyClick(number(2), Qt::Key_Tab);
        EXPECT_EQ(boxes.lastText(),
                  "Uneti kupovni kurs mora biti veci od nule. U protivnom, sve dinarske "
                  "cene ce biti = 0." +
                      kAsk);
        EXPECT_TRUE(number(2)->hasFocus());
        EXPECT_FALSE(button(0)->isEnabled());
        QTest::keyClick(number(2), Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(number(2)->text(), "81");
        EXPECT_TRUE(button(0)->isEnabled());
    });
}

TEST_F(Options, AGoodNumberIsLeftWithoutAQuestion) {
    with([&] {
        type(0, "14");
        QTest::keyClick(number(0), Qt::Key_Tab);
        EXPECT_TRUE(number(1)->hasFocus());
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Options, NeitherCancelNorAnotherWindowIsLeaving) {
    with([&] {
        number(0)->setFocus();
        number(0)->setText("abc");
        QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(number(0), &away);
        EXPECT_TRUE(boxes.asked.isEmpty());
        QTest::keyClick(number(0), Qt::Key_Escape);
        EXPECT_FALSE(window->isVisible());
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_TRUE(window->Cancelled());
}

TEST_F(Options, EnterInAFieldGoesOnAsTabDoes) {
    with([&] {
        number(0)->setFocus();
        QTest::keyClick(number(0), Qt::Key_Return);
        EXPECT_TRUE(number(1)->hasFocus());
        QTest::keyClick(number(1), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_TRUE(number(2)->hasFocus());
        tabs()->setCurrentIndex(1);
        firm(0)->setFocus();
        QTest::keyClick(firm(0), Qt::Key_Return);
        EXPECT_TRUE(firm(1)->hasFocus());
        EXPECT_TRUE(window->isVisible());
    });
}

TEST_F(Options, EnterOnAButtonPressesThatButton) {
    QStringList opened;
    platform::setShellExecuteHook([&](const QString& target) {
        opened.append(target);
        return 42;
    });
    const auto enterOn = [&](int index) {
        button(index)->setFocus(Qt::TabFocusReason);
        QTest::keyClick(window->windowHandle(), Qt::Key_Return);
    };
    with([&] {
        enterOn(2);
        ASSERT_EQ(helpCalls().size(), 1);
        EXPECT_EQ(helpCalls().last().context, 7011);
        enterOn(3);
        EXPECT_EQ(opened.size(), 1);
        check(0)->click();
        enterOn(1);
        EXPECT_FALSE(window->isVisible());
    });
    EXPECT_TRUE(window->Cancelled());
    EXPECT_TRUE(window->AlwaysCreateBackupDB);
}

TEST_F(Options, EnterOnACheckBoxIsOk) {
    with([&] {
        check(1)->setFocus();
        QTest::keyClick(window->windowHandle(), Qt::Key_Return);
        EXPECT_FALSE(window->isVisible());
    });
    EXPECT_FALSE(window->Cancelled());
    EXPECT_TRUE(window->ShowFilterStatistics) << "and ticks nothing";
}

TEST_F(Options, WithoutTipsAtTheStartTheirOrderCannotBeChosenButStays) {
    ShowTipsAtRandom = true;
    with([&] {
        EXPECT_TRUE(check(6)->isEnabled());
        check(5)->click();
        EXPECT_FALSE(check(6)->isEnabled());
        EXPECT_TRUE(check(6)->isChecked());
        click(0);
    });
    EXPECT_FALSE(ShowTipsAtStartup);
    EXPECT_TRUE(ShowTipsAtRandom);
    EXPECT_EQ(stored("ShowTipsAtRandom"), "True");
    window = std::make_unique<frmOptions>();
    with([&] {
        EXPECT_FALSE(check(6)->isEnabled());
        EXPECT_TRUE(check(6)->isChecked());
        check(5)->click();
        EXPECT_TRUE(check(6)->isEnabled());
    });
}

// OK, Cancel ------------------------------------------------------------------------------------------------

TEST_F(Options, OkTakesTheSwitchesOverAndStoresThem) {
    with([&] {
        for (int i = 0; i < 7; ++i) {
            check(i)->click();
        }
        click(0);
        EXPECT_FALSE(window->isVisible());
    });
    EXPECT_FALSE(window->Cancelled());
    EXPECT_FALSE(window->AlwaysCreateBackupDB);
    EXPECT_FALSE(window->ShowFilterStatistics);
    EXPECT_FALSE(CeneDinarske);
    EXPECT_FALSE(MakeProperCase);
    EXPECT_FALSE(AskBeforeDelete);
    EXPECT_FALSE(ShowTipsAtStartup);
    // The last box was out of reach, the one above it being off.
    EXPECT_FALSE(ShowTipsAtRandom);
    for (const char* key :
         {"CeneDinarske", "AskBeforeDelete", "MakeProperCase", "ShowTipsAtStartup", "ShowTipsAtRandom"}) {
        EXPECT_EQ(stored(key), "False") << key;
    }
    // These two are the main window's to store.
    EXPECT_EQ(stored("AlwaysCreateBackupDB"), "(none)");
    EXPECT_EQ(stored("ShowFilterStatistics"), "(none)");
}

TEST_F(Options, EachSwitchGoesToItsOwnVariable) {
    bool* const variables[] = {&window->AlwaysCreateBackupDB,
                               &window->ShowFilterStatistics,
                               &CeneDinarske,
                               &MakeProperCase,
                               &AskBeforeDelete,
                               &ShowTipsAtStartup,
                               &ShowTipsAtRandom};
    const char* const keys[] = {nullptr,           nullptr,           "CeneDinarske",
                                "MakeProperCase",  "AskBeforeDelete", "ShowTipsAtStartup",
                                "ShowTipsAtRandom"};
    ShowTipsAtRandom = true;
    for (int i = 0; i < 7; ++i) {
        with([&] {
            check(i)->setChecked(false);
            click(0);
        });
        for (int k = 0; k < 7; ++k) {
            EXPECT_EQ(*variables[k], k != i) << i << k;
            if (keys[k]) {
                EXPECT_EQ(stored(keys[k]), k != i ? "True" : "False") << i << k;
            }
        }
        *variables[i] = true;
        window->Unload();  // filled afresh at the next showing
    }
}

TEST_F(Options, OkTakesTheNumbersOver) {
    with([&] {
        type(0, "30");
        type(1, "8");
        type(2, "117.25");
        click(0);
    });
    EXPECT_EQ(window->DueDateDiff, 30);
    EXPECT_EQ(window->DefaultGST, 8);
    EXPECT_EQ(KursKupovni, 117.25F);
    EXPECT_EQ(stored("KursKupovni"), "117.25");
    EXPECT_EQ(stored("DueDateDiff"), "(none)");
    EXPECT_EQ(stored("DefaultGST"), "(none)");
}

TEST_F(Options, UnderACommaTheRateIsStoredWithItAndReadAgain) {
    QLocale::setDefault(QLocale("sr_Latn_RS"));
    with([&] {
        type(2, "117,25");
        click(0);
    });
    EXPECT_EQ(KursKupovni, 117.25F);
    EXPECT_EQ(stored("KursKupovni"), "117,25");
    EXPECT_EQ(ReadKursKupovni(), 117.25F);
    QLocale::setDefault(QLocale("en_US"));
    EXPECT_EQ(ReadKursKupovni(), 117.25F);
    EXPECT_EQ(stored("KursKupovni"), "117.25");
}

// A change in another field frees OK, whatever the blank one holds.
TEST_F(Options, BlankFieldsHaveValuesOfTheirOwn) {
    with([&] {
        number(1)->clear();
        number(2)->clear();
        EXPECT_FALSE(button(0)->isEnabled());
        number(0)->setText("3");
        ASSERT_TRUE(button(0)->isEnabled());
        button(0)->click();
        EXPECT_FALSE(window->isVisible());
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(window->DueDateDiff, 3);
    EXPECT_EQ(window->DefaultGST, 0);
    EXPECT_EQ(KursKupovni, 82.0F);
    EXPECT_EQ(stored("KursKupovni"), "82");
    window->Unload();
    with([&] {
        number(0)->setText(" ");
        number(1)->setText("9");
        button(0)->click();
    });
    EXPECT_EQ(window->DueDateDiff, 0);
    EXPECT_EQ(window->DefaultGST, 9);
}

TEST_F(Options, AWrongNumberDoesNotGetPastOkEither) {
    boxes.answers << BoxAnswer::No << BoxAnswer::No << BoxAnswer::Yes;
    with([&] {
        number(2)->setText("0");
        number(0)->setText("3");
        button(0)->click();
        EXPECT_TRUE(window->isVisible());
        EXPECT_TRUE(number(2)->hasFocus());
        tabs()->setCurrentIndex(1);  // asks again, as any leaving does
        EXPECT_EQ(KursKupovni, 80.0F);
        number(0)->setText("4");
        button(0)->click();
        EXPECT_FALSE(window->isVisible());
    });
    EXPECT_EQ(KursKupovni, 81.0F);
    EXPECT_EQ(window->DueDateDiff, 4);
}

TEST_F(Options, WholeNumbersAreRoundedAsTheShopsProgramsDo) {
    with([&] {
        number(0)->setText("2.5");
        number(1)->setText("7.6");
        button(0)->click();
    });
    EXPECT_EQ(window->DueDateDiff, 2);
    EXPECT_EQ(window->DefaultGST, 8);
}

TEST_F(Options, TheFirmsDataIsTrimmedAndNeverStoredInPlain) {
    const char* const keys[] = {"frmSettAdresa", "frmSettGrad",   "frmSettZip", "frmSettTel",
                                "frmSettFax",    "frmSettEmail",  "frmSettWWW", "frmSettMatBr",
                                "frmSettRegBr",  "frmSettSifDel", "frmSettPIB", "frmSettPDV",
                                "frmSettRnBr"};
    with([&] {
        tabs()->setCurrentIndex(1);
        for (int i = 0; i < 13; ++i) {
            firm(i)->setText(QStringLiteral("  Podatak broj %1 ").arg(i));
        }
        click(0);
    });
    for (int i = 0; i < 13; ++i) {
        EXPECT_TRUE(isScrambled(stored(keys[i]), QStringLiteral("Podatak broj %1").arg(i))) << keys[i];
    }
    window->Unload();
    window = std::make_unique<frmOptions>();
    with([&] {
        for (int i = 0; i < 13; ++i) {
            EXPECT_EQ(firm(i)->text(), QStringLiteral("Podatak broj %1").arg(i));
        }
    });
}

TEST_F(Options, ShortAndEmptyFirmDataComesBackAsItWas) {
    with([&] {
        firm(0)->setText("A");
        firm(1)->setText("NS");
        firm(2)->setText(QString::fromUtf8("Šabac Đ"));
        click(0);
    });
    EXPECT_NE(stored("frmSettAdresa"), "A");
    EXPECT_EQ(stored("frmSettTel"), "");
    window->Unload();
    with([&] {
        EXPECT_EQ(firm(0)->text(), "A");
        EXPECT_EQ(firm(1)->text(), "NS");
        EXPECT_EQ(firm(2)->text(), QString::fromUtf8("Šabac Đ"));
        EXPECT_EQ(firm(3)->text(), "");
    });
}

TEST_F(Options, CancelEscapeAndTheCloseBoxTakeNothingOver) {
    const std::function<void()> ways[] = {
        [&] { click(1); }, [&] { QTest::keyClick(window.get(), Qt::Key_Escape); }, [&] { window->close(); }};
    for (const auto& leave : ways) {
        helpCalls().clear();
        with([&] {
            for (int i = 0; i < 6; ++i) {
                check(i)->click();
            }
            number(0)->setText("30");
            number(1)->setText("8");
            number(2)->setText("117.25");
            firm(0)->setText("Lipova 1");
            leave();
            EXPECT_FALSE(window->isVisible());
        });
        EXPECT_TRUE(window->Cancelled());
        EXPECT_TRUE(window->AlwaysCreateBackupDB && window->ShowFilterStatistics);
        EXPECT_TRUE(CeneDinarske && MakeProperCase && AskBeforeDelete && ShowTipsAtStartup);
        EXPECT_EQ(window->DueDateDiff, 5);
        EXPECT_EQ(window->DefaultGST, 20);
        EXPECT_EQ(KursKupovni, 80.0F);
        for (const char* key : {"CeneDinarske", "KursKupovni", "frmSettAdresa"}) {
            EXPECT_EQ(stored(key), "(none)") << key;
        }
        ASSERT_EQ(helpCalls().size(), 1);
        EXPECT_EQ(helpCalls().last().command, HELP_QUIT);
        window->Unload();
    }
}

TEST_F(Options, SettingsThatCannotBeWrittenAreToldAndStillHoldToday) {
    platform::setSettingsFolder("/proc/nowhere");
    with([&] {
        check(2)->click();
        type(2, "90");
        click(0);
        EXPECT_FALSE(window->isVisible());
    });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(),
              "An unexpected error has occured while saving application settings to the Registry database:\n"
              "[75] Path/File access error: /proc/nowhere/Tarvello.ini");
    EXPECT_EQ(boxes.asked.last().title, "Tarvello");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_FALSE(CeneDinarske);
    EXPECT_EQ(KursKupovni, 90.0F);
    EXPECT_FALSE(window->Cancelled());
}

// The other buttons -----------------------------------------------------------------------------------------

TEST_F(Options, HelpOpensTheWindowsTopic) {
    with([&] {
        click(2);
        ASSERT_EQ(helpCalls().size(), 1);
        EXPECT_EQ(helpCalls().last().command, HELP_CONTEXT);
        EXPECT_EQ(helpCalls().last().context, 7011);
        EXPECT_EQ(helpCalls().last().file, path("Tarvello.hlp"));
        QTest::keyClick(number(0), Qt::Key_F1);
        ASSERT_EQ(helpCalls().size(), 2);
        EXPECT_EQ(helpCalls().last().context, 7011);
        helpCalls().clear();
        click(0);
        ASSERT_EQ(helpCalls().size(), 1);
        EXPECT_EQ(helpCalls().last().command, HELP_QUIT);
    });
    helpCalls().clear();
    window->Unload();
    ASSERT_EQ(helpCalls().size(), 1);
    EXPECT_EQ(helpCalls().last().command, HELP_QUIT);
}

TEST_F(Options, HelpAsksForTheFileWhereItIsMissing) {
    QFile::remove(path("Tarvello.hlp"));
    boxes.answers << BoxAnswer::No;
    with([&] {
        click(2);
        EXPECT_EQ(boxes.lastText(), "Help file is missing. Would you like to try to find it?");
        EXPECT_TRUE(helpCalls().isEmpty());
    });
}

TEST_F(Options, TheBanksButtonOpensThePageOfItsTag) {
    QStringList opened;
    platform::setShellExecuteHook([&](const QString& target) {
        opened.append(target);
        return 42;
    });
    with([&] {
        click(3);
        ASSERT_EQ(opened.size(), 1);
        EXPECT_EQ(opened[0], button(3)->property("Tag").toString());
        EXPECT_TRUE(opened[0].startsWith("https://")) << opened[0].toStdString();
        EXPECT_TRUE(opened[0].contains("nbs.rs"));
        EXPECT_TRUE(window->isVisible());
    });
}

TEST_F(Options, APageThatCannotBeOpenedIsTold) {
    platform::setShellExecuteHook([](const QString&) { return 31; });
    with([&] {
        click(3);
        EXPECT_EQ(
            boxes.lastText(),
            "There is no application associated with the given file name extension. Launching associated "
            "application failed.");
        EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Critical);
    });
}

// As the main window opens the options, since it is there that the catalogue's window of units is put in.
TEST_F(Options, UnitsOpenOverTheWindowAndAreGoneAfterwards) {
    openDatabase();
    MainOptions options;
    inModal<frmOptions>([&] { EXPECT_FALSE(programWindows().editOptions(nullptr, options)); },
                        [&](frmOptions& shown) {
                            auto* command = shown.findChild<QPushButton*>(QStringLiteral("Command1(4)"));
                            inModal<frmJM>([&] { QTest::mouseClick(command, Qt::LeftButton); },
                                           [&](frmJM& units) {
                                               EXPECT_EQ(units.parentWidget(), &shown);
                                               EXPECT_EQ(units.windowTitle(), "Jedinica mere");
                                               units.reject();
                                           });
                            EXPECT_EQ(shown.findChild<frmJM*>(), nullptr);
                            EXPECT_TRUE(shown.isVisible());
                            shown.reject();
                        });
    EXPECT_NE(stored("WindowData", "frmJM"), "(none)");
}

}  // namespace
