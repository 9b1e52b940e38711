#include "platform/dao/moving.h"

#include <cerrno>

#include <unistd.h>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/server_kind.h"
#include "platform/dao/postgres/server_place.h"
#include "platform/dao/postgres/server_store.h"
#include "platform/dao/postgres/shop_making.h"
#include "platform/dao/postgres/signpost.h"
#include "platform/dao/sqlite/file_kind.h"
#include "platform/dao/sqlite/file_paths.h"

namespace dao {
namespace {

std::string besideName(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    const std::size_t slash = path.rfind('/');
    const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash);
    return (hasExtension ? path.substr(0, dot) : path) + ".before-server" +
           (hasExtension ? path.substr(dot) : std::string());
}

// A transaction that ends undone unless it is told otherwise.
class Undone {
 public:
    explicit Undone(driver::Store& store) : store_(store) {}
    ~Undone() { store_.rollback(); }
    Undone(const Undone&) = delete;
    Undone& operator=(const Undone&) = delete;

 private:
    driver::Store& store_;
};

void carry(driver::Store& from, driver::Store& to, const TransferWatch& watch) {
    from.beginRead();
    const Undone reading(from);
    to.beginWrite();
    const Undone writing(to);
    transfer(from, to, watch);
    to.commit();
    to.beginRead();
    needSameRows(from, to, watch);
}

// A whole copy at `target`, where nothing stands yet.
void carryToNewFile(driver::Store& from, const std::string& target, const std::string& connect,
                    const TransferWatch& watch) {
    const std::string fresh = target + ".part" + std::to_string(getpid());
    fileKind().discard(fresh);
    try {
        fileKind().create(fresh, connect);
        {
            const PlacePtr place = fileKind().examine(fresh, connect, false);
            const std::unique_ptr<driver::Store> to = place->open();
            carry(from, *to, watch);
        }
        fileKind().rename(fresh, target);
    } catch (...) {
        fileKind().discard(fresh);
        throw;
    }
}

}  // namespace

void moveToServer(const std::string& path, const std::string& connect, const std::string& server,
                  const TransferWatch& watch) {
    const postgres::Address address = postgres::placeFromText(server);
    const PlacePtr file = fileKind().examine(path, connect, false);
    const std::string kept = besideName(file->path());
    if (fileExists(kept)) {
        fail(errObjectExists, "Database '" + kept + "' already exists.");
    }
    const ExclusiveUse alone(file->enter(false));
    const std::unique_ptr<driver::Store> from = file->open();
    postgres::NewShop shop(address);
    carry(*from, shop.store(), watch);
    shop.finish();
    if (link(file->path().c_str(), kept.c_str()) != 0) {
        failWithSystemError(errno);
    }
    postgres::writeSignpost(file->path(), address);
}

void moveHome(const std::string& path, const std::string& target, const std::string& connect,
              const TransferWatch& watch) {
    if (fileExists(target)) {
        fail(errObjectExists, "Database '" + target + "' already exists.");
    }
    const PlacePtr place = serverKind().examine(path, connect, false);
    const ExclusiveUse alone(place->enter(false));
    carryToNewFile(*place->open(), target, connect, watch);
}

void copyToFile(const std::string& path, const std::string& target) {
    const PlacePtr place = serverKind().examine(path, {}, true);
    const std::string password = static_cast<const postgres::ServerPlace&>(*place).password();
    carryToNewFile(*place->open(), targetFile(target), ";pwd=" + password, {});
}

void setBack(const std::string& path, const std::string& file) {
    const PlacePtr place = serverKind().examine(path, {}, true);
    const std::string password = static_cast<const postgres::ServerPlace&>(*place).password();
    const PlacePtr source = fileKind().examine(file, ";pwd=" + password, true);
    const ExclusiveUse alone(place->enter(false));
    const std::unique_ptr<driver::Store> from = source->open();
    const std::unique_ptr<driver::Store> to = place->open();
    from->beginRead();
    const Undone reading(*from);
    to->beginWrite();
    const Undone writing(*to);
    static_cast<postgres::ServerStore&>(*to).empty();
    transfer(*from, *to);
    to->commit();
}

}  // namespace dao
