#pragma once

#include <QHash>
#include <QObject>

class QLineEdit;
class QToolButton;
class QWidget;
namespace platform {
class DateField;
}

// The date picker of the service editor. One serves all date fields: it lies over the field that it was
// opened for, by the picture button beside it or by Alt+Down, until the person goes on to something else. The
// pictures show which fields have a date and which one it is open over.
class ServiceDatePicker : public QObject {
 public:
    explicit ServiceDatePicker(QWidget& window);
    void serve(QLineEdit* field, QToolButton* button);

    void startFromToday();  // what a check mark brings while no date was there before
    // Takes the date into the field; commit() first where another one is open. Text that is no date is said
    // and deleted.
    void open(QLineEdit* field);
    // Nothing, both of them, where it is not open.
    void commit();  // its date goes into the field
    void close();   // the field stays as it was

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void takeValue();
    void place();
    void showPicture(QLineEdit* field);

    QWidget& window_;
    platform::DateField* picker_;
    QHash<QLineEdit*, QToolButton*> buttons_;
    QLineEdit* field_ = nullptr;  // that it lies over
    bool opening_ = false;        // a box may be up while it opens: its focus is not lost then
};
