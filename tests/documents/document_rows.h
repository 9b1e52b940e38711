#pragma once

#include <QString>
#include <vector>

#include "platform/dao/error.h"
#include "platform/report/report.h"

// Drawn products as the document's statement gives them, without a database: prices at the rate of the
// document, the tax percent worked into them.
struct DocumentRow {
    std::string name = "Memorija, Proizvodjac, Modul";
    float quantity = 1;
    double price = 100;
    std::string serial = {};
    std::string unit = "Kom.";
};

class DocumentRows : public report::RowSource {
 public:
    DocumentRows(std::vector<DocumentRow> rows, double tax) : rows_(std::move(rows)), tax_(tax) {}
    void rewind() override { place_ = 0; }
    bool next() override { return ++place_ <= rows_.size(); }
    qint64 count() override { return static_cast<qint64>(rows_.size()); }
    dao::Value value(const QString& field) override {
        const DocumentRow& row = rows_.at(place_ - 1);
        if (field == "XXX") {
            return row.name;
        }
        if (field == "SN") {
            return row.serial;
        }
        if (field == "JM") {
            return row.unit;
        }
        if (field == "Stanje") {
            return row.quantity < 0 ? dao::Value() : dao::Value(row.quantity);
        }
        if (field == "Cena1") {
            return row.price;
        }
        if (field == "MedjuTotal") {
            return row.price * static_cast<double>(row.quantity) * (1 + tax_ / 100);
        }
        if (field == "PDV") {
            return row.price * tax_ / 100;
        }
        if (field == "PDVPrice") {
            return row.price * (1 + tax_ / 100);
        }
        throw dao::Error(dao::errItemNotFound, field.toStdString());
    }

 private:
    std::vector<DocumentRow> rows_;
    double tax_;
    std::size_t place_ = 0;
};
