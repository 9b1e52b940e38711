// The menus, the toolbar, the popup menu and the status bar: what stands there, and when it may be used.

#include <QLabel>
#include <QMenuBar>
#include <QScreen>

#include "common/help.h"
#include "main_window.h"
#include "platform/controls/pictures.h"
#include "platform/system/launch.h"
#include "support/modal.h"

using platform::BoxIcon;

namespace {

struct HelpCall {
    HelpCommand command;
    int context;
};
QList<HelpCall> helpCalls;

bool noteHelp(const QString&, HelpCommand command, int context) {
    helpCalls.append({command, context});
    return true;
}

class Commands : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        helpCalls.clear();
        setHelpViewer(noteHelp);
    }
    void TearDown() override {
        MainWindow::TearDown();
        setHelpViewer(nullptr);
    }
    void clientWithServices() {
        anic = addClient("Anic", "Vesna");
        desk = addComputer(anic, "Desk");
        addService(desk);
    }
    static QStringList texts(const QList<QAction*>& items) {
        QStringList all;
        for (const QAction* item : items) {
            all.append(item->isSeparator() ? QStringLiteral("-") : item->text());
        }
        return all;
    }
    // What can be chosen right after the menu was opened, from its top.
    QList<Command> usable(QMenu* menu) {
        open(menu);
        QList<Command> commands;
        for (QAction* item : menu->actions()) {
            if (!item->isSeparator() && item->isEnabled()) {
                commands.append(commandOn(item));
            }
        }
        by_hand::closeMenus();
        return commands;
    }
    Command commandOn(const QAction* item) {
        for (const CommandRow& row : commandTable()) {
            if (item == win().bars.menus.entry(row.name) || item == win().bars.menus.popupEntry(row.name)) {
                return row.name;
            }
        }
        return Command::Count;
    }
    QList<Command> inDatabaseMenu() { return usable(win().bars.menus.menu(Menu::Database)); }
    QList<Command> inViewMenu() { return usable(win().bars.menus.menu(Menu::View)); }
    QList<Command> inUtilities() { return usable(menuNamed("mnuUtilities")); }
    QList<Command> inPopup() { return usable(win().bars.menus.menu(Menu::Popup)); }
    // The title with Alt, then a key for each item, as people do who know the menu by heart. What an item
    // opens must not wait for an answer.
    void chooseByKeys(Qt::Key title, QMenu* menu, std::initializer_list<Qt::Key> items) {
        QTest::keyClick(&win(), title, Qt::AltModifier);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
        for (const Qt::Key item : items) {
            QTest::keyClick(QApplication::activePopupWidget(), item);
        }
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    }
    QStringList onToolbar() {
        QStringList keys;
        for (const QAction* action : win().controls.Toolbar1->actions()) {
            if (!action->isSeparator() && action->isEnabled()) {
                keys.append(action->objectName());
            }
        }
        return keys;
    }
    int anic = 0, desk = 0;
};

TEST_F(Commands, MenusHaveTheirTextsInOrder) {
    start();
    EXPECT_EQ(texts(win().menuBar()->actions()), QStringList({"&Database", "&View", "&Pomoc"}));
    EXPECT_EQ(texts(win().bars.menus.menu(Menu::Database)->actions()),
              QStringList({"&Add New Record", "&Edit Current Record...", "-", "&Delete Current Record", "-",
                           "&Save Current Record", "-", "Sea&rch...", "Quick &Filter", "-", "&Utilities", "-",
                           "E&xit"}));
    EXPECT_EQ(
        texts(menuNamed("mnuQuickSearch")->actions()),
        QStringList({"&Remove", "-", "&Finished and not paid services", "N&ot finished and not paid services",
                     "Not fi&nished and paid services", "Not finis&hed and not paid services with due date",
                     "Not finishe&d and paid services with due date"}));
    EXPECT_EQ(texts(menuNamed("mnuUtilities")->actions()),
              QStringList({"Create &Invoice...", "Create &Quotation...", "-", "&Restart Database",
                           "&Compact Database"}));
    EXPECT_EQ(texts(win().bars.menus.menu(Menu::View)->actions()),
              QStringList({"&Toolbar", "&Statusbar", "-", "R&eport Options...", "&Report", "-",
                           "Price &List...", "-", "&Options...", "-", "Re&fresh"}));
    EXPECT_EQ(texts(win().bars.menus.menu(Menu::Help)->actions()),
              QStringList({"&Sadrzaj...", "&Indeks...", "-", "&Simboli", "-", "&O Programu..."}));
    EXPECT_EQ(texts(win().bars.menus.menu(Menu::Popup)->actions()),
              QStringList({"Legend", "-", "Edit", "Add New", "-", "Delete", "-", "Price list", "-",
                           "Create Invoice...", "Create Quotation...", "-", "Unsort All"}));
    EXPECT_EQ(win().bars.menus.entry(Command::QuickFilter)->menu(), menuNamed("mnuQuickSearch"));
    EXPECT_EQ(win().bars.menus.entry(Command::Utilities)->menu(), menuNamed("mnuUtilities"));
    EXPECT_EQ(win().bars.menus.menu(Menu::Popup)->defaultAction(),
              win().bars.menus.popupEntry(Command::EditService));
}

TEST_F(Commands, ToolbarHasItsButtonsTipsAndPicturesInOrder) {
    start();
    QStringList keys, tips;
    for (const QAction* action : win().controls.Toolbar1->actions()) {
        keys.append(action->isSeparator() ? QStringLiteral("|") : action->objectName());
        if (action->isSeparator()) {
            continue;
        }
        tips.append(action->toolTip());
        EXPECT_FALSE(action->icon().isNull()) << action->objectName().toStdString();
    }
    EXPECT_EQ(keys, QStringList({"NewRecord", "EditRecord", "|", "DeleteRecord", "|", "SaveRecord", "|",
                                 "ApplyFilter", "RemoveFilter", "|", "Refresh", "|", "ViewReport", "|",
                                 "PriceList", "Invoice", "Quotation", "|", "Help"}));
    EXPECT_EQ(tips, QStringList({"Add New Record", "Edit Current Record", "Delete Current Record",
                                 "Save Current Record", "Apply Filter", "Remove Filter", "Refresh",
                                 "Generate Report", "View Price List", "Generate Invoice Document",
                                 "Generate Quotation Document", "Help Contents"}));
}

TEST_F(Commands, EachButtonAndTabHasAPictureOfItsOwn) {
    start();
    QList<QImage> pictures;
    const auto add = [&](const QIcon& icon, const QString& whose) {
        const QImage picture = icon.pixmap(24, 24).toImage();
        EXPECT_FALSE(pictures.contains(picture)) << whose.toStdString();
        pictures.append(picture);
    };
    for (const QAction* action : win().controls.Toolbar1->actions()) {
        if (action->isSeparator()) {
            continue;
        }
        const QString key = action->objectName();
        EXPECT_EQ(action->icon().pixmap(24, 24).toImage(), platform::icon(key).pixmap(24, 24).toImage())
            << key.toStdString();
        add(action->icon(), key);
    }
    for (int i = 0; i < 3; ++i) {
        add(win().controls.TabStrip1->tabIcon(i), caption(i + 1));
    }
}

TEST_F(Commands, EveryCommandMayBeGivenWhereAServiceIsListed) {
    clientWithServices();
    start();
    tab(3);
    ASSERT_GT(win().controls.ListView1->count(), 0);
    EXPECT_TRUE(canUse("ViewReport"));
    EXPECT_EQ(inViewMenu(),
              QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::ReportOptions,
                              Command::Report, Command::PriceList, Command::Options, Command::Refresh}));
    EXPECT_EQ(usable(win().bars.menus.menu(Menu::Help)),
              QList<Command>({Command::HelpContents, Command::HelpIndex, Command::Legend, Command::About}));
    EXPECT_EQ(inPopup(), QList<Command>({Command::Legend, Command::EditService, Command::AddService,
                                         Command::DeleteRecord, Command::PriceList, Command::Invoice,
                                         Command::QuotationOfRow}));
    EXPECT_EQ(inUtilities(), QList<Command>({Command::Invoice, Command::Quotation, Command::RestartDatabase,
                                             Command::CompactDatabase}));
    EXPECT_EQ(
        usable(menuNamed("mnuQuickSearch")),
        QList<Command>({Command::FilterFinishedNotPaid, Command::FilterNotFinishedNotPaid,
                        Command::FilterNotFinishedPaid, Command::FilterDueNotPaid, Command::FilterDuePaid}));
}

TEST_F(Commands, ViewMenuReportsOnlyWhereAClientIsChosen) {
    start();
    EXPECT_EQ(inViewMenu(), QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::Options,
                                            Command::Refresh}))
        << "nobody to report on";
    end();
    addClient("Anic", "Vesna");
    start();
    EXPECT_EQ(inViewMenu(),
              QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::ReportOptions,
                              Command::Report, Command::Options, Command::Refresh}));
    tool("NewRecord");
    EXPECT_EQ(inViewMenu(), QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::Options,
                                            Command::Refresh}))
        << "the new one is not chosen yet";
}

TEST_F(Commands, ViewMenuShowsThePriceListOnlyOfAChosenService) {
    clientWithServices();
    addComputer(addClient("Babic", "Bo"), "Idle");
    start();
    ASSERT_GT(win().controls.ListView1->selectedIndex(), 0);
    EXPECT_EQ(inViewMenu(),
              QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::ReportOptions,
                              Command::Report, Command::Options, Command::Refresh}));
    tab(2);
    EXPECT_EQ(inViewMenu(),
              QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::ReportOptions,
                              Command::Report, Command::Options, Command::Refresh}));
    tab(3);
    EXPECT_EQ(inViewMenu(),
              QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::ReportOptions,
                              Command::Report, Command::PriceList, Command::Options, Command::Refresh}));
    win().services.list.fill("K999");
    ASSERT_EQ(win().controls.ListView1->count(), 1);
    EXPECT_EQ(inViewMenu(),
              QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::ReportOptions,
                              Command::Report, Command::Options, Command::Refresh}))
        << "no row is chosen";
    tab(1);
    choose(0, "Babic, Bo");
    tab(3);
    ASSERT_EQ(win().controls.ListView1->count(), 0);
    EXPECT_EQ(inViewMenu(),
              QList<Command>({Command::ShowToolbar, Command::ShowStatusBar, Command::ReportOptions,
                              Command::Report, Command::Options, Command::Refresh}));
}

TEST_F(Commands, UtilitiesMakeDocumentsOnlyOfListedServices) {
    clientWithServices();
    addComputer(addClient("Babic", "Bo"), "Idle");
    start();
    ASSERT_GT(win().controls.ListView1->count(), 0);
    EXPECT_EQ(inUtilities(), QList<Command>({Command::RestartDatabase, Command::CompactDatabase}));
    tab(2);
    EXPECT_EQ(inUtilities(), QList<Command>({Command::RestartDatabase, Command::CompactDatabase}));
    tab(3);
    EXPECT_EQ(inUtilities(), QList<Command>({Command::Invoice, Command::Quotation, Command::RestartDatabase,
                                             Command::CompactDatabase}));
    tab(1);
    choose(0, "Babic, Bo");
    tab(3);
    EXPECT_EQ(inUtilities(), QList<Command>({Command::RestartDatabase, Command::CompactDatabase}));
}

TEST_F(Commands, FiltersAndSearchNeedAChosenClient) {
    start();
    open(win().bars.menus.menu(Menu::Database));
    EXPECT_FALSE(win().bars.menus.entry(Command::Search)->isEnabled());
    EXPECT_FALSE(win().bars.menus.entry(Command::QuickFilter)->isEnabled());
    by_hand::closeMenus();
    end();
    addClient("Anic", "Vesna");
    start();
    EXPECT_EQ(
        usable(menuNamed("mnuQuickSearch")),
        QList<Command>({Command::FilterFinishedNotPaid, Command::FilterNotFinishedNotPaid,
                        Command::FilterNotFinishedPaid, Command::FilterDueNotPaid, Command::FilterDuePaid}));
    give(Command::FilterFinishedNotPaid);
    EXPECT_EQ(boxes.lastText(), "Quick filtering didn't result with any data.");
}

TEST_F(Commands, PopupMenuOfAnEmptyListHasNoLegend) {
    addComputer(addClient("Anic", "Vesna"), "Desk");
    start();
    tab(3);
    giveInPopup(Command::Legend);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(inPopup(), QList<Command>({Command::AddService}));
}

TEST_F(Commands, PopupMenuUnsortsOnlyASortedList) {
    clientWithServices();
    start();
    tab(3);
    EXPECT_FALSE(inPopup().contains(Command::Unsort));
    by_hand::clickHeader(win().controls.ListView1, columnNumber(ServiceColumn::Price));
    EXPECT_TRUE(inPopup().contains(Command::Unsort));
    giveInPopup(Command::Unsort);
    EXPECT_FALSE(win().choices.order.LVWSorted);
    EXPECT_FALSE(inPopup().contains(Command::Unsort));
}

TEST_F(Commands, LegendIsOfferedByTheHelpMenuOnTheServicesOnly) {
    clientWithServices();
    start();
    EXPECT_EQ(usable(win().bars.menus.menu(Menu::Help)),
              QList<Command>({Command::HelpContents, Command::HelpIndex, Command::About}));
    tab(2);
    EXPECT_EQ(usable(win().bars.menus.menu(Menu::Help)),
              QList<Command>({Command::HelpContents, Command::HelpIndex, Command::About}));
    tab(3);
    EXPECT_EQ(usable(win().bars.menus.menu(Menu::Help)),
              QList<Command>({Command::HelpContents, Command::HelpIndex, Command::Legend, Command::About}));
}

TEST_F(Commands, EmptyShopOffersOnlyAdd) {
    start();
    EXPECT_EQ(inDatabaseMenu(), QList<Command>({Command::AddRecord, Command::Utilities, Command::Exit}));
    EXPECT_EQ(onToolbar(), QStringList({"NewRecord", "ApplyFilter", "Refresh", "Help"}));
    tab(2);
    EXPECT_EQ(inDatabaseMenu(), QList<Command>({Command::Utilities, Command::Exit}));
    tab(3);
    EXPECT_EQ(inDatabaseMenu(), QList<Command>({Command::Utilities, Command::Exit}));
    EXPECT_EQ(inPopup(), QList<Command>());
}

TEST_F(Commands, DatabaseMenuFollowsTheStage) {
    clientWithServices();
    start();
    EXPECT_EQ(inDatabaseMenu(), QList<Command>({Command::AddRecord, Command::DeleteRecord, Command::Search,
                                                Command::QuickFilter, Command::Utilities, Command::Exit}));
    type(13, "064");
    EXPECT_EQ(inDatabaseMenu(),
              QList<Command>({Command::AddRecord, Command::DeleteRecord, Command::SaveRecord, Command::Search,
                              Command::QuickFilter, Command::Utilities, Command::Exit}));
    tab(2);
    EXPECT_EQ(inDatabaseMenu(), QList<Command>({Command::AddRecord, Command::DeleteRecord, Command::Search,
                                                Command::QuickFilter, Command::Utilities, Command::Exit}));
    type(40, "router");
    EXPECT_EQ(inDatabaseMenu(),
              QList<Command>({Command::AddRecord, Command::DeleteRecord, Command::SaveRecord, Command::Search,
                              Command::QuickFilter, Command::Utilities, Command::Exit}));
    tab(3);
    EXPECT_EQ(inDatabaseMenu(),
              QList<Command>({Command::AddRecord, Command::EditService, Command::DeleteRecord,
                              Command::Search, Command::QuickFilter, Command::Utilities, Command::Exit}));
}

TEST_F(Commands, DatabaseMenuOfAComputerWithoutServices) {
    addComputer(addClient("Anic", "Vesna"), "Desk");
    start();
    tab(3);
    EXPECT_EQ(inDatabaseMenu(), QList<Command>({Command::AddRecord, Command::Search, Command::QuickFilter,
                                                Command::Utilities, Command::Exit}));
    EXPECT_EQ(inPopup(), QList<Command>({Command::AddService}));
}

TEST_F(Commands, DatabaseMenuWhileAddingFollowsTheEmptySelectionButOffersDelete) {
    addClient("Anic", "Vesna");
    start();
    tool("NewRecord");
    EXPECT_EQ(inDatabaseMenu(),
              QList<Command>({Command::AddRecord, Command::DeleteRecord, Command::Utilities, Command::Exit}));
    give(Command::DeleteRecord);
    EXPECT_EQ(boxes.lastText(), "Can't delete record because you're in AddNew mode.");
    EXPECT_TRUE(win().shop.editing.AddNewMode);
}

TEST_F(Commands, DatabaseMenuOfTheFirstClientOffersNothingToDelete) {
    start();
    tool("NewRecord");
    EXPECT_EQ(inDatabaseMenu(), QList<Command>({Command::AddRecord, Command::Utilities, Command::Exit}));
}

TEST_F(Commands, DatabaseMenuWhileAddingAComputerOffersDeleteWhereThereIsOne) {
    anic = addClient("Anic", "Vesna");
    addComputer(anic, "Desk");
    addClient("Peric", "Pera");
    start();
    tab(2);
    tool("NewRecord");
    EXPECT_TRUE(inDatabaseMenu().contains(Command::DeleteRecord));
    boxes.answers << platform::BoxAnswer::No;
    tab(1);
    choose(0, "Peric, Pera");
    tab(2);
    tool("NewRecord");
    EXPECT_FALSE(inDatabaseMenu().contains(Command::DeleteRecord));
}

TEST_F(Commands, ToolbarFollowsTheStage) {
    clientWithServices();
    start();
    EXPECT_EQ(onToolbar(),
              QStringList({"NewRecord", "DeleteRecord", "ApplyFilter", "Refresh", "ViewReport", "Help"}));
    type(13, "064");
    EXPECT_EQ(onToolbar(), QStringList({"NewRecord", "DeleteRecord", "SaveRecord", "ApplyFilter", "Refresh",
                                        "ViewReport", "Help"}));
    tab(2);
    EXPECT_EQ(onToolbar(),
              QStringList({"NewRecord", "DeleteRecord", "ApplyFilter", "Refresh", "ViewReport", "Help"}));
    tab(3);
    EXPECT_EQ(onToolbar(), QStringList({"NewRecord", "EditRecord", "DeleteRecord", "ApplyFilter", "Refresh",
                                        "ViewReport", "PriceList", "Invoice", "Quotation", "Help"}));
}

TEST_F(Commands, ActiveFilterIsCheckedWhenTheMenuOpens) {
    addClient("Anic", "Vesna");
    start();
    win().shop.filter.ActiveFilter = 3;
    inDatabaseMenu();
    EXPECT_TRUE(win().bars.menus.entry(Command::FilterDueNotPaid)->isChecked());
    win().shop.filter.ActiveFilter = -1;
    inDatabaseMenu();
    for (const QAction* filter : menuNamed("mnuQuickSearch")->actions()) {
        EXPECT_FALSE(filter->isChecked());
    }
}

TEST_F(Commands, FilterButtonItselfFiltersNothing) {
    clientWithServices();
    start();
    QTest::mouseClick(face("ApplyFilter"), Qt::LeftButton, Qt::NoModifier, QPoint(6, 10));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(),
              "Press a little down arrow on the very righ of this button to select a filter to apply.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Information);
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
}

TEST_F(Commands, FilterButtonDropsDownTheFiveFilters) {
    clientWithServices();
    start();
    QStringList keys;
    by_hand::inDropDown(qobject_cast<QToolButton*>(face("ApplyFilter")), [&](QMenu* menu) {
        for (QAction* entry : menu->actions()) {
            keys.append(entry->objectName() + ": " + entry->text());
        }
        by_hand::clickItem(menu, menu->actions().at(1));
    });
    EXPECT_EQ(win().shop.filter.ActiveFilter, 1);
    EXPECT_EQ(keys, QStringList({"FNP: &Finished and not paid services",
                                 "NFNP: N&ot finished and not paid services",
                                 "NFP: Not fi&nished and paid services",
                                 "NFNPDD: Not finis&hed and not paid services with due date",
                                 "NFPDD: Not finishe&d and paid services with due date"}));
}

TEST_F(Commands, RemovingAFilterWhereThereIsNoneOnlyDisablesTheButton) {
    clientWithServices();
    start();
    win().bars.toolbar.button("RemoveFilter")->setEnabled(true);
    tool("RemoveFilter");
    EXPECT_FALSE(canUse("RemoveFilter"));
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(win().controls.Combo1[0]->entryCount(), 1);
}

TEST_F(Commands, SearchIsAnnouncedForLater) {
    addClient("Anic", "Vesna");
    start();
    give(Command::Search);
    EXPECT_EQ(boxes.lastText(), "This is an additional feature that will be built in later.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Information);
}

TEST_F(Commands, DatabaseMenuAddsSavesAndDeletes) {
    start();
    give(Command::AddRecord);
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    typeClient("Babic", "Bo");
    give(Command::SaveRecord);
    EXPECT_EQ(countRows("Customers"), 1);
    closeDatabases();
    boxes.answers << platform::BoxAnswer::Yes;
    give(Command::DeleteRecord);
    EXPECT_EQ(countRows("Customers"), 0);
}

TEST_F(Commands, ToolbarAddsSavesDeletesAndRefreshes) {
    start();
    tool("NewRecord");
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    typeClient("Babic", "Bo");
    tool("SaveRecord");
    EXPECT_EQ(countRows("Customers"), 1);
    const int colleagues = addClient("Anic", "Vesna");
    tool("Refresh");
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo"}));
    choose(0, "Babic, Bo");
    boxes.answers << platform::BoxAnswer::No;
    tool("DeleteRecord");
    EXPECT_EQ(countRows("Customers"), 2);
    boxes.answers << platform::BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna"}));
    EXPECT_EQ(countRows("SELECT * FROM Customers WHERE CustID=" + std::to_string(colleagues)), 1);
    EXPECT_EQ(countRows("Customers"), 1);
}

TEST_F(Commands, ToolbarDeletesOnTheStageOnShow) {
    clientWithServices();
    start();
    tab(3);
    boxes.answers << platform::BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_EQ(countRows("Services"), 0);
    EXPECT_EQ(countRows("Computers"), 1);
    tab(2);
    boxes.answers << platform::BoxAnswer::Yes;
    tool("DeleteRecord");
    EXPECT_EQ(countRows("Computers"), 0);
    EXPECT_EQ(countRows("Customers"), 1);
}

TEST_F(Commands, ServiceCommandsOpenTheEditorForTheChosenOrANewService) {
    addService(addComputer(addClient("Anic", "Vesna"), "Desk"), {{"Comments", "Loud."}});
    start();
    tab(3);
    const auto comments = [&](const std::function<void()>& deed) {
        QString found = "(not opened)";
        inModal<frmDetails>(deed, [&](frmDetails& editor) {
            found = editor.findChild<QPlainTextEdit*>("Text1(4)")->toPlainText();
            QTest::keyClick(&editor, Qt::Key_Escape);
        });
        return found;
    };
    EXPECT_EQ(comments([&] { tool("EditRecord"); }), "Loud.");
    EXPECT_EQ(comments([&] { give(Command::EditService); }), "Loud.");
    EXPECT_EQ(comments([&] { giveInPopup(Command::EditService); }), "Loud.");
    EXPECT_EQ(comments([&] {
                  QTest::mouseDClick(win().controls.ListView1->viewport(), Qt::LeftButton, Qt::NoModifier,
                                     by_hand::placeOfRow(win().controls.ListView1, 1));
              }),
              "Loud.");
    EXPECT_EQ(comments([&] { tool("NewRecord"); }), "");
    EXPECT_EQ(comments([&] { give(Command::AddRecord); }), "");
    EXPECT_EQ(comments([&] { giveInPopup(Command::AddService); }), "");
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_EQ(countRows("Services"), 1);
}

TEST_F(Commands, ExitUnloadsTheWindow) {
    start();
    give(Command::Exit);
    EXPECT_TRUE(win().isUnloaded());
    EXPECT_FALSE(win().isVisible());
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Commands, UnknownPositionsNameTheirHandler) {
    start();
    win().commands.mnuDatabase_Click(2);
    EXPECT_EQ(boxes.lastText(), "Unknown index: mnuDatabase_Click(2)");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    win().commands.mnuHelp_Click(9);
    EXPECT_EQ(boxes.lastText(), "Unknown index: mnuHelp_Click(9)");
    win().commands.mnuPopup_Click(1);
    EXPECT_EQ(boxes.lastText(), "Unknown index: mnuPopup_Click(1)");
    win().filters.mnuQuickSearch_Click(7);
    EXPECT_EQ(boxes.lastText(), "Unknown index: mnuQuickSearch_Click(7)");
    win().commands.mnuUtilities_Click(2);
    EXPECT_EQ(boxes.lastText(), "Unknown index: mnuUtilities_Click(2)");
    win().commands.mnuView_Click(-1);
    EXPECT_EQ(boxes.lastText(), "Unknown index: mnuView_Click(-1)");
}

TEST_F(Commands, BarsComeAndGoFromTheViewMenu) {
    start();
    open(win().bars.menus.menu(Menu::View));
    EXPECT_TRUE(win().bars.menus.entry(Command::ShowToolbar)->isChecked());
    EXPECT_TRUE(win().bars.menus.entry(Command::ShowStatusBar)->isChecked());
    by_hand::closeMenus();
    const int full = win().height();
    const int pane = win().controls.Picture1[0]->height();
    give(Command::ShowToolbar);
    EXPECT_FALSE(win().controls.Toolbar1->isVisible());
    EXPECT_FALSE(win().bars.menus.entry(Command::ShowToolbar)->isChecked());
    EXPECT_LT(win().height(), full);
    EXPECT_EQ(win().controls.Picture1[0]->height(), pane) << "the panes keep their height";
    give(Command::ShowStatusBar);
    EXPECT_FALSE(win().controls.StatusBar1->isVisible());
    give(Command::ShowToolbar);
    give(Command::ShowStatusBar);
    EXPECT_TRUE(win().controls.Toolbar1->isVisible());
    EXPECT_TRUE(win().controls.StatusBar1->isVisible());
    EXPECT_EQ(win().height(), full);
}

TEST_F(Commands, PanesKeepTheHeightThatAPersonGaveThem) {
    start();
    win().resize(win().width(), win().height() - 40);
    QCoreApplication::processEvents();
    const int pane = win().controls.Picture1[0]->height();
    give(Command::ShowToolbar);
    EXPECT_EQ(win().controls.Picture1[0]->height(), pane);
    give(Command::ShowStatusBar);
    EXPECT_EQ(win().controls.Picture1[0]->height(), pane);
    give(Command::ShowToolbar);
    give(Command::ShowStatusBar);
    EXPECT_EQ(win().controls.Picture1[0]->height(), pane);
}

TEST_F(Commands, TheStatusBarIsOnTheScreenWhereverTheWindowStood) {
    settings::setText(settings::MainPosition, "500;9000");
    start();
    const QRect room = win().screen()->availableGeometry();
    EXPECT_TRUE(room.contains(win().frameGeometry()));
    give(Command::ShowToolbar);
    win().move(0, room.bottom() + 1 - win().height());
    give(Command::ShowToolbar);
    EXPECT_TRUE(room.contains(win().frameGeometry())) << "also after the toolbar has come back";
}

TEST_F(Commands, FieldsThatTheScreenHasNoRoomForScroll) {
    start();
    const QWidget* last = win().controls.DTPicker1[2];
    win().resize(win().width(), win().minimumSizeHint().height());
    QCoreApplication::processEvents();
    EXPECT_TRUE(win().controls.StatusBar1->isVisible());
    EXPECT_LE(win().controls.StatusBar1->geometry().bottom(), win().height());
    bool wasHidden = false;
    by_hand::click(win().controls.Text2[0]);
    for (int step = 0; step < 40; ++step) {
        by_hand::press(Qt::Key_Tab);
        QWidget* field = QApplication::focusWidget();
        QCoreApplication::processEvents();
        EXPECT_FALSE(field->visibleRegion().isEmpty()) << field->objectName().toStdString();
        wasHidden = wasHidden || last->visibleRegion().isEmpty();
    }
    EXPECT_TRUE(wasHidden);
}

TEST_F(Commands, RightClicksBesideTheListOpenNoMenu) {
    start();
    by_hand::rightClick(win().controls.Toolbar1, QPoint(win().controls.Toolbar1->width() - 5, 5));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    by_hand::rightClick(win().menuBar(), QPoint(win().menuBar()->width() - 5, 5));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    by_hand::rightClick(win().controls.StatusBar1, QPoint(20, 5));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_FALSE(win().controls.Toolbar1->isMovable());
}

TEST_F(Commands, HiddenToolbarStaysHiddenAfterARestart) {
    start();
    give(Command::ShowToolbar);
    end();
    start();
    EXPECT_FALSE(win().controls.Toolbar1->isVisible());
    EXPECT_TRUE(win().controls.StatusBar1->isVisible());
    open(win().bars.menus.menu(Menu::View));
    EXPECT_FALSE(win().bars.menus.entry(Command::ShowToolbar)->isChecked());
    EXPECT_TRUE(win().bars.menus.entry(Command::ShowStatusBar)->isChecked());
    by_hand::closeMenus();
}

TEST_F(Commands, HelpMenuOpensContentsAndIndex) {
    start();
    if (!QFile::exists(path("Tarvello.hlp"))) {
        ASSERT_TRUE(QFile(path("Tarvello.hlp")).open(QIODevice::WriteOnly));
    }
    give(Command::HelpContents);
    give(Command::HelpIndex);
    tool("Help");
    ASSERT_EQ(helpCalls.size(), 3);
    EXPECT_EQ(helpCalls.at(0).command, HELP_FINDER);
    EXPECT_EQ(helpCalls.at(1).command, HELP_KEY);
    EXPECT_EQ(helpCalls.at(2).command, HELP_FINDER);
}

TEST_F(Commands, HelpAsksForAMissingFileEachTime) {
    start();
    QFile::remove(path("Tarvello.hlp"));
    for (int i = 1; i <= 2; ++i) {
        boxes.answers << platform::BoxAnswer::No;
        give(Command::HelpContents);
        EXPECT_EQ(boxes.asked.size(), i);
        EXPECT_EQ(boxes.lastText(), "Help file is missing. Would you like to try to find it?");
    }
    EXPECT_TRUE(helpCalls.isEmpty());
}

TEST_F(Commands, AboutIsTheSplashWindowAndGoesAtAClick) {
    start();
    give(Command::About);
    auto* about = win().findChild<frmSplash*>();
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->OpenedAsAbout);
    EXPECT_TRUE(about->isModal());
    EXPECT_EQ(about->timerInterval(), 0);
    QTest::mouseClick(about, Qt::LeftButton);
    EXPECT_FALSE(about->isVisible());
}

TEST_F(Commands, StatusTextFallsBackToTheStickyOne) {
    start();
    EXPECT_EQ(win().status.text(), "Ready");
    win().status.SetStatusText("Busy");
    EXPECT_EQ(win().status.text(), "Busy");
    win().status.SetStatusText({});
    EXPECT_EQ(win().status.text(), "Ready");
    win().status.SetStatusText("Open", true);
    win().status.SetStatusText("Busy");
    win().status.SetStatusText({});
    EXPECT_EQ(win().status.text(), "Open");
}

TEST_F(Commands, ClockOpensTheDateAndTimePanel) {
    int opened = 0;
    platform::setDateTimePanelHook([&] { return ++opened == 1; });
    start();
    QWidget* clock = win().controls.StatusBar1->panel("Time");
    ASSERT_NE(clock, nullptr);
    QTest::mouseDClick(clock, Qt::LeftButton);
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(boxes.asked.isEmpty());
    QTest::mouseDClick(clock, Qt::LeftButton);
    platform::setDateTimePanelHook({});
    EXPECT_EQ(boxes.lastText(), "Couldn't start Date/Time panel from Windows Control Panel.");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
}

TEST_F(Commands, FilterCaptionHasAPanelOfItsOwnAtTheLeft) {
    start();
    win().status.ShowFilterCaption(2, false);
    EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Filter");
    EXPECT_EQ(win().controls.StatusBar1->panelText("Filter"), "FILTER: Not finished but paid services");
    win().status.ShowFilterCaption(0, false);
    EXPECT_EQ(win().controls.StatusBar1->panelText("Filter"), "FILTER: Finished but not paid services");
    win().status.ShowFilterCaption(-1, true);
    EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Text");
    win().status.ShowFilterCaption(-1, true);
    EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Text");
}

TEST_F(Commands, RightClickOnTheListOpensThePopupMenu) {
    clientWithServices();
    const int second = addService(desk);
    start();
    tab(3);
    ASSERT_EQ(win().controls.ListView1->selectedIndex(), 1);
    by_hand::rightClickRow(win().controls.ListView1, 2);
    EXPECT_TRUE(win().bars.menus.menu(Menu::Popup)->isVisible());
    EXPECT_EQ(
        win().bars.menus.menu(Menu::Popup)->pos(),
        win().controls.ListView1->viewport()->mapToGlobal(by_hand::placeOfRow(win().controls.ListView1, 2)));
    boxes.answers << platform::BoxAnswer::Yes;
    by_hand::clickItem(win().bars.menus.menu(Menu::Popup),
                       win().bars.menus.popupEntry(Command::DeleteRecord));
    EXPECT_EQ(countRows("Services"), 1);
    EXPECT_EQ(countRows("SELECT * FROM Services WHERE ID=" + std::to_string(second)), 0)
        << "the service under the pointer";
}

TEST_F(Commands, PopupDeleteDeletesTheService) {
    clientWithServices();
    start();
    tab(3);
    boxes.answers << platform::BoxAnswer::Yes;
    giveInPopup(Command::DeleteRecord);
    EXPECT_EQ(countRows("Services"), 0);
    EXPECT_EQ(win().controls.ListView1->count(), 0);
    EXPECT_FALSE(canUse("EditRecord"));
    EXPECT_FALSE(canUse("DeleteRecord"));
}

TEST_F(Commands, MenusWorkFromTheKeyboard) {
    addClient("Anic", "Vesna");
    start();
    chooseByKeys(Qt::Key_V, win().bars.menus.menu(Menu::View), {Qt::Key_T});
    EXPECT_FALSE(win().controls.Toolbar1->isVisible());
    chooseByKeys(Qt::Key_V, win().bars.menus.menu(Menu::View), {Qt::Key_S});
    EXPECT_FALSE(win().controls.StatusBar1->isVisible());
    chooseByKeys(Qt::Key_P, win().bars.menus.menu(Menu::Help), {Qt::Key_I});
    ASSERT_EQ(helpCalls.size(), 1);
    EXPECT_EQ(helpCalls.at(0).command, HELP_KEY);
    chooseByKeys(Qt::Key_D, win().bars.menus.menu(Menu::Database), {Qt::Key_R});
    EXPECT_EQ(boxes.lastText(), "This is an additional feature that will be built in later.");
    chooseByKeys(Qt::Key_D, win().bars.menus.menu(Menu::Database), {Qt::Key_F, Qt::Key_O});
    EXPECT_EQ(boxes.lastText(), "Quick filtering didn't result with any data.");
    chooseByKeys(Qt::Key_D, win().bars.menus.menu(Menu::Database), {Qt::Key_A});
    EXPECT_TRUE(win().shop.editing.AddNewMode);
}

}  // namespace
