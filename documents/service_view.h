#pragma once

#include <QString>
#include <optional>

// What the requisition and the documents see of the main window: the service whose row is selected, and the
// client it is done for.
class ServiceView {
 public:
    virtual ~ServiceView() = default;
    // Captions of the tab strip, from 1: the client's name, the computer's.
    virtual QString tabCaption(int tab) const = 0;
    // The selected row of the services list: nothing, and empty texts, where no row is selected.
    virtual std::optional<qint32> serviceId() const = 0;
    virtual QString serviceStarted() const = 0;      // short date
    virtual QString serviceDiscount() const = 0;     // percent, as the user writes numbers
    virtual QString serviceTax() const = 0;          // the same
    virtual QString serviceDescription() const = 0;  // field 37 of the main window
    // The client on show, by the database field's name ("Surname", "FirmName", "Street", ...).
    virtual QString clientField(const QString& field) const = 0;
    virtual bool isFirm() const = 0;  // the address is the firm's
};
