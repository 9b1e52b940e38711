#include "catalogue/product_commands.h"

#include "catalogue/failure_texts.h"
#include "catalogue/frmKonfigInput.h"
#include "catalogue/list_pane.h"
#include "catalogue/product_columns.h"
#include "catalogue/product_pane.h"
#include "catalogue/requisition_copies.h"
#include "catalogue/row_search.h"
#include "catalogue/whole_statement.h"
#include "common/catalogue_rules.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/controls/list_view.h"
#include "platform/dao/dao.h"
#include "platform/system/trap.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

namespace {

const QString kAllProducts = QStringLiteral("SELECT * FROM Oprema");

void writeProduct(dao::Recordset& rows, const frmKonfigInput& input, Trap& step) {
    const std::pair<const char*, dao::Value> fields[] = {{"Naziv", input.Naziv.toStdString()},
                                                         {"Opis", input.Opis.toStdString()},
                                                         {"Stanje", input.Stanje},
                                                         {"Cena", input.Cena},
                                                         {"Napomena", input.Napomena.toStdString()},
                                                         {"JM", input.JedinicaMere.toStdString()}};
    for (const auto& field : fields) {
        step([&] { rows.Fields(field.first) = field.second; });
    }
}

}  // namespace

ProductCommands::ProductCommands(ProductPane& products, const ListPane& groups, const ListPane& manufacturers,
                                 RequisitionCopies& copies, QWidget* window)
    : products_(products), groups_(groups), manufacturers_(manufacturers), copies_(copies), window_(window) {}

void ProductCommands::sort(SortMode mode) {
    if (mode == SortMode::RefreshOnly || mode == SortMode::NoSort) {
        products_.refresh(mode == SortMode::NoSort);
    }
}

bool ProductCommands::open(dao::Recordset& rows) {
    Trap step;
    step([&] {
        rows = products_.data().Database().OpenRecordset(kAllProducts.toStdString(), dao::dbOpenDynaset);
    });
    if (step.failed()) {
        box(window_,
            QStringLiteral("Doslo je do neocekivane greske prilikom otvaranja tabele Proizvoda:") +
                shortFailureTail(step),
            BoxIcon::Exclamation);
    }
    return !step.failed();
}

// Adding ----------------------------------------------------------------------------------------------------

void ProductCommands::add() {
    if (!products_.hasGroupAndManufacturer()) {
        return;
    }
    dao::Recordset rows;
    if (!open(rows)) {
        return;
    }
    QString key;
    for (bool goesOn = true; goesOn;) {
        frmKonfigInput input(window_);
        input.OpenMode = frmKonfigInput::NewProduct;
        input.Proizvodjac = manufacturers_.rows().selectedText();
        input.Grupa = groups_.rows().selectedText();
        if (askForNew(input, rows)) {
            const QString added = storeNew(input, rows);
            if (!added.isEmpty()) {
                key = added;
            }
        }
        goesOn = input.ContinueInput;
        input.Unload();
    }
    rows.Close();
    products_.update(key, false);
    products_.takeFocus();
}

// False where it was cancelled. One name, one product: whoever types a name that is there already gets the
// window back, with all that was typed.
bool ProductCommands::askForNew(frmKonfigInput& input, const dao::Recordset& rows) {
    for (;;) {
        input.Display();
        if (input.Cancelled) {
            return false;
        }
        if (!row_search::hasName(rows, QStringLiteral("Naziv"), input.Naziv)) {
            return true;
        }
        box(window_, QStringLiteral("Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom."),
            BoxIcon::Exclamation);
    }
}

// The new product's key; empty where it could not be stored.
QString ProductCommands::storeNew(const frmKonfigInput& input, dao::Recordset& rows) {
    Trap step;
    step([&] { rows.AddNew(); });
    if (!step.failed()) {
        writeProduct(rows, input, step);
        step([&] { rows.Fields("IDGrupe") = groups_.rows().selectedData(); });
        step([&] { rows.Fields("IDProizvodjaca") = manufacturers_.rows().selectedData(); });
    }
    // A product that was typed in must not vanish without a word.
    if (!step.failed()) {
        step([&] { rows.Update(); });
    }
    if (step.failed()) {
        box(window_,
            QStringLiteral("Neocekivana greska prilikom dodavanja proizvoda u bazu podataka:") +
                shortFailureTail(step),
            BoxIcon::Exclamation);
        Trap giveUp;  // there may be nothing to give up
        giveUp([&] { rows.CancelUpdate(); });
        return {};
    }
    QString key;
    step([&] { rows.setBookmark(rows.LastModified()); });
    step([&] { key = productKey(rows["ID"].asLong()); });
    return key;
}

// Changing --------------------------------------------------------------------------------------------------

void ProductCommands::edit() {
    const std::optional<ProductRow> product = products_.selected();
    if (!products_.hasGroupAndManufacturer() || !product) {
        return;
    }
    dao::Recordset rows;
    if (!open(rows)) {
        return;
    }
    Trap step;
    frmKonfigInput input(window_);
    fillInput(input, *product, step);
    input.Display();
    const bool isChanged = !input.Cancelled;
    if (isChanged && mayTakeName(input.Naziv, product->id(), rows, step) &&
        store(input, product->id(), rows, step)) {
        carryNames(input, *product, step);
    }
    if (step.failed()) {
        box(window_,
            QStringLiteral("Neocekivana greska prilikom editovanja proizvoda u bazi podataka:") +
                failureTail(step, "EditProduct"),
            BoxIcon::Exclamation);
        step.clear();
        step([&] { rows.Move(0); });
    }
    input.Unload();
    rows.Close();
    if (isChanged) {
        products_.update(product->key(), false);
    }
    products_.takeFocus();
}

void ProductCommands::fillInput(frmKonfigInput& input, const ProductRow& product, Trap& step) {
    input.ParentForm = window_;
    input.OpenMode = frmKonfigInput::ExistingProduct;
    input.Proizvodjac = product.text(ProductColumn::Manufacturer);
    input.Grupa = groups_.rows().selectedText();
    input.Naziv = product.text(ProductColumn::Name);
    input.Opis = product.text(ProductColumn::Description);
    input.Napomena = product.note();
    input.JedinicaMere = product.unit();
    input.Stanje = product.stock();
    step([&] {
        const double shown = product.price().value_or(0);
        input.Cena = CeneDinarske ? EuroOfDinars(shown, KursKupovni) : static_cast<float>(shown);
    });
}

// Two products of one name are the user's own decision, but only on a change.
bool ProductCommands::mayTakeName(const QString& name, qint32 id, dao::Recordset& rows, Trap& step) {
    bool isAnothers = false;
    if (row_search::hasName(rows, QStringLiteral("Naziv"), name, QLatin1Char('\''))) {
        step([&] { isAnothers = rows["ID"].asLong() != id; });
    }
    return !isAnothers ||
           box(window_,
               QStringLiteral("Naziv proizvoda vec postoji u bazi podataka. Nije preporucljivo da imate dva "
                              "proizvoda istog imena, no ako tako zelite, onda je OK. Nastavljate li?"),
               BoxIcon::Exclamation, BoxButtons::YesNo, BoxAnswer::No) == BoxAnswer::Yes;
}

// False where the product could not be found. A failure is left standing in `step`.
bool ProductCommands::store(const frmKonfigInput& input, qint32 id, dao::Recordset& rows, Trap& step) {
    using row_search::Outcome;
    const Outcome outcome = row_search::find(rows, QStringLiteral("ID=%1").arg(id), step);
    if (outcome == Outcome::Nothing) {
        box(window_,
            QStringLiteral(
                "Proizvod cije podatke pokusavate da promenite nije pronadjen u bazi podataka. Moguce je "
                "da ga je neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo."),
            BoxIcon::Exclamation);
    }
    if (outcome != Outcome::Found) {
        return false;
    }
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
void ProductCommands::carryNames(const frmKonfigInput& input, const ProductRow& old, Trap& step) {
    const QString statement = QStringLiteral("UPDATE InvoiceData SET Naziv='") + input.Naziv +
                              QStringLiteral("', Opis='") + input.Opis + QStringLiteral("' WHERE Naziv='") +
                              old.text(ProductColumn::Name) + QStringLiteral("' AND Opis='") +
                              old.text(ProductColumn::Description) + QLatin1Char('\'');
    const auto tellFailure = [&] {
        box(window_,
            QStringLiteral("Neocekivana greska prilikom promene podataka proizvoda u bazi podataka u tabeli "
                           "trebovanih stavki. Greska je data kao:") +
                failureTail(step, "EditProduct"),
            BoxIcon::Exclamation);
    };
    copies_.change(products_.data().Database(), statement, step, tellFailure);
}

// Deleting --------------------------------------------------------------------------------------------------

void ProductCommands::remove() {
    const std::optional<ProductRow> product = products_.selected();
    if (!product) {
        return;
    }
    if (AskBeforeDelete &&
        box(window_,
            QStringLiteral("Upravo se spremate da izbrisete proizvod iz baze podataka.\nNastavljate li?"),
            BoxIcon::Exclamation, BoxButtons::YesNo) != BoxAnswer::Yes) {
        return;
    }
    const int position = products_.rows().selectedIndex();
    platform::DataControl& source = products_.data();
    using row_search::Outcome;
    Trap step;
    const Outcome outcome =
        row_search::find(source.Recordset(), QStringLiteral("ID=%1").arg(product->id()), step);
    if (outcome == Outcome::Nothing) {
        box(window_,
            QStringLiteral(
                "Proizvod koji pokusavate da izbrisete nije pronadjen u bazi podataka. Moguce je da ga je "
                "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo."),
            BoxIcon::Exclamation);
        return;
    }
    if (outcome == Outcome::Found) {
        step([&] { source.Delete(); });
    }
    if (step.failed()) {
        box(window_,
            QStringLiteral("Neocekivana greska prilikom brisanja proizvoda u bazi podataka:") +
                failureTail(step, "DeleteProduct"),
            BoxIcon::Exclamation);
        return;
    }
    step([&] {
        if (source.Recordset().RecordCount() > 0) {
            source.MoveFirst();
        }
    });
    products_.take(position);
}

// Nothing where the user thought better of it, or where the choice cannot be carried out. With the question
// switched off nobody has chosen, and the engine refuses a statement that says nothing: a catalogue is not
// emptied by one key.
std::optional<QString> ProductCommands::chooseStatement() {
    if (!AskBeforeDelete) {
        return QString();
    }
    const BoxAnswer answer =
        box(window_,
            QStringLiteral(
                "Spremate se da izbrisete proizvode iz baze podataka.\nNa raspolaganju su vam sledece "
                "opcije:\n\nYes\t- Obrisacete SVE proizvode iz baze podataka,\nNo\t- Obrisacete samo "
                "proizvode izabranog proizvodjaca i grupe,\nCancel\t- Predomislili ste se - nema brisanja "
                "proizvoda."),
            BoxIcon::Exclamation, BoxButtons::YesNoCancel, BoxAnswer::Cancel);
    if (answer == BoxAnswer::Yes) {
        return QStringLiteral("DELETE * FROM Oprema");
    }
    if (answer != BoxAnswer::No) {
        return std::nullopt;
    }
    if (!products_.hasGroupAndManufacturer()) {
        box(window_,
            QStringLiteral(
                "Da bi ste selektivno izabrali veci broj proizvoda, morate izabrati i proizvodjaca i grupu "
                "kojoj pripadaju."),
            BoxIcon::Exclamation);
        return std::nullopt;
    }
    return QStringLiteral("DELETE * FROM Oprema WHERE IDGrupe=%1 AND IDProizvodjaca=%2")
        .arg(groups_.rows().selectedData())
        .arg(manufacturers_.rows().selectedData());
}

void ProductCommands::removeAll() {
    if (!products_.hasRows()) {
        return;
    }
    const std::optional<QString> statement = chooseStatement();
    if (!statement) {
        return;
    }
    Trap step;
    const auto tellFailure = [&] {
        box(window_,
            QStringLiteral("Neocekivana greska prilikom brisanja svih proizvoda iz baze podataka:\n\n") +
                GetDAOErrors(),
            BoxIcon::Exclamation);
    };
    const qint64 affected = executeWhole(products_.data().Database(), *statement, step, tellFailure);
    if (affected < 0) {
        return;
    }
    products_.clear();
    products_.setCount(0);
    products_.showCount();
    emit products_.changed();
    box(window_, QStringLiteral("Izbrisno: %1 proizvod(a).").arg(affected), BoxIcon::Information);
}
