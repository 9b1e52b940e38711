#pragma once

#include <QObject>

#include "documents/document_choice.h"
#include "documents/document_controls.h"

class ActiveReport2;
class QBoxLayout;
class QCheckBox;
class QLineEdit;
class QWidget;

// How the sums of the document that is being made out are reckoned and shown: decimals, other costs, and
// whether the total stands there in words too.
class DocumentSumFields : public QObject {
    Q_OBJECT
 public:
    explicit DocumentSumFields(QWidget* window);
    void build(QWidget* panel, QBoxLayout* row);
    QWidget* first() const;  // the field that the Tab key comes to first

    // Each step that fails is told in a box over the window, and the others go on.
    void loadRounding();
    void loadWords();
    void loadCosts();
    void takeDefaults();
    void save(const print_invoice::Save& save) const;  // but the rounding
    void saveRounding(const print_invoice::Save& save) const;
    void fill(ActiveReport2& report) const;
    void checkCosts();  // what is no percent below a hundred is none

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QWidget* window_;
    DocumentChoice rounding_;
    QLineEdit* costs_ = nullptr;    // Text2(0), percent
    QCheckBox* inWords_ = nullptr;  // Check1(0)
};
