#include "catalogue/product_columns.h"

#include <array>

#include "platform/system/numbers.h"

using platform::HeaderAlignment;

namespace {

constexpr QLatin1Char kBar('|');

constexpr std::array kColumns{
    ListColumn{"Proizvodjac", "Proizvodjac", 0, HeaderAlignment::Left},
    ListColumn{"Naziv", "Naziv", 0, HeaderAlignment::Left},
    ListColumn{"Opis", "Opis", 0, HeaderAlignment::Left},
    ListColumn{.field = "Cena1",
               .header = "Cena",
               .headerId = 0,
               .alignment = HeaderAlignment::Right,
               .isMoney = true},
    ListColumn{"Stanje", "Stanje", 0, HeaderAlignment::Right},
};
static_assert(kColumns.size() == static_cast<size_t>(ProductColumn::Stock) + 1);

}  // namespace

std::span<const ListColumn> productColumns() {
    return kColumns;
}

QString fieldOf(ProductColumn column) {
    return QString::fromLatin1(kColumns[static_cast<size_t>(column)].field);
}

QString productKey(qint32 id) {
    return QLatin1Char('K') + QString::number(id);
}

qint32 productId(const QString& key) {
    return key.mid(1).toInt();
}

const QString& ProductRow::text(ProductColumn column) const {
    return column == ProductColumn::Manufacturer ? item_.Text : item_.SubItems(static_cast<int>(column));
}

void ProductRow::setText(ProductColumn column, const QString& text) {
    if (column == ProductColumn::Manufacturer) {
        item_.Text = text;
    } else {
        item_.setSubItems(static_cast<int>(column), text);
    }
}

std::optional<double> ProductRow::price() const {
    return platform::readNumber(text(ProductColumn::Price));
}

float ProductRow::stock() const {
    return platform::readSingle(text(ProductColumn::Stock)).value_or(0.0F);
}

// A note may hold a bar of its own; a unit's text does not.
QString ProductRow::note() const {
    return item_.Tag.left(item_.Tag.lastIndexOf(kBar));
}

QString ProductRow::unit() const {
    return item_.Tag.mid(item_.Tag.lastIndexOf(kBar) + 1);
}

void ProductRow::setNoteAndUnit(const QString& note, const QString& unit) {
    item_.Tag = note + kBar + unit;
}

platform::ListItem productItem(qint32 id, const ProductRow& texts, float pieces) {
    platform::ListItem item = texts.item();
    item.Key = productKey(id);
    item.SmallIcon = pieces <= 0 ? QStringLiteral("stanjenula") : QStringLiteral("stanjeok");
    return item;
}
