#include "documents/frmPrintInvoiceEx.h"

#include <QGroupBox>
#include <tuple>

#include "documents/document_number.h"
#include "documents/document_number_fields.h"
#include "documents/document_window.h"
#include "platform/system/dates.h"
#include "platform/system/locale_scope.h"
#include "support/second_process.h"

using document_number::Kind;

namespace {
struct FrmPrintInvoiceExTest : DocumentWindow {};

const QStringList kTags = {"",
                           "Nacin placanja:",
                           "100% avans.",
                           "Rok za uplatu:",
                           "Tri dana od datuma dokumenta.",
                           "Rok isporuke:",
                           "Odmah nakon uplate.",
                           "Isporuka:",
                           "FCO prostorije firme.",
                           "Napomena:",
                           "",
                           "Dokument je uradjen na racunaru i vazi bez pecata i potpisa. U slucaju spora, "
                           "nadlezan je privredni sud u Smederevu.",
                           ""};
}  // namespace

TEST_F(FrmPrintInvoiceExTest, TheFirstTimeEverythingHasItsDefault) {
    proForma([&] {
        EXPECT_EQ(window().windowTitle(), "Stampanje Predracuna");
        EXPECT_EQ(tabs()->currentIndex(), 0);
        EXPECT_EQ(combo(0)->currentText(), "/");
        EXPECT_EQ(combo(1)->currentText(), "YYYY = 2005");
        EXPECT_EQ(combo(2)->currentText(), "Dve decimale");
        EXPECT_FALSE(check(0)->isChecked());
        for (int i = 1; i <= 8; ++i) {
            EXPECT_TRUE(check(i)->isChecked()) << i;
            EXPECT_TRUE(check(i)->isEnabled()) << i;
        }
        for (int i = 0; i <= 12; ++i) {
            EXPECT_EQ(text2(i)->text(), kTags[i]) << i;
            EXPECT_EQ(text2(i)->property("Tag").toString(), kTags[i]) << i;
            EXPECT_EQ(text2(i)->isEnabled(), i != 12) << i;
        }
        EXPECT_EQ(control<platform::DateField>("DTPicker1")->value(), QDate::currentDate());
        EXPECT_EQ(command(2)->text(), "0");
        EXPECT_EQ(sample(), "0/" + year() + ", od");
        EXPECT_TRUE(boxes.asked.isEmpty());
    });
}

TEST_F(FrmPrintInvoiceExTest, TheListsHoldTheirItems) {
    proForma([&] {
        const auto items = [&](int i) {
            QStringList texts;
            for (int k = 0; k < combo(i)->count(); ++k) {
                texts += combo(i)->itemText(k);
            }
            return texts;
        };
        EXPECT_EQ(items(0), QStringList({"/", "-", "~", "*", "@", "#", " (razmak)"}));
        EXPECT_EQ(items(1), QStringList({"YYYY = 2005", "YY = 05", "MMYYYY = 052005", "MMYY = 0505"}));
        EXPECT_EQ(items(2), QStringList({"Ceo broj", "Jedna decimala", "Dve decimale"}));
    });
}

TEST_F(FrmPrintInvoiceExTest, CaptionsAndToolTips) {
    proForma([&] {
        EXPECT_EQ(tabs()->tabText(0), "Opst&e");
        EXPECT_EQ(tabs()->tabText(1), "Firma/&Kupac");
        EXPECT_EQ(tabs()->tabToolTip(0), "Opsta podesavanja");
        EXPECT_EQ(tabs()->tabToolTip(1), "Dodatna podesavanja");
        EXPECT_EQ(command(2)->toolTip(), "Poslednji odstampani broj dokumenta");
        EXPECT_EQ(command(0)->toolTip(), "Pregled dokumenta pre stampe");
        EXPECT_EQ(command(0)->text(), "&Stampaj...");
        EXPECT_EQ(command(1)->text(), "Za&tvori");
        EXPECT_EQ(check(0)->text(), "&Prikazi total slovima");
        EXPECT_EQ(check(8)->text(),
                  "&Footer tekst - koristi postojece podatke o firmi (adresa, telefoni i dr.)");
        const QStringList labels = {
            "&Maticni Broj:", "&Registarski Broj:", "S&ifra Delatnosti:", "&PIB:", "P&DV:",   "Racun Bro&j:",
            "Ime/&Naziv:",    "&Adresa:",           "&Grad i Post. Br.:", "PI&B:", "Osta&lo:"};
        for (int i = 0; i <= 10; ++i) {
            const auto* label = control<QLabel>(QString("Label1(%1)").arg(i));
            EXPECT_EQ(label->text(), labels[i]);
            EXPECT_EQ(label->buddy(), text1(i)) << i;
        }
        EXPECT_EQ(control<platform::LinkLabel>("Label2")->text(),
                  "Popuni sva polja na izabranom tab-u podrazumevanim vrednostima");
        for (QWidget* widget : window().findChildren<QWidget*>()) {
            if (widget->focusPolicy() != Qt::NoFocus && !widget->objectName().startsWith("qt_") &&
                !widget->objectName().isEmpty() && widget->objectName() != "DTPicker1") {
                EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
            }
        }
    });
}

TEST_F(FrmPrintInvoiceExTest, FramesAndLabelsOfBothTabs) {
    EXPECT_EQ(sample(), "(npr. ..., od)") << "until its number is known";
    proForma([&] {
        QStringList frames;
        for (const auto* frame : window().findChildren<QGroupBox*>()) {
            frames += frame->title();
        }
        frames.sort();
        EXPECT_EQ(frames.join('|'), "Fiskalni podaci firme:|Ostalo:|Podaci Kupca/Klijenta:|Uslovi:");
        const std::tuple<int, const char*, QWidget*> labels[] = {{0, "&Broj:", combo(0)},
                                                                 {2, "&Zaokruzivanje brojeva:", combo(2)},
                                                                 {3, "&Ostali troskovi (%):", text2(0)}};
        for (const auto& [i, text, buddy] : labels) {
            const auto* label = control<QLabel>(QString("Label3(%1)").arg(i));
            EXPECT_EQ(label->text(), text);
            EXPECT_EQ(label->buddy(), buddy) << text;
        }
        const auto shown = [&](int panel) {
            return control<QWidget>(QString("Picture1(%1)").arg(panel))->isVisible();
        };
        EXPECT_TRUE(shown(0) && !shown(1));
        turnTo(1);
        EXPECT_TRUE(!shown(0) && shown(1));
    });
}

TEST_F(FrmPrintInvoiceExTest, AnInvoiceTurnsTheFourConditionsOff) {
    invoice([&] {
        EXPECT_EQ(window().windowTitle(), "Stampanje Racuna");
        for (int i = 1; i <= 4; ++i) {
            EXPECT_FALSE(check(i)->isEnabled()) << i;
        }
        for (int i = 1; i <= 8; ++i) {
            EXPECT_FALSE(text2(i)->isEnabled()) << i;
        }
        for (int i = 5; i <= 8; ++i) {
            EXPECT_TRUE(check(i)->isEnabled()) << i;
        }
        EXPECT_TRUE(text2(9)->isEnabled());
        EXPECT_TRUE(text2(10)->isEnabled());
        EXPECT_TRUE(text2(11)->isEnabled());
        check(1)->setChecked(false);
        check(1)->setChecked(true);
        EXPECT_FALSE(text2(1)->isEnabled());
    });
}

TEST_F(FrmPrintInvoiceExTest, ACheckBoxTurnsItsFieldsOnAndOff) {
    proForma([&] {
        for (int i = 1; i <= 5; ++i) {
            check(i)->setChecked(false);
            EXPECT_FALSE(text2(2 * i - 1)->isEnabled()) << i;
            EXPECT_FALSE(text2(2 * i)->isEnabled()) << i;
            check(i)->setChecked(true);
            EXPECT_TRUE(text2(2 * i - 1)->isEnabled()) << i;
            EXPECT_TRUE(text2(2 * i)->isEnabled()) << i;
        }
        check(6)->setChecked(false);
        EXPECT_FALSE(text2(11)->isEnabled());
        check(6)->setChecked(true);
        EXPECT_TRUE(text2(11)->isEnabled());
    });
}

TEST_F(FrmPrintInvoiceExTest, TheFooterIsTypedOnlyWhereTheFirmsDataAreNotTaken) {
    proForma([&] {
        EXPECT_FALSE(text2(12)->isEnabled());
        check(8)->setChecked(false);
        EXPECT_TRUE(text2(12)->isEnabled());
        check(7)->setChecked(false);
        EXPECT_FALSE(text2(12)->isEnabled());
        EXPECT_FALSE(check(8)->isEnabled());
        check(7)->setChecked(true);
        EXPECT_TRUE(text2(12)->isEnabled());
        EXPECT_TRUE(check(8)->isEnabled());
        check(8)->setChecked(true);
        EXPECT_FALSE(text2(12)->isEnabled());
    });
}

TEST_F(FrmPrintInvoiceExTest, StoredCheckBoxesTurnTheirFieldsOffAtOnce) {
    for (const char* key : {"ChkNacinPlacanja", "ChkRokPlacanja", "ChkRokIsporuke", "ChkIsporuka",
                            "ChkNapomena", "ChkPecatPotpis", "ChkFooterFromSett"}) {
        settings::setInteger(own(key), 0);
    }
    proForma([&] {
        for (int i = 1; i <= 11; ++i) {
            EXPECT_FALSE(text2(i)->isEnabled()) << i;
        }
        EXPECT_TRUE(text2(12)->isEnabled());
    });
}

TEST_F(FrmPrintInvoiceExTest, TheClientsFieldsComeFromTheMainWindow) {
    proForma([&] {
        EXPECT_EQ(text1(6)->text(), "Peric Pera");
        EXPECT_EQ(text1(7)->text(), "Lipova 1");
        EXPECT_EQ(text1(8)->text(), "Beograd, 11000");
        EXPECT_EQ(text1(9)->text(), "");
        EXPECT_EQ(text1(10)->text(), "");
    });
}

TEST_F(FrmPrintInvoiceExTest, AFirmHasItsNameAndItsTaxNumber) {
    view.firm = true;
    settings::setText(own("frmSettKupacOstalo"), "Na ruke Mileni");
    proForma([&] {
        EXPECT_EQ(text1(6)->text(), "Racunar d.o.o.");
        EXPECT_EQ(text1(9)->text(), "100200300");
        EXPECT_EQ(text1(10)->text(), "Na ruke Mileni");
        EXPECT_EQ(text1(10)->property("Tag").toString(), "");
    });
}

TEST_F(FrmPrintInvoiceExTest, TheFirmsFieldsComeFromTheOptionsUntilTheyHaveTheirOwn) {
    settings::setScrambled(firm("frmSettMatBr"), "07123456");
    settings::setScrambled(firm("frmSettPIB"), "101234567");
    settings::setScrambled(own("frmSettPIB"), "999");
    settings::setScrambled(own("frmSettRnBr"), "");
    settings::setScrambled(firm("frmSettRnBr"), "160-1");
    proForma([&] {
        EXPECT_EQ(text1(0)->text(), "07123456");
        EXPECT_EQ(text1(0)->property("Tag").toString(), "07123456");
        EXPECT_EQ(text1(3)->text(), "999");
        EXPECT_EQ(text1(3)->property("Tag").toString(), "101234567");
        EXPECT_EQ(text1(5)->text(), "");
        EXPECT_EQ(labelColor(3), QColor(255, 0, 0));
        EXPECT_NE(labelColor(0), QColor(255, 0, 0));
        EXPECT_TRUE(warned());
    });
}

TEST_F(FrmPrintInvoiceExTest, ADifferenceFromTheDefaultIsRedAndWarns) {
    proForma([&] {
        EXPECT_FALSE(warned());
        EXPECT_TRUE(tabs()->tabIcon(1).isNull());
        const QColor normal = labelColor(6);
        for (int i = 0; i <= 9; ++i) {
            const QString before = text1(i)->text();
            text1(i)->setText("Drugo");
            EXPECT_EQ(labelColor(i), QColor(255, 0, 0)) << i;
            EXPECT_TRUE(warned()) << i;
            EXPECT_FALSE(tabs()->tabIcon(1).isNull());
            text1(i)->setText(before);
            EXPECT_EQ(labelColor(i), normal) << i;
            EXPECT_FALSE(warned()) << i;
        }
        text1(10)->setText("Drugo");
        EXPECT_EQ(labelColor(10), normal);
        EXPECT_FALSE(warned());
        text1(6)->setText("a");
        text1(7)->setText("b");
        text1(6)->setText("Peric Pera");
        EXPECT_TRUE(warned());
    });
}

TEST_F(FrmPrintInvoiceExTest, DefaultsOfTheSecondTab) {
    settings::setScrambled(firm("frmSettMatBr"), "07123456");
    proForma([&] {
        turnTo(1);
        text2(1)->setText("ostaje");
        for (int i = 0; i <= 10; ++i) {
            text1(i)->setText("Drugo");
        }
        defaults();
        EXPECT_EQ(text1(0)->text(), "07123456");
        EXPECT_EQ(text1(6)->text(), "Peric Pera");
        EXPECT_EQ(text1(10)->text(), "");
        EXPECT_FALSE(warned());
        EXPECT_EQ(text2(1)->text(), "ostaje");
    });
}

TEST_F(FrmPrintInvoiceExTest, DefaultsOfTheFirstTab) {
    proForma([&] {
        text1(0)->setText("ostaje");
        choose(0, 3);
        choose(1, 2);
        choose(2, 0);
        check(0)->setChecked(true);
        for (int i = 1; i <= 8; ++i) {
            check(i)->setChecked(false);
        }
        for (int i = 0; i <= 12; ++i) {
            text2(i)->setText("7");
        }
        defaults();
        EXPECT_EQ(combo(0)->currentIndex(), 0);
        EXPECT_EQ(combo(1)->currentIndex(), 0);
        EXPECT_EQ(combo(2)->currentIndex(), 2);
        EXPECT_FALSE(check(0)->isChecked());
        for (int i = 1; i <= 8; ++i) {
            EXPECT_TRUE(check(i)->isChecked()) << i;
        }
        for (int i = 0; i <= 12; ++i) {
            EXPECT_EQ(text2(i)->text(), kTags[i]) << i;
        }
        EXPECT_EQ(text1(0)->text(), "ostaje");
    });
}

TEST_F(FrmPrintInvoiceExTest, DefaultsLeaveTurnedOffCheckBoxesOfAnInvoice) {
    settings::setInteger(own("ChkRokPlacanja"), 0);
    invoice([&] {
        check(5)->setChecked(false);
        defaults();
        EXPECT_FALSE(check(2)->isChecked());
        EXPECT_TRUE(check(5)->isChecked());
    });
}

TEST_F(FrmPrintInvoiceExTest, OtherCostsTakeDigitsAndALastLook) {
    proForma([&] {
        const auto leaveWith = [&](const QString& text) {
            text2(0)->setFocus();
            text2(0)->setText(text);
            text2(1)->setFocus();
            return text2(0)->text();
        };
        text2(0)->setFocus();
        QTest::keyClicks(text2(0), "1a.,-5");
        EXPECT_EQ(text2(0)->text(), "15");
        EXPECT_EQ(leaveWith("99"), "99");
        EXPECT_EQ(leaveWith("100"), "0");
        EXPECT_EQ(leaveWith("-1"), "0");
        EXPECT_EQ(leaveWith("abc"), "0");
        EXPECT_EQ(leaveWith(""), "0");
        EXPECT_EQ(leaveWith("12.5"), "12.5");
    });
}

TEST_F(FrmPrintInvoiceExTest, TheNumberReadsAsItWillBePrinted) {
    const QDate today = QDate::currentDate();
    document_number::last(Kind::ProForma);
    document_number::change(Kind::ProForma, 17);
    proForma([&] {
        EXPECT_EQ(command(2)->text(), "17");
        EXPECT_EQ(sample(), "17/" + year() + ", od");
        choose(0, 6);
        EXPECT_EQ(sample(), "17 " + year() + ", od");
        choose(0, 1);
        choose(1, 1);
        EXPECT_EQ(sample(), "17-" + year().right(2) + ", od");
        choose(1, 2);
        EXPECT_EQ(sample(), "17-" + today.toString("MMyyyy") + ", od");
        choose(1, 3);
        EXPECT_EQ(sample(), "17-" + today.toString("MMyy") + ", od");
        // The suffix is today's, whatever date the document bears.
        control<platform::DateField>("DTPicker1")->setValue(QDate(2001, 1, 1));
        choose(1, 0);
        EXPECT_EQ(sample(), "17-" + year() + ", od");
    });
    EXPECT_EQ(DocumentNumberFields::NumberSuffixText(4), "");
    EXPECT_EQ(DocumentNumberFields::NumberSuffixText(-1), "");
}

TEST_F(FrmPrintInvoiceExTest, EachKindShowsItsOwnNumber) {
    document_number::last(Kind::Invoice);
    document_number::change(Kind::Invoice, 41);
    invoice([&] { EXPECT_EQ(command(2)->text(), "41"); });
    closeWindow();
    proForma([&] { EXPECT_EQ(command(2)->text(), "0"); });
}

TEST_F(FrmPrintInvoiceExTest, ANumberByHand) {
    boxes.inputs = {QString("99")};
    proForma([&] {
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "99");
        EXPECT_EQ(sample(), "99/" + year() + ", od");
    });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.asked[0].title, "Novi broj dokumenta");
    EXPECT_EQ(boxes.proposed, QStringList("0"));
    EXPECT_EQ(
        boxes.asked[0].text,
        "Mozete da unesete broj dokumenta koji zelite. Naravno, morate da budete jedini korisnik trenutno "
        "Online. Unesite broj koji je za jedan manji od onoga koji zelite da vam se pojavi na dokumentu:");
    EXPECT_EQ(document_number::last(Kind::ProForma), 99);
    EXPECT_EQ(document_number::last(Kind::Invoice), 0);
}

// The figure that stands for "the next one" is that to whoever types it, too.
TEST_F(FrmPrintInvoiceExTest, MinusOneByHandTakesTheNextNumber) {
    document_number::last(Kind::ProForma);
    document_number::change(Kind::ProForma, 41);
    boxes.inputs = {QString("-1")};
    proForma([&] {
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "42");
    });
    EXPECT_EQ(document_number::last(Kind::ProForma), 42);
}

TEST_F(FrmPrintInvoiceExTest, AFractionByHandGoesToTheNearestAndAHalfToTheEvenNumber) {
    boxes.inputs = {QString("2.5"), QString("2.6"), QString("1,000")};
    proForma([&] {
        for (const char* wanted : {"2", "3", "1000"}) {
            QTest::mouseClick(command(2), Qt::LeftButton);
            EXPECT_EQ(command(2)->text(), wanted);
        }
    });
}

TEST_F(FrmPrintInvoiceExTest, CancelledOrEmptyTheNumberStays) {
    boxes.inputs = {std::nullopt, QString("")};
    proForma([&] {
        QTest::mouseClick(command(2), Qt::LeftButton);
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "0");
    });
    EXPECT_EQ(boxes.asked.size(), 2);
}

TEST_F(FrmPrintInvoiceExTest, WhatIsNoNumberIsRefused) {
    boxes.inputs = {QString("sto")};
    proForma([&] {
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "0");
    });
    EXPECT_EQ(
        boxes.lastText(),
        "Broj dokumenta mora da bude korektna numericka vrednost, dakle ceo broj veci ili jednak nuli.");
    EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
}

TEST_F(FrmPrintInvoiceExTest, ANumberTooLargeIsToldAndNothingChanges) {
    boxes.inputs = {QString("99999999999")};
    proForma([&] {
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "0");
    });
    EXPECT_TRUE(boxes.lastText().startsWith("Error Number: 6\n")) << boxes.lastText().toStdString();
}

TEST_F(FrmPrintInvoiceExTest, AColleagueInTheFileRefusesTheNumberAndThePrintRepairsIt) {
    document_number::last(Kind::ProForma);
    const std::string file = databaseFile().toStdString();
    SecondProcess colleague([&](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file, false, false, connectText().toStdString());
        side.ready();
        side.untilReleased();
    });
    ASSERT_TRUE(colleague.waitReady());
    boxes.inputs = {QString("50")};
    proForma([&] {
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "-1");
        EXPECT_EQ(sample(), "-1/" + year() + ", od");
        EXPECT_EQ(boxes.lastText(),
                  "Promena broja nije moguca sve dok postoje korisnici logovani u bazu podataka. Pokusajte "
                  "ponovo kada vi budete jedini korisnik.");
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
        print();
        EXPECT_EQ(command(2)->text(), "1");
    });
    colleague.release();
    EXPECT_EQ(colleague.wait(), 0);
}

TEST_F(FrmPrintInvoiceExTest, WithoutTheTableOrItsRowTheNumberIsRefused) {
    boxes.inputs = {QString("50"), QString("50")};
    proForma([&] {
        openDatabase().Execute("DELETE * FROM DocNumber");
        closeDatabases();
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "-1");
        EXPECT_EQ(boxes.lastText(),
                  "Tabela sa brojevima predracuna i racuna je prazna. Nije moguce upisati novi broj.");
        openDatabase().TableDefs().Delete("DocNumber");
        closeDatabases();
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "-1");
        EXPECT_EQ(boxes.lastText(),
                  "Tabela sa brojevima predracuna i racuna ne postoji. Zapis novog broja nije moguc.");
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    });
}

TEST_F(FrmPrintInvoiceExTest, AnUnreadableDatabaseIsToldAndTheWindowOpens) {
    QFile::remove(databaseFile());
    proForma([&] { EXPECT_EQ(command(2)->text(), "0"); });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith("[3024] ")) << boxes.lastText().toStdString();
    EXPECT_TRUE(
        boxes.lastText().endsWith("\nOccured in procedure GetDocumentNumber of Form frmPrintInvoiceEx"));
}

TEST_F(FrmPrintInvoiceExTest, ASettingOutOfItsListIsToldWithAllThereIs) {
    settings::setInteger(own("NumberDelimiter"), 77);
    proForma([&] { EXPECT_EQ(combo(0)->currentIndex(), 0); });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(
        boxes.lastText(),
        "Error Number: 380\nError description: Invalid property value\nError source: Tarvello\nError help "
        "file: \nError help context: 0\nLastDllError: 0");
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Critical);
    EXPECT_EQ(boxes.asked[0].title, "Tarvello");
}

TEST_F(FrmPrintInvoiceExTest, ASettingJustPastItsListIsToldAndTheUsualChoiceStands) {
    const std::tuple<const char*, int, int, int> past[] = {
        {"NumberDelimiter", 0, 7, 0}, {"NumberSuffix", 1, 4, 0}, {"PriceRoundUp", 2, 3, 2}};
    for (const auto& [key, box, index, usual] : past) {
        for (const int wrong : {index, -1}) {
            boxes.asked.clear();
            settings::setInteger(own(key), wrong);
            closeWindow();
            proForma([&] { EXPECT_EQ(combo(box)->currentIndex(), usual) << key; });
            ASSERT_EQ(boxes.asked.size(), 1) << key << wrong;
            EXPECT_TRUE(boxes.lastText().startsWith("Error Number: 380\n"));
        }
        settings::setInteger(own(key), index - 1);
        closeWindow();
        proForma([&] { EXPECT_EQ(combo(box)->currentIndex(), index - 1) << key; });
        EXPECT_EQ(boxes.asked.size(), 1) << key;
    }
}

TEST_F(FrmPrintInvoiceExTest, ATabThatThereIsNotIsToldAndTheFirstOneStands) {
    for (const int wrong : {0, 3}) {
        boxes.asked.clear();
        closeWindow();  // keeps the tab that it stands on
        settings::setInteger(own("TabIndex"), wrong);
        proForma([&] { EXPECT_EQ(tabs()->currentIndex(), 0); });
        ASSERT_EQ(boxes.asked.size(), 1) << wrong;
        EXPECT_TRUE(boxes.lastText().startsWith("Error Number: 35600\n")) << boxes.lastText().toStdString();
    }
}

TEST_F(FrmPrintInvoiceExTest, LongTextsAreShownFromTheirBeginning) {
    proForma([&] {
        EXPECT_EQ(text2(11)->cursorPosition(), 0);
        EXPECT_EQ(text1(6)->cursorPosition(), 0);
        defaults();
        EXPECT_EQ(text2(11)->cursorPosition(), 0);
        EXPECT_FALSE(control<QLabel>("Image1")->pixmap().isNull());
        EXPECT_FALSE(command(0)->icon().isNull());
    });
}

TEST_F(FrmPrintInvoiceExTest, TheLargestNumberIsTheLastOfAll) {
    boxes.inputs = {QString("2147483647"), QString("2147483648")};
    proForma([&] {
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_EQ(command(2)->text(), "2147483647");
        QTest::mouseClick(command(2), Qt::LeftButton);
        EXPECT_TRUE(boxes.lastText().startsWith("Error Number: 6\n")) << boxes.lastText().toStdString();
        EXPECT_EQ(command(2)->text(), "2147483647");
        print();
        EXPECT_TRUE(boxes.lastText().startsWith("Error Number: 6\n")) << boxes.lastText().toStdString();
        EXPECT_EQ(command(2)->text(), "-1");
    });
    EXPECT_EQ(titles.last(), "Predracun -1/" + year());
    EXPECT_EQ(document_number::last(Kind::ProForma), 2147483647);
}

TEST_F(FrmPrintInvoiceExTest, TabAndPlaceAreKept) {
    settings::setText(own("WindowData"), "450;600");
    proForma([&] {
        EXPECT_EQ(window().pos(), QPoint(30, 40));
        turnTo(1);
        window().move(60, 80);
    });
    EXPECT_EQ(settings::text(own("TabIndex")), "1");
    window().Unload();
    EXPECT_EQ(settings::text(own("TabIndex")), "2");
    EXPECT_EQ(settings::text(own("WindowData")), "900;1200");
    settings::setText(own("WindowData"), "0;0");
    closeWindow();
    EXPECT_EQ(settings::text(own("WindowData")), "0;0") << "kept once";
    proForma([&] { EXPECT_EQ(tabs()->currentIndex(), 1); });
}

TEST_F(FrmPrintInvoiceExTest, TheFirstTimeItStandsAtItsUsualPlace) {
    EXPECT_EQ(settings::text(own("WindowData")), "1800;1800");
    proForma([&] { EXPECT_EQ(window().pos(), QPoint(120, 120)); });
}

TEST_F(FrmPrintInvoiceExTest, MinimisedItKeepsItsTabAndNotItsPlace) {
    settings::setText(own("WindowData"), "450;600");
    proForma([&] {
        turnTo(1);
        window().move(60, 80);
        window().setWindowState(Qt::WindowMinimized);
    });
    window().Unload();
    EXPECT_EQ(settings::text(own("WindowData")), "450;600");
    EXPECT_EQ(settings::text(own("TabIndex")), "2");
}

TEST_F(FrmPrintInvoiceExTest, ClosingTakesNoNumberBackAndTakesNone) {
    document_number::last(Kind::ProForma);
    document_number::change(Kind::ProForma, 7);
    proForma([&] { QTest::mouseClick(command(1), Qt::LeftButton); });
    closeWindow();
    EXPECT_EQ(document_number::last(Kind::ProForma), 7);
}

TEST_F(FrmPrintInvoiceExTest, TheCloseBoxAndTheButtonHide) {
    bool byButton = false;
    proForma([&] {
        QTest::mouseClick(command(1), Qt::LeftButton);
        byButton = !window().isVisible();
    });
    EXPECT_TRUE(byButton);
    bool byBox = false;
    proForma([&] {
        window().close();
        byBox = !window().isVisible();
    });
    EXPECT_TRUE(byBox);
}

TEST_F(FrmPrintInvoiceExTest, EnterGoesOnAndTakesNoNumber) {
    proForma([&] {
        text2(1)->setFocus();
        QTest::keyClick(text2(1), Qt::Key_Return);
        EXPECT_EQ(window().focusWidget(), text2(2));
        check(2)->setFocus();
        QTest::keyClick(check(2), Qt::Key_Enter);
        EXPECT_EQ(window().focusWidget(), text2(3));
        EXPECT_EQ(command(2)->text(), "0");
        EXPECT_TRUE(documents.empty());
        command(0)->setFocus();
        QTest::keyClick(command(0), Qt::Key_Return);
        EXPECT_EQ(documents.size(), 1U);
    });
}

TEST_F(FrmPrintInvoiceExTest, EnterOnAButtonPressesThatButton) {
    boxes.inputs = {QString(), QString()};
    proForma([&] {
        for (const auto& [key, modifiers] :
             {std::pair{Qt::Key_Return, Qt::NoModifier}, std::pair{Qt::Key_Enter, Qt::KeypadModifier}}) {
            command(2)->setFocus();
            QTest::keyClick(command(2), key, modifiers);
        }
        EXPECT_TRUE(boxes.inputs.isEmpty()) << "the new number was asked for twice";
        EXPECT_EQ(command(2)->text(), "0");
        text2(1)->setText("drugacije");
        control<platform::LinkLabel>("Label2")->setFocus();
        QTest::keyClick(control<platform::LinkLabel>("Label2"), Qt::Key_Return);
        EXPECT_EQ(text2(1)->text(), "Nacin placanja:");
        EXPECT_TRUE(window().isVisible());
        command(1)->setFocus();
        QTest::keyClick(command(1), Qt::Key_Return);
        EXPECT_FALSE(window().isVisible());
    });
    EXPECT_TRUE(documents.empty());
    EXPECT_EQ(document_number::last(Kind::ProForma), 0);
}
