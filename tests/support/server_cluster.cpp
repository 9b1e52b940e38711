#include "support/server_cluster.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "platform/dao/postgres/connection.h"
#include "support/places.h"

namespace tests {
namespace {

using dao::postgres::Address;
using dao::postgres::Connection;
using dao::postgres::Patience;

// The machine may be doing much else.
const Patience kUnhurried = Patience::whileTrue([] { return true; });

std::string quotedWord(const std::string& word) {
    std::string quoted = "'";
    for (const char letter : word) {
        quoted += letter == '\'' ? "'\\''" : std::string(1, letter);
    }
    return quoted + "'";
}

std::string script() {
    return std::string(kSourceFolder) + "/../scripts/cluster";
}

std::string freshFolder() {
    std::string folder = "/tmp/tarvello-test-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) {
        throw std::runtime_error("no folder for a server under /tmp");
    }
    return folder;
}

std::optional<OwnCluster>& ownShared() {
    static std::optional<OwnCluster> cluster;
    return cluster;
}

// Takes the server down when the tests have ended, also when one of them failed.
class SharedServer : public ::testing::Environment {
 public:
    void TearDown() override { ownShared().reset(); }
};
[[maybe_unused]] const auto* const kSharedServer = ::testing::AddGlobalTestEnvironment(new SharedServer);

}  // namespace

std::string runCommand(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += quotedWord(word) + ' ';
    }
    FILE* output = popen((line + "2>&1").c_str(), "r");
    if (output == nullptr) {
        throw std::runtime_error("no process for " + line);
    }
    std::string text;
    std::array<char, 4096> part{};
    for (std::size_t got = 1; got > 0;) {
        got = fread(part.data(), 1, part.size(), output);
        text.append(part.data(), got);
    }
    if (pclose(output) != 0) {
        throw std::runtime_error(line + "failed: " + text);
    }
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return text;
}

OwnCluster::OwnCluster(const std::vector<std::string>& options) : folder_(freshFolder()), options_(options) {
    try {
        start();
    } catch (...) {
        remove();
        throw;
    }
}

OwnCluster::~OwnCluster() {
    remove();
}

void OwnCluster::start() {
    std::vector<std::string> words{script(), "start", folder_, "-c", "fsync=off"};
    words.insert(words.end(), options_.begin(), options_.end());
    place_ = dao::postgres::placeFromText(runCommand(words));
}

void OwnCluster::remove() noexcept {
    try {
        runCommand({script(), "remove", folder_});
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
}

void OwnCluster::stopAtOnce() {
    runCommand({script(), "stop", folder_, "immediate"});
}

bool onServer() {
    const char* store = std::getenv("TARVELLO_TEST_STORE");
    return store != nullptr && std::string_view(store) == "server";
}

Address serverPlace() {
    if (const char* given = std::getenv("TARVELLO_TEST_SERVER"); given != nullptr) {
        Address place;
        place.host = given;
        place.dbname = place.user = "postgres";
        return place;
    }
    if (!ownShared().has_value()) {
        ownShared().emplace();
    }
    return ownShared()->place();
}

std::string placeWords(const Address& place) {
    std::string words;
    for (const auto& [keyword, value] : dao::postgres::kPlaceKeywords) {
        if (!(place.*value).empty()) {
            words += std::string(keyword) + "='" + place.*value + "' ";
        }
    }
    return words;
}

ServerDatabase::ServerDatabase(const std::string& options) {
    static int made = 0;
    name_ = "test_" + std::to_string(getpid()) + "_" + std::to_string(++made);
    Connection(serverPlace()).execute("CREATE DATABASE " + name_ + " " + options, kUnhurried);
}

ServerDatabase::~ServerDatabase() {
    try {
        Connection(serverPlace()).execute("DROP DATABASE " + name_ + " WITH (FORCE)", kUnhurried);
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
}

Address ServerDatabase::place() const {
    Address place = serverPlace();
    place.dbname = name_;
    return place;
}

}  // namespace tests
