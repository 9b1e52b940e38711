// The services list in the main window: what it takes from the window, and the told names of what it does.

#include "common/modMain.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_view.h"
#include "platform/controls/selector.h"
#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/main_fields.h"
#include "records/service_list.h"

using platform::ListItem;
using platform::Trap;

namespace {

class ListOwner : public ServiceListOwner {
 public:
    explicit ListOwner(frmMain& window) : window_(window) {}
    qint32 computerOnShow() const override {
        const platform::Selector& computers = *window_.Combo1[1];
        return computers.entryData(computers.currentIndex());
    }
    qint16 taxOfNewServices() const override { return static_cast<qint16>(window_.DefaultGST); }
    QString description() const override { return window_.fieldText(kDescription); }
    void showTexts(const QString& description, const QString& kinds) override {
        window_.setFieldText(kDescription, description);
        window_.setFieldText(kServiceKinds, kinds);
    }
    void renewRecordCommands() override { window_.UpdateToolbarState(); }
    void renewServiceCommands() override { window_.UpdateServiceButtons(); }

 private:
    frmMain& window_;
};

}  // namespace

void frmMain::makeServiceList() {
    listOwner_ = std::make_unique<ListOwner>(*this);
    services_ = std::make_unique<ServiceList>(*this, *ListView1, *Data1[2], *listOwner_, view_);
}

bool frmMain::InitServiceListView(QString& errorText) {
    Trap step;
    step([&] { beginStep(StartStep::ServiceList); });
    if (!step.failed()) {
        services_->build(step);
    }
    if (step.failed()) {
        errorText = GetResString(167) + QLatin1Char('\n') + step.line();
        return false;
    }
    connect(ListView1, &platform::ListView::itemActivated, this, [this] { EditService(1); });
    connect(ListView1, &platform::ListView::deletePressed, this, [this] { DeleteRecord(CurrentStage - 1); });
    connect(ListView1, &platform::ListView::itemClicked, this, [this] {
        if (const ListItem* item = ListView1->selectedItem()) {
            ShowServiceDetails(*item);
        }
    });
    return true;
}

frmDetails* frmMain::ServiceEditor() const {
    return services_->editor();
}

const QStringList& frmMain::ServiceTypeNames() const {
    return services_->typeNames();
}

QString frmMain::CurrentServiceKey() const {
    return services_->shownKey();
}

void frmMain::showUnit() {
    services_->showUnit();
}

void frmMain::LoadServiceTypes() {
    services_->loadTypes();
}

void frmMain::FillServiceList(const QString& selectKey) {
    services_->fill(selectKey);
}

void frmMain::CloseServiceRows() {
    services_->closeRows();
}

void frmMain::ShowServiceDetails(const ListItem& item) {
    services_->showDetails(item);
}

void frmMain::DeleteSelectedService() {
    services_->deleteSelected();
}

void frmMain::OpenServiceRequisition() {
    services_->openRequisition();
}

void frmMain::OpenDocumentOptions(bool invoice) {
    services_->openDocument(invoice);
}

void frmMain::EditService(int mode) {
    if (mode == 1) {
        services_->editSelected();
    } else {
        services_->addNew();
    }
}
