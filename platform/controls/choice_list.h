#pragma once

#include <QListView>
#include <QScopedValueRollback>

namespace platform {

// A list of which a person chooses one row. Nothing but a person's choice is told: what the program does to
// the list or its selection signals nothing.
class ChoiceList : public QListView {
    Q_OBJECT
 public:
    explicit ChoiceList(QWidget* parent = nullptr);

 signals:
    void clicked();                                       // another row, or the same again, by mouse or keys
    void doubleClicked();                                 // on a row
    void contextMenuAsked(const QPoint& globalPosition);  // right button up, or the menu key

 protected:
    // As long as it lives, the selection moves by the program's doing.
    [[nodiscard]] QScopedValueRollback<bool> quietly() { return QScopedValueRollback(quiet_, true); }
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

 private:
    bool quiet_ = false;
    bool told_ = false;  // clicked() has gone out for the press that is under way
};

}  // namespace platform
