#pragma once

#include <QDialog>

#include "documents/requisition_names.h"

// The requisition of one service: everything drawn from stock for it, with a total. Its caller sets the
// owner, the service and, for the printed list, the view of the main window; calls Display; reads
// TotalForPayment.
//
// It reads rows and gives them back to stock; drawing is the catalogue's affair. The window builds its parts
// (RequisitionParts) and tells them of keys; what it does itself is opening, loading and closing.
class frmInvoiceEx : public QDialog, public RequisitionNames {
    Q_OBJECT
 public:
    explicit frmInvoiceEx(QWidget* parent = nullptr);
    ~frmInvoiceEx() override;

    void setParentForm(QWidget* owner);
    void Display();  // modal; returns when it is hidden
    void Unload();   // stores the settings; once. The destructor does it otherwise.

 protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    void load();
    void activate();

    bool loaded_ = false;     // the settings have been read
    bool activated_ = false;  // the first filling has run
};
