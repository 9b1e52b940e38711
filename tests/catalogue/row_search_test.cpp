// A search that could not be made has neither found anything nor found that there is nothing.
#include "catalogue/catalogue_commands.h"

namespace {

using platform::BoxAnswer;

class FailedSearch : public CatalogueCommands {
 protected:
    // From now on no row of the pane is found by its number: its records have none.
    void takeNumbersAway(int pane, const QString& source) {
        platform::DataControl& data = *window().Data1[static_cast<size_t>(pane)];
        data.selection = platform::Selection::statement(source);
        data.Refresh();
    }
};

TEST_F(FailedSearch, DeletesNoProduct) {
    AskBeforeDelete = false;
    fillShop();
    withMonitors([&] {
        clickProduct(2);
        takeNumbersAway(2, "SELECT Naziv FROM Oprema");
        press(&products(), Qt::Key_Delete);
        ASSERT_EQ(boxes.asked.size(), 1);
        expectError(boxes.asked[0], "Neocekivana greska prilikom brisanja proizvoda u bazi podataka:", 3061,
                    occured("DeleteProduct"));
        EXPECT_EQ(productNames(), "17 inca,19 inca");
    });
    EXPECT_EQ(countRows("Oprema"), 5);
}

TEST_F(FailedSearch, DeletesAndRenamesNoGroup) {
    AskBeforeDelete = false;
    fillShop();
    show([&] {
        clickRow(groups(), "Prazna");
        takeNumbersAway(0, "SELECT Grupa FROM Grupe");
        press(&groups(), Qt::Key_Delete);
        ASSERT_EQ(boxes.asked.size(), 1);
        expectError(boxes.asked[0],
                    "Neocekivana greska prilikom promene naziva grupe u bazi podataka (DELETE deo):", 3061,
                    occured("DeleteGrpMft"));
        boxes.inputs = {QString("NOVA")};
        window().EditGrpMft();
        ASSERT_EQ(boxes.asked.size(), 3);
        expectError(boxes.asked[2],
                    "Neocekivana greska prilikom promene naziva grupe u bazi podataka (EDIT deo):", 3061,
                    occured("EditGrpMft"));
        EXPECT_EQ(texts(groups()), "Monitori,Procesori,Prazna");
    });
    EXPECT_EQ(countRows("Grupe"), 3);
    EXPECT_EQ(countRows("SELECT * FROM Grupe WHERE Grupa='NOVA'"), 0);
}

}  // namespace
