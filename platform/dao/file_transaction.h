#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/given_numbers.h"

namespace dao {

// The rows of base tables that one row of a record set is made of.
struct RowName {
    std::string table;
    std::int64_t key;
};
using EditedRows = std::vector<RowName>;

// The connection as its transaction sees it.
class ConnectionInUse {
 public:
    ConnectionInUse() = default;
    ConnectionInUse(const ConnectionInUse&) = delete;
    ConnectionInUse& operator=(const ConnectionInUse&) = delete;

    virtual driver::Store& store() = 0;               // opened anew where it was let go
    virtual driver::Store* openStore() noexcept = 0;  // nullptr: it was let go, and nobody has asked since
    virtual void touch() = 0;                         // rows read earlier are old
    // The transaction was committed; some of it was taken back, or all of it.
    virtual void keepWritten() = 0;
    virtual void forgetUnwritten(bool all) noexcept = 0;

 protected:
    ~ConnectionInUse() = default;
};

// The one transaction of a shop's connection, and who shares it.
//
// The write lock of a file has three takers here. An Edit holds it until its Update or CancelUpdate; a
// workspace transaction holds it from BeginTrans to its end; every other write takes it for itself. They
// share the connection's one transaction: a write commits at once unless a workspace transaction is open, and
// the lock is taken again for the Edits that are still pending. Where the store locks rows an Edit holds its
// rows and no transaction.
class FileTransaction {
 public:
    explicit FileTransaction(ConnectionInUse& connection) : connection_(connection) {}
    FileTransaction(const FileTransaction&) = delete;
    FileTransaction& operator=(const FileTransaction&) = delete;

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
    void beginWrite();
    void finishWrite(const EditedRows* edited);
    void abandonWrite() noexcept;
    void lockAgain() noexcept;
    void keepCounters() noexcept;
    driver::Store& store() { return connection_.store(); }

    ConnectionInUse& connection_;
    GivenNumbers numbers_;
    std::int64_t lockEpoch_ = 0;
    int editors_ = 0;
    int workspaceDepth_ = 0;
};

template <typename Body>
void FileTransaction::write(Body&& body, const EditedRows* edited) {
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
