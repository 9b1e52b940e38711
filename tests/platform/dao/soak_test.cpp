// A long day of a busy shop in a short time: eight workstations on one file do everything at once, two of
// them are killed every few seconds, and now and then all leave and one compacts the file. scripts/soak runs
// it for as long as one likes: TARVELLO_SOAK_SECONDS, drawn by TARVELLO_SOAK_SEED.
#include <malloc.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <set>
#include <sstream>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::numberFrom;
using daotest::openShop;
namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWorkstations = 8;
constexpr int kSpared = 2;  // these are never killed: they show whether anything grows
constexpr int kProducts = 10;
constexpr int kStock = 100'000;
constexpr int kLockTimeout = 60'000;  // milliseconds

struct Usage {
    std::int64_t kilobytes = 0;
    int files = 0;
};

// What the process holds: memory that the allocator keeps for the next time is not among it.
Usage usageHere() {
    malloc_trim(0);
    std::ifstream memory("/proc/self/statm");
    std::int64_t pages = 0;
    std::int64_t resident = 0;
    memory >> pages >> resident;
    const auto files = std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    return {resident * 4, static_cast<int>(files)};
}

// One workstation. It tells each thing when it stands in the file: "number N", "client N", "gone N", and at
// the end "longest MS", "grown KB FILES".
class Workstation {
 public:
    Workstation(Child& child, const std::string& path, int who, unsigned seed)
        : child_(child), path_(path), who_(who), random_(seed) {
        DBEngine::setLockTimeout(kLockTimeout);
        open();
    }

    void work() {
        constexpr void (Workstation::*kThings[])() = {
            &Workstation::draw,  &Workstation::draw,   &Workstation::takeNumber, &Workstation::takeIn,
            &Workstation::letGo, &Workstation::filter, &Workstation::nameQuery,  &Workstation::reprice};
        for (int step = 0;; ++step) {
            if (isCalled() && !answer()) {
                return;
            }
            if (step == 200) {
                before_ = usageHere();
            }
            const auto begin = Clock::now();
            (this->*kThings[random_() % std::size(kThings)])();
            longest_ = std::max(longest_,
                                std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin));
        }
    }

 private:
    void open() { db_ = openShop(path_); }
    bool isCalled() const {
        pollfd end{child_.readEnd(), POLLIN, 0};
        return poll(&end, 1, 0) == 1;
    }
    // False at the day's end.
    bool answer() {
        const std::string line = child_.hear();
        db_.Close();
        if (line == "leave") {
            child_.tell("left");
            child_.hear();
            open();
            return true;
        }
        const Usage now = usageHere();
        child_.tell("longest " + std::to_string(longest_.count()));
        if (before_.kilobytes > 0) {
            child_.tell("grown " + std::to_string(now.kilobytes - before_.kilobytes) + ' ' +
                        std::to_string(now.files - before_.files));
        }
        return false;
    }
    void tell(const char* what, int number) const {
        child_.tell(std::string(what) + ' ' + std::to_string(number));
    }

    // A part out of the stock and onto a service: both, or neither.
    void draw() {
        const int product = static_cast<int>(random_() % kProducts) + 1;
        DBEngine::BeginTrans();
        Recordset stock = db_.OpenRecordset("SELECT * FROM Oprema WHERE ID=" + std::to_string(product));
        stock.Edit();
        stock.Fields("Stanje") = Value(stock["Stanje"].asSingle() - 1);
        stock.Update();
        Recordset drawn = db_.OpenRecordset("InvoiceData");
        drawn.AddNew();
        drawn.Fields("ServiceID") = Value(who_ + 1);
        drawn.Fields("OpremaID") = Value(product);
        drawn.Fields("Stanje") = Value(1.0F);
        drawn.Update();
        DBEngine::CommitTrans();
    }
    void takeNumber() {
        Recordset set = db_.OpenRecordset("DocNumber");
        set.Edit();
        const int number = set["RacunBroj"].asLong() + 1;
        set.Fields("RacunBroj") = Value(number);
        set.Update();
        tell("number", number);
    }
    // A client with a computer and a service on it.
    void takeIn() {
        DBEngine::BeginTrans();
        Recordset clients = db_.OpenRecordset("Customers");
        clients.AddNew();
        const int client = clients["CustID"].asLong();
        clients.Fields("Surname") = Value(std::string("Soak"));
        clients.Fields("Comments") = Value(std::string(random_() % 9000, 'x'));
        clients.Update();
        Recordset computers = db_.OpenRecordset("Computers");
        computers.AddNew();
        const int computer = computers["MachineID"].asLong();
        computers.Fields("CustID") = Value(client);
        computers.Update();
        Recordset services = db_.OpenRecordset("Services");
        services.AddNew();
        services.Fields("MachineID") = Value(computer);
        services.Update();
        DBEngine::CommitTrans();
        mine_.push_back(client);
        tell("client", client);
    }
    void letGo() {
        if (mine_.size() < 5) {
            return;
        }
        const std::size_t which = random_() % mine_.size();
        const int client = mine_[which];
        tell("going", client);
        db_.Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(client));
        mine_.erase(mine_.begin() + static_cast<std::ptrdiff_t>(which));
        tell("gone", client);
    }
    void filter() {
        Recordset set =
            db_.OpenRecordset("SELECT * FROM Services WHERE Price>" + std::to_string(random_() % 8));
        for (int i = 0; i < 50 && !set.EOF(); ++i, set.MoveNext()) {
            set["Price"].asDouble();
        }
    }
    void nameQuery() {
        const std::string name = "Q" + std::to_string(who_);
        const std::string text = "SELECT * FROM Services WHERE ID=" + std::to_string(random_() % 100);
        if (errorOf([&] { db_.QueryDefs()[name].setSQL(text); }) != 0) {
            db_.CreateQueryDef(name, text);
        }
        EXPECT_EQ(db_.QueryDefs()[name].SQL(), text);
    }
    void reprice() {
        Recordset set = db_.OpenRecordset("SELECT * FROM Services WHERE ID=" + std::to_string(who_ + 1));
        set.Edit();
        set.Fields("Price") = Value(set["Price"].asDouble() + 1);
        set.Update();
    }

    Child& child_;
    std::string path_;
    int who_;
    std::minstd_rand random_;
    Database db_;
    std::vector<int> mine_;
    Usage before_;
    std::chrono::milliseconds longest_{0};
};

class SoakTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(kProducts);
        db.Execute("UPDATE Oprema SET Stanje=" + std::to_string(kStock));
        TableDef table = db.CreateTableDef("DocNumber");
        table.Append(table.CreateField("RacunBroj", dbLong));
        db.TableDefs().Append(table);
        db.Execute("INSERT INTO DocNumber (RacunBroj) VALUES (0)");
        db.Close();
        random.seed(static_cast<unsigned>(numberFrom("TARVELLO_SOAK_SEED").value_or(1)));
    }

    void begin(int who) {
        const auto seed = static_cast<unsigned>(random());
        stations[static_cast<std::size_t>(who)] = std::make_unique<Child>([&, who, seed](Child& child) {
            Workstation(child, path, who, seed).work();
            return ::testing::Test::HasFailure() ? 1 : 0;
        });
    }
    void kill(int who) {
        Child& child = *stations[static_cast<std::size_t>(who)];
        child.kill();
        EXPECT_EQ(child.wait(), -SIGKILL);
        hearAll(child);
        ++kills;
    }
    // False: the other side is gone.
    bool hearLine(const Child& child) {
        const std::string line = child.hear();
        note(line);
        return !line.empty();
    }
    void hearAll(const Child& child) {
        while (hearLine(child)) {
        }
    }
    void note(const std::string& line) {
        std::istringstream in(line);
        std::string what;
        int number = 0;
        in >> what >> number;
        if (what == "number") {
            EXPECT_TRUE(numbers.insert(number).second) << "number " << number << " twice";
        } else if (what == "client") {
            EXPECT_TRUE(clients.insert(number).second) << "client " << number << " twice";
        } else if (what == "going") {
            clients.erase(number);
            leaving.insert(number);
        } else if (what == "gone") {
            leaving.erase(number);
            gone.insert(number);
        } else if (what == "longest") {
            longest = std::max(longest, number);
        } else if (what == "grown") {
            int files = 0;
            in >> files;
            EXPECT_LT(number, 16 * 1024) << "kilobytes";
            grown = std::max(grown, number);
            EXPECT_LE(files, 0);
        }
    }
    // What the workstations tell until then: nobody may wait because nobody listens.
    void listenUntil(Clock::time_point then) {
        std::vector<pollfd> ends;
        for (const auto& child : stations) {
            ends.push_back({child->readEnd(), POLLIN, 0});
        }
        for (auto left = then - Clock::now(); left.count() > 0; left = then - Clock::now()) {
            poll(ends.data(), ends.size(),
                 static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(left).count()));
            for (std::size_t who = 0; who < ends.size(); ++who) {
                if (ends[who].revents != 0 && !hearLine(*stations[who])) {
                    ends[who].fd = -1;
                }
            }
        }
    }
    void callAllAndCompact() {
        for (const auto& child : stations) {
            child->tell("leave");
        }
        for (const auto& child : stations) {
            std::string line = child->hear();
            for (; line != "left" && !line.empty(); line = child->hear()) {
                note(line);
            }
            EXPECT_EQ(line, "left");
        }
        const std::string dense = folder.file("Shop.$$1");
        DBEngine::CompactDatabase(path, dense, daotest::kConnect);
        DBEngine::CopyDatabase(dense, path);
        DBEngine::DeleteDatabase(dense);
        for (const auto& child : stations) {
            child->tell("come");
        }
    }
    void expectAllIsThere();

    std::vector<std::unique_ptr<Child>> stations{kWorkstations};
    std::minstd_rand random;
    std::set<int> numbers;
    std::set<int> clients;
    std::set<int> leaving;
    std::set<int> gone;
    int kills = 0;
    int longest = 0;  // milliseconds
    int grown = 0;    // kilobytes
};

void SoakTest::expectAllIsThere() {
    DBEngine::RepairDatabase(path, daotest::kConnect);
    EXPECT_FALSE(DBEngine::LastRepair().damaged);
    db = openShop(path);
    double stock = 0;
    for (Recordset set = db.OpenRecordset("Oprema"); !set.EOF(); set.MoveNext()) {
        stock += set["Stanje"].asDouble();
    }
    const int last = db.OpenRecordset("DocNumber")["RacunBroj"].asLong();
    Recordset drawn = db.OpenRecordset("InvoiceData");
    drawn.MoveLast();
    EXPECT_EQ(stock + static_cast<double>(drawn.RecordCount()), 1.0 * kProducts * kStock);
    // A killed one had perhaps taken one more and not told it yet.
    EXPECT_GE(last, static_cast<int>(numbers.size()));
    EXPECT_LE(last, static_cast<int>(numbers.size()) + kills);

    std::set<int> owners;
    std::set<int> known;
    for (Recordset set = db.OpenRecordset("Customers"); !set.EOF(); set.MoveNext()) {
        known.insert(set["CustID"].asLong());
    }
    for (Recordset set = db.OpenRecordset("Computers"); !set.EOF(); set.MoveNext()) {
        owners.insert(set["CustID"].asLong());
    }
    EXPECT_EQ(owners, known);  // each with its computer, and no computer without its client
    EXPECT_TRUE(std::includes(known.begin(), known.end(), clients.begin(), clients.end()));
    for (const int client : gone) {
        EXPECT_FALSE(known.contains(client)) << client;
    }
    EXPECT_LE(db.QueryDefs().Count(), kWorkstations + 1);
    db.Close();
}

TEST_F(SoakTest, EverythingAtOnceWithKillsAndCompactionsStaysExact) {
    std::signal(SIGPIPE, SIG_IGN);  // one that died of an error is told by what it leaves
    const auto end = Clock::now() + std::chrono::seconds(numberFrom("TARVELLO_SOAK_SECONDS").value_or(12));
    for (int who = 0; who < kWorkstations; ++who) {
        begin(who);
    }
    auto nextLeave = Clock::now() + std::chrono::seconds(5);
    while (Clock::now() < end) {
        listenUntil(Clock::now() + std::chrono::milliseconds(1500 + random() % 1500));
        std::set<int> victims;
        while (victims.size() < 2) {
            victims.insert(kSpared + static_cast<int>(random() % (kWorkstations - kSpared)));
        }
        for (const int who : victims) {
            kill(who);
            begin(who);
        }
        if (Clock::now() > nextLeave) {
            callAllAndCompact();
            nextLeave = Clock::now() + std::chrono::seconds(120);
        }
    }
    for (const auto& child : stations) {
        child->tell("end");
    }
    for (const auto& child : stations) {
        hearAll(*child);
        EXPECT_EQ(child->wait(), 0);
    }
    EXPECT_LT(longest, kLockTimeout);
    expectAllIsThere();
    std::printf(
        "%d kills, %zu numbers, %zu clients taken in and %zu let go; the longest wait was %d ms, the most "
        "growth %d KB\n",
        kills, numbers.size(), clients.size() + gone.size() + leaving.size(), gone.size(), longest, grown);
}

}  // namespace
