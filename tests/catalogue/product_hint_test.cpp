#include "catalogue/product_hint.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QWidget>

namespace {

struct ProductHintTest : ::testing::Test {
    QString hintOf(ProductField field, const QString& text) {
        hint.show(field, text);
        return hint.label()->text();
    }
    QWidget window;
    ProductHint hint{&window};
};

TEST_F(ProductHintTest, OfATextItTellsHowMuchIsLeft) {
    EXPECT_EQ(hintOf(ProductField::Description, "brz"),
              "Max. 255 karaktera - jos je 252 preostalo. Detaljniji opis komponente.");
    EXPECT_EQ(hintOf(ProductField::Note, QString(255, QLatin1Char('x'))),
              "Max. 255 karaktera - jos je 0 preostalo. Dodatne napomene vezane za komponentu.");
}

TEST_F(ProductHintTest, OnlyANameIsAskedForWhileItIsEmpty) {
    EXPECT_EQ(hintOf(ProductField::Name, ""),
              "Max. 255 karaktera - jos je 255 preostalo. Obavezno upisite naziv proizvoda!");
    EXPECT_EQ(hintOf(ProductField::Name, "D"), "Max. 255 karaktera - jos je 254 preostalo. Naziv proizvoda.");
    EXPECT_EQ(hintOf(ProductField::Description, ""),
              "Max. 255 karaktera - jos je 255 preostalo. Detaljniji opis komponente.");
}

TEST_F(ProductHintTest, ANumberHasNoLengthToTell) {
    EXPECT_EQ(hintOf(ProductField::Price, "12"), "Cena komponente u EUR.");
    EXPECT_EQ(hintOf(ProductField::Stock, ""), "Raspoloziva kolicina komponente u magacinu.");
}

TEST_F(ProductHintTest, TheLineKeepsItsPlaceWhileItIsEmpty) {
    const QSize before = hint.label()->minimumSize();
    hint.show(ProductField::Note, "x");
    hint.clear();
    EXPECT_EQ(hint.label()->text(), "");
    EXPECT_EQ(hint.label()->minimumSize(), before);
    EXPECT_GT(before.height(), 0);
}

}  // namespace
