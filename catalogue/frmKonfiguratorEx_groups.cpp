// Groups and manufacturers: the two lists above the products.
#include <QLineEdit>

#include "catalogue/frmKonfiguratorEx.h"
#include "catalogue/row_search.h"
#include "catalogue/whole_statement.h"
#include "platform/dao/dao.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

namespace {

// One routine serves both tables; this is where they differ.
struct Pane {
    const char* table;
    const char* field;
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
constexpr Pane kPaneTexts[] = {
    {"Grupe", "Grupa", "Grupe proizvoda", "Upisite naziv nove grupe proizvoda:",
     "Promenite naziv grupe proizvoda:", "Neocekivana greska prilikom dodavanja nove grupe u bazu podataka",
     "Nastavljate sa dodavanjem grupa proizvoda u bazu podataka?",
     "Neocekivana greska prilikom promene naziva grupe u bazi podataka",
     "Grupa proizvoda ciji naziv pokusavate da promenite nije pronadjena u bazi podataka. Moguce je da je "
     "neko od "
     "korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
     "Upravo se spremate da izbrisete grupu proizvoda iz baze podataka.\nBrisanjem grupe proizvoda brisete i "
     "sve "
     "proizvode koji toj grupi pripadaju. Ponistenje brisanja nije moguce.\n\nNastavljate li sa brisanjem?",
     "Grupa proizvoda koju pokusavate da izbrisete nije pronadjena u bazi podataka. Moguce je da je neko od "
     "korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
     "Upravo se spremate da izbrisete sve grupe proizvoda iz baze podataka.\nBrisanjem grupa proizvoda "
     "brisete i "
     "sve proizvode. Ponistenje brisanja nije moguce.\n\nNastavljate li sa brisanjem?",
     "Neocekivana greska prilikom brisanja grupa proizvoda iz baze podataka"},
    {"Proizvodjaci", "Proizvodjac", "Proizvodjaci",
     "Upisite naziv novog proizvodjaca:", "Promenite naziv proizvodjaca:",
     "Neocekivana greska prilikom dodavanja novog proizvodjaca u bazu podataka",
     "Nastavljate sa dodavanjem proizvodjaca u bazu podataka?",
     "Neocekivana greska prilikom promene naziva proizvodjaca u bazi podataka",
     "Proizvodjac ciji naziv pokusavate da promenite nije pronadjen u bazi podataka. Moguce je da ga je neko "
     "od "
     "korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
     "Upravo se spremate da izbrisete proizvodjaca iz baze podataka.\nBrisanjem proizvodjaca brisete i sve "
     "proizvode koji tom proizvodjacu pripadaju. Ponistenje brisanja nije moguce.\n\nNastavljate li sa "
     "brisanjem?",
     "Proizvodjac koga pokusavate da izbrisete nije pronadjen u bazi podataka. Moguce je da ga je neko od "
     "korisnika "
     "vec obrisao. Azurirajte podatke i pokusajte ponovo.",
     "Upravo se spremate da izbrisete sve proizvodjace iz baze podataka.\nBrisanjem proizvodjaca brisete i "
     "sve "
     "proizvode. Ponistenje brisanja nije moguce.\n\nNastavljate li sa brisanjem?",
     "Neocekivana greska prilikom brisanja proizvodjaca iz baze podataka"},
};

const Pane& paneTexts(int index) {
    return kPaneTexts[static_cast<size_t>(index)];
}

QString latin(const char* text) {
    return QString::fromLatin1(text);
}

QString tail(const Trap& step, const char* procedure) {
    return QStringLiteral("\n\n%1 ; Code line no.: %2\nOccured in procedure %3 of Form frmKonfiguratorEx")
        .arg(step.line())
        .arg(step.codeLine())
        .arg(QLatin1String(procedure));
}

// Empty where nothing was typed, or it was cancelled.
QString askName(const char* prompt, const char* title, const QString& initial, QWidget* owner) {
    QString question = latin(prompt);
    if (MakeProperCase)
        question += QStringLiteral("\nKorekcija unosa teksta je ukljucena (a->A).");
    return platform::inputBox(question, latin(title), initial, owner).value_or(QString()).trimmed();
}

QString cased(const QString& name) {
    return MakeProperCase ? ConvertCase(name, 0) : name;
}

}  // namespace

// Adding ----------------------------------------------------------------------------------------------------

void frmKonfiguratorEx::AddNewGrpMft() {
    const int index = focusedListPane(true);
    if (index < 0)
        return;
    Trap step;
    QString last;
    do {
        last = addGrpMft(index, step);
        if (last.isEmpty())
            return;
    } while (box(latin(paneTexts(index).addMore), BoxIcon::Question, BoxButtons::YesNo) == BoxAnswer::Yes);
    platform::ListBox& list = *List1[static_cast<size_t>(index)];
    setCountText(index, list.count());
    if (GetSortTagData(SortTagOf[static_cast<size_t>(index)]).sorted)
        DataUpdate(index, last, false);
    else
        list.setCurSel(list.count() - 1);
    focusPane(index);
    clickList(index);
    ToolbarUpdate();
    if (step.failed()) {
        box(latin(paneTexts(index).addError) + QLatin1Char(':') + tail(step, "AddNewGrpMft"),
            BoxIcon::Exclamation);
        step.clear();
    }
}

// The name that has been added; empty: adding ends here, and the list stays as it is.
QString frmKonfiguratorEx::addGrpMft(int index, Trap& step) {
    const Pane& pane = paneTexts(index);
    platform::DataControl& source = *Data1[static_cast<size_t>(index)];
    QString name = askName(pane.newPrompt, pane.title, QString(), this);
    if (name.isEmpty())
        return {};
    if (row_search::hasName(source.Recordset(), latin(pane.field), name)) {
        box(QStringLiteral("Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom."),
            BoxIcon::Exclamation);
        return {};
    }
    name = cased(name);
    step([&] {
        source.AddNew();
        source.Recordset().Fields(pane.field) = name.toStdString();
    });
    // A row without its name is worth nothing to anybody.
    if (!step.failed())
        step([&] { source.Recordset().Update(); });
    if (!step.failed())
        step([&] { source.setBookmark(source.Recordset().LastModified()); });
    step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
    if (step.failed()) {
        box(latin(pane.addError) + QStringLiteral(" (ADDNEW deo):") + tail(step, "DoGroupAddNew"),
            BoxIcon::Exclamation);
        step.clear();
        giveUpGrpMft(index);
        return {};
    }
    qint32 number = -1;
    step([&] { number = source.Recordset()["ID"].asLong(); });
    List1[static_cast<size_t>(index)]->addString(name, number);
    return name;
}

void frmKonfiguratorEx::giveUpGrpMft(int index) {
    Trap giveUp;  // there may be nothing to give up
    giveUp([&] { Data1[static_cast<size_t>(index)]->CancelUpdate(); });
}

// Renaming --------------------------------------------------------------------------------------------------

void frmKonfiguratorEx::EditGrpMft() {
    editGrpMft(focusedListPane());
}

void frmKonfiguratorEx::editGrpMft(int index) {
    if (index < 0 || !hasSelection(index))
        return;
    const platform::ListBox& list = *List1[static_cast<size_t>(index)];
    const Pane& pane = paneTexts(index);
    const QString oldName = list.selectedText();
    QString name = askName(pane.renamePrompt, pane.title, oldName, this);
    if (name.isEmpty())
        return;
    name = cased(name);
    Trap step;
    if (isGoneGrpMft(index, pane.renameGone, step) || !renameGrpMft(index, name, step))
        return;
    showRenamed(index, name);
    carryNameIntoRequisitions(index, name, oldName, step);
    if (step.failed()) {
        box(latin(pane.changeError) + QLatin1Char(':') + tail(step, "EditGrpMft"), BoxIcon::Exclamation);
        step.clear();
    }
}

// Makes the selected row the current one, or leaves standing in `step` why nobody could look for it. True:
// somebody has deleted it meanwhile, and the person has been told.
bool frmKonfiguratorEx::isGoneGrpMft(int index, const char* goneText, Trap& step) {
    const auto pane = static_cast<size_t>(index);
    const QString wanted = QStringLiteral("ID=%1").arg(List1[pane]->selectedData());
    const bool isGone =
        row_search::find(Data1[pane]->Recordset(), wanted, step) == row_search::Outcome::Nothing;
    if (isGone)
        box(latin(goneText), BoxIcon::Exclamation);
    return isGone;
}

void frmKonfiguratorEx::tellGrpMftFailed(int index, const char* part, const char* procedure, Trap& step) {
    box(latin(paneTexts(index).changeError) + QLatin1String(part) + tail(step, procedure),
        BoxIcon::Exclamation);
    step.clear();
}

bool frmKonfiguratorEx::renameGrpMft(int index, const QString& name, Trap& step) {
    platform::DataControl& source = *Data1[static_cast<size_t>(index)];
    const Pane& pane = paneTexts(index);
    if (!step.failed())
        step([&] {
            source.Recordset().Edit();
            source.Recordset().Fields(pane.field) = name.toStdString();
            source.Recordset().Update();
        });
    if (!step.failed())
        step([&] { source.setBookmark(source.Recordset().LastModified()); });
    step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
    if (!step.failed())
        return true;
    tellGrpMftFailed(index, " (EDIT deo):", "EditGrpMft", step);
    giveUpGrpMft(index);
    return false;
}

void frmKonfiguratorEx::showRenamed(int index, const QString& name) {
    platform::ListBox& list = *List1[static_cast<size_t>(index)];
    if (GetSortTagData(SortTagOf[static_cast<size_t>(index)]).sorted)
        DataUpdate(index, name, false);
    else
        list.setText(list.curSel(), name);
    if (index == kManufacturers)
        DataUpdate(kProducts, QString(), false);
    setSearchText(index, name);
    focusPane(index);
}

// Requisitions keep the name as a copy; they are found by the old one.
void frmKonfiguratorEx::carryNameIntoRequisitions(int index, const QString& name, const QString& oldName,
                                                  Trap& step) {
    const Pane& pane = paneTexts(index);
    const QString field = latin(pane.field);
    const QString statement = QStringLiteral("UPDATE InvoiceData SET ") + field + QStringLiteral("='") +
                              name + QStringLiteral("' WHERE ") + field + QStringLiteral("='") + oldName +
                              QLatin1Char('\'');
    const auto tellFailure = [&] {
        box(latin(pane.changeError) + QStringLiteral(" u tabeli trebovanih stavki. Greska je data kao:") +
                tail(step, "EditGrpMft"),
            BoxIcon::Exclamation);
    };
    const qint64 affected =
        executeWhole(Data1[static_cast<size_t>(index)]->Database(), statement, step, tellFailure);
    if (affected >= 0)
        tellRequisitions(affected, step);
}

// Deleting --------------------------------------------------------------------------------------------------

void frmKonfiguratorEx::DeleteGrpMft() {
    deleteGrpMft(focusedListPane());
}

void frmKonfiguratorEx::deleteGrpMft(int index) {
    if (index < 0 || !hasSelection(index))
        return;
    const Pane& pane = paneTexts(index);
    if (AskBeforeDelete &&
        box(latin(pane.deleteQuestion), BoxIcon::Exclamation, BoxButtons::YesNo) != BoxAnswer::Yes)
        return;
    Trap step;
    if (isGoneGrpMft(index, pane.deleteGone, step))
        return;
    if (!step.failed())
        step([&] { Data1[static_cast<size_t>(index)]->Delete(); });
    if (step.failed())
        tellGrpMftFailed(index, " (DELETE deo):", "DeleteGrpMft", step);
    else
        takeFromList(index);
}

void frmKonfiguratorEx::takeFromList(int index) {
    const auto pane = static_cast<size_t>(index);
    platform::ListBox& list = *List1[pane];
    platform::DataControl& source = *Data1[pane];
    const int row = list.curSel();
    list.deleteString(row);
    if (list.count() == 0) {
        list.setCurSel(-1);
    } else {
        Trap step;  // the next command looks for its row anyway
        step([&] { source.MoveFirst(); });
        if (!list.setCurSel(row))
            list.setCurSel(0);
    }
    setCountText(index, list.count());
    lastSelection_[pane].reset();  // the row that is chosen now is another one, whatever its name
    clickList(index);
    // The click leaves the products alone while those of all manufacturers are shown, and yet some have gone.
    if (index == kManufacturers && PrikaziSveProizvodjace)
        DataUpdate(kProducts, QString(), false);
    showCountText(index);
    ToolbarUpdate();
}

void frmKonfiguratorEx::DeleteAllGrpMft() {
    const int index = focusedListPane(true);
    if (index < 0 || List1[static_cast<size_t>(index)]->count() == 0)
        return;
    const Pane& pane = paneTexts(index);
    if (AskBeforeDelete &&
        box(latin(pane.deleteAllQuestion), BoxIcon::Exclamation, BoxButtons::YesNo) != BoxAnswer::Yes)
        return;
    Trap step;
    const auto tellFailure = [&] {
        box(latin(pane.deleteAllError) + QStringLiteral(" (DELETE ALL deo):") + tail(step, "DeleteAllGrpMft"),
            BoxIcon::Exclamation);
    };
    if (executeWhole(Data1[static_cast<size_t>(index)]->Database(),
                     QStringLiteral("DELETE * FROM ") + latin(pane.table), step, tellFailure) < 0)
        return;
    step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
    List1[static_cast<size_t>(index)]->resetContent();
    setCountText(index, 0);
    showCountText(index);
    setSearchText(index, QString());
    DataUpdate(kProducts, QString(), false);
    focusPane(index);
}
