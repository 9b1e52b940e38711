#include "records/commands.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QTest>
#include <QToolBar>
#include <array>

#include "records/command_table.h"
#include "records/main_bars.h"

namespace {

TEST(CommandTable, EachCommandHasOneRowAndEachPlaceOneCommand) {
    QSet<Command> names;
    QSet<std::pair<int, int>> places;
    QSet<int> buttons;
    for (const CommandRow& row : commandTable()) {
        EXPECT_FALSE(names.contains(row.name)) << static_cast<int>(row.name);
        names.insert(row.name);
        for (const MenuEntry& entry : {row.entry, row.popup}) {
            const std::pair place{static_cast<int>(entry.menu), entry.position};
            EXPECT_TRUE(entry.menu == Menu::None || !places.contains(place)) << static_cast<int>(row.name);
            places.insert(place);
        }
        if (row.button.key != nullptr) {
            EXPECT_FALSE(buttons.contains(row.button.position)) << row.button.key;
            buttons.insert(row.button.position);
        }
        EXPECT_EQ(row.action == nullptr, row.entry.opens != Menu::None) << static_cast<int>(row.name);
    }
}

CommandState stage(int number) {
    CommandState state;
    state.stage = number;
    return state;
}

// May the command be given: from its menu, from the pop-up menu, by its button?
struct Given {
    bool menu, popup, button;
    bool operator==(const Given&) const = default;
};
Given givenBy(Command command, const CommandState& state) {
    const CommandRow& row = *commandOf(commandTable(), command);
    const auto may = [&](Rule rule) { return rule == nullptr || rule(state); };
    return {may(row.entry.usable), may(row.popup.usable), may(row.button.usable)};
}

TEST(CommandTable, RulesGoByWhatIsChosenAndWhatIsListed) {
    CommandState none = stage(1);
    CommandState client = stage(1);
    client.clientChosen = client.hasClients = true;
    CommandState adding = stage(1);
    adding.adding = adding.hasClients = true;
    CommandState computer = stage(2);
    computer.clientChosen = computer.hasClients = computer.computerChosen = computer.hasComputers = true;
    CommandState services = computer;
    services.stage = 3;
    CommandState listed = services;
    listed.hasServices = true;
    CommandState chosen = listed;
    chosen.serviceChosen = true;
    const struct {
        Command command;
        CommandState state;
        Given given;
    } rows[] = {
        {Command::AddRecord, none, {true, true, true}},
        {Command::AddRecord, stage(2), {false, true, false}},
        {Command::AddRecord, services, {true, true, true}},
        {Command::EditService, services, {false, false, false}},
        {Command::EditService, listed, {true, true, true}},
        {Command::DeleteRecord, none, {false, false, false}},
        {Command::DeleteRecord, client, {true, false, true}},
        {Command::DeleteRecord, adding, {true, false, true}},
        {Command::DeleteRecord, computer, {true, false, true}},
        {Command::DeleteRecord, services, {false, false, false}},
        {Command::DeleteRecord, listed, {true, true, true}},
        {Command::Invoice, client, {false, false, false}},
        {Command::Invoice, listed, {true, true, true}},
        {Command::PriceList, listed, {false, true, true}},
        {Command::PriceList, chosen, {true, true, true}},
        {Command::Report, none, {false, true, false}},
        {Command::Report, adding, {false, true, true}},
        {Command::Report, client, {true, true, true}},
        {Command::AddService, none, {true, false, true}},
        {Command::AddService, services, {true, true, true}},
        {Command::Legend, client, {false, false, true}},
        {Command::Legend, services, {true, false, true}},
        {Command::Legend, listed, {true, true, true}},
    };
    int line = 0;
    for (const auto& row : rows) {
        EXPECT_EQ(givenBy(row.command, row.state), row.given) << line;
        ++line;
    }
}

TEST(CommandTable, UnsortNeedsASortedListWithRows) {
    CommandState state = stage(3);
    state.sorted = true;
    EXPECT_FALSE(givenBy(Command::Unsort, state).popup);
    state.hasServices = true;
    EXPECT_TRUE(givenBy(Command::Unsort, state).popup);
    state.sorted = false;
    EXPECT_FALSE(givenBy(Command::Unsort, state).popup);
}

// Bars made from a table that no shop has.
struct Bars : testing::Test {
    Bars() {
        QObject::connect(&menus, &MainMenus::given, [this](Command command) { given.append(command); });
        QObject::connect(&toolbar, &MainToolbar::given, [this](Command command) { given.append(command); });
    }
    static constexpr std::array kRows = {
        CommandRow{Command::Search,
                   nullptr,
                   {Menu::View, 2, 508, [](const CommandState& s) { return s.dirty; }},
                   {Menu::Popup, 0, 801, [](const CommandState& s) { return s.sorted; }},
                   {},
                   "F7"},
        CommandRow{Command::Report, nullptr, {Menu::View, 0, 605}, {}, {"ViewReport", 2, 2108, false}},
        CommandRow{Command::Refresh, nullptr, {}, {}, {"Refresh", 0, 2116}},
    };
    QMainWindow window;
    MainStart start{window};
    CommandState state;
    MainBars bars{window, kRows, start, [this] { return state; }};
    MainMenus& menus = bars.menus;
    MainToolbar& toolbar = bars.toolbar;
    QList<Command> given;
};

TEST_F(Bars, APlaceWithoutACommandIsASeparator) {
    menus.make();
    toolbar.make("bar", {});
    const QList<QAction*> items = menus.menu(Menu::View)->actions();
    ASSERT_EQ(items.size(), 3);
    EXPECT_EQ(items[0], menus.entry(Command::Report));
    EXPECT_EQ(items[0]->objectName(), "mnuView(0)");
    EXPECT_TRUE(items[1]->isSeparator());
    EXPECT_EQ(items[2], menus.entry(Command::Search));
    const QList<QAction*> buttons = toolbar.bar()->actions();
    ASSERT_EQ(buttons.size(), 3);
    EXPECT_EQ(buttons[0]->objectName(), "Refresh");
    EXPECT_TRUE(buttons[1]->isSeparator());
    EXPECT_EQ(buttons[2], toolbar.button("ViewReport"));
    EXPECT_FALSE(buttons[2]->isEnabled());
    EXPECT_EQ(toolbar.button("NoSuchKey"), nullptr);
}

TEST_F(Bars, WhatIsChosenGoesOutAsItsCommand) {
    menus.make();
    toolbar.make("bar", {});
    menus.entry(Command::Report)->trigger();
    menus.popupEntry(Command::Search)->trigger();
    toolbar.button(Command::Refresh)->trigger();
    EXPECT_EQ(given, QList<Command>({Command::Report, Command::Search, Command::Refresh}));
}

TEST_F(Bars, AMenuIsRenewedByItself) {
    menus.make();
    state.dirty = true;
    bars.renew(Menu::Popup);
    EXPECT_FALSE(menus.popupEntry(Command::Search)->isEnabled());
    EXPECT_TRUE(menus.entry(Command::Search)->isEnabled());
    state.dirty = false;
    bars.renew(Menu::View);
    EXPECT_FALSE(menus.entry(Command::Search)->isEnabled());
}

TEST_F(Bars, AKeyGivesItsCommandAsSoonAsItMayBeGiven) {
    menus.make();
    window.menuBar()->addMenu(menus.menu(Menu::View));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    bars.UpdateToolbarState();
    QTest::keyClick(&window, Qt::Key_F7);
    EXPECT_TRUE(given.isEmpty());
    state.dirty = true;
    bars.UpdateToolbarState();
    QTest::keyClick(&window, Qt::Key_F7);
    EXPECT_EQ(given, QList<Command>({Command::Search}));
}

TEST_F(Bars, BarsThatWereNotMadeAreLeftAlone) {
    bars.renew(Menu::View);
    bars.UpdateServiceButtons();
    toolbar.allowFiltersBut(1);
    menus.forbid(Command::Report);
    EXPECT_EQ(menus.menu(Menu::View), nullptr);
    EXPECT_EQ(toolbar.button(Command::Refresh), nullptr);
}

}  // namespace
