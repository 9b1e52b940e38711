#pragma once

#include <memory>
#include <set>
#include <string>

#include "platform/dao/presence.h"

namespace dao {

// Who is in a database: a small file beside it, held with a shared lock by each process that has the database
// open and with an exclusive one by the process that wants it for itself. The lock goes with the process,
// however that ends; the last to leave takes the file away. Whoever may write to the database may
// write to this file.
class LockFile final : public Presence, public Numbers {
 public:
    // The process's one lock on this database, taken now if it has none. `path`: the database's, without
    // links. 3356 if another process has the database exclusively and keeps it; 3050 if no lock file can be
    // made.
    static std::shared_ptr<LockFile> of(const std::string& path);
    // The process's one file of numbers for this database: one that has it says nothing of who is in. Fails
    // alike.
    static std::shared_ptr<LockFile> ofNumbers(const std::string& path);

    ~LockFile() override;

    bool enterExclusive() override;
    void leaveExclusive() noexcept override;
    bool holdNumber(int number) override;
    void leaveNumber(int number) noexcept override;

 private:
    LockFile(std::string path, const std::string& database);
    static std::shared_ptr<LockFile> at(const std::string& lockPath, const std::string& database);
    bool tryOpen(const std::string& database);  // false: held exclusively by another

    std::string path_;
    int fd_ = -1;
    int exclusive_ = 0;
    std::set<int> numbers_;
};

}  // namespace dao
