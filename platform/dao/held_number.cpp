#include "platform/dao/held_number.h"

#include <utility>

#include "platform/dao/database.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/failure.h"

namespace dao {
namespace {

std::shared_ptr<Numbers> numbersOf(const Database& database) {
    if (!database) {
        fail(errObjectClosed);
    }
    return database.impl()->file().place().numbers();
}

}  // namespace

HeldNumber::HeldNumber(const Database& database, int wanted) : numbers_(numbersOf(database)), value_(wanted) {
    while (!numbers_->holdNumber(value_)) {
        ++value_;
    }
}

HeldNumber::HeldNumber(HeldNumber&& other) noexcept
    : numbers_(std::move(other.numbers_)), value_(std::exchange(other.value_, -1)) {}

HeldNumber& HeldNumber::operator=(HeldNumber&& other) noexcept {
    if (this != &other) {
        leave();
        numbers_ = std::move(other.numbers_);
        value_ = std::exchange(other.value_, -1);
    }
    return *this;
}

bool HeldNumber::isOn(const Database& database) const {
    return numbers_ != nullptr && numbers_ == numbersOf(database);
}

bool HeldNumber::isLost() const {
    return numbers_ != nullptr && numbers_->isLost(value_);
}

void HeldNumber::leave() noexcept {
    if (numbers_ != nullptr) {
        numbers_->leaveNumber(value_);
    }
    numbers_.reset();
    value_ = -1;
}

}  // namespace dao
