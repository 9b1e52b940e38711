#include "platform/dao/postgres/lock_queue.h"

#include <algorithm>

namespace dao::postgres {

bool LockQueue::takeBack(std::int64_t number) {
    const auto wanted = std::find(wanted_.begin(), wanted_.end(), number);
    if (wanted == wanted_.end()) {
        return false;
    }
    wanted_.erase(wanted);
    return true;
}

void LockQueue::addSteps(std::vector<Step>& steps) const {
    for (const std::int64_t number : wanted_) {
        steps.push_back({"SELECT pg_advisory_lock($1)", Parameters().integer8(number)});
    }
}

void LockQueue::noteDone(std::size_t done, std::int64_t session) {
    if (session_ != session) {
        held_.clear();
        session_ = session;
    }
    const auto end = wanted_.begin() + static_cast<std::ptrdiff_t>(std::min(done, wanted_.size()));
    held_.insert(wanted_.begin(), end);
    wanted_.erase(wanted_.begin(), end);
}

bool LockQueue::letGo(std::int64_t number, std::int64_t session) {
    const auto held = held_.find(number);
    if (held == held_.end()) {
        return false;
    }
    held_.erase(held);
    return session_ == session;
}

}  // namespace dao::postgres
