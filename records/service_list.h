#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "platform/controls/list_view.h"
#include "records/service_details.h"
#include "records/service_list_owner.h"

class frmDetails;
class QWidget;
class ServiceCommands;
class ServiceView;
namespace platform {
class DataControl;
class Trap;
}  // namespace platform

// The services of the selected computer: the rows of the list, the details of the one on show, and the way
// into the service editor, the requisition and the documents and back. It speaks to the record set of the
// services; which services that one holds is the stage's affair.
class ServiceList {
 public:
    // All of them outlive this one. Boxes and windows stand over `window`.
    ServiceList(QWidget& window, platform::ListView& list, platform::DataControl& services,
                ServiceListOwner& owner, const ServiceView& view);
    ~ServiceList();

    // Icons, columns and their places, each under `step`.
    void build(platform::Trap& step);
    void makeEditor();  // one instance, until dropEditor
    void dropEditor();
    frmDetails* editor() const;

    // The kinds of service by their position in the table: 1 is the first, [0] is not used. Empty: none were
    // read. A failure leaves those that were read before.
    void loadTypes();
    const QStringList& typeNames() const { return details_.typeNames(); }

    // `selectKey` empty: the first row is selected.
    void fill(const QString& selectKey);
    void showDetails(const platform::ListItem& item);
    QString shownKey() const { return details_.shownKey(); }  // of the row shown last; empty at first
    std::optional<qint32> selectedId() const;
    void showUnit();  // the present one, in the headers of the money columns
    // Takes the list off the record set that its rows come from: before that record set's database closes.
    void closeRows();

    // Nothing, each of them, where a selection is needed and there is none.
    void editSelected();
    void addNew();
    void deleteSelected();
    // The parts drawn for the selected service; their total becomes its price.
    void openRequisition();
    void openDocument(bool invoice);  // or the quotation

 private:
    platform::ListView& list_;
    platform::DataControl& services_;
    ServiceListOwner& owner_;
    ServiceDetails details_;
    std::unique_ptr<ServiceCommands> commands_;
};
