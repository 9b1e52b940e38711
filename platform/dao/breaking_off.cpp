#include "platform/dao/breaking_off.h"

#include <atomic>

#include "platform/dao/failure.h"

namespace dao {
namespace {

std::atomic<bool> broken{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal's handler sets it");

}  // namespace

void breakOff() noexcept {
    broken = true;
}

bool isGoingOn() noexcept {
    return !broken;
}

void needGoingOn() {
    if (!isGoingOn()) {
        fail(errCancelled);
    }
}

}  // namespace dao
