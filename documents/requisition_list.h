#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>

#include "documents/requisition_columns.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_view.h"
#include "platform/system/sort_tag.h"

class QLabel;
class QProgressBar;
class QStackedLayout;
namespace platform {
class StatusBar;
class Trap;
}  // namespace platform

// The list of a requisition: its query, its order, and how it is filled out of sight, with the sum of what it
// shows as its first row. The widgets belong to the window.
class RequisitionList : public QObject {
    Q_OBJECT
 public:
    explicit RequisitionList(QWidget& window);
    // Where the progress of a filling is shown.
    void setStatusBar(platform::StatusBar& bar);

    platform::DataControl& data() const { return *data_; }
    platform::ListView& view() const { return *view_; }
    QProgressBar* progress() const { return progress_; }
    QLabel* cover() const { return cover_; }           // stands in the list's place while it is filled
    QStackedLayout* layout() const { return stack_; }  // the list, or the cover

    const platform::SortTag& sort() const { return sort_; }
    void setSort(const platform::SortTag& sort) { sort_ = sort; }
    // A header was clicked: by this column, or the other way round. Shows it; the rows stay as they are.
    void sortBy(int column);

    // Runs the query for the service and fills the list; what failed is told by fillingFailed, and the list
    // holds what could be read. Then selects `itemKey` where it is in the list; where it is empty, the row
    // that was selected, or the first one. `resetSort`: back to the order of the table.
    void update(qint32 serviceId, const QString& itemKey, bool resetSort);
    bool hasProducts() const;
    float total() const;  // as shown, in the unit on screen; 0 where the list was never filled

 signals:
    void sorting(const platform::SortTag& sort);  // the order that the rows are about to be read in
    void counted(const QString& text);            // what the status bar says of the list
    void fillingFailed(const QString& errorText);

 private:
    QString query(qint32 serviceId) const;
    void connectData(platform::Trap& step);
    void showSort(platform::Trap& step);
    void switchColumnIcons(bool on);
    bool fill(platform::Trap& step, QString& errorText);
    void fillRows(platform::Trap& step);
    float addRow(const requisition::SourceFields& fields, platform::Trap& step);
    void setFilling(bool on);
    void showProgress(bool on);
    void reselect(const QString& itemKey, const QString& rememberedKey);

    platform::DataControl* data_;
    platform::ListView* view_;
    QLabel* cover_;
    QStackedLayout* stack_;
    platform::StatusBar* statusBar_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QHash<QString, QIcon> columnIcons_;
    platform::SortTag sort_{true, fieldOf(RequisitionColumn::Manufacturer), QStringLiteral("ASC")};
    bool hadFocus_ = false;  // the list, before it was hidden for a filling
};
