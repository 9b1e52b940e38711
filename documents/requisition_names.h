#pragma once

#include <QString>
#include <memory>

#include "catalogue/catalogue_parent.h"
#include "documents/requisition_commands.h"
#include "documents/service_view.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_view.h"
#include "platform/controls/status_bar.h"
#include "platform/system/sort_tag.h"

class QAction;
class QDialog;
class QProgressBar;
class QToolBar;
struct RequisitionParts;

// The parts of the requisition, and their controls and routines under the names by which the shop's other
// windows know them: views of what the parts own and do.
class RequisitionNames {
 public:
    RequisitionNames(const RequisitionNames&) = delete;
    RequisitionNames& operator=(const RequisitionNames&) = delete;

    void setServiceView(const ServiceView* view);  // outlives the window
    void setServiceID(qint32 id);
    qint32 ServiceID() const;
    QString JedinicaMere = QStringLiteral("Kom.");  // kept for callers; nothing here asks for it
    // Of the total row, in the unit on screen (dinars or euro); 0 before the first filling.
    float TotalForPayment() const;

    // Runs the query and fills the list. Then selects `itemKey` where it is in the list; where it is empty,
    // the row that was selected, or the first one. `resetSort`: back to the order of the table. A failure is
    // told in a box, and leaves the list with what could be read.
    void UpdateDATA(const QString& itemKey, bool resetSort);
    void TrebovanjeRefresh(bool resetSort);  // and the list has the focus
    // A failure is told in a box, and gives: not sorted, empty field, "ASC".
    platform::SortTag GetSortTagData(const QString& tag) const;
    void TrebovanjeDelete();     // the selected product, back to stock
    void TrebovanjeDeleteAll();  // all of them; what could not be given back is listed in a window
    CatalogueParent& catalogueParent() const;

    QAction* toolbarButton(const QString& key) const;  // nullptr: none
    QAction* action(RequisitionCommand command) const;

 protected:
    explicit RequisitionNames(QDialog& window);
    ~RequisitionNames();

    const std::unique_ptr<RequisitionParts> parts_;

 public:
    platform::DataControl* const Data1;
    const QString& Data1Tag;  // the sort tag, as of the last UpdateDATA
    platform::ListView* const ListView1;
    QToolBar* const Toolbar1;
    platform::StatusBar* const StatusBar1;
    QProgressBar* const ProgressBar1;
};
