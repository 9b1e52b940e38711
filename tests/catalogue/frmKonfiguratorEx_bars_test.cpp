#include <QMenu>
#include <QToolBar>

#include "catalogue/catalogue_window.h"
#include "catalogue/frmKonfigInput.h"
#include "platform/controls/pictures.h"
#include "support/by_hand.h"

namespace {

class frmKonfiguratorExBars : public CatalogueWindow {
 protected:
    // Below the rows, where a list has room, and on the first of them where it has none.
    QMenu* openMenu(QAbstractItemView* list) {
        by_hand::rightClick(list, QPoint(5, list->viewport()->height() - 5));
        QMenu* menu = window().cP->menu();
        EXPECT_TRUE(menu != nullptr && menu->isVisible()) << "no menu";
        return menu;
    }
    // Captions of the menu, "|" between them; an empty one is a separator.
    static QString captions(const QMenu* menu) {
        QStringList all;
        for (const QAction* action : menu->actions()) {
            all.append(action->text());
        }
        return all.join(QLatin1Char('|'));
    }
    static QString menuOn(const QMenu* menu) {
        QStringList on;
        for (const QAction* action : menu->actions()) {
            if (!action->isSeparator() && action->isEnabled()) {
                on.append(action->objectName());
            }
        }
        return on.join(QLatin1Char(','));
    }
    void choose(QAbstractItemView* list, const char* key) {
        QMenu* menu = openMenu(list);
        by_hand::clickItem(menu, itemOf(menu, key));
    }
    QAction* itemOf(const QMenu* menu, const char* key) {
        return menu->actions().at(window().cP->indexOf(QLatin1String(key)) - 1);
    }
    void pointAt(QMenu* menu, const QAction* item) {
        QTest::mouseMove(menu, menu->actionGeometry(const_cast<QAction*>(item)).center());
    }
    void pointTo(const char* key) {
        QWidget* button = window().Toolbar1->widgetForAction(window().toolbarButton(QLatin1String(key)));
        QMouseEvent move(QEvent::MouseMove, QPointF(3, 3), button->mapToGlobal(QPointF(3, 3)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(button, &move);
    }
    void pointTo(QWidget* widget) {
        QMouseEvent move(QEvent::MouseMove, QPointF(3, 3), widget->mapToGlobal(QPointF(3, 3)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
    }
    void press(const char* key) {
        by_hand::click(window().Toolbar1->widgetForAction(window().toolbarButton(QLatin1String(key))));
    }
    QString caption() { return control("Picture1(5)")->findChildren<QLabel*>().last()->text(); }
    // As it is drawn beside the caption: "zoom", "type", or empty.
    QString captionIcon() {
        const QImage shown = control("Picture1(5)")->findChildren<QLabel*>().first()->pixmap().toImage();
        const auto is = [&](const char* drawing) {
            return shown == platform::icon(QLatin1String(drawing)).pixmap(16).toImage();
        };
        return is("Zoom") ? QStringLiteral("zoom") : is("Type") ? QStringLiteral("type") : QString();
    }
};

TEST_F(frmKonfiguratorExBars, ToolbarHasItsButtonsAtTheirPlaces) {
    fillShop();
    const char* const keys[] = {"new",   "", "edit",    "", "delete", "delall", "",
                                "print", "", "refresh", "", "unsort", "",       "help"};
    const QList<QAction*> actions = window().Toolbar1->actions();
    ASSERT_EQ(actions.size(), 14);
    for (int i = 0; i < 14; ++i) {
        EXPECT_EQ(actions[i]->isSeparator(), *keys[i] == '\0') << i;
        if (!actions[i]->isSeparator()) {
            EXPECT_EQ(actions[i]->objectName(), QLatin1String(keys[i]));
        }
    }
}

TEST_F(frmKonfiguratorExBars, ButtonsFollowTheFocusedPane) {
    fillShop();
    show([&] {
        EXPECT_EQ(toolbarOn(), "new,edit,delete,delall,refresh,help");
        window().SortList(1, false);
        EXPECT_EQ(toolbarOn(), "new,edit,delete,delall,refresh,unsort,help");
        search(0)->setFocus();
        EXPECT_EQ(toolbarOn(), "new,edit,delete,delall,refresh,unsort,help") << "the box counts as its list";
        manufacturers().setFocus();
        EXPECT_EQ(toolbarOn(), "new,edit,delete,delall,refresh,help");
        products().setFocus();
        EXPECT_EQ(toolbarOn(), "new,edit,delete,delall,print,refresh,help");
        emit products().columnClicked(2);
        EXPECT_EQ(toolbarOn(), "new,edit,delete,delall,print,refresh,unsort,help");
        clickRow(groups(), "Prazna");
        products().setFocus();
        EXPECT_EQ(toolbarOn(), "new,refresh,help");
        window().Text1_2->setFocus();
        EXPECT_EQ(toolbarOn(), "new,refresh,help") << "any other control: the products";
        QTest::keyClicks(search(0), "x");
        search(0)->setFocus();
        EXPECT_EQ(toolbarOn(), "new,delall,refresh,unsort,help") << "rows, but none selected";
    });
}

TEST_F(frmKonfiguratorExBars, ProductsCanBePrintedWhileTheyAreTheActivePane) {
    fillShop();
    show([&] {
        QAction* print = window().toolbarButton("print");
        EXPECT_EQ(print->toolTip(), GetResString(10515));
        groups().setFocus();
        EXPECT_FALSE(print->isEnabled());
        search(1)->setFocus();
        EXPECT_FALSE(print->isEnabled());
        products().setFocus();
        EXPECT_TRUE(print->isEnabled());
        QMenu* menu = openMenu(&products());
        EXPECT_TRUE(window().cP->isEnabled(window().cP->indexOf("lvprint")));
        menu->close();
        clickRow(groups(), "Prazna");
        products().setFocus();
        EXPECT_FALSE(print->isEnabled()) << "no rows";
        menu = openMenu(&products());
        EXPECT_FALSE(window().cP->isEnabled(window().cP->indexOf("lvprint")));
        menu->close();
    });
}

TEST_F(frmKonfiguratorExBars, HoverTellsWhatAButtonDoes) {
    fillShop();
    show([&] {
        const std::pair<const char*, int> texts[] = {{"new", 10511},    {"edit", 10512},    {"delete", 10513},
                                                     {"delall", 10514}, {"refresh", 10516}, {"help", 10518}};
        for (const auto& [key, id] : texts) {
            pointTo(key);
            EXPECT_EQ(statusText(), GetResString(id)) << key;
            EXPECT_FALSE(statusText().isEmpty());
        }
        pointTo("unsort");
        EXPECT_EQ(statusText(), " ") << "disabled";
        pointTo("print");
        EXPECT_EQ(statusText(), " ");
        pointTo(groups().viewport());
        EXPECT_EQ(statusText(), "Broj Grupa proizvoda u bazi podataka: 3") << "the standing text comes back";
        pointTo("new");
        pointTo(control("Label2(0)"));
        EXPECT_EQ(statusText(), "Broj Grupa proizvoda u bazi podataka: 3");
    });
}

TEST_F(frmKonfiguratorExBars, StandingTextComesBackForAnEmptyOne) {
    fillShop();
    show([&] {
        window().ShowStatusText("stalno", true);
        window().ShowStatusText("prolazno", false);
        EXPECT_EQ(statusText(), "prolazno");
        window().ShowStatusText("", false);
        EXPECT_EQ(statusText(), "stalno");
    });
}

TEST_F(frmKonfiguratorExBars, HelpIsPromised) {
    fillShop();
    show([&] { press("help"); });
    EXPECT_EQ(boxes.lastText(), "Bice, bice...");
    EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Information);
}

TEST_F(frmKonfiguratorExBars, ButtonsWorkOnTheFocusedListOrElseOnProducts) {
    fillShop();
    boxes.answers = {platform::BoxAnswer::No, platform::BoxAnswer::No, platform::BoxAnswer::Cancel};
    show([&] {
        groups().setFocus();
        press("delete");
        EXPECT_TRUE(boxes.lastText().contains("izbrisete grupu proizvoda")) << boxes.lastText().toStdString();
        press("delall");
        EXPECT_TRUE(boxes.lastText().contains("sve grupe")) << boxes.lastText().toStdString();
        products().setFocus();
        press("delall");
        EXPECT_EQ(boxes.asked.size(), 3);
        EXPECT_TRUE(boxes.lastText().contains("SVE proizvode")) << boxes.lastText().toStdString();
        groups().setFocus();
        window().SortList(1, false);
        addGroup("Aaa");
        press("refresh");
        EXPECT_EQ(groups().text(0), "Aaa");
        press("unsort");
        EXPECT_EQ(groups().text(0), "Monitori");
        products().setFocus();
        emit products().columnClicked(2);
        press("unsort");
        EXPECT_EQ(window().SortTagOf[2], "0Naziv0");
        addProduct(monitors, adler, "24 inca", 1.0F, 1.0F);
        press("refresh");
        EXPECT_EQ(products().count(), 3);
    });
}

TEST_F(frmKonfiguratorExBars, ListMenuHasItsItems) {
    fillShop();
    show([&] {
        QMenu* menu = openMenu(&groups());
        EXPECT_EQ(menu->objectName(), "mnu_listpopup");
        EXPECT_TRUE(menu->isVisible());
        EXPECT_EQ(captions(menu),
                  "Grupe|Nova Stavka...\tCtrl+N|Promeni Naziv...||Izbrisi\tDel|Izbrisi Sve\tShift+Del||"
                  "Sortiraj Rastuce|Sortiraj Opadajuce||Ponisti Sortiranje\tF8||Azuriraj Podatke\tF5");
        EXPECT_EQ(menuOn(menu), "new,edit,delete,delall,asc,desc,refresh");
        menu->close();
        openMenu(&manufacturers())->close();
        EXPECT_TRUE(captions(menu).startsWith("Proizvodjaci|"));
        EXPECT_EQ(window().focusWidget(), &manufacturers()) << "the commands work on the list of the menu";
    });
}

TEST_F(frmKonfiguratorExBars, ListMenuFollowsOrderRowsAndSelection) {
    fillShop();
    show([&] {
        groups().setFocus();
        window().SortList(1, false);
        QMenu* menu = openMenu(&groups());
        EXPECT_EQ(menuOn(menu), "new,edit,delete,delall,desc,unsort,refresh");
        menu->close();
        window().SortList(2, false);
        openMenu(&groups());
        EXPECT_EQ(menuOn(menu), "new,edit,delete,delall,asc,unsort,refresh");
        menu->close();
        groups().setCurSel(-1);
        openMenu(&groups());
        EXPECT_EQ(menuOn(menu), "new,delall,asc,unsort,refresh");
        menu->close();
        groups().resetContent();
        openMenu(&groups());
        EXPECT_EQ(menuOn(menu), "new,refresh");
        menu->close();
    });
}

TEST_F(frmKonfiguratorExBars, ProductMenuHasItsItemsAndStates) {
    fillShop();
    show([&] {
        products().select(1);
        QMenu* menu = openMenu(&products());
        EXPECT_EQ(menu->objectName(), "mnu_lvwpopup");
        EXPECT_EQ(captions(menu),
                  "Proizvodi|Nova Stavka...\tCtrl+N|Promeni Naziv...||Izbrisi\tDel|Izbrisi Sve\tShift+Del||"
                  "Stampaj...\tCtrl+P||Ponisti Sortiranje\tF8||Azuriraj Podatke\tF5");
        EXPECT_EQ(menuOn(menu), "lvnew,lvedit,lvdelete,lvdelall,lvprint,lvrefresh");
        menu->close();
        emit products().columnClicked(2);
        openMenu(&products());
        EXPECT_EQ(menuOn(menu), "lvnew,lvedit,lvdelete,lvdelall,lvprint,lvunsort,lvrefresh");
        menu->close();
        window().DataUpdate(2, "K0", false);
        products().selectionModel()->clear();
        openMenu(&products());
        EXPECT_EQ(menuOn(menu), "lvnew,lvdelall,lvprint,lvunsort,lvrefresh");
        menu->close();
        clickRow(groups(), "Prazna");
        openMenu(&products());
        EXPECT_EQ(menuOn(menu), "lvnew,lvrefresh");
        menu->close();
    });
}

TEST_F(frmKonfiguratorExBars, MenuItemsRunTheirCommands) {
    fillShop();
    boxes.answers = QList<platform::BoxAnswer>(3, platform::BoxAnswer::No);
    boxes.answers << platform::BoxAnswer::Cancel;
    show([&] {
        choose(&groups(), "desc");
        EXPECT_EQ(window().SortTagOf[0], "1Grupa1");
        choose(&groups(), "asc");
        EXPECT_EQ(window().SortTagOf[0], "1Grupa0");
        addGroup("Aaa");
        choose(&groups(), "refresh");
        EXPECT_EQ(groups().text(0), "Aaa");
        choose(&groups(), "unsort");
        EXPECT_EQ(window().SortTagOf[0], "0Grupa0");
        choose(&manufacturers(), "delete");
        EXPECT_TRUE(boxes.lastText().contains("izbrisete proizvodjaca")) << boxes.lastText().toStdString();
        choose(&manufacturers(), "delall");
        EXPECT_TRUE(boxes.lastText().contains("sve proizvodjace")) << boxes.lastText().toStdString();
        products().select(1);
        choose(&products(), "lvdelete");
        choose(&products(), "lvdelall");
        EXPECT_EQ(boxes.asked.size(), 4);
        emit products().columnClicked(2);
        choose(&products(), "lvunsort");
        EXPECT_EQ(window().SortTagOf[2], "0Naziv0");
        addProduct(monitors, adler, "24 inca", 1.0F, 1.0F);
        choose(&products(), "lvrefresh");
        EXPECT_EQ(products().count(), 3);
        boxes.inputs = {QStringLiteral("Nova grupa"), QStringLiteral("Ekrani")};
        boxes.answers = {platform::BoxAnswer::No};
        choose(&groups(), "new");
        choose(&groups(), "edit");
        EXPECT_TRUE(boxes.inputs.isEmpty());
        clickRow(groups(), "Monitori");
        clickRow(manufacturers(), "Adler");
        for (const char* key : {"lvnew", "lvedit"}) {
            products().select(1);
            inModal<frmKonfigInput>([&] { choose(&products(), key); },
                                    [](frmKonfigInput& input) { input.reject(); });
        }
    });
}

TEST_F(frmKonfiguratorExBars, HighlightTellsWhatAnItemDoes) {
    fillShop();
    const std::pair<const char*, int> listTexts[] = {{"new", 10511},    {"edit", 10512},    {"delete", 10513},
                                                     {"delall", 10514}, {"refresh", 10516}, {"unsort", 10517},
                                                     {"asc", 10525},    {"desc", 10526}};
    const std::pair<const char*, int> productTexts[] = {
        {"lvnew", 10519},     {"lvedit", 10520},   {"lvdelete", 10521}, {"lvdelall", 10522},
        {"lvrefresh", 10523}, {"lvunsort", 10524}, {"lvprint", 10515}};
    show([&] {
        const auto check = [&](QAbstractItemView* list, const auto& texts) {
            QMenu* menu = openMenu(list);
            for (const auto& [key, id] : texts) {
                QAction* item = itemOf(menu, key);
                item->setEnabled(true);
                pointAt(menu, item);
                EXPECT_EQ(statusText(), GetResString(id)) << key;
                item->setEnabled(false);
                window().cP_ItemHighlight(window().cP->indexOf(QLatin1String(key)), false, false);
                EXPECT_EQ(statusText(), " ") << key;
            }
            window().cP_ItemHighlight(1, true, true);
            EXPECT_EQ(statusText(), " ") << "a header tells nothing";
            menu->close();
        };
        check(&groups(), listTexts);
        check(&products(), productTexts);
    });
}

TEST_F(frmKonfiguratorExBars, TheKeyboardInTheMenuHighlightsToo) {
    fillShop();
    show([&] {
        QMenu* menu = openMenu(&groups());
        QTest::keyClick(menu, Qt::Key_Down);
        EXPECT_EQ(statusText(), "Dodaje novu stavku u bazu podataka.");
        menu->close();
    });
}

TEST_F(frmKonfiguratorExBars, CaptionFollowsTheFocus) {
    fillShop();
    show([&] {
        EXPECT_EQ(caption(), "   GRUPE");
        EXPECT_EQ(captionIcon(), "zoom");
        manufacturers().setFocus();
        EXPECT_EQ(caption(), "   PROIZVODJACI");
        products().setFocus();
        EXPECT_EQ(caption(), "   PROIZVODI");
        EXPECT_EQ(captionIcon(), "zoom");
        search(1)->setFocus();
        EXPECT_EQ(caption(), "    Auto Fill...");
        EXPECT_EQ(captionIcon(), "type");
        window().repaint();
        EXPECT_EQ(caption(), "   KUCAJTE...");
        EXPECT_EQ(captionIcon(), "type");
        groups().setFocus();
        window().repaint();
        EXPECT_EQ(caption(), "   GRUPE");
    });
}

TEST_F(frmKonfiguratorExBars, PanelsStandInTheirOrderAndTheSwitchesOverThem) {
    fillShop();
    show([&] {
        const platform::StatusBar& bar = *window().StatusBar1;
        EXPECT_EQ(bar.firstPanelKey(), "stanjenula");
        int left = -1;
        for (const char* key : {"stanjenula", "allmft", "progress", "tekst"}) {
            ASSERT_NE(bar.panel(QLatin1String(key)), nullptr) << key;
            EXPECT_GT(bar.panel(QLatin1String(key))->x(), left) << key;
            left = bar.panel(QLatin1String(key))->x();
        }
        EXPECT_EQ(bar.panelText("stanjenula"), " Stanja > 0 ");
        EXPECT_EQ(bar.panelText("allmft"), " Svi Proizvodjaci ");
        const char* const covers[][2] = {
            {"Picture1(3)", "stanjenula"}, {"Picture1(4)", "allmft"}, {"Picture1(5)", "progress"}};
        for (const auto& cover : covers) {
            const QWidget* panel = bar.panel(QLatin1String(cover[1]));
            EXPECT_EQ(control(cover[0])->parentWidget(), panel);
            EXPECT_TRUE(panel->rect().contains(control(cover[0])->geometry())) << cover[0];
        }
        window().resize(1000, 700);
        EXPECT_GE(bar.panel("progress")->width(),
                  window().fontMetrics().horizontalAdvance("PROIZVODJACI   ") + 16);
    });
}

}  // namespace
