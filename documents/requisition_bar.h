#pragma once

#include <QKeyCombination>
#include <QString>
#include <functional>
#include <map>
#include <optional>
#include <span>

class QAction;
class QKeyEvent;
class QPoint;
class QToolBar;
class QWidget;
class frmInvoiceEx;

enum class RequisitionCommand { Catalogue, Delete, DeleteAll, Refresh, Print, Unsort, Help, Close };

// What the rules look at.
struct RequisitionState {
    bool hasProducts = false;
    bool hasSelection = false;
    bool isSorted = false;
};

// One command: its button, its key, when its button may be pressed, and what the window does then. A key is
// taken whatever the button says; the routine behind it knows what it can do.
struct RequisitionCommandRow {
    RequisitionCommand name;
    bool beginsGroup;         // a gap before its button
    const char* key;          // of the button; empty: it has none
    const char* caption;      // under the picture
    const char* picture;      // of resources/pictures
    const char* description;  // tool tip, and the status bar under the pointer
    std::optional<QKeyCombination> shortcut;
    bool (*isUsable)(const RequisitionState&);  // nullptr: always
    void (frmInvoiceEx::*action)();
};

// The requisition's toolbar and its keys: a view of the table of commands.
class RequisitionBar {
 public:
    using Run = std::function<void(const RequisitionCommandRow&)>;

    // The toolbar belongs to `window`. `commands` outlive the bar.
    RequisitionBar(QWidget& window, std::span<const RequisitionCommandRow> commands, Run run);

    QToolBar* toolbar() const { return toolbar_; }
    QAction* action(RequisitionCommand command) const;  // nullptr: it has no button
    QAction* button(const QString& key) const;          // likewise
    void update(const RequisitionState& state);
    // Runs the command of this key. False: none has it.
    bool runKey(const QKeyEvent& key) const;
    // What the status bar tells of the button there, in the toolbar's own pixels: nothing of one that cannot
    // be pressed.
    QString tipAt(const QPoint& place) const;

 private:
    void addButton(const RequisitionCommandRow& command);

    std::span<const RequisitionCommandRow> commands_;
    Run run_;
    QToolBar* toolbar_;
    std::map<RequisitionCommand, QAction*> actions_;
};
