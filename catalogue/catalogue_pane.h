#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "platform/system/sort_tag.h"

class CatalogueStatus;
class QWidget;
namespace platform {
class DataControl;
class Trap;
}  // namespace platform

// One pane of the catalogue: the records that it shows, their order, and how many there are. The lists of
// groups and manufacturers and the list of products stand on it.
class CataloguePane : public QObject {
    Q_OBJECT
 public:
    struct Words {
        const char* caption;    // while the pane is being worked in
        const char* counted;    // what there are so many of
        const char* fillError;  // stands before what failed
        const char* filler;     // the routine that a failure names
    };
    CataloguePane(const Words& words, QWidget* window, CatalogueStatus& status);

    platform::DataControl& data() const { return *data_; }
    const Words& words() const { return words_; }
    // Reads the pane's records again and shows them. `selectKey`: a product's key, or the text of a list's
    // row; empty: what was selected, else the first row. `reset`: back to the default order.
    void update(const QString& selectKey, bool reset);
    platform::SortTag sort() const;  // of the tag; one that cannot be read: not sorted
    void setCount(qint64 count);     // and, where standing status text is wanted, showCount
    void showCount();
    void takeFocus();  // where the list is to be seen

    virtual QWidget* list() const = 0;
    virtual bool hasRows() const = 0;
    virtual bool hasSelection() const = 0;

    QString sortTag;  // as the settings keep it

 signals:
    void changed();  // other commands than before may be possible

 protected:
    virtual QString selection() const = 0;  // as `selectKey`; empty: none
    virtual QString statement(const platform::SortTag& sort) const = 0;
    virtual QString fill() = 0;  // an error's text, empty on success
    virtual void select(const QString& key) = 0;
    virtual void showSort(const platform::SortTag&) {}
    virtual void filled() {}
    void fillRows(platform::Trap& step, const std::function<void()>& takeRow);
    QString fillErrorOf(const platform::Trap& step) const;
    QWidget* window() const { return window_; }

 private:
    const Words& words_;
    QWidget* window_;
    CatalogueStatus& status_;
    platform::DataControl* data_;
    QString countText_;
};
