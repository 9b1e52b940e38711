// Data, filling, selecting, sorting.

#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScopeGuard>
#include <QTextEdit>

#include "catalogue/frmKonfiguratorEx.h"
#include "data/session.h"
#include "platform/controls/pictures.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "shell/modMain.h"
#include "shell/rate_term.h"

using platform::BoxIcon;
using platform::SortTag;
using platform::Trap;

namespace {

constexpr const char* kTables[] = {"Grupe", "Proizvodjaci"};
constexpr const char* kFields[] = {"Grupa", "Proizvodjac"};
constexpr const char* kCountLabels[] = {"Grupa proizvoda", "Proizvodjaca proizvoda", "Proizvoda"};
constexpr const char* kFillErrors[] = {
    "Neocekivana greska prilikom popunjavanja liste grupa kompjuterske opreme:",
    "Neocekivana greska prilikom popunjavanja liste proizvodjaca kompjuterske opreme:",
    "Neocekivana greska prilikom popunjavanja liste proizvoda:"};
constexpr int kPaintPause = 30;  // ms between two pictures of the progress bar

QString text(const dao::Field& field) {
    return QString::fromStdString(field.Value().textRef());
}

QString fillErrorOf(const Trap& step, const char* procedure) {
    if (!step.failed())
        return {};
    return QStringLiteral("%1 ; Code line no.: %2\nOccured in procedure %3 of Form frmKonfiguratorEx")
        .arg(step.line())
        .arg(step.codeLine())
        .arg(QLatin1String(procedure));
}

QHash<QString, QIcon> sortArrows() {
    return {{QStringLiteral("ASC"), platform::icon(QStringLiteral("SortUp"))},
            {QStringLiteral("DESC"), platform::icon(QStringLiteral("SortDown"))},
            {QStringLiteral("dummy"), platform::icon(QStringLiteral("Dummy"))}};
}

// The fields of a product's row, looked up once for the whole list.
struct ProductFields {
    explicit ProductFields(const dao::Recordset& rows)
        : id(rows.Fields("ID")),
          maker(rows.Fields("Proizvodjac")),
          name(rows.Fields("Naziv")),
          description(rows.Fields("Opis")),
          price(rows.Fields("Cena1")),
          stock(rows.Fields("Stanje")),
          note(rows.Fields("Napomena")),
          unit(rows.Fields("JM")) {}

    platform::ListItem item() const {
        platform::ListItem row;
        row.Key = QLatin1Char('K') + QString::number(id.Value().asLong());
        row.Text = text(maker);
        const bool noStock = stock.Value().isNull();
        const float pieces = noStock ? 0.0F : stock.Value().asSingle();
        row.subItems = {
            text(name), text(description),
            price.Value().isNull() ? QString() : platform::formatGrouped(price.Value().asDouble()),
            noStock ? QString() : platform::textOfSingle(pieces)};
        row.Tag = text(note) + QLatin1Char('|') + text(unit);
        row.SmallIcon = pieces <= 0 ? QStringLiteral("stanjenula") : QStringLiteral("stanjeok");
        return row;
    }

    dao::Field id, maker, name, description, price, stock, note, unit;
};

}  // namespace

SortTag frmKonfiguratorEx::GetSortTagData(const QString& tag) {
    Trap step;
    SortTag sort{false, QString(), QStringLiteral("ASC")};
    step([&] { sort = platform::splitSortTag(tag); });
    if (step.failed())
        platform::showBox({.text = QStringLiteral("Neocekivana greska prilikom odredjivanja svojstava "
                                                  "sortiranja:\n\n%1\nLinija koda: %2")
                                       .arg(step.line())
                                       .arg(step.codeLine()),
                           .title = QStringLiteral("frmKonfigurator -> GetSortTagData(%1)").arg(tag),
                           .icon = BoxIcon::Exclamation,
                           .help = showHelpContents},
                          this);
    return sort;
}

QString frmKonfiguratorEx::SetSortTagData(bool sorted, const QString& field, const QString& order) {
    Trap step;
    QString tag = QStringLiteral("0Naziv0");
    step([&] { tag = platform::makeSortTag({sorted, field, order}); });
    if (step.failed())
        platform::showBox({.text = QStringLiteral("Neocekivana greska prilikom dodeljivanja svojstva "
                                                  "sortiranja:\n\n%1\nLinija koda: %2")
                                       .arg(step.line())
                                       .arg(step.codeLine()),
                           .title = QStringLiteral("frmKonfiguratorEx -> SetSortTagData"),
                           .icon = BoxIcon::Exclamation,
                           .help = showHelpContents},
                          this);
    return tag;
}

QString frmKonfiguratorEx::recordSource(int index, const SortTag& sort) {
    if (index == kProducts)
        return productSource(sort);
    QString statement = QStringLiteral("SELECT * FROM ") + QLatin1String(kTables[index]);
    if (sort.sorted)
        statement += QStringLiteral(" ORDER BY %1 %2").arg(QLatin1String(kFields[index]), sort.order);
    return statement;
}

QString frmKonfiguratorEx::productSource(const SortTag& sort) {
    const platform::ListBox& groups = *List1[kGroups];
    const platform::ListBox& makers = *List1[kManufacturers];
    const QString price = QStringLiteral("Oprema.Cena*") + rateTerm();
    QString source =
        QStringLiteral(
            "SELECT Proizvodjaci.Proizvodjac, Oprema.ID, Oprema.IDGrupe, Oprema.IDProizvodjaca, "
            "Oprema.Naziv, Oprema.Opis, Oprema.Stanje, Oprema.Cena, %1 AS Cena1, Oprema.Napomena, "
            "Oprema.JM FROM Proizvodjaci LEFT JOIN Oprema ON Proizvodjaci.ID = Oprema.IDProizvodjaca "
            "WHERE (((Oprema.IDGrupe)=%2))")
            .arg(price)
            .arg(groups.selectedData());
    if (makers.curSel() >= 0 && !PrikaziSveProizvodjace)
        source += QStringLiteral(" AND ((Oprema.IDProizvodjaca)=%1)").arg(makers.selectedData());
    if (PrikaziStanjaVecaOdNule)
        source += QStringLiteral(" AND Oprema.Stanje>0");
    if (sort.sorted) {
        const QString term = sort.field == QLatin1String("Cena1") ? price : sort.field;
        source += QStringLiteral(" ORDER BY %1 %2").arg(term, sort.order);
    }
    return source;
}

void frmKonfiguratorEx::showSortIcons(const SortTag& sort) {
    if (!sort.sorted) {
        ListView1->setColumnImages({});
        return;
    }
    ListView1->setColumnImages(sortArrows());
    for (int column = 1; column <= ListView1->columnCount(); ++column) {
        if (ListView1->columnKey(column) == sort.field)
            ListView1->setColumnIcon(column, sort.order.toUpper());
        else if (!ListView1->columnIcon(column).isEmpty())
            ListView1->setColumnIcon(column, QStringLiteral("dummy"));
    }
}

void frmKonfiguratorEx::DataUpdate(int index, const QString& selectKey, bool reset) {
    if (index < 0 || index >= kPanes)
        return;
    const auto pane = static_cast<size_t>(index);
    platform::DataControl& source = *Data1[pane];
    source.DatabaseName = databasePath();
    const QString password = BuildDatabasePassword();
    if (!source.Connect.contains(password))
        source.Connect += QStringLiteral(";Pwd=") + password;

    SortTag sort = GetSortTagData(SortTagOf[pane]);
    QString remembered;
    if (index < kListPanes)
        remembered = List1[pane]->selectedText();
    else if (const platform::ListItem* item = ListView1->selectedItem())
        remembered = item->Key;
    if (reset) {
        sort.order = QStringLiteral("ASC");
        sort.field = QStringLiteral("Naziv");
    }
    if (index == kProducts)
        showSortIcons(sort);
    source.RecordSource = recordSource(index, sort);

    Trap step;
    step([&] { source.Refresh(); });
    step([] { dao::DBEngine::Idle(dao::dbRefreshCache); });
    const char* const filler = index < kListPanes ? "FillListBox" : "FillListView";
    QString error = fillErrorOf(step, filler);  // why there are no records, rather than that there are none
    const QString fillError =
        index < kListPanes ? FillListBox(index, QLatin1String(kFields[index])) : FillListView();
    if (error.isEmpty())
        error = fillError;
    if (!error.isEmpty())
        showFillError(index, error);
    selectAfterFill(index, selectKey.isEmpty() ? remembered : selectKey);
    if (index == kProducts)
        clickProduct();
    ToolbarUpdate();
}

void frmKonfiguratorEx::showFillError(int index, const QString& error) {
    box(QLatin1String(kFillErrors[index]) + QStringLiteral("\n\n") + error, BoxIcon::Exclamation);
}

void frmKonfiguratorEx::selectAfterFill(int index, const QString& key) {
    if (index < kListPanes) {
        platform::ListBox& list = *List1[static_cast<size_t>(index)];
        const int row = key.isEmpty() ? (list.count() > 0 ? 0 : -1) : list.findString(key);
        list.setCurSel(row);
        list.setTopIndex(row);
    } else if (key.isEmpty()) {
        if (ListView1->count() > 0)
            ListView1->select(1);
    } else if (ListView1->hasItem(key)) {
        ListView1->select(key);
    }
}

QString frmKonfiguratorEx::FillListBox(int index, const QString& field) {
    const auto pane = static_cast<size_t>(index);
    List1[pane]->resetContent();
    Trap step;
    dao::Recordset rows = Data1[pane]->Recordset();
    std::optional<dao::Field> name, id;
    step([&] { name.emplace(rows.Fields(field.toStdString())); });
    step([&] { id.emplace(rows.Fields("ID")); });
    QList<std::pair<QString, qint32>> all;
    if (name && id)
        fillRows(index, step, [&] { all.append({text(*name), id->Value().asLong()}); });
    setCountText(index, all.size());
    List1[pane]->addStrings(std::move(all));
    return fillErrorOf(step, "FillListBox");
}

// The list keeps its place, and with it the focus: it is only not drawn while its rows come in.
QString frmKonfiguratorEx::FillListView() {
    ListView1->clearItems();
    Trap step;
    std::optional<ProductFields> fields;
    step([&] { fields.emplace(Data1[kProducts]->Recordset()); });
    ListView1->setUpdatesEnabled(false);
    const auto drawn = qScopeGuard([this] { ListView1->setUpdatesEnabled(true); });
    if (fields)
        fillRows(kProducts, step, [&] { ListView1->addItem(fields->item()); });
    setCountText(kProducts, ListView1->count());
    if (ListView1->count() == 0)
        Text1_2->clear();
    return fillErrorOf(step, "FillListView");
}

// A row that somebody deletes meanwhile costs its own line only; that it failed is noted. A file that
// somebody holds is not asked again for each of thousands of rows.
void frmKonfiguratorEx::fillRows(int index, Trap& step, const std::function<void()>& takeRow) {
    dao::Recordset rows = Data1[static_cast<size_t>(index)]->Recordset();
    bool goesOn = false;
    step([&] { goesOn = !(rows.BOF() && rows.EOF()); });
    if (!goesOn)
        return;
    qint64 count = 0;
    step([&] { rows.MoveLast(); });
    step([&] { rows.MoveFirst(); });
    step([&] { count = rows.RecordCount(); });
    beginProgress(count);
    const auto end = qScopeGuard([this] { endProgress(); });
    while (goesOn) {
        step(takeRow);
        stepProgress();
        goesOn = false;
        step([&] {
            rows.MoveNext();
            goesOn = !rows.EOF() && step.number() != dao::errLocked;
        });
    }
    step([&] { rows.MoveFirst(); });
}

void frmKonfiguratorEx::beginProgress(qint64 count) {
    Picture1_5->hide();
    ProgressBar1->setMaximum(static_cast<int>(count));
    ProgressBar1->setValue(0);
    StatusBar1->coverPanel(QStringLiteral("progress"), ProgressBar1);
    ProgressBar1->setUpdatesEnabled(false);
    progressPainted_->start();
    ShowStatusText(GetResString(10508), false);
}

// Drawing the bar for each of thousands of records would take longer than reading them.
void frmKonfiguratorEx::stepProgress() {
    ProgressBar1->setValue(ProgressBar1->value() + 1);
    if (progressPainted_->elapsed() < kPaintPause)
        return;
    progressPainted_->start();
    ProgressBar1->setUpdatesEnabled(true);
    ProgressBar1->repaint();
    ProgressBar1->setUpdatesEnabled(false);
}

void frmKonfiguratorEx::endProgress() {
    ShowStatusText(QString(), false);
    ProgressBar1->setUpdatesEnabled(true);
    ProgressBar1->setValue(0);
    StatusBar1->uncover(ProgressBar1, this);
    Picture1_5->show();
}

void frmKonfiguratorEx::setCountText(int index, qint64 count) {
    const QString label = QLatin1String(kCountLabels[index]);
    countText_[static_cast<size_t>(index)] =
        count > 0 ? GetResString(10510, {{QStringLiteral("|1"), label},
                                         {QStringLiteral("|2"), QString::number(count)}})
                  : GetResString(10509, {{QStringLiteral("|1"), label}});
}

void frmKonfiguratorEx::showCountText(int index) {
    ShowStatusText(countText_[static_cast<size_t>(index)], true);
}

void frmKonfiguratorEx::clickList(int index) {
    const auto pane = static_cast<size_t>(index);
    showCountText(index);
    const QString selected = List1[pane]->selectedText();
    setSearchText(index, selected);
    if (selected != lastSelection_[pane]) {
        lastSelection_[pane] = selected;
        if (index != kManufacturers || !PrikaziSveProizvodjace)
            DataUpdate(kProducts, QString(), false);
    }
    ToolbarUpdate();
}

void frmKonfiguratorEx::clickProduct() {
    const platform::ListItem* item = ListView1->selectedItem();
    if (item) {
        const qsizetype bar = item->Tag.lastIndexOf(QLatin1Char('|'));  // a note may hold one, too
        Napomena = item->Tag.left(bar);
        JM = item->Tag.mid(bar + 1);
        Text1_2->setPlainText(Napomena.isEmpty() ? item->SubItems(2) : Napomena);
    } else {
        Napomena.clear();
        JM.clear();
        Text1_2->clear();
    }
    ToolbarUpdate();
}

void frmKonfiguratorEx::clearProductList() {
    ListView1->clearItems();
    Text1_2->clear();
}

void frmKonfiguratorEx::clickColumn(int column) {
    if (ListView1->count() == 0)
        return;
    ListView1->setColumnImages(sortArrows());
    SortTag sort = GetSortTagData(SortTagOf[kProducts]);
    const QString key = ListView1->columnKey(column);
    if (key != sort.field) {
        if (const int old = ListView1->columnOf(sort.field); sort.sorted && old > 0)
            ListView1->setColumnIcon(old, QStringLiteral("dummy"));
        sort.order = QStringLiteral("ASC");
    } else {
        sort.order = sort.order == QLatin1String("ASC") ? QStringLiteral("DESC") : QStringLiteral("ASC");
    }
    SortTagOf[kProducts] = SetSortTagData(true, key, sort.order);
    const platform::ListItem* item = ListView1->selectedItem();
    DataUpdate(kProducts, item ? item->Key : QString(), false);
}

void frmKonfiguratorEx::RefreshProduct(bool reset) {
    if (reset)
        SortTagOf[kProducts] = QStringLiteral("0Naziv0");
    const platform::ListItem* item = ListView1->selectedItem();
    DataUpdate(kProducts, item ? item->Key : QString(), reset);
    focusPane(kProducts);
}

void frmKonfiguratorEx::SortList(int mode, bool force) {
    sortList(focusedListPane(), mode, force);
}

void frmKonfiguratorEx::sortList(int index, int mode, bool force) {
    if (index < 0)
        return;
    const auto pane = static_cast<size_t>(index);
    const QString remembered = List1[pane]->selectedText();
    SortTag sort = GetSortTagData(SortTagOf[pane]);
    if (mode == kNoSort) {
        List1[pane]->setToolTip(QString());
        sort = {false, QString(), QStringLiteral("ASC")};
    } else if (mode == kAscending || mode == kDescending) {
        const QString order = mode == kAscending ? QStringLiteral("ASC") : QStringLiteral("DESC");
        const QString way = mode == kAscending ? QStringLiteral("rastucim") : QStringLiteral("opadajucim");
        if (sort.sorted && sort.order == order && !force) {
            box(QStringLiteral("Lista je vec sortirana po %1 nazivima.").arg(way), BoxIcon::Information);
            return;
        }
        sort.sorted = true;
        sort.order = order;
        List1[pane]->setToolTip(QStringLiteral("Lista je sortirana po %1 nazivima.").arg(way));
    }
    SortTagOf[pane] = SetSortTagData(sort.sorted, QLatin1String(kFields[index]), sort.order);
    DataUpdate(index, remembered, mode == kNoSort);
    focusPane(index);
}

void frmKonfiguratorEx::focusPane(int index) {
    QWidget* list = index < kListPanes ? static_cast<QWidget*>(List1[static_cast<size_t>(index)]) : ListView1;
    if (list->isVisible())
        list->setFocus();
}

int frmKonfiguratorEx::focusedListPane(bool orSearchBox) const {
    const QWidget* focus = focusWidget();
    for (int i = 0; focus && i < kListPanes; ++i) {
        const auto pane = static_cast<size_t>(i);
        if (focus == List1[pane] || (orSearchBox && focus == Text1[pane]))
            return i;
    }
    return -1;
}
