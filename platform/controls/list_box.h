#pragma once

#include <QList>
#include <QString>
#include <utility>

#include "platform/controls/choice_list.h"

namespace platform {

// A list of texts, each with a number behind it (item data). Rows stay in the order they were added and count
// from 0; -1 is no row. Quick with tens of thousands of rows.
class ListBox : public ChoiceList {
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

 private:
    class Model;
    Model* model_;
};

}  // namespace platform
