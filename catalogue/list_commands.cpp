#include "catalogue/list_commands.h"

#include "catalogue/failure_texts.h"
#include "catalogue/list_facts.h"
#include "catalogue/list_pane.h"
#include "catalogue/requisition_copies.h"
#include "catalogue/row_search.h"
#include "catalogue/type_ahead.h"
#include "catalogue/whole_statement.h"
#include "common/catalogue_rules.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/dao/dao.h"
#include "platform/system/trap.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

// One routine serves both tables; this is where they differ.
struct ListCommands::Texts {
    const char* title;
    const char* newPrompt;
    const char* renamePrompt;
    const char* addError;
    const char* addMore;
    const char* changeError;
    const char* renameGone;
    const char* deleteQuestion;
    const char* deleteGone;
    const char* deleteAllQuestion;
    const char* deleteAllError;
};

namespace {

QString latin(const char* text) {
    return QString::fromLatin1(text);
}

// Empty where nothing was typed, or it was cancelled.
QString askName(const char* prompt, const char* title, const QString& initial, QWidget* owner) {
    QString question = latin(prompt);
    if (MakeProperCase) {
        question += QStringLiteral("\nKorekcija unosa teksta je ukljucena (a->A).");
    }
    return platform::inputBox(question, latin(title), initial, owner).value_or(QString()).trimmed();
}

}  // namespace

const ListCommands::Texts& ListCommands::textsOf(int pane) {
    static constexpr Texts kTexts[] = {
        {"Grupe proizvoda", "Upisite naziv nove grupe proizvoda:", "Promenite naziv grupe proizvoda:",
         "Neocekivana greska prilikom dodavanja nove grupe u bazu podataka",
         "Nastavljate sa dodavanjem grupa proizvoda u bazu podataka?",
         "Neocekivana greska prilikom promene naziva grupe u bazi podataka",
         "Grupa proizvoda ciji naziv pokusavate da promenite nije pronadjena u bazi podataka. Moguce je da "
         "je neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
         "Upravo se spremate da izbrisete grupu proizvoda iz baze podataka.\nBrisanjem grupe proizvoda "
         "brisete i sve proizvode koji toj grupi pripadaju. Ponistenje brisanja nije moguce.\n\nNastavljate "
         "li sa brisanjem?",
         "Grupa proizvoda koju pokusavate da izbrisete nije pronadjena u bazi podataka. Moguce je da je neko "
         "od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
         "Upravo se spremate da izbrisete sve grupe proizvoda iz baze podataka.\nBrisanjem grupa proizvoda "
         "brisete i sve proizvode. Ponistenje brisanja nije moguce.\n\nNastavljate li sa brisanjem?",
         "Neocekivana greska prilikom brisanja grupa proizvoda iz baze podataka"},
        {"Proizvodjaci", "Upisite naziv novog proizvodjaca:", "Promenite naziv proizvodjaca:",
         "Neocekivana greska prilikom dodavanja novog proizvodjaca u bazu podataka",
         "Nastavljate sa dodavanjem proizvodjaca u bazu podataka?",
         "Neocekivana greska prilikom promene naziva proizvodjaca u bazi podataka",
         "Proizvodjac ciji naziv pokusavate da promenite nije pronadjen u bazi podataka. Moguce je da ga je "
         "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
         "Upravo se spremate da izbrisete proizvodjaca iz baze podataka.\nBrisanjem proizvodjaca brisete i "
         "sve proizvode koji tom proizvodjacu pripadaju. Ponistenje brisanja nije moguce.\n\nNastavljate li "
         "sa brisanjem?",
         "Proizvodjac koga pokusavate da izbrisete nije pronadjen u bazi podataka. Moguce je da ga je neko "
         "od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
         "Upravo se spremate da izbrisete sve proizvodjace iz baze podataka.\nBrisanjem proizvodjaca brisete "
         "i sve proizvode. Ponistenje brisanja nije moguce.\n\nNastavljate li sa brisanjem?",
         "Neocekivana greska prilikom brisanja proizvodjaca iz baze podataka"},
    };
    return kTexts[pane];
}

ListCommands::ListCommands(ListPane& pane, RequisitionCopies& copies, QWidget* window)
    : pane_(pane), texts_(textsOf(pane.facts().index)), copies_(copies), window_(window) {}

void ListCommands::sort(SortMode mode) {
    pane_.order().sortBy(mode, false);
}

// Adding ----------------------------------------------------------------------------------------------------

void ListCommands::add() {
    Trap step;
    QString last;
    do {
        last = addOne(step);
        if (last.isEmpty()) {
            return;
        }
    } while (box(window_, latin(texts_.addMore), BoxIcon::Question, BoxButtons::YesNo) == BoxAnswer::Yes);
    platform::ListBox& list = pane_.rows();
    pane_.setCount(list.count());
    if (readSortTag(pane_.sortTag, window_).sorted) {
        pane_.update(last, false);
    } else {
        list.setCurSel(list.count() - 1);
    }
    pane_.takeFocus();
    pane_.click();
    emit pane_.changed();
    if (step.failed()) {
        box(window_, latin(texts_.addError) + QLatin1Char(':') + failureTail(step, "AddNewGrpMft"),
            BoxIcon::Exclamation);
        step.clear();
    }
}

// The name that has been added; empty: adding ends here, and the list stays as it is.
QString ListCommands::addOne(Trap& step) {
    platform::DataControl& source = pane_.data();
    QString name = askName(texts_.newPrompt, texts_.title, QString(), window_);
    if (name.isEmpty()) {
        return {};
    }
    if (row_search::hasName(source.Recordset(), latin(pane_.facts().field), name)) {
        box(window_, QStringLiteral("Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom."),
            BoxIcon::Exclamation);
        return {};
    }
    name = NameAsKept(name);
    step([&] {
        source.AddNew();
        source.Recordset().Fields(pane_.facts().field) = name.toStdString();
    });
    // A row without its name is worth nothing to anybody.
    if (!step.failed()) {
        step([&] { source.Recordset().Update(); });
    }
    if (!step.failed()) {
        step([&] { source.setBookmark(source.Recordset().LastModified()); });
    }
    step(refreshCache);
    if (step.failed()) {
        box(window_,
            latin(texts_.addError) + QStringLiteral(" (ADDNEW deo):") + failureTail(step, "DoGroupAddNew"),
            BoxIcon::Exclamation);
        step.clear();
        giveUp();
        return {};
    }
    qint32 number = -1;
    step([&] { number = source.Recordset()["ID"].asLong(); });
    pane_.rows().addString(name, number);
    return name;
}

void ListCommands::giveUp() {
    Trap step;  // there may be nothing to give up
    step([&] { pane_.data().CancelUpdate(); });
}

// Renaming --------------------------------------------------------------------------------------------------

void ListCommands::edit() {
    if (!pane_.hasSelection()) {
        return;
    }
    const QString oldName = pane_.rows().selectedText();
    QString name = askName(texts_.renamePrompt, texts_.title, oldName, window_);
    if (name.isEmpty()) {
        return;
    }
    name = NameAsKept(name);
    Trap step;
    if (isGone(texts_.renameGone, step) || !rename(name, step)) {
        return;
    }
    showRenamed(name);
    carryName(name, oldName, step);
    if (step.failed()) {
        box(window_, latin(texts_.changeError) + QLatin1Char(':') + failureTail(step, "EditGrpMft"),
            BoxIcon::Exclamation);
        step.clear();
    }
}

// Makes the selected row the current one, or leaves standing in `step` why nobody could look for it. True:
// somebody has deleted it meanwhile, and the person has been told.
bool ListCommands::isGone(const char* goneText, Trap& step) {
    const QString wanted = QStringLiteral("ID=%1").arg(pane_.rows().selectedData());
    const bool nothing =
        row_search::find(pane_.data().Recordset(), wanted, step) == row_search::Outcome::Nothing;
    if (nothing) {
        box(window_, latin(goneText), BoxIcon::Exclamation);
    }
    return nothing;
}

void ListCommands::tellFailed(const char* part, const char* procedure, Trap& step) {
    box(window_, latin(texts_.changeError) + QLatin1String(part) + failureTail(step, procedure),
        BoxIcon::Exclamation);
    step.clear();
}

bool ListCommands::rename(const QString& name, Trap& step) {
    platform::DataControl& source = pane_.data();
    if (!step.failed()) {
        step([&] {
            source.Recordset().Edit();
            source.Recordset().Fields(pane_.facts().field) = name.toStdString();
            source.Recordset().Update();
        });
    }
    if (!step.failed()) {
        step([&] { source.setBookmark(source.Recordset().LastModified()); });
    }
    step(refreshCache);
    if (!step.failed()) {
        return true;
    }
    tellFailed(" (EDIT deo):", "EditGrpMft", step);
    giveUp();
    return false;
}

void ListCommands::showRenamed(const QString& name) {
    platform::ListBox& list = pane_.rows();
    if (readSortTag(pane_.sortTag, window_).sorted) {
        pane_.update(name, false);
    } else {
        list.setText(list.curSel(), name);
    }
    if (pane_.facts().isShownWithProducts) {
        emit pane_.productsWanted();
    }
    pane_.search().setText(name);
    pane_.takeFocus();
}

// Requisitions keep the name as a copy; they are found by the old one.
void ListCommands::carryName(const QString& name, const QString& oldName, Trap& step) {
    const QString field = latin(pane_.facts().field);
    const QString statement = QStringLiteral("UPDATE InvoiceData SET ") + field + QStringLiteral("='") +
                              name + QStringLiteral("' WHERE ") + field + QStringLiteral("='") + oldName +
                              QLatin1Char('\'');
    const auto tellFailure = [&] {
        box(window_,
            latin(texts_.changeError) + QStringLiteral(" u tabeli trebovanih stavki. Greska je data kao:") +
                failureTail(step, "EditGrpMft"),
            BoxIcon::Exclamation);
    };
    copies_.change(pane_.data().Database(), statement, step, tellFailure);
}

// Deleting --------------------------------------------------------------------------------------------------

void ListCommands::remove() {
    if (!pane_.hasSelection()) {
        return;
    }
    if (AskBeforeDelete && box(window_, latin(texts_.deleteQuestion), BoxIcon::Exclamation,
                               BoxButtons::YesNo) != BoxAnswer::Yes) {
        return;
    }
    Trap step;
    if (isGone(texts_.deleteGone, step)) {
        return;
    }
    if (!step.failed()) {
        step([&] { pane_.data().Delete(); });
    }
    if (step.failed()) {
        tellFailed(" (DELETE deo):", "DeleteGrpMft", step);
    } else {
        takeFromList();
    }
}

void ListCommands::takeFromList() {
    platform::ListBox& list = pane_.rows();
    platform::DataControl& source = pane_.data();
    const int row = list.curSel();
    list.deleteString(row);
    if (list.count() == 0) {
        list.setCurSel(-1);
    } else {
        Trap step;  // the next command looks for its row anyway
        step([&] { source.MoveFirst(); });
        if (!list.setCurSel(row)) {
            list.setCurSel(0);
        }
    }
    pane_.setCount(list.count());
    pane_.forget();  // the row that is chosen now is another one, whatever its name
    pane_.click();
    // The click leaves the products alone while those of all manufacturers are shown, and yet some have gone.
    if (!pane_.restricts()) {
        emit pane_.productsWanted();
    }
    pane_.showCount();
    emit pane_.changed();
}

void ListCommands::removeAll() {
    if (!pane_.hasRows()) {
        return;
    }
    if (AskBeforeDelete && box(window_, latin(texts_.deleteAllQuestion), BoxIcon::Exclamation,
                               BoxButtons::YesNo) != BoxAnswer::Yes) {
        return;
    }
    Trap step;
    const auto tellFailure = [&] {
        box(window_,
            latin(texts_.deleteAllError) + QStringLiteral(" (DELETE ALL deo):") +
                failureTail(step, "DeleteAllGrpMft"),
            BoxIcon::Exclamation);
    };
    if (executeWhole(pane_.data().Database(), QStringLiteral("DELETE * FROM ") + latin(pane_.facts().table),
                     step, tellFailure) < 0) {
        return;
    }
    step(refreshCache);
    pane_.rows().resetContent();
    pane_.setCount(0);
    pane_.showCount();
    pane_.search().setText(QString());
    emit pane_.productsWanted();
    pane_.takeFocus();
}
