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

// A group with more products than the screen shows: S1 to S300, i euro and pieces each.
class LongGroup : public CatalogueCommands {
 protected:
    static constexpr int kRows = 300;
    void fillLong() {
        fillShop();
        openDatabase().Execute("DELETE * FROM Oprema");
        dao::DBEngine::BeginTrans();
        for (int i = 1; i <= kRows; ++i) {
            const std::string number = std::to_string(i);
            ids.append(addProduct(monitors, adler, "S" + number, static_cast<float>(i),
                                  static_cast<float>(i % 10), "nota|" + number));
        }
        dao::DBEngine::CommitTrans();
    }
    QString shown(const QString& key) {
        const platform::ListItem& row = products().item(key);
        return (QStringList{row.SmallIcon, row.Text} + row.subItems + QStringList{row.Tag}).join('/');
    }
    static QString rowText(int i) {
        return QStringLiteral("%1/Adler/S%2/opis S%2/%2.00/%3/nota|%2|Kom.")
            .arg(i % 10 == 0 ? "stanjenula" : "stanjeok")
            .arg(i)
            .arg(i % 10);
    }
    QList<int> ids;  // [0] is S1
};

TEST_F(LongGroup, RowsNobodySeesAreNotWritten) {
    fillLong();
    withMonitors([&] {
        EXPECT_EQ(products().count(), kRows);
        EXPECT_LT(products().madeCount(), 100);
    });
}

TEST_F(LongGroup, EachRowIsItsProduct) {
    fillLong();
    withMonitors([&] {
        for (int i = 1; i <= kRows; ++i) {
            const QString key = keyOf(ids[i - 1]);
            EXPECT_EQ(products().item(i).Key, key);
            EXPECT_EQ(shown(key), rowText(i));
        }
        for (const QString& none : {QStringLiteral("K0"), QStringLiteral("K"), keyOf(ids.last() + 1),
                                    'X' + QString::number(ids[0]), "K0" + QString::number(ids[0])}) {
            EXPECT_FALSE(products().hasItem(none)) << none.toStdString();
        }
    });
}

TEST_F(LongGroup, RowsAreAsTheFileHadThemUntilItIsReadAgain) {
    auto other = colleague("UPDATE Oprema SET Naziv='Drugi', Stanje=0, Napomena=NULL WHERE Naziv='S300'");
    fillLong();
    withMonitors([&] {
        act(*other);
        EXPECT_EQ(shown(keyOf(ids.last())), rowText(kRows));
        press(&products(), Qt::Key_F5);
        EXPECT_EQ(shown(keyOf(ids.last())), "stanjenula/Adler/Drugi/opis S300/300.00/0/|Kom.");
    });
}

TEST_F(LongGroup, AProductThatIsDeletedUnseenLeavesTheOthersInTheirPlaces) {
    auto other = colleague("DELETE * FROM Oprema WHERE Naziv='S150'");
    fillLong();
    withMonitors([&] {
        act(*other);
        EXPECT_EQ(shown(keyOf(ids[149])), rowText(150));
        press(&products(), Qt::Key_F5);
        EXPECT_EQ(products().count(), kRows - 1);
        EXPECT_FALSE(products().hasItem(keyOf(ids[149])));
        EXPECT_EQ(products().indexOf(keyOf(ids[150])), 150);
        EXPECT_EQ(shown(keyOf(ids[150])), rowText(151));
    });
}

TEST_F(LongGroup, PricesAreInTheUnitOfTheFilling) {
    fillLong();
    withMonitors([&] {
        CeneDinarske = true;
        press(&products(), Qt::Key_F5);
        EXPECT_EQ(cellOf(products().item(kRows), ProductColumn::Price), "24,000.00");
    });
}

}  // namespace
