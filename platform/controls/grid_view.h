#pragma once

#include <QScopedValueRollback>
#include <QTreeView>

namespace platform {

// Rows and columns under a header, with grid lines, and one whole row selected, which shows without focus.
// The columns can be dragged and sized. Tells by the row's number, from 1, what a person does; what the
// program does to rows and selection tells nothing. Throws RunError 35600 (index out of bounds).
class GridView : public QTreeView {
    Q_OBJECT
 public:
    explicit GridView(QWidget* parent = nullptr);

    int selectedIndex() const;  // 0: nothing selected
    // Brings it into sight too, once the list is shown. No rowClicked.
    void select(int index);
    void ensureVisible(int index);
    // Moving to a row keeps the columns where they were scrolled to.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;

 signals:
    // A row was chosen by mouse or keys (a person's doing, also by moving with the arrow keys).
    void rowClicked(int index);
    void rowActivated(int index);  // double click, or Enter on the selected row (which uses the key up)
    void deletePressed();          // the Delete key
    void contextMenuAsked(const QPoint& globalPosition);  // right button, or the menu key
    void columnClicked(int column);                       // in the header, from 1

 protected:
    // As long as it lives, the selection moves by the program's doing.
    [[nodiscard]] QScopedValueRollback<bool> quietly() { return QScopedValueRollback(quiet_, true); }
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void updateGeometries() override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

 private:
    QModelIndex rowAt(int index) const;  // 35600
    void askMenuAtSelection();
    void showSelectionWithoutFocus();
    bool quiet_ = false;
    bool laysOut_ = true;     // not in what needs the places of rows only where somebody sees them
    bool scrollDue_ = false;  // to the selected row, when the list is shown
    bool clicked_ = false;    // rowClicked has gone out for the press that is under way
};

}  // namespace platform
