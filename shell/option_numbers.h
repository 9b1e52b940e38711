#pragma once

#include <QObject>
#include <QString>
#include <array>
#include <cstddef>

class QGridLayout;
class QLineEdit;
class QWidget;
struct MainOptions;
namespace platform {
class Trap;
}

// The numbers of the options: the days before a due date, the percents of tax, the dinars for one euro. Who
// leaves a field with something else in it is asked whether its usual value is to be taken.
class OptionNumbers : public QObject {
    Q_OBJECT
 public:
    explicit OptionNumbers(QWidget* window);  // its parent, over which it asks; the fields are the window's
    void addDaysAndTax(QGridLayout* grid);
    QLineEdit* addRate(const QString& accessibleName);  // behind the others

    // Those of the main window, and the program's rate.
    void load(const MainOptions& options);
    // Asks about each that is wrong: the first one that the person wants to go on in; nullptr: all stand. A
    // field left blank has a value of its own, so it is not asked about.
    QLineEdit* settle();
    void takeOver(MainOptions& options) const;
    void keepRate(platform::Trap& step) const;  // as it was taken over

 signals:
    void changed(bool isRight);  // what stands in the field that was changed

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QLineEdit* add(std::size_t index, const QString& accessibleName);
    bool settleOne(std::size_t index);  // false: the person wants to go on in the field
    bool asksForUsual(const char* fault);
    void left(std::size_t index);

    QWidget* window_;
    std::array<QLineEdit*, 3> fields_{};  // Text1
    bool asking_ = false;  // a question about a field is up; its answer moves the focus once more
};
