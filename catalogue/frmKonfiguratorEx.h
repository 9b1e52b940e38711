#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

#include "catalogue/catalogue_choices.h"
#include "catalogue/catalogue_parent.h"
#include "catalogue/catalogue_routines.h"
#include "catalogue/catalogue_split.h"
#include "catalogue/catalogue_watch.h"
#include "catalogue/command_table.h"

class QEventLoop;

// The catalogue: groups, manufacturers, and the products of the selected group and manufacturer. It opens
// over the requisition of a service, to which products are drawn by Enter or by a drag onto it.
//
// The window builds its parts (CatalogueParts) and the bars between them; keys, focus and pointer go to them
// by way of the CatalogueWatch. What it does itself is opening, loading and closing. Panes: 0 groups, 1
// manufacturers, 2 products.
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

    void PrintPriceList() override;

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    void showHelp() override;

    void setTabs();
    void load();
    void loadColumns();
    void firstShowing();

    CatalogueSplit split_;
    CatalogueChoices choices_;
    CatalogueWatch watch_;
    QPointer<QEventLoop> waiting_;  // in Display
    bool loaded_ = false;
    bool shown_ = false;

 public:
    platform::Splitter* const VSplitter = split_.betweenLists();
    platform::Splitter* const HSplitter = split_.overProducts();
};
