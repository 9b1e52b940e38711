#pragma once

#include <QString>
#include <functional>
#include <map>
#include <span>

#include "documents/requisition_commands.h"

class QAction;
class QKeyEvent;
class QPoint;
class QToolBar;
class QWidget;

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
