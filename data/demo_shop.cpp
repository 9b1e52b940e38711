#include "data/demo_shop.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <map>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "data/demo_words.h"
#include "platform/dao/dbengine.h"
#include "platform/dao/recordset.h"
#include "platform/text/ascii.h"

namespace data {
namespace {

constexpr double kEmptyDate = 1.0;  // what the program stores for a date left empty
constexpr int kDaysTold = 365;

// The standard says what the generator gives and leaves the distributions to each library, so these are ours.
class Dice {
 public:
    explicit Dice(std::uint32_t seed) : numbers_(seed) {}
    int below(int limit) {
        return static_cast<int>(
            (static_cast<std::uint64_t>(numbers_()) * static_cast<std::uint64_t>(limit)) >> 32);
    }
    int between(int low, int high) { return low + below(high - low + 1); }
    bool chance(int percent) { return below(100) < percent; }
    std::string pick(std::span<const std::string_view> words) {
        return std::string(words[static_cast<std::size_t>(below(static_cast<int>(words.size())))]);
    }
    std::string digits(int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += static_cast<char>('0' + below(10));
        }
        return text;
    }

 private:
    std::mt19937 numbers_;
};

// Braces are evaluated from left to right; the operands of + are not, and would roll the dice in another
// order under another compiler.
std::string join(std::initializer_list<std::string> parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += part;
    }
    return text;
}

std::string smallLetters(const std::string& text) {
    std::string result;
    for (const char each : text) {
        const char letter = alphabet::lowerAscii(each);
        if ((letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9')) {
            result += letter;
        }
    }
    return result;
}

struct Product {
    int id = 0;
    std::string group, manufacturer, name, description, unit;
    float price = 0;
};

struct Client {
    int id = 0;
    bool firm = false;
    std::string givenName;
};

enum class State { FinishedPaid, FinishedNotPaid, NotFinishedNotPaid, NotFinishedPaid };

// A table open for adding, its fields looked up once.
class Adder {
 public:
    Adder(dao::Database& database, const std::string& table, std::initializer_list<const char*> fields)
        : rows_(database.OpenRecordset(table)) {
        for (const char* field : fields) {
            fields_.push_back(rows_.Fields(field));
        }
    }
    // Values in the order of the fields; a first field that is the key stands in `values` as Null. Its
    // number.
    int add(std::initializer_list<dao::Value> values) {
        rows_.AddNew();
        auto field = fields_.begin();
        for (const dao::Value& value : values) {
            if (!value.isNull()) {
                field->setValue(value);
            }
            ++field;
        }
        const int number = fields_.front().Value().asLong();
        rows_.Update();
        return number;
    }
    void close() { rows_.Close(); }

 private:
    dao::Recordset rows_;
    std::vector<dao::Field> fields_;
};

class Shop {
 public:
    Shop(dao::Database& database, const DemoPlan& plan)
        : database_(database),
          plan_(plan),
          dice_(plan.seed),
          requisitions_(database, "InvoiceData",
                        {"ServiceID", "OpremaID", "Grupa", "Proizvodjac", "Naziv", "Opis", "SN", "JM",
                         "Stanje", "Cena"}) {}

    void fill() {
        readCatalogue();
        addClients();
        addComputers();
        addServices();
        requisitions_.close();
    }

 private:
    std::map<int, std::string> readNames(const std::string& table, const std::string& field) {
        std::map<int, std::string> names;
        dao::Recordset rows = database_.OpenRecordset(table, dao::dbOpenSnapshot);
        for (; !rows.EOF(); rows.MoveNext()) {
            names[rows["ID"].asLong()] = rows[field].asText();
        }
        rows.Close();
        return names;
    }

    void readCatalogue() {
        const auto groups = readNames("Grupe", "Grupa");
        const auto manufacturers = readNames("Proizvodjaci", "Proizvodjac");
        dao::Recordset rows =
            database_.OpenRecordset("SELECT * FROM Oprema ORDER BY ID", dao::dbOpenSnapshot);
        for (; !rows.EOF(); rows.MoveNext()) {
            products_.push_back({rows["ID"].asLong(), groups.at(rows["IDGrupe"].asLong()),
                                 manufacturers.at(rows["IDProizvodjaca"].asLong()), rows["Naziv"].asText(),
                                 rows["Opis"].asText(), rows["JM"].asText(), rows["Cena"].asSingle()});
        }
        rows.Close();
        dao::Recordset kinds = database_.OpenRecordset("ServiceTypes", dao::dbOpenSnapshot);
        kindCount_ = static_cast<int>(kinds.RecordCount());
        kinds.Close();
    }

    dao::Date day(double days) const { return dao::Date{days}; }

    // ----- people and firms

    std::string surname() {
        return join({dice_.pick(words::kSurnameRoots), dice_.pick(words::kSurnameEndings)});
    }

    void addClients() {
        Adder table(database_, "Customers",
                    {"CustID", "Surname",   "GivenName",  "NickName",   "BirthDate", "BirthPlace",
                     "PIDNo",  "IssueDate", "ValidUntil", "IssuePlace", "FirmName",  "FirmAddress",
                     "Street", "City",      "ZIP",        "Country",    "Phone",     "Cellular",
                     "FAX",    "EMail",     "Web",        "Comments"});
        for (int i = 0; i < plan_.clients; ++i) {
            clients_.push_back(addClient(table));
        }
        table.close();
    }

    Client addClient(Adder& table) {
        Client client;
        client.firm = dice_.chance(35);
        client.givenName = dice_.pick(words::kGivenNames);
        const std::string family = surname();
        const auto& city =
            words::kCities[static_cast<std::size_t>(dice_.below(static_cast<int>(words::kCities.size())))];
        const std::string firm = client.firm ? firmName() : std::string();
        const std::string host = client.firm ? smallLetters(firm) : std::string("posta");
        const bool card = !client.firm && dice_.chance(60);
        const double issued = card ? plan_.baseDate - dice_.between(200, 3000) : kEmptyDate;
        const double born = card ? plan_.baseDate - dice_.between(19 * 365, 75 * 365) : kEmptyDate;
        client.id = table.add(
            {dao::Value(),
             family,
             client.givenName,
             dice_.chance(20) ? dice_.pick(words::kNickNames) : std::string(),
             day(born),
             card ? std::string(city.name) : std::string(),
             card ? dice_.digits(9) : std::string(),
             day(issued),
             day(card ? issued + 3652 : kEmptyDate),
             card ? join({"PU ", std::string(city.name)}) : std::string(),
             firm,
             client.firm,
             join({dice_.pick(words::kStreets), " ", std::to_string(dice_.between(1, 140))}),
             std::string(city.name),
             std::string(city.zip),
             "Srbija",
             join({std::string(city.area), "/555-", dice_.digits(4)}),
             join({"06", std::to_string(dice_.between(0, 5)), "/555-", dice_.digits(4)}),
             client.firm && dice_.chance(40) ? join({std::string(city.area), "/555-", dice_.digits(4)})
                                             : std::string(),
             join({smallLetters(client.givenName), ".", smallLetters(family), "@", host, ".example"}),
             client.firm ? join({"www.", host, ".example"}) : std::string(),
             dice_.chance(15) ? dice_.pick(words::kClientComments) : std::string()});
        return client;
    }

    std::string firmName() {
        return join({dice_.pick(words::kFirmWords), " ", dice_.pick(words::kFirmTrades),
                     dice_.pick(words::kFirmForms)});
    }

    // ----- computers

    void addComputers() {
        Adder table(database_, "Computers",
                    {"MachineID", "CustID", "MachineName", "Processor", "MotherBoard", "CacheMem", "RAMMem",
                     "HD", "CD", "VideoCard", "SoundCard", "PowerSupply", "Monitor", "Printer", "OS",
                     "Comments", "Network", "InternetEquipment"});
        for (int i = 0; i < plan_.computers; ++i) {
            // Everybody gets one, the firms most of the rest.
            int owner = i < plan_.clients ? i : dice_.below(plan_.clients);
            if (i >= plan_.clients && !clients_[static_cast<std::size_t>(owner)].firm) {
                owner = dice_.below(plan_.clients);
            }
            addComputer(table, owner);
        }
        table.close();
    }

    void addComputer(Adder& table, int owner) {
        const Client& client = clients_[static_cast<std::size_t>(owner)];
        const auto& model =
            words::kModels[static_cast<std::size_t>(dice_.below(static_cast<int>(words::kModels.size())))];
        const std::string name =
            client.firm ? join({dice_.pick(words::kOfficePlaces), " ", std::to_string(dice_.between(1, 9))})
                        : join({dice_.pick(words::kHomePlaces), " - ", client.givenName});
        computers_.push_back(table.add(
            {dao::Value(), client.id, name, std::string(model.processor), std::string(model.board),
             std::string(model.cache), std::string(model.memory), dice_.pick(words::kDisks),
             dice_.chance(30) ? std::string("DVD-RW") : std::string("nema"), std::string(model.video),
             "Na ploci", dice_.pick(words::kPowerSupplies), dice_.pick(words::kMonitors),
             dice_.chance(45) ? dice_.pick(words::kPrinters) : std::string(), std::string(model.system),
             dice_.chance(20) ? dice_.pick(words::kComputerComments) : std::string(), "Gigabitna, na ploci",
             dice_.pick(words::kInternet)}));
        firmOwned_.push_back(client.firm);
    }

    // ----- services

    // Which computer the next job is for.
    std::size_t computerOf(int service) {
        const int others = plan_.computers - 1;
        if (plan_.busiest == 0 || others == 0) {
            return static_cast<std::size_t>(dice_.below(plan_.computers));
        }
        // The busy one stands in the middle, so that nobody finds it by looking at either end first; its jobs
        // lie spread over the year.
        const auto busy = static_cast<std::size_t>(plan_.computers / 2);
        const auto share = [&](int upTo) {
            return static_cast<std::int64_t>(upTo) * plan_.busiest / plan_.services;
        };
        if (share(service + 1) > share(service)) {
            return busy;
        }
        const auto place = static_cast<std::size_t>((service - share(service)) % others);
        return place < busy ? place : place + 1;
    }

    void addServices() {
        Adder table(database_, "Services",
                    {"ID", "MachineID", "ServiceStarted", "ServiceToBeFinished", "ServiceFinished",
                     "ServiceTypes", "Comments", "Price", "Discount", "GST", "Paid"});
        for (int i = 0; i < plan_.services; ++i) {
            const auto place = computerOf(i);
            const std::int64_t day = static_cast<std::int64_t>(i) * kDaysTold / plan_.services;
            addService(table, computers_[place], firmOwned_[place],
                       plan_.baseDate - kDaysTold + static_cast<double>(day));
        }
        table.close();
    }

    State stateOf(double started) {
        // What came in lately is still on the bench; older jobs are closed but for the forgotten ones.
        const bool lately = plan_.baseDate - started <= 30;
        const int roll = dice_.below(100);
        const std::array<int, 3> limits = lately ? std::array{30, 45, 85} : std::array{78, 92, 97};
        if (roll < limits[0]) {
            return State::FinishedPaid;
        }
        if (roll < limits[1]) {
            return State::FinishedNotPaid;
        }
        return roll < limits[2] ? State::NotFinishedNotPaid : State::NotFinishedPaid;
    }

    // The kinds of one job: the catch-all alone, or one to three real ones.
    std::vector<int> kindsOfWork() {
        std::vector<int> kinds;
        if (kindCount_ < 2 || dice_.chance(10)) {
            return {1};
        }
        const int count = std::min(dice_.between(1, 3), kindCount_ - 1);
        while (static_cast<int>(kinds.size()) < count) {
            const int kind = dice_.between(2, kindCount_);
            if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) {
                kinds.push_back(kind);
            }
        }
        std::sort(kinds.begin(), kinds.end());
        return kinds;
    }

    void addService(Adder& table, int machine, bool firm, double started) {
        const std::vector<int> kinds = kindsOfWork();
        const State state = stateOf(started);
        const bool finished = state == State::FinishedPaid || state == State::FinishedNotPaid;
        const bool paid = state == State::FinishedPaid || state == State::NotFinishedPaid;
        const double due = dice_.chance(60) ? started + dice_.between(1, 7) : kEmptyDate;
        const double end = finished ? std::min(started + dice_.between(0, 6), plan_.baseDate) : kEmptyDate;
        const std::vector<Drawn> drawn = dice_.chance(25) ? drawProducts() : std::vector<Drawn>();
        const std::int64_t price = drawn.empty() ? priceOfWork(kinds) : priceOf(drawn);
        const int discount = dice_.chance(15) ? 5 * dice_.between(1, 2) : 0;
        const int tax = firm ? 20 : 0;
        const std::int64_t net = price - (price * discount + 50) / 100;
        const std::int64_t gross = (net * (100 + tax) + 50) / 100;
        const std::int64_t advance = dice_.chance(30) ? gross / 2 / 10000 * 10000 : 0;
        const std::string comments =
            finished ? join({dice_.pick(words::kFaults), "\n", dice_.pick(words::kOutcomes)})
                     : dice_.pick(words::kFaults);
        const int number =
            table.add({dao::Value(), machine, day(started), day(due), day(end), textOf(kinds), comments,
                       dao::Currency::fromScaled(price), static_cast<float>(discount),
                       static_cast<float>(tax), dao::Currency::fromScaled(paid ? gross : advance)});
        for (const Drawn& piece : drawn) {
            const Product& p = *piece.product;
            requisitions_.add({number, p.id, p.group, p.manufacturer, p.name, p.description, piece.serials,
                               p.unit, static_cast<float>(piece.quantity), p.price});
        }
    }

    static std::string textOf(const std::vector<int>& kinds) {
        std::string text;
        for (const int kind : kinds) {
            text += (text.empty() ? "" : "|") + std::to_string(kind);
        }
        return text;
    }

    // Ten-thousandths of a euro; whole fives, as the shop's price for labour goes.
    std::int64_t priceOfWork(const std::vector<int>& kinds) {
        std::int64_t euros = 0;
        for (const int kind : kinds) {
            euros += words::kPriceOfKind[static_cast<std::size_t>(kind) % words::kPriceOfKind.size()];
        }
        return (euros + std::int64_t{5} * dice_.between(0, 2)) * 10000;
    }

    struct Drawn {
        const Product* product = nullptr;
        int quantity = 1;
        std::string serials;
    };

    std::vector<Drawn> drawProducts() {
        std::vector<Drawn> drawn;
        const int count =
            products_.empty() ? 0 : std::min(dice_.between(1, 3), static_cast<int>(products_.size()));
        while (static_cast<int>(drawn.size()) < count) {
            const Product& product =
                products_[static_cast<std::size_t>(dice_.below(static_cast<int>(products_.size())))];
            if (std::any_of(drawn.begin(), drawn.end(),
                            [&](const Drawn& d) { return d.product == &product; })) {
                continue;
            }
            Drawn piece{&product, product.unit == "m" ? dice_.between(5, 30) : dice_.chance(15) ? 2 : 1, {}};
            for (int i = 0; product.price > 30 && i < piece.quantity; ++i) {
                piece.serials += join({piece.serials.empty() ? "" : ", ", "TV", dice_.digits(8)});
            }
            drawn.push_back(std::move(piece));
        }
        return drawn;
    }

    static std::int64_t priceOf(const std::vector<Drawn>& drawn) {
        std::int64_t sum = 0;
        for (const Drawn& piece : drawn) {
            sum += dao::Value(piece.product->price).asCurrency().scaled() * piece.quantity;
        }
        return sum;
    }

    dao::Database& database_;
    const DemoPlan& plan_;
    Dice dice_;
    Adder requisitions_;
    std::vector<Product> products_;
    std::vector<Client> clients_;
    std::vector<int> computers_;
    std::vector<bool> firmOwned_;  // one for each computer
    int kindCount_ = 0;
};

void check(const DemoPlan& plan) {
    if (plan.clients < 0 || plan.computers < 0 || plan.services < 0 || plan.busiest < 0) {
        throw std::invalid_argument("a shop has no negative numbers");
    }
    if ((plan.computers > 0 && plan.clients == 0) || (plan.services > 0 && plan.computers == 0)) {
        throw std::invalid_argument("computers need clients, and services need computers");
    }
    if (plan.busiest > plan.services) {
        throw std::invalid_argument("the busiest computer has more services than there are");
    }
}

}  // namespace

void fillDemoShop(dao::Database& database, const DemoPlan& plan) {
    check(plan);
    dao::DBEngine::BeginTrans();
    try {
        Shop(database, plan).fill();
        dao::DBEngine::CommitTrans();
    } catch (...) {
        dao::DBEngine::Rollback();
        throw;
    }
}

}  // namespace data
