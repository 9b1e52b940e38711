#include "platform/dao/id_sets.h"

namespace dao {

void IdSets::setStore(driver::Store* store) {
    store_ = store;
    if (store_ == nullptr) {
        return;
    }
    for (const auto& [number, set] : sets_) {
        store_->setIdSet(number, set);
    }
}

int IdSets::add(const std::vector<sql::IdSetPtr>& sets) {
    const int first = next_;
    for (const sql::IdSetPtr& set : sets) {
        sets_[next_] = set;
        store_->setIdSet(next_++, set);
    }
    return first;
}

void IdSets::drop(int first, std::size_t count) noexcept {
    for (int number = first; number < first + static_cast<int>(count); ++number) {
        sets_.erase(number);
        if (store_ != nullptr) {
            store_->dropIdSet(number);
        }
    }
}

HeldIdSets::~HeldIdSets() {
    if (const std::shared_ptr<IdSets> all = all_.lock()) {
        all->drop(first_, count_);
    }
}

}  // namespace dao
