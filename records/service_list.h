#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "platform/controls/list_view.h"
#include "records/service_details.h"
#include "records/service_list_owner.h"

class MadeServices;
namespace platform {
class DataControl;
class Trap;
}  // namespace platform

// The services of the selected computer: the rows of the list, and the details of the one on show. It speaks
// to the record set of the services; which services that one holds is the stage's affair.
class ServiceList {
 public:
    // All of them outlive this one.
    ServiceList(platform::ListView& list, platform::DataControl& services, ServiceListOwner& owner);

    // Icons, columns and their places, each under `step`.
    void build(platform::Trap& step);

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
    // Takes the list off the record set that its rows come from, and forgets those: before that record set's
    // database closes.
    void closeRows();
    ServiceDetails& details() { return details_; }

 private:
    platform::ListView& list_;
    platform::DataControl& services_;
    ServiceListOwner& owner_;
    ServiceDetails details_;
    std::shared_ptr<MadeServices> made_;
};
