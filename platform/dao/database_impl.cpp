#include "platform/dao/database_impl.h"

#include "platform/dao/failure.h"

namespace dao {

OpenFile& DatabaseImpl::file() const {
    if (file_ == nullptr) {
        fail(errObjectClosed);
    }
    return *file_;
}

OpenFile& DatabaseImpl::writableFile() const {
    OpenFile& open = file();
    if (readOnly_ || !open.store().writable()) {
        fail(errReadOnly);
    }
    return open;
}

void DatabaseImpl::close() noexcept {
    for (const std::weak_ptr<Dependent>& weak : dependents_) {
        if (const std::shared_ptr<Dependent> dependent = weak.lock()) {
            dependent->Close();
        }
    }
    dependents_.clear();
    exclusive_ = ExclusiveUse();
    file_.reset();
}

void DatabaseImpl::keep(const std::shared_ptr<Dependent>& dependent) {
    std::erase_if(dependents_, [](const auto& weak) { return weak.expired(); });
    dependents_.push_back(dependent);
}

}  // namespace dao
