#include "catalogue/product_units.h"

#include <QComboBox>
#include <QWidget>

#include "support/fixture.h"

namespace {

struct ProductUnitsTest : DeliveredFixture {
    void SetUp() override {
        DeliveredFixture::SetUp();
        openDatabase().Execute("DELETE * FROM JM");
        for (const char* name : {"Kom.", "m", "Pakovanje", "Pak."}) {
            numbers.push_back(addRow("JM", "AID", {{"Naziv", name}}));
        }
    }
    QString chosenBy(const QString& beginning) {
        units.choose(beginning);
        return units.box()->currentText();
    }
    std::vector<int> numbers;
    QWidget window;
    ProductUnits units{&window};
};

TEST_F(ProductUnitsTest, OffersTheTableWithTheFirstOneChosen) {
    units.fill(false);
    ASSERT_EQ(units.box()->count(), 4);
    EXPECT_EQ(units.box()->itemText(2), "Pakovanje");
    EXPECT_EQ(units.box()->itemData(2).toInt(), numbers[2]);
    EXPECT_EQ(units.box()->currentText(), "Kom.");
    EXPECT_TRUE(units.isChosen());
}

TEST_F(ProductUnitsTest, AnEmptyOneStandsBeforeThemWhereNoneNeedBeChosen) {
    units.fill(true);
    ASSERT_EQ(units.box()->count(), 5);
    EXPECT_EQ(units.box()->itemText(0), "");
    EXPECT_EQ(units.box()->itemData(0).toInt(), -1);
    openDatabase().Execute("DELETE * FROM JM");
    units.fill(true);
    EXPECT_EQ(units.box()->count(), 0) << "but not where there is nothing to choose";
}

TEST_F(ProductUnitsTest, IsChosenByItsBeginningInAnyCase) {
    units.fill(false);
    EXPECT_EQ(chosenBy("pak"), "Pakovanje") << "the first of two";
    EXPECT_EQ(chosenBy("PAK."), "Pak.");
    EXPECT_EQ(chosenBy("ak"), "");
    EXPECT_FALSE(units.isChosen());
    EXPECT_EQ(chosenBy(""), "Kom.");
}

}  // namespace
