#pragma once

#include <optional>
#include <vector>

#include "common/row_texts.h"
#include "platform/controls/list_item.h"
#include "platform/controls/row_keys.h"
#include "platform/dao/recordset.h"

// The fields of a product's row, looked up once for the whole list. Throws dao::Error 3265 for a field that
// the rows do not have.
struct ProductFields {
    explicit ProductFields(const dao::Recordset& rows);

    dao::Field id, price, stock;
    std::vector<dao::Field> texts;
};

// The products of the list as the file had them when it was read. Their cells are written when somebody looks
// at them: of a group's thousands a screen shows some forty. Rows count from 1, in the order of reading.
class ProductRows {
 public:
    // Takes over the current record. Throws what reading it throws, and RunError 35602 for a product that is
    // there already; nothing of it is kept then.
    void take(const ProductFields& fields);

    int count() const { return static_cast<int>(rows_.size()); }
    platform::ListItem row(int index) const;
    int find(const QString& key) const;  // 0: none

 private:
    struct Row {
        qint32 id = 0;
        std::size_t firstText = 0;
        std::optional<double> price;  // in the unit on screen
        std::optional<float> stock;   // pieces
    };

    std::vector<Row> rows_;
    RowTexts texts_;
    platform::RowKeys<qint32> keys_;
};
