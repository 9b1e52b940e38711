#pragma once

#include <QKeyCombination>
#include <optional>
#include <span>

class ProductReturn;
class QDialog;
class RequisitionCatalogue;
class RequisitionList;
class RequisitionPrint;

// The commands of the requisition. What shows one, on the toolbar or by a key, takes it from here.
enum class RequisitionCommand { Catalogue, Delete, DeleteAll, Refresh, Print, Unsort, Help, Close };

// What the rules look at.
struct RequisitionState {
    bool hasProducts = false;
    bool hasSelection = false;
    bool isSorted = false;
};

// Those who do what the commands say.
struct RequisitionWork {
    RequisitionList& list;
    ProductReturn& giveBack;
    RequisitionPrint& print;
    RequisitionCatalogue& catalogue;
    QDialog& window;
};

// One command: its button, its key, when its button may be pressed, and what happens then. A key is taken
// whatever the button says; the routine behind it knows what it can do.
struct RequisitionCommandRow {
    RequisitionCommand name;
    bool beginsGroup;         // a gap before its button
    const char* key;          // of the button; empty: it has none
    const char* caption;      // under the picture
    const char* picture;      // of resources/pictures
    const char* description;  // tool tip, and the status bar under the pointer
    std::optional<QKeyCombination> shortcut;
    bool (*isUsable)(const RequisitionState&);  // nullptr: always
    void (*action)(const RequisitionWork&);
};

std::span<const RequisitionCommandRow> requisitionCommands();
