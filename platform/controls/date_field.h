#pragma once

#include <QWidget>
#include <optional>

#include "platform/dao/value.h"

class QCheckBox;
class QDateEdit;

namespace platform {

// A date with a calendar to pick from, and, where `checkable`, a check box that takes the date away (Null).
// Shows the short date with the year in four digits; keyboard: digits, arrows, Alt+Down opens the calendar.
class DateField : public QWidget {
    Q_OBJECT
 public:
    explicit DateField(bool checkable, QWidget* parent = nullptr);
    std::optional<QDate> value() const;  // none: Null
    void setValue(const std::optional<QDate>& date);
    QDateEdit* edit() const { return edit_; }
    QCheckBox* checkBox() const { return check_; }  // nullptr where not checkable

 signals:
    void valueChanged();
    void focusLeft();  // the focus went to another widget outside this one

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QDateEdit* edit_ = nullptr;
    QCheckBox* check_ = nullptr;
    bool null_ = false;
};

}  // namespace platform
