#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <thread>

#include "failures.h"
#include "platform/dao/postgres/connection.h"
#include "proxy.h"
#include "support/server_cluster.h"

using namespace std::chrono_literals;
using dao::postgres::Clock;
using dao::postgres::Connection;
using dao::postgres::Patience;
using dao::postgres::TransactionState;

namespace {

// Seconds. Without a bound of its own a call would wait for longer.
constexpr double kUnbounded = 8.0;

double secondsSince(Clock::time_point begun) {
    return std::chrono::duration<double>(Clock::now() - begun).count();
}

// Does something to a connection while it is at work.
Failure whileAtWork(Connection& connection, const std::function<void()>& harm) {
    std::thread other([&] {
        std::this_thread::sleep_for(300ms);
        harm();
    });
    const Failure failure = failureOf([&] { connection.run("SELECT pg_sleep(60)", {}, Patience(30s)); });
    other.join();
    return failure;
}

void expectLoss(const Connection& connection, const Failure& failure) {
    EXPECT_TRUE(failure.lost) << failure.sentence;
    EXPECT_EQ(failure.number, dao::errDiskIo);
    EXPECT_TRUE(connection.lost());
    EXPECT_EQ(connection.transactionState(), TransactionState::kLost);
    EXPECT_EQ(connection.backendPid(), 0);
}

}  // namespace

TEST(Loss, OfTheServerInTheMiddleOfAStatement) {
    tests::OwnCluster cluster;
    Connection connection(cluster.place());
    const Failure failure = whileAtWork(connection, [&] { cluster.stopAtOnce(); });
    expectLoss(connection, failure);
    EXPECT_TRUE(failure.says(cluster.place().host)) << failure.sentence;
    EXPECT_TRUE(failureOf([&] { connection.run("SELECT 1"); }).lost);
    EXPECT_TRUE(failureOf([&] { Connection again(cluster.place()); }).lost);
    cluster.start();
    EXPECT_EQ(Connection(cluster.place()).run("SELECT 1::int8").integer(0, 0), 1);
}

TEST(Loss, OfTheServersProcessIsFollowedByANewConnectionOnceItHasRecovered) {
    tests::OwnCluster cluster;
    Connection connection(cluster.place());
    const int process = connection.backendPid();
    const Failure failure = whileAtWork(connection, [&] { EXPECT_EQ(kill(process, SIGKILL), 0); });
    expectLoss(connection, failure);
    // The server sets itself up anew, and takes nobody until it has.
    EXPECT_EQ(Connection(cluster.place(), {{}, 60s}).run("SELECT 1::int8").integer(0, 0), 1);
}

TEST(Loss, WhenTheServersKeeperEndsTheConnection) {
    const tests::ServerDatabase database;
    Connection connection(database.place());
    const int process = connection.backendPid();
    const Failure failure = whileAtWork(connection, [&] {
        Connection(tests::serverPlace())
            .run("SELECT pg_terminate_backend($1)", dao::postgres::Parameters().integer4(process));
    });
    expectLoss(connection, failure);
}

TEST(Loss, BetweenTwoStatementsIsNoticedAtTheNext) {
    const tests::ServerDatabase database;
    Connection connection(database.place());
    Connection(tests::serverPlace())
        .run("SELECT pg_terminate_backend($1, 10000)",
             dao::postgres::Parameters().integer4(connection.backendPid()));
    expectLoss(connection, failureOf([&] { connection.run("SELECT 1"); }));
}

TEST(Loss, OfTheNetworkEndsACallWithinItsTime) {
    const tests::ServerDatabase database;
    Proxy proxy(database.place());
    Connection connection(proxy.place());
    EXPECT_EQ(connection.run("SELECT 1::int8").integer(0, 0), 1);
    proxy.goDead();
    const auto begun = Clock::now();
    const Failure failure = failureOf([&] { connection.run("SELECT 1::int8", {}, Patience(500ms)); });
    EXPECT_GE(secondsSince(begun), 0.5);
    EXPECT_LT(secondsSince(begun), kUnbounded);
    expectLoss(connection, failure);
    EXPECT_TRUE(failure.says("127.0.0.1")) << failure.sentence;
}

TEST(Loss, OfTheNetworkEndsLongWorkThatIsGivenUp) {
    const tests::ServerDatabase database;
    Proxy proxy(database.place());
    Connection connection(proxy.place());
    proxy.goDead();
    const auto begun = Clock::now();
    const Failure failure =
        failureOf([&] { connection.run("SELECT 1::int8", {}, Patience::whileTrue([] { return false; })); });
    EXPECT_LT(secondsSince(begun), kUnbounded);
    expectLoss(connection, failure);
}

// What does not fit into the network's own buffers must not hold the program up either.
TEST(Loss, OfTheNetworkWhileMuchIsBeingSent) {
    const tests::ServerDatabase database;
    Proxy proxy(database.place());
    Connection connection(proxy.place());
    EXPECT_EQ(connection
                  .run("SELECT octet_length($1)::int8",
                       dao::postgres::Parameters().text(std::string(20'000'000, 'x')))
                  .integer(0, 0),
              20'000'000);
    proxy.goDead();
    const auto begun = Clock::now();
    const Failure failure = failureOf([&] {
        connection.run("SELECT octet_length($1)::int8",
                       dao::postgres::Parameters().text(std::string(20'000'000, 'x')), Patience(500ms));
    });
    EXPECT_LT(secondsSince(begun), kUnbounded);
    expectLoss(connection, failure);
}

TEST(Loss, OfTheNetworkEndsAConnectingWithinItsTime) {
    Proxy proxy(tests::serverPlace());
    proxy.goDead();
    const auto begun = Clock::now();
    const Failure failure = failureOf([&] { Connection connection(proxy.place(), {{}, 500ms}); });
    EXPECT_GE(secondsSince(begun), 0.5);
    EXPECT_LT(secondsSince(begun), kUnbounded);
    EXPECT_TRUE(failure.lost);
    EXPECT_TRUE(failure.says(proxy.place().port)) << failure.sentence;
}

// A dead workstation's locks go with it, and a dead server is noticed by those who wait for nothing.
TEST(Loss, IsLookedForByBothSides) {
    const std::string port = Proxy::freePort();
    tests::OwnCluster cluster({"-c", "listen_addresses=127.0.0.1", "-c", "port=" + port});
    dao::postgres::Address place = cluster.place();
    place.port = port;
    place.host = "127.0.0.1";
    Connection connection(place);
    const auto setting = [&](const char* name) {
        return std::string(connection.run(std::string("SHOW ") + name).text(0, 0));
    };
    EXPECT_EQ(setting("tcp_keepalives_idle"), "20");
    EXPECT_EQ(setting("tcp_keepalives_interval"), "10");
    EXPECT_EQ(setting("tcp_keepalives_count"), "3");
    EXPECT_EQ(setting("tcp_user_timeout"), "50000");
}
