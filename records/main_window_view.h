#pragma once

#include "documents/service_view.h"

class frmMain;

// The main window as the requisition and the documents see it.
class MainWindowView : public ServiceView {
 public:
    explicit MainWindowView(const frmMain& window) : window_(window) {}
    QString tabCaption(int tab) const override;
    QString serviceKey() const override;
    QString serviceColumn(int column) const override;
    QString serviceDescription() const override;
    QString clientField(const QString& field) const override;
    bool isFirm() const override;

 private:
    const frmMain& window_;
};
