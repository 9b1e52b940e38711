#include "catalogue/frmJM.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "catalogue/row_search.h"
#include "catalogue/whole_statement.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "data/session.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/keys.h"
#include "platform/controls/list_box.h"
#include "platform/controls/popup_menu.h"
#include "platform/dao/recordset.h"
#include "platform/system/trap.h"

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::Trap;

namespace {

constexpr int kNameLimit = 25;
const QString kWindow = QStringLiteral("frmJM");
const QString kName = QStringLiteral("Naziv");  // the field
const QString kMenu = QStringLiteral("mnu_list");
const QString kDuplicate = QStringLiteral("Naziv vec postoji u bazi podataka. Pokusajte sa novim nazivom.");

struct Order {
    const char* how;
    const char* already;
    const char* tip;
};
constexpr Order kAscending = {"ASC", "Jedinice mere su vec sortirane po rastucim nazivima.",
                              "Lista jedinica mera je sortirana po rastucim nazivima."};
constexpr Order kDescending = {"DESC", "Jedinice mere su vec sortirane po opadajucim nazivima.",
                               "Lista jedinica mera je sortirana po opadajucim nazivima."};

void tellEngine(QWidget* owner, const char* what) {
    box(owner, QString::fromLatin1(what) + QStringLiteral("\n\n") + GetDAOErrors(), BoxIcon::Exclamation);
}

}  // namespace

// A command of the popup menu: when it is possible, and what it does.
struct frmJM::MenuLine {
    const char* key;      // nullptr: a separator
    const char* caption;  // with the shortcut's name behind a tab
    bool (frmJM::*rule)() const;
    void (frmJM::*action)();
};

std::span<const frmJM::MenuLine> frmJM::menuLines() {
    static constexpr MenuLine kSeparator{nullptr, "-", nullptr, nullptr};
    static constexpr MenuLine kLines[] = {
        {"edit", "Promeni...\tF2", &frmJM::hasSelection, &frmJM::changeUnit},
        kSeparator,
        {"delete", "Izbrisi\tDel", &frmJM::hasSelection, &frmJM::deleteUnit},
        {"delall", "Izbrisi Sve\tShift+Del", &frmJM::hasRows, &frmJM::deleteAllUnits},
        kSeparator,
        {"asc", "Sortiraj Rastuce", &frmJM::isNotAscending, &frmJM::sortAs<Ascending>},
        {"desc", "Sortiraj Opadajuce", &frmJM::isNotDescending, &frmJM::sortAs<Descending>},
        kSeparator,
        {"unsort", "Ponisti Sortiranje\tF8", &frmJM::isSorted, &frmJM::sortAs<Unsorted>},
        kSeparator,
        {"refresh", "Azuriraj Listu\tF5", nullptr, &frmJM::sortAs<RefreshOnly>},
    };
    return kLines;
}

// Building --------------------------------------------------------------------------------------------------

frmJM::frmJM(QWidget* parent) : QDialog(parent) {
    setObjectName(kWindow);
    setWindowTitle(QStringLiteral("Jedinica mere"));
    Data1_ = new platform::DataControl(this);
    List1_ = new platform::ListBox(this);
    List1_->setObjectName(QStringLiteral("List1"));
    List1_->setAccessibleName(QStringLiteral("Jedinice mere"));
    List1_->setMinimumSize(fontMetrics().averageCharWidth() * 34, fontMetrics().height() * 10);

    auto* page = new QHBoxLayout(this);
    page->setContentsMargins(14, 14, 14, 12);
    page->setSpacing(10);
    auto* left = new QVBoxLayout;
    auto* entry = new QHBoxLayout;
    auto* right = new QVBoxLayout;
    buildEntry(entry);
    buildButtons(right);
    left->addLayout(entry);
    left->addWidget(List1_, 1);
    page->addLayout(left, 1);
    page->addLayout(right);
    setTabOrder(Text1_, Command1_[kAdd]);
    setTabOrder(Command1_[kAdd], List1_);
    setTabOrder(List1_, Command1_[kChange]);
    connectControls();
}

frmJM::~frmJM() {
    Unload();
}

void frmJM::buildEntry(QHBoxLayout* row) {
    Text1_ = new QLineEdit(this);
    Text1_->setObjectName(QStringLiteral("Text1"));
    Text1_->setAccessibleName(QStringLiteral("Nova jedinica mere"));
    Text1_->setMaxLength(kNameLimit);
    row->addWidget(Text1_, 1);
}

void frmJM::buildButtons(QVBoxLayout* column) {
    const char* const captions[] = {"Dodaj",        "&Promeni...", "&Izbrisi",
                                    "Izbrisi &Sve", "&Azuriraj",   "Zatvori"};
    for (int i = 0; i < kButtons; ++i) {
        auto* button = new QPushButton(QString::fromLatin1(captions[i]), this);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(QString(button->text()).remove(QLatin1Char('&')));
        button->setAutoDefault(false);  // Enter in the list presses nothing
        if (i == kChange) {
            column->addSpacing(8);
        }
        if (i == kClose) {
            column->addStretch(1);
        }
        column->addWidget(button);
        Command1_[static_cast<size_t>(i)] = button;
    }
}

void frmJM::connectControls() {
    connect(Command1_[kAdd], &QPushButton::clicked, this, &frmJM::addUnit);
    connect(Command1_[kChange], &QPushButton::clicked, this, &frmJM::changeUnit);
    connect(Command1_[kDelete], &QPushButton::clicked, this, &frmJM::deleteUnit);
    connect(Command1_[kDeleteAll], &QPushButton::clicked, this, &frmJM::deleteAllUnits);
    connect(Command1_[kRefresh], &QPushButton::clicked, this, [this] { Sort(RefreshOnly, false); });
    connect(Command1_[kClose], &QPushButton::clicked, this, &frmJM::reject);
    connect(Text1_, &QLineEdit::textChanged, this,
            [this] { Command1_[kAdd]->setEnabled(!Text1_->text().trimmed().isEmpty()); });
    connect(List1_, &platform::ListBox::clicked, this, &frmJM::updateButtons);
    connect(List1_, &platform::ListBox::contextMenuAsked, this, &frmJM::showMenu);
    List1_->installEventFilter(this);
    Text1_->installEventFilter(this);
    platform::enterPressesButtons(this);
}

void frmJM::Display() {
    if (!loaded_) {
        loaded_ = true;
        load();
        Text1_->setFocus();
    }
    exec();
}

void frmJM::load() {
    moveToPlace(this, settings::text(settings::units.WindowData));
    cP_ = new platform::PopupMenu(this);
    connect(cP_, &platform::PopupMenu::click, this, &frmJM::cP_Click);
    if (const QString failure = CreateMenu(); !failure.isEmpty()) {
        box(this, QStringLiteral("Neocekivana greska prilikom stvaranja PopUp menija:\n\n") + failure,
            BoxIcon::Critical);
    }
    Sorted = settings::boolean(settings::units.Sorted);
    SortedHow = settings::text(settings::units.SortedHow);
    if (!Sorted) {
        Sort(RefreshOnly, false);
    } else {
        Sort(SortedHow == QLatin1String("ASC") ? Ascending : Descending, true);
    }
}

void frmJM::Unload() {
    if (!loaded_ || unloaded_) {
        return;
    }
    unloaded_ = true;
    delete cP_;
    cP_ = nullptr;
    Trap step;  // an order that cannot be kept must not disturb the work
    step([&] { settings::setInteger(settings::units.Sorted, Sorted ? 1 : 0); });
    step([&] { settings::setText(settings::units.SortedHow, SortedHow); });
    step([&] { settings::setText(settings::units.WindowData, placeOf(this)); });
}

QString frmJM::CreateMenu() {
    Trap step;
    step([&] { cP_->clear(); });
    for (const MenuLine& line : menuLines()) {
        step([&] {
            cP_->addItem(QString::fromLatin1(line.caption), {}, {}, true, QString::fromLatin1(line.key));
        });
    }
    step([&] { cP_->store(kMenu); });
    if (!step.failed()) {
        return {};
    }
    return QStringLiteral("%1 Prog. linija: %2; frmJM -> CreateMenu procedura.")
        .arg(step.line())
        .arg(step.codeLine());
}

// The list --------------------------------------------------------------------------------------------------

void frmJM::RefreshList(const QString& selectName, bool reset) {
    if (reset) {
        Sorted = false;
        SortedHow = QStringLiteral("ASC");
    }
    Data1_->DatabaseName = databasePath();
    const platform::Selection units = platform::Selection::all(QStringLiteral("JM"));
    Data1_->select(Sorted ? units.orderedBy(QStringLiteral("Naziv ") + SortedHow) : units);
    if (const QString failure = FillListBox(selectName); !failure.isEmpty()) {
        box(this,
            QStringLiteral("Neocekivana greska prilikom popunjavanja liste jedinica mera:\n\n") + failure,
            BoxIcon::Exclamation);
    }
    if (List1_->isVisible()) {
        List1_->setFocus();
    }
    updateButtons();
}

void frmJM::addRow(const dao::Recordset& rows) {
    List1_->addString(textOf(rows["Naziv"]), rows["AID"].asLong());
}

// A unit that somebody deletes meanwhile costs its own line only.
QString frmJM::FillListBox(const QString& selectName) {
    Trap step;
    List1_->resetContent();
    step([&] { Data1_->Refresh(); });
    bool goesOn = false;
    dao::Recordset rows = Data1_->Recordset();
    if (Data1_->isOpen()) {
        step([&] { goesOn = !rows.EOF(); });
    }
    while (goesOn) {
        step([&] { addRow(rows); });
        goesOn = false;
        step([&] {
            rows.MoveNext();
            goesOn = !rows.EOF() && step.number() != dao::errLocked;
        });
    }
    if (List1_->count() > 0) {
        step([&] { Data1_->MoveFirst(); });
    }
    if (!selectName.isEmpty()) {
        const int row = List1_->findString(selectName);
        if (row >= 0) {
            List1_->setCurSel(row);
            List1_->setTopIndex(row);
        }
    }
    if (!step.failed()) {
        return {};
    }
    return QStringLiteral("%1\nLinija koda: %2; frmJM -> FillListBox()")
        .arg(step.line())
        .arg(step.codeLine());
}

void frmJM::Sort(int mode, bool force) {
    const QString remembered = List1_->selectedText();
    if (mode == Unsorted) {
        List1_->setToolTip(QString());
    }
    if (mode == Ascending || mode == Descending) {
        const Order& order = mode == Ascending ? kAscending : kDescending;
        const QString how = QString::fromLatin1(order.how);
        if (Sorted && SortedHow == how && !force) {
            box(this, QString::fromLatin1(order.already), BoxIcon::Information);
            return;
        }
        Sorted = true;
        SortedHow = how;
        List1_->setToolTip(QString::fromLatin1(order.tip));
    }
    RefreshList(remembered, mode == Unsorted);
}

bool frmJM::hasRows() const {
    return List1_->count() > 0;
}

bool frmJM::hasSelection() const {
    return hasRows() && List1_->curSel() >= 0;
}

void frmJM::updateButtons() {
    Command1_[kAdd]->setEnabled(!Text1_->text().trimmed().isEmpty());
    Command1_[kChange]->setEnabled(hasSelection());
    Command1_[kDelete]->setEnabled(hasSelection());
    Command1_[kDeleteAll]->setEnabled(hasRows());
}

bool frmJM::isNotAscending() const {
    return !Sorted || SortedHow != QLatin1String(kAscending.how);
}

bool frmJM::isNotDescending() const {
    return !Sorted || SortedHow == QLatin1String(kAscending.how);
}

void frmJM::showMenu(const QPoint& globalPosition) {
    cP_->restore(kMenu);
    for (const MenuLine& line : menuLines()) {
        if (line.rule != nullptr) {
            cP_->setEnabled(QString::fromLatin1(line.key), (this->*line.rule)());
        }
    }
    cP_->show(globalPosition);
}

void frmJM::cP_Click(int item) {
    const QString key = cP_->keyOf(item);
    for (const MenuLine& line : menuLines()) {
        if (line.key != nullptr && key == QLatin1String(line.key)) {
            (this->*line.action)();
            return;
        }
    }
}

bool frmJM::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (watched == Text1_ && platform::isEnter(key)) {
            platform::pressTab(Text1_);
            return true;
        }
        if (watched == List1_ && key.modifiers() == Qt::NoModifier &&
            (key.key() == Qt::Key_F5 || key.key() == Qt::Key_F8)) {
            Sort(key.key() == Qt::Key_F5 ? RefreshOnly : Unsorted, false);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

// Commands --------------------------------------------------------------------------------------------------

void frmJM::addUnit() {
    const QString name = Text1_->text().trimmed();
    if (name.isEmpty()) {
        return;
    }
    if (row_search::hasName(Data1_->Recordset(), kName, name)) {
        box(this, kDuplicate, BoxIcon::Exclamation);
    } else {
        storeUnit(name);
    }
    Text1_->clear();
    updateButtons();
}

void frmJM::storeUnit(const QString& name) {
    Trap step;
    step([&] { Data1_->AddNew(); });
    if (!step.failed()) {
        step([&] { Data1_->Recordset().Fields("Naziv") = name.toStdString(); });
    }
    // A unit is in the list only when it is in the table.
    if (!step.failed()) {
        step([&] { Data1_->Recordset().Update(); });
    }
    if (step.failed()) {
        tellEngine(this, "Neocekivana greska prilikom dodavanja jedinice mere u bazu podataka:");
        giveUpEdit();
        return;
    }
    step([&] { Data1_->setBookmark(Data1_->Recordset().LastModified()); });
    const int row = List1_->addString(name);
    step([&] { List1_->setItemData(row, Data1_->Recordset()["AID"].asLong()); });
    List1_->setCurSel(row);
}

// Makes the selected unit's record the current one. A failure is left standing in `step`. False: somebody has
// deleted it meanwhile, and the person has been told so with `goneText`.
bool frmJM::findUnit(const char* goneText, Trap& step) {
    const QString wanted = QStringLiteral("AID=%1").arg(List1_->selectedData());
    const bool isGone = row_search::find(Data1_->Recordset(), wanted, step) == row_search::Outcome::Nothing;
    if (isGone) {
        box(this, QString::fromLatin1(goneText), BoxIcon::Exclamation);
    }
    return !isGone;
}

void frmJM::giveUpEdit() {
    Trap step;  // there may be nothing to give up
    step([&] { Data1_->CancelUpdate(); });
}

void frmJM::changeUnit() {
    if (!hasSelection()) {
        return;
    }
    const QString name = platform::inputBox(QStringLiteral("Promenite naziv jedinice mere:"),
                                            QStringLiteral("Jedinica mere"), List1_->selectedText(), this)
                             .value_or(QString())
                             .trimmed();
    if (name.isEmpty()) {
        return;
    }
    Trap step;
    if (!findUnit(
            "Jedinica mere koju pokusavate da promenite nije pronadjena u bazi podataka. Moguce je da je "
            "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
            step)) {
        return;
    }
    if (step.failed() || !row_search::hasName(Data1_->Recordset(), kName, name)) {
        writeName(name, step);
    } else {
        box(this, kDuplicate, BoxIcon::Exclamation);
    }
    updateButtons();
}

// The search for the name found nothing, so the row found by its number is still the current one. Where that
// one could not be looked for, nothing is written.
void frmJM::writeName(const QString& name, Trap& step) {
    dao::Recordset rows = Data1_->Recordset();
    if (!step.failed()) {
        step([&] {
            rows.Edit();
            rows.Fields("Naziv") = name.toStdString();
            rows.Update();
        });
    }
    if (step.failed()) {
        tellEngine(this, "Neocekivana greska prilikom promene jedinice mere u bazi podataka:");
        giveUpEdit();
        return;
    }
    step([&] { Data1_->setBookmark(rows.LastModified()); });
    List1_->setText(List1_->curSel(), name);
}

void frmJM::deleteUnit() {
    if (!hasSelection()) {
        return;
    }
    if (AskBeforeDelete &&
        box(this,
            QStringLiteral("Upravo se spremate da izbrisete jedinicu mere iz baze podataka. Nastavljate li?"),
            BoxIcon::Exclamation, BoxButtons::YesNo) != BoxAnswer::Yes) {
        return;
    }
    Trap step;
    if (!findUnit(
            "Jedinica mere koju pokusavate da izbrisete nije pronadjena u bazi podataka. Moguce je da je "
            "neko od korisnika vec obrisao. Azurirajte podatke i pokusajte ponovo.",
            step)) {
        return;
    }
    if (!step.failed()) {
        step([&] { Data1_->Delete(); });
    }
    if (step.failed()) {
        tellEngine(this, "Neocekivana greska prilikom brisanja jedinice mere u bazi podataka:");
    } else {
        step([&] {
            if (Data1_->Recordset().RecordCount() > 0) {
                Data1_->MoveFirst();
            }
        });
        List1_->deleteString(List1_->curSel());
        List1_->setCurSel(0);
    }
    updateButtons();
}

void frmJM::deleteAllUnits() {
    if (!hasRows()) {
        return;
    }
    if (AskBeforeDelete &&
        box(this,
            QStringLiteral(
                "Upravo se spremate da izbrisete sve jedinice mere iz baze podataka. Nastavljate li?"),
            BoxIcon::Exclamation, BoxButtons::YesNo) != BoxAnswer::Yes) {
        return;
    }
    Trap step;
    const auto tellFailure = [this] {
        tellEngine(this, "Neocekivana greska prilikom brisanja svih jedinica mera iz baze podataka:");
    };
    if (executeWhole(Data1_->Database(), QStringLiteral("DELETE * FROM JM"), step, tellFailure) >= 0) {
        List1_->resetContent();
    }
    updateButtons();
}
