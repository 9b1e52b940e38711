#include "support/looks.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>
#include <functional>

#include "catalogue/ActiveReport1.h"
#include "catalogue/catalogue_window.h"
#include "catalogue/frmInputBox.h"
#include "catalogue/frmJM.h"
#include "catalogue/frmKonfigInput.h"
#include "catalogue/frmKonfigPrint.h"
#include "support/dark_desktop.h"

namespace {

class CatalogueLooks : public CatalogueWindow {
 protected:
    // `work` happens in the window, which is closed afterwards.
    template <typename Window>
    void lookAt(Window& window, const std::function<void()>& work) {
        bool seen = false;
        QTimer::singleShot(0, &window, [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
            work();
            seen = true;
            window.reject();
        });
        window.Display();
        EXPECT_TRUE(seen);
    }
};

TEST_F(CatalogueLooks, OfTheCatalogue) {
    fillShop();
    show([&] {
        clickRow(groups(), QStringLiteral("Monitori"));
        clickRow(manufacturers(), QStringLiteral("Adler"));
        expectLooks(window(), QStringLiteral("catalogue"));
    });
}

TEST_F(CatalogueLooks, TheCatalogueTurnsDarkWithTheDesktop) {
    fillShop();
    QImage turned, opened;
    show([&] { turned = pictureInTheDark(*window().StatusBar1); });
    unload();
    const DarkDesktop dark;
    show([&] { opened = pictureOf(*window().StatusBar1); });
    expectAlike(turned, opened);
}

TEST_F(CatalogueLooks, OfTheQuantityOfADraw) {
    frmInputBox window;
    lookAt(window, [&] { expectLooks(window, QStringLiteral("draw_quantity")); });
}

TEST_F(CatalogueLooks, OfTheUnits) {
    openDatabase();
    frmJM window;
    lookAt(window, [&] { expectLooks(window, QStringLiteral("units")); });
}

TEST_F(CatalogueLooks, OfAProduct) {
    openDatabase();
    frmKonfigInput window;
    window.Proizvodjac = "Acme";
    window.Grupa = "Diskovi";
    lookAt(window, [&] { expectLooks(window, QStringLiteral("product")); });
}

TEST(PaperLooks, OfThePriceListsDesign) {
    ActiveReport1 report;
    expectDesign(report, {"PageHeader", "GroupHeader1", "Detail", "GroupFooter1", "PageFooter"},
                 QStringLiteral("design_price_list"));
}

TEST_F(CatalogueLooks, OfThePriceListsOptions) {
    openDatabase();
    frmKonfigPrint window;
    lookAt(window, [&] { expectLooks(window, QStringLiteral("price_list_options")); });
}

}  // namespace
