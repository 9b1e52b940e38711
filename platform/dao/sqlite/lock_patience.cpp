#include "platform/dao/sqlite/lock_patience.h"

#include <algorithm>
#include <random>
#include <thread>

#include <unistd.h>

#include "platform/dao/limits.h"

namespace dao::driver {
namespace {

// Processes that wait for the same lock must not knock at the same moments.
int jitter() {
    static std::minstd_rand random(static_cast<unsigned>(getpid()) * 2654435761U + 1);
    return std::uniform_int_distribution<int>(1000, 8000)(random);
}

}  // namespace

int LockPatience::ask(void* self, int count) {
    return static_cast<LockPatience*>(self)->wait(count);
}

int LockPatience::wait(int count) {
    const auto now = std::chrono::steady_clock::now();
    if (count == 0) {
        since_ = now;
    }
    const auto left = std::chrono::milliseconds(lockTimeout()) - (now - since_);
    if (left <= std::chrono::milliseconds(0)) {
        return 0;
    }
    const auto nap = std::chrono::microseconds(jitter());
    std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(nap, left));
    return 1;
}

}  // namespace dao::driver
