// The services of the selected computer: the list, its details, and the way into the service editor and back.
#include <algorithm>
#include <cmath>
#include <memory>

#include "documents/frmInvoiceEx.h"
#include "documents/frmPrintInvoiceEx.h"
#include "platform/controls/pictures.h"
#include "platform/dao/dao.h"
#include "platform/system/dates.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "records/frmDetails.h"
#include "records/frmMain.h"
#include "records/service_repricing.h"
#include "records/service_row.h"
#include "records/service_rows.h"
#include "shell/modMain.h"
#include "shell/settings.h"

using platform::BoxIcon;
using platform::HeaderAlignment;
using platform::ListItem;
using platform::Trap;

namespace {

constexpr int kServices = 2;           // the stage's index
constexpr int kDescriptionField = 37;  // Text1
constexpr int kTypesField = 38;

// A computer's services are computed at once: it takes less time than the eye, and the list then stands as it
// was when it was filled. Beyond that (the whole shop, before a computer is chosen) rows wait until they are
// looked at.
constexpr int kRowsAtOnce = 200;

struct Column {
    const char* key;
    int header;  // string id
    HeaderAlignment alignment;
    bool money;
};
constexpr Column kColumns[] = {
    {"ServiceStarted", 151, HeaderAlignment::Left, false},
    {"ServiceToBeFinished", 152, HeaderAlignment::Left, false},
    {"ServiceFinished", 153, HeaderAlignment::Left, false},
    {"Price", 154, HeaderAlignment::Right, true},
    {"Discount", 155, HeaderAlignment::Right, false},
    {"GST", 156, HeaderAlignment::Right, false},
    {"Paid", 157, HeaderAlignment::Right, true},
};
constexpr int kColumnCount = static_cast<int>(std::size(kColumns));

service_row::ScreenUnit screenUnit() {
    return {CeneDinarske, KursKupovni};
}

// One whole number a column, as far as the setting has them.
QList<int> columnNumbers(const settings::Setting& setting) {
    const QStringList entries = settings::text(setting).split(QLatin1Char(';'));
    QList<int> numbers;
    for (const QString& entry : entries.mid(0, kColumnCount))
        numbers.append(static_cast<int>(std::lround(LocaleSingle(entry))));
    return numbers;
}

QString headerOf(const Column& column) {
    return GetResString(column.header) + (column.money ? screenUnit().suffix() : QString());
}

void addColumns(platform::ListView& list) {
    for (const Column& column : kColumns)
        list.addColumn(QString::fromLatin1(column.key), headerOf(column), column.alignment);
}

void placeColumns(platform::ListView& list) {
    const QList<int> widths = columnNumbers(settings::LVWColumnWidths);
    for (qsizetype i = 0; i < widths.size(); ++i)
        list.setColumnWidthTwips(static_cast<int>(i) + 1, widths[i]);
    list.setColumnPositions(columnNumbers(settings::LVWColumnPositions));
}

QHash<QString, QIcon> stateIcons() {
    QHash<QString, QIcon> icons;
    for (bool finished : {true, false})
        for (bool paid : {true, false}) {
            const QString key = service_row::stateKey(finished, paid);
            icons.insert(key, platform::icon(key));
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
    for (int index = 1; index <= rows->count(); ++index)
        if (std::optional<ListItem> item = rows->read(index)) {
            Trap step;  // a row that cannot be added leaves the others standing
            step([&] { list.addItem(std::move(*item)); });
        }
}

// What the editor gave back, as numbers and dates.
struct EditedService {
    dao::Date started, toBeFinished, finished;
    float price, paid, discount, gst;

    explicit EditedService(const frmDetails& editor)
        : started(dateOf(editor.ServiceStarted())),
          toBeFinished(dateOf(editor.ServiceToBeFinished())),
          finished(dateOf(editor.ServiceFinished())),
          price(numberOf(editor.Price())),
          paid(numberOf(editor.Paid())),
          discount(numberOf(editor.Discount())),
          gst(numberOf(editor.GST())) {}

    QString state() const {
        dao::Currency rest;
        Trap step;
        step([&] {
            rest = service_row::settledRemainder(service_row::editorRemainder(price, discount, gst, paid));
        });
        return service_row::stateKey(service_row::isFinished(finished), service_row::isPaid(rest, price > 0));
    }

 private:
    static dao::Date dateOf(const QString& text) {
        return platform::readDate(text).value_or(service_row::kEmptyDate);
    }
    static float numberOf(const QString& text) { return platform::readSingle(text).value_or(0.0F); }
};

void showInRow(ListItem& row, const frmDetails& editor, const EditedService& service) {
    row.Text = editor.ServiceStarted();
    row.SmallIcon = service.state();
    row.setSubItems(1, editor.ServiceToBeFinished());
    row.setSubItems(2, editor.ServiceFinished());
    row.setSubItems(3, platform::formatGrouped(service.price));
    row.setSubItems(4, platform::textOfSingle(service.discount));
    row.setSubItems(5, platform::textOfSingle(service.gst));
    row.setSubItems(6, platform::formatGrouped(service.paid));
    row.Tag = service_row::tagOf(editor.ServiceTypes(), editor.Comments());
}

// Each field by itself: one that cannot be written must not keep the others from being kept.
void writeToRecord(dao::Recordset& record, const frmDetails& editor, const EditedService& service,
                   qint32 machineId) {
    const service_row::ScreenUnit unit = screenUnit();
    Trap step;
    const auto write = [&](const char* field, auto&& value) {
        step([&] { record.Fields(field) = value(); });
    };
    write("MachineID", [&] { return machineId; });
    write("ServiceStarted", [&] { return service.started; });
    write("ServiceToBeFinished", [&] { return service.toBeFinished; });
    write("ServiceFinished", [&] { return service.finished; });
    write("Price", [&] { return unit.toStored(service.price); });
    write("Paid", [&] { return unit.toStored(service.paid); });
    write("Discount", [&] { return service.discount; });
    write("GST", [&] { return service.gst; });
    write("Comments", [&] { return editor.Comments().toStdString(); });
    write("ServiceTypes", [&] { return editor.ServiceTypes().toStdString(); });
}

void passRowToEditor(const ListItem& row, const QString& description, frmDetails& editor) {
    editor.setServiceTypes(service_row::typesOfTag(row.Tag));
    editor.setServiceID(service_row::idOfKey(row.Key));
    editor.setServiceStarted(row.Text);
    editor.setServiceToBeFinished(row.SubItems(1));
    editor.setServiceFinished(row.SubItems(2));
    editor.setPrice(row.SubItems(3));
    editor.setPaid(row.SubItems(6));
    editor.setDiscount(row.SubItems(4));
    editor.setGST(row.SubItems(5));
    editor.setComments(description);
}

// The list shows what was entered before the database has it: the row is what the person looks at next.
void showInList(frmMain& window, const QString& key, bool edited, const EditedService& service) {
    Trap step;
    const auto show = [&](ListItem& row) { showInRow(row, *window.ServiceEditor, service); };
    if (edited) {
        step([&] { window.ListView1->changeItem(key, show); });
    } else {
        ListItem row;
        row.Key = key;
        show(row);
        step([&] { window.ListView1->addItem(std::move(row)); });
    }
    step([&] { window.ListView1->select(key); });
    if (const ListItem* item = window.ListView1->selectedItem())
        window.ShowServiceDetails(*item);
}

// A failure is not reported here: the list then shows more than the database holds, until it is filled again.
void writeAndSettle(frmMain& window, const EditedService& service) {
    platform::DataControl& services = *window.Data1[kServices];
    dao::Recordset record = services.Recordset();
    const platform::Selector& computers = *window.Combo1[1];
    writeToRecord(record, *window.ServiceEditor, service, computers.entryData(computers.currentIndex()));
    Trap step;
    step([&] { record.Update(); });
    if (step.failed()) {
        Trap letGo;  // of the write lock, which other workstations are waiting for
        letGo([&] { services.CancelUpdate(); });
    }
    step([&] { services.setBookmark(record.LastModified()); });
}

void showWhatIsLeft(frmMain& window, Trap& step) {
    if (const ListItem* next = window.ListView1->selectedItem()) {
        window.ShowServiceDetails(*next);
    } else {
        window.setFieldText(kDescriptionField, QString());
        window.setFieldText(kTypesField, QString());
        window.UpdateToolbarState();
        window.UpdateServiceButtons();
    }
    platform::DataControl& services = *window.Data1[kServices];
    bool atEnd = false;
    step([&] { services.MoveNext(); });
    step([&] { atEnd = services.Recordset().EOF() && services.Recordset().RecordCount() > 0; });
    if (atEnd)
        step([&] { services.MoveFirst(); });
}

}  // namespace

bool frmMain::InitServiceListView(QString& errorText) {
    Trap step;
    step([&] {
        beginStep(StartStep::ServiceList);
        ListView1->setSmallIcons(stateIcons());
        addColumns(*ListView1);
        placeColumns(*ListView1);
        connect(ListView1, &platform::ListView::itemActivated, this, [this] { EditService(1); });
        connect(ListView1, &platform::ListView::deletePressed, this,
                [this] { DeleteRecord(CurrentStage - 1); });
        connect(ListView1, &platform::ListView::itemClicked, this, [this] {
            if (const ListItem* item = ListView1->selectedItem())
                ShowServiceDetails(*item);
        });
    });
    if (!step.failed())
        return true;
    errorText = GetResString(167) + QLatin1Char('\n') + step.line();
    return false;
}

void frmMain::showUnit() {
    for (int column = 1; column <= kColumnCount; ++column)
        if (const Column& each = kColumns[column - 1]; each.money)
            ListView1->setColumnText(column, headerOf(each));
}

void frmMain::LoadServiceTypes() {
    dao::Recordset table;
    bool opened = false;
    Trap step;
    step([&] {
        table = Data1[kServices]->Database().OpenRecordset("ServiceTypes", dao::dbOpenTable);
        opened = true;
    });
    if (!opened)
        return;
    ServiceTypeNames = {QString()};
    for (std::int64_t i = table.RecordCount(); i > 0; --i) {
        QString name;  // a kind that cannot be read keeps its place: services name kinds by position
        step([&] { name = QString::fromStdString(table["Service"].asText()); });
        ServiceTypeNames.append(name);
        step([&] { table.MoveNext(); });
    }
    table.Close();
}

void frmMain::FillServiceList(const QString& selectKey) {
    ListView1->clearItems();
    platform::DataControl& services = *Data1[kServices];
    Trap step;
    step([&] { services.MoveLast(); });
    if (step.failed()) {
        setFieldText(kDescriptionField, QString());
        setFieldText(kTypesField, QString());
        UpdateToolbarState();
        return;
    }
    step([&] { services.MoveFirst(); });
    step([&] { fillList(*ListView1, services.Recordset()); });
    step([&] {
        if (selectKey.isEmpty())
            ListView1->select(1);
        else
            ListView1->select(selectKey);
    });
    if (const ListItem* item = ListView1->selectedItem())
        ShowServiceDetails(*item);
    UpdateToolbarState();
}

void frmMain::CloseServiceRows() {
    ListView1->clearItems();
}

void frmMain::ShowServiceDetails(const ListItem& item) {
    setFieldText(kDescriptionField, service_row::commentsOfTag(item.Tag));
    setFieldText(kTypesField, service_row::typeNames(service_row::typesOfTag(item.Tag), ServiceTypeNames));
    CurrentServiceKey = item.Key;
}

void frmMain::DeleteSelectedService() {
    const ListItem* selected = ListView1->selectedItem();
    if (!selected)
        return;
    platform::DataControl& services = *Data1[kServices];
    const QString key = selected->Key;
    bool asked = false, deleted = false;
    Trap step;
    step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
    step([&] {
        services.FindFirst(QStringLiteral("ID=%1").arg(service_row::idOfKey(key)));
        asked = true;
    });
    if (asked && services.Recordset().NoMatch()) {
        box(GetResString(171), BoxIcon::Exclamation);
        return;
    }
    // Where the file could not be asked another service stands there: it must not be the one that goes.
    if (asked)
        step([&] {
            services.Delete();
            deleted = true;
        });
    if (deleted) {
        Trap removal;
        removal([&] { ListView1->removeItem(ListView1->indexOf(key)); });
        if (removal.failed())
            box(GetResString(172), BoxIcon::Exclamation);
        showWhatIsLeft(*this, step);
    }
    if (step.failed())
        box(GetResString(173) + QStringLiteral("\n\n") + step.line(), BoxIcon::Critical);
}

void frmMain::OpenServiceRequisition() {
    const ListItem* selected = ListView1->selectedItem();
    if (selected == nullptr)
        return;
    const qint32 id = service_row::idOfKey(selected->Key);
    float total = 0;
    {
        frmInvoiceEx requisition(this);
        requisition.setParentForm(this);
        requisition.setServiceView(&view_);
        requisition.setServiceID(id);
        requisition.Display();
        total = requisition.TotalForPayment();
        requisition.Unload();
    }
    RepriceService(*this, id, total);
}

void frmMain::OpenDocumentOptions(bool invoice) {
    if (ListView1->selectedItem() == nullptr)
        return;
    frmPrintInvoiceEx document(view_, this);
    document.OpenType = invoice ? frmPrintInvoiceEx::Invoice : frmPrintInvoiceEx::ProForma;
    document.Display();
    document.Unload();
}

void frmMain::EditService(int mode) {
    frmDetails& editor = *ServiceEditor;
    platform::DataControl& services = *Data1[kServices];
    const bool edit = mode == 1;
    editor.setAllServiceTypes(ServiceTypeNames);
    qint32 id = 0;
    Trap step;
    if (edit) {
        const ListItem* selected = ListView1->selectedItem();
        if (!selected)
            return;
        id = service_row::idOfKey(selected->Key);
        passRowToEditor(*selected, fieldText(kDescriptionField), editor);
        editor.Display(frmDetails::EditMode);
        if (editor.Cancelled())
            return;
        bool asked = false;
        step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
        step([&] {
            services.FindFirst(QStringLiteral("ID=%1").arg(id));
            asked = true;
        });
        if (asked && services.Recordset().NoMatch()) {
            box(GetResString(177), BoxIcon::Exclamation);
            return;
        }
        // Without the row found, another one stands there: its record must not take these values.
        if (asked)
            step([&] { services.Recordset().Edit(); });
    } else {
        editor.setDefaultGST(static_cast<qint16>(DefaultGST));
        editor.Display(frmDetails::AddMode);
        if (editor.Cancelled())
            return;
        step([&] { services.AddNew(); });
        step([&] { id = services.Recordset()["ID"].asLong(); });
    }
    const EditedService service(editor);
    showInList(*this, service_row::keyOf(id), edit, service);
    writeAndSettle(*this, service);
    UpdateToolbarState();
    UpdateServiceButtons();
}
