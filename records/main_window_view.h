#pragma once

#include "documents/service_view.h"
#include "records/service_columns.h"

class EntryFields;
class StageTabs;
namespace platform {
class ListView;
}

// The main window as the requisition and the documents see it.
class MainWindowView : public ServiceView {
 public:
    // All of these outlive it; list and tabs may still be made later.
    MainWindowView(const EntryFields& fields, platform::ListView* const& services, StageTabs* const& tabs)
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
    platform::ListView* const& services_;
    StageTabs* const& tabs_;
};
