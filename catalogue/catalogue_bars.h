#pragma once

#include <QObject>
#include <QString>
#include <array>

#include "catalogue/command_table.h"

class CatalogueMenus;
class CataloguePane;
class CatalogueStatus;
class QAction;
class QKeyEvent;
class QPoint;
class QToolBar;
class QWidget;

// Where the commands are given: the toolbar, the keys, the popup menus (CatalogueMenus). All of them are
// views of the command table, and work on the pane that is being worked in.
class CatalogueBars : public QObject {
    Q_OBJECT
 public:
    static constexpr int kPanes = 3, kProducts = 2;
    struct Part {
        CataloguePane* pane = nullptr;
        PaneCommands* commands = nullptr;
        const QWidget* searchBox = nullptr;  // the products have none
    };
    CatalogueBars(const std::array<Part, kPanes>& parts, WindowCommands& commands, QWidget* window,
                  CatalogueStatus& status, CatalogueMenus& menus);

    QToolBar* toolbar() const { return toolbar_; }
    QAction* button(const QString& key) const;  // nullptr where there is none

    void update();  // what can be done with the pane that is being worked in
    // For the list that has the focus (see CatalogueCommandRow::alsoTyping); none has it: nothing happens.
    void runOnList(CatalogueCommand command);
    void runOnProducts(CatalogueCommand command);
    bool runKey(const QKeyEvent& key);  // true: dealt with
    void openMenu(int pane, const QPoint& at);
    void pointerMoved(const QObject* widget, const QPoint& globalPosition);
    // Pane of the focused control: a list pane for its list (and, where `orSearchBox`, its search box), else
    // -1.
    int focusedList(bool orSearchBox) const;

 private:
    void build(QWidget* window);
    void runButton(CatalogueCommand command);
    void run(CatalogueCommand command, int pane);
    int activePane() const;  // of the focused control, search boxes included; products for any other
    PaneState stateOf(int pane) const;

    std::array<Part, kPanes> parts_;
    WindowCommands& commands_;
    QWidget* window_;
    CatalogueStatus& status_;
    CatalogueMenus& menus_;
    QToolBar* toolbar_ = nullptr;
};
