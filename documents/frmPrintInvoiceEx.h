#pragma once

#include <QDialog>
#include <QString>
#include <array>
#include <functional>

#include "documents/frmPrintInvoiceEx_tables.h"
#include "documents/service_view.h"

class ActiveReport2;
class DocumentConditions;
class DocumentParties;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
namespace platform {
class DateField;
}

// Prepares one pro-forma invoice or invoice for the service selected in the main window, takes its number and
// shows it in the preview.
class frmPrintInvoiceEx : public QDialog {
    Q_OBJECT
 public:
    enum Type { ProForma = print_invoice::kProForma, Invoice = print_invoice::kInvoice };

    explicit frmPrintInvoiceEx(const ServiceView& view, QWidget* parent = nullptr);
    ~frmPrintInvoiceEx() override;

    int OpenType = ProForma;
    void Display();  // modal; returns when it is hidden
    void Unload();   // stores the settings; once. The destructor does it otherwise.

    // The last number printed of this kind of document; 0 before the first, and after an error, which is told
    // in a box.
    qint32 GetDocumentNumber(bool Write);
    // -1 takes the next number; anything else becomes the last number printed, which needs the database for
    // this workstation alone. The new number, or -1 where it was refused; the reason is told in a box.
    qint32 ChangeDocumentNumber(qint32 NewNumber);
    // Of today: 0 the year, 1 its last two digits, 2 month and year, 3 month and two digits; else empty.
    static QString NumberSuffixText(int Index);
    QString BuildFooterText() const;

    // Shows the filled document over this window and returns when the preview is closed. Whoever checks the
    // documents without looking at them puts something else in here.
    std::function<void(ActiveReport2&)> onShow;

 public slots:
    void reject() override;  // the close box and Escape: hidden, nothing taken back

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    // Building (frmPrintInvoiceEx.cpp).
    QWidget* buildGeneral();
    QWidget* buildNumberRow();
    QWidget* buildSumsRow();
    QWidget* buildButtons();
    void connectControls();

    // Filling (frmPrintInvoiceEx_load.cpp).
    void load();
    void loadPlace();
    void loadGeneral();
    void loadCosts();
    void select(QComboBox* box, int index);
    void setDefaults();
    void markParties(bool differ);
    void checkCosts();
    void numberFormChanged();
    void changeNumberByHand();
    bool filterKey(QWidget* field, const QKeyEvent& key);

    // Printing (frmPrintInvoiceEx_print.cpp).
    void print();
    void saveSettings();
    void takeNumber();
    void fillReport(ActiveReport2& report);
    void showRows(ActiveReport2& report);
    QString rowsQuery() const;

    const ServiceView& view_;
    QTabWidget* tabs_ = nullptr;
    DocumentConditions* conditions_ = nullptr;
    DocumentParties* parties_ = nullptr;
    QLineEdit* costs_ = nullptr;    // Text2(0), percent
    QCheckBox* inWords_ = nullptr;  // Check1(0)
    std::array<QComboBox*, 3> combo_{};
    std::array<QPushButton*, 3> command_{};
    platform::DateField* date_ = nullptr;
    QLabel* sample_ = nullptr;
    bool loaded_ = false;
};
