// Giving products back to stock, and the printed list.
#include <algorithm>

#include "catalogue/stock_draw.h"
#include "documents/frmInvoiceEx.h"
#include "documents/frmTrebovanjeError.h"
#include "platform/system/files.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"

namespace {

const QString kTotal = QStringLiteral("total");
constexpr int kGroup = 1, kName = 2, kDescription = 3, kPrice = 5, kQuantity = 6, kAmount = 7;  // sub-items
constexpr qint32 kNotFound = 1;  // whichever table lacks it

QString idOf(const platform::ListItem& row) {
    return row.Key.mid(1);
}

float singleOf(const QString& text) {
    return platform::readSingle(text).value_or(0.0F);
}

bool findRow(dao::Recordset& rows, const QString& id) {
    rows.FindFirst("OpremaID=" + id.toStdString());
    return !rows.NoMatch();
}

QString occuredIn(const char* procedure) {
    return QStringLiteral("\nOccured in procedure %1 of Form frmInvoiceEx").arg(QLatin1String(procedure));
}

}  // namespace

bool frmInvoiceEx::mayDelete(const QString& question) {
    return !AskBeforeDelete ||
           box(question + QStringLiteral("\n\nNastavljate?"), platform::BoxIcon::Exclamation,
               platform::BoxButtons::YesNo) != platform::BoxAnswer::No;
}

void frmInvoiceEx::tellFailure(const platform::Trap& step, const char* procedure) {
    if (step.failed())
        box(step.line() + occuredIn(procedure), platform::BoxIcon::Exclamation);
}

// True where the row is gone by our doing. Only then may its quantity go back to stock: a row that stays
// would be given back twice.
bool frmInvoiceEx::deleteRow(const QString& id, bool& found, platform::Trap& step) {
    found = true;
    bool isOnRow = false, deleted = false;
    step([&] { isOnRow = found = findRow(Data1->Recordset(), id); });
    if (!isOnRow)
        return false;
    step([&] {
        Data1->Delete();
        deleted = true;
    });
    step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
    return deleted;
}

void frmInvoiceEx::TrebovanjeDelete() {
    const platform::ListItem* selected = ListView1->selectedItem();
    if (!selected || !hasProducts() || selected->Key == kTotal)
        return;
    const QString id = idOf(*selected);
    const float quantity = singleOf(selected->SubItems(kQuantity));
    if (!mayDelete(
            QStringLiteral("Spremate se da izbrisete trebovanu stavku iz liste trebovanja. Njenim "
                           "brisanjem povecacete stanje ovog proizvoda za trebovanu kolicinu, ukoliko on "
                           "prethodno nije bio izbrisan.")))
        return;
    platform::Trap step;
    bool found = false;
    const bool deleted = deleteRow(id, found, step);
    if (!found)
        box(QStringLiteral(
                "Stavka nije nadjena u tabeli trebovanja. Mozda ju je neko u medjuvremenu izbrisao."),
            platform::BoxIcon::Exclamation);
    TrebovanjeRefresh(false);
    bool hasProduct = true;
    if (deleted) {
        dao::Recordset stock;
        step([&] { stock = Data1->Database().OpenRecordset("Oprema", dao::dbOpenDynaset); });
        if (stock)
            step([&] { hasProduct = stock_draw::giveBack(stock, id.toInt(), quantity); });
        stock.Close();
    }
    if (!hasProduct)
        box(QStringLiteral(
                "Proizvod koji ste izbrisali iz liste trebovanja vise ne postoji u listi proizvoda. "
                "Verovatno je izbrisan. Azuriranje nije bilo moguce."),
            platform::BoxIcon::Information);
    tellFailure(step, "TrebovanjeDelete");
}

frmInvoiceEx::Returned frmInvoiceEx::returnRow(const platform::ListItem& row, dao::Recordset& stock,
                                               platform::Trap& step) {
    bool found = false;
    if (!deleteRow(idOf(row), found, step))
        return found ? Returned::Failed : Returned::NotDrawn;
    Returned result = Returned::Failed;
    step([&] {
        result = stock_draw::giveBack(stock, idOf(row).toInt(), singleOf(row.SubItems(kQuantity)))
                     ? Returned::Done
                     : Returned::NoProduct;
    });
    return result;
}

void frmInvoiceEx::TrebovanjeDeleteAll() {
    if (!hasProducts())
        return;
    if (!mayDelete(
            QStringLiteral("Spremate se da izbrisete sve trebovane stavke iz liste trebovanja. Njihovim "
                           "brisanjem povecacete stanje ovih proizvoda za trebovanu kolicinu, ukoliko oni "
                           "prethodno nisu bili izbrisani.")))
        return;
    frmTrebovanjeError problems(this);
    int problemCount = 0;
    platform::Trap step;
    dao::Recordset stock;
    step([&] { stock = Data1->Database().OpenRecordset("Oprema", dao::dbOpenDynaset); });
    // Without the products' table nothing is taken off the requisition.
    for (int i = 1; stock && i <= ListView1->count(); ++i) {
        const platform::ListItem& row = ListView1->item(i);
        if (row.Key == kTotal)
            continue;
        const Returned result = returnRow(row, stock, step);
        if (result != Returned::NotDrawn && result != Returned::NoProduct)
            continue;
        ++problemCount;
        problems.AddListItem(row.Key, row.Text, row.SubItems(kGroup), row.SubItems(kName),
                             row.SubItems(kDescription), singleOf(row.SubItems(kPrice)),
                             singleOf(row.SubItems(kQuantity)), kNotFound);
    }
    TrebovanjeRefresh(false);
    if (problemCount > 0)
        problems.Display();
    stock.Close();
    problems.Unload();
    tellFailure(step, "TrebovanjeDeleteAll");
}

// The printed list
// -------------------------------------------------------------------------------------------------

QString frmInvoiceEx::printedList() const {
    const auto fromMain = [this](auto read) { return view_ ? read(*view_) : QString(); };
    const QString title = fromMain([](const ServiceView& v) { return v.tabCaption(1); }) + QLatin1Char('/') +
                          fromMain([](const ServiceView& v) { return v.tabCaption(2); }) +
                          QStringLiteral(" - CENOVNA LISTA");
    const QString service =
        QStringLiteral("Usluga od ") + fromMain([](const ServiceView& v) { return v.serviceColumn(1); }) +
        QStringLiteral(" ~ ") + fromMain([](const ServiceView& v) { return v.serviceDescription(); });
    const QString total = ListView1->item(kTotal).SubItems(kAmount);

    QString text = title + QLatin1Char('\n') + service + QLatin1Char('\n') +
                   QString(std::max(title.size(), service.size()), QLatin1Char('*')) +
                   QStringLiteral("\n\n\n");
    // An amount as long as the total takes the padding of the line above it. The shop's list has always
    // looked so, and the papers in its files are compared with it.
    qsizetype padding = title.size();
    for (int i = 1; i <= ListView1->count(); ++i) {
        const platform::ListItem& row = ListView1->item(i);
        if (row.Key == kTotal)
            continue;
        const QString amount = row.SubItems(kAmount);
        if (total.size() > amount.size())
            padding = total.size() - amount.size();
        text += row.Text + QStringLiteral(", ") + row.SubItems(kGroup) + QLatin1Char('\n');
        text += QLatin1Char('\t') + row.SubItems(kName) + QStringLiteral("\t\t") + row.SubItems(kQuantity) +
                QLatin1Char('x') + QLatin1Char('\t') + row.SubItems(kPrice) + QLatin1Char('\t') +
                QString(padding, QLatin1Char(' ')) + amount + QStringLiteral("\n\n");
    }
    return text + QStringLiteral("Ukupno: ") + total + QLatin1Char('\n');
}

bool frmInvoiceEx::TrebovanjePrint(QString& errorText) {
    errorText.clear();
    if (!hasProducts()) {
        box(QStringLiteral("Nema podataka koji bi mogli da se stampaju."), platform::BoxIcon::Information);
        return true;
    }
    const QString file = platform::programFolder() + QStringLiteral("/PriceList.txt");
    platform::Trap step;
    step([&] { platform::writeTextFile(file, printedList()); });
    if (!step.failed())
        step([&] { LaunchAssociated(this, file); });  // never the list of another service
    if (!step.failed())
        return true;
    errorText = step.line() + occuredIn("TrebovanjePrint");
    return false;
}

void frmInvoiceEx::print() {
    QString errorText;
    if (!TrebovanjePrint(errorText) && !errorText.isEmpty())
        box(errorText, platform::BoxIcon::Exclamation);
}
