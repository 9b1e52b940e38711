#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "platform/controls/list_view.h"
#include "records/service_values.h"

class frmDetails;
class QWidget;
class ServiceView;
namespace platform {
class DataControl;
class Trap;
}  // namespace platform

// What the services list needs of the window that it stands in.
class ServiceListOwner {
 public:
    virtual ~ServiceListOwner() = default;
    virtual qint32 computerOnShow() const = 0;    // its number
    virtual qint16 taxOfNewServices() const = 0;  // percent; 0: none is proposed
    virtual QString description() const = 0;      // of the service on show
    virtual void showTexts(const QString& description, const QString& kinds) = 0;
    virtual void renewRecordCommands() = 0;   // what may be done with the record on show has changed
    virtual void renewServiceCommands() = 0;  // the same of the commands for a listed service
};

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
    frmDetails* editor() const { return editor_.get(); }

    // The kinds of service by their position in the table: 1 is the first, [0] is not used. Empty: none were
    // read. A failure leaves those that were read before.
    void loadTypes();
    const QStringList& typeNames() const { return typeNames_; }

    // `selectKey` empty: the first row is selected.
    void fill(const QString& selectKey);
    void showDetails(const platform::ListItem& item);
    QString shownKey() const { return shownKey_; }  // of the row whose details are shown; empty at first
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
    bool findForEdit(qint32 id);
    void takeFromEditor(qint32 id, bool edited);
    void showInList(const QString& key, bool edited, const ServiceTexts& service);
    void writeAndSettle(const ServiceTexts& service);
    void showWhatIsLeft(platform::Trap& step);

    QWidget& window_;
    platform::ListView& list_;
    platform::DataControl& services_;
    ServiceListOwner& owner_;
    const ServiceView& view_;
    std::unique_ptr<frmDetails> editor_;
    QStringList typeNames_;
    QString shownKey_;
};
