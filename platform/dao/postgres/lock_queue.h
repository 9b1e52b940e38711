#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "platform/dao/postgres/connection.h"

namespace dao::postgres {

// Row locks of one session of the server, by their numbers. Whoever locks a row reads it next: the locks that
// are wanted go to the server in one breath with the next statement.
class LockQueue {
 public:
    void want(std::int64_t number) { wanted_.push_back(number); }
    // False where it was not wanted, or is held by now.
    bool takeBack(std::int64_t number);
    bool isEmpty() const { return wanted_.empty(); }
    void addSteps(std::vector<Step>& steps) const;
    // The first `done` of these have been granted in that session of the link.
    void noteDone(std::size_t done, std::int64_t session);
    // It is held no longer. False where it was not, or was in another session, which it went with.
    bool letGo(std::int64_t number, std::int64_t session);

 private:
    std::vector<std::int64_t> wanted_;
    std::multiset<std::int64_t> held_;
    std::int64_t session_ = -1;  // of the link, that they are held in
};

}  // namespace dao::postgres
