// Many workstations at once on a server's shop: every one of them is a process with a connection of its own.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>

#include "platform/dao/dao_shop.h"

using namespace dao;
using daotest::Child;
using daotest::errorOf;
using daotest::openShop;

namespace {

constexpr int kWorkstations = 8;
constexpr int kProducts = 10;

// How often each does its work; the whole crowd takes minutes, and a try of it seconds.
int timesOf(int whole, int tried) {
    return std::getenv("TARVELLO_TEST_LONG") != nullptr ? whole : tried;
}

class ServerCrowdTest : public daotest::ServerShopTest {
 protected:
    void SetUp() override {
        ServerShopTest::SetUp();
        fill(kProducts);
        db.Execute("UPDATE Oprema SET Stanje=10000");
        TableDef table = db.CreateTableDef("DocNumber");
        table.Append(table.CreateField("RacunBroj", dbLong));
        db.TableDefs().Append(table);
        Recordset numbers = db.OpenRecordset("DocNumber");
        numbers.AddNew();
        numbers.Fields("RacunBroj") = Value(0);
        numbers.Update();
        db.Close();
    }

    // All of them at once; what each of them told, one after the other. `meeting`: each says "editing" once,
    // and waits for the others.
    std::vector<std::string> crowd(const std::function<void(int who, Database& here, Child& child)>& work,
                                   bool meeting = false) {
        std::vector<std::unique_ptr<Child>> children;
        for (int who = 0; who < kWorkstations; ++who) {
            children.push_back(std::make_unique<Child>([&, who](Child& child) {
                DBEngine::setLockTimeout(60'000);
                Database here = openShop(path);
                child.tell("ready");
                child.hear();
                work(who, here, child);
                return 0;
            }));
        }
        together(children, "ready");
        if (meeting) {
            together(children, "editing");
        }
        std::vector<std::string> told;
        for (const auto& child : children) {
            for (std::string line = child->hear(); !line.empty(); line = child->hear()) {
                told.push_back(std::move(line));
            }
            EXPECT_EQ(child->wait(), 0);
        }
        return told;
    }

    // Nobody goes on before all of them have said the line.
    static void together(const std::vector<std::unique_ptr<Child>>& children, const std::string& line) {
        for (const auto& child : children) {
            EXPECT_EQ(child->hear(), line);
        }
        for (const auto& child : children) {
            child->tell("go");
        }
    }

    // Whoever comes next finds every row of the table free.
    void expectNothingLocked(const std::string& table) {
        DBEngine::setLockTimeout(1000);
        Database here = openShop(path);
        for (Recordset set = here.OpenRecordset(table); !set.EOF(); set.MoveNext()) {
            EXPECT_EQ(errorOf([&] { set.Edit(); }), 0) << table;
            set.CancelUpdate();
        }
        EXPECT_EQ(errorOf([&] { openShop(path, true); }), 0);
    }
};

TEST_F(ServerCrowdTest, EightDrawingTheSameTenProductsLoseNothing) {
    const int each = timesOf(1000, 100);
    crowd([&](int who, Database& here, Child&) {
        Recordset set = here.OpenRecordset("Oprema");
        for (int i = 0; i < each; ++i) {
            set.FindFirst("ID=" + std::to_string((i * 7 + who) % kProducts + 1));
            set.Edit();
            set.Fields("Stanje") = Value(set["Stanje"].asSingle() - 1);
            set.Update();
        }
    });
    db = openShop(path);
    double sum = 0;
    for (Recordset set = db.OpenRecordset("Oprema"); !set.EOF(); set.MoveNext()) {
        EXPECT_LT(set["Stanje"].asSingle(), 10000);
        sum += set["Stanje"].asDouble();
    }
    EXPECT_EQ(sum, kProducts * 10000 - kWorkstations * each);
    db.Close();
    expectNothingLocked("Oprema");
}

TEST_F(ServerCrowdTest, EightWhoNumberTheirDocumentsGetEveryNumberOnce) {
    const int each = timesOf(500, 40);
    const std::vector<std::string> told = crowd([&](int, Database& here, Child& child) {
        Recordset set = here.OpenRecordset("DocNumber");
        for (int i = 0; i < each; ++i) {
            set.Edit();
            const int number = set["RacunBroj"].asLong() + 1;
            set.Fields("RacunBroj") = Value(number);
            set.Update();
            child.tell(std::to_string(number));
        }
    });
    std::vector<int> numbers;
    std::transform(told.begin(), told.end(), std::back_inserter(numbers),
                   [](const std::string& line) { return std::stoi(line); });
    std::sort(numbers.begin(), numbers.end());
    std::vector<int> all(static_cast<std::size_t>(kWorkstations * each));
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<int>(i) + 1;
    }
    EXPECT_EQ(numbers, all);
    expectNothingLocked("DocNumber");
}

// Each has a service of its own in the editor while the others have theirs, in the rows beside it.
TEST_F(ServerCrowdTest, EightWhoEditNeighbouringServicesDoNotWaitForEachOther) {
    const int each = timesOf(500, 30);
    const auto work = [&](int who, Database& here, Child& child) {
        Recordset set = here.OpenRecordset("Services");
        set.FindFirst("ID=" + std::to_string(who + 1));
        for (int i = 0; i < each; ++i) {
            set.Edit();
            if (i == 0) {
                child.tell("editing");
                child.hear();
            }
            set.Fields("Price") = Value(set["Price"].asDouble() + 1);
            set.Update();
        }
    };
    EXPECT_TRUE(crowd(work, true).empty());
    db = openShop(path);
    Recordset set = db.OpenRecordset("Services");
    for (int service = 1; service <= kProducts; ++service, set.MoveNext()) {
        EXPECT_EQ(set["Price"].asDouble(), service + (service <= kWorkstations ? each : 0)) << service;
    }
    db.Close();
    expectNothingLocked("Services");
}

}  // namespace
