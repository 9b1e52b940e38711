#include "platform/dao/client_work.h"

#include <chrono>
#include <random>
#include <sstream>
#include <thread>

namespace daotest {
namespace {

using namespace dao;

class Workstation {
 public:
    Workstation(Child& child, const std::string& path, unsigned seed, std::string city)
        : child_(child),
          seed_(seed),
          random_(seed),
          city_(std::move(city)),
          db_(openShop(path)),
          set_(db_.OpenRecordset(city_.empty() ? "Customers"
                                               : "SELECT * FROM Customers WHERE City='" + city_ + "'")) {}

    void step() {
        announced_ = false;
        ++step_;
        const unsigned what = random_() % 4;
        if (what == 0 || set_.RecordCount() < 5) {
            add();
            return;
        }
        set_.MoveFirst();
        set_.Move(static_cast<std::int64_t>(random_() % static_cast<unsigned>(set_.RecordCount())));
        if (what == 1) {
            announce("D " + number());
            set_.Delete();
        } else {
            rename();
        }
    }
    bool hasAnnounced() const { return announced_; }

 private:
    void add() {
        set_.AddNew();
        set_.Fields("Surname") = Value(name());
        set_.Fields("City") = Value(city_);
        set_.Fields("Comments") = Value(std::string(random_() % 3000, 'x'));
        announce("A " + number() + ' ' + name());
        set_.Update();
    }
    void rename() {
        set_.Edit();
        set_.Fields("Surname") = Value(name());
        announce("E " + number() + ' ' + name());
        set_.Update();
    }
    std::string name() const { return "n" + std::to_string(seed_ % 1000) + '-' + std::to_string(step_); }
    std::string number() { return std::to_string(set_["CustID"].asLong()); }
    void announce(const std::string& line) {
        child_.tell(line);
        announced_ = true;
    }

    Child& child_;
    unsigned seed_;
    std::minstd_rand random_;
    std::string city_;
    Database db_;
    Recordset set_;
    int step_ = 0;
    bool announced_ = false;
};

}  // namespace

int workForEver(Child& child, const std::string& path, unsigned seed, const std::string& city) {
    Workstation here(child, path, seed, city);
    while (true) {
        try {
            here.step();
            child.tell("done");
        } catch (const Error& error) {
            if (city.empty()) {
                throw;
            }
            if (here.hasAnnounced()) {
                child.tell("failed " + error.Description());
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }
}

Clients after(Clients clients, const std::string& step) {
    std::istringstream in(step);
    char what = 0;
    int number = 0;
    std::string name;
    in >> what >> number >> name;
    if (what == 'D') {
        clients.erase(number);
    } else {
        clients[number] = name;
    }
    return clients;
}

void Report::hear(const std::string& line) {
    if (line == "done") {
        written = after(std::move(written), underWay);
        underWay.clear();
    } else if (line.starts_with("failed")) {
        underWay.clear();
    } else {
        underWay = line;
    }
}

Clients clientsIn(const std::string& path, const std::string& city) {
    Database here = openShop(path);
    Clients found;
    for (Recordset set = here.OpenRecordset(
             city.empty() ? "Customers" : "SELECT * FROM Customers WHERE City='" + city + "'");
         !set.EOF(); set.MoveNext()) {
        found[set["CustID"].asLong()] = set["Surname"].asText();
    }
    return found;
}

}  // namespace daotest
