#include "platform/dao/presence.h"

#include "platform/dao/failure.h"

namespace dao {

ExclusiveUse::ExclusiveUse(std::shared_ptr<Presence> presence) : presence_(std::move(presence)) {
    if (presence_ != nullptr && !presence_->enterExclusive()) {
        presence_.reset();
        fail(errFileInUse);
    }
}

ExclusiveUse& ExclusiveUse::operator=(ExclusiveUse&& other) noexcept {
    if (this != &other) {
        if (presence_ != nullptr) {
            presence_->leaveExclusive();
        }
        presence_ = std::move(other.presence_);
    }
    return *this;
}

ExclusiveUse::~ExclusiveUse() {
    if (presence_ != nullptr) {
        presence_->leaveExclusive();
    }
}

}  // namespace dao
