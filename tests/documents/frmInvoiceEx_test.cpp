#include "documents/frmInvoiceEx.h"

#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QScreen>
#include <QWindow>

#include "catalogue/frmKonfiguratorEx.h"
#include "common/help.h"
#include "documents/requisition_window.h"
#include "support/sizes.h"

namespace {

using platform::BoxIcon;

class RequisitionList : public RequisitionWindow {
 protected:
    void drawThree() {
        draw(11, "Seagate", "Beta", 30, 1);
        draw(12, "Asus", "Gama", 10, 2);
        draw(13, "Intel", "Alfa", 20, 3);
    }
};

// Filling
// ----------------------------------------------------------------------------------------------------------

TEST_F(RequisitionList, AnEmptyRequisitionShowsOnlyTheTotal) {
    show([&] {
        EXPECT_EQ(keys(), QStringList{"total"});
        EXPECT_EQ(list().item(1).Text, " ");
        EXPECT_EQ(list().item(1).SmallIcon, "total");
        EXPECT_EQ(cell("total", RequisitionColumn::Price), " ");
        EXPECT_EQ(cell("total", RequisitionColumn::Quantity), "TOTAL:");
        EXPECT_EQ(total(), "0.00");
        EXPECT_EQ(status(), "Nema dobavljaca u bazi podataka");
        EXPECT_EQ(usable(), "konfig refresh help");
        EXPECT_EQ(selectedKey(), "total");
    });
    EXPECT_EQ(win().TotalForPayment(), 0.0F);
    EXPECT_TRUE(boxes.asked.isEmpty());
}

// Telling each row would take longer than reading it.
TEST_F(RequisitionList, ALongFillingTellsItsProgressNowAndThen) {
    constexpr int kRows = 400;
    dao::DBEngine::BeginTrans();
    for (int i = 0; i < kRows; ++i) {
        draw(100 + i, "Asus", "Ploca", 10, 1);
    }
    dao::DBEngine::CommitTrans();
    show([&] {
        int told = 0;
        QObject::connect(win().ProgressBar1, &QProgressBar::valueChanged, &win(), [&] { ++told; });
        list().setFocus();
        QTest::keyClick(&list(), Qt::Key_F5);
        EXPECT_EQ(list().count(), kRows + 1);
        EXPECT_LT(told, kRows / 2);
    });
}

TEST_F(RequisitionList, ARowHoldsWhatWasDrawn) {
    draw(12, "Asus", "Ploca", 1234.5F, 2.5F, {{"SN", "A1, A2"}, {"JM", "m"}});
    show([&] {
        EXPECT_EQ(keys(), (QStringList{"total", "K12"})) << "the total is always the first row";
        const platform::ListItem& row = list().item("K12");
        EXPECT_EQ(row.Text, "Asus");
        EXPECT_EQ(row.SmallIcon, "stavka");
        EXPECT_EQ(row.Tag, "m");
        EXPECT_EQ(row.subItems.join('|'), "Diskovi|Ploca|opis|A1, A2|1,234.50|2.5|3,086.25");
        EXPECT_EQ(total(), "3,086.25");
        EXPECT_EQ(status(), "1 proizvod(a) trebovano.");
        EXPECT_EQ(usable(), "konfig delete delall refresh print help");
        EXPECT_TRUE(list().isVisible());
        EXPECT_FALSE(win().ProgressBar1->isVisible());
        EXPECT_FALSE(win().findChild<QLabel*>("Label1")->isVisible());
    });
    EXPECT_EQ(win().TotalForPayment(), 3086.25F);
}

TEST_F(RequisitionList, UnderACommaAmountsAndQuantitiesHaveIt) {
    QLocale::setDefault(QLocale("de_DE"));
    draw(12, "Asus", "Ploca", 1234.5F, 2.5F);
    show([&] {
        EXPECT_EQ(cell("K12", RequisitionColumn::Price), "1.234,50");
        EXPECT_EQ(cell("K12", RequisitionColumn::Quantity), "2,5");
        EXPECT_EQ(cell("K12", RequisitionColumn::Amount), "3.086,25");
        EXPECT_EQ(total(), "3.086,25");
    });
    EXPECT_EQ(win().TotalForPayment(), 3086.25F);
}

TEST_F(RequisitionList, DinarsAreCountedAtTheRateAndTheFileKeepsEuro) {
    CeneDinarske = true;
    KursKupovni = 117.5F;
    draw(12, "Asus", "Ploca", 10.5F, 2);
    show([&] {
        EXPECT_EQ(list().columns().text(6), "Cena [DIN]");
        EXPECT_EQ(cell("K12", RequisitionColumn::Price), "1,233.75");
        EXPECT_EQ(cell("K12", RequisitionColumn::Amount), "2,467.50");
    });
    EXPECT_EQ(win().TotalForPayment(), 2467.5F);
    EXPECT_EQ(valueOf("InvoiceData", "OpremaID", 12, "Cena").asSingle(), 10.5F);
}

// No computer holds these prices exactly; the customer's pencil does.
TEST_F(RequisitionList, EverydayPricesAddUpAsOnTheCustomersPaper) {
    KursKupovni = 117.37F;
    draw(11, "Asus", "Adapter", 19.99F, 3);
    draw(12, "Belkin", "Kabl", 0.1F, 7);
    draw(13, "Kingston", "Modul", 33.335F, 2);
    const auto figures = [&] {
        QStringList all;
        for (const char* row : {"K11", "K12", "K13"}) {
            all.append(cell(row, RequisitionColumn::Price) + " x " + cell(row, RequisitionColumn::Quantity) +
                       " = " + cell(row, RequisitionColumn::Amount));
        }
        return all.join("; ") + "; " + total();
    };
    show([&] {
        EXPECT_EQ(figures(), "19.99 x 3 = 59.97; 0.10 x 7 = 0.70; 33.34 x 2 = 66.67; 127.34");
        CeneDinarske = true;
        press(Qt::Key_F5);
        EXPECT_EQ(figures(),
                  "2,346.23 x 3 = 7,038.68; 11.74 x 7 = 82.16; 3,912.53 x 2 = 7,825.06; 14,945.90");
    });
    EXPECT_EQ(win().TotalForPayment(), 14945.9F);
}

TEST_F(RequisitionList, EnterLeavesTheListAsItIs) {
    drawThree();
    show([&] {
        clickRow("K12");
        press(Qt::Key_Return);
        press(Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_TRUE(win().isVisible());
        EXPECT_EQ(names(), "Beta,Gama,Alfa");
        EXPECT_EQ(selectedKey(), "K12");
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_TRUE(launched.isEmpty());
}

TEST_F(RequisitionList, TheTotalAddsUpTheAmountsOnShow) {
    for (int product : {11, 12, 13}) {
        draw(product, "Asus", "Sitnica", 0.335F, 1);
    }
    show([&] {
        EXPECT_EQ(cell("K11", RequisitionColumn::Amount), "0.34");
        EXPECT_EQ(total(), "1.02");
        EXPECT_EQ(status(), "3 proizvod(a) trebovano.");
    });
    EXPECT_EQ(win().TotalForPayment(), 1.02F);
}

TEST_F(RequisitionList, AFieldThatIsNullIsEmpty) {
    draw(12, "Asus", "Ploca", 10, 1,
         {{"Proizvodjac", dao::Value()}, {"SN", dao::Value()}, {"JM", dao::Value()}});
    show([&] {
        EXPECT_EQ(cell("K12", RequisitionColumn::Manufacturer), "");
        EXPECT_EQ(cell("K12", RequisitionColumn::SerialNumber), "");
        EXPECT_EQ(list().item("K12").Tag, "");
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

// The catalogue leaves the price empty where it cannot be told; what was drawn is in the list all the same.
TEST_F(RequisitionList, ARowWithoutAPriceShowsItsQuantityAndNeverAnothersPrice) {
    draw(11, "Asus", "Ploca", 10, 1);
    draw(12, "Seagate", "Disk", 0, 3, {{"Cena", dao::Value()}});
    draw(13, "Intel", "Procesor", 20, 2);
    show([&] {
        EXPECT_EQ(names(), "Ploca,Disk,Procesor");
        EXPECT_EQ(list().item("K12").subItems.join('|'), "Diskovi|Disk|opis|SN1||3|");
        EXPECT_EQ(list().item("K13").subItems.mid(4).join('|'), "20.00|2|40.00");
        EXPECT_EQ(total(), "50.00");
        EXPECT_EQ(status(), "3 proizvod(a) trebovano.");
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom popunjavanja liste trebovanih proizvoda:\n\n[94] "))
            << boxes.lastText().toStdString();
    });
    EXPECT_EQ(win().TotalForPayment(), 50.0F);
}

TEST_F(RequisitionList, ARowWithoutAQuantityShowsItsPrice) {
    draw(11, "Asus", "Ploca", 10, 1);
    draw(12, "Seagate", "Disk", 7.5F, 0, {{"Stanje", dao::Value()}});
    show([&] {
        EXPECT_EQ(list().item("K12").subItems.mid(4).join('|'), "7.50||");
        EXPECT_EQ(total(), "10.00");
    });
}

TEST_F(RequisitionList, OnlyTheServicesOwnRowsAreShown) {
    draw(11, "Asus", "Ploca", 10, 1);
    const int another = addService(addComputer(addClient("Mikic")));
    draw(12, "Asus", "Tudja", 10, 1, {{"ServiceID", another}});
    show([&] { EXPECT_EQ(names(), "Ploca"); });
}

TEST_F(RequisitionList, AProductThatStandsTwiceIsToldAndStillCharged) {
    draw(11, "Asus", "Ploca", 10, 1);
    draw(11, "Asus", "Ploca", 10, 1);
    show([&] {
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Exclamation);
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom popunjavanja liste trebovanih proizvoda:\n\n[35602] "))
            << boxes.lastText().toStdString();
        EXPECT_TRUE(boxes.lastText().contains(" ; Code line no.: "));
        EXPECT_TRUE(boxes.lastText().endsWith("\nOccured in procedure FillListView of Form frmInvoiceEx"));
        EXPECT_EQ(total(), "20.00");
    });
}

TEST_F(RequisitionList, AFileThatDoesNotOpenIsToldAndTheWindowLives) {
    draw(11, "Asus", "Ploca", 10, 1);
    closeDatabases();
    settings::setText(settings::DatabasePath, path("nema.mdb"));
    show([&] {
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().contains("\n\n[3024] ")) << boxes.lastText().toStdString();
        EXPECT_EQ(keys(), QStringList{"total"});
        settings::setText(settings::DatabasePath, databaseFile());
        press(Qt::Key_F5);
        EXPECT_EQ(names(), "Ploca");
        EXPECT_EQ(boxes.asked.size(), 1);
    });
}

TEST_F(RequisitionList, TheConnectTextHoldsThePasswordOnceHoweverOftenItIsRead) {
    show([&] {
        const QString once = win().Data1->Connect;
        EXPECT_EQ(once, ";Pwd=" + BuildDatabasePassword());
        press(Qt::Key_F5);
        press(Qt::Key_F5);
        EXPECT_EQ(win().Data1->Connect, once);
    });
}

TEST_F(RequisitionList, F5ShowsWhatAnotherWorkstationHasDrawn) {
    draw(11, "Asus", "Ploca", 10, 1);
    auto other = otherWorkstation("UPDATE InvoiceData SET Stanje=4 WHERE OpremaID=11");
    show([&] {
        EXPECT_EQ(total(), "10.00");
        doIts(*other);
        press(Qt::Key_F5);
        EXPECT_EQ(total(), "40.00");
        EXPECT_TRUE(list().hasFocus());
    });
    EXPECT_EQ(win().TotalForPayment(), 40.0F);
}

// A requisition with more rows than the screen shows: product 100 + i, i pieces for half a euro each.
class LongRequisition : public RequisitionWindow {
 protected:
    static constexpr int kRows = 400;
    void SetUp() override {
        RequisitionWindow::SetUp();
        openDatabase();
        dao::DBEngine::BeginTrans();
        for (int i = 1; i <= kRows; ++i) {
            draw(100 + i, QStringLiteral("Maker %1").arg(i), QStringLiteral("Ploča %1").arg(i), 0.5F,
                 static_cast<float>(i));
        }
        dao::DBEngine::CommitTrans();
    }
    static QString rowText(int i) {
        return QStringLiteral("Maker %1|Diskovi|Ploča %1|opis|SN1|0.50|%1|%2").arg(i).arg(i * 0.5, 0, 'f', 2);
    }
    QString shown(const QString& rowKey) {
        const platform::ListItem& row = list().item(rowKey);
        return row.Text + QLatin1Char('|') + row.subItems.join('|');
    }
};

TEST_F(LongRequisition, RowsNobodySeesAreNotWritten) {
    show([&] {
        EXPECT_EQ(list().count(), kRows + 1);
        EXPECT_LT(list().madeCount(), 100);
        EXPECT_EQ(total(), "40,100.00");
    });
}

TEST_F(LongRequisition, EachRowIsItsProduct) {
    show([&] {
        QStringList expected{"total"};
        for (int i = 1; i <= kRows; ++i) {
            EXPECT_EQ(shown(key(100 + i)), rowText(i));
            EXPECT_EQ(list().indexOf(key(100 + i)), i + 1);
            expected.append(key(100 + i));
        }
        EXPECT_EQ(keys(), expected);
        for (const char* none : {"K", "K0", "K100", "K0101", "K+101", "X101", "101", ""}) {
            EXPECT_FALSE(list().hasItem(none)) << none;
        }
    });
}

// The customer adds up what stands there: a row seen later is the one that went into the total.
TEST_F(LongRequisition, RowsAreAsTheTotalFoundThem) {
    auto other = otherWorkstation("UPDATE InvoiceData SET Stanje=1000, Naziv='Druga' WHERE OpremaID>=499");
    show([&] {
        doIts(*other);
        EXPECT_EQ(shown("K500"), rowText(400));
        EXPECT_EQ(total(), "40,100.00");
        press(Qt::Key_F5);
        EXPECT_EQ(shown("K500"), "Maker 400|Diskovi|Druga|opis|SN1|0.50|1000|500.00");
        EXPECT_EQ(total(), "40,700.50");
    });
}

TEST_F(LongRequisition, ALetterFindsAProductThatNobodyHasSeen) {
    show([&] {
        list().select(1);
        QTest::keyClicks(&list(), "maker 377");
        EXPECT_EQ(selectedKey(), "K477");
    });
}

TEST_F(LongRequisition, TheUnitIsThatOfTheFilling) {
    show([&] {
        CeneDinarske = true;
        KursKupovni = 100;
        EXPECT_EQ(shown("K400"), rowText(300)) << "under a header that still says euro";
        press(Qt::Key_F5);
        EXPECT_EQ(cell("K400", RequisitionColumn::Price), "50.00");
        EXPECT_EQ(cell("K400", RequisitionColumn::Amount), "15,000.00");
        EXPECT_EQ(total(), "4,010,000.00");
        CeneDinarske = false;
    });
}

TEST_F(RequisitionList, TheListIsFilledOnlyOnceByActivation) {
    show([&] {
        draw(11, "Asus", "Ploca", 10, 1);
        QEvent again(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&win(), &again);
        EXPECT_EQ(list().count(), 1);
    });
}

TEST_F(RequisitionList, AWindowShutAtOnceStillGivesItsTotal) {
    draw(11, "Asus", "Ploca", 10, 1);
    QMetaObject::invokeMethod(
        &win(), [&] { win().reject(); }, Qt::QueuedConnection);
    win().Display();
    EXPECT_EQ(win().TotalForPayment(), 10.0F);
}

TEST_F(RequisitionList, WhileItIsFilledAWordStandsInItsPlaceAndTheStatusBarShowsHowFar) {
    drawThree();
    show([&] {
        const QSize size = list().size();
        int seen = 0;
        // The filling lets what waits have its turn once.
        QTimer::singleShot(0, &win(), [&] {
            ++seen;
            auto* word = win().findChild<QLabel*>("Label1");
            EXPECT_EQ(word->text(), "Popunjavanje podacima je u toku... Molim sacekajte...");
            EXPECT_TRUE(word->isVisible());
            EXPECT_EQ(word->size(), size);
            EXPECT_FALSE(list().isVisible());
            ASSERT_NE(QApplication::overrideCursor(), nullptr);
            EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
            const QProgressBar& bar = *win().ProgressBar1;
            EXPECT_TRUE(bar.isVisible());
            EXPECT_TRUE(win().StatusBar1->isAncestorOf(&bar));
            EXPECT_EQ(bar.minimum(), 0);
            EXPECT_EQ(bar.maximum(), 3);
            EXPECT_EQ(bar.value(), 0);
            EXPECT_FALSE(bar.isTextVisible());
        });
        win().TrebovanjeRefresh(false);
        EXPECT_EQ(seen, 1);
        EXPECT_EQ(list().size(), size);
        EXPECT_TRUE(list().isVisible());
        EXPECT_TRUE(list().hasFocus());
        EXPECT_FALSE(win().ProgressBar1->isVisible());
        EXPECT_FALSE(win().StatusBar1->isAncestorOf(win().ProgressBar1));
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    });
}

TEST_F(RequisitionList, TheRefreshButtonReadsTheFileAgain) {
    show([&] {
        draw(11, "Asus", "Ploca", 10, 1);
        tool("refresh");
        EXPECT_EQ(names(), "Ploca");
    });
}

// A colleague gives a product back just as the list is being filled.
TEST_F(RequisitionList, ARowThatVanishesWhileTheListIsFilledIsLeftOutAndTold) {
    drawThree();
    show([&] {
        QTimer::singleShot(0, &win(), [&] {
            openDatabase().Execute("DELETE FROM InvoiceData WHERE OpremaID=12");
            closeDatabases();
        });
        press(Qt::Key_F5);
        EXPECT_EQ(names(), "Beta,Alfa");
        EXPECT_EQ(total(), "90.00");
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().contains("\n\n[3167] ")) << boxes.lastText().toStdString();
    });
}

// Selection
// --------------------------------------------------------------------------------------------------------

TEST_F(RequisitionList, TheSelectionSurvivesARefreshByItsKey) {
    drawThree();
    show([&] {
        clickRow("K12");
        press(Qt::Key_F5);
        EXPECT_EQ(selectedKey(), "K12");
        win().UpdateDATA("K13", false);
        EXPECT_EQ(selectedKey(), "K13");
        win().UpdateDATA("K99", false);
        EXPECT_EQ(selectedKey(), "") << "a product that is not there selects nothing";
        win().UpdateDATA({}, false);
        EXPECT_EQ(selectedKey(), "total") << "the first row";
    });
}

TEST_F(RequisitionList, ASelectedRowThatIsGoneLeavesNothingSelected) {
    drawThree();
    show([&] {
        clickRow("K12");
        openDatabase().Execute("DELETE FROM InvoiceData WHERE OpremaID=12");
        press(Qt::Key_F5);
        EXPECT_EQ(selectedKey(), "");
        EXPECT_FALSE(canUse("delete"));
        EXPECT_TRUE(canUse("delall"));
    });
}

TEST_F(RequisitionList, AClickOnTheTotalTakesDeleteAway) {
    drawThree();
    show([&] {
        clickRow("K12");
        EXPECT_TRUE(canUse("delete"));
        clickRow("total");
        EXPECT_FALSE(canUse("delete"));
        clickRow("K11");
        EXPECT_TRUE(canUse("delete"));
    });
}

// Sorting
// ----------------------------------------------------------------------------------------------------------

TEST_F(RequisitionList, AHeaderSortsInTheFileAndTurnsRoundAtTheSecondClick) {
    drawThree();
    show([&] {
        EXPECT_EQ(names(), "Beta,Gama,Alfa");
        EXPECT_FALSE(canUse("unsort"));
        clickHeader(3);
        EXPECT_EQ(names(), "Alfa,Beta,Gama");
        EXPECT_EQ(list().columns().icon(3), "ASC");
        EXPECT_TRUE(canUse("unsort"));
        clickHeader(3);
        EXPECT_EQ(names(), "Gama,Beta,Alfa");
        EXPECT_EQ(list().columns().icon(3), "DESC");
        EXPECT_EQ(win().Data1Tag, "1Naziv1");
        clickHeader(6);
        EXPECT_EQ(names(), "Gama,Alfa,Beta") << "by price, as numbers";
        EXPECT_EQ(list().columns().icon(3), "dummy");
        EXPECT_EQ(list().columns().icon(6), "ASC");
    });
    unload();
    EXPECT_EQ(kept("LVWColumnSort"), "1Cena0");
}

TEST_F(RequisitionList, EachHeaderSortsByItsField) {
    drawThree();
    show([&] {
        const char* const fields[] = {"Proizvodjac", "Grupa", "Naziv", "Opis", "SN", "Cena", "Stanje"};
        for (int column = 7; column >= 1; --column) {
            clickHeader(column);
            const QString field = fields[column - 1];
            EXPECT_EQ(win().Data1Tag, "1" + field + "0");
            EXPECT_EQ(win().Data1->RecordSource(),
                      QString("SELECT * FROM InvoiceData WHERE ServiceID=%1 ORDER BY %2 ASC")
                          .arg(service)
                          .arg(field));
            EXPECT_EQ(list().columns().icon(column), "ASC");
        }
        press(Qt::Key_F8);
        EXPECT_EQ(win().Data1->RecordSource(),
                  QString("SELECT * FROM InvoiceData WHERE ServiceID=%1").arg(service));
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(RequisitionList, TheFieldThatWouldSortTurnsRoundAtItsFirstClick) {
    drawThree();
    show([&] {
        clickHeader(1);
        EXPECT_EQ(names(), "Beta,Alfa,Gama") << "Seagate, Intel, Asus";
        EXPECT_EQ(list().columns().icon(1), "DESC");
    });
}

TEST_F(RequisitionList, SubtotalsCannotBeSorted) {
    drawThree();
    show([&] {
        clickHeader(3);
        clickHeader(8);
        EXPECT_EQ(boxes.lastText(), "Ne mozete sortirati po medjutotalu.");
        EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Information);
        EXPECT_EQ(names(), "Alfa,Beta,Gama");
        EXPECT_EQ(win().Data1Tag, "1Naziv0");
    });
}

TEST_F(RequisitionList, HeadersOfAnEmptyListDoNothing) {
    show([&] {
        clickHeader(8);
        clickHeader(3);
        EXPECT_TRUE(boxes.asked.isEmpty());
        EXPECT_EQ(win().Data1Tag, "0Proizvodjac0");
    });
}

TEST_F(RequisitionList, F8GoesBackToTheOrderOfTheTable) {
    drawThree();
    show([&] {
        clickHeader(3);
        press(Qt::Key_F8);
        EXPECT_EQ(names(), "Beta,Gama,Alfa");
        EXPECT_EQ(list().columns().icon(3), "");
        EXPECT_FALSE(canUse("unsort"));
        clickHeader(3);
        tool("unsort");
        EXPECT_EQ(names(), "Beta,Gama,Alfa");
    });
    unload();
    EXPECT_EQ(kept("LVWColumnSort"), "0Naziv0");
}

TEST_F(RequisitionList, TheOrderOfLastTimeComesBack) {
    drawThree();
    keep("LVWColumnSort", "1Naziv1");
    show([&] {
        EXPECT_EQ(names(), "Gama,Beta,Alfa");
        EXPECT_EQ(list().columns().icon(3), "DESC");
    });
}

TEST_F(RequisitionList, AnEmptyTagIsTheDefault) {
    drawThree();
    keep("LVWColumnSort", "");
    show([&] { EXPECT_EQ(win().Data1Tag, "0Proizvodjac0"); });
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(RequisitionList, ATagThatCannotBeReadIsTold) {
    drawThree();
    keep("LVWColumnSort", "xNaziv0");
    show([&] {
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(boxes.asked[0].title, "frmInvoiceEx -> GetSortTagData(xNaziv0)");
        EXPECT_TRUE(boxes.asked[0].help) << "a Help button";
        EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Exclamation);
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom odredjivanja svojstava sortiranja:\n\n[13] "));
        EXPECT_TRUE(boxes.lastText().contains("\nLinija koda: "));
        EXPECT_EQ(names(), "Beta,Gama,Alfa");
    });
    EXPECT_EQ(win().GetSortTagData("?"), (platform::SortTag{false, "", "ASC"}));
}

TEST_F(RequisitionList, ATagHasItsThreeParts) {
    EXPECT_EQ(win().GetSortTagData("1Stanje1"), (platform::SortTag{true, "Stanje", "DESC"}));
    EXPECT_EQ(win().GetSortTagData("0Naziv0"), (platform::SortTag{false, "Naziv", "ASC"}));
    EXPECT_EQ(win().GetSortTagData("7SN9"), (platform::SortTag{true, "SN", "DESC"}))
        << "any figure but nought is a yes, and any other end than nought turns the order round";
    EXPECT_EQ(win().GetSortTagData("1Opisx"), (platform::SortTag{true, "Opis", "DESC"}));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(RequisitionList, AStoredOrderBySubtotalFailsAndF8MendsIt) {
    drawThree();
    keep("LVWColumnSort", "1Medjutotal0");
    show([&] {
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom popunjavanja liste trebovanih proizvoda:\n\n[3061] "))
            << boxes.lastText().toStdString();
        EXPECT_EQ(keys(), QStringList{"total"});
        EXPECT_EQ(status(), "");
        EXPECT_EQ(usable(), "konfig refresh help");
        press(Qt::Key_F8);
        EXPECT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(names(), "Beta,Gama,Alfa");
    });
    EXPECT_EQ(win().TotalForPayment(), 110.0F);
}

// Columns and place
// ------------------------------------------------------------------------------------------------

TEST_F(RequisitionList, HasEightColumnsAndTheUnitInThePrice) {
    show([&] {
        QStringList headers, fields;
        for (int i = 1; i <= list().columns().count(); ++i) {
            headers.append(list().columns().text(i));
            fields.append(list().columns().key(i));
        }
        EXPECT_EQ(headers.join('|'),
                  "Proizvodjac|Grupa|Naziv|Opis|Serijski broj|Cena [EUR]|Trebovano|Medjutotal");
        EXPECT_EQ(fields.join('|'), "Proizvodjac|Grupa|Naziv|Opis|SN|Cena|Stanje|Medjutotal");
        EXPECT_EQ(win().windowTitle(), "Cenovna Lista Usluge");
    });
}

TEST_F(RequisitionList, FiguresStandAtTheRight) {
    draw(11, "Asus", "Ploca", 10, 1);
    show([&] {
        for (int column = 1; column <= 8; ++column) {
            const int wanted = column >= 6 ? Qt::AlignRight : Qt::AlignLeft;
            const QAbstractItemModel& model = *list().model();
            EXPECT_TRUE(model.headerData(column - 1, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & wanted)
                << column;
            EXPECT_TRUE(model.index(1, column - 1).data(Qt::TextAlignmentRole).toInt() & wanted) << column;
        }
    });
}

TEST_F(RequisitionList, TheVeryFirstOpeningTellsOfItsWidthsOnce) {
    settings::setText(settings::find("frmInvoiceEx", "LVWColumnWidths"),
                      QLatin1String(settings::find("frmInvoiceEx", "LVWColumnWidths").defaultValue));
    show([&] {
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Critical);
        EXPECT_TRUE(boxes.lastText().startsWith(
            "Neocekivana greska prilikom stvaranja ListView kontrole:\n\n[35600] "))
            << boxes.lastText().toStdString();
        EXPECT_TRUE(boxes.lastText().contains("\nLinija koda: "));
        EXPECT_EQ(list().columns().width(7), 0);
        EXPECT_EQ(list().columns().width(8), 1440);
        EXPECT_EQ(total(), "0.00") << "the window works";
    });
    unload();
    EXPECT_EQ(kept("LVWColumnWidths"), "1440;1440;1440;1440;1440;1440;0;1440");
    show([&] { EXPECT_EQ(boxes.asked.size(), 1) << "not a second time"; });
}

TEST_F(RequisitionList, TheQuantityThatStartsWithoutAWidthIsBroughtOutInTheHeader) {
    keep("LVWColumnWidths", "1440;1440;1440;1440;1440;1440;0;1440");
    show([&] {
        QWidget* header = list().header()->viewport();
        QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(5, 5), header->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(header, &asked);
        auto* menu = list().findChild<QMenu*>("ShowColumns");
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->title(), "Prikazi kolone");
        for (QAction* action : menu->actions()) {
            if (action->text() == "Trebovano") {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            }
        }
        EXPECT_EQ(list().columns().width(7), 1440);
    });
    unload();
    EXPECT_EQ(kept("LVWColumnWidths"), "1440;1440;1440;1440;1440;1440;1440;1440");
}

TEST_F(RequisitionList, ColumnsAndPlaceAreKeptAtUnloadOnly) {
    keep("WindowData", "450;600;10500;7500");
    keep("LVWColumnPositions", "2;1;3;4;5;6;7;8");
    show([&] {
        EXPECT_EQ(win().pos(), placeOnScreen(win(), {30, 40}));
        EXPECT_EQ(win().size(), sizeOnScreen(win(), 10500, 7500));
        EXPECT_EQ(list().columns().position(1), 2);
        list().columns().setWidth(3, 3000);
        win().move(60, 80);
        win().resize(720, 480);
    });
    EXPECT_EQ(kept("WindowData"), "450;600;10500;7500");
    win().Unload();
    const double twips = 15 / platform::letterFactor();
    EXPECT_EQ(kept("WindowData"),
              QString("900;1200;%1;%2").arg(qRound(720 * twips)).arg(qRound(480 * twips)));
    EXPECT_EQ(kept("LVWColumnWidths"), "1440;1440;3000;1440;1440;1440;1440;1440");
    EXPECT_EQ(kept("LVWColumnPositions"), "2;1;3;4;5;6;7;8");
    EXPECT_EQ(kept("LVWColumnSort"), "0Proizvodjac0");
    keep("WindowData", "0;0;10500;7500");
    unload();
    EXPECT_EQ(kept("WindowData"), "0;0;10500;7500") << "kept once";
}

TEST_F(RequisitionList, APlaceWithTooFewFiguresGetsTheUsualSize) {
    keep("WindowData", "450;600");
    show([&] { EXPECT_EQ(win().size(), sizeOnScreen(win(), 12000, 8000)); });
}

TEST_F(RequisitionList, TheFirstTimeItStandsAtItsUsualPlace) {
    EXPECT_EQ(kept("WindowData"), "800;800;12000;8000");
    show([&] {
        EXPECT_EQ(win().pos(), placeOnScreen(win(), {53, 53}));
        EXPECT_EQ(win().size(), sizeOnScreen(win(), 12000, 8000));
    });
}

TEST_F(RequisitionList, MinimisedItKeepsItsColumnsAndNotItsPlace) {
    keep("WindowData", "450;600;10500;7500");
    show([&] {
        list().columns().setWidth(3, 3000);
        win().move(60, 80);
        win().setWindowState(Qt::WindowMinimized);
    });
    unload();
    EXPECT_EQ(kept("WindowData"), "450;600;10500;7500");
    EXPECT_EQ(kept("LVWColumnWidths"), "1440;1440;3000;1440;1440;1440;1440;1440");
}

// Toolbar and status text
// ------------------------------------------------------------------------------------------

TEST_F(RequisitionList, TheTotalAndTheHeaderHaveTheirPictures) {
    drawThree();
    show([&] {
        const QAbstractItemModel& model = *list().model();
        const auto picture = [](const QVariant& icon) { return icon.value<QIcon>().pixmap(16).toImage(); };
        const auto ofRow = [&](int row) { return picture(model.index(row, 0).data(Qt::DecorationRole)); };
        EXPECT_FALSE(ofRow(0).isNull());
        EXPECT_FALSE(ofRow(1).isNull());
        EXPECT_NE(ofRow(0), ofRow(1));
        EXPECT_EQ(ofRow(1), ofRow(2));
        const auto ofHeader = [&] {
            return picture(model.headerData(2, Qt::Horizontal, Qt::DecorationRole));
        };
        EXPECT_TRUE(ofHeader().isNull());
        clickHeader(3);
        const QImage up = ofHeader();
        clickHeader(3);
        EXPECT_FALSE(up.isNull());
        EXPECT_FALSE(ofHeader().isNull());
        EXPECT_NE(ofHeader(), up);
    });
}

TEST_F(RequisitionList, TheToolbarHasItsButtonsInOrder) {
    QStringList all;
    for (const QAction* action : win().Toolbar1->actions()) {
        all.append(action->isSeparator() ? QString("-") : action->text());
    }
    EXPECT_EQ(all.join('|'),
              "Konfigurator|-|Izbrisi|Izbrisi Sve|-|Azuriraj|-|Stampaj|-|Ponisti Sortiranje|-|Pomoc");
    for (const QAction* action : win().Toolbar1->actions()) {
        EXPECT_EQ(action->icon().isNull(), action->isSeparator()) << action->text().toStdString();
    }
    EXPECT_EQ(win().Toolbar1->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    EXPECT_TRUE(win().windowFlags().testFlag(Qt::WindowMaximizeButtonHint)) << "a long list wants room";
}

TEST_F(RequisitionList, AButtonUnderThePointerTellsWhatItDoesWhileItCanBeUsed) {
    show([&] {
        const std::pair<const char*, const char*> told[] = {
            {"konfig", "Otvara prozor Konfiguratora (pregled i trebovanje opreme) - F12."},
            {"refresh", "Popunjava listu najsvezijim podacima iza baze podataka - F5."},
            {"help", "Prikazuje pomoc vezanu za koriscenje ove forme - F1."}};
        for (const auto& [button, text] : told) {
            moveOver(face(button));
            EXPECT_EQ(status(), text);
            EXPECT_EQ(win().toolbarButton(button)->toolTip(), text);
        }
        for (QWidget* place :
             {static_cast<QWidget*>(list().viewport()), static_cast<QWidget*>(&win()),
              static_cast<QWidget*>(win().StatusBar1), static_cast<QWidget*>(win().ProgressBar1)}) {
            moveOver(face("refresh"));
            moveOver(place);
            EXPECT_EQ(status(), "Nema dobavljaca u bazi podataka");
        }
        moveOver(face("delete"));
        EXPECT_EQ(status(), "Nema dobavljaca u bazi podataka") << "a grey button keeps silent";
    });
}

TEST_F(RequisitionList, EveryButtonHasItsHint) {
    EXPECT_EQ(win().toolbarButton("delete")->toolTip(), "Brise trenutno izabranu stavku u listi - Del.");
    EXPECT_EQ(win().toolbarButton("delall")->toolTip(), "Brise sve stavke iz liste - Shift+Del");
    EXPECT_EQ(win().toolbarButton("print")->toolTip(), "Stampa profakturu/fakturu - Ctrl+P.");
    EXPECT_EQ(win().toolbarButton("unsort")->toolTip(),
              "Ponistava sortiranje liste (ukoliko ga je bilo) - F8.");
}

// With a viewer there that would show a page, and a help file that it would be shown from.
TEST_F(RequisitionList, HelpSaysNothing) {
    static int opened;
    opened = 0;
    setHelpViewer([](const QString&, HelpCommand command, int) {
        opened += command == HELP_QUIT ? 0 : 1;
        return true;
    });
    show([&] {
        tool("help");
        press(Qt::Key_F1);
        EXPECT_TRUE(win().isVisible());
        showHelp(1);
        EXPECT_EQ(opened, 1) << "only what was asked for by hand";
    });
    setHelpViewer(nullptr);
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(RequisitionList, EscapeAndTheCloseBoxHideIt) {
    show([&] {
        press(Qt::Key_Escape);
        EXPECT_FALSE(win().isVisible());
    });
    show([&] {
        win().close();
        EXPECT_FALSE(win().isVisible());
    });
    EXPECT_TRUE(exists());
}

TEST_F(RequisitionList, TheOwnerIsItsParent) {
    QWidget owner;
    win().setParentForm(&owner);
    EXPECT_EQ(win().parentWidget(), &owner);
    EXPECT_TRUE(win().isWindow());
    EXPECT_EQ(win().JedinicaMere, "Kom.");
    EXPECT_EQ(win().ServiceID(), service);
    unload();
}

// The catalogue
// ----------------------------------------------------------------------------------------------------

TEST_F(RequisitionList, F12AndTheFirstButtonOpenTheCatalogueOverIt) {
    show([&] {
        int opened = 0;
        const auto closeIt = [&] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (auto* catalogue = qobject_cast<frmKonfiguratorEx*>(window)) {
                    ++opened;
                    EXPECT_EQ(catalogue->ParentForm, &win().catalogueParent());
                    EXPECT_EQ(catalogue->ParentForm->asWindow(), &win());
                    catalogue->reject();
                }
            }
        };
        QTimer::singleShot(50, &win(), closeIt);
        press(Qt::Key_F12);
        EXPECT_EQ(opened, 1);
        QTimer::singleShot(50, &win(), closeIt);
        tool("konfig");
        EXPECT_EQ(opened, 2);
        EXPECT_TRUE(win().isVisible());
    });
}

struct DragNotes : ParentDragEvents {
    QStringList told;
    void parentDragOver(State state, bool over) override {
        const char* const names[] = {"enter", "over", "leave"};
        told.append(QLatin1String(names[static_cast<int>(state)]) + (over ? QString("+") : QString("-")));
    }
    void parentDrop() override { told.append("drop"); }
};

class RequisitionDrag : public RequisitionList {
 protected:
    template <typename Event, typename... More>
    bool send(const QPointF& place, const More&... more) {
        Event event(place.toPoint(), Qt::CopyAction, &product, Qt::LeftButton, Qt::NoModifier, more...);
        event.ignore();
        QCoreApplication::sendEvent(win().windowHandle(), &event);
        return event.isAccepted();
    }
    QPoint inList() { return list().mapTo(&win(), list().rect().center()); }
    QPoint onToolbar() { return face("konfig")->mapTo(&win(), QPoint(5, 5)); }
    void leave() {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(win().windowHandle(), &event);
    }
    QMimeData product;
    DragNotes notes;
};

TEST_F(RequisitionDrag, TellsTheCatalogueWhetherItIsOverTheList) {
    product.setData(kProductDragFormat, "K1");
    show([&] {
        win().catalogueParent().setDragEvents(&notes);
        EXPECT_TRUE(send<QDragEnterEvent>(onToolbar()));
        EXPECT_TRUE(send<QDragMoveEvent>(inList()));
        EXPECT_TRUE(send<QDragMoveEvent>(list().geometry().topLeft())) << "its edge is not inside";
        EXPECT_TRUE(send<QDragMoveEvent>(list().geometry().topLeft() + QPoint(1, 1)));
        leave();
        EXPECT_EQ(notes.told.join(' '), "enter- over+ over- over+ leave-");
        notes.told.clear();
        send<QDragEnterEvent>(onToolbar());
        send<QDropEvent>(onToolbar());
        EXPECT_EQ(notes.told.last(), "drop") << "anywhere on the window";
        win().catalogueParent().setDragEvents(nullptr);
    });
}

TEST_F(RequisitionDrag, OtherThingsAndNobodyListeningAreRefused) {
    product.setText("K1");
    show([&] {
        win().catalogueParent().setDragEvents(&notes);
        EXPECT_FALSE(send<QDragEnterEvent>(inList()));
        product.setData(kProductDragFormat, "K1");
        win().catalogueParent().setDragEvents(nullptr);
        EXPECT_FALSE(win().acceptDrops());
        EXPECT_FALSE(send<QDragEnterEvent>(inList()));
        EXPECT_TRUE(notes.told.isEmpty());
    });
}

}  // namespace
