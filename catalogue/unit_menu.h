#pragma once

#include <QObject>
#include <QString>

class QPoint;
class QWidget;
class UnitCommands;
class UnitList;
namespace platform {
class PopupMenu;
}

// The popup menu of the units of measure: a view of its table of commands.
class UnitMenu : public QObject {
    Q_OBJECT
 public:
    UnitMenu(UnitList& units, UnitCommands& commands, QWidget* window);

    void create();  // a failure is told in a box
    void drop();
    void show(const QPoint& globalPosition);

 private:
    QString addLines();  // the reason of a failure; empty: added
    void run(int item);

    UnitList& units_;
    UnitCommands& commands_;
    QWidget* window_;
    platform::PopupMenu* popup_ = nullptr;  // nullptr: not made, or dropped
};
