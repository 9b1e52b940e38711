#pragma once

#include <random>

#include "catalogue/stock_draw.h"
#include "measure.h"
#include "measured_shop.h"
#include "platform/dao/dao.h"

// Our side of what is measured on the file and on the server alike.

// --- Opening a dynaset over all services: the numbers of its rows.

inline Lines linesOf(const std::vector<std::int64_t>& numbers) {
    Lines lines;
    for (const std::int64_t number : numbers) {
        lines.push_back(std::to_string(number));
    }
    return lines;
}

inline Lines numbersOf(dao::Recordset rows) {
    std::vector<std::int64_t> numbers;
    const dao::Field number = rows.Fields("ID");
    for (rows.MoveFirst(); !rows.EOF(); rows.MoveNext()) {
        numbers.push_back(number.Value().asLong());
    }
    return linesOf(numbers);
}

class OpenOurs : public Side {
 public:
    explicit OpenOurs(MeasuredShop& shop) : shop_(shop) {}
    void run() override { rows_ = shop_.ours().OpenRecordset("SELECT * FROM Services"); }
    Lines result() override { return numbersOf(rows_); }

 private:
    MeasuredShop& shop_;
    dao::Recordset rows_;
};

// --- Walking through all services, eight fields of each.

struct Sum {
    double numbers = 0;
    std::size_t letters = 0;
    Lines lines() const { return {std::to_string(numbers), std::to_string(letters)}; }
};

class WalkOurs : public Side {
 public:
    explicit WalkOurs(MeasuredShop& shop) : shop_(shop) {}
    void run() override {
        dao::Recordset rows = shop_.ours().OpenRecordset("SELECT * FROM Services");
        std::vector<dao::Field> fields;
        for (const char* name : {"ID", "MachineID", "ServiceStarted", "ServiceFinished", "Price", "Discount",
                                 "ServiceTypes", "Comments"}) {
            fields.push_back(rows.Fields(name));
        }
        for (sum_ = {}; !rows.EOF(); rows.MoveNext()) {
            sum_.numbers += fields[0].Value().asLong() + fields[1].Value().asLong();
            for (std::size_t i = 2; i < 6; ++i) {
                sum_.numbers += fields[i].Value().asDouble();
            }
            sum_.letters += fields[6].Value().textRef().size() + fields[7].Value().textRef().size();
        }
    }
    Lines result() override { return sum_.lines(); }

 private:
    MeasuredShop& shop_;
    Sum sum_;
};

// --- Services by number, at random, and their prices. Each is a look of its own into the records, for
// another workstation may have changed the price.

inline std::vector<int> randomNumbers(std::size_t count) {
    std::mt19937 random(20260101);
    std::vector<int> numbers(count);
    for (int& number : numbers) {
        number = 1 + static_cast<int>(random() % MeasuredShop::kServices);
    }
    return numbers;
}

class FindOurs : public Side {
 public:
    FindOurs(MeasuredShop& shop, std::size_t count)
        : numbers_(randomNumbers(count)), rows_(shop.ours().OpenRecordset("SELECT * FROM Services")) {}
    void run() override {
        sum_ = 0;
        for (const int number : numbers_) {
            rows_.FindFirst("ID=" + std::to_string(number));
            sum_ += rows_["Price"].asCurrency().scaled();
        }
    }
    Lines result() override { return {std::to_string(sum_)}; }

 private:
    const std::vector<int> numbers_;
    dao::Recordset rows_;
    std::int64_t sum_ = 0;
};

// --- Services read, changed and written, each change safe on the disk before the next.

class EditOurs : public Side {
 public:
    EditOurs(MeasuredShop& shop, int count)
        : rows_(shop.ours().OpenRecordset("SELECT * FROM Services WHERE ID<=" + std::to_string(count))),
          price_(rows_.Fields("Price")) {}
    void run() override {
        for (rows_.MoveFirst(); !rows_.EOF(); rows_.MoveNext()) {
            rows_.Edit();
            price_ = dao::Currency::fromScaled(price_.Value().asCurrency().scaled() + 1);
            rows_.Update();
        }
    }
    Lines result() override {
        std::int64_t sum = 0;
        for (rows_.MoveFirst(); !rows_.EOF(); rows_.MoveNext()) {
            sum += price_.Value().asCurrency().scaled();
        }
        return {std::to_string(sum)};
    }

 private:
    dao::Recordset rows_;
    dao::Field price_;
};

// --- Drawing one product: its stock goes down, then its row of the requisition goes up. Each write is safe
// on the disk before the next thing happens, for the program may be stopped between them.

class NextProduct {
 public:
    explicit NextProduct(const Stock& stock) : first_(stock.firstProduct) {}
    int next() { return first_ + next_++ % Stock::kDrawn; }

 private:
    int first_;
    int next_ = 0;
};

inline Lines drawnRow(double stock, double quantity, std::string_view serial, std::string_view unit) {
    return {std::to_string(stock), std::to_string(quantity), std::string(serial), std::string(unit)};
}

class DrawOurs : public Side {
 public:
    explicit DrawOurs(MeasuredShop& shop)
        : product_(shop.stock()),
          products_(shop.ours().OpenRecordset("SELECT * FROM Oprema WHERE IDGrupe=" +
                                              std::to_string(shop.stock().firstGroup))),
          requisition_(shop.ours().OpenRecordset("SELECT * FROM InvoiceData WHERE ServiceID=" +
                                                 std::to_string(shop.stock().service))) {}
    void run() override {
        const std::string id = std::to_string(product_.next());
        products_.FindFirst("ID=" + id);
        stock_draw::takeFromStock(products_, 1);
        requisition_.FindFirst("OpremaID=" + id);
        stock_draw::addToRow(requisition_,
                             {.quantity = 1, .serialNumber = "S", .append = false, .unit = "Kom."});
    }
    Lines result() override {
        return drawnRow(products_["Stanje"].asDouble(), requisition_["Stanje"].asDouble(),
                        requisition_["SN"].textRef(), requisition_["JM"].textRef());
    }

 private:
    NextProduct product_;
    dao::Recordset products_, requisition_;
};
