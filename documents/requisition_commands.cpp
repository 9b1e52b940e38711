#include "documents/requisition_commands.h"

#include <QDialog>

#include "documents/product_return.h"
#include "documents/requisition_catalogue.h"
#include "documents/requisition_list.h"
#include "documents/requisition_print.h"

namespace {

using Command = RequisitionCommand;
using State = RequisitionState;
using Work = RequisitionWork;

bool hasProducts(const State& state) {
    return state.hasProducts;
}
bool hasSelection(const State& state) {
    return state.hasProducts && state.hasSelection;
}
bool isSorted(const State& state) {
    return state.hasProducts && state.isSorted;
}

constexpr RequisitionCommandRow kRows[] = {
    {Command::Catalogue, false, "konfig", "Konfigurator", "Catalogue",
     "Otvara prozor Konfiguratora (pregled i trebovanje opreme) - F12.", Qt::NoModifier | Qt::Key_F12,
     nullptr, [](const Work& work) { work.catalogue.open(); }},
    {Command::Delete, true, "delete", "Izbrisi", "Delete", "Brise trenutno izabranu stavku u listi - Del.",
     Qt::NoModifier | Qt::Key_Delete, hasSelection, [](const Work& work) { work.giveBack.selected(); }},
    {Command::DeleteAll, false, "delall", "Izbrisi Sve", "DeleteAll", "Brise sve stavke iz liste - Shift+Del",
     Qt::ShiftModifier | Qt::Key_Delete, hasProducts, [](const Work& work) { work.giveBack.all(); }},
    {Command::Refresh, true, "refresh", "Azuriraj", "Refresh",
     "Popunjava listu najsvezijim podacima iza baze podataka - F5.", Qt::NoModifier | Qt::Key_F5, nullptr,
     [](const Work& work) { work.list.refresh(false); }},
    {Command::Print, true, "print", "Stampaj", "Print", "Stampa profakturu/fakturu - Ctrl+P.",
     Qt::ControlModifier | Qt::Key_P, hasProducts, [](const Work& work) { work.print.execute(); }},
    {Command::Unsort, true, "unsort", "Ponisti Sortiranje", "Unsort",
     "Ponistava sortiranje liste (ukoliko ga je bilo) - F8.", Qt::NoModifier | Qt::Key_F8, isSorted,
     [](const Work& work) { work.list.refresh(true); }},
    // The button is there, and says nothing.
    {Command::Help, true, "help", "Pomoc", "Help", "Prikazuje pomoc vezanu za koriscenje ove forme - F1.",
     std::nullopt, nullptr, [](const Work&) {}},
    {Command::Close, false, "", "", "", "", Qt::NoModifier | Qt::Key_Escape, nullptr,
     [](const Work& work) { work.window.reject(); }},
};

}  // namespace

std::span<const RequisitionCommandRow> requisitionCommands() {
    return kRows;
}
