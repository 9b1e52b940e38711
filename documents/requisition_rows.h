#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "common/row_texts.h"
#include "documents/requisition_columns.h"
#include "platform/controls/row_keys.h"
#include "platform/dao/recordset.h"

namespace platform {
class Trap;
}

namespace requisition {

// The fields of the rows as a requisition reads them, looked up once: a name would be compared for each of
// thousands of rows otherwise. Throws dao::Error 3265 for a field that the rows do not have.
struct SourceFields {
    explicit SourceFields(const dao::Recordset& rows);

    dao::Field id, price, quantity;
    std::vector<dao::Field> texts;  // of textColumns(), and behind them the unit
};

// The products of a requisition as the file had them when it was read. Their cells are written when somebody
// looks at them: of thousands of rows a screen shows some forty. Rows count from 1, in the order of reading.
class DrawnRows {
 public:
    // Room for about so many.
    explicit DrawnRows(qint64 expected);

    // Takes over the current record. Throws where somebody has deleted it meanwhile; nothing of it is kept
    // then. Its price and its quantity are had each by itself, under `step`: where one is missing its cell
    // stays empty. So is its place among the rows: a product that is there already has none (RunError 35602).
    // What it adds to the total in either case: the customer adds up the amounts that he sees.
    float take(const SourceFields& fields, platform::Trap& step);

    int count() const { return static_cast<int>(rows_.size()); }
    platform::ListItem row(int index) const;
    int find(const QString& key) const;  // 0: none

 private:
    struct Row {
        std::optional<std::int32_t> product;
        std::optional<float> price;  // of one piece, in the unit that was on screen
        std::optional<float> quantity;
        std::size_t firstText = 0;
    };
    static QString keyOf(const Row& row);
    void add(const Row& row);

    std::vector<Row> rows_;
    RowTexts texts_;
    platform::RowKeys<qint64> keys_;
};

}  // namespace requisition
