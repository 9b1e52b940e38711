#pragma once

#include <QString>

// What the requisition and the documents see of the main window: the service whose row is selected, and the
// client it is done for.
class ServiceView {
 public:
    virtual ~ServiceView() = default;
    // Captions of the tab strip, from 1: the client's name, the computer's.
    virtual QString tabCaption(int tab) const = 0;
    // The selected row of the services list: its key ("K" and the service's number) and the texts of its
    // columns, from 1 (5: discount percent, 6: tax percent). Empty where no row is selected.
    virtual QString serviceKey() const = 0;
    virtual QString serviceColumn(int column) const = 0;
    virtual QString serviceDescription() const = 0;  // field 37 of the main window
    // The client on show, by the database field's name ("Surname", "FirmName", "Street", ...).
    virtual QString clientField(const QString& field) const = 0;
    virtual bool isFirm() const = 0;  // the address is the firm's
};
