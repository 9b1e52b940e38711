#pragma once

#include <span>

struct CommandTargets;

// Everything that a person can tell the main window to do. One row of the table in command_table.cpp says
// where a command stands, what it is called there, when it may be given and what it does; menus, toolbar and
// pop-up menu are made from that table. Nobody counts places.
enum class Command {
    AddRecord,
    EditService,
    DeleteRecord,
    SaveRecord,
    Search,
    QuickFilter,  // opens a sub-menu, as Utilities does
    Utilities,
    Exit,
    RemoveFilters,
    FilterFinishedNotPaid,
    FilterNotFinishedNotPaid,
    FilterNotFinishedPaid,
    FilterDueNotPaid,
    FilterDuePaid,
    Invoice,
    Quotation,
    RestartDatabase,
    CompactDatabase,
    ShowToolbar,
    ShowStatusBar,
    ReportOptions,
    Report,
    PriceList,
    Options,
    Refresh,
    HelpContents,
    HelpIndex,
    Legend,
    About,
    AddService,
    QuotationOfRow,  // of the pop-up menu
    Unsort,
    ChooseFilter,  // the toolbar's button with the drop-down
    DropFilter,    // the toolbar's way of removing one
    Count,         // no command
};

enum class Menu { None, Database, QuickSearch, Utilities, View, Help, Popup };

// When the state of a toolbar's button is worked out. A menu's entries are renewed when it opens.
enum class Renewal {
    Never,         // by what it does alone
    WithRecords,   // after each change of a field, a record or a stage
    WithServices,  // on a stage change and after the list is filled
};

// What the rules go by.
struct CommandState {
    int stage = 1;  // on show, 1 to 3
    bool clientChosen = false, computerChosen = false;
    bool hasClients = false, hasComputers = false, hasServices = false;  // there are some to choose from
    bool serviceChosen = false;
    bool dirty = false;   // the record of the stage on show
    bool adding = false;  // a record, which is not chosen yet
    bool sorted = false;
    int activeFilter = -1;  // -1: none
    bool toolbarShown = false, statusBarShown = false;
};
using Rule = bool (*)(const CommandState&);

// A place in a menu. Places of a menu count from 0; a place that no command has is a separator.
struct MenuEntry {
    Menu menu = Menu::None;
    int position = 0;
    int textId = 0;
    Rule usable = nullptr;   // nullptr: always
    Rule checked = nullptr;  // nullptr: the entry has no check mark
    Menu opens = Menu::None;
};

// A place on the toolbar, counted as in a menu.
struct ToolbarButton {
    const char* key = nullptr;  // of the button and its picture; nullptr: none
    int position = 0;
    int tipId = 0;
    bool enabledAtStart = true;
    Renewal renewal = Renewal::Never;
    Rule usable = nullptr;
    bool opensFilters = false;  // a drop-down of the quick filters hangs on it
};

struct CommandRow {
    Command name;
    void (*action)(CommandTargets&);  // nullptr: its sub-menu acts
    MenuEntry entry = {};
    MenuEntry popup = {};
    ToolbarButton button = {};
    const char* shortcut = nullptr;  // works without the menu; nullptr: none
    int filter = -1;                 // the number of a quick filter
};

// nullptr where none stands there.
const CommandRow* commandAt(std::span<const CommandRow> rows, Menu menu, int position);
const CommandRow* commandOf(std::span<const CommandRow> rows, Command name);
