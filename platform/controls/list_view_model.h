#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <QList>
#include <QString>
#include <functional>

#include "platform/controls/list_item.h"
#include "platform/controls/list_rows.h"
#include "platform/controls/twips.h"

namespace platform {

// The rows and the header of a ListView, as the toolkit asks for them. Rows and columns count from 0 here.
class ListViewModel : public QAbstractTableModel {
 public:
    struct Column {
        QString key;
        QString text;
        Qt::Alignment alignment;
        QString icon;
        LetterLength width;
    };

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    void addColumn(const Column& column);
    void headerChanged();

    const ListRows& rows() const { return rows_; }
    void clear();
    void setLazy(int count, ListRows::Make make, ListRows::Find find);
    void add(ListItem item);
    void change(int row, const std::function<void(ListItem&)>& change);
    void remove(int row);

    QList<Column> columns;
    QHash<QString, QIcon> columnImages;
    QHash<QString, QIcon> smallIcons;

 private:
    ListRows rows_;
};

}  // namespace platform
