#pragma once

#include "documents/service_view.h"
#include "records/service_columns.h"

class EntryFields;
class StageSwitch;
namespace platform {
class ListView;
}

// The main window as the requisition and the documents see it.
class MainWindowView : public ServiceView {
 public:
    // All of these outlive it; `tabs` need not be made yet.
    MainWindowView(const EntryFields& fields, const platform::ListView& services, const StageSwitch& tabs)
        : fields_(fields), services_(services), tabs_(tabs) {}
    QString tabCaption(int tab) const override;
    std::optional<qint32> serviceId() const override;
    QString serviceStarted() const override;
    QString serviceDiscount() const override;
    QString serviceTax() const override;
    QString serviceDescription() const override;
    QString clientField(const QString& field) const override;
    bool isFirm() const override;

 private:
    QString shown(ServiceColumn column) const;
    const EntryFields& fields_;
    const platform::ListView& services_;
    const StageSwitch& tabs_;
};
