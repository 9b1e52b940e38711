// The lists of the catalogue while colleagues delete what is being read.
#include "catalogue/catalogue_commands.h"

namespace {

class frmKonfiguratorExFill : public CatalogueCommands {
 protected:
    // Told once, under its own line, with the engine's number and where it happened.
    void expectFillError(const QString& text, const char* procedure) {
        ASSERT_EQ(boxes.asked.size(), 1) << boxes.lastText().toStdString();
        expectError(boxes.asked[0], text, 3167, " ; Code line no.: ");
        EXPECT_TRUE(boxes.asked[0].text.endsWith(occured(procedure))) << boxes.lastText().toStdString();
    }
};

const char* const kGroupsError = "Neocekivana greska prilikom popunjavanja liste grupa kompjuterske opreme:";
const char* const kManufacturersError =
    "Neocekivana greska prilikom popunjavanja liste proizvodjaca kompjuterske opreme:";
const char* const kProductsError = "Neocekivana greska prilikom popunjavanja liste proizvoda:";

TEST_F(frmKonfiguratorExFill, AGroupThatVanishesMeanwhileIsPassedOver) {
    auto other = colleague("DELETE * FROM Grupe WHERE Grupa='Procesori'");
    fillShop();
    show([&] {
        atFillStart([&] { act(*other); }, [&] { press(&groups(), Qt::Key_F5); });
        EXPECT_EQ(texts(groups()), "Monitori,Prazna");
        EXPECT_EQ(groups().itemData(1), empty);
        products().setFocus();
        groups().setFocus();
        EXPECT_EQ(statusText(), "Broj Grupa proizvoda u bazi podataka: 2");
    });
    expectFillError(kGroupsError, "FillListBox");
}

TEST_F(frmKonfiguratorExFill, AManufacturerThatVanishesMeanwhileIsPassedOver) {
    auto other = colleague("DELETE * FROM Proizvodjaci WHERE Proizvodjac='Adler'");
    fillShop();
    show([&] {
        atFillStart([&] { act(*other); }, [&] { press(&manufacturers(), Qt::Key_F5); });
        EXPECT_EQ(texts(manufacturers()), "Bergen,Celta");
        groups().setFocus();
        manufacturers().setFocus();
        EXPECT_EQ(statusText(), "Broj Proizvodjaca proizvoda u bazi podataka: 2");
    });
    expectFillError(kManufacturersError, "FillListBox");
}

TEST_F(frmKonfiguratorExFill, AProductThatVanishesMeanwhileIsPassedOver) {
    auto other = colleague("DELETE * FROM Oprema WHERE Naziv='19 inca'");
    fillShop();
    addProduct(monitors, adler, "24 inca", 400.0F, 9.0F);
    withMonitors([&] {
        atFillStart([&] { act(*other); }, [&] { press(&products(), Qt::Key_F5); });
        EXPECT_EQ(productNames(), "17 inca,24 inca");
        groups().setFocus();
        products().setFocus();
        EXPECT_EQ(statusText(), "Broj Proizvoda u bazi podataka: 2");
    });
    expectFillError(kProductsError, "FillListView");
}

TEST_F(frmKonfiguratorExFill, WhereAllVanishTheListIsEmptyAndSaysSo) {
    auto other = colleague("DELETE * FROM Oprema");
    fillShop();
    withMonitors([&] {
        atFillStart([&] { act(*other); }, [&] { press(&products(), Qt::Key_F5); });
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(detail(), "");
        groups().setFocus();
        products().setFocus();
        EXPECT_EQ(statusText(), "U bazi podataka nema Proizvoda");
    });
    expectFillError(kProductsError, "FillListView");
}

// Long lists ------------------------------------------------------------------------------------------------

class LongLists : public CatalogueCommands {
 protected:
    // Two hundred names more in each list, S100 to S299.
    void fillLong() {
        fillShop();
        for (int i = 100; i < 300; ++i) {
            addGroup("S" + std::to_string(i));
            addManufacturer("S" + std::to_string(i));
        }
    }
    static int topOf(const QAbstractItemView& list) { return list.indexAt(QPoint(3, 3)).row(); }
};

TEST_F(LongLists, TheRowThatIsSelectedAfterAFillStandsAtTheTop) {
    fillLong();
    show([&] {
        for (platform::ListBox* list : {&groups(), &manufacturers()}) {
            list->setFocus();
            list->setCurSel(100);
            list->scrollToBottom();
            ASSERT_NE(topOf(*list), 100);
            QTest::keyClick(list, Qt::Key_F5);
            EXPECT_EQ(list->curSel(), 100);
            EXPECT_EQ(topOf(*list), 100);
        }
    });
}

TEST_F(LongLists, TheRowThatTypingFindsStandsAtTheTop) {
    fillLong();
    show([&] {
        for (const int pane : {0, 1}) {
            platform::ListBox& list = *window().List1[static_cast<size_t>(pane)];
            search(pane)->setFocus();
            search(pane)->selectAll();
            QTest::keyClicks(search(pane), "S2");
            EXPECT_EQ(search(pane)->text(), "S200");
            EXPECT_EQ(topOf(list), 103);
            EXPECT_EQ(list.curSel(), -1) << "it is found, not chosen";
        }
    });
}

TEST_F(LongLists, AProductThatIsSelectedAfterAFillIsInSight) {
    fillShop();
    int last = 0;
    for (int i = 100; i < 300; ++i) {
        last = addProduct(monitors, adler, "S" + std::to_string(i), 1.0F, 1.0F);
    }
    withMonitors([&] {
        products().select(keyOf(last));
        products().scrollToTop();
        press(&products(), Qt::Key_F5);
        ASSERT_EQ(products().selectedItem()->Key, keyOf(last));
        const QRect row = products().visualRect(products().currentIndex());
        EXPECT_TRUE(products().viewport()->rect().contains(row.center()));
    });
}

}  // namespace
