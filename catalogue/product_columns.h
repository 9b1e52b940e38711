#pragma once

#include <QString>
#include <optional>
#include <span>
#include <utility>

#include "common/list_columns.h"
#include "platform/controls/list_view.h"

// The columns of the product list, in their order. What asks for a column asks by its name.
enum class ProductColumn { Manufacturer, Name, Description, Price, Stock };

std::span<const ListColumn> productColumns();  // by ProductColumn
QString fieldOf(ProductColumn column);         // the column's key, and what the list is sorted by

// A row's key: a letter before the product's number, so that no key reads as a position.
QString productKey(qint32 id);
qint32 productId(const QString& key);  // 0 where the key is no product's

// A product as the list shows it, with what stands behind the row unseen.
class ProductRow {
 public:
    ProductRow() = default;
    explicit ProductRow(platform::ListItem item) : item_(std::move(item)) {}

    const platform::ListItem& item() const { return item_; }
    const QString& key() const { return item_.Key; }
    qint32 id() const { return productId(item_.Key); }
    const QString& text(ProductColumn column) const;
    void setText(ProductColumn column, const QString& text);
    std::optional<double> price() const;  // as shown, euro or dinars; none where no number is shown
    float stock() const;                  // pieces, as shown; 0 where no number is
    QString note() const;                 // may hold bars and lines of its own
    QString unit() const;
    void setNoteAndUnit(const QString& note, const QString& unit);

 private:
    platform::ListItem item_;
};

// The row that the list takes: keyed, and marked whether there is any of it.
platform::ListItem productItem(qint32 id, const ProductRow& texts, float pieces);
