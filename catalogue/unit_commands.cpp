#include "catalogue/unit_commands.h"

#include "catalogue/row_search.h"
#include "catalogue/unit_list.h"
#include "catalogue/whole_statement.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/dao/recordset.h"
#include "platform/system/trap.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

namespace {

const QString kName = QStringLiteral("Naziv");  // the field
const QString kDuplicate = QStringLiteral("Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom.");

void tellEngine(QWidget* owner, const char* what) {
    box(owner, QString::fromLatin1(what) + QStringLiteral("\n\n") + GetDAOErrors(), BoxIcon::Exclamation);
}

bool mayDelete(QWidget* owner, const char* question) {
    return !AskBeforeDelete || box(owner, QString::fromLatin1(question), BoxIcon::Exclamation,
                                   BoxButtons::YesNo) == BoxAnswer::Yes;
}

}  // namespace

UnitCommands::UnitCommands(UnitList& units, QWidget* window) : units_(units), window_(window) {}

void UnitCommands::add(const QString& name) {
    if (row_search::hasName(units_.data().Recordset(), kName, name)) {
        box(window_, kDuplicate, BoxIcon::Exclamation);
    } else {
        store(name);
    }
}

void UnitCommands::store(const QString& name) {
    platform::DataControl& data = units_.data();
    Trap step;
    step([&] { data.AddNew(); });
    if (!step.failed()) {
        step([&] { data.Recordset().Fields("Naziv") = name.toStdString(); });
    }
    // A unit is in the list only when it is in the table.
    if (!step.failed()) {
        step([&] { data.Recordset().Update(); });
    }
    if (step.failed()) {
        tellEngine(window_, "Neocekivana greska prilikom dodavanja jedinice mere u bazu podataka:");
        giveUpEdit();
        return;
    }
    step([&] { data.setBookmark(data.Recordset().LastModified()); });
    const int row = units_.rows().addString(name);
    step([&] { units_.rows().setItemData(row, data.Recordset()["AID"].asLong()); });
    units_.rows().setCurSel(row);
}

// Makes the selected unit's record the current one. A failure is left standing in `step`. False: somebody has
// deleted it meanwhile, and the person has been told so with `goneText`.
bool UnitCommands::find(const char* goneText, Trap& step) {
    const QString wanted = QStringLiteral("AID=%1").arg(units_.rows().selectedData());
    const bool isGone =
        row_search::find(units_.data().Recordset(), wanted, step) == row_search::Outcome::Nothing;
    if (isGone) {
        box(window_, QString::fromLatin1(goneText), BoxIcon::Exclamation);
    }
    return !isGone;
}

void UnitCommands::giveUpEdit() {
    Trap step;  // there may be nothing to give up
    step([&] { units_.data().CancelUpdate(); });
}

void UnitCommands::change() {
    if (!units_.hasSelection()) {
        return;
    }
    const QString name =
        platform::inputBox(QStringLiteral("Promenite naziv jedinice mere:"), QStringLiteral("Jedinica mere"),
                           units_.rows().selectedText(), window_)
            .value_or(QString())
            .trimmed();
    if (name.isEmpty()) {
        return;
    }
    Trap step;
    if (!find("Jedinica mere koju pokusavate da promenite nije pronadjena u bazi podataka. Moguce je da je "
              "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
              step)) {
        return;
    }
    if (step.failed() || !row_search::hasName(units_.data().Recordset(), kName, name)) {
        writeName(name, step);
    } else {
        box(window_, kDuplicate, BoxIcon::Exclamation);
    }
    emit units_.changed();
}

// The search for the name found nothing, so the row found by its number is still the current one. Where that
// one could not be looked for, nothing is written.
void UnitCommands::writeName(const QString& name, Trap& step) {
    dao::Recordset rows = units_.data().Recordset();
    if (!step.failed()) {
        step([&] {
            rows.Edit();
            rows.Fields("Naziv") = name.toStdString();
            rows.Update();
        });
    }
    if (step.failed()) {
        tellEngine(window_, "Neocekivana greska prilikom promene jedinice mere u bazi podataka:");
        giveUpEdit();
        return;
    }
    step([&] { units_.data().setBookmark(rows.LastModified()); });
    units_.rows().setText(units_.rows().curSel(), name);
}

void UnitCommands::remove() {
    if (!units_.hasSelection() ||
        !mayDelete(window_,
                   "Upravo se spremate da izbrisete jedinicu mere iz baze podataka. Nastavljate li?")) {
        return;
    }
    Trap step;
    if (!find("Jedinica mere koju pokusavate da izbrisete nije pronadjena u bazi podataka. Moguce je da je "
              "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
              step)) {
        return;
    }
    deleteSelected(step);
    emit units_.changed();
}

void UnitCommands::deleteSelected(Trap& step) {
    platform::DataControl& data = units_.data();
    if (!step.failed()) {
        step([&] { data.Delete(); });
    }
    if (step.failed()) {
        tellEngine(window_, "Neocekivana greska prilikom brisanja jedinice mere u bazi podataka:");
        return;
    }
    step([&] {
        if (data.Recordset().RecordCount() > 0) {
            data.MoveFirst();
        }
    });
    units_.rows().deleteString(units_.rows().curSel());
    units_.rows().setCurSel(0);
}

void UnitCommands::removeAll() {
    if (!units_.hasRows() ||
        !mayDelete(window_,
                   "Upravo se spremate da izbrisete sve jedinice mere iz baze podataka. Nastavljate li?")) {
        return;
    }
    Trap step;
    const auto tellFailure = [this] {
        tellEngine(window_, "Neocekivana greska prilikom brisanja svih jedinica mera iz baze podataka:");
    };
    if (executeWhole(units_.data().Database(), QStringLiteral("DELETE * FROM JM"), step, tellFailure) >= 0) {
        units_.rows().resetContent();
    }
    emit units_.changed();
}
