#include "documents/requisition_columns.h"

#include <algorithm>
#include <array>

#include "platform/system/numbers.h"

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

static_assert(std::ranges::count(kRows, Cell::Text, &Row::cell) == requisition::kTextColumns);
constexpr auto kTexts = [] {
    std::array<RequisitionColumn, requisition::kTextColumns> columns{};
    std::size_t next = 0;
    for (const Row& row : kRows) {
        if (row.cell == Cell::Text) {
            columns[next++] = row.name;
        }
    }
    return columns;
}();

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

platform::ListItem emptyRow(const QString& key) {
    platform::ListItem row;
    row.Key = key;
    row.subItems.resize(static_cast<qsizetype>(kRows.size()) - 1);
    return row;
}

platform::ListItem totalRow(float total) {
    platform::ListItem row = emptyRow(kTotal);
    row.Text = QStringLiteral(" ");
    row.SmallIcon = kTotal;
    setCell(row, RequisitionColumn::Price, QStringLiteral(" "));
    setCell(row, RequisitionColumn::Quantity, QStringLiteral("TOTAL:"));
    setCell(row, RequisitionColumn::Amount, platform::formatGrouped(total));
    return row;
}

std::span<const RequisitionColumn, kTextColumns> textColumns() {
    return kTexts;
}

}  // namespace requisition
