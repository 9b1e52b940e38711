#pragma once

#include <chrono>

#include "platform/dao/sqlite/connection.h"

namespace dao::driver {

// How long a connection waits for a lock: as long as the engine's lock timeout says when it asks, in short
// steps that differ from process to process. Outlives the connection that it was given to.
class LockPatience {
 public:
    LockPatience() = default;
    LockPatience(const LockPatience&) = delete;
    LockPatience& operator=(const LockPatience&) = delete;

    BusyHandler handler() { return {&LockPatience::ask, this}; }

 private:
    static int ask(void* self, int count);
    int wait(int count);

    std::chrono::steady_clock::time_point since_;  // of the waiting that goes on
};

}  // namespace dao::driver
