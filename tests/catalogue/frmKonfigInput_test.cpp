#include "catalogue/frmKonfigInput.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

#include "platform/system/locale_scope.h"
#include "support/fixture.h"

namespace {

// The entry window of a product, as the catalogue shows it: the database is open.
class ProductInput : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        openDatabase();
        window_ = std::make_unique<frmKonfigInput>();
        window_->Proizvodjac = "Acme";
        window_->Grupa = "Diskovi";
    }
    void TearDown() override {
        window_.reset();
        DeliveredFixture::TearDown();
    }
    frmKonfigInput& win() { return *window_; }
    void unload() { window_.reset(); }

    // Whoever leaves the window open has made a mistake in the test.
    void show(const std::function<void()>& work) {
        QTimer::singleShot(0, &win(), [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&win()));
            work();
            if (win().isVisible()) {
                ADD_FAILURE() << "the window is still open: " << boxes.lastText().toStdString();
                win().reject();
            }
        });
        win().Display();
    }
    template <typename Control>
    Control* control(const QString& name) {
        auto* found = win().findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QLineEdit* field(int index) { return control<QLineEdit>(QStringLiteral("Text1(%1)").arg(index)); }
    QPlainTextEdit* note() { return control<QPlainTextEdit>("Text1(4)"); }
    QComboBox* units() { return control<QComboBox>("Combo1"); }
    QPushButton* button(int index) { return control<QPushButton>(QStringLiteral("Command1(%1)").arg(index)); }
    QString label(int index) { return control<QLabel>(QStringLiteral("Label1(%1)").arg(index))->text(); }
    bool isBold(int index) { return control<QLabel>(QStringLiteral("Label1(%1)").arg(index))->font().bold(); }
    QString hint() { return control<QLabel>("Label2")->text(); }
    void click(int index) { QTest::mouseClick(button(index), Qt::LeftButton); }
    void type(int index, const QString& keys) {
        field(index)->setFocus();
        field(index)->selectAll();
        if (keys.isEmpty()) {
            QTest::keyClick(field(index), Qt::Key_Delete);
        } else {
            QTest::keyClicks(field(index), keys);
        }
    }
    QString focusName() { return win().focusWidget() ? win().focusWidget()->objectName() : QString(); }

 private:
    std::unique_ptr<frmKonfigInput> window_;
};

TEST_F(ProductInput, BeginsWithAnEmptyPieceAtNoPrice) {
    EXPECT_EQ(win().windowTitle(), " Proizvodjac - Grupa");
    show([&] {
        EXPECT_EQ(field(0)->text(), "");
        EXPECT_EQ(field(1)->text(), "");
        EXPECT_EQ(field(2)->text(), "0");
        EXPECT_EQ(field(3)->text(), "0");
        EXPECT_EQ(note()->toPlainText(), "");
        EXPECT_EQ(units()->currentText(), "Kom.");
        EXPECT_EQ(units()->count(), 7);
        EXPECT_EQ(units()->itemText(1), "m");
        EXPECT_GT(units()->itemData(1).toInt(), 0);
        EXPECT_EQ(focusName(), "Text1(0)");
        click(2);
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(ProductInput, LabelsStandAsTheShopKnowsThem) {
    show([&] {
        EXPECT_EQ(label(0), "&Naziv:");
        EXPECT_EQ(label(1), "&Opis:");
        EXPECT_EQ(label(2), "&Cena [EUR]:");
        EXPECT_EQ(label(3), "&Stanje:");
        EXPECT_EQ(label(4), "N&apomena:");
        EXPECT_EQ(label(5), "&Jedinica mere:");
        EXPECT_EQ(button(0)->text(), "Nastavi &Unos");
        EXPECT_EQ(button(1)->text(), "&Zavrsi Unos");
        EXPECT_EQ(button(2)->text(), "Otkazi");
        click(2);
    });
}

TEST_F(ProductInput, NewProductOffersToGoOn) {
    show([&] {
        EXPECT_EQ(win().windowTitle(), "Acme/Diskovi - Novi Proizvod");
        EXPECT_TRUE(button(0)->isVisible());
        click(2);
    });
}

TEST_F(ProductInput, ExistingProductIsStoredOnly) {
    win().OpenMode = frmKonfigInput::ExistingProduct;
    show([&] {
        EXPECT_EQ(win().windowTitle(), "Acme/Diskovi - Postojeci Proizvod");
        EXPECT_FALSE(button(0)->isVisible());
        EXPECT_EQ(button(1)->text(), "Snimi");
        // The two that are left stand in the middle.
        const int before = button(1)->x();
        const int behind = win().width() - button(2)->geometry().right();
        EXPECT_NEAR(before, behind, 3);
        click(2);
    });
}

TEST_F(ProductInput, SearchBeginsWithoutAUnit) {
    win().OpenMode = frmKonfigInput::Search;
    win().JedinicaMere = "";
    show([&] {
        EXPECT_EQ(win().windowTitle(), "Pretraga Proizvoda");
        EXPECT_FALSE(button(0)->isVisible());
        EXPECT_EQ(button(1)->text(), "&Trazi");
        EXPECT_EQ(units()->count(), 8);
        EXPECT_EQ(units()->itemText(0), "");
        EXPECT_EQ(units()->itemData(0).toInt(), -1);
        EXPECT_EQ(units()->currentIndex(), 0);
        click(2);
    });
}

TEST_F(ProductInput, ShowsWhatItsCallerHas) {
    win().Naziv = "Disk";
    win().Opis = "7200 rpm";
    win().Cena = 12.5F;
    win().Stanje = 3;
    win().Napomena = "prvi\ndrugi";
    win().JedinicaMere = "pak";  // the beginning is enough, in any case
    show([&] {
        EXPECT_EQ(field(0)->text(), "Disk");
        EXPECT_EQ(field(1)->text(), "7200 rpm");
        EXPECT_EQ(field(2)->text(), "12.5");
        EXPECT_EQ(field(3)->text(), "3");
        EXPECT_EQ(note()->toPlainText(), "prvi\ndrugi");
        EXPECT_EQ(units()->currentText(), "Pak.");
        click(2);
    });
}

TEST_F(ProductInput, NumbersAreShownInTheUsersLocale) {
    const LocaleScope serbia("sr_Latn_RS");
    win().Naziv = "Disk";
    win().Cena = 1234.5F;
    show([&] {
        EXPECT_EQ(field(2)->text(), "1234,5");
        click(1);
    });
    EXPECT_EQ(win().Cena, 1234.5F);
}

TEST_F(ProductInput, UnknownUnitHoldsTheProductBack) {
    win().Naziv = "Disk";
    win().JedinicaMere = "Tona";
    show([&] {
        EXPECT_EQ(units()->currentIndex(), -1);
        EXPECT_FALSE(button(1)->isEnabled());
        QTest::keyClick(units(), Qt::Key_Down);
        EXPECT_TRUE(button(1)->isEnabled());
        EXPECT_TRUE(button(0)->isEnabled());
        click(2);
    });
}

TEST_F(ProductInput, NoUnitsNoProduct) {
    openDatabase().Execute("DELETE * FROM JM");
    win().Naziv = "Disk";
    show([&] {
        EXPECT_EQ(units()->count(), 0);
        EXPECT_FALSE(button(0)->isEnabled());
        EXPECT_FALSE(button(1)->isEnabled());
        click(2);
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

class FileOfProductInput : public ProductInput {};

TEST_F(FileOfProductInput, UnitsThatCannotBeReadAreTold) {
    closeDatabases();  // nobody in this process knows the password any more
    show([&] { click(2); });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith(
        "Neocekivana greska prilikom popunjavanja Combo box-a jedinicama mera.\n\n[3031] "))
        << boxes.lastText().toStdString();
    EXPECT_EQ(boxes.asked.last().title, GetResString(1));
}

TEST_F(ProductInput, NameStockAndUnitOpenTheButtons) {
    show([&] {
        EXPECT_FALSE(button(0)->isEnabled());
        EXPECT_FALSE(button(1)->isEnabled());
        type(0, "   ");
        EXPECT_FALSE(button(1)->isEnabled()) << "blanks are no name";
        type(0, "Disk");
        EXPECT_TRUE(button(0)->isEnabled());
        EXPECT_TRUE(button(1)->isEnabled());
        type(3, "");
        EXPECT_FALSE(button(1)->isEnabled()) << "an empty stock is no number";
        EXPECT_FALSE(button(0)->isEnabled());
        field(3)->setText("x");
        EXPECT_FALSE(button(1)->isEnabled());
        type(3, "2");
        EXPECT_TRUE(button(1)->isEnabled());
        click(2);
    });
}

TEST_F(ProductInput, HintCountsWhatIsLeft) {
    show([&] {
        EXPECT_EQ(hint(), "Max. 255 karaktera - jos je 255 preostalo. Obavezno upisite naziv proizvoda!");
        type(0, "Disk");
        EXPECT_EQ(hint(), "Max. 255 karaktera - jos je 251 preostalo. Naziv proizvoda.");
        field(1)->setFocus();
        EXPECT_EQ(hint(), "Max. 255 karaktera - jos je 255 preostalo. Detaljniji opis komponente.");
        field(2)->setFocus();
        EXPECT_EQ(hint(), "Cena komponente u EUR.");
        field(3)->setFocus();
        EXPECT_EQ(hint(), "Raspoloziva kolicina komponente u magacinu.");
        note()->setFocus();
        QTest::keyClicks(note(), "ab");
        EXPECT_EQ(hint(),
                  "Max. 255 karaktera - jos je 253 preostalo. Dodatne napomene vezane za komponentu.");
        button(2)->setFocus();
        field(0)->setFocus();
        button(2)->setFocus();
        EXPECT_EQ(hint(), "Max. 255 karaktera - jos je 251 preostalo. Naziv proizvoda.");
        button(1)->setFocus();
        EXPECT_EQ(hint(), "") << "leaving a button clears the line";
        click(2);
    });
}

TEST_F(ProductInput, NameOf255CharactersFits) {
    const QString longest(255, QLatin1Char('a'));
    show([&] {
        type(0, longest + "bc");
        EXPECT_EQ(field(0)->text(), longest);
        EXPECT_EQ(hint(), "Max. 255 karaktera - jos je 0 preostalo. Naziv proizvoda.");
        click(1);
    });
    EXPECT_EQ(win().Naziv, longest);
}

TEST_F(ProductInput, NoteKeepsWhatFits) {
    show([&] {
        note()->setFocus();
        QApplication::clipboard()->setText(QString(300, QLatin1Char('x')));
        note()->paste();
        EXPECT_EQ(note()->toPlainText(), QString(255, QLatin1Char('x')));
        QTest::keyClick(note(), Qt::Key_Z);
        EXPECT_EQ(note()->toPlainText(), QString(255, QLatin1Char('x'))) << "no room for another";

        note()->setPlainText(QString(250, QLatin1Char('a')) + "end");
        note()->moveCursor(QTextCursor::Start);
        QApplication::clipboard()->setText("12345");
        note()->paste();
        EXPECT_EQ(note()->toPlainText(), "12" + QString(250, QLatin1Char('a')) + "end")
            << "what stood there stays";
        EXPECT_EQ(hint(), "Max. 255 karaktera - jos je 0 preostalo. Dodatne napomene vezane za komponentu.");
        note()->undo();
        EXPECT_EQ(note()->toPlainText(), QString(250, QLatin1Char('a')) + "end");
        click(2);
    });
}

TEST_F(ProductInput, FocusedFieldHasABoldLabelAndAllItsTextSelected) {
    win().Naziv = "Disk";
    win().Opis = "brz";
    show([&] {
        EXPECT_TRUE(isBold(0));
        EXPECT_EQ(field(0)->selectedText(), "Disk");
        QTest::keyClick(field(0), Qt::Key_Tab);
        EXPECT_EQ(focusName(), "Text1(1)");
        EXPECT_FALSE(isBold(0));
        EXPECT_TRUE(isBold(1));
        EXPECT_EQ(field(1)->selectedText(), "brz");
        QTest::mouseClick(field(2), Qt::LeftButton);
        QCoreApplication::processEvents();
        EXPECT_EQ(field(2)->selectedText(), "0");
        click(2);
    });
}

TEST_F(ProductInput, NoteTellsHowToBeginALine) {
    show([&] {
        note()->setFocus();
        EXPECT_EQ(label(4), "N&apomena (Ctrl+Enter za novi red):");
        QTest::keyClicks(note(), "a");
        QTest::keyClick(note(), Qt::Key_Return, Qt::ControlModifier);
        QTest::keyClicks(note(), "b");
        EXPECT_EQ(note()->toPlainText(), "a\nb");
        field(0)->setFocus();
        EXPECT_EQ(label(4), "N&apomena:");
        click(2);
    });
}

TEST_F(ProductInput, EnterGoesOnToTheNextField) {
    win().Naziv = "Disk";
    show([&] {
        for (const char* const next :
             {"Text1(1)", "Text1(2)", "Text1(3)", "Combo1", "Text1(4)", "Command1(0)"}) {
            QTest::keyClick(win().focusWidget(), Qt::Key_Return);
            EXPECT_EQ(focusName(), next);
        }
        EXPECT_EQ(note()->toPlainText(), "");
        EXPECT_TRUE(win().isVisible());
        click(2);
    });
}

TEST_F(ProductInput, EnterPressesTheButtonWithTheFocus) {
    win().Naziv = "Disk";
    show([&] {
        button(1)->setFocus();
        QTest::keyClick(button(1), Qt::Key_Return);
        EXPECT_FALSE(win().isVisible());
    });
    EXPECT_FALSE(win().Cancelled);
    EXPECT_FALSE(win().ContinueInput);
    show([&] {
        button(2)->setFocus();
        QTest::keyClick(button(2), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_FALSE(win().isVisible());
    });
    EXPECT_TRUE(win().Cancelled);
}

TEST_F(ProductInput, ThePadsPointWritesTheSeparatorOfTheLocale) {
    show([&] {
        for (const Qt::Key key : {Qt::Key_Period, Qt::Key_Comma}) {
            type(2, "2");
            QTest::keyClick(field(2), key, Qt::KeypadModifier);
            QTest::keyClick(field(2), Qt::Key_5, Qt::KeypadModifier);
            EXPECT_EQ(field(2)->text(), "2.5");
        }
        click(2);
    });
}

TEST_F(ProductInput, UnderACommaThePadsPointWritesTheComma) {
    const LocaleScope serbia("sr_Latn_RS");
    show([&] {
        for (const int number : {2, 3}) {
            for (const Qt::Key key : {Qt::Key_Period, Qt::Key_Comma}) {
                type(number, "2");
                QTest::keyClick(field(number), key, Qt::KeypadModifier);
                QTest::keyClick(field(number), Qt::Key_5, Qt::KeypadModifier);
                EXPECT_EQ(field(number)->text(), "2,5");
            }
            type(number, "3");
            QTest::keyClick(field(number), Qt::Key_N);
            QTest::keyClicks(field(number), "N");
            QTest::keyClick(field(number), Qt::Key_Period);
            EXPECT_EQ(field(number)->text(), "3,,") << "a capital letter is none of it";
            type(number, "1");
        }
        click(2);
    });
}

TEST_F(ProductInput, NumberFieldsTakeDigitsAndTheSeparator) {
    show([&] {
        type(2, "1a2.5-n");
        EXPECT_EQ(field(2)->text(), "12.5");
        click(2);
    });
    unload();
}

TEST_F(ProductInput, UnderACommaPointAndTheLetterNWriteTheComma) {
    const LocaleScope serbia("sr_Latn_RS");
    show([&] {
        type(2, "1.5");
        EXPECT_EQ(field(2)->text(), "1,5");
        type(3, "7n5");
        EXPECT_EQ(field(3)->text(), "7,5");
        type(3, "7,x5");
        EXPECT_EQ(field(3)->text(), "7,5");
        type(0, "n");
        EXPECT_EQ(field(0)->text(), "n") << "in a text it is a letter";
        click(1);
    });
    EXPECT_EQ(win().Cena, 1.5F);
    EXPECT_EQ(win().Stanje, 7.5F);
}

TEST_F(ProductInput, EmptyNumbersBecomeZero) {
    show([&] {
        type(0, "Disk");
        type(2, "");
        QTest::keyClick(field(2), Qt::Key_Tab);
        EXPECT_EQ(field(2)->text(), "0");
        type(3, "");
        QTest::keyClick(field(3), Qt::Key_Tab);
        EXPECT_EQ(field(3)->text(), "0");
        EXPECT_TRUE(button(1)->isEnabled());
        click(1);
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(win().Stanje, 0.0F);
    EXPECT_EQ(win().Cena, 0.0F);
}

TEST_F(ProductInput, WhatIsNoNumberKeepsTheFocus) {
    struct Case {
        int field;
        const char* text;
    };
    show([&] {
        type(0, "Disk");
        for (const Case& one :
             {Case{2, "Cena proizvoda mora da bude ispravna numericka vrednost. Proverite unos."},
              Case{3, "Kolicina proizvoda mora da bude ispravna numericka vrednost. Proverite unos."}}) {
            field(one.field)->setFocus();
            field(one.field)->setText("1.2.3");
            boxes.asked.clear();
            QTest::keyClick(field(one.field), Qt::Key_Tab);
            ASSERT_EQ(boxes.asked.size(), 1);
            EXPECT_EQ(boxes.lastText(), one.text);
            EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
            EXPECT_EQ(focusName(), field(one.field)->objectName());
            EXPECT_EQ(field(one.field)->text(), "1.2.3");
            field(one.field)->setText("1.2");
        }
        click(2);
    });
}

TEST_F(ProductInput, ButtonDoesNotStoreAPriceThatIsNoNumber) {
    show([&] {
        type(0, "Disk");
        field(2)->setFocus();
        field(2)->setText("1.2.3");
        click(1);
        EXPECT_TRUE(win().isVisible());
        EXPECT_EQ(boxes.asked.size(), 1) << "told once";
        EXPECT_EQ(focusName(), "Text1(2)");
        QTest::keyClick(&win(), Qt::Key_Z, Qt::AltModifier);
        QTest::qWait(200);
        EXPECT_TRUE(win().isVisible()) << "nor by its letter";
        EXPECT_EQ(boxes.asked.size(), 2);
        type(2, "1.2");
        click(1);
    });
    EXPECT_EQ(win().Cena, 1.2F);
}

TEST_F(ProductInput, PriceTooLargeForTheTableIsRefused) {
    show([&] {
        type(0, "Disk");
        field(2)->setFocus();
        field(2)->setText("1e39");
        click(1);
        EXPECT_TRUE(win().isVisible());
        EXPECT_EQ(boxes.asked.size(), 1);
        win().reject();
    });
}

TEST_F(ProductInput, StoreAndGoOnGivesTrimmedValues) {
    show([&] {
        type(0, "  Disk ");
        type(1, " brz ");
        type(2, "10.25");
        type(3, "4");
        note()->setPlainText("  pazi\n");
        units()->setCurrentIndex(units()->findText("Set"));
        click(0);
    });
    EXPECT_FALSE(win().Cancelled);
    EXPECT_TRUE(win().ContinueInput);
    EXPECT_EQ(win().Naziv, "Disk");
    EXPECT_EQ(win().Opis, "brz");
    EXPECT_EQ(win().Cena, 10.25F);
    EXPECT_EQ(win().Stanje, 4.0F);
    EXPECT_EQ(win().Napomena, "pazi");
    EXPECT_EQ(win().JedinicaMere, "Set");
}

TEST_F(ProductInput, StoreEndsTheEntry) {
    show([&] {
        type(0, "Disk");
        click(1);
    });
    EXPECT_FALSE(win().Cancelled);
    EXPECT_FALSE(win().ContinueInput);
    EXPECT_EQ(win().Naziv, "Disk");
}

TEST_F(ProductInput, CancelEscapeAndTheCloseBoxCancel) {
    const std::function<void()> ways[] = {
        [&] { click(2); }, [&] { QTest::keyClick(field(0), Qt::Key_Escape); }, [&] { win().close(); }};
    for (const auto& way : ways) {
        win().Cancelled = false;
        win().ContinueInput = true;
        show([&] {
            type(0, "Disk");
            way();
        });
        EXPECT_TRUE(win().Cancelled);
        EXPECT_FALSE(win().ContinueInput);
        EXPECT_EQ(win().Naziv, "") << "nothing is taken over";
    }
}

TEST_F(ProductInput, ShownAgainItHoldsWhatWasTyped) {
    show([&] {
        type(0, "Disk");
        type(3, "5");
        note()->setPlainText("pazi");
        click(1);
    });
    win().Naziv = "something else";
    show([&] {
        EXPECT_EQ(field(0)->text(), "Disk");
        EXPECT_EQ(field(3)->text(), "5");
        EXPECT_EQ(note()->toPlainText(), "pazi");
        EXPECT_EQ(focusName(), "Text1(0)");
        EXPECT_EQ(units()->count(), 7);
        click(2);
    });
}

TEST_F(ProductInput, KeepsItsPlace) {
    settings::setText(settings::KonfigInputWindowData, "1500;3000");
    show([&] {
        EXPECT_EQ(win().pos(), QPoint(100, 200));
        win().move(40, 60);
        click(2);
    });
    win().Unload();
    EXPECT_EQ(settings::text(settings::KonfigInputWindowData), "600;900");
    win().move(0, 0);
    unload();
    EXPECT_EQ(settings::text(settings::KonfigInputWindowData), "600;900") << "once";
}

TEST_F(ProductInput, OpensTheFirstTimeAtItsUsualPlace) {
    show([&] {
        EXPECT_EQ(win().pos(), QPoint(800 / 15, 800 / 15));
        click(2);
    });
}

TEST_F(ProductInput, MinimisedItKeepsItsOldPlace) {
    settings::setText(settings::KonfigInputWindowData, "1500;3000");
    show([&] {
        win().setWindowState(Qt::WindowMinimized);
        win().Unload();
        win().reject();
    });
    EXPECT_EQ(settings::text(settings::KonfigInputWindowData), "1500;3000");
}

TEST_F(ProductInput, ItsCallerFindsWhatIsUsual) {
    EXPECT_EQ(win().ParentForm, nullptr);
    EXPECT_EQ(win().OpenMode, frmKonfigInput::NewProduct);
    EXPECT_EQ(frmKonfigInput::NewProduct, 0);
    EXPECT_EQ(frmKonfigInput::ExistingProduct, 1);
    EXPECT_EQ(frmKonfigInput::Search, 2);
    EXPECT_FALSE(win().Cancelled);
    EXPECT_TRUE(win().ContinueInput);
    EXPECT_EQ(win().JedinicaMere, "Kom.");
    EXPECT_EQ(win().Cena, 0.0F);
    EXPECT_EQ(win().Stanje, 0.0F);
}

TEST_F(ProductInput, NeverShownItStoresNothing) {
    settings::setText(settings::KonfigInputWindowData, "1500;3000");
    unload();
    EXPECT_EQ(settings::text(settings::KonfigInputWindowData), "1500;3000");
}

TEST_F(ProductInput, EveryControlHasAName) {
    for (const QWidget* widget :
         {static_cast<QWidget*>(field(0)), static_cast<QWidget*>(field(1)), static_cast<QWidget*>(field(2)),
          static_cast<QWidget*>(field(3)), static_cast<QWidget*>(note()), static_cast<QWidget*>(units()),
          static_cast<QWidget*>(button(0)), static_cast<QWidget*>(button(1)),
          static_cast<QWidget*>(button(2))}) {
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
    }
}

}  // namespace
