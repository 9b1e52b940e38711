// Keys of the catalogue's windows that no command of a pane has.

#include <QPushButton>

#include "catalogue/catalogue_window.h"
#include "catalogue/frmInputBox.h"
#include "catalogue/frmJM.h"
#include "catalogue/frmKonfigInput.h"
#include "catalogue/frmKonfigPrint.h"
#include "common/window_help.h"
#include "support/topics.h"

namespace {

class WindowKeys : public CatalogueWindow {
 protected:
    // `work` happens in the window, which is closed afterwards.
    template <typename Window>
    static void in(Window& window, const std::function<void()>& work) {
        bool seen = false;
        QTimer::singleShot(0, &window, [&] {
            EXPECT_TRUE(waitUntilActive(window));
            work();
            seen = true;
            window.reject();
        });
        window.Display();
        EXPECT_TRUE(seen);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers held = Qt::ControlModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, held);
    }
};

TEST_F(WindowKeys, CtrlFGoesToTheSearchBoxOverTheList) {
    fillShop();
    show([&] {
        clickRow(manufacturers(), QStringLiteral("Adler"));
        press(Qt::Key_F);
        EXPECT_EQ(QApplication::focusWidget(), search(1));
        EXPECT_EQ(search(1)->selectedText(), "Adler");
        clickRow(groups(), QStringLiteral("Monitori"));
        press(Qt::Key_F);
        EXPECT_EQ(QApplication::focusWidget(), search(0));
        clickProduct(1);
        press(Qt::Key_F);
        EXPECT_EQ(QApplication::focusWidget(), search(0)) << "the products have none";
        EXPECT_EQ(productNames(), "17 inca,19 inca") << "looking is not typing";
    });
}

TEST_F(WindowKeys, CtrlFInASearchBoxMarksWhatStandsThere) {
    fillShop();
    show([&] {
        search(1)->setFocus();
        search(1)->clear();
        QTest::keyClicks(search(1), "Be");
        ASSERT_EQ(search(1)->text(), "Bergen");
        press(Qt::Key_F);
        EXPECT_EQ(QApplication::focusWidget(), search(1));
        EXPECT_EQ(search(1)->text(), "Bergen");
        EXPECT_EQ(search(1)->selectedText(), "Bergen");
    });
}

TEST_F(WindowKeys, CtrlPIsOnlyWrittenInTheMenuOfTheProducts) {
    fillShop();
    show([&] {
        clickProduct(1);
        press(Qt::Key_P);
        EXPECT_TRUE(window().isVisible());
        EXPECT_EQ(qobject_cast<frmKonfigPrint*>(QApplication::activeModalWidget()), nullptr);
    });
}

TEST_F(WindowKeys, CtrlAndItsPlaceSortTheProducts) {
    fillShop();
    show([&] {
        clickRow(groups(), QStringLiteral("Monitori"));
        clickProduct(1);
        press(Qt::Key_5);
        EXPECT_EQ(productNames(), "19 inca,17 inca") << "by stock";
        press(Qt::Key_5);
        EXPECT_EQ(productNames(), "17 inca,19 inca");
    });
}

TEST_F(WindowKeys, CtrlPShowsThePriceList) {
    fillShop();
    frmKonfigPrint window;
    int shown = 0;
    window.onShow = [&](ActiveReport1&) { ++shown; };
    in(window, [&] { press(Qt::Key_P); });
    EXPECT_EQ(shown, 1);
}

TEST_F(WindowKeys, CtrlSStoresAProductThatIsComplete) {
    openDatabase();
    frmKonfigInput window;
    window.Naziv = "Disk";
    window.Cena = 5.0F;
    window.Stanje = 2.0F;
    window.JedinicaMere = "Kom.";
    in(window, [&] {
        auto* name = window.findChild<QLineEdit*>("Text1(0)");
        auto* store = window.findChild<QPushButton*>("Command1(1)");
        name->clear();
        ASSERT_FALSE(store->isEnabled());
        press(Qt::Key_S);
        EXPECT_TRUE(window.isVisible()) << "nothing without a name";
        QTest::keyClicks(name, "Disk 2");
        press(Qt::Key_S);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(window.Naziv, "Disk 2");
}

TEST_F(WindowKeys, CtrlSLeavesAFieldThatHoldsNoNumberFirst) {
    openDatabase();
    frmKonfigInput window;
    window.Naziv = "Disk";
    in(window, [&] {
        auto* price = window.findChild<QLineEdit*>("Text1(2)");
        price->setFocus();
        price->clear();
        press(Qt::Key_S);
        EXPECT_EQ(price->text(), "0") << "an empty price is none";
    });
}

TEST_F(WindowKeys, F1OpensTheTopicOfEachWindow) {
    fillShop();
    show([&] { EXPECT_EQ(topicsOfF1(window()), QList<int>({CatalogueTopic})); });
    frmKonfigInput product;
    in(product, [&] { EXPECT_EQ(topicsOfF1(product), QList<int>({ProductTopic})); });
    frmJM units;
    in(units, [&] { EXPECT_EQ(topicsOfF1(units), QList<int>({UnitsTopic})); });
    frmKonfigPrint priceList;
    in(priceList, [&] { EXPECT_EQ(topicsOfF1(priceList), QList<int>({PriceListTopic})); });
    frmInputBox quantity;
    in(quantity, [&] { EXPECT_EQ(topicsOfF1(quantity), QList<int>({DrawTopic})); });
}

}  // namespace
