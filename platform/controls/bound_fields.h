#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include "platform/dao/recordset.h"

class QWidget;

namespace platform {

// The entry fields bound to a record set: what its current row holds stands in them, and what was typed waits
// there until somebody writes it. Bound widgets: QLineEdit, QPlainTextEdit (text), QCheckBox (Yes/No),
// DateField (date, Null allowed). A Null shows as empty; an empty text is written as the empty text over a
// value that was not Null, and leaves a Null as it is. A date left empty is written as the date value 1.0,
// never as Null; both show as empty. A line takes no more characters than its field holds.
class BoundFields : public QObject {
    Q_OBJECT
 public:
    explicit BoundFields(dao::Recordset& rows) : rows_(rows) {}  // which must live as long as this

    // A field of the file shown in a widget. The widget's text changes mark it as changed: bind before
    // connecting a handler that asks whether it is.
    void bind(QWidget* widget, const QString& field);
    // The widget has been changed since its row was shown or written.
    bool isChanged(const QWidget* widget) const;
    void setChanged(const QWidget* widget, bool changed);

    // The current row into the fields, over what was typed; empties them where there is none.
    void showRow();
    void showEmpty();
    // Does a step of the record set, and shows the row that is current then. Throws what the step throws: a
    // failed one may have dropped a row being added, and then the fields go back to the row that is current;
    // otherwise what was typed stays.
    template <typename Step>
    void follow(Step step);
    bool isAdding() const;

    void endTyping();     // a date still being typed is part of the record, and marks itself as changed
    void limitLengths();  // by the record set's fields
    // Into the row being edited or added: what was typed. A row being added also gets what nobody touched,
    // unless the program has put something there itself.
    void write(bool adding);
    void forgetChanges();

 signals:
    void shown();  // another row (or none) stands in the fields

 private:
    struct Binding {
        QPointer<QWidget> widget;
        QString field;
        bool changed = false;
    };
    void put(const QList<dao::Value>& values);
    void markChanged(const QWidget* widget);
    dao::Recordset& rows_;
    QList<Binding> bindings_;
    bool showing_ = false;
};

template <typename Step>
void BoundFields::follow(Step step) {
    const bool wasAdding = isAdding();
    try {
        step();
    } catch (...) {  // passed on below
        if (wasAdding && !isAdding()) {
            showRow();
        }
        throw;
    }
    showRow();
}

}  // namespace platform
