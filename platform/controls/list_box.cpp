#include "platform/controls/list_box.h"

#include <QAbstractListModel>
#include <utility>

namespace platform {

class ListBox::Model : public QAbstractListModel {
 public:
    using QAbstractListModel::QAbstractListModel;
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) {
            return {};
        }
        return rows.at(index.row()).first;
    }
    bool has(int row) const { return row >= 0 && row < rows.size(); }
    void set(QList<std::pair<QString, qint32>> all) {
        beginResetModel();
        rows = std::move(all);
        endResetModel();
    }
    void append(const QString& text, qint32 number) {
        const int at = rowCount();
        beginInsertRows({}, at, at);
        rows.append({text, number});
        endInsertRows();
    }
    void remove(int row) {
        beginRemoveRows({}, row, row);
        rows.removeAt(row);
        endRemoveRows();
    }
    void changed(int row) { emit dataChanged(index(row), index(row)); }

    QList<std::pair<QString, qint32>> rows;
};

ListBox::ListBox(QWidget* parent) : ChoiceList(parent), model_(new Model(this)) {
    setModel(model_);
}

void ListBox::resetContent() {
    const auto quiet = quietly();
    model_->set({});
}

int ListBox::addString(const QString& text, qint32 number) {
    const auto quiet = quietly();
    model_->append(text, number);
    return count() - 1;
}

void ListBox::addStrings(QList<std::pair<QString, qint32>> rows) {
    const auto quiet = quietly();
    model_->set(model_->rows + std::move(rows));
}

void ListBox::deleteString(int row) {
    if (!model_->has(row)) {
        return;
    }
    const auto quiet = quietly();
    const int selected = curSel();
    model_->remove(row);
    setCurSel(selected == row ? -1 : selected > row ? selected - 1 : selected);
}

int ListBox::count() const {
    return model_->rowCount();
}

QString ListBox::text(int row) const {
    return model_->has(row) ? model_->rows.at(row).first : QString();
}

void ListBox::setText(int row, const QString& text) {
    if (!model_->has(row)) {
        return;
    }
    model_->rows[row].first = text;
    model_->changed(row);
}

qint32 ListBox::itemData(int row) const {
    return model_->has(row) ? model_->rows.at(row).second : -1;
}

void ListBox::setItemData(int row, qint32 number) {
    if (model_->has(row)) {
        model_->rows[row].second = number;
    }
}

int ListBox::findString(const QString& prefix) const {
    for (qsizetype row = 0; row < model_->rows.size(); ++row) {
        if (model_->rows[row].first.startsWith(prefix, Qt::CaseInsensitive)) {
            return static_cast<int>(row);
        }
    }
    return -1;
}

int ListBox::curSel() const {
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.constFirst().row();
}

bool ListBox::setCurSel(int row) {
    const auto quiet = quietly();
    if (!model_->has(row)) {
        selectionModel()->clear();
        return row == -1;
    }
    selectionModel()->setCurrentIndex(model_->index(row), QItemSelectionModel::ClearAndSelect);
    return true;
}

void ListBox::setTopIndex(int row) {
    if (model_->has(row)) {
        scrollTo(model_->index(row), QAbstractItemView::PositionAtTop);
    }
}

}  // namespace platform
