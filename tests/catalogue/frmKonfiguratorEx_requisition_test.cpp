// Drawing products for a service: what is asked, what is written, and what colleagues do meanwhile.
#include "catalogue/catalogue_draw.h"

namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

const char* const kNoStock = "Proizvoda nema na stanju. Ne mozete da ga trebujete.";
const char* const kProductGone =
    "Proizvod koji ste pokusali da trebujete nije pronadjen u bazi podataka. Verovatno ga je neko od "
    "korisnika obrisao u medjuvremenu.";
const char* const kDrawnAlready =
    "Proizvod je vec trebovan. Zelite li da nova kolicina bude dodata na postojecu?";
const char* const kRowGone =
    "Neko je u medjuvremnu obrisao stavku iz liste trebovanja, ona ce ponovo biti dodata u listu.";

QString stockChanged(const char* listed, const char* real) {
    return QStringLiteral(
               "Doslo je do promene stanja proizvoda koji trebujete.\nRaspoloziva kolicina vise nije: %1 vec "
               "iznosi: %2.\n\nLista proizvoda ce biti automatski azurirana.")
        .arg(QLatin1String(listed), QLatin1String(real));
}
QString tooMany(const char* real) {
    return QStringLiteral(
               "Trebujete vise nego sto proizvoda ima ma stanju. Trenutno stanje proizvoda je: %1.\n\nHocete "
               "li da trebujete upravo ovu kolicinu?")
        .arg(QLatin1String(real));
}

using Requisition = CatalogueDraw;

// --- One person alone.

TEST_F(Requisition, EnterTakesFromTheStockAndWritesARow) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("2", "SN1")});
        EXPECT_EQ(stockOf(m17), 3.0F);
        EXPECT_EQ(rowsOf(m17), 1);
        EXPECT_EQ(held(m17, "ServiceID").asLong(), service);
        EXPECT_EQ(held(m17, "JM").asText(), "Kom.");
        EXPECT_EQ(serialOf(m17), "SN1");
        EXPECT_EQ(held(m17, "Proizvodjac").asText(), "Adler");
        EXPECT_EQ(held(m17, "Grupa").asText(), "Monitori");
        EXPECT_EQ(held(m17, "Naziv").asText(), "17 inca");
        EXPECT_EQ(held(m17, "Opis").asText(), "opis 17 inca");
        EXPECT_EQ(quantityOf(m17), 2.0F);
        EXPECT_EQ(held(m17, "Cena").asSingle(), 100.0F);
        EXPECT_EQ(cellOf(products().item(keyOf(m17)), ProductColumn::Stock), "3")
            << "the catalogue shows the new stock";
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m17));
        EXPECT_EQ(parent().refreshes, 1);
        EXPECT_FALSE(parent().lastRefreshReset);
        EXPECT_TRUE(parent().requisitionList().hasItem(keyOf(m17)));
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(Requisition, TheQuantityIsAskedForTheProductByName) {
    fillShop();
    withMonitors([&] {
        QString named;
        draw(m17, {[&](frmInputBox& input) { named = input.findChild<QLabel*>("Product")->text(); }});
        EXPECT_EQ(named, "Adler 17 inca");
    });
}

TEST_F(Requisition, OnlyTheChosenProductIsTouched) {
    fillShop();
    const int last = addProduct(monitors, adler, "24 inca", 400.0F, 9.0F);
    withMonitors([&] {
        draw(last, {entering("4")});
        EXPECT_EQ(stockOf(last), 5.0F);
        EXPECT_EQ(stockOf(m17), 5.0F);
        EXPECT_EQ(rowsOf(last), 1);
        EXPECT_EQ(countRows("SELECT * FROM InvoiceData"), 1);
    });
}

TEST_F(Requisition, EnterInAListOrASearchBoxDrawsToo) {
    fillShop();
    withMonitors([&] {
        for (QWidget* each : {static_cast<QWidget*>(&groups()), static_cast<QWidget*>(&manufacturers()),
                              static_cast<QWidget*>(search(0)), static_cast<QWidget*>(search(1))}) {
            boxes.answers.append(BoxAnswer::Yes);
            atQuantity({entering("1")}, [&] { press(each, Qt::Key_Return); });
        }
        EXPECT_EQ(stockOf(m17), 1.0F);
        EXPECT_EQ(quantityOf(m17), 4.0F);
        EXPECT_EQ(rowsOf(m17), 1);
    });
}

TEST_F(Requisition, TheEnterKeyOfThePadDrawsAsWell) {
    fillShop();
    withMonitors([&] {
        products().setFocus();
        atQuantity({entering("1")}, [&] { QTest::keyClick(&products(), Qt::Key_Enter, Qt::KeypadModifier); });
        EXPECT_EQ(stockOf(m17), 4.0F);
    });
}

TEST_F(Requisition, WithNothingSelectedNothingIsAsked) {
    fillShop();
    withMonitors([&] {
        clickRow(groups(), "Prazna");
        atQuantity({}, [this] { press(&products(), Qt::Key_Return); });
        expectNothingDrawn();
        EXPECT_EQ(parent().refreshes, 0);
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(Requisition, AProductWithoutStockIsRefused) {
    fillShop();
    withMonitors([&] {
        draw(m19, {});
        ASSERT_EQ(boxes.asked.size(), 1);
        expectQuestion(0, kNoStock, BoxIcon::Information);
        expectNothingDrawn();
        EXPECT_EQ(parent().refreshes, 0);
    });
}

TEST_F(Requisition, CancellingTheQuantityLeavesEverything) {
    fillShop();
    withMonitors([&] {
        draw(m17, {cancelling()});
        expectNothingDrawn();
        EXPECT_EQ(parent().refreshes, 0);
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Requisition, TheWholeStockCanBeDrawn) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("5")});
        EXPECT_EQ(stockOf(m17), 0.0F);
        EXPECT_EQ(products().item(keyOf(m17)).SmallIcon, "stanjenula");
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(Requisition, MoreThanThereIsMayBecomeWhatThereIs) {
    fillShop();
    withMonitors([&] {
        boxes.answers = {BoxAnswer::Yes};
        draw(m17, {entering("9")});
        ASSERT_EQ(boxes.asked.size(), 1);
        expectQuestion(0, tooMany("5"), BoxIcon::Exclamation, BoxButtons::YesNoCancel);
        EXPECT_EQ(stockOf(m17), 0.0F);
        EXPECT_EQ(quantityOf(m17), 5.0F);
    });
}

TEST_F(Requisition, AfterANoTheQuantityIsAskedAgain) {
    fillShop();
    withMonitors([&] {
        boxes.answers = {BoxAnswer::No, BoxAnswer::No};
        draw(m17, {entering("9", "SN9"), entering("8", "SN8"), entering("2", "SN2")});
        EXPECT_EQ(boxes.asked.size(), 2);
        EXPECT_EQ(stockOf(m17), 3.0F);
        EXPECT_EQ(quantityOf(m17), 2.0F);
        EXPECT_EQ(serialOf(m17), "SN2");
    });
}

TEST_F(Requisition, AfterACancelNothingIsDrawn) {
    fillShop();
    withMonitors([&] {
        boxes.answers = {BoxAnswer::Cancel};
        draw(m17, {entering("9")});
        EXPECT_EQ(boxes.asked.size(), 1);
        expectNothingDrawn();
        EXPECT_EQ(parent().refreshes, 0);
    });
}

TEST_F(Requisition, AfterANoTheSecondWindowCanBeCancelled) {
    fillShop();
    withMonitors([&] {
        boxes.answers = {BoxAnswer::No};
        draw(m17, {entering("9"), cancelling()});
        expectNothingDrawn();
    });
}

// Only an empty shelf is refused. What stands below zero can be put right by drawing exactly that.
TEST_F(Requisition, NegativeStockIsNotRefused) {
    fillShop();
    show([&] {
        clickRow(groups(), "Procesori");
        clickRow(manufacturers(), "Celta");
        boxes.answers = {BoxAnswer::Yes};
        draw(slow, {entering("1")});
        ASSERT_EQ(boxes.asked.size(), 1);
        expectQuestion(0, tooMany("-1"), BoxIcon::Exclamation, BoxButtons::YesNoCancel);
        EXPECT_EQ(stockOf(slow), 0.0F);
        EXPECT_EQ(quantityOf(slow), -1.0F);
    });
}

TEST_F(Requisition, ANoteWithABarKeepsItsUnit) {
    fillShop();
    const int odd = addProduct(monitors, adler, "Kabl", 1.0F, 2.0F, "crni|2 m");
    withMonitors([&] {
        draw(odd, {entering("1")});
        EXPECT_EQ(held(odd, "JM").asText(), "Kom.");
    });
}

// --- Prices. The requisition keeps euro, whatever the list shows.

TEST_F(Requisition, AEuroPriceIsTakenAsTheListShowsIt) {
    fillShop();
    const int exact = addProduct(monitors, adler, "Server", 1234.567F, 2.0F);
    withMonitors([&] {
        draw(exact, {entering("1")});
        EXPECT_EQ(held(exact, "Cena").asSingle(), 1234.57F) << "two decimals, and thousands apart";
    });
}

TEST_F(Requisition, ADinarPriceIsDividedByTheRate) {
    fillShop();
    const int odd = addProduct(monitors, adler, "Kabl", 33.333F, 4.0F);
    CeneDinarske = true;
    KursKupovni = 117.5F;
    withMonitors([&] {
        ASSERT_EQ(cellOf(products().item(keyOf(m17)), ProductColumn::Price), "11,750.00");
        draw(m17, {entering("1")});
        EXPECT_EQ(held(m17, "Cena").asSingle(), 100.0F);
        ASSERT_EQ(cellOf(products().item(keyOf(odd)), ProductColumn::Price), "3,916.63");
        draw(odd, {entering("1")});
        EXPECT_EQ(held(odd, "Cena").asSingle(), static_cast<float>(3916.63 / 117.5));
    });
}

TEST_F(Requisition, PricesAndStockGoByACommaAsByAPoint) {
    fillShop();
    const int cable = addProduct(monitors, adler, "Kabl", 1200.5F, 2.5F);
    const int rope = addProduct(monitors, adler, "Uze", 1200.5F, 2.5F);
    QLocale::setDefault(QLocale("de_DE"));
    withMonitors([&] {
        ASSERT_EQ(cellOf(products().item(keyOf(cable)), ProductColumn::Price), "1.200,50");
        draw(cable, {entering("1,5")});
        EXPECT_EQ(stockOf(cable), 1.0F);
        EXPECT_EQ(quantityOf(cable), 1.5F);
        EXPECT_EQ(held(cable, "Cena").asSingle(), 1200.5F);
        CeneDinarske = true;
        KursKupovni = 117.5F;
        window().RefreshProduct(false);
        ASSERT_EQ(cellOf(products().item(keyOf(rope)), ProductColumn::Price), "141.058,75");
        boxes.answers = {BoxAnswer::Yes};
        draw(rope, {entering("2,75")});
        expectQuestion(0, tooMany("2,5"), BoxIcon::Exclamation, BoxButtons::YesNoCancel);
        EXPECT_EQ(quantityOf(rope), 2.5F);
        EXPECT_EQ(held(rope, "Cena").asSingle(), 1200.5F);
    });
}

TEST_F(Requisition, AnUnknownPriceStaysUnknown) {
    fillShop();
    const int bare =
        addRow("Oprema", "ID",
               {{"IDGrupe", monitors}, {"IDProizvodjaca", adler}, {"Naziv", "Goli"}, {"Stanje", 2.0F}});
    withMonitors([&] {
        draw(bare, {entering("1")});
        EXPECT_EQ(stockOf(bare), 1.0F);
        EXPECT_EQ(rowsOf(bare), 1);
        EXPECT_TRUE(held(bare, "Cena").isNull());
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

// --- The same product again.

TEST_F(Requisition, ASecondDrawAddsToTheFirst) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("2", "SN1")});
        boxes.answers = {BoxAnswer::Yes};
        draw(m17, {entering("1", "SN2", true)});
        ASSERT_EQ(boxes.asked.size(), 1);
        expectQuestion(0, kDrawnAlready, BoxIcon::Question, BoxButtons::YesNo);
        EXPECT_EQ(stockOf(m17), 2.0F);
        EXPECT_EQ(rowsOf(m17), 1);
        EXPECT_EQ(quantityOf(m17), 3.0F);
        EXPECT_EQ(serialOf(m17), "SN1, SN2");
        EXPECT_EQ(parent().refreshes, 2);
    });
}

TEST_F(Requisition, ANoToASecondDrawLeavesEverything) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("2", "SN1")});
        boxes.answers = {BoxAnswer::No};
        draw(m17, {entering("1", "SN2", true)});
        EXPECT_EQ(stockOf(m17), 3.0F);
        EXPECT_EQ(quantityOf(m17), 2.0F);
        EXPECT_EQ(serialOf(m17), "SN1");
        EXPECT_EQ(parent().refreshes, 1);
    });
}

TEST_F(Requisition, AnEmptySerialNumberThatIsAppendedLeavesItsComma) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1", "SN1")});
        boxes.answers = {BoxAnswer::Yes};
        draw(m17, {entering("1", "", true)});
        EXPECT_EQ(serialOf(m17), "SN1, ");
    });
}

TEST_F(Requisition, WithoutAppendingTheNewSerialNumberReplacesTheOld) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1", "SN1")});
        boxes.answers = {BoxAnswer::Yes, BoxAnswer::Yes};
        draw(m17, {entering("1", "SN2", false)});
        EXPECT_EQ(serialOf(m17), "SN2");
        draw(m17, {entering("1", "", false)});
        EXPECT_EQ(serialOf(m17), "");
    });
}

TEST_F(Requisition, NothingIsPutInFrontOfAFirstSerialNumber) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1", "")});
        boxes.answers = {BoxAnswer::Yes};
        draw(m17, {entering("1", "SN2", true)});
        EXPECT_EQ(serialOf(m17), "SN2");
    });
}

TEST_F(Requisition, ASecondDrawBringsTheUnitAlong) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1")});
        openDatabase().Execute("UPDATE Oprema SET JM='Par' WHERE ID=" + std::to_string(m17));
        window().RefreshProduct(false);
        boxes.answers = {BoxAnswer::Yes};
        draw(m17, {entering("1")});
        EXPECT_EQ(held(m17, "JM").asText(), "Par");
    });
}

TEST_F(Requisition, ASecondDrawKeepsThePriceOfTheFirst) {
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1")});
        openDatabase().Execute("UPDATE Oprema SET Cena=120 WHERE ID=" + std::to_string(m17));
        window().RefreshProduct(false);
        boxes.answers = {BoxAnswer::Yes};
        draw(m17, {entering("1")});
        EXPECT_EQ(held(m17, "Cena").asSingle(), 100.0F);
    });
}

// --- Colleagues. Each acts while this person types or reads.

TEST_F(Requisition, AProductThatAColleagueDeletedIsToldAndTheListRefreshed) {
    auto other = colleague("DELETE * FROM Oprema WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        draw(m17, {meanwhile(*other, entering("1"))});
        ASSERT_EQ(boxes.asked.size(), 1);
        expectQuestion(0, kProductGone, BoxIcon::Exclamation);
        EXPECT_EQ(productNames(), "19 inca");
        EXPECT_EQ(countRows("SELECT * FROM InvoiceData"), 0);
        EXPECT_EQ(parent().refreshes, 0);
    });
}

// The search is not repeated behind the refresh: the piece comes off the list's first product. The shop's
// stock-taking has lived with it since the first version.
TEST_F(Requisition, AfterAChangeOfStockTheFirstProductOfTheListPays) {
    auto other = colleague("UPDATE Oprema SET Stanje=4 WHERE Naziv='24 inca'");
    fillShop();
    const int last = addProduct(monitors, adler, "24 inca", 400.0F, 5.0F);
    withMonitors([&] {
        draw(last, {meanwhile(*other, entering("2"))});
        ASSERT_EQ(boxes.asked.size(), 1);
        expectQuestion(0, stockChanged("5", "4"), BoxIcon::Exclamation);
        EXPECT_EQ(stockOf(last), 4.0F);
        EXPECT_EQ(stockOf(m17), 3.0F);
        EXPECT_EQ(rowsOf(last), 1);
        EXPECT_EQ(quantityOf(last), 2.0F);
        EXPECT_EQ(held(last, "Naziv").asText(), "24 inca");
        EXPECT_EQ(held(last, "Cena").asSingle(), 400.0F);
        EXPECT_EQ(cellOf(products().item(keyOf(last)), ProductColumn::Stock), "4");
    });
}

TEST_F(Requisition, StockThatShrankBelowTheQuantityIsOfferedInFull) {
    auto other = colleague("UPDATE Oprema SET Stanje=3 WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
        draw(m17, {meanwhile(*other, entering("4"))});
        ASSERT_EQ(boxes.asked.size(), 2);
        expectQuestion(0, stockChanged("5", "3"), BoxIcon::Exclamation);
        expectQuestion(1, tooMany("3"), BoxIcon::Exclamation, BoxButtons::YesNoCancel);
        EXPECT_EQ(stockOf(m17), 0.0F);
        EXPECT_EQ(quantityOf(m17), 3.0F);
    });
}

TEST_F(Requisition, StockThatIsGoneMeanwhileGivesARowOfZero) {
    auto other = colleague("UPDATE Oprema SET Stanje=0 WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
        draw(m17, {meanwhile(*other, entering("1"))});
        ASSERT_EQ(boxes.asked.size(), 2);
        expectQuestion(0, stockChanged("5", "0"), BoxIcon::Exclamation);
        expectQuestion(1, tooMany("0"), BoxIcon::Exclamation, BoxButtons::YesNoCancel);
        EXPECT_EQ(stockOf(m17), 0.0F);
        EXPECT_EQ(rowsOf(m17), 1);
        EXPECT_EQ(quantityOf(m17), 0.0F);
    });
}

TEST_F(Requisition, StockThatIsGoneMeanwhileAddsNothingToARow) {
    auto other = colleague("UPDATE Oprema SET Stanje=0 WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1")});
        boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes, BoxAnswer::Yes};
        draw(m17, {meanwhile(*other, entering("1"))});
        ASSERT_EQ(boxes.asked.size(), 3);
        expectQuestion(0, stockChanged("4", "0"), BoxIcon::Exclamation);
        expectQuestion(1, tooMany("0"), BoxIcon::Exclamation, BoxButtons::YesNoCancel);
        expectQuestion(2, kDrawnAlready, BoxIcon::Question, BoxButtons::YesNo);
        EXPECT_EQ(stockOf(m17), 0.0F);
        EXPECT_EQ(quantityOf(m17), 1.0F);
    });
}

TEST_F(Requisition, StockThatGrewIsToldAndDrawnFrom) {
    auto other = colleague("UPDATE Oprema SET Stanje=8 WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        draw(m17, {meanwhile(*other, entering("7"))});
        ASSERT_EQ(boxes.asked.size(), 1);
        expectQuestion(0, stockChanged("5", "8"), BoxIcon::Exclamation);
        EXPECT_EQ(stockOf(m17), 1.0F);
        EXPECT_EQ(quantityOf(m17), 7.0F);
    });
}

TEST_F(Requisition, AFractionOfAChangedStockGoesByTheLocale) {
    auto other = colleague("UPDATE Oprema SET Stanje=1.25 WHERE Naziv='Kabl'");
    fillShop();
    const int cable = addProduct(monitors, adler, "Kabl", 1.0F, 2.5F);
    QLocale::setDefault(QLocale("de_DE"));
    withMonitors([&] {
        draw(cable, {meanwhile(*other, entering("1"))});
        expectQuestion(0, stockChanged("2,5", "1,25"), BoxIcon::Exclamation);
    });
}

// The number that the person chose by is the one from before; it is told each time.
TEST_F(Requisition, TheChangeIsToldAgainWithEachNewQuantity) {
    auto other = colleague("UPDATE Oprema SET Stanje=3 WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        boxes.answers = {BoxAnswer::Ok, BoxAnswer::No, BoxAnswer::Ok};
        draw(m17, {meanwhile(*other, entering("4")), entering("2")});
        ASSERT_EQ(boxes.asked.size(), 3);
        expectQuestion(2, stockChanged("5", "3"), BoxIcon::Exclamation);
        EXPECT_EQ(stockOf(m17), 1.0F);
        EXPECT_EQ(quantityOf(m17), 2.0F);
    });
}

// With the switch on, the refresh takes a product without stock off the list: there is no record to lower.
TEST_F(Requisition, AnEmptyListAfterTheRefreshCannotPay) {
    auto other = colleague("UPDATE Oprema SET Stanje=0 WHERE Naziv='21 inca'");
    fillShop();
    show([&] {
        clickRow(groups(), "Monitori");
        clickRow(manufacturers(), "Bergen");
        QTest::mouseClick(control("Label1(0)"), Qt::LeftButton);
        boxes.answers = {BoxAnswer::Ok, BoxAnswer::Yes};
        draw(m21, {meanwhile(*other, entering("1"))});
        ASSERT_EQ(boxes.asked.size(), 3);
        EXPECT_TRUE(boxes.lastText().contains("\n[3021] ")) << boxes.lastText().toStdString();
        EXPECT_EQ(countRows("SELECT * FROM InvoiceData"), 0);
        EXPECT_EQ(parent().refreshes, 1);
    });
}

TEST_F(Requisition, AColleaguesDrawBehindTheCheckIsNotLost) {
    auto other = colleague("UPDATE Oprema SET Stanje=2 WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1")});
        boxes.answers = {BoxAnswer::Yes};
        whenAsked(kDrawnAlready, [&] { act(*other); });
        draw(m17, {entering("1")});
        EXPECT_EQ(stockOf(m17), 1.0F) << "the record is read afresh when it is written";
    });
}

TEST_F(Requisition, AProductDeletedBehindTheCheckIsAnErrorAndNoRowIsTouched) {
    auto other = colleague("DELETE * FROM Oprema WHERE Naziv='17 inca'");
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1")});
        boxes.answers = {BoxAnswer::Yes};
        whenAsked(kDrawnAlready, [&] { act(*other); });
        draw(m17, {entering("2", "SN2")});
        ASSERT_EQ(boxes.asked.size(), 2);
        const platform::Box& told = boxes.asked.last();
        EXPECT_TRUE(
            told.text.startsWith("Doslo je do neocekivane greske prilikom upisivanja trebovane "
                                 "kolicine proizvoda u bazu podataka.\n\nGreska je data "
                                 "kao:\n[3167] "))
            << told.text.toStdString();
        EXPECT_TRUE(told.text.endsWith(" (frmKonfiguratorEx->TrebovanjeExecute())"))
            << told.text.toStdString();
        EXPECT_EQ(told.icon, BoxIcon::Exclamation);
        EXPECT_EQ(told.title, GetResString(1));
        EXPECT_EQ(quantityOf(m17), 1.0F);
        EXPECT_EQ(serialOf(m17), "");
        EXPECT_EQ(productNames(), "19 inca") << "both windows show what the file has";
        EXPECT_EQ(parent().refreshes, 2);
    });
}

TEST_F(Requisition, AFileThatIsBeingWrittenIsToldAndNothingIsDrawn) {
    auto other = slowColleague();
    fillShop();
    withMonitors([&] {
        dao::DBEngine::setLockTimeout(50);
        draw(m17, {meanwhile(*other, entering("1"))});
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().contains("\n\nGreska je data kao:\n[3260] "))
            << boxes.lastText().toStdString();
        expectNothingDrawn();
        EXPECT_EQ(parent().refreshes, 1);
        other->release();
        other->wait();
        draw(m17, {entering("1")});
        EXPECT_EQ(stockOf(m17), 4.0F) << "the next one goes";
        EXPECT_EQ(rowsOf(m17), 1);
    });
}

// Nothing says on which record the set stands then: whatever it is, its stock is none of this draw's.
TEST_F(Requisition, ASearchThatFailsDrawsNothing) {
    auto other = committingColleague();
    fillShop();
    const int last = addProduct(monitors, adler, "24 inca", 400.0F, 9.0F);
    withMonitors([&] {
        draw(last, {entering("1", "SN1")});
        dao::DBEngine::setLockTimeout(50);
        boxes.onBox = [&](const platform::Box&) {
            other->release();
            other->wait();
        };
        draw(last, {meanwhile(*other, entering("2", "SN2"))});
        ASSERT_EQ(boxes.asked.size(), 1) << boxes.lastText().toStdString();
        EXPECT_TRUE(
            boxes.lastText().startsWith("Doslo je do neocekivane greske prilikom upisivanja trebovane "
                                        "kolicine proizvoda u bazu podataka.\n\nGreska je data "
                                        "kao:\n[3260] "))
            << boxes.lastText().toStdString();
        EXPECT_TRUE(boxes.lastText().endsWith(" (frmKonfiguratorEx->TrebovanjeExecute())"));
        EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
        EXPECT_EQ(stockOf(m17), 5.0F) << "the first product of the list has nothing to do with it";
        EXPECT_EQ(stockOf(last), 8.0F);
        EXPECT_EQ(quantityOf(last), 1.0F);
        EXPECT_EQ(serialOf(last), "SN1");
        EXPECT_EQ(parent().refreshes, 2) << "both windows show what the file has";
        EXPECT_EQ(cellOf(products().item(keyOf(last)), ProductColumn::Stock), "8");
        EXPECT_EQ(products().selectedItem()->Key, keyOf(last));
    });
}

TEST_F(Requisition, ASearchThatFailsAsksNothingAboutTheStock) {
    auto other = committingColleague();
    fillShop();
    withMonitors([&] {
        dao::DBEngine::setLockTimeout(50);
        boxes.onBox = [&](const platform::Box&) {
            other->release();
            other->wait();
        };
        draw(m17, {meanwhile(*other, entering("7"))});
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().contains("\n[3260] ")) << boxes.lastText().toStdString();
        expectNothingDrawn();
    });
}

TEST_F(Requisition, ARowThatAColleagueDeletedIsWrittenAnew) {
    auto other = colleague("DELETE * FROM InvoiceData");
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("2", "SN1")});
        boxes.answers = {BoxAnswer::Yes};
        whenAsked(kDrawnAlready, [&] { act(*other); });
        draw(m17, {entering("1", "SN2", true)});
        ASSERT_EQ(boxes.asked.size(), 2);
        expectQuestion(1, kRowGone, BoxIcon::Information);
        EXPECT_EQ(stockOf(m17), 2.0F);
        EXPECT_EQ(rowsOf(m17), 1);
        EXPECT_EQ(quantityOf(m17), 1.0F);
        EXPECT_EQ(serialOf(m17), "SN2");
        EXPECT_EQ(held(m17, "Naziv").asText(), "17 inca");
    });
}

// The stock goes down first, and a row that cannot be written is not told: the list shows that it is missing.
TEST_F(Requisition, ANewRowThatFailsLeavesTheStockReduced) {
    auto eraser = colleague("DELETE * FROM InvoiceData");
    auto writer = slowColleague();
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("2")});
        boxes.answers = {BoxAnswer::Yes};
        boxes.onBox = [&](const platform::Box& box) {
            if (box.text == QLatin1String(kDrawnAlready)) {
                act(*eraser);
            }
            if (box.text == QLatin1String(kRowGone)) {
                act(*writer);
                dao::DBEngine::setLockTimeout(50);
            }
        };
        draw(m17, {entering("1")});
        EXPECT_EQ(boxes.asked.size(), 2) << boxes.lastText().toStdString();
        writer->release();
        writer->wait();
        EXPECT_EQ(stockOf(m17), 2.0F);
        EXPECT_EQ(rowsOf(m17), 0);
        EXPECT_EQ(parent().refreshes, 2);
    });
}

TEST_F(Requisition, AnAdditionKeepsWhatAColleagueAddedToTheRow) {
    auto other = colleague("UPDATE InvoiceData SET Stanje=7, SN='SN7'");
    fillShop();
    withMonitors([&] {
        draw(m17, {entering("1", "SN1")});
        boxes.answers = {BoxAnswer::Yes};
        whenAsked(kDrawnAlready, [&] { act(*other); });
        draw(m17, {entering("1", "SN2", true)});
        EXPECT_EQ(quantityOf(m17), 8.0F);
        EXPECT_EQ(serialOf(m17), "SN7, SN2");
    });
}

}  // namespace
