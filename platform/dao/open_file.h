#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/dao/place.h"
#include "platform/dao/translator.h"

namespace dao {

// The rows of base tables that one row of a record set is made of.
struct RowName {
    std::string table;
    std::int64_t key;
};
using EditedRows = std::vector<RowName>;

// A shop's records that this process has open: one connection, whatever the number of Database objects on it.
//
// The write lock of a file has three takers here. An Edit holds it until its Update or CancelUpdate; a
// workspace transaction holds it from BeginTrans to its end; every other write takes it for itself. They
// share the connection's one transaction: a write commits at once unless a workspace transaction is open, and
// the lock is taken again for the Edits that are still pending. Where the store locks rows an Edit holds its
// rows and no transaction.
class OpenFile : public std::enable_shared_from_this<OpenFile> {
 public:
    // `presence`: nothing where this process leaves no sign of being in.
    OpenFile(PlacePtr place, std::shared_ptr<Presence> presence, std::unique_ptr<driver::Store> store);
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    const Place& place() const { return *place_; }
    const std::shared_ptr<Presence>& presence() const { return presence_; }
    driver::Store& store() {
        if (store_ == nullptr) {
            reopen();
        }
        return *store_;
    }
    // Closes the connection while the file is rebuilt or replaced; the next use opens what then stands at the
    // path. Must not be busy.
    void releaseStore();

    // Counts up with everything that makes rows read earlier old: own writes, a rollback, Idle.
    const std::int64_t& generation() const { return generation_; }
    void touch() { ++generation_; }

    Translator& translator() {
        store();
        return translator_;
    }
    const FileCatalog& catalog() { return translator().catalog(); }
    const sql::TableInfo* table(std::string_view name) { return catalog().findTable(name); }
    CompiledPtr compile(std::string_view text) { return translator().compile(text); }
    std::int64_t execute(std::string_view statement);

    // For an Edit of the rows: 3260 where somebody else keeps one of them too long.
    void lockForEdit(const EditedRows& rows);
    void unlockEdit(const EditedRows& rows) noexcept;
    // Differs once the lock has been let go and others may have written.
    std::int64_t lockEpoch() const { return lockEpoch_; }
    // Inside write(): whether the rows that an Edit read at that epoch may have changed since. From here on
    // they do not. 3167 where one of them is gone.
    bool mayHaveChanged(const EditedRows& rows, std::int64_t epoch);
    // The change of one row by an Edit of these rows, at once, where the store can: the Edit ends with it.
    // False: nothing was written, and it is to be done step by step.
    bool changeAtOnce(const driver::RowChange& change, const EditedRows& edited);
    bool isBusy() const { return editors_ > 0 || workspaceDepth_ > 0; }

    // Runs `body` as one change: all of it is written, or an error and nothing. `edited`: on success the
    // caller's Edit of these rows ends with it.
    template <typename Body>
    void write(Body&& body, const EditedRows* edited = nullptr);

    // The next number of a counter, never given before by this process and raised in the file for the others.
    std::int64_t nextNumber(const std::string& table);

    void beginWorkspace();
    void commitWorkspace();
    void rollbackWorkspace() noexcept;
    int workspaceDepth() const { return workspaceDepth_; }

 private:
    void closeStore() noexcept;
    void reopen();
    void beginWrite();
    void finishWrite(const EditedRows* edited);
    void abandonWrite() noexcept;
    void lockAgain() noexcept;
    void keepCounters() noexcept;

    PlacePtr place_;
    std::shared_ptr<Presence> presence_;
    std::unique_ptr<driver::Store> store_;
    Translator translator_;
    std::map<std::string, std::int64_t> highestGiven_;
    std::map<std::string, std::int64_t> givenInWorkspace_;
    std::int64_t generation_ = 0;
    std::int64_t lockEpoch_ = 0;
    int editors_ = 0;
    int workspaceDepth_ = 0;
};

template <typename Body>
void OpenFile::write(Body&& body, const EditedRows* edited) {
    beginWrite();
    try {
        body();
        finishWrite(edited);
    } catch (...) {
        abandonWrite();
        throw;
    }
}

}  // namespace dao
