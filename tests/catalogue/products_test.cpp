// Products in the catalogue window: added, changed, deleted.
#include <QComboBox>

#include "catalogue/catalogue_commands.h"

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

const QString kDuplicate = "Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom.";
const QString kAddError = "Neocekivana greska prilikom dodavanja proizvoda u bazu podataka:";
const QString kOpenError = "Doslo je do neocekivane greske prilikom otvaranja tabele Proizvoda:";
const QString kEditError = "Neocekivana greska prilikom editovanja proizvoda u bazi podataka:";
const QString kCarryError =
    "Neocekivana greska prilikom promene podataka proizvoda u bazi podataka u tabeli trebovanih stavki. "
    "Greska "
    "je data kao:";
const QString kSameName =
    "Naziv proizvoda vec postoji u bazi podataka. Nije preporucljivo da imate dva proizvoda istog imena, no "
    "ako "
    "tako zelite, onda je OK. Nastavljate li?";

class Products : public CatalogueCommands {};

// Adding ----------------------------------------------------------------------------------------------------

TEST_F(Products, AddingNeedsAGroupAndAManufacturer) {
    fillShop();
    withMonitors([&] {
        groups().setCurSel(-1);
        atInput({}, [&] { window().AddNewProduct(); });
        groups().setCurSel(0);
        manufacturers().setCurSel(-1);
        atInput({}, [&] { window().AddNewProduct(); });
    });
    EXPECT_EQ(countRows("Oprema"), 5);
}

TEST_F(Products, AddedProductBelongsToTheSelectedGroupAndManufacturer) {
    fillShop();
    withMonitors([&] {
        atInput({[&](frmKonfigInput& input) {
                    EXPECT_EQ(input.windowTitle(), "Adler/Monitori - Novi Proizvod");
                    EXPECT_EQ(field(input, 0), "");
                    EXPECT_EQ(field(input, 2), "0");
                    type(input, 0, "22 inca");
                    type(input, 1, "siroki");
                    type(input, 2, "199.99");
                    type(input, 3, "4");
                    input.findChild<QPlainTextEdit*>("Text1(4)")->setPlainText("pazi");
                    auto* units = input.findChild<QComboBox*>("Combo1");
                    units->setCurrentIndex(units->findText("Set"));
                    press(input, 1);
                }},
                [&] { window().AddNewProduct(); });
        EXPECT_EQ(productNames(), "17 inca,19 inca,22 inca");
        ASSERT_NE(products().selectedItem(), nullptr);
        EXPECT_EQ(cellOf(*products().selectedItem(), ProductColumn::Name), "22 inca");
        EXPECT_EQ(window().focusWidget(), &products());
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    dao::Recordset rows = openDatabase().OpenRecordset("SELECT * FROM Oprema WHERE Naziv='22 inca'");
    ASSERT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(rows["Opis"].asText(), "siroki");
    EXPECT_EQ(rows["Cena"].asSingle(), 199.99F);
    EXPECT_EQ(rows["Stanje"].asSingle(), 4.0F);
    EXPECT_EQ(rows["Napomena"].asText(), "pazi");
    EXPECT_EQ(rows["JM"].asText(), "Set");
    EXPECT_EQ(rows["IDGrupe"].asLong(), monitors);
    EXPECT_EQ(rows["IDProizvodjaca"].asLong(), adler);
    rows.Close();
}

TEST_F(Products, PriceIsTypedInEuroAlsoWhereTheListShowsDinars) {
    fillShop();
    CeneDinarske = true;
    KursKupovni = 117.5F;
    withMonitors([&] {
        atInput({[&](frmKonfigInput& input) {
                    type(input, 0, "22 inca");
                    type(input, 2, "10");
                    press(input, 1);
                }},
                [&] { window().AddNewProduct(); });
        EXPECT_EQ(cellOf(*products().selectedItem(), ProductColumn::Price), "1,175.00");
    });
}

TEST_F(Products, CancellingTheFirstWindowEndsTheLoop) {
    fillShop();
    withMonitors([&] {
        atInput({pressing(2)}, [&] { window().AddNewProduct(); });
        EXPECT_EQ(window().focusWidget(), &products());
    });
    EXPECT_EQ(countRows("Oprema"), 5);
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Products, GoingOnBringsANewWindowEachTime) {
    fillShop();
    withMonitors([&] {
        atInput({named("Prvi", 0),
                 [&](frmKonfigInput& input) {
                     EXPECT_EQ(field(input, 0), "") << "a new one";
                     named("Drugi", 0)(input);
                 },
                 pressing(2)},
                [&] { window().AddNewProduct(); });
        EXPECT_EQ(cellOf(*products().selectedItem(), ProductColumn::Name), "Drugi")
            << "the last one that was stored";
    });
    EXPECT_EQ(countRows("Oprema"), 7);
}

TEST_F(Products, DuplicateNameOfAnyGroupShowsTheSameWindowAgain) {
    fillShop();
    withMonitors([&] {
        frmKonfigInput* first = nullptr;
        atInput({[&](frmKonfigInput& input) {
                     first = &input;
                     type(input, 3, "9");
                     named("SPORI", 1)(input);
                 },
                 [&](frmKonfigInput& input) {
                     expectBox(kDuplicate);
                     EXPECT_EQ(&input, first);
                     EXPECT_EQ(field(input, 0), "SPORI");
                     EXPECT_EQ(field(input, 3), "9");
                     named("Novi", 1)(input);
                 }},
                [&] { window().AddNewProduct(); });
    });
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE Naziv='Spori'"), 1);
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE Naziv='Novi' AND Stanje=9"), 1);
}

TEST_F(Products, CancellingAfterADuplicateAddsNothing) {
    fillShop();
    withMonitors([&] { atInput({named("Spori", 0), pressing(2)}, [&] { window().AddNewProduct(); }); });
    EXPECT_EQ(countRows("Oprema"), 5);
}

// A double quote breaks the search for the name, and what cannot be searched for has not been found.
TEST_F(Products, NameWithADoubleQuoteIsAdded) {
    fillShop();
    withMonitors([&] {
        atInput({named("Monitor 24\"", 0), named("19 beli", 1)}, [&] { window().AddNewProduct(); });
        EXPECT_EQ(productNames(), "17 inca,19 inca,Monitor 24\",19 beli");
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(Products, DoubleQuoteAfterAFreeNameOrATakenOneIsAddedToo) {
    fillShop();
    withMonitors([&] {
        atInput(
            {named("Prvi", 0), named("19\" crni", 0), named("Spori", 0), named("24\"", 0), named("Treci", 1)},
            [&] { window().AddNewProduct(); });
        ASSERT_EQ(boxes.asked.size(), 1) << boxes.lastText().toStdString();
        expectBox(kDuplicate);
        EXPECT_EQ(productNames(), "17 inca,19 inca,Prvi,19\" crni,24\",Treci");
    });
}

TEST_F(Products, SingleQuoteInANewNameIsNoTrouble) {
    fillShop();
    withMonitors([&] { atInput({named("O'Disk", 1)}, [&] { window().AddNewProduct(); }); });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE Naziv=\"O'Disk\""), 1);
}

TEST_F(Products, NameOf255CharactersIsStoredWhole) {
    fillShop();
    const QString longest(255, QLatin1Char('d'));
    withMonitors([&] {
        atInput({named(longest, 1)}, [&] { window().AddNewProduct(); });
        EXPECT_EQ(cellOf(*products().selectedItem(), ProductColumn::Name), longest);
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Products, StockLeftEmptyStoresZero) {
    fillShop();
    withMonitors([&] {
        atInput({[&](frmKonfigInput& input) {
                    type(input, 0, "Prazan");
                    line(input, 3)->setFocus();
                    QTest::keyClick(line(input, 3), Qt::Key_Delete);
                    EXPECT_EQ(field(input, 3), "");
                    QTest::keyClick(line(input, 3), Qt::Key_Tab);
                    press(input, 1);
                }},
                [&] { window().AddNewProduct(); });
        EXPECT_EQ(cellOf(*products().selectedItem(), ProductColumn::Stock), "0");
    });
}

TEST_F(Products, TableThatCannotBeOpenedIsTold) {
    fillShop();
    withMonitors([&] {
        clickProduct(1);
        window().Data1[frmKonfiguratorEx::kProducts]->Close();
        atInput({}, [&] { window().AddNewProduct(); });
        ASSERT_EQ(boxes.asked.size(), 1);
        expectError(boxes.asked[0], kOpenError, 3420, " ; Code line: ");
        atInput({}, [&] { window().EditProduct(); });
        ASSERT_EQ(boxes.asked.size(), 2);
        expectError(boxes.asked[1], kOpenError, 3420, " ; Code line: ");
    });
}

TEST_F(Products, ProductOfAGroupThatIsGoneDoesNotVanishInSilence) {
    const auto other = colleague("DELETE * FROM Grupe WHERE Grupa='Monitori'");
    fillShop();
    withMonitors([&] {
        atInput({[&](frmKonfigInput& input) {
                    act(*other);
                    named("22 inca", 1)(input);
                }},
                [&] { window().AddNewProduct(); });
        ASSERT_EQ(boxes.asked.size(), 1);
        expectError(boxes.asked[0], kAddError, 3201, " ; Code line: ");
    });
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE Naziv='22 inca'"), 0);
}

// Changing --------------------------------------------------------------------------------------------------

TEST_F(Products, ChangingNeedsASelectedProduct) {
    fillShop();
    withMonitors([&] {
        manufacturers().setCurSel(-1);
        clickProduct(1);
        atInput({}, [&] { window().EditProduct(); });
    });
    show([&] {
        clickRow(groups(), "Prazna");
        atInput({}, [&] { window().EditProduct(); });
    });
}

TEST_F(Products, EntryWindowShowsTheListsRow) {
    fillShop();
    addProduct(monitors, adler, "24 inca", 1234.5F, 2.5F, "a|b");
    withMonitors([&] {
        clickProduct(3);
        atInput({[&](frmKonfigInput& input) {
                    EXPECT_EQ(input.ParentForm, &window());
                    EXPECT_EQ(input.windowTitle(), "Adler/Monitori - Postojeci Proizvod");
                    EXPECT_EQ(field(input, 0), "24 inca");
                    EXPECT_EQ(field(input, 1), "opis 24 inca");
                    EXPECT_EQ(field(input, 2), "1234.5");
                    EXPECT_EQ(field(input, 3), "2.5");
                    EXPECT_EQ(field(input, 4), "a|b");
                    EXPECT_EQ(input.findChild<QComboBox*>("Combo1")->currentText(), "Kom.");
                    press(input, 2);
                }},
                [&] { window().EditProduct(); });
    });
}

struct Prices {
    const char* locale;
    bool dinars;
    const char* list;    // price as the list shows it
    const char* window;  // as the entry window does
};

TEST_F(Products, UnitOfAProductStaysItsOwnOnAChange) {
    fillShop();
    openDatabase().Execute("UPDATE Oprema SET JM='Set' WHERE Naziv='17 inca'");
    withMonitors([&] {
        clickProduct(1);
        atInput({[&](frmKonfigInput& input) {
                    EXPECT_EQ(input.findChild<QComboBox*>("Combo1")->currentText(), "Set");
                    press(input, 1);
                }},
                [&] { window().EditProduct(); });
    });
    EXPECT_EQ(valueOf("Oprema", "ID", m17, "JM").asText(), "Set");
}

TEST_F(Products, EuroPriceGoesThroughTwoDecimals) {
    for (const Prices& one :
         {Prices{"en_US", true, "11,789.13", "100.33"}, Prices{"en_US", false, "100.33", "100.33"},
          Prices{"sr_Latn_RS", true, "11.789,13", "100,33"},
          Prices{"sr_Latn_RS", false, "100,33", "100,33"}}) {
        SCOPED_TRACE(std::string(one.locale) + (one.dinars ? " dinars" : " euro"));
        QLocale::setDefault(QLocale(one.locale));
        fillShop();
        const int product = addProduct(monitors, adler, "24 inca", 100.333F, 1.0F);
        CeneDinarske = one.dinars;
        KursKupovni = 117.5F;
        withMonitors([&] {
            clickProduct(3);
            ASSERT_NE(products().selectedItem(), nullptr);
            EXPECT_EQ(cellOf(*products().selectedItem(), ProductColumn::Price), one.list);
            atInput({[&](frmKonfigInput& input) {
                        EXPECT_EQ(field(input, 2), one.window);
                        press(input, 1);
                    }},
                    [&] { window().EditProduct(); });
        });
        EXPECT_EQ(valueOf("Oprema", "ID", product, "Cena").asSingle(), 100.33F);
        unload();
    }
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Products, ChangedProductIsStoredAndSelected) {
    fillShop();
    withMonitors([&] {
        clickProduct(2);
        atInput({[&](frmKonfigInput& input) {
                    type(input, 0, "20 inca");
                    type(input, 1, "nov opis");
                    type(input, 2, "210");
                    type(input, 3, "7");
                    input.findChild<QPlainTextEdit*>("Text1(4)")->setPlainText("pazi");
                    auto* units = input.findChild<QComboBox*>("Combo1");
                    units->setCurrentIndex(units->findText("Set"));
                    press(input, 1);
                }},
                [&] { window().EditProduct(); });
        EXPECT_EQ(productNames(), "17 inca,20 inca");
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m19));
        EXPECT_EQ(detail(), "pazi");
        EXPECT_EQ(window().focusWidget(), &products());
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << "no requisition holds it";
    EXPECT_EQ(parent().updates, 1);
    EXPECT_EQ(parent().lastUpdateKey, "");
    EXPECT_EQ(nameOf(m19), "20 inca");
    EXPECT_EQ(valueOf("Oprema", "ID", m19, "Opis").asText(), "nov opis");
    EXPECT_EQ(valueOf("Oprema", "ID", m19, "Cena").asSingle(), 210.0F);
    EXPECT_EQ(stockOf(m19), 7.0F);
    EXPECT_EQ(valueOf("Oprema", "ID", m19, "Napomena").asText(), "pazi");
    EXPECT_EQ(valueOf("Oprema", "ID", m19, "JM").asText(), "Set");
    EXPECT_EQ(valueOf("Oprema", "ID", m19, "IDGrupe").asLong(), monitors);
}

TEST_F(Products, CancelledChangeLeavesListAndTableAlone) {
    fillShop();
    withMonitors([&] {
        clickProduct(1);
        openDatabase().Execute("UPDATE Oprema SET Opis='drugi' WHERE Naziv='17 inca'");
        atInput({[&](frmKonfigInput& input) {
                    type(input, 0, "18 inca");
                    press(input, 2);
                }},
                [&] { window().EditProduct(); });
        EXPECT_EQ(cellOf(products().item(1), ProductColumn::Description), "opis 17 inca")
            << "not even read again";
        EXPECT_EQ(window().focusWidget(), &products());
    });
    EXPECT_EQ(nameOf(m17), "17 inca");
    EXPECT_EQ(parent().updates, 0);
}

TEST_F(Products, NameAndDescriptionAreCarriedIntoRequisitions) {
    fillShop();
    draw(m17, "17 inca", "opis 17 inca");
    draw(slow, "17 inca", "opis 17 inca");  // found by its texts, not by its number
    draw(m17, "17 inca", "drugi opis");
    withMonitors([&] {
        clickProduct(1);
        atInput({[&](frmKonfigInput& input) {
                    type(input, 1, "tanki");
                    type(input, 2, "500");
                    named("18 inca", 1)(input);
                }},
                [&] { window().EditProduct(); });
    });
    ASSERT_EQ(boxes.asked.size(), 1);
    expectBox("Tabela trebovanja je azurirana. Broj promenjenih stavki je: 2.", BoxIcon::Information);
    EXPECT_EQ(drawn("Naziv='18 inca' AND Opis='tanki' AND Cena=90 AND JM='Kom.'"), 2);
    EXPECT_EQ(drawn("Naziv='17 inca' AND Opis='drugi opis'"), 1);
    EXPECT_EQ(parent().updates, 1);
}

TEST_F(Products, DuplicateNameIsAskedAboutOnAChange) {
    fillShop();
    withMonitors([&] {
        clickProduct(1);
        atInput({named("Spori", 1)}, [&] { window().EditProduct(); });
        expectBox(kSameName);
        EXPECT_EQ(boxes.asked.last().buttons, BoxButtons::YesNo);
        EXPECT_EQ(boxes.asked.last().preselected, BoxAnswer::No);
        EXPECT_EQ(nameOf(m17), "17 inca");
        EXPECT_EQ(parent().updates, 0);

        openDatabase().Execute("UPDATE Oprema SET Opis='drugi' WHERE Naziv='17 inca'");
        atInput({named("Spori", 1)}, [&] { window().EditProduct(); });
        EXPECT_EQ(cellOf(products().item(1), ProductColumn::Description), "drugi")
            << "after a No the list is read again";

        boxes.answers = {BoxAnswer::Yes};
        atInput({named("Spori", 1)}, [&] { window().EditProduct(); });
        EXPECT_EQ(nameOf(m17), "Spori");
    });
    EXPECT_EQ(countRows("SELECT * FROM Oprema WHERE Naziv='Spori'"), 2);
    EXPECT_EQ(boxes.asked.size(), 3);
}

TEST_F(Products, OwnNameIsNotAskedAbout) {
    fillShop();
    withMonitors([&] {
        clickProduct(1);
        atInput({pressing(1)}, [&] { window().EditProduct(); });
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Products, ProductDeletedByAnotherIsNotChanged) {
    const auto other = colleague("DELETE * FROM Oprema WHERE Naziv='17 inca'");
    fillShop();
    draw(m17, "17 inca", "opis 17 inca");
    withMonitors([&] {
        clickProduct(1);
        atInput({[&](frmKonfigInput& input) {
                    act(*other);
                    named("18 inca", 1)(input);
                }},
                [&] { window().EditProduct(); });
        expectBox(
            "Proizvod cije podatke pokusavate da promenite nije pronadjen u bazi podataka. Moguce je da ga "
            "je "
            "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.");
        EXPECT_EQ(productNames(), "19 inca");
    });
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(drawn("Naziv='17 inca'"), 1);
}

// The search for the name breaks and has found nothing. The product is written, its requisitions are not, and
// the failure shows once more at the end.
TEST_F(Products, QuoteInTheNameKeepsTheProductAndRollsTheRequisitionsBack) {
    fillShop();
    draw(slow, "Spori", "opis Spori");
    show([&] {
        clickRow(groups(), "Procesori");
        clickRow(manufacturers(), "Celta");
        clickProduct(1);
        atInput({named("Spori '05", 1)}, [&] { window().EditProduct(); });
        ASSERT_EQ(boxes.asked.size(), 2);
        expectError(boxes.asked[0], kCarryError, 3075, " ; Code line no.: ");
        EXPECT_TRUE(boxes.asked[0].text.endsWith(occured("EditProduct")));
        expectError(boxes.asked[1], kEditError, 3075, " ; Code line no.: ");
        EXPECT_TRUE(boxes.asked[1].text.endsWith(occured("EditProduct")));
        EXPECT_EQ(productNames(), "Spori '05");
    });
    EXPECT_EQ(nameOf(slow), "Spori '05");
    EXPECT_EQ(drawn("Naziv='Spori'"), 1);
    EXPECT_EQ(parent().updates, 0);
}

TEST_F(Products, QuoteInTheOldNameKeepsTheRequisitionsToo) {
    fillShop();
    addProduct(monitors, adler, "O'Monitor", 1.0F, 1.0F);
    draw(m17, "O'Monitor", "opis O'Monitor");
    withMonitors([&] {
        clickProduct(3);
        atInput({named("Monitor", 1)}, [&] { window().EditProduct(); });
        ASSERT_EQ(boxes.asked.size(), 2);
        expectError(boxes.asked[0], kCarryError, 3075, occured("EditProduct"));
        expectError(boxes.asked[1], kEditError, 3075, occured("EditProduct"));
        EXPECT_EQ(productNames(), "17 inca,19 inca,Monitor");
    });
    EXPECT_EQ(drawn("Naziv=\"O'Monitor\""), 1);
}

TEST_F(Products, LockedFileKeepsTheOldProduct) {
    const auto other = slowColleague();
    fillShop();
    draw(m17, "17 inca", "opis 17 inca");
    withMonitors([&] {
        clickProduct(1);
        dao::DBEngine::setLockTimeout(100);
        atInput({[&](frmKonfigInput& input) {
                    act(*other);
                    named("18 inca", 1)(input);
                }},
                [&] { window().EditProduct(); });
        ASSERT_EQ(boxes.asked.size(), 2);
        expectError(boxes.asked[0], kCarryError, 3260, occured("EditProduct"));
        expectError(boxes.asked[1], kEditError, 3260, occured("EditProduct"));
        other->release();
        EXPECT_EQ(other->wait(), 0);
        boxes.asked.clear();
        atInput({named("18 inca", 1)}, [&] { window().EditProduct(); });
        expectBox("Tabela trebovanja je azurirana. Broj promenjenih stavki je: 1.", BoxIcon::Information);
        EXPECT_EQ(productNames(), "18 inca,19 inca") << "nothing of the failed one stands in the way";
    });
    EXPECT_EQ(nameOf(m17), "18 inca");
}

TEST_F(Products, StockOfAnotherWorkstationIsOverwritten) {
    const auto other = colleague("UPDATE Oprema SET Stanje=99 WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        clickProduct(1);
        atInput({[&](frmKonfigInput& input) {
                    act(*other);
                    press(input, 1);
                }},
                [&] { window().EditProduct(); });
    });
    EXPECT_EQ(stockOf(m17), 5.0F);
}

TEST_F(Products, RateOfZeroIsTold) {
    fillShop();
    CeneDinarske = true;
    KursKupovni = 0;
    withMonitors([&] {
        clickProduct(1);
        atInput({pressing(2)}, [&] { window().EditProduct(); });
        ASSERT_EQ(boxes.asked.size(), 1);
        expectError(boxes.asked[0], kEditError, 11, occured("EditProduct"));
    });
    EXPECT_EQ(valueOf("Oprema", "ID", m17, "Cena").asSingle(), 100.0F);
}

// Deleting --------------------------------------------------------------------------------------------------

TEST_F(Products, DeletingAsksFirst) {
    fillShop();
    draw(m17, "17 inca", "opis 17 inca");
    withMonitors([&] {
        clickProduct(1);
        boxes.answers = {BoxAnswer::No};
        window().DeleteProduct();
        expectBox("Upravo se spremate da izbrisete proizvod iz baze podataka.\nNastavljate li?");
        EXPECT_EQ(boxes.asked.last().buttons, BoxButtons::YesNo);
        EXPECT_EQ(nameOf(m17), "17 inca");
        boxes.answers = {BoxAnswer::Yes};
        window().DeleteProduct();
        EXPECT_EQ(productNames(), "19 inca");
        EXPECT_EQ(products().selectedIndex(), 1);
        EXPECT_EQ(detail(), "opis 19 inca");
        EXPECT_EQ(statusText(), "Broj Proizvoda u bazi podataka: 1");
    });
    EXPECT_EQ(countRows("Oprema"), 4);
    EXPECT_EQ(nameOf(m17), "");
    EXPECT_EQ(countRows("Proizvodjaci"), 3) << "the manufacturer stays";
    EXPECT_EQ(drawn("Naziv='17 inca'"), 1) << "what was drawn stays drawn";
}

TEST_F(Products, SelectionStaysAtItsPlaceOrGoesToTheFirst) {
    AskBeforeDelete = false;
    fillShop();
    addProduct(monitors, adler, "23 inca", 1.0F, 1.0F);
    addProduct(monitors, adler, "24 inca", 1.0F, 1.0F);
    withMonitors([&] {
        clickProduct(2);
        QTest::keyClick(&products(), Qt::Key_Delete);
        EXPECT_EQ(cellOf(*products().selectedItem(), ProductColumn::Name), "23 inca");
        EXPECT_EQ(detail(), "opis 23 inca");
        clickProduct(3);
        QTest::keyClick(&products(), Qt::Key_Delete);
        ASSERT_EQ(productNames(), "17 inca,23 inca");
        EXPECT_EQ(cellOf(*products().selectedItem(), ProductColumn::Name), "17 inca")
            << "behind the last comes the first";
        EXPECT_EQ(detail(), "opis 17 inca");
        QTest::keyClick(&products(), Qt::Key_Delete);
        QTest::keyClick(&products(), Qt::Key_Delete);
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(detail(), "");
        EXPECT_EQ(statusText(), "U bazi podataka nema Proizvoda");
        EXPECT_EQ(toolbarOn(), "new,refresh,help");
        window().DeleteProduct();
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(countRows("Oprema"), 3);
}

TEST_F(Products, ProductDeletedByAnotherIsNotFound) {
    const auto other = colleague("DELETE * FROM Oprema WHERE Naziv='17 inca'");
    AskBeforeDelete = false;
    fillShop();
    withMonitors([&] {
        clickProduct(1);
        act(*other);
        window().DeleteProduct();
        expectBox(
            "Proizvod koji pokusavate da izbrisete nije pronadjen u bazi podataka. Moguce je da ga je neko "
            "od "
            "korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.");
        EXPECT_EQ(productNames(), "17 inca,19 inca") << "nothing else changes";
    });
    EXPECT_EQ(countRows("Oprema"), 4);
}

TEST_F(Products, LockedProductStays) {
    const auto other = slowColleague();
    AskBeforeDelete = false;
    fillShop();
    withMonitors([&] {
        clickProduct(1);
        act(*other);
        dao::DBEngine::setLockTimeout(100);
        window().DeleteProduct();
        ASSERT_EQ(boxes.asked.size(), 1);
        expectError(boxes.asked[0], "Neocekivana greska prilikom brisanja proizvoda u bazi podataka:", 3260,
                    " ; Code line no.: ");
        EXPECT_TRUE(boxes.asked[0].text.endsWith(occured("DeleteProduct")));
        EXPECT_EQ(productNames(), "17 inca,19 inca");
    });
    EXPECT_EQ(countRows("Oprema"), 5);
}

TEST_F(Products, DeletingAllAsksWhichOnes) {
    fillShop();
    withMonitors([&] {
        window().DeleteAllProduct();
        expectBox(
            "Spremate se da izbrisete proizvode iz baze podataka.\nNa raspolaganju su vam sledece opcije:\n\n"
            "Yes\t- Obrisacete SVE proizvode iz baze podataka,\n"
            "No\t- Obrisacete samo proizvode izabranog proizvodjaca i grupe,\n"
            "Cancel\t- Predomislili ste se - nema brisanja proizvoda.");
        EXPECT_EQ(boxes.asked.last().buttons, BoxButtons::YesNoCancel);
        EXPECT_EQ(boxes.asked.last().preselected, BoxAnswer::Cancel);
        EXPECT_EQ(productNames(), "17 inca,19 inca");
    });
    EXPECT_EQ(countRows("Oprema"), 5);
    EXPECT_EQ(boxes.asked.size(), 1);
}

TEST_F(Products, YesDeletesTheWholeCatalogue) {
    fillShop();
    withMonitors([&] {
        clickProduct(1);
        boxes.answers = {BoxAnswer::Yes};
        window().DeleteAllProduct();
        expectBox("Izbrisno: 5 proizvod(a).", BoxIcon::Information);
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(detail(), "");
        EXPECT_EQ(statusText(), "U bazi podataka nema Proizvoda");
        boxes.asked.clear();
        window().DeleteAllProduct();
        EXPECT_TRUE(boxes.asked.isEmpty()) << "nothing to do on an empty list";
    });
    EXPECT_EQ(countRows("Oprema"), 0);
    EXPECT_EQ(countRows("Grupe"), 3);
}

TEST_F(Products, NoDeletesThoseOfTheSelectedGroupAndManufacturer) {
    fillShop();
    withMonitors([&] {
        boxes.answers = {BoxAnswer::No};
        window().DeleteAllProduct();
        expectBox("Izbrisno: 2 proizvod(a).", BoxIcon::Information);
    });
    EXPECT_EQ(countRows("Oprema"), 3);
    EXPECT_EQ(nameOf(m21), "21 inca");
    EXPECT_EQ(nameOf(fast), "Brzi");
}

TEST_F(Products, NoEmptiesTheListAlsoOfProductsThatStay) {
    fillShop();
    withMonitors([&] {
        window().PrikaziSveProizvodjace = true;
        window().RefreshProduct(false);
        ASSERT_EQ(products().count(), 3);
        boxes.answers = {BoxAnswer::No};
        window().DeleteAllProduct();
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(statusText(), "U bazi podataka nema Proizvoda");
        window().RefreshProduct(false);
        EXPECT_EQ(productNames(), "21 inca") << "until the next refresh";
    });
}

TEST_F(Products, NoNeedsAGroupAndAManufacturer) {
    fillShop();
    withMonitors([&] {
        manufacturers().setCurSel(-1);
        boxes.answers = {BoxAnswer::No};
        window().DeleteAllProduct();
        expectBox(
            "Da bi ste selektivno izabrali veci broj proizvoda, morate izabrati i proizvodjaca i grupu kojoj "
            "pripadaju.");
    });
    EXPECT_EQ(countRows("Oprema"), 5);
}

TEST_F(Products, WithTheQuestionOffNothingIsDeletedAtAll) {
    AskBeforeDelete = false;
    fillShop();
    withMonitors([&] {
        window().DeleteAllProduct();
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom brisanja svih proizvoda iz baze podataka:\n\n["))
            << boxes.lastText().toStdString();
        EXPECT_TRUE(boxes.lastText().endsWith(GetDAOErrors()));
        EXPECT_FALSE(GetDAOErrors().isEmpty());
        EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
        EXPECT_EQ(productNames(), "17 inca,19 inca");
        // The transaction of the failed one has ended.
        EXPECT_THROW(dao::DBEngine::Rollback(), dao::Error);
    });
    EXPECT_EQ(countRows("Oprema"), 5);
}

TEST_F(Products, LockedCatalogueStaysWhole) {
    const auto other = slowColleague();
    fillShop();
    withMonitors([&] {
        act(*other);
        dao::DBEngine::setLockTimeout(100);
        boxes.answers = {BoxAnswer::Yes};
        window().DeleteAllProduct();
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom brisanja svih proizvoda iz baze podataka:\n\n[3260] "))
            << boxes.lastText().toStdString();
        EXPECT_EQ(productNames(), "17 inca,19 inca");
    });
    EXPECT_EQ(countRows("Oprema"), 5);
}

}  // namespace
