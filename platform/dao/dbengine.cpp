#include "platform/dao/dbengine.h"

#include "platform/dao/copy_watch.h"
#include "platform/dao/database.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/dao/moving.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/opening.h"
#include "platform/dao/postgres/server_kind.h"
#include "platform/dao/repair_report.h"
#include "platform/dao/store_kinds.h"
#include "platform/dao/workspace_state.h"

namespace dao {
namespace {

RepairReport& lastRepair() {
    static RepairReport last;
    return last;
}

}  // namespace

Workspace& DBEngine::Workspaces(int index) {
    static Workspace only;
    if (index != 0) {
        fail(errItemNotFound);
    }
    return only;
}

Database Workspace::OpenDatabase(const std::string& path, bool exclusive, bool readOnly,
                                 const std::string& connect) {
    return DBEngine::OpenDatabase(path, exclusive, readOnly, connect);
}

void Workspace::BeginTrans() {
    workspace::begin();
}
void Workspace::CommitTrans() {
    workspace::commit();
}
void Workspace::Rollback() {
    workspace::rollback();
}

Database DBEngine::OpenDatabase(const std::string& path, bool exclusive, bool readOnly,
                                const std::string& connect) {
    const PlacePtr place = kindOf(path).examine(path, connect, false);
    if (!readOnly) {
        place->needWritable();
    }
    std::shared_ptr<Presence> presence = place->enter(readOnly);
    if (exclusive && presence == nullptr) {
        fail(errCannotLockFile);
    }
    ExclusiveUse use = exclusive ? ExclusiveUse(presence) : ExclusiveUse();
    std::shared_ptr<OpenFile> file = openPlace(place, !readOnly, std::move(presence));
    return Database(std::make_shared<DatabaseImpl>(path, std::move(file), readOnly, std::move(use)));
}

Database DBEngine::CreateDatabase(const std::string& path, const std::string& connect) {
    kindOf(path).create(path, connect);
    return OpenDatabase(path, false, false, connect.empty() ? ";pwd=" : connect);
}

void DBEngine::RepairDatabase(const std::string& path, const std::string& connect, const std::string& copy) {
    lastRepair() = {};
    lastRepair() = kindOf(path).repair(path, connect, copy);
}

const RepairReport& DBEngine::LastRepair() {
    return lastRepair();
}

void DBEngine::CompactDatabase(const std::string& from, const std::string& to, const std::string& connect) {
    kindOf(from).compact(from, to, connect);
}

void DBEngine::CopyDatabase(const std::string& from, const std::string& to) {
    copyDatabase(from, to, {});
}

void copyDatabase(const std::string& from, const std::string& to, const CopyWatch& watch) {
    const StoreKind& source = kindOf(from);
    const StoreKind& target = kindOf(to);
    if (&source == &target) {
        source.copy(from, to, watch);
    } else if (&source == &serverKind()) {
        ShopView(from).copyTo(to);
    } else {
        setBack(to, from);
    }
}

bool DBEngine::IsOnServer(const std::string& path) {
    return &kindOf(path) == &serverKind();
}

void DBEngine::DeleteDatabase(const std::string& path) {
    kindOf(path).remove(path);
}
void DBEngine::RenameDatabase(const std::string& from, const std::string& to) {
    kindOf(from).rename(from, to);
}
void DBEngine::DiscardDatabase(const std::string& path) noexcept {
    kindOf(path).discard(path);
}

void DBEngine::Idle(int option) {
    if ((option & dbRefreshCache) == 0) {
        return;
    }
    for (const std::shared_ptr<OpenFile>& file : OpenFiles::all()) {
        file->touch();
    }
}

const std::vector<ErrorEntry>& DBEngine::Errors() {
    return lastErrors();
}
void DBEngine::setKnownForm(int form) {
    driver::setKnownForm(form);
}

void DBEngine::setNotesFile(const std::string& path) {
    driver::setNotesFile(path);
}

void DBEngine::setLockTimeout(int milliseconds) {
    driver::setLockTimeout(milliseconds);
}

}  // namespace dao
