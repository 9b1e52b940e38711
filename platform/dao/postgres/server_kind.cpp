#include "platform/dao/postgres/server_kind.h"

#include <map>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/postgres/quoting.h"
#include "platform/dao/postgres/server_place.h"
#include "platform/dao/postgres/signpost.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/password.h"

namespace dao {
namespace {

using postgres::ServerPlace;

postgres::Patience asLongAsItTakes() {
    return postgres::Patience::whileTrue(isGoingOn);
}

// The password that was last given for a shop: whoever may work there knows it, and a backup made later
// without a word is kept under it, too.
std::map<std::string, std::string>& rememberedPasswords() {
    static std::map<std::string, std::string> all;
    return all;
}

// A shop that this process has to itself while it is looked after.
struct ShopAlone {
    ShopAlone(const StoreKind& kind, const std::string& path, const std::string& connect)
        : place(kind.examine(path, connect, true)),
          alone(place->enter(false)),
          link(postgres::Link::to(static_cast<const ServerPlace&>(*place).address())) {}

    PlacePtr place;
    ExclusiveUse alone;
    std::shared_ptr<postgres::Link> link;
};

// Reads every row of every table, and has the server make its indexes anew.
void check(driver::Store& store, postgres::Connection& server) {
    for (const sql::TableInfo& table : store.definitions().tables()) {
        server.run("SELECT count(*) FROM (SELECT t.*::text FROM " + postgres::tableName(table.name) +
                       " AS t OFFSET 0) AS rows",
                   {}, asLongAsItTakes());
    }
    server.execute("REINDEX SCHEMA shop", asLongAsItTakes());
}

class ServerKind final : public StoreKind {
 public:
    bool owns(const std::string& path) const override { return postgres::isSignpost(path); }
    PlacePtr examine(const std::string& path, const std::string& connect, bool remembered) const override {
        const std::string real = existingFile(path);
        const postgres::Address address = postgres::readSignpost(real);
        std::string& known = rememberedPasswords()[postgres::identityOf(address)];
        std::string password;
        if (passwordFrom(connect, password)) {
            known = password;
        } else if (remembered) {
            password = known;
        }
        return std::make_shared<ServerPlace>(real, address, password);
    }

    std::shared_ptr<Presence> enterAt(const std::string& path) const override {
        return examine(path, {}, true)->enter(false);
    }

    void create(const std::string& path, const std::string&) const override {
        fail(errObjectExists, "Database '" + path + "' already exists.");
    }
    RepairReport repair(const std::string& path, const std::string& connect,
                        const std::string&) const override {
        const ShopAlone shop(*this, path, connect);
        check(*shop.place->open(), shop.link->connection());
        return {};
    }
    // In its place: a server keeps its own.
    void compact(const std::string& from, const std::string&, const std::string& connect) const override {
        const ShopAlone shop(*this, from, connect);
        shop.link->connection().execute("VACUUM (FULL, ANALYZE)", asLongAsItTakes());
    }

    void copy(const std::string&, const std::string& to, const CopyWatch&) const override {
        fail(errObjectExists, "'" + to + "' leads to a shop on a server; no other is put in its place.");
    }
    void remove(const std::string& path) const override {
        fail(errInvalidOperation,
             "'" + path + "' leads to a shop on a server, which is not deleted from here.");
    }
    // The signpost, that is; the shop stays where it is.
    void rename(const std::string& from, const std::string& to) const override {
        renameFile(existingFile(from), targetFile(to));
    }
    void discard(const std::string&) const noexcept override {}
};

}  // namespace

const StoreKind& serverKind() {
    static const ServerKind kind;
    return kind;
}

}  // namespace dao
