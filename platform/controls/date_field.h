#pragma once

#include <QDate>
#include <QWidget>
#include <optional>

class QCheckBox;
class QDateEdit;

namespace platform {

// A date with a calendar to pick from, and, where `checkable`, a check box that takes the date away (Null).
// Shows the short date with the year in four digits, years 100 to 9999, and nothing while it is Null. What is
// typed is read by readDate when the field is left or asked for its value; it is red until it is a date, and
// what is none gives way to the date that was there. Keyboard: up and down count the part that the caret
// stands in; Alt+Down or F4 opens the calendar; where checkable, Delete or Backspace on the whole date (as
// after Tab) makes it Null, and Space checks or unchecks. One stop for the Tab key. Enter is left to the
// window.
class DateField : public QWidget {
    Q_OBJECT
 public:
    explicit DateField(bool checkable, QWidget* parent = nullptr);
    std::optional<QDate> value() const;               // none: Null
    void setValue(const std::optional<QDate>& date);  // an invalid date counts as none
    QDateEdit* edit() const { return edit_; }
    QCheckBox* checkBox() const { return check_; }  // nullptr where not checkable

 signals:
    void valueChanged();  // by whomever
    void focusLeft();     // the focus went to another widget outside this one

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    class Edit;
    bool keyPressed(const QKeyEvent& event);
    void focusOut(const QFocusEvent& event);
    void dateChanged();
    Edit* field_ = nullptr;  // the same as edit_
    QDateEdit* edit_ = nullptr;
    QCheckBox* check_ = nullptr;
    QDate last_;  // what a check mark brings back
    bool null_ = true;
};

}  // namespace platform
