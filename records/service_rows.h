#pragma once

#include <QHash>
#include <memory>
#include <optional>

#include "platform/dao/recordset.h"
#include "records/made_services.h"
#include "records/service_columns.h"

// The rows of the services list, each computed from the record set when somebody looks at it. A shop has
// hundreds of thousands of services and a screen some forty lines, so the window must not wait for the rest.
//
// Rows count from 1, in the record set's order. An amount, percentage or date that cannot be read is the one
// of the row before it, however far up that stands, just as if all rows had been computed from the top.
class ServiceRows {
 public:
    // Reads through a clone, so that the current row of `source` stays where it is. Rows that are in `made`
    // and still are as the file has them are not made again. Throws dao::Error.
    ServiceRows(const dao::Recordset& source, service_row::ScreenUnit unit,
                std::shared_ptr<MadeServices> made);

    int count() const { return count_; }
    // Nothing where the row has been deleted since, or the set is closed.
    std::optional<platform::ListItem> read(int index);
    // The same for a list that has promised its reader a row there: an empty one, whose key stands for no
    // service.
    platform::ListItem make(int index);
    // 0 where the set has no such row.
    int find(const QString& key);

 private:
    // Of the current row; those of its fields that go on from row to row.
    void readInto(ServiceValues& values) const;
    void readGoingOn(ServiceValues& values) const;
    void readField(const ServiceField& field, ServiceValues& values) const;
    platform::ListItem makeCurrent(int index, qint32 id);
    void completeFromAbove(int index, ServiceValues& own);

    dao::Recordset rows_;
    service_row::ScreenUnit unit_;
    int count_ = 0;
    dao::Field id_;
    MadeServices::Fields fields_;
    std::shared_ptr<MadeServices> made_;
    StoredService current_;                // whose memory the next row takes
    QHash<int, ServiceValues> completed_;  // rows that had to look upwards
};
