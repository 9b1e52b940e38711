#include "platform/controls/grid_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "platform/controls/cut_texts.h"
#include "platform/controls/list_index.h"

namespace platform {
namespace {

constexpr int kIconSize = 16;

// A line of air above and below the text, so that the grid does not touch it. The picture of a row keeps its
// colours while the row is selected: red is what tells an unpaid job from the others.
class RowDelegate : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;
    static int rowHeight(const QFontMetrics& font) { return std::max(font.height(), kIconSize) + 6; }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), rowHeight(option.fontMetrics)};
    }

 protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!option->state.testFlag(QStyle::State_Selected) || option->icon.isNull()) {
            return;
        }
        const qreal scale = option->widget ? option->widget->devicePixelRatioF() : 1.0;
        QIcon plain;
        plain.addPixmap(option->icon.pixmap(option->decorationSize, scale), QIcon::Selected);
        option->icon = plain;
    }
};

// The column that stands in the place of the digit pressed with Ctrl, from 1; one without a width is not seen
// and has no place. 0: no such key, or no such column.
int columnOfKey(const QHeaderView& header, const QKeyEvent& key) {
    if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::ControlModifier) {
        return 0;
    }
    int place = key.key() - Qt::Key_0;
    for (int i = 0; i < header.count() && place >= 1; ++i) {
        const int column = header.logicalIndex(i);
        if (header.sectionSize(column) > 0 && --place == 0) {
            return column + 1;
        }
    }
    return 0;
}

}  // namespace

GridView::GridView(QWidget* parent) : QTreeView(parent) {
    setItemDelegate(new RowDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setIconSize(QSize(kIconSize, kIconSize));
    header()->setSectionsMovable(true);
    header()->setFirstSectionMovable(true);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(0);
    header()->setTextElideMode(Qt::ElideRight);
    connect(header(), &QHeaderView::sectionClicked, this,
            [this](int column) { emit columnClicked(column + 1); });
    tellCutTexts(*this);
    showSelectionWithoutFocus();
}

QModelIndex GridView::rowAt(int index) const {
    return model()->index(checkedIndex(index, model()->rowCount()), 0);
}

// Selection
// -------------------------------------------------------------------------------------------------------

int GridView::selectedIndex() const {
    const QModelIndex current = currentIndex();
    return current.isValid() && selectionModel()->isSelected(current) ? current.row() + 1 : 0;
}

// The toolkit would know where each of a whole shop's rows lies before it selects one, in a list that mostly
// is filled anew before anybody looks at it.
void GridView::select(int index) {
    const QModelIndex row = rowAt(index);
    const auto quiet = quietly();
    const QScopedValueRollback waiting(laysOut_, isVisible());
    selectionModel()->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollDue_ = !isVisible();
    if (!scrollDue_) {
        scrollTo(row);
    }
}

void GridView::ensureVisible(int index) {
    scrollTo(rowAt(index));
}

void GridView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int across = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(across);
}

void GridView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    if (quiet_ || selected.isEmpty()) {
        return;
    }
    clicked_ = true;
    emit rowClicked(selectedIndex());
}

// One service at a time: holding a modifier key down neither adds to the choice nor takes it away, and a
// click beside the rows does not leave the buttons above without a service to work on.
QItemSelectionModel::SelectionFlags GridView::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
    if (!index.isValid()) {
        return QItemSelectionModel::NoUpdate;
    }
    const QItemSelectionModel::SelectionFlags asked = QTreeView::selectionCommand(index, event);
    if (asked & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle)) {
        return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    }
    return asked;
}

// Keys and mouse
// --------------------------------------------------------------------------------------------------

void GridView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter) {
        const int index = selectedIndex();
        event->setAccepted(index != 0);
        if (index != 0) {
            emit rowActivated(index);
        }
    } else if (event->key() == Qt::Key_Delete) {
        event->accept();
        emit deletePressed();
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        event->accept();
        askMenuAtSelection();
    } else if (const int column = columnOfKey(*header(), *event)) {
        event->accept();
        emit columnClicked(column);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void GridView::mousePressEvent(QMouseEvent* event) {
    clicked_ = false;
    const QModelIndex under = indexAt(event->position().toPoint());
    QTreeView::mousePressEvent(event);
    // The description beside the list follows each click, also one on the row that was chosen already.
    if (!clicked_ && under.isValid() && selectedIndex() == under.row() + 1) {
        emit rowClicked(selectedIndex());
    }
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QModelIndex under = indexAt(event->position().toPoint());
    if (under.isValid()) {
        selectionModel()->setCurrentIndex(under, selectionCommand(under, event));
    }
    if (selectedIndex() != 0) {
        emit rowActivated(selectedIndex());
    }
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        askMenuAtSelection();
        return;
    }
    const QModelIndex under = indexAt(event->pos());
    if (under.isValid() && selectedIndex() != under.row() + 1) {
        selectionModel()->setCurrentIndex(under,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    emit contextMenuAsked(event->globalPos());
}

void GridView::askMenuAtSelection() {
    QPoint at;
    if (const int index = selectedIndex(); index > 0) {
        ensureVisible(index);
        QRect row = visualRect(rowAt(index));  // the part of it that is in sight
        row.setLeft(0);
        row.setRight(std::min(header()->length(), viewport()->width()));
        at = row.center();
    }
    emit contextMenuAsked(viewport()->mapToGlobal(at));
}

// Looks
// -----------------------------------------------------------------------------------------------------------

void GridView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    QPainter painter(viewport());
    QColor line = palette().color(QPalette::Mid);
    line.setAlpha(110);
    painter.setPen(line);
    const int bottom = viewport()->height();
    for (int column = 0; column < header()->count(); ++column) {
        const int right = header()->sectionViewportPosition(column) + header()->sectionSize(column) - 1;
        if (header()->sectionSize(column) > 0) {
            painter.drawLine(right, 0, right, bottom);
        }
    }
    const int height = RowDelegate::rowHeight(fontMetrics());
    for (int y = height - 1; y < bottom; y += height) {
        painter.drawLine(0, y, viewport()->width(), y);
    }
}

void GridView::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        showSelectionWithoutFocus();
    }
}

void GridView::showSelectionWithoutFocus() {
    const QPalette usual = QApplication::palette(this);
    QPalette colours = palette();
    for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText}) {
        colours.setColor(QPalette::Inactive, role, usual.color(QPalette::Active, role));
    }
    if (colours != palette()) {  // setting it is a change of the palette, too
        setPalette(colours);
    }
}

// What nobody sees is not laid out
// -----------------------------------------------------------------------------------------------

void GridView::doItemsLayout() {
    if (laysOut_) {
        QTreeView::doItemsLayout();
    } else {
        scheduleDelayedItemsLayout();
    }
}

void GridView::updateGeometries() {
    const QScopedValueRollback waiting(laysOut_, laysOut_ && isVisible());
    QTreeView::updateGeometries();
}

void GridView::showEvent(QShowEvent* event) {
    QTreeView::showEvent(event);
    if (std::exchange(scrollDue_, false) && currentIndex().isValid()) {
        scrollTo(currentIndex());
    }
}

}  // namespace platform
