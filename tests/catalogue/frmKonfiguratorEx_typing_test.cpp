#include "catalogue/catalogue_window.h"

namespace {

class frmKonfiguratorExTyping : public CatalogueWindow {
 protected:
    // One key after the other, as from a keyboard.
    void type(int pane, const QString& keys) {
        search(pane)->setFocus();
        search(pane)->selectAll();
        QTest::keyClicks(search(pane), keys);
    }
};

TEST_F(frmKonfiguratorExTyping, APrefixIsCompletedAndEmptiesTheProducts) {
    fillShop();
    show([&] {
        ASSERT_EQ(products().count(), 2);
        type(0, "pr");
        EXPECT_EQ(search(0)->text(), "procesori") << "what was typed stays as it was typed";
        EXPECT_EQ(search(0)->selectedText(), "ocesori");
        EXPECT_EQ(search(0)->cursorPosition(), 2);
        EXPECT_EQ(groups().curSel(), -1);
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(detail(), "");
    });
}

TEST_F(frmKonfiguratorExTyping, GoingOnTypingReplacesTheCompletion) {
    fillShop();
    show([&] {
        type(0, "pra");
        EXPECT_EQ(search(0)->text(), "prazna");
        EXPECT_EQ(search(0)->selectedText(), "zna");
    });
}

TEST_F(frmKonfiguratorExTyping, AWholeNameSelectsItsRowALittleLater) {
    fillShop();
    show([&] {
        type(0, "procesori");
        EXPECT_EQ(groups().curSel(), -1) << "the selection is posted";
        QCoreApplication::processEvents();
        EXPECT_EQ(groups().selectedText(), "Procesori");
        EXPECT_EQ(products().count(), 0) << "it is no click";
    });
}

TEST_F(frmKonfiguratorExTyping, ATextThatNobodyHasStaysAsItIs) {
    fillShop();
    show([&] {
        type(1, "xy");
        EXPECT_EQ(search(1)->text(), "xy");
        EXPECT_EQ(manufacturers().curSel(), -1);
        EXPECT_EQ(products().count(), 0);
    });
}

TEST_F(frmKonfiguratorExTyping, ABoxThatFindsNothingShowsIt) {
    fillShop();
    show([&] {
        const QColor usual = search(0)->palette().color(QPalette::Base);
        type(0, "pr");
        EXPECT_EQ(search(0)->palette().color(QPalette::Base), usual);
        QTest::keyClicks(search(0), "x");
        EXPECT_EQ(search(0)->text(), "prx");
        EXPECT_NE(search(0)->palette().color(QPalette::Base), usual);
        EXPECT_EQ(search(0)->accessibleDescription(), "Nista ne pocinje ovako");
        EXPECT_EQ(search(1)->accessibleDescription(), "") << "the other box has found its row";
        QTest::keyClick(search(0), Qt::Key_Backspace);
        EXPECT_EQ(search(0)->palette().color(QPalette::Base), usual) << "\"pr\" is there";
        EXPECT_EQ(search(0)->accessibleDescription(), "");
        QTest::keyClicks(search(0), "x");
        QTest::keyClick(search(0), Qt::Key_Escape);
        EXPECT_EQ(search(0)->accessibleDescription(), "") << "nothing was asked for";
    });
}

TEST_F(frmKonfiguratorExTyping, WithAllManufacturersTheProductsStay) {
    fillShop();
    show([&] {
        QTest::mouseClick(control("Label1(1)"), Qt::LeftButton);
        ASSERT_EQ(products().count(), 3);
        type(1, "ber");
        EXPECT_EQ(search(1)->text(), "bergen");
        EXPECT_EQ(manufacturers().selectedText(), "Adler");
        type(0, "pro");
        EXPECT_EQ(groups().selectedText(), "Monitori") << "the same for both lists";
        EXPECT_EQ(products().count(), 3);
    });
}

TEST_F(frmKonfiguratorExTyping, DownTakesTheRowAndItsProducts) {
    fillShop();
    show([&] {
        type(0, "pr");
        QTest::keyClick(search(0), Qt::Key_Down);
        EXPECT_EQ(window().focusWidget(), &groups());
        EXPECT_EQ(groups().selectedText(), "Procesori");
        EXPECT_EQ(search(0)->text(), "Procesori");
        EXPECT_EQ(productNames(), "Brzi");
    });
}

TEST_F(frmKonfiguratorExTyping, DownOnAnUnknownTextOnlyGoesToTheList) {
    fillShop();
    show([&] {
        type(0, "xy");
        QTest::keyClick(search(0), Qt::Key_Down);
        EXPECT_EQ(window().focusWidget(), &groups());
        EXPECT_EQ(groups().curSel(), -1);
        EXPECT_EQ(search(0)->text(), "xy");
        EXPECT_EQ(products().count(), 0);
    });
}

TEST_F(frmKonfiguratorExTyping, DownAmongAllManufacturersReadsNothing) {
    fillShop();
    show([&] {
        QTest::mouseClick(control("Label1(1)"), Qt::LeftButton);
        addProduct(monitors, celta, "24 inca", 1.0F, 1.0F);
        type(1, "cel");
        QTest::keyClick(search(1), Qt::Key_Down);
        EXPECT_EQ(manufacturers().selectedText(), "Celta");
        EXPECT_EQ(window().focusWidget(), &manufacturers());
        EXPECT_EQ(products().count(), 3);
        EXPECT_EQ(search(1)->text(), "celta") << "no click: the box is not written";
    });
}

TEST_F(frmKonfiguratorExTyping, BackspaceLeavesTheSelectionAndSearchesNothing) {
    fillShop();
    show([&] {
        search(0)->setFocus();
        search(0)->end(false);
        QTest::keyClick(search(0), Qt::Key_Backspace);
        EXPECT_EQ(search(0)->text(), "Monitor") << "not completed again";
        EXPECT_EQ(groups().curSel(), -1);
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(detail(), "");
        clickRow(groups(), 0);
        EXPECT_EQ(productNames(), "17 inca,19 inca") << "the row that was chosen before counts as another";
    });
}

TEST_F(frmKonfiguratorExTyping, BackspaceInAnEmptyBoxDoesNotSwallowTheNextKey) {
    fillShop();
    show([&] {
        search(0)->clear();
        QTest::keyClick(search(0), Qt::Key_Backspace);
        type(0, "p");
        EXPECT_EQ(search(0)->text(), "procesori");
    });
}

TEST_F(frmKonfiguratorExTyping, EscEmptiesTheBoxAndThenClosesTheWindow) {
    fillShop();
    show([&] {
        press(search(0), Qt::Key_Escape);
        EXPECT_EQ(search(0)->text(), "");
        EXPECT_TRUE(window().isVisible());
        press(search(0), Qt::Key_Escape);
        EXPECT_FALSE(window().isVisible());
    });
}

TEST_F(frmKonfiguratorExTyping, AClickOnTheSameRowAfterEscBringsItsProducts) {
    fillShop();
    show([&] {
        clickRow(manufacturers(), "Adler");
        clickRow(groups(), "Monitori");
        for (const int box : {0, 1}) {
            press(search(box), Qt::Key_Escape);
            EXPECT_EQ(products().count(), 0);
            box == 0 ? clickRow(groups(), "Monitori") : clickRow(manufacturers(), "Adler");
            EXPECT_EQ(productNames(), "17 inca,19 inca") << box;
        }
    });
}

TEST_F(frmKonfiguratorExTyping, AClickOnTheSameRowAfterAnUnknownTextBringsItsProducts) {
    fillShop();
    show([&] {
        clickRow(manufacturers(), "Adler");
        clickRow(groups(), "Monitori");
        search(0)->setFocus();
        search(0)->selectAll();
        QTest::keyClicks(search(0), "x");
        EXPECT_EQ(products().count(), 0);
        clickRow(groups(), "Monitori");
        EXPECT_EQ(productNames(), "17 inca,19 inca");
    });
}

// With all manufacturers shown the products of the typed group come with a refresh. The row that was clicked
// last is another one then.
TEST_F(frmKonfiguratorExTyping, AClickOnTheRowBeforeTheTypedOneBringsItsProductsBack) {
    fillShop();
    show([&] {
        clickRow(groups(), "Monitori");
        QTest::mouseClick(control("Label1(1)"), Qt::LeftButton);
        ASSERT_EQ(productNames(), "17 inca,19 inca,21 inca");
        search(0)->setFocus();
        search(0)->selectAll();
        QTest::keyClicks(search(0), "Procesori");
        EXPECT_TRUE(QTest::qWaitFor([&] { return groups().selectedText() == "Procesori"; }));
        press(&products(), Qt::Key_F5);
        ASSERT_EQ(productNames(), "Brzi,Spori");
        clickRow(groups(), "Monitori");
        EXPECT_EQ(productNames(), "17 inca,19 inca,21 inca");
    });
}

TEST_F(frmKonfiguratorExTyping, EscInAListCloses) {
    fillShop();
    for (const bool inProducts : {false, true}) {
        show([&] {
            press(inProducts ? static_cast<QWidget*>(&products()) : &groups(), Qt::Key_Escape);
            EXPECT_FALSE(window().isVisible());
        });
    }
}

TEST_F(frmKonfiguratorExTyping, F5RefreshesTheFocusedPane) {
    fillShop();
    show([&] {
        addGroup("Nova");
        addProduct(monitors, adler, "24 inca", 1.0F, 1.0F);
        press(&groups(), Qt::Key_F5);
        EXPECT_EQ(groups().count(), 4);
        EXPECT_EQ(products().count(), 2);
        press(search(0), Qt::Key_F5);
        EXPECT_EQ(products().count(), 2) << "nothing in a search box";
        press(&products(), Qt::Key_F5);
        EXPECT_EQ(products().count(), 3);
    });
}

TEST_F(frmKonfiguratorExTyping, F8TakesTheOrderOfTheFocusedPaneAway) {
    fillShop();
    show([&] {
        groups().setFocus();
        window().SortList(2, false);
        emit products().columnClicked(2);
        press(&groups(), Qt::Key_F8);
        EXPECT_EQ(window().SortTagOf[0], "0Grupa0");
        EXPECT_EQ(window().SortTagOf[2], "1Naziv1");
        press(&products(), Qt::Key_F8);
        EXPECT_EQ(window().SortTagOf[2], "0Naziv0");
    });
}

TEST_F(frmKonfiguratorExTyping, DelAndShiftDelAskForTheFocusedPane) {
    fillShop();
    boxes.answers = QList<platform::BoxAnswer>(3, platform::BoxAnswer::No);
    boxes.answers << platform::BoxAnswer::Cancel;
    show([&] {
        press(&groups(), Qt::Key_Delete);
        EXPECT_TRUE(boxes.lastText().contains("izbrisete grupu proizvoda")) << boxes.lastText().toStdString();
        press(&manufacturers(), Qt::Key_Delete, Qt::ShiftModifier);
        EXPECT_TRUE(boxes.lastText().contains("sve proizvodjace")) << boxes.lastText().toStdString();
        EXPECT_EQ(boxes.asked.size(), 2);
        products().select(1);
        press(&products(), Qt::Key_Delete);
        EXPECT_EQ(boxes.asked.size(), 3);
        press(&products(), Qt::Key_Delete, Qt::ShiftModifier);
        EXPECT_EQ(boxes.asked.size(), 4);
        press(search(0), Qt::Key_Delete);
        EXPECT_EQ(boxes.asked.size(), 4) << "in a search box it is the box's own key";
    });
    EXPECT_EQ(countRows("Oprema"), 5);
    EXPECT_EQ(countRows("Grupe"), 3);
}

TEST_F(frmKonfiguratorExTyping, CtrlNAddsToTheFocusedPane) {
    fillShop();
    boxes.inputs = {std::nullopt, QStringLiteral("Dodata")};
    boxes.answers = {platform::BoxAnswer::No};
    show([&] {
        press(&groups(), Qt::Key_N, Qt::ControlModifier);
        EXPECT_EQ(groups().count(), 3) << "cancelled";
        press(&manufacturers(), Qt::Key_N, Qt::ControlModifier);
        EXPECT_EQ(manufacturers().count(), 4);
        QString opened;
        QTimer::singleShot(0, &window(), [&] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                opened = modal->objectName();
                modal->close();
            }
        });
        press(search(0), Qt::Key_N, Qt::ControlModifier);
        EXPECT_EQ(opened, "frmKonfigInput") << "anywhere else it is a product";
    });
}

TEST_F(frmKonfiguratorExTyping, EnterDrawsWhicheverControlHasTheFocus) {
    fillShop();
    show([&] {
        products().select(keyOf(m19));  // none on stock: the draw says so at once
        QWidget* const all[] = {&groups(), &manufacturers(), &products(),
                                search(0), search(1),        window().Text1_2};
        int asked = 0;
        for (QWidget* each : all) {
            press(each, Qt::Key_Return);
            EXPECT_EQ(boxes.asked.size(), ++asked) << each->objectName().toStdString();
            EXPECT_EQ(boxes.lastText(), "Proizvoda nema na stanju. Ne mozete da ga trebujete.");
        }
        press(&products(), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_EQ(boxes.asked.size(), ++asked);
        EXPECT_TRUE(window().isVisible());
    });
}

TEST_F(frmKonfiguratorExTyping, AHeldEnterDrawsOnce) {
    fillShop();
    show([&] {
        products().select(keyOf(m19));
        products().setFocus();
        for (const bool repeat : {false, true, true}) {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", repeat);
            QApplication::sendEvent(&products(), &key);
        }
        EXPECT_EQ(boxes.asked.size(), 1);
    });
}

TEST_F(frmKonfiguratorExTyping, ADoubleClickEditsAndDoesNotDraw) {
    fillShop();
    boxes.inputs = {std::nullopt};
    show([&] {
        QString opened;
        QTimer::singleShot(0, &window(), [&] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                opened = modal->objectName();
                modal->close();
            }
        });
        QTest::mouseDClick(products().viewport(), Qt::LeftButton, {}, productAt(1));
        EXPECT_EQ(opened, "frmKonfigInput");
        boxes.inputs = {QStringLiteral("Ekrani")};
        QTest::mouseDClick(groups().viewport(), Qt::LeftButton, {},
                           groups().visualRect(groups().model()->index(0, 0)).center());
        EXPECT_TRUE(boxes.inputs.isEmpty());
    });
    EXPECT_EQ(countRows("InvoiceData"), 0);
}

}  // namespace
