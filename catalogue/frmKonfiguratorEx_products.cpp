// Products: typed in, changed, deleted, one or all.
#include <QLineEdit>
#include <QTextEdit>

#include "catalogue/frmKonfigInput.h"
#include "catalogue/frmKonfiguratorEx.h"
#include "catalogue/row_search.h"
#include "catalogue/whole_statement.h"
#include "platform/dao/dao.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

namespace {

constexpr int kDivisionByZero = 11;
const QString kAllProducts = QStringLiteral("SELECT * FROM Oprema");

// What the messages show of a failure, behind their own text.
QString shortTail(const Trap& step) {
    return QStringLiteral("\n\n%1 ; Code line: %2").arg(step.line()).arg(step.codeLine());
}
QString tail(const Trap& step, const char* procedure) {
    return QStringLiteral("\n\n%1 ; Code line no.: %2\nOccured in procedure %3 of Form frmKonfiguratorEx")
        .arg(step.line())
        .arg(step.codeLine())
        .arg(QLatin1String(procedure));
}

QString numberOf(const QString& key) {
    return key.mid(1);
}

// The price in euro of a price in dinars, as the shop writes it: to two decimals.
float euroOf(double dinars) {
    if (KursKupovni == 0)
        throw platform::RunError(kDivisionByZero, QStringLiteral("Division by zero"));
    const QString euro = platform::formatGrouped(dinars / static_cast<double>(KursKupovni));
    return platform::readSingle(euro).value_or(0);
}

void writeProduct(dao::Recordset& rows, const frmKonfigInput& input, Trap& step) {
    const std::pair<const char*, dao::Value> fields[] = {{"Naziv", input.Naziv.toStdString()},
                                                         {"Opis", input.Opis.toStdString()},
                                                         {"Stanje", input.Stanje},
                                                         {"Cena", input.Cena},
                                                         {"Napomena", input.Napomena.toStdString()},
                                                         {"JM", input.JedinicaMere.toStdString()}};
    for (const auto& field : fields)
        step([&] { rows.Fields(field.first) = field.second; });
}

}  // namespace

bool frmKonfiguratorEx::hasGroupAndManufacturer() const {
    return List1[kGroups]->curSel() >= 0 && List1[kManufacturers]->curSel() >= 0;
}

bool frmKonfiguratorEx::openProducts(dao::Recordset& rows) {
    Trap step;
    step([&] {
        rows = Data1[kProducts]->Database().OpenRecordset(kAllProducts.toStdString(), dao::dbOpenDynaset);
    });
    if (step.failed()) {
        box(QStringLiteral("Doslo je do neocekivane greske prilikom otvaranja tabele Proizvoda:") +
                shortTail(step),
            BoxIcon::Exclamation);
    }
    return !step.failed();
}

// Adding ----------------------------------------------------------------------------------------------------

void frmKonfiguratorEx::AddNewProduct() {
    if (!hasGroupAndManufacturer())
        return;
    dao::Recordset rows;
    if (!openProducts(rows))
        return;
    QString key;
    for (bool goesOn = true; goesOn;) {
        frmKonfigInput input(this);
        input.OpenMode = frmKonfigInput::NewProduct;
        input.Proizvodjac = List1[kManufacturers]->selectedText();
        input.Grupa = List1[kGroups]->selectedText();
        if (askForNewProduct(input, rows)) {
            const QString added = storeNewProduct(input, rows);
            if (!added.isEmpty())
                key = added;
        }
        goesOn = input.ContinueInput;
        input.Unload();
    }
    rows.Close();
    DataUpdate(kProducts, key, false);
    focusPane(kProducts);
}

// False where it was cancelled. One name, one product: whoever types a name that is there already gets the
// window back, with all that was typed.
bool frmKonfiguratorEx::askForNewProduct(frmKonfigInput& input, const dao::Recordset& rows) {
    for (;;) {
        input.Display();
        if (input.Cancelled)
            return false;
        if (!row_search::hasName(rows, QStringLiteral("Naziv"), input.Naziv))
            return true;
        box(QStringLiteral("Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom."),
            BoxIcon::Exclamation);
    }
}

// The new product's key; empty where it could not be stored.
QString frmKonfiguratorEx::storeNewProduct(const frmKonfigInput& input, dao::Recordset& rows) {
    Trap step;
    step([&] { rows.AddNew(); });
    if (!step.failed()) {
        writeProduct(rows, input, step);
        step([&] { rows.Fields("IDGrupe") = List1[kGroups]->selectedData(); });
        step([&] { rows.Fields("IDProizvodjaca") = List1[kManufacturers]->selectedData(); });
    }
    // A product that was typed in must not vanish without a word.
    if (!step.failed())
        step([&] { rows.Update(); });
    if (step.failed()) {
        box(QStringLiteral("Neocekivana greska prilikom dodavanja proizvoda u bazu podataka:") +
                shortTail(step),
            BoxIcon::Exclamation);
        Trap giveUp;  // there may be nothing to give up
        giveUp([&] { rows.CancelUpdate(); });
        return {};
    }
    QString key;
    step([&] { rows.setBookmark(rows.LastModified()); });
    step([&] { key = QStringLiteral("K%1").arg(rows["ID"].asLong()); });
    return key;
}

// Changing --------------------------------------------------------------------------------------------------

void frmKonfiguratorEx::EditProduct() {
    const platform::ListItem* selected = ListView1->selectedItem();
    if (!hasGroupAndManufacturer() || ListView1->count() == 0 || selected == nullptr)
        return;
    const platform::ListItem item = *selected;
    dao::Recordset rows;
    if (!openProducts(rows))
        return;
    Trap step;
    frmKonfigInput input(this);
    fillInput(input, item, step);
    input.Display();
    const bool isChanged = !input.Cancelled;
    if (isChanged && mayTakeName(input.Naziv, item.Key, rows, step) &&
        storeProduct(input, item.Key, rows, step))
        carryIntoRequisitions(input, item, step);
    if (step.failed()) {
        box(QStringLiteral("Neocekivana greska prilikom editovanja proizvoda u bazi podataka:") +
                tail(step, "EditProduct"),
            BoxIcon::Exclamation);
        step.clear();
        step([&] { rows.Move(0); });
    }
    input.Unload();
    rows.Close();
    if (isChanged)
        DataUpdate(kProducts, item.Key, false);
    focusPane(kProducts);
}

void frmKonfiguratorEx::fillInput(frmKonfigInput& input, const platform::ListItem& item, Trap& step) {
    input.ParentForm = this;
    input.OpenMode = frmKonfigInput::ExistingProduct;
    input.Proizvodjac = item.Text;
    input.Grupa = List1[kGroups]->selectedText();
    input.Naziv = item.SubItems(1);
    input.Opis = item.SubItems(2);
    // A note may hold a bar of its own; a unit's text does not.
    const qsizetype bar = item.Tag.lastIndexOf(QLatin1Char('|'));
    input.Napomena = item.Tag.left(bar);
    input.JedinicaMere = bar < 0 ? QString() : item.Tag.mid(bar + 1);
    input.Stanje = platform::readSingle(item.SubItems(4)).value_or(0);
    step([&] {
        const double shown = platform::readNumber(item.SubItems(3)).value_or(0);
        input.Cena = CeneDinarske ? euroOf(shown) : static_cast<float>(shown);
    });
}

// Two products of one name are the user's own decision, but only on a change.
bool frmKonfiguratorEx::mayTakeName(const QString& name, const QString& key, dao::Recordset& rows,
                                    Trap& step) {
    bool isAnothers = false;
    if (row_search::hasName(rows, QStringLiteral("Naziv"), name, QLatin1Char('\'')))
        step([&] { isAnothers = rows["ID"].asLong() != numberOf(key).toInt(); });
    return !isAnothers ||
           box(QStringLiteral("Naziv proizvoda vec postoji u bazi podataka. Nije preporucljivo da imate dva "
                              "proizvoda istog imena, no ako tako zelite, onda je OK. Nastavljate li?"),
               BoxIcon::Exclamation, BoxButtons::YesNo, BoxAnswer::No) == BoxAnswer::Yes;
}

// False where the product could not be found. A failure is left standing in `step`.
bool frmKonfiguratorEx::storeProduct(const frmKonfigInput& input, const QString& key, dao::Recordset& rows,
                                     Trap& step) {
    using row_search::Outcome;
    const Outcome outcome = row_search::find(rows, QStringLiteral("ID=") + numberOf(key), step);
    if (outcome == Outcome::Nothing)
        box(QStringLiteral(
                "Proizvod cije podatke pokusavate da promenite nije pronadjen u bazi podataka. Moguce je "
                "da ga je neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo."),
            BoxIcon::Exclamation);
    if (outcome != Outcome::Found)
        return false;
    bool isOpen = false;
    step([&] {
        rows.Edit();
        isOpen = true;
    });
    if (isOpen) {
        writeProduct(rows, input, step);
        step([&] { rows.Update(); });
        step([&] { rows.setBookmark(rows.LastModified()); });
    }
    return true;
}

// Requisitions keep the name and the description as copies; they are found by the old ones. Price and unit
// stay as they were when the product was drawn.
void frmKonfiguratorEx::carryIntoRequisitions(const frmKonfigInput& input, const platform::ListItem& old,
                                              Trap& step) {
    const QString statement = QStringLiteral("UPDATE InvoiceData SET Naziv='") + input.Naziv +
                              QStringLiteral("', Opis='") + input.Opis + QStringLiteral("' WHERE Naziv='") +
                              old.SubItems(1) + QStringLiteral("' AND Opis='") + old.SubItems(2) +
                              QLatin1Char('\'');
    const auto tellFailure = [&] {
        box(QStringLiteral("Neocekivana greska prilikom promene podataka proizvoda u bazi podataka u tabeli "
                           "trebovanih stavki. Greska je data kao:") +
                tail(step, "EditProduct"),
            BoxIcon::Exclamation);
    };
    const qint64 affected = executeWhole(Data1[kProducts]->Database(), statement, step, tellFailure);
    if (affected >= 0)
        tellRequisitions(affected, step);
}

void frmKonfiguratorEx::tellRequisitions(qint64 affected, Trap& step) {
    step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
    if (ParentForm != nullptr)
        step([&] { ParentForm->UpdateDATA(QString(), false); });
    if (affected > 0) {
        box(QStringLiteral("Tabela trebovanja je azurirana. Broj promenjenih stavki je: %1.").arg(affected),
            BoxIcon::Information);
    }
}

// Deleting --------------------------------------------------------------------------------------------------

void frmKonfiguratorEx::DeleteProduct() {
    if (ListView1->count() == 0 || ListView1->selectedItem() == nullptr)
        return;
    if (AskBeforeDelete &&
        box(QStringLiteral("Upravo se spremate da izbrisete proizvod iz baze podataka.\nNastavljate li?"),
            BoxIcon::Exclamation, BoxButtons::YesNo) != BoxAnswer::Yes)
        return;
    const int position = ListView1->selectedIndex();
    platform::DataControl& source = *Data1[kProducts];
    using row_search::Outcome;
    Trap step;
    const Outcome outcome = row_search::find(
        source.Recordset(), QStringLiteral("ID=") + numberOf(ListView1->selectedItem()->Key), step);
    if (outcome == Outcome::Nothing) {
        box(QStringLiteral(
                "Proizvod koji pokusavate da izbrisete nije pronadjen u bazi podataka. Moguce je da ga je "
                "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo."),
            BoxIcon::Exclamation);
        return;
    }
    if (outcome == Outcome::Found)
        step([&] { source.Delete(); });
    if (step.failed()) {
        box(QStringLiteral("Neocekivana greska prilikom brisanja proizvoda u bazi podataka:") +
                tail(step, "DeleteProduct"),
            BoxIcon::Exclamation);
        return;
    }
    step([&] {
        if (source.Recordset().RecordCount() > 0)
            source.MoveFirst();
    });
    takeProductFromList(position);
}

void frmKonfiguratorEx::takeProductFromList(int position) {
    ListView1->removeItem(position);
    if (ListView1->count() > 0) {
        ListView1->select(position <= ListView1->count() ? position : 1);
        ListView1->ensureVisible(ListView1->selectedIndex());
        clickProduct();
    } else {
        clearProductList();
    }
    setCountText(kProducts, ListView1->count());
    showCountText(kProducts);
    ToolbarUpdate();
}

// Nothing where the user thought better of it, or where the choice cannot be carried out. With the question
// switched off nobody has chosen, and the engine refuses a statement that says nothing: a catalogue is not
// emptied by one key.
std::optional<QString> frmKonfiguratorEx::chooseProductsToDelete() {
    if (!AskBeforeDelete)
        return QString();
    const BoxAnswer answer =
        box(QStringLiteral(
                "Spremate se da izbrisete proizvode iz baze podataka.\nNa raspolaganju su vam sledece "
                "opcije:\n\nYes\t- Obrisacete SVE proizvode iz baze podataka,\nNo\t- Obrisacete samo "
                "proizvode izabranog proizvodjaca i grupe,\nCancel\t- Predomislili ste se - nema brisanja "
                "proizvoda."),
            BoxIcon::Exclamation, BoxButtons::YesNoCancel, BoxAnswer::Cancel);
    if (answer == BoxAnswer::Yes)
        return QStringLiteral("DELETE * FROM Oprema");
    if (answer != BoxAnswer::No)
        return std::nullopt;
    if (!hasGroupAndManufacturer()) {
        box(QStringLiteral(
                "Da bi ste selektivno izabrali veci broj proizvoda, morate izabrati i proizvodjaca i grupu "
                "kojoj pripadaju."),
            BoxIcon::Exclamation);
        return std::nullopt;
    }
    return QStringLiteral("DELETE * FROM Oprema WHERE IDGrupe=%1 AND IDProizvodjaca=%2")
        .arg(List1[kGroups]->selectedData())
        .arg(List1[kManufacturers]->selectedData());
}

void frmKonfiguratorEx::DeleteAllProduct() {
    if (ListView1->count() == 0)
        return;
    const std::optional<QString> statement = chooseProductsToDelete();
    if (!statement)
        return;
    Trap step;
    const auto tellFailure = [&] {
        box(QStringLiteral("Neocekivana greska prilikom brisanja svih proizvoda iz baze podataka:\n\n") +
                GetDAOErrors(),
            BoxIcon::Exclamation);
    };
    const qint64 affected = executeWhole(Data1[kProducts]->Database(), *statement, step, tellFailure);
    if (affected < 0)
        return;
    clearProductList();
    setCountText(kProducts, 0);
    showCountText(kProducts);
    ToolbarUpdate();
    box(QStringLiteral("Izbrisno: %1 proizvod(a).").arg(affected), BoxIcon::Information);
}
