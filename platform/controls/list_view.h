#pragma once

#include <QHash>
#include <QIcon>
#include <QList>
#include <QString>
#include <QTreeView>
#include <functional>
#include <memory>

#include "platform/controls/list_item.h"

namespace platform {

class ListViewModel;

enum class HeaderAlignment { Left, Right, Center };

// Report view with columns that can be dragged and sized, grid lines, whole-row single selection that shows
// without focus. Rows stay in the order they were added: sorting is the database's affair. Rows are counted
// from 1, as the columns are. Throws RunError 35600 (index out of bounds) and 35601 (element not found),
// 35602 (key not unique).
class ListView : public QTreeView {
    Q_OBJECT
 public:
    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;

    // Columns.
    void addColumn(const QString& key, const QString& text, HeaderAlignment alignment);
    int columnCount() const;
    QString columnKey(int column) const;
    int columnOf(const QString& key) const;  // 0: none
    QString columnText(int column) const;
    void setColumnText(int column, const QString& text);
    int columnWidthTwips(int column) const;  // 15 twips to a logical pixel
    void setColumnWidthTwips(int column, int twips);
    int columnPosition(int column) const;  // one-based place on screen
    void setColumnPosition(int column, int position);
    // All at once: entry i (from 0) is the place of column i+1. One after the other would push columns placed
    // earlier away again. Entries that are missing, twice there or out of bounds leave their columns to the
    // free places, in order.
    void setColumnPositions(const QList<int>& positions);
    void setColumnIcon(int column, const QString& imageKey);  // from the column images; empty: none
    QString columnIcon(int column) const;
    void setColumnImages(const QHash<QString, QIcon>& images);  // an empty table takes all header icons away
    void setSmallIcons(const QHash<QString, QIcon>& images);

    // Rows.
    int count() const;
    void addItem(ListItem item);  // 35602 if the key is there already
    void clearItems();
    bool hasItem(const QString& key) const;
    const ListItem& item(int index) const;           // 35600
    const ListItem& item(const QString& key) const;  // 35601
    int indexOf(const QString& key) const;           // 0: none
    void changeItem(const QString& key, const std::function<void(ListItem&)>& change);
    // Of the selected row: the row after it (or the last one) becomes selected. Otherwise the selection
    // stays. No itemClicked.
    void removeItem(int index);
    // Rows that are made only when somebody looks at them: `count` of them; `make` gives row i (1-based),
    // `find` the index of a key (0: none). A made row is kept. addItem, changeItem and removeItem work on top
    // of it.
    void setLazyItems(int count, std::function<ListItem(int)> make, std::function<int(const QString&)> find);

    int selectedIndex() const;             // 0: nothing selected
    const ListItem* selectedItem() const;  // nullptr: nothing selected
    void select(int index);                // shows it, too; 35600. No itemClicked.
    void select(const QString& key);       // 35601
    void ensureVisible(int index);
    int madeCount() const;  // rows that hold their texts; the others are still to be made

    // Moving to a row keeps the columns where they were scrolled to.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    // A letter looks for a row that begins with it, but not while rows are still to be made.
    void keyboardSearch(const QString& text) override;

 signals:
    // A row was chosen by mouse or keys (a person's doing, also by moving with the arrow keys).
    void itemClicked(const QString& key);
    void itemActivated(
        const QString& key);  // double click, or Enter on the selected row (the key is consumed)
    void deletePressed();     // the Delete key
    void contextMenuAsked(const QPoint& globalPosition);  // right button, or the menu key
    void columnClicked(int column);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

 private:
    int checkedColumn(int column) const;  // from 0; 35600
    void tell(void (ListView::*signal)(const QString&), int index);
    void showSelectionWithoutFocus();
    void askMenuAtSelection();
    QRect rowRect(int index) const;
    std::unique_ptr<ListViewModel> model_;
    bool quiet_ = false;    // the selection moves by the program's doing
    bool clicked_ = false;  // itemClicked has gone out for the press that is under way
};

}  // namespace platform
