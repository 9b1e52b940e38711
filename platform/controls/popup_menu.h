#pragma once

#include <QHash>
#include <QIcon>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QString>

class QAction;
class QMenu;
class QWidget;

namespace platform {

// Menus that pop up at the pointer, built once and kept by name. Items count from 1 in the order they were
// added; separators and header lines count, too. A caption "-" is a separator, "-Text" a header line; a
// shortcut stands behind a tab and is a label only.
class PopupMenu : public QObject {
    Q_OBJECT
 public:
    explicit PopupMenu(QWidget* owner);
    ~PopupMenu() override;

    void clear();  // begins a new menu
    // The item's index. `helpText` is kept for the item's tool tip and status tip; it may be empty.
    int addItem(const QString& caption, const QString& helpText = {}, const QIcon& icon = {},
                bool enabled = true, const QString& key = {});
    void store(const QString& name);    // the menu built so far
    void restore(const QString& name);  // makes it the one that the calls below work on; RunError 5: no such
    int indexOf(const QString& key) const;  // 0: none
    QString keyOf(int index) const;         // empty: no such item, or one without a key
    void setCaption(int index, const QString& caption);
    void setEnabled(int index, bool enabled);
    bool isEnabled(int index) const;
    void setEnabled(const QString& key, bool enabled) { setEnabled(indexOf(key), enabled); }
    // Comes back at once; the choice arrives by click(). The menu's object name is the name it is stored by.
    void show(const QPoint& globalPosition);
    QMenu* menu() const { return current_; }  // nullptr before the first restore

    bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
    void click(int item);
    // The pointer or the keys have come to an item; also to one that is off, which nothing else shows.
    void itemHighlight(int item, bool enabled, bool separator);

 private:
    void tellHighlight(const QMenu* menu, QAction* action);
    QAction* itemAt(int index) const;  // nullptr out of range
    QWidget* owner_;
    QMenu* building_ = nullptr;
    QMenu* current_ = nullptr;
    QHash<QString, QMenu*> stored_;
    int highlighted_ = 0;  // item told last while the menu is up
};

}  // namespace platform
