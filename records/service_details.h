#pragma once

#include <QString>
#include <QStringList>

class ServiceListOwner;
namespace platform {
class DataControl;
struct ListItem;
}  // namespace platform

// What stands beside the services list: description and kinds of work of the service on show.
class ServiceDetails {
 public:
    explicit ServiceDetails(ServiceListOwner& owner) : owner_(owner) {}

    // The kinds of service by their position in the table: 1 is the first, [0] is not used. Empty: none were
    // read. A failure leaves those that were read before.
    void loadTypes(platform::DataControl& services);
    const QStringList& typeNames() const { return typeNames_; }

    void show(const platform::ListItem& item);
    void showNothing();
    QString shownKey() const { return shownKey_; }  // of the row shown last; empty at first

 private:
    ServiceListOwner& owner_;
    QStringList typeNames_;
    QString shownKey_;
};
