#pragma once

#include <QObject>
#include <QString>

#include "documents/document_choice.h"
#include "documents/document_controls.h"

class ActiveReport2;
class QBoxLayout;
class QLabel;
class QPushButton;
class QWidget;
namespace platform {
class DateField;
}

// The number and the date of the document that is being made out: the last number printed, which a click
// changes by hand, and how it is written on the paper.
class DocumentNumberFields : public QObject {
    Q_OBJECT
 public:
    // `openType`: the window's kind of document, looked at each time it matters. Outlives this.
    DocumentNumberFields(const int& openType, QWidget* window);
    // Reads as the line on the document does: number, sign, year, "od", date.
    void build(QWidget* panel, QBoxLayout* row);

    // Each step that fails is told in a box over the window, and the others go on.
    void loadNumber();
    void loadForm();
    void loadDate();  // today
    void takeDefaults();
    void save(const print_invoice::Save& save) const;
    void fill(ActiveReport2& report) const;
    void showSample();  // the number as the document will have it
    // Before anything is shown, and never given back: a number that two colleagues have seen is worse than
    // one that is missing.
    void takeNext();

    // The last number printed of this kind of document; 0 before the first, and after an error, which is told
    // in a box.
    qint32 GetDocumentNumber(bool Write);
    // -1 takes the next number; anything else becomes the last number printed, which needs the database for
    // this workstation alone. The new number, or -1 where it was refused; the reason is told in a box.
    qint32 ChangeDocumentNumber(qint32 NewNumber);
    // Of today: 0 the year, 1 its last two digits, 2 month and year, 3 month and two digits; else empty.
    static QString NumberSuffixText(int Index);

    QWidget* last() const;  // the field that the Tab key leaves for the sums, before it comes to the date

 private:
    void changeByHand();

    const int& openType_;
    QWidget* window_;
    DocumentChoice sign_, year_;
    QPushButton* number_ = nullptr;
    QLabel* sample_ = nullptr;
    platform::DateField* date_ = nullptr;
};
