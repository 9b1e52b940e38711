// The five quick filters, end to end: the question, the narrowing, the three stages filled again.
#include <array>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <type_traits>
#include <utility>

#include "our_window.h"
#include "plain_server.h"
#include "plain_stages.h"
#include "server_shop.h"
#include "shop.h"
#include "stored_texts.h"

namespace {

// The numbers of one kind that have been found: marked, and as the text of their stored query. A number goes
// into the text again where the row before it had another.
class FoundNumbers {
 public:
    FoundNumbers(const char* table, const char* key) : key_(key), table_(table) {}
    void clear(std::size_t last) {
        marks_.assign(last + 1, 0);
        count_ = 0;
        last_ = -1;
        text_ = "SELECT * FROM " + table_ + " WHERE ";
    }
    void add(int number) {
        if (number == last_) {
            return;
        }
        if (last_ >= 0) {
            text_ += " OR ";
        }
        last_ = number;
        char& mark = marks_[static_cast<std::size_t>(number)];
        count_ += mark == 0 ? 1 : 0;
        mark = 1;
        text_ += key_;
        appendNumber(text_ += '=', number);
    }
    void end() { text_ += ';'; }
    const Marks& marks() const { return marks_; }
    std::size_t count() const { return count_; }  // each number once
    const std::string& text() const { return text_; }

 private:
    std::string key_, table_, text_;
    Marks marks_;
    std::size_t count_ = 0;
    int last_ = -1;
};

constexpr int kDays = 5;  // ahead of today, in which a service counts as due

// What can be asked cheaply is asked in the statement, so that few rows reach the arithmetic behind it.
std::string firstQuestion(int number) {
    switch (number) {
        case 0:
            return "ServiceFinished>=2";
        case 1:
            return "ServiceFinished<2";
        case 2:
            return "ServiceFinished<2 AND Price>0";
        case 3:
            return "ServiceFinished<2 AND ServiceToBeFinished>=2";
        default:
            return "ServiceFinished<2 AND ServiceToBeFinished>=2 AND Price>0";
    }
}

bool asksForPaid(int number) {
    return number == 2 || number == 4;
}

double today() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    constexpr std::time_t kFirst = 25569;  // days from 30 December 1899 to 1 January 1970
    return static_cast<double>((now + local.tm_gmtoff) / 86400 + kFirst);
}

// The statements of a plain program on the file: the arithmetic is its own.
std::string ownersText(const PlainShop&) {
    return "SELECT each_row(MachineID, CustID) FROM Computers INDEXED BY ix_Computers_CustID";
}
std::string servicesText(const PlainShop&, int number) {
    return "SELECT each_row(ID, MachineID, ServiceToBeFinished, Price, Discount, GST, Paid) FROM Services "
           "NOT "
           "INDEXED WHERE " +
           firstQuestion(number);
}

// On a server it would have all of them sent to it: there the server counts.
std::string ownersText(const PlainServer&) {
    return "SELECT MachineID, CustID FROM Computers ORDER BY CustID, MachineID";
}
std::string servicesText(const PlainServer&, int number) {
    std::string text = "SELECT ID, MachineID FROM Services WHERE " + firstQuestion(number);
    if (number >= 3) {
        text += " AND ServiceToBeFinished<" + std::to_string(static_cast<int>(today()) + kDays + 1);
    }
    return text +
           " AND (1-Discount/100::float8)*(Price/10000::float8)*(1+GST/100::float8)-Paid/10000::float8" +
           (asksForPaid(number) ? "<=0.1" : ">0.1") + " ORDER BY ID";
}

// One way through the services and one through the computers in the order of their owners; then the stages,
// each by the marks.
template <class Of>
class FilterPlain : public Side {
 public:
    template <class Place>
    FilterPlain(Place& shop, int number)
        : shop_(shop.plain()),
          number_(number),
          texts_(shop.plain(), {"QDCustomers", "QDComputers", "QDServices"}),
          stages_(shop.plain()),
          owners_(shop.plain(), ownersText(shop.plain())),
          services_(shop.plain(), servicesText(shop.plain(), number)) {}
    void run() override {
        readComputers();
        findServices();
        writeTexts();
        stages_.readClients(&clientsFound_.marks(), clientsFound_.count());
        stages_.readComputers(&computersFound_.marks());
        stages_.readServices(&servicesFound_.marks());
    }
    Lines result() override {
        Lines lines = stages_.result();
        for (const std::string& text : texts_.read()) {
            lines.push_back(text);
        }
        return lines;
    }

 private:
    struct Computer {
        int number, client;
        std::uint32_t services;  // found, of this one and all before it
    };
    struct Service {
        int number;
        std::uint32_t place;  // of its computer
    };

    // In order of their clients, as the index holds them.
    void readComputers() {
        computers_.clear();
        places_.assign(lastNumber("Computers", "MachineID") + 1, 0);
        shop_.scan(owners_, [this](const typename Of::Row& row) {
            places_[static_cast<std::size_t>(row.integer(0))] = static_cast<std::uint32_t>(computers_.size());
            computers_.push_back({static_cast<int>(row.integer(0)), static_cast<int>(row.integer(1)), 0});
        });
    }
    void findServices() {
        found_.clear();
        const double dueBefore = today() + kDays + 1;
        const bool onlyDue = number_ >= 3, paid = asksForPaid(number_);
        shop_.scan(services_, [&](const typename Of::Row& row) {
            if constexpr (std::is_same_v<Of, PlainShop>) {
                if (onlyDue && row.number(2) >= dueBefore) {
                    return;
                }
                const double rest =
                    (1 - row.number(4) / 100) * (row.number(3) / 10000) * (1 + row.number(5) / 100) -
                    row.number(6) / 10000;
                if ((rest > 0.1) == paid) {
                    return;
                }
            }
            found_.push_back(
                {static_cast<int>(row.integer(0)), places_[static_cast<std::size_t>(row.integer(1))]});
        });
    }
    // The services come in order of their numbers; counted by computers they fall into the order of those.
    void orderServices() {
        for (const Service& service : found_) {
            ++computers_[service.place].services;
        }
        std::uint32_t sum = 0;
        for (Computer& computer : computers_) {
            computer.services = std::exchange(sum, sum + computer.services);
        }
        ordered_.resize(found_.size());
        for (const Service& service : found_) {
            ordered_[computers_[service.place].services++] = service;
        }
    }
    void writeTexts() {
        orderServices();
        clientsFound_.clear(lastNumber("Customers", "CustID"));
        computersFound_.clear(places_.size());
        servicesFound_.clear(lastNumber("Services", "ID"));
        for (const Service& service : ordered_) {
            const Computer& computer = computers_[service.place];
            servicesFound_.add(service.number);
            computersFound_.add(computer.number);
            clientsFound_.add(computer.client);
        }
        for (FoundNumbers* found : {&clientsFound_, &computersFound_, &servicesFound_}) {
            found->end();
        }
        texts_.write({&clientsFound_.text(), &computersFound_.text(), &servicesFound_.text()});
    }
    std::size_t lastNumber(const char* table, const char* key) {
        const std::string text = std::string("SELECT max(") + key + ") FROM " + table;
        return static_cast<std::size_t>(shop_.number(text));
    }

    Of& shop_;
    int number_;
    StoredTexts<Of> texts_;
    PlainStages<Of> stages_;
    typename Of::Statement owners_, services_;
    std::vector<Computer> computers_;
    std::vector<std::uint32_t> places_;  // of a computer by its number
    std::vector<Service> found_, ordered_;
    FoundNumbers clientsFound_{"Customers", "CustID"}, computersFound_{"Computers", "MachineID"},
        servicesFound_{"Services", "ID"};
};

constexpr std::array<const char*, 5> kNames = {
    "filter: finished and not paid", "filter: not finished and not paid", "filter: not finished and paid",
    "filter: not paid and due", "filter: paid and due"};

}  // namespace

std::vector<Measure> filterMeasures() {
    std::vector<Measure> measures;
    for (int number = 0; number < static_cast<int>(kNames.size()); ++number) {
        measures.push_back({kNames[static_cast<std::size_t>(number)], 1.5, side<FilterOurs>(number),
                            side<FilterPlain<PlainShop>>(number), 15});
    }
    return measures;
}

std::vector<MeasureOn<ServerShop>> serverFilterMeasures() {
    std::vector<MeasureOn<ServerShop>> measures;
    for (int number = 0; number < static_cast<int>(kNames.size()); ++number) {
        measures.push_back({kNames[static_cast<std::size_t>(number)], 1.5, side<FilterOurs>(number),
                            side<FilterPlain<PlainServer>>(number), 7});
    }
    return measures;
}
