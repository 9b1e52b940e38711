#pragma once

#include <vector>

#include "platform/sql/ast.h"
#include "platform/sql/writer.h"

namespace sql::writing {

// What the texts of one statement refer to by number.
class Numbers {
 public:
    explicit Numbers(int idSetBase) : idSetBase_(idSetBase) {}

    // The number of a set in "idset(N)": the same again for the same set.
    int addIdSet(const IdSetPtr& ids);
    // The number of a parameter, from 1: the same again for the same set and for Now.
    int addParameter(const Parameter& parameter);
    void noteTime() { asksTheTime_ = true; }
    bool asksTheTime() const { return asksTheTime_; }
    // The first number that is left for row keys.
    int firstKey() const { return static_cast<int>(parameters_.size()) + 1; }

    const std::vector<IdSetPtr>& idSets() const { return idSets_; }
    const std::vector<Parameter>& parameters() const { return parameters_; }

 private:
    int idSetBase_;
    std::vector<IdSetPtr> idSets_;
    std::vector<Parameter> parameters_;
    bool asksTheTime_ = false;
};

}  // namespace sql::writing
