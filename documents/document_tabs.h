#pragma once

#include <QString>
#include <QTabWidget>

class ActiveReport2;
class DocumentConditions;
class DocumentNumberFields;
class DocumentParties;
class DocumentSumFields;
class ServiceView;

// The pages of the document window: on the first the number, the sums and the conditions, on the second who
// makes the document out, and to whom. What all of them do together: start, fall back, are kept, and go over
// to the paper. Each part tells what fails in a box over the window, and the others go on.
class DocumentTabs : public QTabWidget {
    Q_OBJECT
 public:
    // `openType`: the window's kind of document, looked at each time it matters. Outlives this.
    DocumentTabs(const int& openType, QWidget* window);

    DocumentNumberFields& number() const { return *number_; }
    DocumentConditions& conditions() const { return *conditions_; }

    void loadPage();  // the page that was on top last time
    void load(const ServiceView& view);
    void takeDefaults();  // of the page on top
    // Checks what is being typed, then keeps all of it; the first failure is told.
    void save();
    // The properties of the document; the rows are another's.
    void fill(ActiveReport2& report, const ServiceView& view) const;

 private:
    QWidget* buildGeneral();
    QWidget* buildNumberRow();
    QWidget* buildSumsRow();
    void markParties(bool differ);

    DocumentNumberFields* number_;
    DocumentSumFields* sums_;
    DocumentConditions* conditions_;
    DocumentParties* parties_ = nullptr;
};
