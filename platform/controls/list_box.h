#pragma once

#include <QList>
#include <QListView>
#include <QString>
#include <utility>

namespace platform {

// A list of texts, each with a number behind it (item data). Rows stay in the order they were added and count
// from 0; -1 is no row. Quick with tens of thousands of rows. What the program does to the list or its
// selection signals nothing; only a person's choice does.
class ListBox : public QListView {
    Q_OBJECT
 public:
    explicit ListBox(QWidget* parent = nullptr);

    void resetContent();                                      // LB_RESETCONTENT
    int addString(const QString& text, qint32 number = 0);    // the new row
    void addStrings(QList<std::pair<QString, qint32>> rows);  // many at once
    void deleteString(int row);                               // the selection goes with its row
    int count() const;
    QString text(int row) const;  // empty out of range
    void setText(int row, const QString& text);
    qint32 itemData(int row) const;  // -1 out of range
    void setItemData(int row, qint32 number);
    // The first row, from the top, that begins with the text, without regard to case; -1: none. An empty text
    // finds row 0.
    int findString(const QString& prefix) const;
    int curSel() const;       // LB_GETCURSEL
    bool setCurSel(int row);  // -1 takes the selection away; false: no such row
    QString selectedText() const { return text(curSel()); }
    qint32 selectedData() const { return itemData(curSel()); }
    void setTopIndex(int row);  // the row to the top, as far as the list's length allows

 signals:
    void clicked();                                       // another row, or the same again, by mouse or keys
    void doubleClicked();                                 // on a row
    void contextMenuAsked(const QPoint& globalPosition);  // right button up, or the menu key

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

 private:
    class Model;
    Model* model_;
    bool quiet_ = false;  // the selection moves by the program's doing
    bool told_ = false;   // clicked() has gone out for the press that is under way
};

}  // namespace platform
