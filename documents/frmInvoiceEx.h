#pragma once

#include <QDialog>
#include <QString>
#include <memory>

#include "catalogue/catalogue_parent.h"
#include "documents/requisition_bar.h"
#include "documents/requisition_columns.h"
#include "documents/service_view.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_view.h"
#include "platform/controls/status_bar.h"
#include "platform/system/sort_tag.h"

class QAction;
class QProgressBar;
class QToolBar;
class RequisitionList;
namespace platform {
class Trap;
}

// The requisition of one service: everything drawn from stock for it, with a total. Its caller sets
// ParentForm, ServiceID and, for the printed list, the view of the main window; calls Display; reads
// TotalForPayment.
//
// It reads rows and gives them back to stock; drawing is the catalogue's affair. The list (RequisitionList)
// and the toolbar (RequisitionBar) are parts of their own; what is here is what the window does with them:
// frmInvoiceEx.cpp (building, loading, keys, mouse), _commands (giving back, the printed list), _catalogue
// (the catalogue, drops from it).
class frmInvoiceEx : public QDialog, public CatalogueParent {
    Q_OBJECT
 public:
    explicit frmInvoiceEx(QWidget* parent = nullptr);
    ~frmInvoiceEx() override;

    void setParentForm(QWidget* owner);
    void setServiceView(const ServiceView* view) { view_ = view; }  // outlives this window
    void setServiceID(qint32 id) { serviceId_ = id; }
    qint32 ServiceID() const override { return serviceId_; }
    QString JedinicaMere = QStringLiteral("Kom.");  // kept for callers; nothing here asks for it
    // Of the total row, in the unit on screen (dinars or euro); 0 before the first filling.
    float TotalForPayment() const { return total_; }
    void Display();  // modal; returns when it is hidden
    void Unload();   // stores the settings; once. The destructor does it otherwise.

    // Runs the query and fills the list. Then selects `itemKey` where it is in the list; where it is empty,
    // the row that was selected, or the first one. `resetSort`: back to the order of the table. A failure is
    // told in a box, and leaves the list with what could be read.
    void UpdateDATA(const QString& itemKey, bool resetSort) override;
    void TrebovanjeRefresh(bool resetSort) override;  // and the list has the focus
    // A failure is told in a box, and gives: not sorted, empty field, "ASC".
    platform::SortTag GetSortTagData(const QString& tag);
    void TrebovanjeDelete();     // the selected product, back to stock
    void TrebovanjeDeleteAll();  // all of them; what could not be given back is listed in a window

    // CatalogueParent
    QWidget* asWindow() override { return this; }
    platform::DataControl& requisitionData() override { return *Data1; }
    platform::ListView& requisitionList() override { return *ListView1; }
    void setDragEvents(ParentDragEvents* events) override;

    // Controls and state, under the names the shop's other windows know them by.
    platform::DataControl* Data1 = nullptr;
    QString Data1Tag;  // the sort tag, as of the last UpdateDATA
    platform::ListView* ListView1 = nullptr;
    QToolBar* Toolbar1 = nullptr;
    platform::StatusBar* StatusBar1 = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QAction* toolbarButton(const QString& key) const { return bar_->button(key); }  // nullptr: none
    QAction* action(RequisitionCommand command) const { return bar_->action(command); }

 protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    // frmInvoiceEx.cpp
    void buildToolbar();
    void buildList();
    void buildStatusBar();
    void watchMouse();
    void load();
    void activate();
    void SetStatusText(const QString& text, bool remember);
    platform::BoxAnswer box(const QString& text, platform::BoxIcon icon,
                            platform::BoxButtons buttons = platform::BoxButtons::Ok);
    void UpdateToolbar();
    void columnClick(int column);
    void itemClick(const QString& key);
    void refresh() { TrebovanjeRefresh(false); }
    void unsort() { TrebovanjeRefresh(true); }
    void help() {}  // the button is there, and says nothing

    // frmInvoiceEx_commands.cpp
    static std::span<const RequisitionCommandRow> commands();
    bool mayDelete(const QString& question);
    void tellFailure(const platform::Trap& step, const char* procedure);
    bool TrebovanjePrint(QString& errorText);
    void print();
    QString printedList() const;

    // frmInvoiceEx_catalogue.cpp
    void openCatalogue();
    bool overList(const QPoint& place) const;

    QWidget* ParentForm = nullptr;
    const ServiceView* view_ = nullptr;
    ParentDragEvents* dragEvents_ = nullptr;
    qint32 serviceId_ = 0;
    float total_ = 0;
    bool loaded_ = false;     // the settings have been read
    bool activated_ = false;  // the first filling has run
    QString statusText_;
    RequisitionList* list_ = nullptr;
    std::unique_ptr<RequisitionBar> bar_;
};
