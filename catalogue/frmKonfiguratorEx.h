#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

#include "catalogue/catalogue_parent.h"
#include "catalogue/catalogue_routines.h"
#include "catalogue/command_table.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"
#include "platform/controls/popup_menu.h"
#include "platform/controls/splitter.h"
#include "platform/controls/status_bar.h"

class CatalogueSwitch;
class QEventLoop;
namespace platform {
class Trap;
}

// The catalogue: groups, manufacturers, and the products of the selected group and manufacturer. It opens
// over the requisition of a service, to which products are drawn by Enter or by a drag onto it.
//
// The window builds its parts (CatalogueParts) and tells them of keys, focus and pointer; what it does itself
// is opening, loading and closing. Panes: 0 groups, 1 manufacturers, 2 products.
class frmKonfiguratorEx : public QDialog, private WindowCommands, public CatalogueRoutines {
    Q_OBJECT
 public:
    explicit frmKonfiguratorEx(QWidget* parent = nullptr);
    ~frmKonfiguratorEx() override;

    void setParentForm(CatalogueParent* parent) { ParentForm = parent; }
    // Shows the window over its parent, which takes nothing but a drop meanwhile, and returns when it is
    // closed.
    void Display();
    void Unload();  // stores the settings; once. The destructor does it otherwise.

    platform::Splitter *VSplitter = nullptr, *HSplitter = nullptr;

    void PrintPriceList() override;

 public slots:
    void reject() override;  // the close box

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    void showHelp() override;

    void build();
    void watchControls();
    void setTabs();
    void load();
    void loadProductList();
    void firstShowing();
    void storeSettings(platform::Trap& step);

    std::array<CatalogueSwitch*, 2> switches() const;
    int searchBoxOf(const QObject* widget) const;  // -1: no search box
    bool windowKey(const QKeyEvent& key);          // true: dealt with
    void focusCame(const QObject* widget);

    QPointer<QEventLoop> waiting_;  // in Display
    bool loaded_ = false;
    bool shown_ = false;
};
