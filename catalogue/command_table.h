#pragma once

#include <QString>
#include <initializer_list>
#include <optional>
#include <span>

#include "platform/system/sort_tag.h"

class PaneCommands;

// The commands of the catalogue. What shows one, on the toolbar, in a menu or by a key, takes it from here.
enum class CatalogueCommand { New, Edit, Delete, DeleteAll, Print, SortUp, SortDown, Refresh, Unsort, Help };

// The pane that a command is for, as far as the rules ask.
struct PaneState {
    bool isProducts = false;
    bool hasRows = false;
    bool hasSelection = false;
    platform::SortTag sort;
};

// Commands that concern no pane.
class WindowCommands {
 public:
    virtual ~WindowCommands() = default;
    // Asks for what the price list shall hold, and shows it.
    virtual void PrintPriceList() = 0;
    virtual void showHelp() = 0;
};

struct CatalogueCommandRow {
    CatalogueCommand command;
    const char* key;  // of the button, and of the item in the menu of a list
    int text;         // tells what it does, in the string table
    const char* icon;
    const char* button;    // captions; nullptr: the place does not have it
    const char* listItem;  // with the key's name behind a tab
    int productText;       // as `text`, in the menu of the products
    const char* productItem;
    bool alsoTyping;                 // for a list also while somebody types in its search box
    bool (*rule)(const PaneState&);  // nullptr: always possible
    void (*action)(PaneCommands&, WindowCommands&);
};

std::span<const CatalogueCommandRow> catalogueCommands();  // by CatalogueCommand
const CatalogueCommandRow& rowOf(CatalogueCommand command);

// The three places, in their order; nothing stands for a separator.
using CommandOrder = std::span<const std::optional<CatalogueCommand>>;
CommandOrder toolbarOrder();
CommandOrder listMenuOrder();
CommandOrder productMenuOrder();

// The item's key in the menu of the products.
QString productMenuKey(const CatalogueCommandRow& row);
// Of an item's key, from either menu; nothing: no command's key.
struct MenuItem {
    CatalogueCommand command;
    bool isProducts = false;
};
std::optional<MenuItem> menuItemOf(const QString& key);
