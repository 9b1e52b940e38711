#pragma once

#include <QHash>
#include <QIcon>
#include <QString>
#include <functional>
#include <memory>

#include "platform/controls/grid_view.h"
#include "platform/controls/list_item.h"
#include "platform/controls/view_columns.h"

namespace platform {

class ListViewModel;

// A grid of rows that are found by their keys. Rows stay in the order they were added: sorting is the
// database's affair. Rows are counted from 1, as the columns are. Throws RunError 35600 (index out of bounds)
// and 35601 (element not found), 35602 (key not unique).
class ListView : public GridView {
    Q_OBJECT
 public:
    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;

    ViewColumns& columns() { return columns_; }
    const ViewColumns& columns() const { return columns_; }
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

    const ListItem* selectedItem() const;  // nullptr: nothing selected
    using GridView::select;
    void select(const QString& key);  // 35601. No itemClicked.
    int madeCount() const;            // rows that hold their texts; the others are still to be made
    // A letter looks for a row that begins with it, but not where thousands would have to be made for it.
    void keyboardSearch(const QString& text) override;

 signals:
    // What GridView tells by a row's number, by its key.
    void itemClicked(const QString& key);
    void itemActivated(const QString& key);

 private:
    void tell(void (ListView::*signal)(const QString&), int index);
    std::unique_ptr<ListViewModel> model_;
    ViewColumns columns_;
};

}  // namespace platform
