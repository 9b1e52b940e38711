#include "platform/controls/list_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "platform/controls/list_view_model.h"
#include "platform/system/trap.h"

namespace platform {
namespace {

constexpr int kTwipsToAPixel = 15;
constexpr int kIconSize = 16;

void refuseIndex() {
    throw RunError(35600, QStringLiteral("Index out of bounds"));
}

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

}  // namespace

ListView::ListView(QWidget* parent) : QTreeView(parent), model_(std::make_unique<ListViewModel>()) {
    setItemDelegate(new RowDelegate(this));
    setModel(model_.get());
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
    showSelectionWithoutFocus();
}

ListView::~ListView() {
    setModel(nullptr);
}

// Columns
// ---------------------------------------------------------------------------------------------------------

int ListView::checkedColumn(int column) const {
    if (column < 1 || column > model_->columns.size()) {
        refuseIndex();
    }
    return column - 1;
}

void ListView::addColumn(const QString& key, const QString& text, HeaderAlignment alignment) {
    Qt::Alignment side = Qt::AlignLeft;
    if (alignment != HeaderAlignment::Left) {
        side = alignment == HeaderAlignment::Right ? Qt::AlignRight : Qt::AlignHCenter;
    }
    model_->addColumn({key, text, side, {}});
}

int ListView::columnCount() const {
    return static_cast<int>(model_->columns.size());
}

QString ListView::columnKey(int column) const {
    return model_->columns.at(checkedColumn(column)).key;
}

int ListView::columnOf(const QString& key) const {
    for (int i = 0; i < model_->columns.size(); ++i) {
        if (model_->columns.at(i).key.compare(key, Qt::CaseInsensitive) == 0) {
            return i + 1;
        }
    }
    return 0;
}

QString ListView::columnText(int column) const {
    return model_->columns.at(checkedColumn(column)).text;
}

void ListView::setColumnText(int column, const QString& text) {
    model_->columns[checkedColumn(column)].text = text;
    model_->headerChanged();
}

int ListView::columnWidthTwips(int column) const {
    return header()->sectionSize(checkedColumn(column)) * kTwipsToAPixel;
}

void ListView::setColumnWidthTwips(int column, int twips) {
    header()->resizeSection(checkedColumn(column),
                            std::max(0, (twips + kTwipsToAPixel / 2) / kTwipsToAPixel));
}

int ListView::columnPosition(int column) const {
    return header()->visualIndex(checkedColumn(column)) + 1;
}

void ListView::setColumnPosition(int column, int position) {
    header()->moveSection(header()->visualIndex(checkedColumn(column)), checkedColumn(position));
}

void ListView::setColumnPositions(const QList<int>& positions) {
    QList<int> columnAt(columnCount(), 0);  // the column for each place; 0: still free
    QList<int> left;
    for (int column = 1; column <= columnCount(); ++column) {
        const int place = positions.value(column - 1) - 1;
        if (place >= 0 && place < columnCount() && columnAt.at(place) == 0) {
            columnAt[place] = column;
        } else {
            left.append(column);
        }
    }
    for (int place = 0; place < columnAt.size(); ++place) {
        const int column = columnAt.at(place) != 0 ? columnAt.at(place) : left.takeFirst();
        setColumnPosition(column, place + 1);
    }
}

void ListView::setColumnIcon(int column, const QString& imageKey) {
    model_->columns[checkedColumn(column)].icon = imageKey;
    model_->headerChanged();
}

QString ListView::columnIcon(int column) const {
    return model_->columns.at(checkedColumn(column)).icon;
}

void ListView::setColumnImages(const QHash<QString, QIcon>& images) {
    model_->columnImages = images;
    for (ListViewModel::Column& column : model_->columns) {
        if (images.isEmpty()) {
            column.icon.clear();
        }
    }
    model_->headerChanged();
}

void ListView::setSmallIcons(const QHash<QString, QIcon>& images) {
    model_->smallIcons = images;
    viewport()->update();
}

// Rows
// ------------------------------------------------------------------------------------------------------------

int ListView::count() const {
    return model_->rowCount();
}

int ListView::madeCount() const {
    return model_->madeCount();
}

void ListView::addItem(ListItem item) {
    model_->add(std::move(item));
}

void ListView::clearItems() {
    const QScopedValueRollback quiet(quiet_, true);
    model_->clear();
}

void ListView::setLazyItems(int count, std::function<ListItem(int)> make,
                            std::function<int(const QString&)> find) {
    const QScopedValueRollback quiet(quiet_, true);
    model_->setLazy(count, std::move(make), std::move(find));
}

bool ListView::hasItem(const QString& key) const {
    return indexOf(key) > 0;
}

int ListView::indexOf(const QString& key) const {
    return model_->rowOf(key) + 1;
}

const ListItem& ListView::item(int index) const {
    if (index < 1 || index > count()) {
        refuseIndex();
    }
    return model_->item(index - 1);
}

const ListItem& ListView::item(const QString& key) const {
    const int index = indexOf(key);
    if (index == 0) {
        throw RunError(35601, QStringLiteral("Element not found: %1").arg(key));
    }
    return model_->item(index - 1);
}

void ListView::changeItem(const QString& key, const std::function<void(ListItem&)>& change) {
    item(key);
    model_->change(indexOf(key) - 1, change);
}

void ListView::removeItem(int index) {
    if (index < 1 || index > count()) {
        refuseIndex();
    }
    const QScopedValueRollback quiet(quiet_, true);
    const bool wasSelected = selectedIndex() == index;
    model_->remove(index - 1);
    if (wasSelected && count() > 0) {
        select(std::min(index, count()));
    }
}

// Selection
// -------------------------------------------------------------------------------------------------------

int ListView::selectedIndex() const {
    const QModelIndex current = currentIndex();
    return current.isValid() && selectionModel()->isSelected(current) ? current.row() + 1 : 0;
}

const ListItem* ListView::selectedItem() const {
    const int index = selectedIndex();
    return index == 0 ? nullptr : &item(index);
}

void ListView::select(int index) {
    if (index < 1 || index > count()) {
        refuseIndex();
    }
    const QScopedValueRollback quiet(quiet_, true);
    const QModelIndex row = model_->index(index - 1, 0);
    selectionModel()->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(row);
}

void ListView::select(const QString& key) {
    item(key);
    select(indexOf(key));
}

void ListView::ensureVisible(int index) {
    if (index < 1 || index > count()) {
        refuseIndex();
    }
    scrollTo(model_->index(index - 1, 0));
}

void ListView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int across = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(across);
}

void ListView::keyboardSearch(const QString& text) {
    if (model_->allMade()) {
        QTreeView::keyboardSearch(text);
    }
}

void ListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    if (quiet_ || selected.isEmpty()) {
        return;
    }
    clicked_ = true;
    tell(&ListView::itemClicked, selectedIndex());
}

// A row whose record cannot be read any more says nothing; a window must not fall over it.
void ListView::tell(void (ListView::*signal)(const QString&), int index) {
    QString key;
    Trap reading;
    reading([&] { key = item(index).Key; });
    if (!reading.failed()) {
        emit(this->*signal)(key);
    }
}

// One service at a time: holding a modifier key down neither adds to the choice nor takes it away, and a
// click beside the rows does not leave the buttons above without a service to work on.
QItemSelectionModel::SelectionFlags ListView::selectionCommand(const QModelIndex& index,
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

void ListView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter) {
        const int index = selectedIndex();
        event->setAccepted(index != 0);
        if (index != 0) {
            tell(&ListView::itemActivated, index);
        }
    } else if (event->key() == Qt::Key_Delete) {
        event->accept();
        emit deletePressed();
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        event->accept();
        askMenuAtSelection();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void ListView::mousePressEvent(QMouseEvent* event) {
    clicked_ = false;
    const QModelIndex under = indexAt(event->position().toPoint());
    QTreeView::mousePressEvent(event);
    // The description beside the list follows each click, also one on the row that was chosen already.
    if (!clicked_ && under.isValid() && selectedIndex() == under.row() + 1) {
        tell(&ListView::itemClicked, selectedIndex());
    }
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QModelIndex under = indexAt(event->position().toPoint());
    if (under.isValid()) {
        selectionModel()->setCurrentIndex(under, selectionCommand(under, event));
    }
    if (selectedIndex() != 0) {
        tell(&ListView::itemActivated, selectedIndex());
    }
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
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

void ListView::askMenuAtSelection() {
    const int index = selectedIndex();
    if (index > 0) {
        ensureVisible(index);
    }
    emit contextMenuAsked(viewport()->mapToGlobal(index > 0 ? rowRect(index).center() : QPoint(0, 0)));
}

// The part of a row that is in sight.
QRect ListView::rowRect(int index) const {
    QRect row = visualRect(model_->index(index - 1, 0));
    row.setLeft(0);
    row.setRight(std::min(header()->length(), viewport()->width()));
    return row;
}

// Looks
// -----------------------------------------------------------------------------------------------------------

void ListView::paintEvent(QPaintEvent* event) {
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

void ListView::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        showSelectionWithoutFocus();
    }
}

void ListView::showSelectionWithoutFocus() {
    const QPalette usual = QApplication::palette(this);
    QPalette colours = palette();
    for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText}) {
        colours.setColor(QPalette::Inactive, role, usual.color(QPalette::Active, role));
    }
    if (colours != palette()) {  // setting it is a change of the palette, too
        setPalette(colours);
    }
}

}  // namespace platform
