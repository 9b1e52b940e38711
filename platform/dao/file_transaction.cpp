#include "platform/dao/file_transaction.h"

#include "platform/dao/failure.h"

namespace dao {
namespace {

constexpr int kWriteLevel = 1000;  // the savepoint of one write inside a workspace transaction

void unlockRows(driver::Store& in, const EditedRows& rows) noexcept {
    if (in.locksRows()) {
        for (const RowName& row : rows) {
            in.unlockRow(row.table, row.key);
        }
    }
}

// All of them or none.
void lockRows(driver::Store& in, const EditedRows& rows) {
    EditedRows locked;
    try {
        for (const RowName& row : rows) {
            in.lockRow(row.table, row.key);
            locked.push_back(row);
        }
    } catch (...) {
        unlockRows(in, locked);
        throw;
    }
}

}  // namespace

void FileTransaction::lockForEdit(const EditedRows& rows) {
    if (!store().writable()) {
        fail(errReadOnly);
    }
    if (store().locksRows()) {
        lockRows(store(), rows);
    } else if (workspaceDepth_ == 0 && !store().inTransaction()) {
        store().beginWrite();
    }
    ++editors_;
}

void FileTransaction::unlockEdit(const EditedRows& rows) noexcept {
    driver::Store* const in = connection_.openStore();
    if (in != nullptr) {
        unlockRows(*in, rows);
    }
    if (--editors_ == 0 && workspaceDepth_ == 0 && in != nullptr && !in->locksRows()) {
        in->rollback();
        ++lockEpoch_;
    }
}

bool FileTransaction::mayHaveChanged(const EditedRows& rows, std::int64_t epoch) {
    if (!store().locksRows()) {
        return epoch != lockEpoch_;
    }
    for (const RowName& row : rows) {
        if (!store().holdRow(row.table, row.key)) {
            fail(errRecordDeleted);
        }
    }
    return true;
}

bool FileTransaction::changeAtOnce(const driver::RowChange& change, const EditedRows& edited) {
    if (workspaceDepth_ > 0 || store().inTransaction()) {
        return false;
    }
    connection_.touch();
    if (!store().changeRow(change)) {
        return false;
    }
    unlockRows(store(), edited);
    --editors_;
    ++lockEpoch_;
    return true;
}

void FileTransaction::beginWrite() {
    if (!store().writable()) {
        fail(errReadOnly);
    }
    if (workspaceDepth_ == 0) {
        if (!store().inTransaction()) {
            store().beginWrite();
        }
        return;
    }
    // The store gives a whole transaction up when the disk is full; what follows must not be written alone.
    if (!store().inTransaction()) {
        fail(errDiskIo, "The transaction was lost by an earlier error; it can only be rolled back.");
    }
    store().savepoint(kWriteLevel);
}

void FileTransaction::finishWrite(const EditedRows* edited) {
    if (workspaceDepth_ > 0) {
        store().release(kWriteLevel);
    } else {
        store().commit();
        connection_.keepWritten();
    }
    if (edited != nullptr) {
        unlockRows(store(), *edited);
        --editors_;
    }
    connection_.touch();
    if (workspaceDepth_ == 0) {
        lockAgain();
    }
}

void FileTransaction::abandonWrite() noexcept {
    connection_.touch();
    connection_.forgetUnwritten(workspaceDepth_ == 0);
    if (workspaceDepth_ > 0) {
        store().rollbackTo(kWriteLevel);
        return;
    }
    store().rollback();
    lockAgain();
}

void FileTransaction::lockAgain() noexcept {
    ++lockEpoch_;
    if (editors_ == 0 || store().inTransaction() || store().locksRows()) {
        return;
    }
    const QuietErrors quiet;
    try {
        store().beginWrite();
    } catch (const Error&) {
        // The pending Edit finds its lock gone at Update, asks for it again there, and looks whether its row
        // is still as it was: nothing is lost by going on without it.
        return;
    }
}

std::int64_t FileTransaction::nextNumber(const std::string& table) {
    std::int64_t& highest = numbers_.highestOf(table);
    std::int64_t number = 0;
    const auto raise = [&] { number = store().raiseCounter(table, highest); };
    const bool apart = store().countsApart();
    if (apart) {
        raise();
    } else {
        write(raise);
    }
    highest = number;
    if (!apart && workspaceDepth_ > 0) {
        numbers_.noteInWorkspace(table, number);
    }
    return number;
}

void FileTransaction::beginWorkspace() {
    if (workspaceDepth_ > 0) {
        store().savepoint(workspaceDepth_);
    } else if (!store().inTransaction()) {
        store().beginWrite();
    }
    ++workspaceDepth_;
}

void FileTransaction::commitWorkspace() {
    if (workspaceDepth_ > 1) {
        store().release(workspaceDepth_ - 1);
        --workspaceDepth_;
        return;
    }
    try {
        if (!store().inTransaction()) {
            fail(errDiskIo, "The transaction was lost by an earlier error; nothing of it was written.");
        }
        store().commit();
    } catch (...) {
        rollbackWorkspace();
        throw;
    }
    workspaceDepth_ = 0;
    connection_.keepWritten();
    numbers_.endWorkspace();
    connection_.touch();
    lockAgain();
}

void FileTransaction::rollbackWorkspace() noexcept {
    connection_.touch();
    connection_.forgetUnwritten(workspaceDepth_ <= 1);
    if (workspaceDepth_ > 1) {
        --workspaceDepth_;
        store().rollbackTo(workspaceDepth_);
        keepCounters();
        return;
    }
    store().rollback();
    workspaceDepth_ = 0;
    keepCounters();
    numbers_.endWorkspace();
    lockAgain();
}

// A number that was shown to somebody must not come back, although the row it was for was rolled back.
void FileTransaction::keepCounters() noexcept {
    if (numbers_.inWorkspace().empty()) {
        return;
    }
    const QuietErrors quiet;
    try {
        write([&] {
            for (const auto& [table, highest] : numbers_.inWorkspace()) {
                store().raiseCounter(table, highest - 1);
            }
        });
    } catch (const Error&) {
        // This process still remembers what it gave; only the others lose the mark, and they never saw the
        // number.
        return;
    }
}

}  // namespace dao
