#include "platform/controls/choice_list.h"

#include <QContextMenuEvent>
#include <QMouseEvent>

#include "platform/controls/cut_texts.h"

namespace platform {

ChoiceList::ChoiceList(QWidget* parent) : QListView(parent) {
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(false);
    setContextMenuPolicy(Qt::DefaultContextMenu);
    tellCutTexts(*this);
}

void ChoiceList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (quiet_ || !current.isValid()) {
        return;
    }
    // The view selects the row only after it has become the current one.
    const auto quiet = quietly();
    selectionModel()->select(current, QItemSelectionModel::ClearAndSelect);
    told_ = true;
    emit clicked();
}

// A click beside the rows leaves the selection alone, and no key held takes a row back out of it: the shop's
// lists go by the row that is chosen.
QItemSelectionModel::SelectionFlags ChoiceList::selectionCommand(const QModelIndex& index,
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

void ChoiceList::mousePressEvent(QMouseEvent* event) {
    told_ = false;
    const QModelIndex under = indexAt(event->position().toPoint());
    QListView::mousePressEvent(event);
    if (under.isValid() && !told_) {
        emit clicked();
    }
}

void ChoiceList::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) {
        emit doubleClicked();
    }
}

// Coming to a list chooses nothing in it: a view makes its first row the current one then.
void ChoiceList::focusInEvent(QFocusEvent* event) {
    const auto quiet = quietly();
    const bool chosen = currentIndex().isValid();
    QListView::focusInEvent(event);
    if (!chosen) {
        selectionModel()->clear();
    }
}

void ChoiceList::contextMenuEvent(QContextMenuEvent* event) {
    QPoint at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid()) {
        at = viewport()->mapToGlobal(visualRect(currentIndex()).center());
    }
    emit contextMenuAsked(at);
    event->accept();
}

}  // namespace platform
