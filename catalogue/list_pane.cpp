#include "catalogue/list_pane.h"

#include <QLineEdit>
#include <QVBoxLayout>
#include <utility>

#include "catalogue/catalogue_status.h"
#include "catalogue/catalogue_switch.h"
#include "catalogue/pane_layout.h"
#include "catalogue/type_ahead.h"
#include "common/window_helpers.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/system/trap.h"

using platform::SortTag;
using platform::Trap;

const ListPane::Facts& ListPane::groups() {
    static constexpr Facts kGroups{
        .index = 0,
        .table = "Grupe",
        .field = "Grupa",
        .title = "&Grupe:",
        .accessible = "Grupe",
        .search = "Trazi grupu",
        .isShownWithProducts = false,
        .words = {
            "GRUPE", "Grupa proizvoda",
            "Neocekivana greska prilikom popunjavanja liste grupa kompjuterske opreme:", "FillListBox"}};
    return kGroups;
}

const ListPane::Facts& ListPane::manufacturers() {
    static constexpr Facts kManufacturers{
        .index = 1,
        .table = "Proizvodjaci",
        .field = "Proizvodjac",
        .title = "P&roizvodjaci:",
        .accessible = "Proizvodjaci",
        .search = "Trazi proizvodjaca",
        .isShownWithProducts = true,
        .words = {"PROIZVODJACI", "Proizvodjaca proizvoda",
                  "Neocekivana greska prilikom popunjavanja liste proizvodjaca kompjuterske opreme:",
                  "FillListBox"}};
    return kManufacturers;
}

ListPane::ListPane(const Facts& facts, QWidget* window, CatalogueStatus& status)
    : CataloguePane(facts.words, window, status),
      facts_(facts),
      allManufacturers_(status.allManufacturers()) {
    build(window);
    if (facts.isShownWithProducts) {
        connect(&status.allManufacturers(), &CatalogueSwitch::refreshed, this, [this] {
            // Slanted names: the choice among them restricts nothing.
            QFont font = list_->font();
            font.setItalic(allManufacturers_.isOn());
            list_->setFont(font);
        });
    }
    connect(list_, &platform::ListBox::clicked, this, &ListPane::click);
    connect(search_, &TypeAhead::left, this, &ListPane::leave);
    connect(search_, &TypeAhead::matched, this, &ListPane::forget);
    connect(search_, &TypeAhead::changed, this, &ListPane::changed);
    connect(search_, &TypeAhead::entered, this, [this](int row) {
        takeFocus();
        if (row >= 0 && restricts()) {
            click();
        }
    });
}

void ListPane::build(QWidget* window) {
    surface_ = new QWidget(window);
    surface_->setObjectName(arrayName("Picture1", facts_.index));
    auto* box = new QLineEdit(surface_);
    box->setObjectName(arrayName("Text1", facts_.index));
    box->setAccessibleName(QLatin1String(facts_.search));
    list_ = new platform::ListBox(surface_);
    list_->setObjectName(arrayName("List1", facts_.index));
    list_->setAccessibleName(QLatin1String(facts_.accessible));
    search_ = new TypeAhead(box, list_, allManufacturers_);
    QVBoxLayout* column = paneLayout(surface_, facts_.index, facts_.title, box);
    column->addWidget(box);
    column->addWidget(list_, 1);
}

QWidget* ListPane::list() const {
    return list_;
}

bool ListPane::hasRows() const {
    return list_->count() > 0;
}

bool ListPane::hasSelection() const {
    return list_->curSel() >= 0;
}

bool ListPane::restricts() const {
    return !facts_.isShownWithProducts || !allManufacturers_.isOn();
}

// Filling ---------------------------------------------------------------------------------------------------

QString ListPane::selection() const {
    return list_->selectedText();
}

QString ListPane::statement(const SortTag& sort) const {
    QString statement = QStringLiteral("SELECT * FROM ") + QLatin1String(facts_.table);
    if (sort.sorted) {
        statement += QStringLiteral(" ORDER BY %1 %2").arg(QLatin1String(facts_.field), sort.order);
    }
    return statement;
}

QString ListPane::fill() {
    list_->resetContent();
    Trap step;
    dao::Recordset records = data().Recordset();
    std::optional<dao::Field> name, id;
    step([&] { name.emplace(records.Fields(facts_.field)); });
    step([&] { id.emplace(records.Fields("ID")); });
    QList<std::pair<QString, qint32>> all;
    if (name && id) {
        fillRows(step, [&] { all.append({textOf(*name), id->Value().asLong()}); });
    }
    setCount(all.size());
    list_->addStrings(std::move(all));
    return fillErrorOf(step);
}

void ListPane::select(const QString& key) {
    const int row = key.isEmpty() ? (list_->count() > 0 ? 0 : -1) : list_->findString(key);
    list_->setCurSel(row);
    list_->setTopIndex(row);
}

// Choosing --------------------------------------------------------------------------------------------------

void ListPane::click() {
    showCount();
    const QString selected = list_->selectedText();
    search_->setText(selected);
    if (selected != lastSelection_) {
        lastSelection_ = selected;
        if (restricts()) {
            emit productsWanted();
        }
    }
    emit changed();
}

void ListPane::remember() {
    lastSelection_ = list_->selectedText();
}

void ListPane::forget() {
    lastSelection_.reset();
}

// Whichever row is clicked next, the same one too, its products have to be read again.
void ListPane::leave() {
    list_->setCurSel(-1);
    forget();
    emit productsLeft();
}

// Sorting ---------------------------------------------------------------------------------------------------

void ListPane::sortBy(SortMode mode, bool force) {
    const QString remembered = list_->selectedText();
    SortTag sort = readSortTag(sortTag, window());
    if (mode == SortMode::NoSort) {
        list_->setToolTip(QString());
        sort = {false, QString(), QStringLiteral("ASC")};
    } else if (mode == SortMode::Ascending || mode == SortMode::Descending) {
        const bool isUp = mode == SortMode::Ascending;
        const QString order = isUp ? QStringLiteral("ASC") : QStringLiteral("DESC");
        const QString way = isUp ? QStringLiteral("rastucim") : QStringLiteral("opadajucim");
        if (sort.sorted && sort.order == order && !force) {
            box(window(), QStringLiteral("Lista je vec sortirana po %1 nazivima.").arg(way),
                platform::BoxIcon::Information);
            return;
        }
        sort.sorted = true;
        sort.order = order;
        list_->setToolTip(QStringLiteral("Lista je sortirana po %1 nazivima.").arg(way));
    }
    sortTag = writeSortTag({sort.sorted, QLatin1String(facts_.field), sort.order}, window());
    update(remembered, mode == SortMode::NoSort);
    takeFocus();
}

void ListPane::tellOrder() {
    const SortTag order = sort();
    if (order.sorted) {
        list_->setToolTip(order.order == QLatin1String("ASC")
                              ? QStringLiteral("Lista je sortirana po rastucim nazivima.")
                              : QStringLiteral("Lista je sortirana po opdajucim nazivima."));
    }
}
