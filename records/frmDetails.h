#pragma once

#include <QDialog>
#include <QStringList>
#include <memory>

#include "records/service_properties.h"

class FieldLabels;
class QGridLayout;
class QPushButton;
class ServiceBill;
class ServiceEntryFields;
class ServiceView;

// The service editor: one service typed in or changed. It knows nothing of the database; its caller sets the
// properties, calls Display, reads Cancelled and the properties back. One instance serves the program's whole
// life.
//
// After OK the texts are in the program's own form: short dates, numbers without grouping.
class frmDetails : public QDialog, public ServiceProperties {
    Q_OBJECT
 public:
    enum OpenMode { AddMode = 0, EditMode = 1 };

    explicit frmDetails(QWidget* parent = nullptr);
    ~frmDetails() override;

    void setDefaultGST(qint16 percent) {
        defaultGST_ = percent;
    }  // for new services; 0: the field stays empty
    // The kinds of service at their positions from 1; [0] is not used. Empty: there is no table of them.
    void setAllServiceTypes(const QStringList& names);
    // For the list of parts that the requisition prints; outlives this window. nullptr: there is none.
    void setServiceView(const ServiceView* view) { serviceView_ = view; }
    bool Cancelled() const { return cancelled_; }

    // Fills the window for a new service (AddMode) or from the properties (EditMode) and returns when it is
    // hidden.
    void Display(int mode);
    // Keeps the window's place in the settings, if it was ever shown. Once; the destructor does it otherwise.
    void Unload();

 public slots:
    void reject() override;  // Cancel, Escape, the close box

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void addButtons(QGridLayout& grid);
    void setTabChain();
    void renew();  // what depends on what is typed
    void okClicked();
    void viewPriceList();
    ServiceTexts newService() const;

    std::unique_ptr<FieldLabels> labels_;
    std::unique_ptr<ServiceEntryFields> fields_;
    std::unique_ptr<ServiceBill> bill_;
    QPushButton* ok_ = nullptr;

    const ServiceView* serviceView_ = nullptr;
    qint16 defaultGST_ = 0;
    bool cancelled_ = false;
    int mode_ = AddMode;
    bool loaded_ = false;  // the window's place has been read
};
