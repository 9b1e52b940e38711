#include "catalogue/product_pane.h"

#include <QScopeGuard>
#include <QTextEdit>
#include <QVBoxLayout>
#include <memory>

#include "catalogue/pane_layout.h"
#include "catalogue/product_rows.h"
#include "catalogue/sort_state.h"
#include "common/window_helpers.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_view.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"

using platform::SortTag;
using platform::Trap;

namespace {

constexpr int kPane = 2;  // the number of its controls
constexpr CataloguePane::Words kWords{
    "PROIZVODI", "Proizvoda", "Neocekivana greska prilikom popunjavanja liste proizvoda:", "FillListView"};

QHash<QString, QIcon> sortArrows() {
    return {{QStringLiteral("ASC"), platform::icon(QStringLiteral("SortUp"))},
            {QStringLiteral("DESC"), platform::icon(QStringLiteral("SortDown"))},
            {QStringLiteral("dummy"), platform::icon(QStringLiteral("Dummy"))}};
}

}  // namespace

ProductPane::ProductPane(const ListPane& groups, const ListPane& manufacturers, QWidget* window,
                         CatalogueStatus& status)
    : CataloguePane(kWords, window, status),
      choice_(groups, manufacturers, status),
      surface_(new QWidget(window)),
      list_(new platform::ListView(surface_)),
      detail_(surface_) {
    surface_->setObjectName(arrayName("Picture1", kPane));
    list_->setObjectName(QStringLiteral("ListView1"));
    list_->setAccessibleName(QStringLiteral("Proizvodi"));
    addColumns(*list_, productColumns());
    list_->columns().setMenuTitle(QLatin1String(kSerbianColumnMenu));
    list_->setSmallIcons({{QStringLiteral("stanjeok"), platform::icon(QStringLiteral("StockOk"))},
                          {QStringLiteral("stanjenula"), platform::icon(QStringLiteral("StockNone"))}});
    QVBoxLayout* column = paneLayout(surface_, kPane, "&Proizvodi:", list_);
    column->addWidget(list_, 1);
    column->addWidget(detail_.box());
    connect(list_, &platform::ListView::itemClicked, this, [this] { click(); });
    connect(list_, &platform::ListView::columnClicked, this, &ProductPane::clickColumn);
}

QWidget* ProductPane::list() const {
    return list_;
}

bool ProductPane::hasRows() const {
    return list_->count() > 0;
}

bool ProductPane::hasSelection() const {
    return list_->selectedIndex() > 0;
}

bool ProductPane::hasGroupAndManufacturer() const {
    return choice_.hasGroupAndManufacturer();
}

std::optional<ProductRow> ProductPane::selected() const {
    const platform::ListItem* item = list_->selectedItem();
    return item ? std::optional<ProductRow>(*item) : std::nullopt;
}

// Filling ---------------------------------------------------------------------------------------------------

QString ProductPane::selection() const {
    const platform::ListItem* item = list_->selectedItem();
    return item ? item->Key : QString();
}

QString ProductPane::statement(const SortTag& sort) const {
    return choice_.statement(sort);
}

void ProductPane::showSort(const SortTag& sort) {
    if (!sort.sorted) {
        list_->columns().setImages({});
        return;
    }
    list_->columns().setImages(sortArrows());
    for (int column = 1; column <= list_->columns().count(); ++column) {
        if (list_->columns().key(column) == sort.field) {
            list_->columns().setIcon(column, sort.order.toUpper());
        } else if (!list_->columns().icon(column).isEmpty()) {
            list_->columns().setIcon(column, QStringLiteral("dummy"));
        }
    }
}

// The list keeps its place, and with it the focus: it is only not drawn while its rows come in.
QString ProductPane::fill() {
    list_->clearItems();
    Trap step;
    std::optional<ProductFields> fields;
    step([&] { fields.emplace(data().Recordset()); });
    list_->setUpdatesEnabled(false);
    const auto drawn = qScopeGuard([this] { list_->setUpdatesEnabled(true); });
    if (fields) {
        const auto rows = std::make_shared<ProductRows>();
        fillRows(step, [&] { rows->take(*fields); });
        list_->setLazyItems(
            rows->count(), [rows](int index) { return rows->row(index); },
            [rows](const QString& key) { return rows->find(key); });
    }
    setCount(list_->count());
    if (list_->count() == 0) {
        detail_.clear();
    }
    return fillErrorOf(step);
}

void ProductPane::select(const QString& key) {
    if (key.isEmpty()) {
        if (list_->count() > 0) {
            list_->select(1);
        }
    } else if (list_->hasItem(key)) {
        list_->select(key);
    }
}

// Choosing and sorting --------------------------------------------------------------------------------------

void ProductPane::click() {
    detail_.show(selected());
    emit changed();
}

void ProductPane::clear() {
    list_->clearItems();
    detail_.clear();
}

void ProductPane::take(int position) {
    list_->removeItem(position);
    if (list_->count() > 0) {
        list_->select(position <= list_->count() ? position : 1);
        list_->ensureVisible(list_->selectedIndex());
        click();
    } else {
        clear();
    }
    setCount(list_->count());
    showCount();
    emit changed();
}

void ProductPane::clickColumn(int column) {
    if (list_->count() == 0) {
        return;
    }
    const SortTag old = readSortTag(sortTag, window());
    const QString key = list_->columns().key(column);
    const bool turns = key == old.field && old.order == QLatin1String("ASC");
    sortTag = writeSortTag({true, key, turns ? QStringLiteral("DESC") : QStringLiteral("ASC")}, window());
    update(selection(), false);
}

void ProductPane::refresh(bool reset) {
    if (reset) {
        sortTag = QStringLiteral("0Naziv0");
    }
    update(selection(), reset);
    takeFocus();
}
