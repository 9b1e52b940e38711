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

}  // namespace
