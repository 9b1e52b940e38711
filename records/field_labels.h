#pragma once

#include <QObject>
#include <QString>

class QLabel;
class QWidget;

// The property of a control that holds its topic of the help file.
inline constexpr char kTopicProperty[] = "HelpContextID";

// The labels before the fields of the service editor. A click on a label leads to its field, and a field that
// gets the focus is selected whole.
class FieldLabels : public QObject {
 public:
    explicit FieldLabels(QWidget& window);
    // "Label1(number)". The field takes its name for screen readers from the caption.
    QLabel* add(int number, const QString& caption, QWidget* field);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QWidget& window_;
};
