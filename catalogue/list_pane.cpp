#include "catalogue/list_pane.h"

#include <QLineEdit>
#include <QVBoxLayout>
#include <utility>

#include "catalogue/catalogue_status.h"
#include "catalogue/catalogue_switch.h"
#include "catalogue/list_facts.h"
#include "catalogue/pane_layout.h"
#include "catalogue/type_ahead.h"
#include "common/window_helpers.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/system/trap.h"

using platform::SortTag;
using platform::Trap;

ListPane::ListPane(const ListFacts& facts, QWidget* window, CatalogueStatus& status)
    : CataloguePane(facts.words, window, status),
      facts_(facts),
      allManufacturers_(status.allManufacturers()),
      controls_(facts, allManufacturers_, window),
      order_(*this, *controls_.list, facts.field) {
    if (facts.isShownWithProducts) {
        connect(&status.allManufacturers(), &CatalogueSwitch::refreshed, this, [this] {
            // Slanted names: the choice among them restricts nothing.
            QFont font = rows().font();
            font.setItalic(allManufacturers_.isOn());
            rows().setFont(font);
        });
    }
    connect(&rows(), &platform::ListBox::clicked, this, &ListPane::click);
    connect(&search(), &TypeAhead::left, this, &ListPane::leave);
    connect(&search(), &TypeAhead::matched, this, &ListPane::forget);
    connect(&search(), &TypeAhead::changed, this, &ListPane::changed);
    connect(&search(), &TypeAhead::entered, this, [this](int row) {
        takeFocus();
        if (row >= 0 && restricts()) {
            click();
        }
    });
}

ListPane::Controls::Controls(const ListFacts& facts, const CatalogueSwitch& allManufacturers, QWidget* window)
    : surface(new QWidget(window)) {
    surface->setObjectName(arrayName("Picture1", facts.index));
    auto* box = new QLineEdit(surface);
    box->setObjectName(arrayName("Text1", facts.index));
    box->setAccessibleName(QLatin1String(facts.search));
    list = new platform::ListBox(surface);
    list->setObjectName(arrayName("List1", facts.index));
    list->setAccessibleName(QLatin1String(facts.accessible));
    search = new TypeAhead(box, list, allManufacturers);
    QVBoxLayout* column = paneLayout(surface, facts.index, facts.title, box);
    column->addWidget(box);
    column->addWidget(list, 1);
}

QWidget* ListPane::list() const {
    return controls_.list;
}

bool ListPane::hasRows() const {
    return rows().count() > 0;
}

bool ListPane::hasSelection() const {
    return rows().curSel() >= 0;
}

bool ListPane::restricts() const {
    return !facts_.isShownWithProducts || !allManufacturers_.isOn();
}

// Filling ---------------------------------------------------------------------------------------------------

QString ListPane::selection() const {
    return rows().selectedText();
}

QString ListPane::statement(const SortTag& sort) const {
    QString statement = QStringLiteral("SELECT * FROM ") + QLatin1String(facts_.table);
    if (sort.sorted) {
        statement += QStringLiteral(" ORDER BY %1 %2").arg(QLatin1String(facts_.field), sort.order);
    }
    return statement;
}

QString ListPane::fill() {
    rows().resetContent();
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
    rows().addStrings(std::move(all));
    return fillErrorOf(step);
}

void ListPane::select(const QString& key) {
    const int row = key.isEmpty() ? (rows().count() > 0 ? 0 : -1) : rows().findString(key);
    rows().setCurSel(row);
    rows().setTopIndex(row);
}

// Choosing --------------------------------------------------------------------------------------------------

void ListPane::click() {
    showCount();
    const QString selected = rows().selectedText();
    search().setText(selected);
    if (selected != lastSelection_) {
        lastSelection_ = selected;
        if (restricts()) {
            emit productsWanted();
        }
    }
    emit changed();
}

void ListPane::remember() {
    lastSelection_ = rows().selectedText();
}

void ListPane::forget() {
    lastSelection_.reset();
}

// Whichever row is clicked next, the same one too, its products have to be read again.
void ListPane::leave() {
    rows().setCurSel(-1);
    forget();
    emit productsLeft();
}
