#include "records/service_list.h"

#include <memory>

#include "common/list_columns.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "documents/frmInvoiceEx.h"
#include "documents/frmPrintInvoiceEx.h"
#include "platform/controls/data_control.h"
#include "platform/controls/pictures.h"
#include "platform/dao/dao.h"
#include "platform/system/trap.h"
#include "records/frmDetails.h"
#include "records/service_columns.h"
#include "records/service_repricing.h"
#include "records/service_rows.h"

using platform::BoxIcon;
using platform::ListItem;
using platform::Trap;

namespace {

// A computer's services are computed at once: it takes less time than the eye, and the list then stands as it
// was when it was filled. Beyond that (the whole shop, before a computer is chosen) rows wait until they are
// looked at.
constexpr int kRowsAtOnce = 200;

service_row::ScreenUnit screenUnit() {
    return {CeneDinarske, KursKupovni};
}

// As far as there are columns: what a later version keeps for more of them is nothing to this one.
QString figuresFor(const settings::Setting& setting, const QString& usual) {
    return settings::text(setting, usual)
        .section(QLatin1Char(';'), 0, static_cast<qsizetype>(serviceColumns().size()) - 1);
}

void placeServiceColumns(platform::ListView& list, Trap& step) {
    placeColumns(list, figuresFor(settings::LVWColumnWidths, defaultWidths(serviceColumns())),
                 figuresFor(settings::LVWColumnPositions, defaultPositions(serviceColumns())), step);
}

QHash<QString, QIcon> stateIcons() {
    QHash<QString, QIcon> icons;
    for (bool finished : {true, false}) {
        for (bool paid : {true, false}) {
            const QString key = service_row::stateKey(finished, paid);
            icons.insert(key, platform::icon(key));
        }
    }
    return icons;
}

void fillList(platform::ListView& list, const dao::Recordset& services) {
    auto rows = std::make_shared<ServiceRows>(services, screenUnit());
    if (rows->count() > kRowsAtOnce) {
        list.setLazyItems(
            rows->count(), [rows](int index) { return rows->make(index); },
            [rows](const QString& key) { return rows->find(key); });
        return;
    }
    for (int index = 1; index <= rows->count(); ++index) {
        if (std::optional<ListItem> item = rows->read(index)) {
            Trap step;  // a row that cannot be added leaves the others standing
            step([&] { list.addItem(std::move(*item)); });
        }
    }
}

// Each field by itself: one that cannot be written must not keep the others from being kept.
void writeToRecord(dao::Recordset& record, const ServiceTexts& service, qint32 machineId) {
    const service_row::ScreenUnit unit = screenUnit();
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

ServiceList::ServiceList(QWidget& window, platform::ListView& list, platform::DataControl& services,
                         ServiceListOwner& owner, const ServiceView& view)
    : window_(window), list_(list), services_(services), owner_(owner), view_(view) {}

ServiceList::~ServiceList() = default;

void ServiceList::build(Trap& step) {
    step([&] {
        list_.setSmallIcons(stateIcons());
        addColumns(list_, serviceColumns());
    });
    if (!step.failed()) {
        placeServiceColumns(list_, step);
    }
}

void ServiceList::makeEditor() {
    editor_ = std::make_unique<frmDetails>(&window_);
    editor_->setServiceView(&view_);
}

void ServiceList::dropEditor() {
    editor_.reset();
}

void ServiceList::showUnit() {
    ::showUnit(list_, serviceColumns());
}

void ServiceList::loadTypes() {
    dao::Recordset table;
    bool opened = false;
    Trap step;
    step([&] {
        table = services_.Database().OpenRecordset("ServiceTypes", dao::dbOpenTable);
        opened = true;
    });
    if (!opened) {
        return;
    }
    typeNames_ = {QString()};
    for (std::int64_t i = table.RecordCount(); i > 0; --i) {
        QString name;  // a kind that cannot be read keeps its place: services name kinds by position
        step([&] { name = QString::fromStdString(table["Service"].asText()); });
        typeNames_.append(name);
        step([&] { table.MoveNext(); });
    }
    table.Close();
}

void ServiceList::fill(const QString& selectKey) {
    list_.clearItems();
    Trap step;
    step([&] { services_.MoveLast(); });
    if (step.failed()) {
        owner_.showTexts({}, {});
        owner_.renewRecordCommands();
        return;
    }
    step([&] { services_.MoveFirst(); });
    step([&] { fillList(list_, services_.Recordset()); });
    step([&] {
        if (selectKey.isEmpty()) {
            list_.select(1);
        } else {
            list_.select(selectKey);
        }
    });
    if (const ListItem* item = list_.selectedItem()) {
        showDetails(*item);
    }
    owner_.renewRecordCommands();
}

void ServiceList::closeRows() {
    list_.clearItems();
}

void ServiceList::showDetails(const ListItem& item) {
    owner_.showTexts(service_row::commentsOfTag(item.Tag),
                     service_row::typeNames(service_row::typesOfTag(item.Tag), typeNames_));
    shownKey_ = item.Key;
}

std::optional<qint32> ServiceList::selectedId() const {
    const ListItem* selected = list_.selectedItem();
    return selected == nullptr ? std::nullopt : std::optional(ServiceCells(*selected).serviceId());
}

// --- Removing.

void ServiceList::showWhatIsLeft(Trap& step) {
    if (const ListItem* next = list_.selectedItem()) {
        showDetails(*next);
    } else {
        owner_.showTexts({}, {});
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

void ServiceList::deleteSelected() {
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

void ServiceList::openRequisition() {
    const std::optional<qint32> id = selectedId();
    if (!id) {
        return;
    }
    float total = 0;
    {
        frmInvoiceEx requisition(&window_);
        requisition.setParentForm(&window_);
        requisition.setServiceView(&view_);
        requisition.setServiceID(*id);
        requisition.Display();
        total = requisition.TotalForPayment();
        requisition.Unload();
    }
    repriceService(window_, list_, services_, *id, total);
}

void ServiceList::openDocument(bool invoice) {
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
bool ServiceList::findForEdit(qint32 id) {
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

void ServiceList::editSelected() {
    editor_->setAllServiceTypes(typeNames_);
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

void ServiceList::addNew() {
    editor_->setAllServiceTypes(typeNames_);
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

void ServiceList::takeFromEditor(qint32 id, bool edited) {
    const ServiceTexts service = editor_->service();
    showInList(service_row::keyOf(id), edited, service);
    writeAndSettle(service);
    owner_.renewRecordCommands();
    owner_.renewServiceCommands();
}

// The list shows what was entered before the database has it: the row is what the person looks at next.
void ServiceList::showInList(const QString& key, bool edited, const ServiceTexts& service) {
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
        showDetails(*item);
    }
}

// A failure is not reported here: the list then shows more than the database holds, until it is filled again.
void ServiceList::writeAndSettle(const ServiceTexts& service) {
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
