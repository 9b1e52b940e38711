#include "catalogue/product_rows.h"

#include "catalogue/product_columns.h"
#include "platform/system/numbers.h"

namespace {

// The texts of a row, in the order in which they are kept.
enum Text : std::size_t { kMaker, kName, kDescription, kNote, kUnit };

}  // namespace

ProductFields::ProductFields(const dao::Recordset& rows)
    : id(rows.Fields("ID")), price(rows.Fields("Cena1")), stock(rows.Fields("Stanje")) {
    for (const char* name : {"Proizvodjac", "Naziv", "Opis", "Napomena", "JM"}) {
        texts.push_back(rows.Fields(name));
    }
}

void ProductRows::take(const ProductFields& fields) {
    Row row;
    row.id = fields.id.Value().asLong();
    keys_.needNew(row.id, productKey);
    row.firstText = texts_.count();
    if (const dao::Value& price = fields.price.Value(); !price.isNull()) {
        row.price = price.asDouble();
    }
    if (const dao::Value& stock = fields.stock.Value(); !stock.isNull()) {
        row.stock = stock.asSingle();
    }
    for (const dao::Field& text : fields.texts) {
        texts_.add(text.Text());
    }
    rows_.push_back(row);
    keys_.put(row.id, count());
}

platform::ListItem ProductRows::row(int index) const {
    const Row& kept = rows_[static_cast<std::size_t>(index) - 1];
    const auto text = [&](Text which) { return texts_.text(kept.firstText + which); };
    ProductRow row;
    row.setText(ProductColumn::Manufacturer, text(kMaker));
    row.setText(ProductColumn::Name, text(kName));
    row.setText(ProductColumn::Description, text(kDescription));
    row.setText(ProductColumn::Price, kept.price ? platform::formatGrouped(*kept.price) : QString());
    row.setText(ProductColumn::Stock, kept.stock ? platform::textOfSingle(*kept.stock) : QString());
    row.setNoteAndUnit(text(kNote), text(kUnit));
    return productItem(kept.id, row, kept.stock.value_or(0.0F));
}

int ProductRows::find(const QString& key) const {
    const qint32 id = productId(key);
    return productKey(id) == key ? keys_.find(id) : 0;
}
