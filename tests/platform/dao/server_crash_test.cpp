// A shop on a server, whose workstations are killed amid their work, and the server with them.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <random>
#include <thread>

#include "platform/dao/client_work.h"
#include "platform/dao/postgres/connection.h"
#include "platform/dao/postgres/shop_making.h"
#include "platform/dao/postgres/signpost.h"
#include "support/server_cluster.h"

using namespace dao;
using daotest::Child;
using daotest::Clients;
using daotest::errorOf;
using daotest::openShop;
using daotest::Report;
using namespace std::chrono_literals;

namespace {

// How often; TARVELLO_TEST_LONG asks for the whole of it.
int timesOf(int whole, int tried) {
    return std::getenv("TARVELLO_TEST_LONG") != nullptr ? whole : tried;
}

class ServerCrashTest : public daotest::ServerShopTest {
 protected:
    // Every client can be edited at once by whoever comes after a crash.
    void expectNothingLocked() {
        DBEngine::setLockTimeout(2000);  // until the server has noticed that the workstation is dead
        Database here = openShop(path);
        for (Recordset set = here.OpenRecordset("Customers"); !set.EOF(); set.MoveNext()) {
            ASSERT_EQ(errorOf([&] { set.Edit(); }), 0);
            set.CancelUpdate();
        }
    }
};

TEST_F(ServerCrashTest, WhatWasReportedIsThereAndNothingStaysLocked) {
    db.Close();
    Report report;
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::minstd_rand random(seed);
    int interrupted = 0;
    const int rounds = timesOf(200, 12);
    for (int round = 0; round < rounds; ++round) {
        const unsigned childSeed = static_cast<unsigned>(random());
        Child child([&](Child& self) { return daotest::workForEver(self, path, childSeed); });
        report.hear(child.hear());
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30'000));
        child.kill();
        EXPECT_EQ(child.wait(), -SIGKILL);
        for (std::string line = child.hear(); !line.empty(); line = child.hear()) {
            report.hear(line);
        }
        expectNothingLocked();  // and what was on its way to the server has come to its end
        const Clients found = daotest::clientsIn(path);
        if (!report.underWay.empty() && found != report.written) {
            ASSERT_EQ(found, daotest::after(report.written, report.underWay)) << "round " << round;
        } else {
            ASSERT_EQ(found, report.written) << "round " << round;
        }
        interrupted += report.underWay.empty() ? 0 : 1;
        report = {found, {}};
    }
    EXPECT_GT(report.written.size(), 3U);
    EXPECT_GT(interrupted, 0);
    RecordProperty("interrupted", interrupted);
}

// A workstation, and somebody who writes down what it says.
class Watched {
 public:
    Watched(const std::string& path, unsigned seed, const std::string& city)
        : child_([&](Child& self) {
              DBEngine::setLockTimeout(10'000);
              return daotest::workForEver(self, path, seed, city);
          }) {}

    void listen() {
        listener_ = std::thread([this] { writeDown(); });
    }
    // Waits until it has written something more; false where it does not within a minute.
    bool goesOn() const {
        const int before = done();
        const auto until = std::chrono::steady_clock::now() + 60s;
        while (done() == before && std::chrono::steady_clock::now() < until) {
            std::this_thread::sleep_for(10ms);
        }
        return done() != before;
    }
    Report end() {
        child_.kill();
        child_.wait();
        listener_.join();
        return report_;
    }
    const std::vector<std::string>& failures() const { return failures_; }  // once it has ended

 private:
    void writeDown() {
        for (std::string line = child_.hear(); !line.empty(); line = child_.hear()) {
            const std::lock_guard<std::mutex> guard(writing_);
            report_.hear(line);
            done_ += line == "done" ? 1 : 0;
            if (line.starts_with("failed")) {
                failures_.push_back(line);
            }
        }
    }
    int done() const {
        const std::lock_guard<std::mutex> guard(writing_);
        return done_;
    }

    Child child_;
    std::thread listener_;
    mutable std::mutex writing_;
    Report report_;
    int done_ = 0;
    std::vector<std::string> failures_;
};

// A server of the test's own, with an empty shop.
class ServerStopTest : public ::testing::Test {
 protected:
    void SetUp() override {
        postgres::Connection(cluster_.place()).execute("CREATE DATABASE shop TEMPLATE template0");
        postgres::Address place = cluster_.place();
        place.dbname = "shop";
        postgres::NewShop(place).finish();
        postgres::writeSignpost(path_, place);
        Database db = openShop(path_);
        daotest::createTables(db);
    }

    // One store after the other says what it holds, once what was under way has come to its end.
    static void expectAsReported(const Clients& found, const Report& report) {
        if (!report.underWay.empty() && found != report.written) {
            EXPECT_EQ(found, daotest::after(report.written, report.underWay));
        } else {
            EXPECT_EQ(found, report.written);
        }
    }

    tests::OwnCluster cluster_;
    daotest::TempFolder folder_;
    std::string path_ = folder_.file("Shop.mdb");
};

// Whoever was told that his change is not written finds it not written, whoever was told that it is finds it,
// and nobody has to start the program again.
TEST_F(ServerStopTest, WorkGoesOnWhenTheServerIsBackAndNothingReportedIsLost) {
    const int workstations = timesOf(8, 4);
    std::vector<std::unique_ptr<Watched>> office;
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (int who = 0; who < workstations; ++who) {
        office.push_back(std::make_unique<Watched>(path_, seed + static_cast<unsigned>(who),
                                                   "Grad " + std::to_string(who)));
    }
    for (const auto& each : office) {
        each->listen();
    }
    const int rounds = timesOf(50, 4);
    for (int round = 0; round < rounds; ++round) {
        for (const auto& each : office) {
            ASSERT_TRUE(each->goesOn()) << "round " << round;
        }
        cluster_.stopAtOnce();
        cluster_.start();
    }
    std::size_t failures = 0;
    for (int who = 0; who < workstations; ++who) {
        EXPECT_TRUE(office[static_cast<std::size_t>(who)]->goesOn());
        const Report report = office[static_cast<std::size_t>(who)]->end();
        std::this_thread::sleep_for(200ms);  // for what was under way
        expectAsReported(daotest::clientsIn(path_, "Grad " + std::to_string(who)), report);
        for (const std::string& failure : office[static_cast<std::size_t>(who)]->failures()) {
            EXPECT_EQ(failure.find("is not known"), std::string::npos) << failure;
            ++failures;
        }
    }
    EXPECT_GT(failures, 0U) << "the server was never stopped amid a change";
    RecordProperty("failed_changes", static_cast<int>(failures));
}

}  // namespace
