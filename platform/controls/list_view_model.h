#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "platform/controls/list_item.h"

namespace platform {

// The rows behind a ListView. Each row has a serial number that only grows from top to bottom: rows to be
// made on demand carry their own index, rows added later go on from there. So a row is found by its serial,
// whatever has been taken away above it, and a list of a whole shop's services costs a number a row until
// somebody looks. Rows and columns count from 0 here.
class ListViewModel : public QAbstractTableModel {
 public:
    struct Column {
        QString key;
        QString text;
        Qt::Alignment alignment;
        QString icon;
    };
    using Make = std::function<ListItem(int)>;
    using Find = std::function<int(const QString&)>;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    void addColumn(const Column& column);
    void headerChanged();

    void clear();
    void setLazy(int count, Make make, Find find);
    void add(ListItem item);
    void change(int row, const std::function<void(ListItem&)>& change);
    void remove(int row);
    // The row, made now if it was not yet. Throws what `make` throws.
    const ListItem& item(int row) const;
    int rowOf(const QString& key) const;  // -1: none
    bool allMade() const { return made_.size() == static_cast<qsizetype>(rows_.size()); }
    int madeCount() const { return static_cast<int>(made_.size()); }

    QList<Column> columns;
    QHash<QString, QIcon> columnImages;
    QHash<QString, QIcon> smallIcons;

 private:
    struct Row {
        int serial;
        mutable std::unique_ptr<ListItem> item;
    };
    int rowOfSerial(int serial) const;
    void forgetRows();

    std::vector<Row> rows_;
    mutable QHash<QString, int> made_;  // key to serial
    int nextSerial_ = 1;
    Make make_;
    Find find_;
};

}  // namespace platform
