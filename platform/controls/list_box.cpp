#include "platform/controls/list_box.h"

#include <QAbstractListModel>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

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

ListBox::ListBox(QWidget* parent) : QListView(parent), model_(new Model(this)) {
    setModel(model_);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(false);
    setContextMenuPolicy(Qt::DefaultContextMenu);
}

void ListBox::resetContent() {
    const QScopedValueRollback quiet(quiet_, true);
    model_->set({});
}

int ListBox::addString(const QString& text, qint32 number) {
    const QScopedValueRollback quiet(quiet_, true);
    model_->append(text, number);
    return count() - 1;
}

void ListBox::addStrings(QList<std::pair<QString, qint32>> rows) {
    const QScopedValueRollback quiet(quiet_, true);
    model_->set(model_->rows + std::move(rows));
}

void ListBox::deleteString(int row) {
    if (!model_->has(row)) {
        return;
    }
    const QScopedValueRollback quiet(quiet_, true);
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
    const QScopedValueRollback quiet(quiet_, true);
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

void ListBox::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (quiet_ || !current.isValid()) {
        return;
    }
    // The view selects the row only after it has become the current one.
    const QScopedValueRollback quiet(quiet_, true);
    selectionModel()->select(current, QItemSelectionModel::ClearAndSelect);
    told_ = true;
    emit clicked();
}

// A click beside the rows leaves the selection alone, and no key held takes a row back out of it: the shop's
// lists go by the row that is chosen.
QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex& index,
                                                              const QEvent* event) const {
    if (!index.isValid()) {
        return QItemSelectionModel::NoUpdate;
    }
    const QItemSelectionModel::SelectionFlags asked = QListView::selectionCommand(index, event);
    if (asked & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle)) {
        return QItemSelectionModel::ClearAndSelect;
    }
    return asked;
}

void ListBox::mousePressEvent(QMouseEvent* event) {
    told_ = false;
    const QModelIndex under = indexAt(event->position().toPoint());
    QListView::mousePressEvent(event);
    if (under.isValid() && !told_) {
        emit clicked();
    }
}

void ListBox::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) {
        emit doubleClicked();
    }
}

// Coming to a list chooses nothing in it: a view makes its first row the current one then.
void ListBox::focusInEvent(QFocusEvent* event) {
    const QScopedValueRollback quiet(quiet_, true);
    const bool chosen = currentIndex().isValid();
    QListView::focusInEvent(event);
    if (!chosen) {
        selectionModel()->clear();
    }
}

void ListBox::contextMenuEvent(QContextMenuEvent* event) {
    QPoint at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid()) {
        at = viewport()->mapToGlobal(visualRect(currentIndex()).center());
    }
    emit contextMenuAsked(at);
    event->accept();
}

}  // namespace platform
