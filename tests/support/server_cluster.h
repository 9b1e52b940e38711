#pragma once

#include <string>
#include <vector>

#include "platform/dao/postgres/place.h"

namespace tests {

// A database server of the test's own in a folder of its own, made by scripts/cluster. It is gone with this
// object.
class OwnCluster {
 public:
    // `options` go to the server: {"-c", "fsync=off"}.
    explicit OwnCluster(const std::vector<std::string>& options = {});
    OwnCluster(const OwnCluster&) = delete;
    OwnCluster& operator=(const OwnCluster&) = delete;
    ~OwnCluster();

    void start();
    void stopAtOnce();  // as a power failure would
    dao::postgres::Address place() const { return place_; }

 private:
    void remove() noexcept;

    std::string folder_;
    std::vector<std::string> options_;
    dao::postgres::Address place_;
};

// Whether this run tests what holds for every store on a server: TARVELLO_TEST_STORE is "server".
bool onServer();

// The server that all tests of this run share: the one whose socket is in the folder TARVELLO_TEST_SERVER,
// which CTest has started, or else one of this process's own, made when the first test asks.
dao::postgres::Address serverPlace();

// A place as the command that moves a shop is told it: "host='/tmp' dbname='shop' user='mira'".
std::string placeWords(const dao::postgres::Address& place);

// A fresh database on that server, dropped with this object.
class ServerDatabase {
 public:
    // `options` end the CREATE DATABASE statement: "TEMPLATE shop".
    explicit ServerDatabase(const std::string& options = "TEMPLATE template0");
    ServerDatabase(const ServerDatabase&) = delete;
    ServerDatabase& operator=(const ServerDatabase&) = delete;
    ~ServerDatabase();

    dao::postgres::Address place() const;

 private:
    std::string name_;
};

// Runs a command of the system, each word as it stands; its output, without the last line end. Throws where
// it fails.
std::string runCommand(const std::vector<std::string>& words);

}  // namespace tests
