// What is measured on the server: the engine's record sets beside a plain program on the server's C library.
#include <optional>

#include "our_sides.h"
#include "plain_server.h"
#include "server_shop.h"

namespace {

// --- Opening a set over all services.

class OpenPlain : public Side {
 public:
    explicit OpenPlain(ServerShop& shop)
        : shop_(shop.plain()), numbers_(shop.plain(), "SELECT ID FROM Services ORDER BY ID") {}
    void run() override {
        keys_.clear();
        shop_.scan(numbers_, [this](const PlainServer::Row& row) { keys_.push_back(row.integer(0)); });
    }
    Lines result() override { return linesOf(keys_); }

 private:
    PlainServer& shop_;
    PlainServer::Statement numbers_;
    std::vector<std::int64_t> keys_;
};

// --- Walking through all services.

class WalkPlain : public Side {
 public:
    explicit WalkPlain(ServerShop& shop)
        : shop_(shop.plain()),
          rows_(shop.plain(),
                "SELECT ID, MachineID, ServiceStarted, ServiceFinished, Price, Discount, ServiceTypes, "
                "Comments FROM Services ORDER BY ID") {}
    void run() override {
        Sum sum;
        shop_.scan(rows_, [&sum](const PlainServer::Row& row) {
            sum.numbers += static_cast<double>(row.integer(0) + row.integer(1));
            sum.numbers += row.number(2);
            sum.numbers += row.number(3);
            sum.numbers += static_cast<double>(row.integer(4)) / 10000;
            sum.numbers += row.number(5);
            sum.letters += row.text(6).size() + row.text(7).size();
        });
        sum_ = sum;
    }
    Lines result() override { return sum_.lines(); }

 private:
    PlainServer& shop_;
    PlainServer::Statement rows_;
    Sum sum_;
};

// --- Services by number.

class FindPlain : public Side {
 public:
    FindPlain(ServerShop& shop, std::size_t count)
        : numbers_(randomNumbers(count)), price_(shop.plain(), "SELECT Price FROM Services WHERE ID=?") {}
    void run() override {
        sum_ = 0;
        for (const int number : numbers_) {
            price_.bind(1, number);
            while (price_.next()) {
                sum_ += price_.row().integer(0);
            }
        }
    }
    Lines result() override { return {std::to_string(sum_)}; }

 private:
    const std::vector<int> numbers_;
    PlainServer::Statement price_;
    std::int64_t sum_ = 0;
};

// --- One row locked and read, then written and committed: two stretches of a pipeline, for what is written
// depends on what was read.

class PlainChange {
 public:
    PlainChange(const PlainServer& shop, const std::string& read, const std::string& write)
        : shop_(shop),
          begin_(shop, "BEGIN"),
          read_(shop, read),
          write_(shop, write),
          commit_(shop, "COMMIT") {
        PQexitPipelineMode(shop.handle());
        begin_.prepare();
        read_.bind(1, std::int64_t{0}).prepare();
        write_.bind(1, std::int64_t{0}).prepare();
        commit_.prepare();
        PQenterPipelineMode(shop.handle());
    }
    ~PlainChange() { PQexitPipelineMode(shop_.handle()); }
    PlainChange(const PlainChange&) = delete;
    PlainChange& operator=(const PlainChange&) = delete;

    void run(std::int64_t key) {
        begin_.send();
        read_.bind(1, key).send();
        shop_.finish();
        write_.bind(1, key).send();
        commit_.send();
        shop_.finish();
    }

 private:
    const PlainServer& shop_;
    PlainServer::Statement begin_, read_, write_, commit_;
};

class EditPlain : public Side {
 public:
    EditPlain(ServerShop& shop, int count) : shop_(shop.plain()), count_(count) {}
    void run() override {
        if (!change_) {
            change_.emplace(shop_, "SELECT Price FROM Services WHERE ID=? FOR NO KEY UPDATE",
                            "UPDATE Services SET Price=Price+1 WHERE ID=?");
        }
        for (int number = 1; number <= count_; ++number) {
            change_->run(number);
        }
    }
    Lines result() override {
        change_.reset();
        return {std::to_string(
            shop_.number("SELECT sum(Price)::bigint FROM Services WHERE ID<=" + std::to_string(count_)))};
    }

 private:
    PlainServer& shop_;
    int count_;
    std::optional<PlainChange> change_;
};

// --- Drawing one product.

class DrawPlain : public Side {
 public:
    explicit DrawPlain(ServerShop& shop)
        : shop_(shop.plain()), service_(shop.stock().service), product_(shop.stock()) {}
    void run() override {
        if (!takeOne_) {
            takeOne_.emplace(shop_, "SELECT Stanje FROM Oprema WHERE ID=? FOR NO KEY UPDATE",
                             "UPDATE Oprema SET Stanje=Stanje-1 WHERE ID=?");
            const std::string row = " WHERE ServiceID=" + std::to_string(service_) + " AND OpremaID=?";
            addOne_.emplace(shop_, "SELECT Stanje, SN FROM InvoiceData" + row + " FOR NO KEY UPDATE",
                            "UPDATE InvoiceData SET Stanje=Stanje+1, SN='S', JM='Kom.'" + row);
        }
        drawn_ = product_.next();
        takeOne_->run(drawn_);
        addOne_->run(drawn_);
    }
    Lines result() override {
        addOne_.reset();
        takeOne_.reset();
        const std::string product = std::to_string(drawn_);
        PlainServer::Statement row(shop_, "SELECT (SELECT Stanje FROM Oprema WHERE ID=" + product +
                                              "), Stanje, SN, JM FROM InvoiceData WHERE ServiceID=" +
                                              std::to_string(service_) + " AND OpremaID=" + product);
        row.next();
        return drawnRow(row.row().number(0), row.row().number(1), row.row().text(2), row.row().text(3));
    }

 private:
    PlainServer& shop_;
    int service_;
    NextProduct product_;
    int drawn_ = 0;
    std::optional<PlainChange> takeOne_, addOne_;
};

std::string counted(int count) {
    return count < 1000 ? std::to_string(count) : std::to_string(count / 1000) + ",000";
}

}  // namespace

std::vector<MeasureOn<ServerShop>> serverMeasures(bool isFar) {
    // Where every answer takes its time on the way there is less to be asked for.
    const int found = isFar ? 300 : 10000, edited = isFar ? 100 : 1000, drawn = isFar ? 30 : 200;
    const int pairs = isFar ? 3 : 9;
    return {
        {"open the set of all services", 1.3, side<OpenOurs>(), side<OpenPlain>(), pairs},
        {"walk through all services, eight fields", 1.5, side<WalkOurs>(), side<WalkPlain>(), pairs},
        {"find " + counted(found) + " services by number", 2, side<FindOurs>(static_cast<std::size_t>(found)),
         side<FindPlain>(static_cast<std::size_t>(found)), pairs},
        {"edit and update " + counted(edited) + " services", 2, side<EditOurs>(edited),
         side<EditPlain>(edited), pairs},
        {"draw a product, both writes", 1.5, side<DrawOurs>(), side<DrawPlain>(), pairs, drawn},
    };
}
