#include "platform/dao/open_file.h"

#include "platform/dao/failure.h"
#include "platform/dao/open_files.h"
#include "platform/dao/translated.h"
#include "platform/sql/ast.h"
#include "platform/sql/parser.h"
#include "platform/text/utf8.h"

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

OpenFile::OpenFile(PlacePtr place, std::shared_ptr<Presence> presence, std::unique_ptr<driver::Store> store)
    : place_(std::move(place)),
      presence_(std::move(presence)),
      store_(std::move(store)),
      translator_(*store_) {}

OpenFile::~OpenFile() {
    closeStore();
    if (presence_ != nullptr && presence_.use_count() == 1 && presence_->enterExclusive()) {
        place_->tidy();
        presence_->leaveExclusive();
    }
}

void OpenFile::releaseStore() {
    OpenFiles::forget(this);
    closeStore();
    touch();
}

void OpenFile::closeStore() noexcept {
    translator_.dropStore();
    store_.reset();
}

void OpenFile::reopen() {
    place_ = place_->again();
    if (presence_ == nullptr) {
        presence_ = place_->enter(true);
    }
    store_ = place_->open();
    translator_.setStore(*store_);
    OpenFiles::add(place_->identity(), store_->writable(), shared_from_this());
    touch();
}

std::int64_t OpenFile::execute(std::string_view statement) {
    if (!alphabet::isSound(statement)) {
        fail(errTextNotSound);  // what it writes would be no better
    }
    const sql::StatementPtr tree = translated([&] { return sql::parse(statement); });
    if (tree->kind == sql::Statement::Kind::Select) {
        fail(errInvalidOperation, "Cannot execute a select query.");
    }
    std::int64_t affected = 0;
    write([&] { affected = translator_.run(*tree); });
    return affected;
}

void OpenFile::lockForEdit(const EditedRows& rows) {
    if (!store().writable()) {
        fail(errReadOnly);
    }
    if (store_->rowLocks() != nullptr) {
        lockRows(*store_, rows);
    } else if (workspaceDepth_ == 0 && !store_->transaction().isOpen()) {
        store_->transaction().beginWrite();
    }
    ++editors_;
}

void OpenFile::unlockEdit(const EditedRows& rows) noexcept {
    if (store_ != nullptr) {
        unlockRows(*store_, rows);
    }
    if (--editors_ == 0 && workspaceDepth_ == 0 && store_ != nullptr && store_->rowLocks() == nullptr) {
        store_->transaction().rollback();
        ++lockEpoch_;
    }
}

bool OpenFile::mayHaveChanged(const EditedRows& rows, std::int64_t epoch) {
    driver::RowLocks* const locks = store_->rowLocks();
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

bool OpenFile::changeAtOnce(const driver::RowChange& change, const EditedRows& edited) {
    if (workspaceDepth_ > 0 || store().transaction().isOpen()) {
        return false;
    }
    touch();
    if (!store_->rows().changeRow(change)) {
        return false;
    }
    unlockRows(*store_, edited);
    --editors_;
    ++lockEpoch_;
    return true;
}

void OpenFile::beginWrite() {
    if (!store().writable()) {
        fail(errReadOnly);
    }
    if (workspaceDepth_ == 0) {
        if (!store_->transaction().isOpen()) {
            store_->transaction().beginWrite();
        }
        return;
    }
    // The store gives a whole transaction up when the disk is full; what follows must not be written alone.
    if (!store_->transaction().isOpen()) {
        fail(errDiskIo, "The transaction was lost by an earlier error; it can only be rolled back.");
    }
    store_->transaction().savepoint(kWriteLevel);
}

void OpenFile::finishWrite(const EditedRows* edited) {
    if (workspaceDepth_ > 0) {
        store_->transaction().release(kWriteLevel);
    } else {
        store_->transaction().commit();
        translator_.keepWritten();
    }
    if (edited != nullptr) {
        unlockRows(*store_, *edited);
        --editors_;
    }
    touch();
    if (workspaceDepth_ == 0) {
        lockAgain();
    }
}

void OpenFile::abandonWrite() noexcept {
    touch();
    translator_.forgetUnwritten(workspaceDepth_ == 0);
    if (workspaceDepth_ > 0) {
        store_->transaction().rollbackTo(kWriteLevel);
        return;
    }
    store_->transaction().rollback();
    lockAgain();
}

void OpenFile::lockAgain() noexcept {
    ++lockEpoch_;
    if (editors_ == 0 || store_->transaction().isOpen() || store_->rowLocks() != nullptr) {
        return;
    }
    const QuietErrors quiet;
    try {
        store_->transaction().beginWrite();
    } catch (const Error&) {
        // The pending Edit finds its lock gone at Update, asks for it again there, and looks whether its row
        // is still as it was: nothing is lost by going on without it.
        return;
    }
}

std::int64_t OpenFile::nextNumber(const std::string& table) {
    std::int64_t& highest = highestGiven_[table];
    std::int64_t number = 0;
    const auto raise = [&] { number = store_->counters().raiseCounter(table, highest); };
    const bool apart = store().counters().countsApart();
    if (apart) {
        raise();
    } else {
        write(raise);
    }
    highest = number;
    if (!apart && workspaceDepth_ > 0) {
        givenInWorkspace_[table] = number;
    }
    return number;
}

void OpenFile::beginWorkspace() {
    if (workspaceDepth_ > 0) {
        store_->transaction().savepoint(workspaceDepth_);
    } else if (!store().transaction().isOpen()) {
        store_->transaction().beginWrite();
    }
    ++workspaceDepth_;
}

void OpenFile::commitWorkspace() {
    if (workspaceDepth_ > 1) {
        store_->transaction().release(workspaceDepth_ - 1);
        --workspaceDepth_;
        return;
    }
    try {
        if (!store_->transaction().isOpen()) {
            fail(errDiskIo, "The transaction was lost by an earlier error; nothing of it was written.");
        }
        store_->transaction().commit();
    } catch (...) {
        rollbackWorkspace();
        throw;
    }
    workspaceDepth_ = 0;
    translator_.keepWritten();
    givenInWorkspace_.clear();
    touch();
    lockAgain();
}

void OpenFile::rollbackWorkspace() noexcept {
    touch();
    translator_.forgetUnwritten(workspaceDepth_ <= 1);
    if (workspaceDepth_ > 1) {
        --workspaceDepth_;
        store_->transaction().rollbackTo(workspaceDepth_);
        keepCounters();
        return;
    }
    store_->transaction().rollback();
    workspaceDepth_ = 0;
    keepCounters();
    givenInWorkspace_.clear();
    lockAgain();
}

// A number that was shown to somebody must not come back, although the row it was for was rolled back.
void OpenFile::keepCounters() noexcept {
    if (givenInWorkspace_.empty()) {
        return;
    }
    const QuietErrors quiet;
    try {
        write([&] {
            for (const auto& [table, highest] : givenInWorkspace_) {
                store_->counters().raiseCounter(table, highest - 1);
            }
        });
    } catch (const Error&) {
        // This process still remembers what it gave; only the others lose the mark, and they never saw the
        // number.
        return;
    }
}

}  // namespace dao
