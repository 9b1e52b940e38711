#pragma once

#include <QHash>
#include <QIcon>
#include <QList>
#include <QString>

class QHeaderView;

namespace platform {

class ListViewModel;

enum class HeaderAlignment { Left, Right, Center };

// The columns of a ListView, counted from 1 in the order they were added: what stands in the header, how wide
// each of them is, and where a person has dragged it. Throws RunError 35600 for a column that is not there.
class ViewColumns {
 public:
    // Both must live as long as this.
    ViewColumns(ListViewModel& model, QHeaderView& header) : model_(model), header_(header) {}

    void add(const QString& key, const QString& text, HeaderAlignment alignment);
    int count() const;
    QString key(int column) const;
    int indexOf(const QString& key) const;  // 0: none
    QString text(int column) const;
    void setText(int column, const QString& text);
    int width(int column) const;  // twips, as told until a person drags it
    void setWidth(int column, int twips);
    int position(int column) const;  // one-based place on screen
    void setPosition(int column, int position);
    // All at once: entry i (from 0) is the place of column i+1. One after the other would push columns placed
    // earlier away again. Entries that are missing, twice there or out of bounds leave their columns to the
    // free places, in order.
    void setPositions(const QList<int>& positions);
    void setIcon(int column, const QString& imageKey);  // from the images; empty: none
    QString icon(int column) const;
    // What the menu is called that hides columns and brings them out.
    void setMenuTitle(const QString& title) { menuTitle_ = title; }
    QString menuTitle() const { return menuTitle_; }
    void setImages(const QHash<QString, QIcon>& images);  // an empty table takes all icons away

 private:
    int checked(int column) const;  // from 0; 35600
    ListViewModel& model_;
    QHeaderView& header_;
    QString menuTitle_ = QStringLiteral("Show columns");
};

}  // namespace platform
