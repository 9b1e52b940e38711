#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>

#include "failures.h"
#include "platform/dao/postgres/connection.h"
#include "proxy.h"
#include "support/server_cluster.h"

using dao::postgres::Address;
using dao::postgres::Connection;

namespace {

Failure connectingTo(const Address& place) {
    return failureOf([&] { Connection connection(place); });
}

std::string thisProgram() {
    std::array<char, 4096> path{};
    return readlink("/proc/self/exe", path.data(), path.size() - 1) > 0 ? path.data() : "";
}

}  // namespace

TEST(Connecting, ToNoSuchDatabaseNamesIt) {
    Address place = tests::serverPlace();
    place.dbname = "no_such_shop";
    const Failure failure = connectingTo(place);
    EXPECT_EQ(failure.number, dao::errFileNotFound);
    EXPECT_EQ(failure.sentence, "The server has no such database: database \"no_such_shop\" does not exist.");
    EXPECT_FALSE(failure.lost);
}

TEST(Connecting, AsNoSuchUserNamesThem) {
    Address place = tests::serverPlace();
    place.user = "no_such_person";
    const Failure failure = connectingTo(place);
    EXPECT_EQ(failure.number, dao::errInvalidPassword);
    EXPECT_EQ(failure.sentence, "The server does not let you in: role \"no_such_person\" does not exist.");
}

TEST(Connecting, WithoutAUserIsAsThePersonOnThisComputer) {
    Address place = tests::serverPlace();
    place.user.clear();
    const std::string name = tests::runCommand({"id", "-un"});
    if (const Failure failure = connectingTo(place); failure.number != 0) {
        EXPECT_TRUE(failure.says('"' + name + '"')) << failure.sentence;
        return;
    }
    EXPECT_EQ(Connection(place).run("SELECT current_user").text(0, 0), name);
}

TEST(Connecting, WithNoSuchRoleFails) {
    EXPECT_NE(failureOf([] { Connection connection(tests::serverPlace(), {"no_such_role"}); }).number, 0);
}

TEST(Connecting, WhereNobodyListensNamesTheFolderOrTheHost) {
    Address place = tests::serverPlace();
    place.host = "/tmp/no-such-folder";
    Failure failure = connectingTo(place);
    EXPECT_EQ(failure.number, dao::errDiskIo);
    EXPECT_TRUE(failure.lost);
    EXPECT_TRUE(
        failure.sentence.starts_with("The server of /tmp/no-such-folder:5432/postgres can't be reached: "))
        << failure.sentence;
    place.host = "localhost";
    place.port = "1";
    failure = connectingTo(place);
    EXPECT_TRUE(failure.lost);
    EXPECT_TRUE(failure.says("localhost:1/postgres")) << failure.sentence;
    EXPECT_TRUE(failure.says("Connection refused")) << failure.sentence;
}

TEST(Connecting, ToANameThatNobodyKnows) {
    Address place = tests::serverPlace();
    place.host = "no-such-server.invalid";
    const Failure failure = connectingTo(place);
    EXPECT_TRUE(failure.lost);
    EXPECT_TRUE(failure.says("no-such-server.invalid")) << failure.sentence;
}

TEST(Connecting, ToADatabaseInAnotherEncodingIsRefused) {
    const tests::ServerDatabase database("TEMPLATE template0 ENCODING 'LATIN2'");
    const Failure failure = connectingTo(database.place());
    EXPECT_EQ(failure.number, dao::errUnrecognisedFormat);
    EXPECT_TRUE(failure.says("LATIN2")) << failure.sentence;
}

TEST(Connecting, ToAnOlderServerIsRefused) {
    Proxy proxy(tests::serverPlace());
    proxy.replace(std::string("server_version\0"
                              "15.",
                              18),
                  std::string("server_version\0"
                              "14.",
                              18));
    const Failure failure = connectingTo(proxy.place());
    EXPECT_EQ(failure.number, dao::errUnrecognisedFormat);
    EXPECT_TRUE(failure.says("PostgreSQL 14.")) << failure.sentence;
}

TEST(Connecting, IsAloneWithItsKeywords) {
    const Address place = tests::serverPlace();
    Connection connection(place);
    const auto setting = [&](const char* name) {
        return std::string(connection.run(std::string("SHOW ") + name).text(0, 0));
    };
    EXPECT_EQ(connection.run("SELECT current_user").text(0, 0), place.user);
    EXPECT_EQ(connection.run("SELECT current_database()").text(0, 0), place.dbname);
    EXPECT_EQ(setting("client_encoding"), "UTF8");
    EXPECT_EQ(setting("application_name"), "Tarvello");
    EXPECT_NE(setting("work_mem"), "12MB");
    EXPECT_EQ(setting("DateStyle"), "ISO, MDY");
    EXPECT_EQ(setting("lock_timeout"), "10s");
}

// A server that has died while nobody asked it anything is missed within a minute.
TEST(Connecting, LooksForItsServerByItself) {
    Proxy proxy(tests::serverPlace());
    const dao::postgres::Handle handle =
        dao::postgres::connectTo(proxy.place(), dao::postgres::Clock::now() + std::chrono::seconds(10));
    const auto option = [&](int level, int name) {
        int value = -1;
        socklen_t size = sizeof value;
        getsockopt(PQsocket(handle.get()), level, name, &value, &size);
        return value;
    };
    EXPECT_EQ(option(SOL_SOCKET, SO_KEEPALIVE), 1);
    EXPECT_EQ(option(IPPROTO_TCP, TCP_KEEPIDLE), 20);
    EXPECT_EQ(option(IPPROTO_TCP, TCP_KEEPINTVL), 10);
    EXPECT_EQ(option(IPPROTO_TCP, TCP_KEEPCNT), 3);
    EXPECT_EQ(option(IPPROTO_TCP, TCP_USER_TIMEOUT), 50'000);
}

// What somebody has set up for other programs.
TEST(Connecting, StrayVariablesChangeNothing) {
    const std::vector<std::string> variables{
        "PGHOST=no-such-server.invalid",
        "PGHOSTADDR=192.0.2.1",
        "PGPORT=1",
        "PGDATABASE=no_such_shop",
        "PGUSER=no_such_person",
        "PGPASSWORD=wrong",
        "PGOPTIONS=-c work_mem=12MB",
        "PGSERVICE=no_such_service",
        "PGSSLMODE=verify-full",
        "PGCLIENTENCODING=LATIN2",
        "PGAPPNAME=other",
        "PGTZ=Nowhere/Nothing",
        "PGDATESTYLE=German",
        "PGGEQO=nonsense",
        "PGCHANNELBINDING=require",
        "PGTARGETSESSIONATTRS=standby",
        "PGREQUIREPEER=no_such_person",
        "PGGSSENCMODE=require",
        "PGCONNECT_TIMEOUT=nonsense",
        "PGSSLMINPROTOCOLVERSION=nonsense",
    };
    std::vector<std::string> words{"env", "TARVELLO_TEST_SERVER=" + tests::serverPlace().host};
    words.insert(words.end(), variables.begin(), variables.end());
    words.insert(words.end(), {thisProgram(), "--gtest_filter=Connecting.IsAloneWithItsKeywords"});
    const std::string said = tests::runCommand(words);
    EXPECT_NE(said.find("[  PASSED  ] 1 test"), std::string::npos) << said;
}
