#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

#include "documents/requisition_columns.h"
#include "platform/controls/list_view.h"
#include "platform/system/sort_tag.h"

namespace platform {
class Trap;
}

// The order of a requisition's rows: what the headers show of it, and what is kept of it.
class RequisitionOrder {
 public:
    explicit RequisitionOrder(platform::ListView& view);

    // As the settings keep it. A text that says nothing is told in a box.
    void load();
    void save() const;  // as of the last keepTag; throws platform::RunError
    // A failure is told in a box, and gives: not sorted, empty field, "ASC".
    platform::SortTag read(const QString& text) const;

    bool isSorted() const { return sort_.sorted; }
    QString clause() const;            // of the statement; empty: the order of the table
    void reset(platform::Trap& step);  // to the order of the table
    // A header was clicked: by this column, or the other way round. Shows it; the rows stay as they are.
    void sortBy(int column);
    void keepTag();  // the rows are about to be read in this order
    void show(platform::Trap& step);

    QString tag;  // the order in which the rows were read last

 private:
    void switchColumnIcons(bool on);

    platform::ListView& view_;
    QHash<QString, QIcon> columnIcons_;
    platform::SortTag sort_{true, fieldOf(RequisitionColumn::Manufacturer), QStringLiteral("ASC")};
};
