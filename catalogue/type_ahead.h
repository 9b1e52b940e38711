#pragma once

#include <QObject>
#include <QString>

class CatalogueSwitch;
class QKeyEvent;
class QLineEdit;
namespace platform {
class ListBox;
}

// Typing ahead in the search box over a list: what is typed is completed from the list. What follows from it
// is the pane's affair.
class TypeAhead : public QObject {
    Q_OBJECT
 public:
    TypeAhead(QLineEdit* box, platform::ListBox* list, const CatalogueSwitch& allManufacturers);

    QLineEdit* box() const { return box_; }
    void setText(const QString& text);  // without a search
    bool key(const QKeyEvent& key);     // true: dealt with

 signals:
    void left();            // the chosen row is not meant any more
    void matched();         // a row begins with what was typed
    void changed();         // other commands than before may be possible
    void entered(int row);  // down into the list, to that row; -1: none begins with the text

 private:
    void textChanged();
    void complete(int row, const QString& typed);

    QLineEdit* box_;
    platform::ListBox* list_;
    const CatalogueSwitch& allManufacturers_;
    bool ignoreChange_ = false;
};
