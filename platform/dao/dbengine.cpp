#include "platform/dao/dbengine.h"

#include "platform/dao/database.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/failure.h"
#include "platform/dao/file_paths.h"
#include "platform/dao/maintenance.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/opening.h"
#include "platform/dao/workspace_state.h"

namespace dao {

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
    const Opening opening = examine(path, connect, false);
    if (!readOnly && !mayWrite(opening.path)) {
        fail(errReadOnly);
    }
    std::shared_ptr<LockFile> lock = lockFor(opening.path, readOnly);
    if (exclusive && lock == nullptr) {
        fail(errCannotLockFile);
    }
    ExclusiveUse use = exclusive ? ExclusiveUse(lock) : ExclusiveUse();
    std::shared_ptr<OpenFile> file = openFile(opening, !readOnly, std::move(lock));
    return Database(std::make_shared<DatabaseImpl>(path, std::move(file), readOnly, std::move(use)));
}

Database DBEngine::CreateDatabase(const std::string& path, const std::string& connect) {
    const std::string target = targetFile(path);
    if (fileExists(target)) {
        fail(errObjectExists, "Database '" + path + "' already exists.");
    }
    if (!folderMayWrite(target)) {
        fail(errReadOnly);
    }
    std::string password;
    passwordFrom(connect, password);
    maintenance::createEmpty(target, password);
    return OpenDatabase(path, false, false, ";pwd=" + password);
}

void DBEngine::RepairDatabase(const std::string& path, const std::string& connect) {
    maintenance::repair(path, connect);
}

const RepairReport& DBEngine::LastRepair() {
    return maintenance::lastRepair();
}

void DBEngine::CompactDatabase(const std::string& from, const std::string& to, const std::string& connect) {
    maintenance::compact(from, to, connect);
}

void DBEngine::CopyDatabase(const std::string& from, const std::string& to) {
    maintenance::copy(from, to);
}
void DBEngine::DeleteDatabase(const std::string& path) {
    maintenance::remove(path);
}
void DBEngine::RenameDatabase(const std::string& from, const std::string& to) {
    maintenance::rename(from, to);
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

void DBEngine::setLockTimeout(int milliseconds) {
    driver::setLockTimeout(milliseconds);
}

}  // namespace dao
