#include "support/delivered_shop.h"

#include <QTemporaryDir>
#include <filesystem>

#include "data/session.h"
#include "platform/dao/moving.h"
#include "platform/dao/postgres/connection.h"
#include "platform/dao/postgres/signpost.h"
#include "support/places.h"
#include "support/server_cluster.h"

namespace tests {
namespace {

namespace fs = std::filesystem;
using dao::postgres::Address;
using dao::postgres::Connection;
using dao::postgres::Patience;

// Several test programs may want the same one at once: the first makes it, the others wait.
constexpr const char* kMakingLock = "7201";
const Patience kUnhurried = Patience::whileTrue([] { return true; });

void copyTo(const std::string& path, const std::string& name) {
    fs::copy_file(fs::path(kDeliveredFolder) / name, path, fs::copy_options::overwrite_existing);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
}

// What the shop's own people would do with the file.
void moveThere(const std::string& name, const Address& place) {
    const QTemporaryDir folder;
    const std::string file = folder.filePath("Shop.mdb").toStdString();
    copyTo(file, name);
    dao::moveToServer(file, connectText().toStdString(), placeWords(place));
}

// The server's copy of a delivered database, which all tests' own are copied from. It gets its name when it
// is whole.
std::string templateOf(const std::string& name) {
    const std::string ready = "delivered_" + fs::path(name).stem().string(), begun = ready + "_begun";
    Connection server(serverPlace());
    server.execute(std::string("SELECT pg_advisory_lock(") + kMakingLock + ")", kUnhurried);
    if (server.run("SELECT 1 FROM pg_database WHERE datname = '" + ready + "'").rows() == 0) {
        server.execute("DROP DATABASE IF EXISTS \"" + begun + "\"", kUnhurried);
        server.execute("CREATE DATABASE \"" + begun + "\" TEMPLATE template0", kUnhurried);
        Address place = serverPlace();
        place.dbname = begun;
        moveThere(name, place);
        server.execute("ALTER DATABASE \"" + begun + "\" RENAME TO \"" + ready + "\"", kUnhurried);
    }
    return ready;
}

}  // namespace

DeliveredShop::DeliveredShop() = default;
DeliveredShop::~DeliveredShop() = default;

void DeliveredShop::deliver(const std::string& name, const std::string& path) {
    if (!onServer()) {
        copyTo(path, name);
        return;
    }
    // File by file: the server's journal would hold each copy whole.
    database_ = std::make_unique<ServerDatabase>("STRATEGY file_copy TEMPLATE \"" + templateOf(name) + "\"");
    dao::postgres::writeSignpost(path, database_->place());
}

}  // namespace tests
