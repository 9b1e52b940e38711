#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace dao {

// The numbers that this process has drawn from the counters of a shop: none of them is ever given again,
// whatever is rolled back.
class GivenNumbers {
 public:
    std::int64_t& highestOf(const std::string& table) { return highest_[table]; }
    // The counter was raised within a transaction of the workspace, and goes back with it.
    void noteInWorkspace(const std::string& table, std::int64_t number) { inWorkspace_[table] = number; }
    const std::map<std::string, std::int64_t>& inWorkspace() const { return inWorkspace_; }
    void endWorkspace() { inWorkspace_.clear(); }

 private:
    std::map<std::string, std::int64_t> highest_;
    std::map<std::string, std::int64_t> inWorkspace_;
};

}  // namespace dao
