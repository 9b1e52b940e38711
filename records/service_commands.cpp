#include "records/service_commands.h"

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "documents/frmInvoiceEx.h"
#include "documents/frmPrintInvoiceEx.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_view.h"
#include "platform/dao/dao.h"
#include "platform/system/trap.h"
#include "records/frmDetails.h"
#include "records/service_columns.h"
#include "records/service_details.h"
#include "records/service_list_owner.h"
#include "records/service_repricing.h"

using platform::BoxIcon;
using platform::ListItem;
using platform::Trap;

namespace {

// Each field by itself: one that cannot be written must not keep the others from being kept.
void writeToRecord(dao::Recordset& record, const ServiceTexts& service, qint32 machineId) {
    const service_row::ScreenUnit unit{CeneDinarske, KursKupovni};
    Trap step;
    step([&] { record.Fields("MachineID") = machineId; });
    for (const ServiceField& field : serviceFields()) {
        step([&] { record.Fields(field.list.field) = storedValue(field.kind, service[field.name], unit); });
    }
}

void passRowToEditor(const ListItem& row, const QString& description, frmDetails& editor) {
    const ServiceCells cells(row);
    ServiceTexts service;
    for (const ServiceField& field : serviceFields()) {
        service[field.name] = cells.text(field.name);
    }
    service[ServiceColumn::Comments] = description;
    editor.setService(service);
    editor.setServiceID(cells.serviceId());
}

}  // namespace

ServiceCommands::ServiceCommands(QWidget& window, platform::ListView& list, platform::DataControl& services,
                                 ServiceListOwner& owner, const ServiceView& view, ServiceDetails& details)
    : window_(window), list_(list), services_(services), owner_(owner), view_(view), details_(details) {}

ServiceCommands::~ServiceCommands() = default;

void ServiceCommands::makeEditor() {
    editor_ = std::make_unique<frmDetails>(&window_);
    editor_->setServiceView(&view_);
}

void ServiceCommands::dropEditor() {
    editor_.reset();
}

// --- Removing.

void ServiceCommands::showWhatIsLeft(Trap& step) {
    if (const ListItem* next = list_.selectedItem()) {
        details_.show(*next);
    } else {
        details_.showNothing();
        owner_.renewRecordCommands();
        owner_.renewServiceCommands();
    }
    bool atEnd = false;
    step([&] { services_.MoveNext(); });
    step([&] { atEnd = services_.Recordset().EOF() && services_.Recordset().RecordCount() > 0; });
    if (atEnd) {
        step([&] { services_.MoveFirst(); });
    }
}

void ServiceCommands::deleteSelected() {
    const ListItem* selected = list_.selectedItem();
    if (!selected) {
        return;
    }
    const QString key = selected->Key;
    bool asked = false, deleted = false;
    Trap step;
    step(refreshCache);
    step([&] {
        services_.FindFirst(QStringLiteral("ID=%1").arg(service_row::idOfKey(key)));
        asked = true;
    });
    if (asked && services_.Recordset().NoMatch()) {
        box(&window_, GetResString(171), BoxIcon::Exclamation);
        return;
    }
    // Where the file could not be asked another service stands there: it must not be the one that goes.
    if (asked) {
        step([&] {
            services_.Delete();
            deleted = true;
        });
    }
    if (deleted) {
        Trap removal;
        removal([&] { list_.removeItem(list_.indexOf(key)); });
        if (removal.failed()) {
            box(&window_, GetResString(172), BoxIcon::Exclamation);
        }
        showWhatIsLeft(step);
    }
    if (step.failed()) {
        box(&window_, GetResString(173) + QStringLiteral("\n\n") + step.line(), BoxIcon::Critical);
    }
}

// --- Requisition and documents.

void ServiceCommands::openRequisition() {
    const ListItem* selected = list_.selectedItem();
    if (selected == nullptr) {
        return;
    }
    const qint32 id = ServiceCells(*selected).serviceId();
    float total = 0;
    {
        frmInvoiceEx requisition(&window_);
        requisition.setParentForm(&window_);
        requisition.setServiceView(&view_);
        requisition.setServiceID(id);
        requisition.Display();
        total = requisition.TotalForPayment();
        requisition.Unload();
    }
    repriceService(window_, list_, services_, id, total);
}

void ServiceCommands::openDocument(bool invoice) {
    if (list_.selectedItem() == nullptr) {
        return;
    }
    frmPrintInvoiceEx document(view_, &window_);
    document.OpenType = invoice ? frmPrintInvoiceEx::Invoice : frmPrintInvoiceEx::ProForma;
    document.Display();
    document.Unload();
}

// --- Editing.

// False, and said, where the service is gone.
bool ServiceCommands::findForEdit(qint32 id) {
    bool asked = false;
    Trap step;
    step(refreshCache);
    step([&] {
        services_.FindFirst(QStringLiteral("ID=%1").arg(id));
        asked = true;
    });
    if (asked && services_.Recordset().NoMatch()) {
        box(&window_, GetResString(177), BoxIcon::Exclamation);
        return false;
    }
    // Without the row found, another one stands there: its record must not take these values.
    if (asked) {
        step([&] { services_.Recordset().Edit(); });
    }
    return true;
}

void ServiceCommands::editSelected() {
    editor_->setAllServiceTypes(details_.typeNames());
    const ListItem* selected = list_.selectedItem();
    if (!selected) {
        return;
    }
    const qint32 id = ServiceCells(*selected).serviceId();
    passRowToEditor(*selected, owner_.description(), *editor_);
    editor_->Display(frmDetails::EditMode);
    if (!editor_->Cancelled() && findForEdit(id)) {
        takeFromEditor(id, true);
    }
}

void ServiceCommands::addNew() {
    editor_->setAllServiceTypes(details_.typeNames());
    editor_->setDefaultGST(owner_.taxOfNewServices());
    editor_->Display(frmDetails::AddMode);
    if (editor_->Cancelled()) {
        return;
    }
    qint32 id = 0;
    Trap step;
    step([&] { services_.AddNew(); });
    step([&] { id = services_.Recordset()["ID"].asLong(); });
    takeFromEditor(id, false);
}

void ServiceCommands::takeFromEditor(qint32 id, bool edited) {
    const ServiceTexts service = editor_->service();
    showInList(service_row::keyOf(id), edited, service);
    writeAndSettle(service);
    owner_.renewRecordCommands();
    owner_.renewServiceCommands();
}

// The list shows what was entered before the database has it: the row is what the person looks at next.
void ServiceCommands::showInList(const QString& key, bool edited, const ServiceTexts& service) {
    Trap step;
    const auto show = [&](ListItem& row) { showTyped(row, service); };
    if (edited) {
        step([&] { list_.changeItem(key, show); });
    } else {
        ListItem row;
        row.Key = key;
        show(row);
        step([&] { list_.addItem(std::move(row)); });
    }
    step([&] { list_.select(key); });
    if (const ListItem* item = list_.selectedItem()) {
        details_.show(*item);
    }
}

// A failure is not reported here: the list then shows more than the database holds, until it is filled again.
void ServiceCommands::writeAndSettle(const ServiceTexts& service) {
    dao::Recordset record = services_.Recordset();
    writeToRecord(record, service, owner_.computerOnShow());
    Trap step;
    step([&] { record.Update(); });
    if (step.failed()) {
        Trap letGo;  // of the write lock, which other workstations are waiting for
        letGo([&] { services_.CancelUpdate(); });
    }
    step([&] { services_.setBookmark(record.LastModified()); });
}
