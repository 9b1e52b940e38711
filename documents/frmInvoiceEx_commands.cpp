// What the window can be told to do: giving products back to stock, and the printed list.
#include <algorithm>

#include "catalogue/stock_draw.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "documents/frmInvoiceEx.h"
#include "documents/frmTrebovanjeError.h"
#include "documents/requisition_list.h"
#include "documents/requisition_return.h"
#include "platform/system/files.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

constexpr qint32 kNotFound = 1;  // whichever table lacks it

QString occuredIn(const char* procedure) {
    return QStringLiteral("\nOccured in procedure %1 of Form frmInvoiceEx").arg(QLatin1String(procedure));
}

}  // namespace

using requisition::Returned;

std::span<const RequisitionCommandRow> frmInvoiceEx::commands() {
    using Command = RequisitionCommand;
    using State = RequisitionState;
    static constexpr auto kAnyProduct = [](const State& state) { return state.hasProducts; };
    static constexpr RequisitionCommandRow kRows[] = {
        {Command::Catalogue, false, "konfig", "Konfigurator", "Catalogue",
         "Otvara prozor Konfiguratora (pregled i trebovanje opreme) - F12.", Qt::NoModifier | Qt::Key_F12,
         nullptr, &frmInvoiceEx::openCatalogue},
        {Command::Delete, true, "delete", "Izbrisi", "Delete",
         "Brise trenutno izabranu stavku u listi - Del.", Qt::NoModifier | Qt::Key_Delete,
         [](const State& state) { return state.hasProducts && state.hasSelection; },
         &frmInvoiceEx::TrebovanjeDelete},
        {Command::DeleteAll, false, "delall", "Izbrisi Sve", "DeleteAll",
         "Brise sve stavke iz liste - Shift+Del", Qt::ShiftModifier | Qt::Key_Delete, kAnyProduct,
         &frmInvoiceEx::TrebovanjeDeleteAll},
        {Command::Refresh, true, "refresh", "Azuriraj", "Refresh",
         "Popunjava listu najsvezijim podacima iza baze podataka - F5.", Qt::NoModifier | Qt::Key_F5, nullptr,
         &frmInvoiceEx::refresh},
        {Command::Print, true, "print", "Stampaj", "Print", "Stampa profakturu/fakturu - Ctrl+P.",
         Qt::ControlModifier | Qt::Key_P, kAnyProduct, &frmInvoiceEx::print},
        {Command::Unsort, true, "unsort", "Ponisti Sortiranje", "Unsort",
         "Ponistava sortiranje liste (ukoliko ga je bilo) - F8.", Qt::NoModifier | Qt::Key_F8,
         [](const State& state) { return state.hasProducts && state.isSorted; }, &frmInvoiceEx::unsort},
        {Command::Help, true, "help", "Pomoc", "Help", "Prikazuje pomoc vezanu za koriscenje ove forme - F1.",
         std::nullopt, nullptr, &frmInvoiceEx::help},
        {Command::Close, false, "", "", "", "", Qt::NoModifier | Qt::Key_Escape, nullptr,
         &frmInvoiceEx::reject},
    };
    return kRows;
}

bool frmInvoiceEx::mayDelete(const QString& question) {
    return !AskBeforeDelete ||
           box(question + QStringLiteral("\n\nNastavljate?"), platform::BoxIcon::Exclamation,
               platform::BoxButtons::YesNo) != platform::BoxAnswer::No;
}

void frmInvoiceEx::tellFailure(const platform::Trap& step, const char* procedure) {
    if (step.failed()) {
        box(step.line() + occuredIn(procedure), platform::BoxIcon::Exclamation);
    }
}

void frmInvoiceEx::TrebovanjeDelete() {
    const platform::ListItem* selected = ListView1->selectedItem();
    if (!selected || !list_->hasProducts() || RequisitionCells(*selected).isTotal()) {
        return;
    }
    const QString id = RequisitionCells(*selected).productId();
    const float quantity = numberOf(RequisitionCells(*selected).quantity());
    if (!mayDelete(
            QStringLiteral("Spremate se da izbrisete trebovanu stavku iz liste trebovanja. Njenim "
                           "brisanjem povecacete stanje ovog proizvoda za trebovanu kolicinu, ukoliko on "
                           "prethodno nije bio izbrisan."))) {
        return;
    }
    platform::Trap step;
    bool found = false;
    const bool deleted = requisition::takeOff(*Data1, id, found, step);
    if (!found) {
        box(QStringLiteral(
                "Stavka nije nadjena u tabeli trebovanja. Mozda ju je neko u medjuvremenu izbrisao."),
            platform::BoxIcon::Exclamation);
    }
    TrebovanjeRefresh(false);
    bool hasProduct = true;
    if (deleted) {
        dao::Recordset stock;
        step([&] { stock = Data1->Database().OpenRecordset("Oprema", dao::dbOpenDynaset); });
        if (stock) {
            step([&] { hasProduct = stock_draw::giveBack(stock, id.toInt(), quantity); });
        }
        stock.Close();
    }
    if (!hasProduct) {
        box(QStringLiteral(
                "Proizvod koji ste izbrisali iz liste trebovanja vise ne postoji u listi proizvoda. "
                "Verovatno je izbrisan. Azuriranje nije bilo moguce."),
            platform::BoxIcon::Information);
    }
    tellFailure(step, "TrebovanjeDelete");
}

void frmInvoiceEx::TrebovanjeDeleteAll() {
    if (!list_->hasProducts()) {
        return;
    }
    if (!mayDelete(
            QStringLiteral("Spremate se da izbrisete sve trebovane stavke iz liste trebovanja. Njihovim "
                           "brisanjem povecacete stanje ovih proizvoda za trebovanu kolicinu, ukoliko oni "
                           "prethodno nisu bili izbrisani."))) {
        return;
    }
    frmTrebovanjeError problems(this);
    int problemCount = 0;
    platform::Trap step;
    dao::Recordset stock;
    step([&] { stock = Data1->Database().OpenRecordset("Oprema", dao::dbOpenDynaset); });
    // Without the products' table nothing is taken off the requisition.
    for (int i = 1; stock && i <= ListView1->count(); ++i) {
        const platform::ListItem& item = ListView1->item(i);
        const RequisitionCells row(item);
        if (row.isTotal()) {
            continue;
        }
        const Returned result = requisition::giveBack(*Data1, row, stock, step);
        if (result != Returned::NotDrawn && result != Returned::NoProduct) {
            continue;
        }
        ++problemCount;
        problems.AddListItem(item.Key, row.manufacturer(), row.group(), row.name(), row.description(),
                             numberOf(row.price()), numberOf(row.quantity()), kNotFound);
    }
    TrebovanjeRefresh(false);
    if (problemCount > 0) {
        problems.Display();
    }
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
        QStringLiteral("Usluga od ") + fromMain([](const ServiceView& v) { return v.serviceStarted(); }) +
        QStringLiteral(" ~ ") + fromMain([](const ServiceView& v) { return v.serviceDescription(); });
    const QString total = RequisitionCells(ListView1->item(requisition::kTotal)).amount();

    QString text = title + QLatin1Char('\n') + service + QLatin1Char('\n') +
                   QString(std::max(title.size(), service.size()), QLatin1Char('*')) +
                   QStringLiteral("\n\n\n");
    // An amount as long as the total takes the padding of the line above it. The shop's list has always
    // looked so, and the papers in its files are compared with it.
    qsizetype padding = title.size();
    for (int i = 1; i <= ListView1->count(); ++i) {
        const RequisitionCells row(ListView1->item(i));
        if (row.isTotal()) {
            continue;
        }
        const QString amount = row.amount();
        if (total.size() > amount.size()) {
            padding = total.size() - amount.size();
        }
        text += row.manufacturer() + QStringLiteral(", ") + row.group() + QLatin1Char('\n');
        text += QLatin1Char('\t') + row.name() + QStringLiteral("\t\t") + row.quantity() + QLatin1Char('x') +
                QLatin1Char('\t') + row.price() + QLatin1Char('\t') + QString(padding, QLatin1Char(' ')) +
                amount + QStringLiteral("\n\n");
    }
    return text + QStringLiteral("Ukupno: ") + total + QLatin1Char('\n');
}

bool frmInvoiceEx::TrebovanjePrint(QString& errorText) {
    errorText.clear();
    if (!list_->hasProducts()) {
        box(QStringLiteral("Nema podataka koji bi mogli da se stampaju."), platform::BoxIcon::Information);
        return true;
    }
    const QString file = platform::programFolder() + QStringLiteral("/PriceList.txt");
    platform::Trap step;
    step([&] { platform::writeTextFile(file, printedList()); });
    if (!step.failed()) {
        step([&] { LaunchAssociated(this, file); });  // never the list of another service
    }
    if (!step.failed()) {
        return true;
    }
    errorText = step.line() + occuredIn("TrebovanjePrint");
    return false;
}

void frmInvoiceEx::print() {
    QString errorText;
    if (!TrebovanjePrint(errorText) && !errorText.isEmpty()) {
        box(errorText, platform::BoxIcon::Exclamation);
    }
}
