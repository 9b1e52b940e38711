#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "failures.h"
#include "platform/dao/postgres/connection.h"
#include "proxy.h"
#include "support/server_cluster.h"

using dao::postgres::Address;
using dao::postgres::Connection;
using tests::runCommand;

namespace {

void writeText(const std::string& path, const std::string& text) {
    std::ofstream(path) << text;
}

// A folder with the papers of a server at "localhost": good ones, expired ones, and those of an authority
// that the shop does not know.
class Papers {
 public:
    Papers() {
        if (mkdtemp(folder_.data()) == nullptr || chmod(folder_.c_str(), 0755) != 0) {
            throw std::runtime_error("no folder for certificates");
        }
        writeText(path("names"), "subjectAltName=DNS:localhost\n");
        writeText(path("hba"), "local all all trust\nhostssl all all samenet scram-sha-256\n");
        makeAuthority("shop");
        makeAuthority("foreign");
        makeServer("good", "shop", "30");
        makeServer("expired", "shop", "-1");
        makeServer("stranger", "foreign", "30");
    }
    Papers(const Papers&) = delete;
    Papers& operator=(const Papers&) = delete;
    ~Papers() { runCommand({"rm", "-rf", folder_}); }

    std::string path(const std::string& name) const { return folder_ + "/" + name; }

 private:
    void makeAuthority(const std::string& name) const {
        runCommand({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
                    "-nodes", "-days", "30", "-subj", "/CN=" + name, "-keyout", path(name + ".key"), "-out",
                    path(name + ".crt")});
    }
    void makeServer(const std::string& name, const std::string& authority, const std::string& days) const {
        runCommand({"openssl", "req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
                    "-subj", "/CN=localhost", "-keyout", path(name + ".key"), "-out", path(name + ".csr")});
        runCommand({"openssl", "x509", "-req", "-in", path(name + ".csr"), "-CA", path(authority + ".crt"),
                    "-CAkey", path(authority + ".key"), "-CAcreateserial", "-days", days, "-extfile",
                    path("names"), "-out", path(name + ".crt")});
        // The server takes a key that is its own and nobody else's; as root, scripts/cluster runs it as
        // nobody.
        runCommand({"chmod", "600", path(name + ".key")});
        if (geteuid() == 0) {
            runCommand({"chown", "nobody", path(name + ".key")});
        }
    }

    std::string folder_ = "/tmp/tarvello-papers-XXXXXX";
};

// A server that is reached through a network by TLS and a password.
class NetworkServer : public ::testing::Test {
 protected:
    NetworkServer()
        : port_(Proxy::freePort()),
          cluster_({"-c", "listen_addresses=localhost", "-c", "port=" + port_, "-c",
                    "hba_file=" + papers_.path("hba"), "-c", "password_encryption=scram-sha-256"}) {
        keeper_ = cluster_.place();
        keeper_.port = port_;
        show("good");
        Connection(keeper_).execute("CREATE ROLE clerk LOGIN PASSWORD 'secret word'");
        writePassword("secret word");
    }

    // Which papers the server shows from now on.
    void show(const std::string& name) {
        Connection keeper(keeper_);
        const std::int64_t before = settingsReadAt(keeper);
        keeper.run("ALTER SYSTEM SET ssl = on");
        keeper.run("ALTER SYSTEM SET ssl_cert_file = '" + papers_.path(name + ".crt") + "'");
        keeper.run("ALTER SYSTEM SET ssl_key_file = '" + papers_.path(name + ".key") + "'");
        keeper.run("SELECT pg_reload_conf()");
        // Those who come in now must be met with them.
        for (std::int64_t read = before; read == before;) {
            Connection next(keeper_);
            read = settingsReadAt(next);
        }
    }

    static std::int64_t settingsReadAt(Connection& connection) {
        return connection.run("SELECT (extract(epoch FROM pg_conf_load_time()) * 1000000)::int8")
            .integer(0, 0);
    }

    void writePassword(const std::string& password) {
        writeText(papers_.path("pgpass"), "*:*:*:clerk:" + password + "\n");
        chmod(papers_.path("pgpass").c_str(), 0600);
    }

    Address clerk() const {
        Address place = keeper_;
        place.host = "localhost";
        place.user = "clerk";
        place.sslmode = "verify-full";
        place.sslrootcert = papers_.path("shop.crt");
        place.passfile = papers_.path("pgpass");
        return place;
    }

    static Failure connectingTo(const Address& place) {
        return failureOf([&] { Connection connection(place); });
    }

    Papers papers_;
    std::string port_;
    tests::OwnCluster cluster_;
    Address keeper_;
};

}  // namespace

TEST_F(NetworkServer, IsReachedByTlsAndPassword) {
    Connection connection(clerk());
    EXPECT_TRUE(connection.run("SELECT ssl FROM pg_stat_ssl WHERE pid = pg_backend_pid()").boolean(0, 0));
    EXPECT_EQ(connection.run("SELECT current_user").text(0, 0), "clerk");
}

TEST_F(NetworkServer, RefusesAWrongPasswordAndNone) {
    writePassword("guessed");
    Failure failure = connectingTo(clerk());
    EXPECT_EQ(failure.number, dao::errInvalidPassword);
    EXPECT_EQ(failure.sentence,
              "The server does not let you in: password authentication failed for user \"clerk\".");
    Address place = clerk();
    place.passfile = papers_.path("no-such-file");
    failure = connectingTo(place);
    EXPECT_EQ(failure.number, dao::errInvalidPassword);
    EXPECT_TRUE(failure.says(".pgpass")) << failure.sentence;
}

TEST_F(NetworkServer, IsNotTrustedWithPapersThatAreNotInOrder) {
    for (const char* name : {"expired", "stranger"}) {
        show(name);
        const Failure failure = connectingTo(clerk());
        EXPECT_TRUE(failure.lost) << name;
        EXPECT_TRUE(failure.says("certificate verify failed")) << failure.sentence;
        EXPECT_TRUE(failure.says("localhost")) << failure.sentence;
    }
    show("good");
    Address place = clerk();
    place.host = "127.0.0.1";  // a true paper, of a server of another name
    const Failure failure = connectingTo(place);
    EXPECT_TRUE(failure.says("does not match host name")) << failure.sentence;
    EXPECT_EQ(connectingTo(clerk()).number, 0);
}

TEST(NetworkWithoutTls, IsNotTakenWhereTlsIsAskedFor) {
    Proxy proxy(tests::serverPlace());
    Address place = proxy.place();
    place.sslmode = "verify-full";
    place.sslrootcert = "/etc/ssl/certs/ca-certificates.crt";
    const Failure failure = failureOf([&] { Connection connection(place); });
    EXPECT_TRUE(failure.says("SSL")) << failure.sentence;
    EXPECT_NE(failure.number, 0);
    place.sslmode = "prefer";
    EXPECT_EQ(failureOf([&] { Connection connection(place); }).number, 0);
}
