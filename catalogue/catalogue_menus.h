#pragma once

#include <QObject>
#include <QString>

#include "catalogue/command_table.h"

class CatalogueStatus;
class QPoint;
class QWidget;
namespace platform {
class PopupMenu;
}

// The popup menus of the catalogue, one over the lists and one over the products: views of the command table,
// held by one control.
class CatalogueMenus : public QObject {
    Q_OBJECT
 public:
    CatalogueMenus(QWidget* window, CatalogueStatus& status) : window_(window), status_(status) {}

    platform::PopupMenu* const& popup() const { return popup_; }  // nullptr: not made, or dropped
    void makePopup();
    void dropPopup();
    QString create();  // an error's text, empty on success
    // Of a pane: 0 groups, 1 manufacturers, 2 products.
    void open(int pane, const PaneState& state, const QPoint& at);
    void click(int item);
    void highlight(int item, bool enabled, bool separator);

 signals:
    void chosen(const MenuItem& item);

 private:
    QWidget* window_;
    CatalogueStatus& status_;
    platform::PopupMenu* popup_ = nullptr;
};
