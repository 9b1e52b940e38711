// When a command of the catalogue is possible, what it does, and where it stands.
#include "catalogue/command_table.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <algorithm>

#include "catalogue/pane_commands.h"

namespace {

using enum CatalogueCommand;

// Those that come and go, of the ones that are possible.
QString possible(const PaneState& pane) {
    QStringList on;
    for (const CatalogueCommandRow& row : catalogueCommands()) {
        if (row.rule != nullptr && row.rule(pane)) {
            on.append(row.key);
        }
    }
    return on.join(QLatin1Char(' '));
}

TEST(CommandTable, RowsSelectionAndOrderSayWhatIsPossible) {
    struct Case {
        PaneState pane;
        const char* on;
    };
    const platform::SortTag up{true, "Grupa", "ASC"}, down{true, "Grupa", "DESC"},
        none{false, "Grupa", "ASC"};
    const Case cases[] = {
        {{false, false, false, none}, ""},
        {{false, false, false, up}, ""},
        {{false, true, false, none}, "delall asc desc"},
        {{false, true, true, none}, "edit delete delall asc desc"},
        {{false, true, true, up}, "edit delete delall desc unsort"},
        {{false, true, true, down}, "edit delete delall asc unsort"},
        {{true, false, false, up}, ""},
        {{true, true, false, none}, "delall print asc desc"},
        {{true, true, true, down}, "edit delete delall print asc unsort"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(possible(each.pane), each.on);
    }
    for (const CatalogueCommand always : {New, Refresh, Help}) {
        EXPECT_EQ(rowOf(always).rule, nullptr) << rowOf(always).key;
    }
}

// Writes down what it was asked to do.
struct Recorder : PaneCommands, WindowCommands {
    void add() override { done.append("add"); }
    void edit() override { done.append("edit"); }
    void remove() override { done.append("remove"); }
    void removeAll() override { done.append("removeAll"); }
    void sort(SortMode mode) override { done.append(QStringLiteral("sort %1").arg(static_cast<int>(mode))); }
    void PrintPriceList() override { done.append("print"); }
    void showHelp() override { done.append("help"); }
    QStringList done;
};

TEST(CommandTable, EachCommandDoesItsOwnThing) {
    struct Case {
        CatalogueCommand command;
        const char* does;
    };
    for (const Case& each :
         {Case{New, "add"}, Case{Edit, "edit"}, Case{Delete, "remove"}, Case{DeleteAll, "removeAll"},
          Case{Print, "print"}, Case{SortUp, "sort 1"}, Case{SortDown, "sort 2"}, Case{Refresh, "sort 0"},
          Case{Unsort, "sort 3"}, Case{Help, "help"}}) {
        Recorder recorder;
        rowOf(each.command).action(recorder, recorder);
        EXPECT_EQ(recorder.done, QStringList{each.does});
    }
}

TEST(CommandTable, AMenusKeyTellsTheCommandAndWhoseItIs) {
    struct Case {
        const char* key;
        std::optional<CatalogueCommand> command;
        bool isProducts;
    };
    for (const Case& each :
         {Case{"new", New, false}, Case{"lvnew", New, true}, Case{"asc", SortUp, false},
          Case{"lvunsort", Unsort, true}, Case{"lvprint", Print, true}, Case{"print", std::nullopt, false},
          Case{"lvasc", std::nullopt, false}, Case{"help", std::nullopt, false},
          Case{"lv", std::nullopt, false}, Case{"", std::nullopt, false}}) {
        const std::optional<MenuItem> item = menuItemOf(each.key);
        ASSERT_EQ(item.has_value(), each.command.has_value()) << each.key;
        if (item) {
            EXPECT_EQ(item->command, *each.command) << each.key;
            EXPECT_EQ(item->isProducts, each.isProducts) << each.key;
        }
    }
}

// A command stands only where it has a caption, and wherever it has one.
TEST(CommandTable, EveryPlaceShowsTheCommandsThatHaveACaptionThere) {
    struct Place {
        CommandOrder order;
        const char* CatalogueCommandRow::*caption;
    };
    for (const Place& place : {Place{toolbarOrder(), &CatalogueCommandRow::button},
                               Place{listMenuOrder(), &CatalogueCommandRow::listItem},
                               Place{productMenuOrder(), &CatalogueCommandRow::productItem}}) {
        for (const CatalogueCommandRow& row : catalogueCommands()) {
            const auto count = std::count(place.order.begin(), place.order.end(), std::optional(row.command));
            EXPECT_EQ(count, row.*place.caption != nullptr ? 1 : 0) << row.key;
        }
    }
}

}  // namespace
