#include <QProgressBar>
#include <QSignalSpy>

#include "catalogue/catalogue_window.h"
#include "platform/system/numbers.h"
#include "support/sizes.h"

namespace {

using frmKonfiguratorExLists = CatalogueWindow;

void store(const char* key, const QString& value) {
    settings::setText(settings::find("frmKonfiguratorEx", QLatin1String(key)), value);
}
QString stored(const char* key) {
    return settings::text(settings::find("frmKonfiguratorEx", QLatin1String(key)));
}

TEST_F(frmKonfiguratorExLists, FirstShowingFillsAllThreePanes) {
    fillShop();
    show([&] {
        EXPECT_EQ(window().windowTitle(), "Konfigurator");
        EXPECT_EQ(texts(groups()), "Monitori,Procesori,Prazna");
        EXPECT_EQ(texts(manufacturers()), "Adler,Bergen,Celta");
        EXPECT_EQ(groups().itemData(1), processors);
        EXPECT_EQ(groups().curSel(), 0);
        EXPECT_EQ(manufacturers().curSel(), 0);
        EXPECT_EQ(productNames(), "17 inca,19 inca");
        EXPECT_EQ(window().focusWidget(), &groups());
        EXPECT_EQ(search(0)->text(), "Monitori");
        EXPECT_EQ(search(1)->text(), "Adler");
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(frmKonfiguratorExLists, OnlyTheFirstShowingFills) {
    fillShop();
    show([] {});
    addGroup("Nova");
    show([&] { EXPECT_EQ(groups().count(), 3); });
}

TEST_F(frmKonfiguratorExLists, ARowTellsAllOfAProduct) {
    fillShop();
    show([&] {
        const platform::ListItem& row = products().item(keyOf(m19));
        EXPECT_EQ(row.Text, "Adler");
        EXPECT_EQ(cellOf(row, ProductColumn::Name), "19 inca");
        EXPECT_EQ(cellOf(row, ProductColumn::Description), "opis 19 inca");
        EXPECT_EQ(cellOf(row, ProductColumn::Price), "200.50");
        EXPECT_EQ(cellOf(row, ProductColumn::Stock), "0");
        EXPECT_EQ(row.Tag, "|Kom.");
        EXPECT_EQ(row.SmallIcon, "stanjenula");
        EXPECT_EQ(products().item(keyOf(m17)).SmallIcon, "stanjeok");
    });
}

TEST_F(frmKonfiguratorExLists, NegativeStockIsNoStockEither) {
    fillShop();
    show([&] {
        clickRow(groups(), "Procesori");
        clickRow(manufacturers(), "Celta");
        EXPECT_EQ(cellOf(products().item(1), ProductColumn::Stock), "-1");
        EXPECT_EQ(products().item(1).SmallIcon, "stanjenula");
    });
}

TEST_F(frmKonfiguratorExLists, ANullDescriptionShowsEmpty) {
    fillShop();
    const int bare =
        addRow("Oprema", "ID", {{"IDGrupe", monitors}, {"IDProizvodjaca", adler}, {"Naziv", "Goli"}});
    show([&] {
        const platform::ListItem& row = products().item(keyOf(bare));
        EXPECT_EQ(cellOf(row, ProductColumn::Description), "");
        EXPECT_EQ(cellOf(row, ProductColumn::Price), "");
        EXPECT_EQ(cellOf(row, ProductColumn::Stock), "");
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(frmKonfiguratorExLists, ColumnsHaveTheirKeysTextsAndSides) {
    fillShop();
    show([&] {
        const char* const keys[] = {"Proizvodjac", "Naziv", "Opis", "Cena1", "Stanje"};
        const char* const headers[] = {"Proizvodjac", "Naziv", "Opis", "Cena [EUR]", "Stanje"};
        ASSERT_EQ(products().columns().count(), 5);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(products().columns().key(i + 1), QLatin1String(keys[i]));
            EXPECT_EQ(products().columns().text(i + 1), QLatin1String(headers[i]));
            const int side = products().model()->headerData(i, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
            EXPECT_EQ((side & Qt::AlignRight) != 0, i >= 3) << i;
        }
    });
}

TEST_F(frmKonfiguratorExLists, DinarPricesAreEuroPricesTimesTheRate) {
    fillShop();
    CeneDinarske = true;
    KursKupovni = 117.5F;
    show([&] {
        EXPECT_EQ(products().columns().text(4), "Cena [DIN]");
        EXPECT_EQ(cellOf(products().item(keyOf(m17)), ProductColumn::Price), "11,750.00");
        EXPECT_EQ(cellOf(products().item(keyOf(m19)), ProductColumn::Price), "23,558.75");
    });
}

TEST_F(frmKonfiguratorExLists, ARateWithACommaIsWrittenWithAPoint) {
    fillShop();
    CeneDinarske = true;
    KursKupovni = 117.5F;
    for (const char* locale : {"sr_Latn_RS", "de_DE"}) {
        QLocale::setDefault(QLocale(QLatin1String(locale)));
        ASSERT_EQ(platform::decimalSeparator(), ",");
        show([&] {
            window().RefreshProduct(false);
            EXPECT_TRUE(window().Data1[2]->RecordSource().contains("Oprema.Cena*117.5 AS Cena1"))
                << window().Data1[2]->RecordSource().toStdString();
            EXPECT_EQ(cellOf(products().item(keyOf(m19)), ProductColumn::Price), "23.558,75");
        });
    }
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(frmKonfiguratorExLists, FractionsOfStockGoByTheLocale) {
    fillShop();
    addProduct(monitors, adler, "Kabl", 1.0F, 2.5F);
    QLocale::setDefault(QLocale("de_DE"));
    show([&] { EXPECT_EQ(cellOf(products().item(3), ProductColumn::Stock), "2,5"); });
}

TEST_F(frmKonfiguratorExLists, SortingByPriceOrdersByTheWholeTerm) {
    fillShop();
    CeneDinarske = true;
    KursKupovni = 117.5F;
    store("PRDSort", "1Cena11");
    show([&] {
        EXPECT_TRUE(window().Data1[2]->RecordSource().endsWith(" ORDER BY Oprema.Cena*117.5 DESC"))
            << window().Data1[2]->RecordSource().toStdString();
        EXPECT_EQ(productNames(), "19 inca,17 inca");
        EXPECT_EQ(products().columns().icon(4), "DESC");
    });
}

TEST_F(frmKonfiguratorExLists, TheStatementIsPutTogetherAsTheSelectionsAre) {
    fillShop();
    show([&] {
        const QString head =
            "SELECT Proizvodjaci.Proizvodjac, Oprema.ID, Oprema.IDGrupe, Oprema.IDProizvodjaca, "
            "Oprema.Naziv, "
            "Oprema.Opis, Oprema.Stanje, Oprema.Cena, Oprema.Cena*1 AS Cena1, Oprema.Napomena, Oprema.JM "
            "FROM "
            "Proizvodjaci LEFT JOIN Oprema ON Proizvodjaci.ID = Oprema.IDProizvodjaca WHERE "
            "(((Oprema.IDGrupe)=" +
            QString::number(monitors) + "))";
        const QString maker = " AND ((Oprema.IDProizvodjaca)=" + QString::number(adler) + ")";
        EXPECT_EQ(window().Data1[2]->RecordSource(), head + maker);
        QTest::mouseClick(control("Label1(0)"), Qt::LeftButton);
        EXPECT_EQ(window().Data1[2]->RecordSource(), head + maker + " AND Oprema.Stanje>0");
        QTest::mouseClick(control("Label1(1)"), Qt::LeftButton);
        EXPECT_EQ(window().Data1[2]->RecordSource(), head + " AND Oprema.Stanje>0");
        EXPECT_EQ(window().Data1[0]->RecordSource(), "SELECT * FROM Grupe");
        EXPECT_EQ(window().Data1[1]->RecordSource(), "SELECT * FROM Proizvodjaci");
    });
}

TEST_F(frmKonfiguratorExLists, WithoutAGroupTheListIsEmpty) {
    fillShop();
    show([&] {
        groups().setCurSel(-1);
        window().DataUpdate(2, QString(), false);
        EXPECT_TRUE(window().Data1[2]->RecordSource().contains("(((Oprema.IDGrupe)=-1))"));
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(detail(), "");
    });
}

TEST_F(frmKonfiguratorExLists, StockSwitchOverAGroupWithoutStockGivesAnEmptyList) {
    fillShop();
    const int old = addGroup("Stari");
    addProduct(old, adler, "Prodat", 1.0F, 0.0F);
    show([&] {
        clickRow(groups(), "Stari");
        EXPECT_EQ(productNames(), "Prodat");
        QTest::mouseClick(control("Label1(0)"), Qt::LeftButton);
        EXPECT_EQ(products().count(), 0);
        products().setFocus();
        EXPECT_EQ(statusText(), "U bazi podataka nema Proizvoda");
    });
}

TEST_F(frmKonfiguratorExLists, EmptyGroupsTableLeavesNothingToDo) {
    fillShop();
    openDatabase().Execute("DELETE * FROM Grupe");
    show([&] {
        EXPECT_EQ(groups().count(), 0);
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(toolbarOn(), "new,refresh,help");
        EXPECT_EQ(search(0)->text(), "");
        groups().clearFocus();
        groups().setFocus();
        EXPECT_EQ(statusText(), "U bazi podataka nema Grupa proizvoda");
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(frmKonfiguratorExLists, CountsAreToldWhenTheFocusComes) {
    fillShop();
    show([&] {
        manufacturers().setFocus();
        EXPECT_EQ(statusText(), "Broj Proizvodjaca proizvoda u bazi podataka: 3");
        products().setFocus();
        EXPECT_EQ(statusText(), "Broj Proizvoda u bazi podataka: 2");
        groups().setFocus();
        EXPECT_EQ(statusText(), "Broj Grupa proizvoda u bazi podataka: 3");
    });
}

TEST_F(frmKonfiguratorExLists, AnotherGroupBringsItsProducts) {
    fillShop();
    show([&] {
        clickRow(groups(), "Procesori");
        EXPECT_EQ(productNames(), "Brzi");
        EXPECT_EQ(search(0)->text(), "Procesori");
        EXPECT_EQ(statusText(), "Broj Grupa proizvoda u bazi podataka: 3");
        clickRow(manufacturers(), "Celta");
        EXPECT_EQ(productNames(), "Spori");
        EXPECT_EQ(search(1)->text(), "Celta");
        clickRow(groups(), "Prazna");
        EXPECT_EQ(products().count(), 0);
    });
}

TEST_F(frmKonfiguratorExLists, AClickOnTheSameRowReadsNothingAgain) {
    fillShop();
    show([&] {
        addProduct(monitors, adler, "22 inca", 1.0F, 1.0F);
        clickRow(groups(), 0);
        EXPECT_EQ(productNames(), "17 inca,19 inca");
        clickRow(groups(), 1);
        clickRow(groups(), 0);
        EXPECT_EQ(productNames(), "17 inca,19 inca,22 inca");
    });
}

TEST_F(frmKonfiguratorExLists, AllManufacturersSwitchMakesTheirListIdle) {
    fillShop();
    show([&] {
        EXPECT_FALSE(manufacturers().font().italic());
        QTest::mouseClick(control("Picture1(4)"), Qt::LeftButton);
        EXPECT_TRUE(window().PrikaziSveProizvodjace);
        EXPECT_TRUE(manufacturers().font().italic());
        EXPECT_EQ(productNames(), "17 inca,19 inca,21 inca");
        addProduct(monitors, celta, "23 inca", 1.0F, 1.0F);
        clickRow(manufacturers(), "Bergen");
        EXPECT_EQ(productNames(), "17 inca,19 inca,21 inca") << "the manufacturer restricts nothing";
        QTest::mouseClick(control("Picture1(4)"), Qt::LeftButton);
        EXPECT_EQ(productNames(), "21 inca");
        EXPECT_FALSE(manufacturers().font().italic());
    });
}

TEST_F(frmKonfiguratorExLists, SwitchesTellWhatAClickWillDo) {
    fillShop();
    show([&] {
        auto* stock = control<QLabel>("Label1(0)");
        auto* makers = control<QLabel>("Label1(1)");
        const QColor off = stock->palette().color(QPalette::WindowText);
        EXPECT_EQ(stock->text(), "Stanja > 0");
        EXPECT_EQ(makers->text(), "Svi Proizvodjaci");
        EXPECT_EQ(stock->toolTip(), "Prikazi samo proizvode kojih ima na stanju");
        EXPECT_EQ(makers->toolTip(), "Prikazi proizvode svih proizvodjaca");
        EXPECT_NE(off, window().palette().color(QPalette::WindowText));
        QTest::mouseClick(stock, Qt::LeftButton);
        QTest::mouseClick(makers, Qt::LeftButton);
        EXPECT_EQ(stock->toolTip(), "Prikazi proizvode bez obzira na kolicinu");
        EXPECT_EQ(makers->toolTip(), "Prikazi proizvode izabranog proizvodjaca");
        EXPECT_EQ(stock->palette().color(QPalette::WindowText),
                  window().palette().color(QPalette::WindowText));
    });
}

TEST_F(frmKonfiguratorExLists, SwitchesAnswerTheSpaceBar) {
    fillShop();
    show([&] {
        press(control("Label1(0)"), Qt::Key_Space);
        EXPECT_TRUE(window().PrikaziStanjaVecaOdNule);
        EXPECT_EQ(productNames(), "17 inca");
    });
}

TEST_F(frmKonfiguratorExLists, DetailShowsTheNoteOrElseTheDescription) {
    fillShop();
    show([&] {
        clickProduct(2);
        EXPECT_EQ(detail(), "opis 19 inca");
        EXPECT_EQ(window().JM, "Kom.");
        EXPECT_EQ(window().Napomena, "");
        clickRow(groups(), "Procesori");
        clickProduct(1);
        EXPECT_EQ(detail(), "uz ventilator");
        EXPECT_EQ(window().Napomena, "uz ventilator");
        EXPECT_TRUE(window().Text1_2->isReadOnly());
    });
}

TEST_F(frmKonfiguratorExLists, ANoteWithABarKeepsItsUnit) {
    fillShop();
    addProduct(monitors, adler, "A|B", 1.0F, 1.0F, "levo|desno");
    show([&] {
        clickProduct(3);
        EXPECT_EQ(detail(), "levo|desno");
        EXPECT_EQ(window().JM, "Kom.");
    });
}

TEST_F(frmKonfiguratorExLists, ARefillKeepsTheSelectedProduct) {
    fillShop();
    show([&] {
        products().select(keyOf(m19));
        window().DataUpdate(2, QString(), false);
        ASSERT_NE(products().selectedItem(), nullptr);
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m19));
        window().DataUpdate(2, keyOf(m17), false);
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m17));
    });
}

TEST_F(frmKonfiguratorExLists, AKeyThatIsNotThereSelectsNothing) {
    fillShop();
    show([&] {
        window().DataUpdate(2, "K999999", false);
        EXPECT_EQ(products().selectedItem(), nullptr);
        EXPECT_EQ(detail(), "");
        EXPECT_EQ(window().JM, "");
        window().DataUpdate(2, QString(), false);
        ASSERT_NE(products().selectedItem(), nullptr) << "nothing to remember: the first row";
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m17));
    });
}

TEST_F(frmKonfiguratorExLists, AListIsSelectedByTheBeginningOfAText) {
    fillShop();
    show([&] {
        window().DataUpdate(0, "proc", false);
        EXPECT_EQ(groups().selectedText(), "Procesori");
        window().DataUpdate(0, QString(), false);
        EXPECT_EQ(groups().selectedText(), "Procesori") << "what was selected stays so";
    });
}

TEST_F(frmKonfiguratorExLists, ColumnClickSortsAscendingThenDescending) {
    fillShop();
    show([&] {
        emit products().columnClicked(4);
        EXPECT_EQ(window().SortTagOf[2], "1Cena10");
        EXPECT_EQ(products().columns().icon(4), "ASC");
        EXPECT_EQ(productNames(), "17 inca,19 inca");
        emit products().columnClicked(4);
        EXPECT_EQ(window().SortTagOf[2], "1Cena11");
        EXPECT_EQ(products().columns().icon(4), "DESC");
        EXPECT_EQ(productNames(), "19 inca,17 inca");
        emit products().columnClicked(5);
        EXPECT_EQ(window().SortTagOf[2], "1Stanje0");
        EXPECT_EQ(products().columns().icon(4), "dummy");
        EXPECT_EQ(products().columns().icon(5), "ASC");
        EXPECT_EQ(productNames(), "19 inca,17 inca");
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m17)) << "the product stays chosen";
    });
}

TEST_F(frmKonfiguratorExLists, FirstClickOnTheNameSortsDescending) {
    fillShop();
    show([&] {
        ASSERT_EQ(window().SortTagOf[2], "0Naziv0");
        emit products().columnClicked(2);
        EXPECT_EQ(window().SortTagOf[2], "1Naziv1");
        EXPECT_EQ(productNames(), "19 inca,17 inca");
    });
}

TEST_F(frmKonfiguratorExLists, ColumnsOfAnEmptyListDoNotSort) {
    fillShop();
    show([&] {
        clickRow(groups(), "Prazna");
        emit products().columnClicked(4);
        EXPECT_EQ(window().SortTagOf[2], "0Naziv0");
    });
}

TEST_F(frmKonfiguratorExLists, RefreshWithResetGoesBackToTheOrderOfEntry) {
    fillShop();
    show([&] {
        emit products().columnClicked(2);
        products().select(keyOf(m17));
        window().RefreshProduct(true);
        EXPECT_EQ(window().SortTagOf[2], "0Naziv0");
        EXPECT_EQ(productNames(), "17 inca,19 inca");
        EXPECT_EQ(products().columns().icon(2), "");
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m17));
        EXPECT_EQ(window().focusWidget(), &products());
    });
}

TEST_F(frmKonfiguratorExLists, SortingAListIsToldInItsToolTip) {
    fillShop();
    show([&] {
        groups().setFocus();
        window().SortList(2, false);
        EXPECT_EQ(texts(groups()), "Procesori,Prazna,Monitori");
        EXPECT_EQ(groups().selectedText(), "Monitori");
        EXPECT_EQ(groups().toolTip(), "Lista je sortirana po opadajucim nazivima.");
        EXPECT_EQ(window().SortTagOf[0], "1Grupa1");
        window().SortList(1, false);
        EXPECT_EQ(texts(groups()), "Monitori,Prazna,Procesori");
        EXPECT_EQ(groups().toolTip(), "Lista je sortirana po rastucim nazivima.");
        EXPECT_EQ(window().SortTagOf[0], "1Grupa0");
        window().SortList(3, false);
        EXPECT_EQ(texts(groups()), "Monitori,Procesori,Prazna");
        EXPECT_EQ(groups().toolTip(), "");
        EXPECT_EQ(window().SortTagOf[0], "0Grupa0");
        EXPECT_EQ(window().focusWidget(), &groups());
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(frmKonfiguratorExLists, SortingTwiceTheSameWayIsOnlyTold) {
    fillShop();
    show([&] {
        manufacturers().setFocus();
        window().SortList(1, false);
        addManufacturer("Aaron");
        window().SortList(1, false);
        EXPECT_EQ(boxes.lastText(), "Lista je vec sortirana po rastucim nazivima.");
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Information);
        EXPECT_EQ(manufacturers().count(), 3);
        window().SortList(1, true);
        EXPECT_EQ(texts(manufacturers()), "Aaron,Adler,Bergen,Celta") << "force goes all the way";
        window().SortList(2, false);
        window().SortList(2, false);
        EXPECT_EQ(boxes.lastText(), "Lista je vec sortirana po opadajucim nazivima.");
    });
    EXPECT_EQ(boxes.asked.size(), 2);
}

TEST_F(frmKonfiguratorExLists, RefreshingAListKeepsItsOrderAndSelection) {
    fillShop();
    show([&] {
        clickRow(manufacturers(), "Bergen");
        window().SortList(2, false);
        addManufacturer("Dorn");
        window().SortList(0, false);
        EXPECT_EQ(texts(manufacturers()), "Dorn,Celta,Bergen,Adler");
        EXPECT_EQ(manufacturers().selectedText(), "Bergen");
        EXPECT_EQ(window().SortTagOf[1], "1Proizvodjac1");
    });
}

TEST_F(frmKonfiguratorExLists, SortListNeedsAFocusedList) {
    fillShop();
    show([&] {
        products().setFocus();
        window().SortList(2, false);
        EXPECT_EQ(window().SortTagOf[0], "0Grupa0");
        EXPECT_EQ(window().SortTagOf[1], "0Proizvodjac0");
    });
}

TEST_F(frmKonfiguratorExLists, FirstShowingTellsTheKeptOrderInItsOwnWords) {
    fillShop();
    store("GRPSort", "1Grupa1");
    store("MFTSort", "1Proizvodjac0");
    show([&] {
        EXPECT_EQ(texts(groups()), "Procesori,Prazna,Monitori");
        EXPECT_EQ(groups().toolTip(), "Lista je sortirana po opdajucim nazivima.");
        EXPECT_EQ(manufacturers().toolTip(), "Lista je sortirana po rastucim nazivima.");
    });
}

TEST_F(frmKonfiguratorExLists, ABrokenSortTagIsToldAndReadAsUnsorted) {
    fillShop();
    const platform::SortTag safe{false, QString(), "ASC"};
    show([&] {
        EXPECT_EQ(window().GetSortTagData("xNaziv0"), safe);
        ASSERT_EQ(boxes.asked.size(), 1);
        const platform::Box told = boxes.asked.last();
        EXPECT_EQ(told.title, "frmKonfigurator -> GetSortTagData(xNaziv0)");
        EXPECT_TRUE(told.help) << "a Help button";
        EXPECT_EQ(told.icon, platform::BoxIcon::Exclamation);
        EXPECT_TRUE(
            told.text.startsWith("Neocekivana greska prilikom odredjivanja svojstava sortiranja:\n\n"
                                 "[13] Type mismatch\nLinija koda: "))
            << told.text.toStdString();
        EXPECT_EQ(window().GetSortTagData(""), safe);
        EXPECT_EQ(window().SetSortTagData(true, "Naziv", "DESC"), "1Naziv1");
        EXPECT_EQ(window().SetSortTagData(false, "Grupa", "ASC"), "0Grupa0");
    });
}

TEST_F(frmKonfiguratorExLists, ASortFieldThatIsNoneIsToldAndCanBeReset) {
    fillShop();
    store("PRDSort", "1Nigde0");
    show([&] {
        ASSERT_EQ(boxes.asked.size(), 1);
        const QString text = boxes.lastText();
        EXPECT_TRUE(text.startsWith("Neocekivana greska prilikom popunjavanja liste proizvoda:\n\n[3061] "))
            << text.toStdString();
        EXPECT_TRUE(text.contains(" ; Code line no.: ")) << text.toStdString();
        EXPECT_TRUE(text.endsWith("\nOccured in procedure FillListView of Form frmKonfiguratorEx"))
            << text.toStdString();
        EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
        EXPECT_EQ(products().count(), 0);
        window().RefreshProduct(true);
        EXPECT_EQ(productNames(), "17 inca,19 inca");
    });
    EXPECT_EQ(boxes.asked.size(), 1);
}

TEST_F(frmKonfiguratorExLists, AListThatCannotBeReadIsTold) {
    fillShop();
    show([&] {
        const QString kept = databasePath();
        settings::setText(settings::DatabasePath, path("nowhere.mdb"));
        window().DataUpdate(0, QString(), false);
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom popunjavanja liste grupa kompjuterske opreme:\n\n[3024] "))
            << boxes.lastText().toStdString();
        EXPECT_TRUE(
            boxes.lastText().endsWith("\nOccured in procedure FillListBox of Form frmKonfiguratorEx"));
        window().DataUpdate(1, QString(), false);
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom popunjavanja liste proizvodjaca kompjuterske opreme:\n\n[3024] "));
        settings::setText(settings::DatabasePath, kept);
        window().DataUpdate(0, QString(), false);
        EXPECT_EQ(groups().count(), 3);
    });
}

TEST_F(frmKonfiguratorExLists, FillingIsShownInTheProgressPanel) {
    fillShop();
    show([&] {
        auto* bar = control<QProgressBar>("ProgressBar1");
        QStringList seen;
        int maximum = 0;
        bool captionHidden = false, overPanel = false;
        QObject::connect(bar, &QProgressBar::valueChanged, bar, [&](int value) {
            if (value == 0) {
                return;
            }
            maximum = bar->maximum();
            captionHidden = !control("Picture1(5)")->isVisible();
            overPanel = bar->parentWidget() == window().StatusBar1->panel("progress");
            seen.append(statusText());
        });
        window().DataUpdate(2, QString(), false);
        EXPECT_EQ(seen, QStringList(2, "Popunjavanje podacima je u toku... Molim sacekajte..."));
        EXPECT_EQ(maximum, 2);
        EXPECT_FALSE(bar->isTextVisible()) << "the text stands beside it";
        EXPECT_TRUE(captionHidden);
        EXPECT_TRUE(overPanel);
        EXPECT_EQ(bar->parentWidget(), &window());
        EXPECT_FALSE(bar->isVisible());
        EXPECT_TRUE(control("Picture1(5)")->isVisible());
        EXPECT_NE(statusText(), "Popunjavanje podacima je u toku... Molim sacekajte...");
    });
}

TEST_F(frmKonfiguratorExLists, ARefillLeavesTheFocusWhereItIs) {
    fillShop();
    show([&] {
        products().setFocus();
        emit products().columnClicked(2);
        EXPECT_EQ(window().focusWidget(), &products());
    });
}

TEST_F(frmKonfiguratorExLists, SettingsComeBackTheNextTime) {
    fillShop();
    show([&] {
        window().resize(700, 450);
        QTest::mouseClick(control("Label1(0)"), Qt::LeftButton);
        QTest::mouseClick(control("Label1(1)"), Qt::LeftButton);
        window().VSplitter->setPosition(40);
        window().HSplitter->setPosition(60);
        groups().setFocus();
        window().SortList(2, false);
        manufacturers().setFocus();
        window().SortList(1, false);
        emit products().columnClicked(5);
        products().columns().setWidth(2, 3000);
        products().columns().setPositions({2, 1, 3, 5, 4});
    });
    unload();
    EXPECT_EQ(stored("PrikaziStanjaVecaOdNule"), "True");
    EXPECT_EQ(stored("PrikaziSveProizvodjace"), "True");
    EXPECT_EQ(stored("VerticalSplitPosition"), "40");
    EXPECT_EQ(stored("HorisontalSplitPosition"), "60");
    EXPECT_EQ(stored("GRPSort"), "1Grupa1");
    EXPECT_EQ(stored("MFTSort"), "1Proizvodjac0");
    EXPECT_EQ(stored("PRDSort"), "1Stanje0");
    EXPECT_EQ(stored("LVWColumnWidths"), "1440;3000;1440;1440;1440");
    EXPECT_EQ(stored("LVWColumnPositions"), "2;1;3;5;4");
    const double twips = 15 / platform::letterFactor();
    EXPECT_TRUE(
        stored("WindowData").endsWith(QString(";%1;%2").arg(qRound(700 * twips)).arg(qRound(450 * twips))))
        << stored("WindowData").toStdString();
    show([&] {
        EXPECT_TRUE(window().PrikaziStanjaVecaOdNule);
        EXPECT_TRUE(manufacturers().font().italic());
        EXPECT_EQ(window().VSplitter->position(), 40);
        EXPECT_EQ(window().HSplitter->position(), 60);
        EXPECT_EQ(texts(groups()), "Procesori,Prazna,Monitori");
        EXPECT_EQ(products().columns().icon(5), "ASC");
        EXPECT_EQ(products().columns().position(1), 2);
        EXPECT_EQ(products().columns().width(2), 3000);
        EXPECT_EQ(window().size(), QSize(700, 450));
    });
}

TEST_F(frmKonfiguratorExLists, NothingIsStoredWhereItNeverOpened) {
    fillShop();
    store("PRDSort", "1Opis1");
    window();
    unload();
    EXPECT_EQ(stored("PRDSort"), "1Opis1");
}

TEST_F(frmKonfiguratorExLists, AColumnThatIsNotThereIsToldAtTheLoad) {
    fillShop();
    store("LVWColumnWidths", "1440;1440;1440;1440;1440;99");
    show([&] { EXPECT_EQ(productNames(), "17 inca,19 inca"); });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(
        boxes.lastText().startsWith("Neocekivana greska prilikom stvaranja ListView kontrole:\n\n[35600] "))
        << boxes.lastText().toStdString();
    EXPECT_TRUE(boxes.lastText().contains("\nLinija koda: "));
}

}  // namespace
