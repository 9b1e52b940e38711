#pragma once

#include <QDialog>
#include <QString>
#include <functional>

#include "documents/frmPrintInvoiceEx_tables.h"
#include "documents/service_view.h"

class ActiveReport2;
class DocumentTabs;

// Prepares one pro-forma invoice or invoice for the service selected in the main window, takes its number and
// shows it in the preview.
//
// What is typed belongs to the pages (DocumentTabs); the window opens and closes, and goes the way of a
// printed document.
class frmPrintInvoiceEx : public QDialog {
    Q_OBJECT
 public:
    enum Type { ProForma = print_invoice::kProForma, Invoice = print_invoice::kInvoice };

    explicit frmPrintInvoiceEx(const ServiceView& view, QWidget* parent = nullptr);
    ~frmPrintInvoiceEx() override;

    int OpenType = ProForma;
    void Display();  // modal; returns when it is hidden
    void Unload();   // stores the settings; once. The destructor does it otherwise.
    QString BuildFooterText() const;

    // Shows the filled document over this window and returns when the preview is closed. Whoever checks the
    // documents without looking at them puts something else in here.
    std::function<void(ActiveReport2&)> onShow;

 public slots:
    void reject() override;  // the close box and Escape: hidden, nothing taken back

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QWidget* buildButtons();
    void load();
    void print();
    void showRows(ActiveReport2& report);

    const ServiceView& view_;
    DocumentTabs* tabs_;
    bool loaded_ = false;
};
