#pragma once

#include <QObject>
#include <QString>
#include <array>

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QWidget;
namespace platform {
class Trap;
}

// What stands over and under the products of a price list, and whether its contents are to be seen: two
// lines and two tick boxes of the window that asks for it.
class PriceListTexts : public QObject {
    Q_OBJECT
 public:
    PriceListTexts(QWidget* window, QGridLayout* grid);
    void load();  // as the settings keep it
    void save(platform::Trap& step) const;

    QString header() const;
    QString footer() const;  // as typed, or the firm's data where they are wanted
    bool hasContents() const;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void addText(int index, QWidget* window, QGridLayout* grid);
    void addCheck(int index, QWidget* window, QGridLayout* grid);
    bool usesFirmsData() const;
    void allowFooter();  // to be typed, or not

    std::array<QLabel*, 2> label_{};
    std::array<QLineEdit*, 2> text_{};
    std::array<QCheckBox*, 2> check_{};
};
