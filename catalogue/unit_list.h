#pragma once

#include <QObject>
#include <QString>

#include "catalogue/sort_state.h"

class QWidget;
namespace dao {
class Recordset;
}
namespace platform {
class DataControl;
class ListBox;
}  // namespace platform

// The units of measure: their records, the list that shows them, and its order.
class UnitList : public QObject {
    Q_OBJECT
 public:
    explicit UnitList(QWidget* window);

    platform::DataControl& data() const { return *data_; }
    platform::ListBox& rows() const { return *list_; }
    bool hasRows() const;
    bool hasSelection() const;
    bool isNotAscending() const;
    bool isNotDescending() const;

    void load();        // in the order that the settings keep
    void save() const;  // that order; each setting that cannot be kept leaves the other
    // Reads the table again. `selectName`: the row to select, by the beginning of its text; empty: none.
    // `reset`: back to the order of the table. What failed is told in a box.
    void refresh(const QString& selectName, bool reset);
    void sort(SortMode mode, bool force);  // `force`: also where the list is in that order already

    bool Sorted = false;
    QString SortedHow = QStringLiteral("ASC");  // or "DESC"

 signals:
    void changed();  // other commands than before may be possible

 private:
    QString fill();  // the reason of a failure; empty: filled
    void select(const QString& name);
    void addRow(const dao::Recordset& rows);

    QWidget* window_;
    platform::DataControl* data_;
    platform::ListBox* list_;
};
