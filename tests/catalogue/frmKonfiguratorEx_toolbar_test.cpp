// The toolbar while somebody types in a search box: its buttons work on the list under the box.
#include "catalogue/catalogue_commands.h"

namespace {

using platform::BoxAnswer;

const char* const kGoesOn = "the work goes on in the list";

class ToolbarFromSearchBox : public CatalogueCommands {
 protected:
    // The window, with these two rows chosen and the focus in the search box of a pane.
    void searching(int pane, const std::function<void()>& work) {
        fillShop();
        show([&] {
            clickRow(groups(), "Procesori");
            clickRow(manufacturers(), "Bergen");
            QTest::mouseClick(search(pane), Qt::LeftButton);
            ASSERT_EQ(window().focusWidget(), search(pane));
            work();
        });
    }
};

TEST_F(ToolbarFromSearchBox, NewAddsToItsList) {
    searching(1, [&] {
        boxes.inputs = {QString("DELTA")};
        boxes.answers = {BoxAnswer::No};
        atInput({}, [&] { clickToolbar("new"); });
        EXPECT_EQ(texts(manufacturers()), "Adler,Bergen,Celta,DELTA");
        EXPECT_EQ(window().focusWidget(), &manufacturers()) << kGoesOn;
    });
}

TEST_F(ToolbarFromSearchBox, EditRenamesItsRow) {
    searching(1, [&] {
        boxes.inputs = {QString("BERN")};
        atInput({}, [&] { clickToolbar("edit"); });
        EXPECT_EQ(texts(manufacturers()), "Adler,BERN,Celta");
        EXPECT_EQ(search(1)->text(), "BERN");
        EXPECT_EQ(window().focusWidget(), &manufacturers()) << kGoesOn;
    });
    EXPECT_EQ(valueOf("Proizvodjaci", "ID", bergen, "Proizvodjac").asText(), "BERN");
}

TEST_F(ToolbarFromSearchBox, DeleteTakesItsRow) {
    searching(0, [&] {
        boxes.answers = {BoxAnswer::Yes};
        clickToolbar("delete");
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().startsWith("Upravo se spremate da izbrisete grupu proizvoda"))
            << boxes.lastText().toStdString();
        EXPECT_EQ(texts(groups()), "Monitori,Prazna");
    });
    EXPECT_EQ(countRows("Oprema"), 3);
}

TEST_F(ToolbarFromSearchBox, DeleteAllTakesItsList) {
    searching(1, [&] {
        boxes.answers = {BoxAnswer::Yes};
        clickToolbar("delall");
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(boxes.lastText().startsWith("Upravo se spremate da izbrisete sve proizvodjace"))
            << boxes.lastText().toStdString();
        EXPECT_EQ(texts(manufacturers()), "");
        EXPECT_EQ(window().focusWidget(), &manufacturers()) << kGoesOn;
        EXPECT_EQ(texts(groups()), "Monitori,Procesori,Prazna");
    });
}

TEST_F(ToolbarFromSearchBox, RefreshReadsItsListAgain) {
    searching(0, [&] {
        addGroup("Tastature");
        addManufacturer("Delta");
        clickToolbar("refresh");
        EXPECT_EQ(texts(groups()), "Monitori,Procesori,Prazna,Tastature");
        EXPECT_EQ(groups().selectedText(), "Procesori");
        EXPECT_EQ(texts(manufacturers()), "Adler,Bergen,Celta") << "the other list waits";
    });
}

TEST_F(ToolbarFromSearchBox, UnsortTakesItsOrderAway) {
    searching(1, [&] {
        manufacturers().setFocus();
        window().SortList(2, false);
        ASSERT_EQ(texts(manufacturers()), "Celta,Bergen,Adler");
        QTest::mouseClick(search(1), Qt::LeftButton);
        clickToolbar("unsort");
        EXPECT_EQ(texts(manufacturers()), "Adler,Bergen,Celta");
        EXPECT_EQ(window().focusWidget(), &manufacturers()) << kGoesOn;
        EXPECT_EQ(window().SortTagOf[1], "0Proizvodjac0");
    });
}

TEST_F(ToolbarFromSearchBox, WithoutAChosenRowNothingCanBeChanged) {
    searching(0, [&] {
        QTest::keyClick(search(0), Qt::Key_Backspace);
        EXPECT_EQ(toolbarOn(), "new,delall,refresh,help");
        clickRow(groups(), "Procesori");
        search(0)->setFocus();
        EXPECT_EQ(toolbarOn(), "new,edit,delete,delall,refresh,help");
        QTest::keyClicks(search(0), "x");
        EXPECT_EQ(toolbarOn(), "new,delall,refresh,help");
    });
}

TEST_F(ToolbarFromSearchBox, PrintIsForProductsAndHelpForEverybody) {
    searching(0, [&] {
        EXPECT_EQ(toolbarOn(), "new,edit,delete,delall,refresh,help");
        clickToolbar("help");
        EXPECT_EQ(boxes.lastText(), "Bice, bice...");
    });
}

TEST_F(ToolbarFromSearchBox, TheKeysStayWithTheTextAndTheProducts) {
    searching(1, [&] {
        boxes.inputs = {QString("DELTA")};
        clickRow(groups(), "Monitori");
        clickRow(manufacturers(), "Adler");
        search(1)->setFocus();
        QTest::keyClick(search(1), Qt::Key_Home);
        QTest::keyClick(search(1), Qt::Key_Delete);
        QTest::keyClick(search(1), Qt::Key_F5);
        QTest::keyClick(search(1), Qt::Key_F8);
        EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
        clickRow(manufacturers(), "Bergen");
        search(1)->setFocus();
        atInput({named("22 inca", 1)}, [&] { QTest::keyClick(search(1), Qt::Key_N, Qt::ControlModifier); });
        EXPECT_EQ(productNames(), "21 inca,22 inca");
        EXPECT_EQ(window().focusWidget(), &products()) << "the new product is the one to go on with";
    });
    EXPECT_EQ(countRows("Proizvodjaci"), 3);
}

}  // namespace
