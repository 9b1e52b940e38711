#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace dao {

class FileTransaction;

// The numbers that this process has drawn from the counters of a shop.
class GivenNumbers {
 public:
    explicit GivenNumbers(FileTransaction& transaction) : transaction_(transaction) {}

    // The next number of a table's counter, never given before by this process and raised in the file for the
    // others.
    std::int64_t next(const std::string& table);
    // The workspace's transaction has been rolled back, and the counters with it.
    void keep() noexcept;
    // It was committed, and they are kept with it.
    void kept() { inWorkspace_.clear(); }

 private:
    FileTransaction& transaction_;
    std::map<std::string, std::int64_t> highest_;
    std::map<std::string, std::int64_t> inWorkspace_;
};

}  // namespace dao
