#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/dao/postgres/link.h"

namespace dao::postgres {

// On which of the link's connections a transaction was begun; and whether it has been at all, or is to begin
// with its first statement.
class TransactionBegin {
 public:
    explicit TransactionBegin(Link& link) : link_(link) {}

    // False: a question stands for itself, and may be asked twice.
    bool isAsked() const { return session_.has_value(); }
    // It has been asked for, and the next statement begins it with stepsAhead().
    bool isAhead() const { return ahead_; }
    // Its connection stands still.
    bool isHere() const;
    // errDiskIo where the transaction went with an earlier one.
    Connection& connection();

    void noteHere() { session_ = link_.session(); }
    void putAhead();
    std::vector<Step> stepsAhead();  // none where it is not put ahead
    // The first of these is done. False where there were none.
    bool noteBegun();
    bool takeBack();  // what was put ahead; false: nothing was
    void end() { session_.reset(); }

 private:
    Link& link_;
    std::optional<std::int64_t> session_;  // of the link
    bool ahead_ = false;
};

}  // namespace dao::postgres
