#include "platform/sql/numbers.h"

namespace sql::writing {

int Numbers::addIdSet(const IdSetPtr& ids) {
    for (std::size_t i = 0; i < idSets_.size(); ++i) {
        if (idSets_[i] == ids) {
            return idSetBase_ + static_cast<int>(i);
        }
    }
    idSets_.push_back(ids);
    return idSetBase_ + static_cast<int>(idSets_.size()) - 1;
}

int Numbers::addParameter(const Parameter& parameter) {
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        if (parameters_[i].kind == parameter.kind && parameters_[i].ids == parameter.ids) {
            return static_cast<int>(i) + 1;
        }
    }
    parameters_.push_back(parameter);
    return static_cast<int>(parameters_.size());
}

}  // namespace sql::writing
