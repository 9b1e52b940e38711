#include "platform/dao/open_file.h"

#include <algorithm>

#include "platform/dao/open_files.h"
#include "platform/sql/ast.h"
#include "platform/sql/parser.h"
#include "platform/text/utf8.h"

namespace dao {
namespace {

constexpr std::size_t kCachedStatements = 48;
constexpr std::size_t kCachedTextLimit = 65536;
constexpr int kWriteLevel = 1000;  // the savepoint of one write inside a workspace transaction

}  // namespace

void failSyntax(const sql::SyntaxError& error) {
    fail(errSyntax, "Syntax error in query expression: " + std::string(error.what()) + " (at character " +
                        std::to_string(error.position() + 1) + ").");
}

void failName(const sql::NameError& error) {
    if (error.kind() == sql::NameError::Kind::Table) {
        fail(errUnknownObject, "The engine can't find the input table or query '" + error.name() + "'.");
    }
    fail(errTooFewParameters, "Too few parameters. Expected 1. There is no field '" + error.name() + "'.");
}

Compiled::Compiled(OpenFile& file, sql::StatementPtr statement, sql::WrittenSelect written)
    : tree(std::move(statement)),
      select(std::move(written)),
      file_(file.weak_from_this()),
      firstSet_(file.addIdSets(select.idSets)) {}

Compiled::~Compiled() {
    if (const std::shared_ptr<OpenFile> file = file_.lock()) {
        file->dropIdSets(firstSet_, select.idSets.size());
    }
}

OpenFile::OpenFile(PlacePtr place, std::shared_ptr<Presence> presence, std::unique_ptr<driver::Store> store)
    : place_(std::move(place)), presence_(std::move(presence)), store_(std::move(store)), catalog_(*store_) {
    catalog_.refresh();
}

OpenFile::~OpenFile() {
    store_.reset();
    if (presence_ != nullptr && presence_.use_count() == 1 && presence_->enterExclusive()) {
        place_->tidy();
        presence_->leaveExclusive();
    }
}

void OpenFile::releaseStore() {
    OpenFiles::forget(this);
    cache_.clear();
    store_.reset();
    touch();
}

void OpenFile::reopen() {
    place_ = place_->again();
    if (presence_ == nullptr) {
        presence_ = place_->enter(true);
    }
    store_ = place_->open();
    catalog_.setStore(*store_);
    for (const auto& [number, set] : idSets_) {
        store_->setIdSet(number, set);
    }
    OpenFiles::add(place_->identity(), store_->writable(), shared_from_this());
    touch();
}

int OpenFile::addIdSets(const std::vector<sql::IdSetPtr>& sets) {
    const int first = nextIdSet_;
    for (const sql::IdSetPtr& set : sets) {
        idSets_[nextIdSet_] = set;
        store_->setIdSet(nextIdSet_++, set);
    }
    return first;
}

void OpenFile::dropIdSets(int first, std::size_t count) noexcept {
    for (int number = first; number < first + static_cast<int>(count); ++number) {
        idSets_.erase(number);
        if (store_ != nullptr) {
            store_->dropIdSet(number);
        }
    }
}

const FileCatalog& OpenFile::catalog() {
    store();
    catalog_.refresh();
    return catalog_;
}

const sql::TableInfo* OpenFile::table(std::string_view name) {
    return catalog().findTable(name);
}

bool OpenFile::holds(const Compiled& compiled) {
    return compiled.schemaVersion_ == catalog_.schemaVersion() && catalog_.stillHolds(compiled.queries_);
}

CompiledPtr OpenFile::compile(std::string_view text) {
    const ReadScope scope(store());
    catalog_.refresh();
    const auto known = std::find_if(cache_.begin(), cache_.end(),
                                    [&](const CacheEntry& entry) { return entry.text == text; });
    if (known != cache_.end()) {
        if (holds(*known->compiled)) {
            cache_.splice(cache_.begin(), cache_, known);
            return cache_.front().compiled;
        }
        cache_.erase(known);
    }
    return translated([&] {
        sql::StatementPtr tree = sql::parse(text);
        if (tree->kind != sql::Statement::Kind::Select) {
            fail(errInvalidOperation, "Invalid operation: only a SELECT gives records.");
        }
        catalog_.startNoting();
        sql::WrittenSelect written = store_->writer().select(*tree, catalog_, nextIdSet_);
        auto compiled = std::make_shared<Compiled>(*this, std::move(tree), std::move(written));
        compiled->schemaVersion_ = catalog_.schemaVersion();
        compiled->queries_ = catalog_.noted();
        remember(std::string(text), compiled);
        return CompiledPtr(compiled);
    });
}

void OpenFile::remember(std::string text, CompiledPtr compiled) {
    if (text.size() > kCachedTextLimit) {
        return;
    }
    cache_.push_front({std::move(text), std::move(compiled)});
    if (cache_.size() > kCachedStatements) {
        cache_.pop_back();
    }
}

CompiledPtr OpenFile::compileTree(const sql::StatementPtr& tree) {
    const ReadScope scope(store());
    catalog_.refresh();
    return translated([&] {
        return CompiledPtr(
            std::make_shared<Compiled>(*this, tree, store_->writer().select(*tree, catalog_, nextIdSet_)));
    });
}

bool OpenFile::standsAsRead() {
    return store().schemaVersion() == catalog_.schemaVersion();
}

CompiledPtr OpenFile::compileFind(const Compiled& in, const sql::Expression& criterion) {
    return translated([&] {
        sql::WrittenSelect written = store_->writer().find(*in.tree, criterion, catalog_, nextIdSet_);
        return CompiledPtr(std::make_shared<Compiled>(*this, in.tree, std::move(written)));
    });
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
    write([&] {
        catalog_.refresh();
        const sql::WrittenAction action =
            translated([&] { return store_->writer().action(*tree, catalog_, nextIdSet_); });
        const int first = addIdSets(action.idSets);
        struct Drop {
            OpenFile& file;
            int first;
            std::size_t count;
            ~Drop() { file.dropIdSets(first, count); }
        } const drop{*this, first, action.idSets.size()};
        const auto prepared = store_->prepare(action.text);
        driver::bindParameters(*prepared, action.parameters);
        affected = prepared->run();
    });
    return affected;
}

void OpenFile::writeQuery(std::string_view name, const std::string& text, sql::StatementPtr tree) {
    queriesWritten_ = true;
    catalog_.keep(name, store_->writeQuery(name, text), std::move(tree));
}

void OpenFile::lockForEdit(const EditedRows& rows) {
    if (!store().writable()) {
        fail(errReadOnly);
    }
    if (store_->locksRows()) {
        EditedRows locked;
        try {
            for (const RowName& row : rows) {
                store_->lockRow(row.table, row.key);
                locked.push_back(row);
            }
        } catch (...) {
            unlockRows(locked);
            throw;
        }
    } else if (workspaceDepth_ == 0 && !store_->inTransaction()) {
        store_->beginWrite();
    }
    ++editors_;
}

void OpenFile::unlockRows(const EditedRows& rows) noexcept {
    if (store_ == nullptr || !store_->locksRows()) {
        return;
    }
    for (const RowName& row : rows) {
        store_->unlockRow(row.table, row.key);
    }
}

void OpenFile::unlockEdit(const EditedRows& rows) noexcept {
    unlockRows(rows);
    if (--editors_ == 0 && workspaceDepth_ == 0 && store_ != nullptr && !store_->locksRows()) {
        store_->rollback();
        ++lockEpoch_;
    }
}

bool OpenFile::mayHaveChanged(const EditedRows& rows, std::int64_t epoch) {
    if (!store_->locksRows()) {
        return epoch != lockEpoch_;
    }
    for (const RowName& row : rows) {
        if (!store_->holdRow(row.table, row.key)) {
            fail(errRecordDeleted);
        }
    }
    return true;
}

bool OpenFile::changeAtOnce(const driver::RowChange& change, const EditedRows& edited) {
    if (workspaceDepth_ > 0 || store().inTransaction()) {
        return false;
    }
    touch();
    if (!store_->changeRow(change)) {
        return false;
    }
    unlockRows(edited);
    --editors_;
    ++lockEpoch_;
    return true;
}

void OpenFile::beginWrite() {
    if (!store().writable()) {
        fail(errReadOnly);
    }
    if (workspaceDepth_ == 0) {
        if (!store_->inTransaction()) {
            store_->beginWrite();
        }
        return;
    }
    // The store gives a whole transaction up when the disk is full; what follows must not be written alone.
    if (!store_->inTransaction()) {
        fail(errDiskIo, "The transaction was lost by an earlier error; it can only be rolled back.");
    }
    store_->savepoint(kWriteLevel);
}

void OpenFile::finishWrite(const EditedRows* edited) {
    if (workspaceDepth_ > 0) {
        store_->release(kWriteLevel);
    } else {
        store_->commit();
        queriesWritten_ = false;
    }
    if (edited != nullptr) {
        unlockRows(*edited);
        --editors_;
    }
    touch();
    if (workspaceDepth_ == 0) {
        lockAgain();
    }
}

// What was translated with a stored query's text that is now taken back must not pass for the text that next
// gets its version.
void OpenFile::forgetUnwritten() noexcept {
    if (queriesWritten_) {
        catalog_.forgetQueries();
        cache_.clear();
        queriesWritten_ = workspaceDepth_ > 0;  // what else it wrote may still be taken back, too
    }
}

void OpenFile::abandonWrite() noexcept {
    touch();
    forgetUnwritten();
    if (workspaceDepth_ > 0) {
        store_->rollbackTo(kWriteLevel);
        return;
    }
    store_->rollback();
    lockAgain();
}

void OpenFile::lockAgain() noexcept {
    ++lockEpoch_;
    if (editors_ == 0 || store_->inTransaction() || store_->locksRows()) {
        return;
    }
    const QuietErrors quiet;
    try {
        store_->beginWrite();
    } catch (const Error&) {
        // The pending Edit finds its lock gone at Update, asks for it again there, and looks whether its row
        // is still as it was: nothing is lost by going on without it.
        return;
    }
}

std::int64_t OpenFile::nextNumber(const std::string& table) {
    std::int64_t& highest = highestGiven_[table];
    std::int64_t number = 0;
    const auto raise = [&] { number = store_->raiseCounter(table, highest); };
    const bool apart = store().countsApart();
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
        store_->savepoint(workspaceDepth_);
    } else if (!store().inTransaction()) {
        store_->beginWrite();
    }
    ++workspaceDepth_;
}

void OpenFile::commitWorkspace() {
    if (workspaceDepth_ > 1) {
        store_->release(workspaceDepth_ - 1);
        --workspaceDepth_;
        return;
    }
    try {
        if (!store_->inTransaction()) {
            fail(errDiskIo, "The transaction was lost by an earlier error; nothing of it was written.");
        }
        store_->commit();
    } catch (...) {
        rollbackWorkspace();
        throw;
    }
    workspaceDepth_ = 0;
    queriesWritten_ = false;
    givenInWorkspace_.clear();
    touch();
    lockAgain();
}

void OpenFile::rollbackWorkspace() noexcept {
    touch();
    forgetUnwritten();
    if (workspaceDepth_ > 1) {
        --workspaceDepth_;
        store_->rollbackTo(workspaceDepth_);
        keepCounters();
        return;
    }
    store_->rollback();
    workspaceDepth_ = 0;
    queriesWritten_ = false;
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
                store_->raiseCounter(table, highest - 1);
            }
        });
    } catch (const Error&) {
        // This process still remembers what it gave; only the others lose the mark, and they never saw the
        // number.
        return;
    }
}

}  // namespace dao
