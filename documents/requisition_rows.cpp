#include "documents/requisition_rows.h"

#include <algorithm>
#include <limits>

#include "common/modMain.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace requisition {
namespace {

constexpr qint64 kNoProduct = std::numeric_limits<qint64>::max();

QString amountText(const std::optional<float>& amount) {
    return amount ? platform::formatGrouped(*amount) : QString();
}

}  // namespace

SourceFields::SourceFields(const dao::Recordset& rows)
    : id(rows.Fields("OpremaID")), price(rows.Fields("Cena")), quantity(rows.Fields("Stanje")) {
    for (const RequisitionColumn column : textColumns()) {
        texts.push_back(rows.Fields(fieldOf(column).toStdString()));
    }
    texts.push_back(rows.Fields("JM"));
}

DrawnRows::DrawnRows(qint64 expected) {
    rows_.reserve(static_cast<std::size_t>(std::max<qint64>(expected, 0)));
    keys_.reserve(expected);
}

// Price and quantity each by itself: what was drawn without a price still shows how much was drawn, and goes
// back to stock with it. No figure ever stands in for one that is missing.
float DrawnRows::take(const SourceFields& fields, platform::Trap& step) {
    Row row;
    if (const dao::Value& product = fields.id.Value(); !product.isNull()) {
        row.product = product.asLong();
    }
    row.firstText = texts_.count();
    for (const dao::Field& text : fields.texts) {
        texts_.add(text.Text());
    }
    step([&] {
        const float euro = fields.price.Value().asSingle();
        row.price = CeneDinarske ? euro * KursKupovni : euro;
    });
    step([&] { row.quantity = fields.quantity.Value().asSingle(); });
    step([&] { add(row); });
    return row.price && row.quantity ? platform::throughGroupedFormat(*row.quantity * *row.price) : 0.0F;
}

void DrawnRows::add(const Row& row) {
    const qint64 key = row.product ? *row.product : kNoProduct;
    keys_.needNew(key, [&](qint64) { return keyOf(row); });
    rows_.push_back(row);
    keys_.put(key, count());
}

QString DrawnRows::keyOf(const Row& row) {
    return requisition::keyOf(row.product ? QString::number(*row.product) : QString());
}

platform::ListItem DrawnRows::row(int index) const {
    const Row& kept = rows_[static_cast<std::size_t>(index) - 1];
    platform::ListItem row = emptyRow(keyOf(kept));
    row.SmallIcon = QStringLiteral("stavka");
    std::size_t next = kept.firstText;
    for (const RequisitionColumn column : textColumns()) {
        setCell(row, column, texts_.text(next++));
    }
    row.Tag = texts_.text(next);
    setCell(row, RequisitionColumn::Price, amountText(kept.price));
    if (kept.quantity) {
        setCell(row, RequisitionColumn::Quantity, platform::textOfSingle(*kept.quantity));
    }
    if (kept.price && kept.quantity) {
        setCell(row, RequisitionColumn::Amount, platform::formatGrouped(*kept.quantity * *kept.price));
    }
    return row;
}

int DrawnRows::find(const QString& key) const {
    bool isNumber = false;
    const qint64 product = QStringView(key).mid(1).toLongLong(&isNumber);
    const int index = keys_.find(isNumber ? product : kNoProduct);
    return index != 0 && keyOf(rows_[static_cast<std::size_t>(index) - 1]) == key ? index : 0;
}

}  // namespace requisition
