#pragma once

#include <QList>
#include <QVariant>

class QWidget;
class Stage;

// What has been typed into the fields of a client or a computer and not been written yet: taken before the
// record behind the fields is read afresh, put back afterwards. Fields that nobody changed are not part of
// it, so that they show what colleagues have written in the meantime.
class TypedEntry {
 public:
    // A date still being typed belongs to it.
    explicit TypedEntry(const Stage& stage);
    bool isEmpty() const { return values_.isEmpty(); }
    // Into the fields of the same stage, marked as changed. The stage is dirty afterwards, unless there were
    // only dates.
    void putBack(Stage& stage) const;

 private:
    struct Value {
        QWidget* field;
        QVariant value;  // text, check mark or date; an invalid date: none
    };
    QList<Value> values_;
};
