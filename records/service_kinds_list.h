#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QListWidget;
class QWidget;
namespace platform {
class LinkLabel;
}

// The kinds of work in the service editor, and the link that takes the choice back.
class ServiceKindsList : public QObject {
 public:
    explicit ServiceKindsList(QWidget& window);
    QListWidget* list() const { return list_; }
    platform::LinkLabel* deselectLink() const { return deselect_; }

    // The kinds at their positions from 1; [0] is not used. Empty: there is no table of them. The list shows
    // them from its next filling on.
    void setNames(const QStringList& names) { names_ = names; }
    void fill();
    // Positions from 1, "|" between; what is no position counts as none. Nothing where there are no kinds.
    void select(const QString& positions);
    QString selected() const;  // the first kind where none is

 private:
    QListWidget* list_;
    platform::LinkLabel* deselect_;
    QStringList names_;
};
