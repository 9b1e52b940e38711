// The list of the requisition: running its query, filling it, sorting it.
#include <QAction>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>
#include <QStackedLayout>
#include <optional>

#include "data/session.h"
#include "documents/frmInvoiceEx.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"

namespace {

const QString kTotal = QStringLiteral("total");
constexpr int kPriceItem = 5, kQuantityItem = 6, kAmountItem = 7;  // sub-items
constexpr qint64 kProgressEvery = 30;                              // milliseconds

QString textOf(const dao::Field& field) {
    return QString::fromStdString(field.Value().textRef());
}

}  // namespace

// Looked up once: a name is compared for each of thousands of rows otherwise.
struct frmInvoiceEx::SourceFields {
    explicit SourceFields(const dao::Recordset& rows)
        : id(rows.Fields("OpremaID")),
          manufacturer(rows.Fields("Proizvodjac")),
          group(rows.Fields("Grupa")),
          name(rows.Fields("Naziv")),
          description(rows.Fields("Opis")),
          serial(rows.Fields("SN")),
          unit(rows.Fields("JM")),
          price(rows.Fields("Cena")),
          quantity(rows.Fields("Stanje")) {}
    dao::Field id, manufacturer, group, name, description, serial, unit, price, quantity;
};

void frmInvoiceEx::UpdateDATA(const QString& itemKey, bool resetSort) {
    platform::Trap step;
    connectData(step);
    const platform::ListItem* selected = ListView1->selectedItem();
    const QString rememberedKey = selected ? selected->Key : QString();
    if (resetSort) {
        sort_ = {false, QStringLiteral("Naziv"), QStringLiteral("ASC")};
        step([&] { switchColumnIcons(false); });
    }
    Data1Tag = platform::makeSortTag(sort_);
    QString query = QStringLiteral("SELECT * FROM InvoiceData WHERE ServiceID=%1").arg(serviceId_);
    if (sort_.sorted) {
        query += QStringLiteral(" ORDER BY ") + sort_.field + QLatin1Char(' ') + sort_.order;
        step([&] { switchColumnIcons(true); });
        if (const int column = ListView1->columnOf(sort_.field))
            step([&] { ListView1->setColumnIcon(column, sort_.order); });
    }
    Data1->RecordSource = query;
    step([&] { Data1->Refresh(); });
    QString errorText;
    if (!FillListView(step, errorText) && !errorText.isEmpty())
        box(QStringLiteral("Neocekivana greska prilikom popunjavanja liste trebovanih proizvoda:\n\n") +
                errorText,
            platform::BoxIcon::Exclamation);
    reselect(itemKey, rememberedKey);
    total_ = 0;
    if (ListView1->hasItem(kTotal))
        total_ = platform::readSingle(ListView1->item(kTotal).SubItems(kAmountItem)).value_or(0.0F);
    UpdateToolbar();
}

void frmInvoiceEx::connectData(platform::Trap& step) {
    step([&] { Data1->DatabaseName = databasePath(); });
    step([&] {
        const QString password = BuildDatabasePassword();
        if (!Data1->Connect.contains(password))
            Data1->Connect = ScrambleOrder(Data1->Connect, true) + QStringLiteral(";Pwd=") + password;
    });
}

void frmInvoiceEx::switchColumnIcons(bool on) {
    ListView1->setColumnImages(on ? columnIcons_ : QHash<QString, QIcon>());
}

void frmInvoiceEx::reselect(const QString& itemKey, const QString& rememberedKey) {
    if (!itemKey.isEmpty()) {
        if (ListView1->hasItem(itemKey))
            ListView1->select(itemKey);
    } else if (!rememberedKey.isEmpty()) {
        if (ListView1->hasItem(rememberedKey))
            ListView1->select(rememberedKey);
    } else if (ListView1->count() > 0) {
        ListView1->select(1);
    }
}

void frmInvoiceEx::TrebovanjeRefresh(bool resetSort) {
    UpdateDATA({}, resetSort);
    if (ListView1->isVisible())
        ListView1->setFocus();
}

// Filling
// ----------------------------------------------------------------------------------------------------------

// `step` may hold the failure of the query already: then there are no rows to be read, and that is the reason
// people are told.
bool frmInvoiceEx::FillListView(platform::Trap& step, QString& errorText) {
    step([&] { ListView1->clearItems(); });
    step([&] {
        ListView1->addItem({.Key = kTotal,
                            .Text = QStringLiteral(" "),
                            .SmallIcon = kTotal,
                            .subItems = {QString(), QString(), QString(), QString(), QStringLiteral(" "),
                                         QStringLiteral("TOTAL:"), platform::formatGrouped(0.0F)},
                            .Tag = {}});
    });
    if (!Data1->isOpen())
        SetStatusText({}, true);  // the count of an earlier filling would be believed
    else if (Data1->Recordset().EOF() && Data1->Recordset().BOF())
        SetStatusText(QStringLiteral("Nema dobavljaca u bazi podataka"), true);
    else
        fillRows(step);
    if (!step.failed())
        return true;
    errorText =
        QStringLiteral("%1 ; Code line no.: %2\nOccured in procedure FillListView of Form frmInvoiceEx")
            .arg(step.line())
            .arg(step.codeLine());
    return false;
}

void frmInvoiceEx::fillRows(platform::Trap& step) {
    dao::Recordset& rows = Data1->Recordset();
    qint64 count = 0;
    step([&] { rows.MoveLast(); });
    step([&] { rows.MoveFirst(); });
    step([&] { count = rows.RecordCount(); });
    ProgressBar1->setRange(0, static_cast<int>(count));
    float total = 0;
    {
        const platform::WaitPointer wait;
        setFilling(true);
        const auto end = qScopeGuard([this] { setFilling(false); });
        step([&] {
            const SourceFields fields(rows);
            QElapsedTimer sinceShown;
            sinceShown.start();
            for (int done = 1; !rows.EOF(); ++done) {
                step([&] { total += addRow(fields, step); });
                if (sinceShown.elapsed() >= kProgressEvery) {
                    ProgressBar1->setValue(done);
                    sinceShown.restart();
                }
                rows.MoveNext();  // where that fails there is no way to the rows behind
            }
        });
    }
    SetStatusText(QStringLiteral("%1 proizvod(a) trebovano.").arg(count), true);
    step([&] {
        const QString sum = platform::formatGrouped(total);
        ListView1->changeItem(kTotal, [&](platform::ListItem& row) { row.setSubItems(kAmountItem, sum); });
    });
}

// What the row adds to the total: the customer adds up the amounts that he sees. Throws for a row that
// somebody has deleted meanwhile; nothing of it is shown then.
float frmInvoiceEx::addRow(const SourceFields& fields, platform::Trap& step) {
    platform::ListItem row{.Key = QLatin1Char('K') + QString::fromStdString(fields.id.Value().asText()),
                           .Text = textOf(fields.manufacturer),
                           .SmallIcon = QStringLiteral("stavka"),
                           .subItems = {textOf(fields.group), textOf(fields.name), textOf(fields.description),
                                        textOf(fields.serial), QString(), QString(), QString()},
                           .Tag = textOf(fields.unit)};
    addAmounts(row, fields, step);
    const float amount = platform::readSingle(row.SubItems(kAmountItem)).value_or(0.0F);
    step([&] { ListView1->addItem(std::move(row)); });
    return amount;
}

// Each by itself: what was drawn without a price still shows how much was drawn, and goes back to stock with
// it. No figure ever stands in for one that is missing.
void frmInvoiceEx::addAmounts(platform::ListItem& row, const SourceFields& fields, platform::Trap& step) {
    std::optional<float> price, quantity;
    step([&] {
        const float euro = fields.price.Value().asSingle();
        price = CeneDinarske ? euro * KursKupovni : euro;
    });
    if (price)
        step([&] { row.setSubItems(kPriceItem, platform::formatGrouped(*price)); });
    step([&] { quantity = fields.quantity.Value().asSingle(); });
    if (quantity)
        step([&] { row.setSubItems(kQuantityItem, platform::textOfSingle(*quantity)); });
    if (price && quantity)
        step([&] { row.setSubItems(kAmountItem, platform::formatGrouped(*quantity * *price)); });
}

// Out of sight while it is filled: thousands of rows would be drawn one by one.
void frmInvoiceEx::setFilling(bool on) {
    if (on) {
        hadFocus_ = ListView1->hasFocus();
        ShowProgress(true);
        stack_->setCurrentWidget(filling_);
        filling_->repaint();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        return;
    }
    stack_->setCurrentWidget(ListView1);
    ShowProgress(false);
    if (hadFocus_)
        ListView1->setFocus();
}

void frmInvoiceEx::ShowProgress(bool on) {
    if (on) {
        StatusBar1->coverPanel(StatusBar1->firstPanelKey(), ProgressBar1);
        ProgressBar1->setValue(0);
    } else {
        StatusBar1->uncover(ProgressBar1, this);
    }
}

// Toolbar, clicks
// ------------------------------------------------------------------------------------------------------

bool frmInvoiceEx::hasProducts() const {
    return ListView1->count() > 1 || (ListView1->count() == 1 && !ListView1->hasItem(kTotal));
}

void frmInvoiceEx::UpdateToolbar() {
    const bool some = hasProducts();
    toolbarButton(QStringLiteral("delete"))->setEnabled(some && ListView1->selectedIndex() > 0);
    toolbarButton(QStringLiteral("delall"))->setEnabled(some);
    toolbarButton(QStringLiteral("print"))->setEnabled(some);
    toolbarButton(QStringLiteral("unsort"))->setEnabled(some && sort_.sorted);
}

void frmInvoiceEx::itemClick(const QString& key) {
    toolbarButton(QStringLiteral("delete"))->setEnabled(key != kTotal);
}

void frmInvoiceEx::columnClick(int column) {
    if (!hasProducts())
        return;
    if (ListView1->columnText(column) == QLatin1String("Medjutotal")) {
        box(QStringLiteral("Ne mozete sortirati po medjutotalu."), platform::BoxIcon::Information);
        return;
    }
    switchColumnIcons(true);
    const QString key = ListView1->columnKey(column);
    if (key != sort_.field) {
        const int old = ListView1->columnOf(sort_.field);
        if (sort_.sorted && old > 0)
            ListView1->setColumnIcon(old, QStringLiteral("dummy"));
        sort_.field = key;
        sort_.order = QStringLiteral("ASC");
    } else {
        sort_.order = sort_.order == QLatin1String("ASC") ? QStringLiteral("DESC") : QStringLiteral("ASC");
    }
    ListView1->setColumnIcon(column, sort_.order);
    sort_.sorted = true;
    UpdateDATA({}, false);
}
