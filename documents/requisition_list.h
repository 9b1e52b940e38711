#pragma once

#include <QObject>
#include <QString>

#include "documents/filling_cover.h"
#include "documents/requisition_columns.h"
#include "documents/requisition_order.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_view.h"

namespace requisition {
class DrawnRows;
}
namespace platform {
class StatusBar;
class Trap;
}  // namespace platform

// The rows of a requisition: their query, and how the list is filled, with the sum of what it shows as its
// first row. The widgets belong to the window.
class RequisitionList : public QObject {
    Q_OBJECT
 public:
    // `bar`: where the progress of a filling is shown.
    RequisitionList(QWidget& window, platform::StatusBar& bar);

    platform::DataControl& data() const { return *data_; }
    platform::ListView& view() const { return *view_; }
    FillingCover& cover() { return cover_; }
    RequisitionOrder& order() { return order_; }
    const RequisitionOrder& order() const { return order_; }

    // Runs the query for the service and fills the list. What failed is told in a box, and the list holds
    // what could be read. Then selects `itemKey` where it is in the list; where it is empty, the row that was
    // selected, or the first one. `resetSort`: back to the order of the table.
    void update(const QString& itemKey, bool resetSort);
    void refresh(bool resetSort);  // and the list has the focus
    bool hasProducts() const;
    float total() const;  // as shown, in the unit on screen; 0 where the list was never filled

    qint32 serviceId = 0;  // whose requisition it is

 signals:
    void counted(const QString& text);  // what the status bar says of the list
    void updated();                     // other commands than before may be possible

 private:
    void columnClick(int column);
    void connectData(platform::Trap& step);
    void fill(platform::Trap& step);
    void fillRows(platform::Trap& step);
    // The total, in the unit on screen.
    float readRows(requisition::DrawnRows& products, platform::Trap& step);
    void reselect(const QString& itemKey, const QString& rememberedKey);

    platform::DataControl* data_;
    platform::ListView* view_;
    FillingCover cover_;
    RequisitionOrder order_;
};
