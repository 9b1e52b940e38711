#include "platform/dao/breaking_off.h"

#include <utility>

#include "platform/dao/failure.h"

namespace dao {
namespace {

std::atomic<bool> broken{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal's handler sets it");

const std::atomic<bool>*& leftHere() noexcept {
    static thread_local const std::atomic<bool>* left = nullptr;
    return left;
}

}  // namespace

void breakOff() noexcept {
    broken = true;
}

bool isGoingOn() noexcept {
    return !broken && !isLeft();
}

void needGoingOn() {
    if (!isGoingOn()) {
        fail(errCancelled);
    }
}

Leavable::Leavable(const std::atomic<bool>& left) : around_(std::exchange(leftHere(), &left)) {}

Leavable::~Leavable() {
    leftHere() = around_;
}

bool isLeft() noexcept {
    return leftHere() != nullptr && *leftHere();
}

const std::atomic<bool>* leftBy() noexcept {
    return leftHere();
}

Unleavable::Unleavable() noexcept : around_(std::exchange(leftHere(), nullptr)) {}

Unleavable::~Unleavable() {
    leftHere() = around_;
}

}  // namespace dao
