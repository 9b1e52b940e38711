#include "platform/dao/moving.h"

#include <cerrno>

#include <unistd.h>

#include "platform/dao/failure.h"
#include "platform/dao/open_file.h"
#include "platform/dao/postgres/server_kind.h"
#include "platform/dao/postgres/server_place.h"
#include "platform/dao/postgres/server_store.h"
#include "platform/dao/postgres/shop_making.h"
#include "platform/dao/postgres/signpost.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/sqlite/companion_files.h"
#include "platform/dao/sqlite/file_kind.h"
#include "platform/dao/sqlite/file_paths.h"

namespace dao {
namespace {

// A transaction that writes, and ends undone unless it is committed.
class WriteScope {
 public:
    explicit WriteScope(driver::Store& store) : store_(store) { store_.transaction().beginWrite(); }
    ~WriteScope() { store_.transaction().rollback(); }
    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;

 private:
    driver::Store& store_;
};

void carry(driver::Store& from, driver::Store& to, const RowWatch& watch) {
    const ReadScope reading(from);
    {
        const WriteScope writing(to);
        transfer(from, to, watch);
        to.transaction().commit();
    }
    const ReadScope comparing(to);
    needSameRows(from, to, watch);
}

// A whole copy at `target`, in the place of whatever stands there.
void carryToNewFile(driver::Store& from, const std::string& target, const std::string& connect,
                    const RowWatch& watch) {
    if (!fileExists(target)) {
        sweepUnfinished(target);
    }
    const UnfinishedFile fresh(target);  // no more than its name, and an end to it where this breaks off
    fileKind().create(fresh.path(), connect);
    followRights(fresh.path(), target);
    carry(from, *fileKind().examine(fresh.path(), connect, false)->open(), watch);
    fileKind().rename(fresh.path(), target);
}

std::shared_ptr<const postgres::ServerPlace> serverPlace(const std::string& path) {
    return std::static_pointer_cast<const postgres::ServerPlace>(serverKind().examine(path, {}, true));
}

// What lets into the files that copies of the shop are kept in.
std::string connectFor(const postgres::ServerPlace& place) {
    return ";pwd=" + place.password();
}

}  // namespace

void moveToServer(const std::string& path, const std::string& connect, const std::string& server,
                  const RowWatch& watch) {
    const postgres::Address address = postgres::placeFromText(server);
    const PlacePtr file = fileKind().examine(path, connect, false);
    const std::string kept = beforeServerOf(file->path());
    if (fileExists(kept)) {
        fail(errObjectExists, "Database '" + kept + "' already exists.");
    }
    const ExclusiveUse alone(file->enter(false));
    const std::unique_ptr<driver::Store> from = file->open();
    needSoundTexts(*from);
    postgres::NewShop shop(address);
    carry(*from, shop.store(), watch);
    shop.finish();
    if (link(file->path().c_str(), kept.c_str()) != 0) {
        failWithSystemError(errno);
    }
    postgres::writeSignpost(file->path(), address);
}

void moveHome(const std::string& path, const std::string& target, const std::string& connect,
              const RowWatch& watch) {
    if (fileExists(target)) {
        fail(errObjectExists, "Database '" + target + "' already exists.");
    }
    const PlacePtr place = serverKind().examine(path, connect, false);
    const ExclusiveUse alone(place->enter(false));
    carryToNewFile(*place->open(), target, connect, watch);
}

ShopView::ShopView(const std::string& path) {
    const auto place = serverPlace(path);
    connect_ = connectFor(*place);
    auto store = std::make_unique<postgres::ServerStore>(postgres::Link::apart(place->address()));
    store->transaction().beginRead();
    state_ = store->state();
    store_ = std::move(store);
}

void ShopView::copyTo(const std::string& target, const RowWatch& watch) {
    carryToNewFile(*store_, targetFile(target), connect_, watch);
}

void setBack(const std::string& path, const std::string& file) {
    const auto place = serverPlace(path);
    const PlacePtr source = fileKind().examine(file, connectFor(*place), true);
    const ExclusiveUse alone(place->enter(false));
    const std::unique_ptr<driver::Store> from = source->open();
    needSoundTexts(*from);
    const std::unique_ptr<driver::Store> to = place->open();
    const ReadScope reading(*from);
    const WriteScope writing(*to);
    static_cast<postgres::ServerStore&>(*to).empty();
    transfer(*from, *to);
    to->transaction().commit();
}

}  // namespace dao
