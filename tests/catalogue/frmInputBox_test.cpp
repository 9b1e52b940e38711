#include "catalogue/frmInputBox.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "support/fixture.h"

namespace {

class InputBox : public DeliveredFixture {
 protected:
    // `work` happens in the window, which is closed afterwards.
    void show(const std::function<void()>& work) {
        QTimer::singleShot(0, &win, [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&win));
            work();
            if (win.isVisible()) {
                win.reject();
            }
        });
        win.Display();
    }
    template <typename Control>
    Control* control(const char* name) {
        auto* found = win.findChild<Control*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QLineEdit* quantity() { return control<QLineEdit>("Text1(0)"); }
    QLineEdit* serial() { return control<QLineEdit>("Text1(1)"); }
    QCheckBox* capitals() { return control<QCheckBox>("Check1(0)"); }
    QCheckBox* append() { return control<QCheckBox>("Check1(1)"); }
    QPushButton* confirm() { return control<QPushButton>("Command1(0)"); }
    static void click(QWidget* button) { QTest::mouseClick(button, Qt::LeftButton); }
    // Over what stands there: a field has its text selected as soon as it has the focus.
    static void type(QLineEdit* field, const QString& keys) {
        field->clearFocus();
        field->setFocus();
        QTest::keyClicks(field, keys);
    }
    static QString kept(const char* key) {
        return settings::text(settings::find("frmInputBox", QLatin1String(key)));
    }

    frmInputBox win;
};

TEST_F(InputBox, ShowsWhatItsCallerPassedIn) {
    win.WindowCaption = "Trebovanje: Disk";
    win.Kolicina = 2.5F;
    win.SeriskiBroj = "SN7";
    show([&] {
        EXPECT_EQ(win.windowTitle(), "Trebovanje: Disk");
        EXPECT_EQ(quantity()->text(), "2.5");
        EXPECT_EQ(serial()->text(), "SN7");
        EXPECT_TRUE(capitals()->isChecked());
        EXPECT_FALSE(append()->isChecked());
        EXPECT_TRUE(quantity()->hasFocus());
        EXPECT_EQ(quantity()->selectedText(), "2.5");
    });
}

TEST_F(InputBox, NamesTheProductInALineOfTheWindow) {
    const char* const name = "AMD Ryzen <b>7</b> 9700X & fan";
    win.ProductName = name;
    show([&] {
        EXPECT_EQ(win.windowTitle(), "Detalji Trebovanja");
        EXPECT_TRUE(control<QLabel>("Product")->isVisible());
        EXPECT_EQ(control<QLabel>("Product")->text(), name);
        EXPECT_EQ(control<QLabel>("Product")->textFormat(), Qt::PlainText);
        EXPECT_LT(control<QLabel>("Product")->geometry().bottom(), quantity()->geometry().top());
    });
}

TEST_F(InputBox, WithoutAProductThereIsNoLine) {
    show([&] { EXPECT_FALSE(control<QLabel>("Product")->isVisible()); });
}

// Asked again after "no, not that many", people go on typing.
TEST_F(InputBox, ShownOnceMoreTheQuantityIsThereToBeTypedOver) {
    show([&] {
        serial()->setFocus();
        click(confirm());
    });
    show([&] {
        EXPECT_TRUE(quantity()->hasFocus());
        EXPECT_EQ(quantity()->selectedText(), "1");
        EXPECT_TRUE(confirm()->isDefault());
    });
}

TEST_F(InputBox, IsTitledDetaljiTrebovanjaAndAsksForOneByItself) {
    EXPECT_FALSE(win.Cancelled());
    EXPECT_FALSE(win.AppendSerialNumber());
    show([&] {
        EXPECT_EQ(win.windowTitle(), "Detalji Trebovanja");
        EXPECT_EQ(quantity()->text(), "1");
        EXPECT_EQ(serial()->text(), "");
    });
}

TEST_F(InputBox, ConfirmGivesTheValuesBackAndKeepsTheOptions) {
    show([&] {
        type(quantity(), "3");
        type(serial(), "abc9");
        append()->setChecked(true);
        click(confirm());
        EXPECT_FALSE(win.isVisible());
    });
    EXPECT_FALSE(win.Cancelled());
    EXPECT_EQ(win.Kolicina, 3.0F);
    EXPECT_EQ(win.SeriskiBroj, "ABC9");
    EXPECT_TRUE(win.AppendSerialNumber());
    EXPECT_EQ(kept("MakeProperCase"), "1");
    EXPECT_EQ(kept("AppendSerialNumber"), "1");
}

TEST_F(InputBox, SmallLettersStayWhereCapitalsAreOff) {
    show([&] {
        type(serial(), "abc9");
        capitals()->setChecked(false);
        click(confirm());
    });
    EXPECT_EQ(win.SeriskiBroj, "abc9");
    EXPECT_FALSE(win.AppendSerialNumber());
    EXPECT_EQ(kept("MakeProperCase"), "0");
    EXPECT_TRUE(settings::boolean(settings::MakeProperCase)) << "the option of the same name is another one";
    frmInputBox next;
    QTimer::singleShot(0, &next, [&] {
        EXPECT_FALSE(next.findChild<QCheckBox*>("Check1(0)")->isChecked());
        next.reject();
    });
    next.Display();
}

TEST_F(InputBox, CancelLeavesEverythingAsItWas) {
    win.Kolicina = 4;
    win.SeriskiBroj = "SN";
    show([&] {
        type(quantity(), "9");
        type(serial(), "x");
        capitals()->setChecked(false);
        append()->setChecked(true);
        click(control<QPushButton>("Command1(1)"));
    });
    EXPECT_TRUE(win.Cancelled());
    EXPECT_EQ(win.Kolicina, 4.0F);
    EXPECT_EQ(win.SeriskiBroj, "SN");
    EXPECT_FALSE(win.AppendSerialNumber());
    EXPECT_EQ(kept("MakeProperCase"), "1");
    EXPECT_EQ(kept("AppendSerialNumber"), "0");
}

TEST_F(InputBox, TheCloseBoxAndEscapeCancel) {
    show([&] { win.close(); });
    EXPECT_TRUE(win.Cancelled());
    show([&] { click(confirm()); });
    EXPECT_FALSE(win.Cancelled());
    show([&] { QTest::keyClick(serial(), Qt::Key_Escape); });
    EXPECT_TRUE(win.Cancelled());
}

TEST_F(InputBox, ZeroPassesAndWhatIsNoQuantityDoesNot) {
    show([&] {
        for (const auto& [text, passes] : std::initializer_list<std::pair<const char*, bool>>{
                 {"0", true}, {"", false}, {".", false}, {"-1", false}, {"12.5", true}, {"abc", false}}) {
            quantity()->setText(QLatin1String(text));
            EXPECT_EQ(confirm()->isEnabled(), passes) << text;
        }
        type(quantity(), "0");
        click(confirm());
    });
    EXPECT_FALSE(win.Cancelled());
    EXPECT_EQ(win.Kolicina, 0.0F);
}

TEST_F(InputBox, UnderACommaThePointAndTheKeypadsPointWriteTheComma) {
    QLocale::setDefault(QLocale("de_DE"));
    win.Kolicina = 1.5F;
    show([&] {
        EXPECT_EQ(quantity()->text(), "1,5");
        type(quantity(), "2.5");
        EXPECT_EQ(quantity()->text(), "2,5");
        type(quantity(), "3");
        QTest::keyClick(quantity(), Qt::Key_Period, Qt::KeypadModifier);
        QTest::keyClicks(quantity(), "25");
        EXPECT_EQ(quantity()->text(), "3,25");
        click(confirm());
    });
    EXPECT_EQ(win.Kolicina, 3.25F);
}

TEST_F(InputBox, TheQuantityTakesOnlyDigitsAndTheSeparator) {
    show([&] {
        type(quantity(), "n1a-2 ,.5");
        EXPECT_EQ(quantity()->text(), "12.5");
        type(serial(), "n1a-2 ,.5");
        EXPECT_EQ(serial()->text(), "n1a-2 ,.5");
    });
}

// Pads differ: some send a point where the country writes a comma, some the other way round.
TEST_F(InputBox, TheKeypadsPointWritesWhatTheCountryWrites) {
    for (const auto& [country, mark] : {std::pair{"en_US", "."}, std::pair{"sr_Latn_RS", ","}}) {
        QLocale::setDefault(QLocale(country));
        show([&] {
            for (const Qt::Key key : {Qt::Key_Period, Qt::Key_Comma}) {
                type(quantity(), "3");
                QTest::keyClick(quantity(), key, Qt::KeypadModifier);
                QTest::keyClick(quantity(), Qt::Key_2, Qt::KeypadModifier);
                EXPECT_EQ(quantity()->text(), QString("3") + mark + "2") << country;
            }
        });
    }
}

TEST_F(InputBox, TheLetterNIsNoPartOfAQuantityInAnyCountry) {
    for (const char* country : {"en_US", "sr_Latn_RS"}) {
        QLocale::setDefault(QLocale(country));
        show([&] {
            type(quantity(), "1n2N");
            EXPECT_EQ(quantity()->text(), "12") << country;
            type(serial(), "nN");
            EXPECT_EQ(serial()->text(), "nN");
        });
    }
}

TEST_F(InputBox, ALoneSeparatorUnderACommaIsNoQuantity) {
    QLocale::setDefault(QLocale("de_DE"));
    show([&] {
        type(quantity(), ",");
        EXPECT_EQ(quantity()->text(), ",");
        EXPECT_FALSE(confirm()->isEnabled());
    });
}

TEST_F(InputBox, EnterWalksThroughTheFields) {
    win.SeriskiBroj = "SN7";
    show([&] {
        QTest::keyClick(quantity(), Qt::Key_Return);
        EXPECT_TRUE(serial()->hasFocus());
        EXPECT_EQ(serial()->selectedText(), "SN7");
        QTest::keyClick(serial(), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_TRUE(capitals()->hasFocus());
        QTest::keyClick(capitals(), Qt::Key_Return);
        EXPECT_TRUE(append()->hasFocus());
        QTest::keyClick(append(), Qt::Key_Return);
        EXPECT_TRUE(confirm()->hasFocus());
        EXPECT_TRUE(win.isVisible());
        QTest::keyClick(confirm(), Qt::Key_Return);
        EXPECT_FALSE(win.isVisible());
    });
    EXPECT_FALSE(win.Cancelled());
}

TEST_F(InputBox, EnterOnAButtonPressesThatButton) {
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_Return, Qt::NoModifier}, std::pair{Qt::Key_Enter, Qt::KeypadModifier}}) {
        show([&] {
            type(quantity(), "7");
            control<QPushButton>("Command1(1)")->setFocus();
            QTest::keyClick(control<QPushButton>("Command1(1)"), key, modifiers);
            EXPECT_FALSE(win.isVisible());
        });
        EXPECT_TRUE(win.Cancelled());
        EXPECT_EQ(win.Kolicina, 1.0F);
        show([&] {
            confirm()->setFocus();
            QTest::keyClick(confirm(), key, modifiers);
            EXPECT_FALSE(win.isVisible());
        });
        EXPECT_FALSE(win.Cancelled());
    }
}

TEST_F(InputBox, AClickIntoAFieldSelectsItsText) {
    win.SeriskiBroj = "SN7";
    show([&] {
        QTest::mouseClick(serial(), Qt::LeftButton);
        QCoreApplication::processEvents();
        EXPECT_EQ(serial()->selectedText(), "SN7");
    });
}

TEST_F(InputBox, ThePointerIsAHandOverButtonsAndOptionsOnly) {
    for (const char* name : {"Command1(0)", "Command1(1)", "Check1(0)", "Check1(1)"}) {
        EXPECT_EQ(control<QWidget>(name)->cursor().shape(), Qt::PointingHandCursor) << name;
    }
    EXPECT_EQ(quantity()->cursor().shape(), Qt::IBeamCursor);
    EXPECT_EQ(control<QWidget>("Label1(0)")->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(win.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(InputBox, ThePlaceIsKeptAtUnloadOnceOnly) {
    settings::setText(settings::find("frmInputBox", "WindowData"), "1500;3000");
    show([&] {
        EXPECT_EQ(win.pos(), QPoint(100, 200));
        win.move(40, 60);
    });
    EXPECT_EQ(kept("WindowData"), "1500;3000") << "hiding keeps nothing";
    win.Unload();
    EXPECT_EQ(kept("WindowData"), "600;900");
    settings::setText(settings::find("frmInputBox", "WindowData"), "0;0");
    win.Unload();
    EXPECT_EQ(kept("WindowData"), "0;0");
}

TEST_F(InputBox, TheFirstTimeItStandsAtItsUsualPlace) {
    EXPECT_EQ(kept("WindowData"), "500;500");
    show([&] { EXPECT_EQ(win.pos(), QPoint(33, 33)); });
}

TEST_F(InputBox, MinimisedItsPlaceIsNotKept) {
    settings::setText(settings::find("frmInputBox", "WindowData"), "1500;3000");
    show([&] {
        win.move(40, 60);
        win.setWindowState(Qt::WindowMinimized);
    });
    win.Unload();
    EXPECT_EQ(kept("WindowData"), "1500;3000");
}

TEST_F(InputBox, KeysThatEditPassAndAPastedWordCannotBeConfirmed) {
    show([&] {
        type(quantity(), "125");
        QTest::keyClick(quantity(), Qt::Key_Backspace);
        EXPECT_EQ(quantity()->text(), "12");
        QTest::keyClick(quantity(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(quantity(), Qt::Key_X, Qt::ControlModifier);
        EXPECT_EQ(quantity()->text(), "");
        QTest::keyClick(quantity(), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(quantity()->text(), "12");
        EXPECT_TRUE(confirm()->isEnabled());
        quantity()->setText("dvanaest");
        EXPECT_FALSE(confirm()->isEnabled());
    });
}

// The first product of all is asked for with capitals on, whatever the program's own option of that name
// says.
TEST_F(InputBox, CapitalsAreOnUntilThisWindowIsToldOtherwise) {
    settings::setText(settings::MakeProperCase, "0");
    MakeProperCase = false;
    show([&] {
        EXPECT_TRUE(capitals()->isChecked());
        type(serial(), "abc");
        click(confirm());
    });
    EXPECT_EQ(win.SeriskiBroj, "ABC");
}

TEST_F(InputBox, AnOptionOfLastTimeIsThereAgain) {
    settings::setText(settings::find("frmInputBox", "MakeProperCase"), "0");
    settings::setText(settings::find("frmInputBox", "AppendSerialNumber"), "1");
    show([&] {
        EXPECT_FALSE(capitals()->isChecked());
        EXPECT_TRUE(append()->isChecked());
    });
}

TEST_F(InputBox, MnemonicsLeadToTheirFields) {
    EXPECT_EQ(control<QLabel>("Label1(0)")->text(), "&Kolicina:");
    EXPECT_EQ(control<QLabel>("Label1(1)")->text(), "&Serijski Broj:");
    EXPECT_EQ(control<QLabel>("Label1(0)")->buddy(), quantity());
    EXPECT_EQ(control<QLabel>("Label1(1)")->buddy(), serial());
    EXPECT_EQ(capitals()->text(), "Koriguj &mala slova u velika");
    EXPECT_EQ(append()->text(), "&Upisan ser. br. dodaj na postojeci");
    EXPECT_EQ(control<QPushButton>("Command1(1)")->text(), "Otkazi");
}

}  // namespace
