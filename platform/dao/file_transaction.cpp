#include "platform/dao/file_transaction.h"

#include "platform/dao/failure.h"

namespace dao {
namespace {

constexpr int kWriteLevel = 1000;  // the savepoint of one write inside a workspace transaction

void unlockRows(driver::Store& in, const EditedRows& rows) noexcept {
    if (driver::RowLocks* const locks = in.rowLocks()) {
        for (const RowName& row : rows) {
            locks->unlockRow(row.table, row.key);
        }
    }
}

// All of them or none.
void lockRows(driver::Store& in, const EditedRows& rows) {
    EditedRows locked;
    try {
        for (const RowName& row : rows) {
            in.rowLocks()->lockRow(row.table, row.key);
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
    if (store().rowLocks() != nullptr) {
        lockRows(store(), rows);
    } else if (workspaceDepth_ == 0 && !store().transaction().isOpen()) {
        store().transaction().beginWrite();
    }
    ++editors_;
}

void FileTransaction::unlockEdit(const EditedRows& rows) noexcept {
    driver::Store* const in = connection_.openStore();
    if (in != nullptr) {
        unlockRows(*in, rows);
    }
    if (--editors_ == 0 && workspaceDepth_ == 0 && in != nullptr && in->rowLocks() == nullptr) {
        in->transaction().rollback();
        ++lockEpoch_;
    }
}

bool FileTransaction::mayHaveChanged(const EditedRows& rows, std::int64_t epoch) {
    driver::RowLocks* const locks = store().rowLocks();
    if (locks == nullptr) {
        return epoch != lockEpoch_;
    }
    for (const RowName& row : rows) {
        if (!locks->holdRow(row.table, row.key)) {
            fail(errRecordDeleted);
        }
    }
    return true;
}

bool FileTransaction::changeAtOnce(const driver::RowChange& change, const EditedRows& edited) {
    if (workspaceDepth_ > 0 || store().transaction().isOpen()) {
        return false;
    }
    connection_.touch();
    if (!store().rows().changeRow(change)) {
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
        if (!store().transaction().isOpen()) {
            store().transaction().beginWrite();
        }
        return;
    }
    // The store gives a whole transaction up when the disk is full; what follows must not be written alone.
    if (!store().transaction().isOpen()) {
        fail(errDiskIo, "The transaction was lost by an earlier error; it can only be rolled back.");
    }
    store().transaction().savepoint(kWriteLevel);
}

void FileTransaction::finishWrite(const EditedRows* edited) {
    if (workspaceDepth_ > 0) {
        store().transaction().release(kWriteLevel);
    } else {
        store().transaction().commit();
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
        store().transaction().rollbackTo(kWriteLevel);
        return;
    }
    store().transaction().rollback();
    lockAgain();
}

void FileTransaction::lockAgain() noexcept {
    ++lockEpoch_;
    if (editors_ == 0 || store().transaction().isOpen() || store().rowLocks() != nullptr) {
        return;
    }
    const QuietErrors quiet;
    try {
        store().transaction().beginWrite();
    } catch (const Error&) {
        // The pending Edit finds its lock gone at Update, asks for it again there, and looks whether its row
        // is still as it was: nothing is lost by going on without it.
        return;
    }
}

std::int64_t FileTransaction::nextNumber(const std::string& table) {
    std::int64_t& highest = numbers_.highestOf(table);
    std::int64_t number = 0;
    const auto raise = [&] { number = store().counters().raiseCounter(table, highest); };
    const bool apart = store().counters().countsApart();
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
        store().transaction().savepoint(workspaceDepth_);
    } else if (!store().transaction().isOpen()) {
        store().transaction().beginWrite();
    }
    ++workspaceDepth_;
}

void FileTransaction::commitWorkspace() {
    if (workspaceDepth_ > 1) {
        store().transaction().release(workspaceDepth_ - 1);
        --workspaceDepth_;
        return;
    }
    try {
        if (!store().transaction().isOpen()) {
            fail(errDiskIo, "The transaction was lost by an earlier error; nothing of it was written.");
        }
        store().transaction().commit();
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
        store().transaction().rollbackTo(workspaceDepth_);
        keepCounters();
        return;
    }
    store().transaction().rollback();
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
                store().counters().raiseCounter(table, highest - 1);
            }
        });
    } catch (const Error&) {
        // This process still remembers what it gave; only the others lose the mark, and they never saw the
        // number.
        return;
    }
}

}  // namespace dao
