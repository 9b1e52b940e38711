#include "documents/requisition_columns.h"

#include <array>
#include <optional>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

using platform::HeaderAlignment;

namespace {

constexpr int kWidth = 1440;  // twips
constexpr bool kMoney = true;

// How the cell of a product comes about: the field's text as it stands, or reckoned from price and quantity.
enum class Cell { Text, Reckoned };

struct Row {
    RequisitionColumn name;
    ListColumn list;
    Cell cell;
};

// The keys are the fields' names: the file does the sorting.
constexpr std::array kRows = {
    Row{RequisitionColumn::Manufacturer,
        {"Proizvodjac", "Proizvodjac", 0, HeaderAlignment::Left},
        Cell::Text},
    Row{RequisitionColumn::Group, {"Grupa", "Grupa", 0, HeaderAlignment::Left}, Cell::Text},
    Row{RequisitionColumn::Name, {"Naziv", "Naziv", 0, HeaderAlignment::Left}, Cell::Text},
    Row{RequisitionColumn::Description, {"Opis", "Opis", 0, HeaderAlignment::Left}, Cell::Text},
    Row{RequisitionColumn::SerialNumber, {"SN", "Serijski broj", 0, HeaderAlignment::Left}, Cell::Text},
    Row{RequisitionColumn::Price,
        {"Cena", "Cena", 0, HeaderAlignment::Right, kWidth, kMoney},
        Cell::Reckoned},
    Row{RequisitionColumn::Quantity, {"Stanje", "Trebovano", 0, HeaderAlignment::Right}, Cell::Reckoned},
    Row{RequisitionColumn::Amount, {"Medjutotal", "Medjutotal", 0, HeaderAlignment::Right}, Cell::Reckoned},
};

static_assert(eachStandsAtItsName(kRows), "the table and the names of the columns have one order");

constexpr auto kColumns = columnsOf(kRows);

// A row with all its cells, none of them filled.
platform::ListItem emptyRow(const QString& key) {
    platform::ListItem row;
    row.Key = key;
    row.subItems.resize(static_cast<qsizetype>(kRows.size()) - 1);
    return row;
}

}  // namespace

std::span<const ListColumn> requisitionColumns() {
    return kColumns;
}

QString fieldOf(RequisitionColumn column) {
    return QString::fromLatin1(kColumns[static_cast<std::size_t>(column)].field);
}

namespace requisition {

QString keyOf(const QString& productId) {
    return QLatin1Char('K') + productId;
}

QString idOf(const platform::ListItem& row) {
    return row.Key.mid(1);
}

platform::ListItem totalRow() {
    platform::ListItem row = emptyRow(kTotal);
    row.Text = QStringLiteral(" ");
    row.SmallIcon = kTotal;
    setCell(row, RequisitionColumn::Price, QStringLiteral(" "));
    setCell(row, RequisitionColumn::Quantity, QStringLiteral("TOTAL:"));
    setCell(row, RequisitionColumn::Amount, platform::formatGrouped(0.0F));
    return row;
}

SourceFields::SourceFields(const dao::Recordset& rows)
    : id_(rows.Fields("OpremaID")),
      texts_([&rows] {
          std::vector<TextField> texts;
          for (const Row& row : kRows) {
              if (row.cell == Cell::Text) {
                  texts.push_back({row.name, rows.Fields(row.list.field)});
              }
          }
          return texts;
      }()),
      unit_(rows.Fields("JM")),
      price_(rows.Fields("Cena")),
      quantity_(rows.Fields("Stanje")) {}

platform::ListItem SourceFields::row(platform::Trap& step) const {
    platform::ListItem row = emptyRow(keyOf(QString::fromStdString(id_.Value().asText())));
    row.SmallIcon = QStringLiteral("stavka");
    for (const TextField& text : texts_) {
        setCell(row, text.column, textOf(text.field));
    }
    row.Tag = textOf(unit_);
    showAmounts(row, step);
    return row;
}

// Each by itself: what was drawn without a price still shows how much was drawn, and goes back to stock with
// it. No figure ever stands in for one that is missing.
void SourceFields::showAmounts(platform::ListItem& row, platform::Trap& step) const {
    std::optional<float> price, quantity;
    step([&] {
        const float euro = price_.Value().asSingle();
        price = CeneDinarske ? euro * KursKupovni : euro;
    });
    if (price) {
        step([&] { setCell(row, RequisitionColumn::Price, platform::formatGrouped(*price)); });
    }
    step([&] { quantity = quantity_.Value().asSingle(); });
    if (quantity) {
        step([&] { setCell(row, RequisitionColumn::Quantity, platform::textOfSingle(*quantity)); });
    }
    if (price && quantity) {
        step([&] { setCell(row, RequisitionColumn::Amount, platform::formatGrouped(*quantity * *price)); });
    }
}

}  // namespace requisition
