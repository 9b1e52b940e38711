#include "platform/dao/sqlite/library.h"

#include <cerrno>

#include "platform/dao/failure.h"

namespace dao::driver {
namespace {

struct CodeNumber {
    int code;
    int number;
};

constexpr CodeNumber kExtended[] = {
    {SQLITE_CONSTRAINT_UNIQUE, errDuplicateKey},
    {SQLITE_CONSTRAINT_PRIMARYKEY, errDuplicateKey},
    {SQLITE_CONSTRAINT_ROWID, errDuplicateKey},
    {SQLITE_CONSTRAINT_FOREIGNKEY, errRelatedRecordRequired},
};

constexpr CodeNumber kPrimary[] = {
    {SQLITE_BUSY, errLocked},       {SQLITE_LOCKED, errLocked},         {SQLITE_FULL, errNotEnoughSpace},
    {SQLITE_READONLY, errReadOnly}, {SQLITE_CORRUPT, errCannotOpen},    {SQLITE_NOTADB, errCannotOpen},
    {SQLITE_PERM, errReadOnly},     {SQLITE_CANTOPEN, errDiskIo},       {SQLITE_IOERR, errDiskIo},
    {SQLITE_TOOBIG, errOverflow},   {SQLITE_MISMATCH, errTypeMismatch}, {SQLITE_INTERRUPT, errCancelled},
};

bool isFullDisk(int systemError) {
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

}  // namespace

void LibraryHandle::failWith(int code, bool preparing) const {
    const std::string message = db_ != nullptr ? sqlite3_errmsg(db_) : "";
    const int extended =
        db_ != nullptr && code == (sqlite3_errcode(db_) & 0xFF) ? sqlite3_extended_errcode(db_) : code;
    const int primary = code & 0xFF;
    if (primary == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    const int system = db_ != nullptr ? sqlite3_system_errno(db_) : 0;
    if ((primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN) && isFullDisk(system)) {
        fail(errNotEnoughSpace);
    }
    // Clearing up after a failed write hides its reason (there is no journal to remove, say). A write that
    // was not refused by the device itself has met a limit: the disk's, the user's share of it, the file's.
    if (extended == SQLITE_IOERR_WRITE && system != EIO && system != EROFS) {
        fail(errNotEnoughSpace);
    }
    for (const CodeNumber& entry : kExtended) {
        if (entry.code == extended || entry.code == code) {
            fail(entry.number);
        }
    }
    for (const CodeNumber& entry : kPrimary) {
        if (entry.code == primary) {
            fail(entry.number);
        }
    }
    if (preparing) {
        fail(errSyntax, "Syntax error in query expression: " + message + ".");
    }
    // A page that does not carry the seal of its key is no page of this file: the cipher calls that a general
    // error and says no more of it, the shop calls it damage. Whoever else fails in general says why.
    if (primary == SQLITE_ERROR && message == sqlite3_errstr(SQLITE_ERROR)) {
        fail(errCannotOpen);
    }
    fail(errInvalidOperation, "Invalid operation: " + message + ".");
}

const sql::IdSetPtr* LibraryHandle::findIdSet(std::int64_t number) const {
    const auto found = idSets_.find(number);
    return found == idSets_.end() ? nullptr : &found->second;
}

}  // namespace dao::driver
