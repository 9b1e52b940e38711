// The catalogue as a window: where it stands, over whom, what it keeps, and what its bars and keys set going.
#include <QMenu>
#include <QToolBar>

#include "catalogue/catalogue_window.h"
#include "support/sizes.h"

namespace {

class frmKonfiguratorExWindow : public CatalogueWindow {
 protected:
    static void store(const char* key, const QString& value) {
        settings::setText(settings::find("frmKonfiguratorEx", QLatin1String(key)), value);
    }
    static QString stored(const char* key) {
        return settings::text(settings::find("frmKonfiguratorEx", QLatin1String(key)));
    }
    // What `command` opens: the entry window of a product by its name, an input box by its text.
    QString opens(const std::function<void()>& command) {
        QString opened;
        boxes.asked.clear();
        QTimer::singleShot(0, &window(), [&] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                opened = modal->objectName();
                modal->close();
            }
        });
        command();
        QCoreApplication::processEvents();
        return opened.isEmpty() ? boxes.lastText().section('\n', 0, 0) : opened;
    }
    QString opensByButton(const char* key) {
        return opens([&] { window().toolbarButton(QLatin1String(key))->trigger(); });
    }
    void pointTo(QWidget* widget) {
        QMouseEvent move(QEvent::MouseMove, QPointF(3, 3), widget->mapToGlobal(QPointF(3, 3)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
    }
    QWidget* button(const char* key) {
        return window().Toolbar1->widgetForAction(window().toolbarButton(QLatin1String(key)));
    }
};

// --- Place, panes and settings.

TEST_F(frmKonfiguratorExWindow, OpensTheFirstTimeAtItsUsualPlaceAndSize) {
    fillShop();
    show([&] {
        EXPECT_EQ(window().pos(), placeOnScreen(window(), {800 / 15, 800 / 15}));
        EXPECT_EQ(window().size(), sizeOnScreen(window(), 12000, 8000));
        EXPECT_EQ(window().VSplitter->position(), 50);
        EXPECT_EQ(window().HSplitter->position(), 50);
        for (int column = 1; column <= 5; ++column) {
            EXPECT_EQ(products().columns().width(column), 1440) << column;
            EXPECT_EQ(products().columns().position(column), column);
        }
    });
}

TEST_F(frmKonfiguratorExWindow, APlaceWithoutASizeTakesTheUsualSize) {
    fillShop();
    store("WindowData", "600;900;6000");
    show([&] {
        EXPECT_EQ(window().pos(), placeOnScreen(window(), {40, 60}));
        EXPECT_EQ(window().size(), sizeOnScreen(window(), 12000, 8000));
    });
}

TEST_F(frmKonfiguratorExWindow, NoPaneTakesMoreThanSeventyOrLessThanThirtyPercent) {
    fillShop();
    store("VerticalSplitPosition", "95");
    store("HorisontalSplitPosition", "4");
    show([&] {
        EXPECT_EQ(window().VSplitter->position(), 70);
        EXPECT_EQ(window().HSplitter->position(), 30);
        window().VSplitter->setPosition(1);
        EXPECT_EQ(window().VSplitter->position(), 30);
        EXPECT_EQ(window().VSplitter->widget(0)->objectName(), "Picture1(0)");
        EXPECT_EQ(window().VSplitter->widget(1)->objectName(), "Picture1(1)");
        EXPECT_EQ(window().HSplitter->widget(0), window().VSplitter);
        EXPECT_EQ(window().HSplitter->widget(1)->objectName(), "Picture1(2)");
    });
}

TEST_F(frmKonfiguratorExWindow, AMinimisedWindowKeepsItsOldPlace) {
    fillShop();
    store("WindowData", "600;900;9000;7500");
    show([&] {
        emit products().columnClicked(4);
        window().setWindowState(Qt::WindowMinimized);
        window().Unload();
    });
    EXPECT_EQ(stored("WindowData"), "600;900;9000;7500");
    EXPECT_EQ(stored("PRDSort"), "1Cena10") << "all else is kept";
}

TEST_F(frmKonfiguratorExWindow, StandsOverTheFormThatOpenedItWhoeverMadeIt) {
    fillShop();
    frmKonfiguratorEx window;
    window.setParentForm(&parent());
    QTimer::singleShot(0, &window, [&] {
        EXPECT_EQ(window.parentWidget(), &parent());
        EXPECT_TRUE(window.isWindow());
        window.reject();
    });
    window.Display();
}

TEST_F(frmKonfiguratorExWindow, EveryControlIsFoundByItsName) {
    fillShop();
    for (const char* name :
         {"Text1(0)", "Text1(1)", "Text1(2)", "List1(0)", "List1(1)", "ListView1", "Toolbar1", "StatusBar1",
          "ProgressBar1", "VSplitter", "HSplitter", "Picture1(3)", "Picture1(4)", "Picture1(5)", "Label1(0)",
          "Label1(1)", "Label2(0)", "Label2(1)", "Label2(2)"}) {
        EXPECT_NE(window().findChild<QWidget*>(QLatin1String(name)), nullptr) << name;
    }
}

TEST_F(frmKonfiguratorExWindow, UnloadingLetsGoOfTheParentAndTheMenus) {
    fillShop();
    show([] {});
    EXPECT_NE(window().ParentForm, nullptr);
    frmKonfiguratorEx& gone = window();
    gone.Unload();
    EXPECT_EQ(gone.ParentForm, nullptr);
    EXPECT_EQ(gone.cP, nullptr);
}

TEST_F(frmKonfiguratorExWindow, StandsOverItsParentWhichTakesNoKeysMeanwhile) {
    fillShop();
    show([&] {
        EXPECT_EQ(window().parentWidget(), &parent());
        EXPECT_TRUE(window().isWindow());
        QTest::keyClicks(parent().entry(), "x");
        EXPECT_EQ(parent().entry()->text(), "");
        EXPECT_FALSE(parent().close());
    });
    QTest::keyClicks(parent().entry(), "x");
    EXPECT_EQ(parent().entry()->text(), "x");
}

// --- Data.

TEST_F(frmKonfiguratorExWindow, ThePasswordIsGivenOnce) {
    fillShop();
    show([&] {
        for (int round = 0; round < 3; ++round) {
            for (int pane = 0; pane < 3; ++pane) {
                window().DataUpdate(pane, QString(), false);
            }
        }
        for (const platform::DataControl* source : window().Data1) {
            EXPECT_EQ(source->Connect.count("Pwd="), 1);
            EXPECT_TRUE(source->Connect.endsWith("Pwd=" + BuildDatabasePassword()));
            EXPECT_EQ(source->DatabaseName, databasePath());
        }
    });
}

TEST_F(frmKonfiguratorExWindow, AResetOfASortedListGoesByTheName) {
    fillShop();
    show([&] {
        window().SortTagOf[2] = "1Cena11";
        window().DataUpdate(2, QString(), true);
        EXPECT_TRUE(window().Data1[2]->RecordSource().endsWith(" ORDER BY Naziv ASC"))
            << window().Data1[2]->RecordSource().toStdString();
        EXPECT_EQ(products().columns().icon(2), "ASC");
    });
}

TEST_F(frmKonfiguratorExWindow, AnotherWorkstationsProductComesWithTheNextRefreshOnly) {
    fillShop();
    show([&] {
        addProduct(monitors, adler, "24 inca", 1.0F, 1.0F);
        EXPECT_EQ(productNames(), "17 inca,19 inca");
        window().RefreshProduct(false);
        EXPECT_EQ(productNames(), "17 inca,19 inca,24 inca");
    });
}

// Where the completed name is that of the row that was chosen before, a click on it must bring its products
// back all the same.
TEST_F(frmKonfiguratorExWindow, AClickAfterTypingTheSameNameReadsItsProducts) {
    fillShop();
    show([&] {
        search(0)->setFocus();
        search(0)->selectAll();
        QTest::keyClicks(search(0), "mon");
        ASSERT_EQ(search(0)->text(), "monitori");
        ASSERT_EQ(products().count(), 0);
        clickRow(groups(), 0);
        EXPECT_EQ(productNames(), "17 inca,19 inca");
    });
}

TEST_F(frmKonfiguratorExWindow, AnEmptiedSearchBoxLeavesNoProducts) {
    fillShop();
    show([&] {
        press(search(0), Qt::Key_Escape);
        EXPECT_EQ(groups().curSel(), -1);
        EXPECT_EQ(products().count(), 0);
        EXPECT_EQ(detail(), "");
    });
}

// --- Commands.

TEST_F(frmKonfiguratorExWindow, NewAndEditGoByTheFocusedPane) {
    fillShop();
    MakeProperCase = false;
    show([&] {
        groups().setFocus();
        EXPECT_EQ(opensByButton("new"), "Upisite naziv nove grupe proizvoda:");
        EXPECT_EQ(opensByButton("edit"), "Promenite naziv grupe proizvoda:");
        manufacturers().setFocus();
        EXPECT_EQ(opensByButton("new"), "Upisite naziv novog proizvodjaca:");
        EXPECT_EQ(opensByButton("edit"), "Promenite naziv proizvodjaca:");
        products().setFocus();
        EXPECT_EQ(opensByButton("new"), "frmKonfigInput");
        EXPECT_EQ(opensByButton("edit"), "frmKonfigInput");
        EXPECT_EQ(opensByButton("delete"), "Upravo se spremate da izbrisete proizvod iz baze podataka.");
    });
}

TEST_F(frmKonfiguratorExWindow, CtrlNInTheProductListAddsAProduct) {
    fillShop();
    show([&] {
        EXPECT_EQ(opens([&] { press(&products(), Qt::Key_N, Qt::ControlModifier); }), "frmKonfigInput");
        EXPECT_EQ(opens([&] { press(window().Text1_2, Qt::Key_N, Qt::ControlModifier); }), "frmKonfigInput");
    });
}

TEST_F(frmKonfiguratorExWindow, ADoubleClickOnAManufacturerRenamesIt) {
    fillShop();
    MakeProperCase = false;
    show([&] {
        clickRow(manufacturers(), "Bergen");
        const QPoint at = manufacturers().visualRect(manufacturers().model()->index(1, 0)).center();
        EXPECT_EQ(opens([&] { QTest::mouseDClick(manufacturers().viewport(), Qt::LeftButton, {}, at); }),
                  "Promenite naziv proizvodjaca:");
    });
}

// The label in the menu is all there is to it.
TEST_F(frmKonfiguratorExWindow, CtrlPIsNoKey) {
    fillShop();
    show([&] {
        products().select(1);
        EXPECT_EQ(opens([&] { press(&products(), Qt::Key_P, Qt::ControlModifier); }), "");
    });
}

// --- Hints.

TEST_F(frmKonfiguratorExWindow, AButtonThatIsOnTellsWhatItDoes) {
    fillShop();
    show([&] {
        products().setFocus();
        emit products().columnClicked(2);
        pointTo(button("unsort"));
        EXPECT_EQ(statusText(), GetResString(10517));
        pointTo(button("print"));
        EXPECT_EQ(statusText(), GetResString(10515));
        pointTo(control("Picture1(2)"));
        EXPECT_EQ(statusText(), "Broj Proizvoda u bazi podataka: 2") << "the standing text comes back";
        pointTo(button("new"));
        pointTo(manufacturers().viewport());
        EXPECT_EQ(statusText(), "Broj Proizvoda u bazi podataka: 2");
    });
}

TEST_F(frmKonfiguratorExWindow, AMenuItemThatIsOffTellsNothing) {
    fillShop();
    show([&] {
        emit groups().contextMenuAsked(groups().mapToGlobal(QPoint(5, 5)));
        QMenu* menu = window().cP->menu();
        const auto hover = [&](const char* key) {
            const QAction* item = menu->actions().at(window().cP->indexOf(QLatin1String(key)) - 1);
            const QPoint at = menu->actionGeometry(const_cast<QAction*>(item)).center();
            // A menu passes over the first few moves close to where the pointer was when it came up.
            for (int step = 0; step < 8; ++step) {
                QTest::mouseMove(menu, at + QPoint(step, 0));
            }
        };
        hover("refresh");
        EXPECT_EQ(statusText(), GetResString(10516));
        hover("unsort");
        EXPECT_EQ(statusText(), " ");
        hover("desc");
        EXPECT_EQ(statusText(), GetResString(10526));
        menu->close();
    });
}

}  // namespace
