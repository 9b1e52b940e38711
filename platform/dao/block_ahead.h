#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "platform/dao/driver.h"

namespace dao {

// The block that comes next on a long walk, which a store that is far gets ready while this one is gone
// through: one block, whatever the length of the walk.
class BlockAhead {
 public:
    // Which rows, and what decides how they are read: the fields that were looked at, and how old rows may
    // be.
    struct Rows {
        std::size_t first = 0;
        std::size_t count = 0;
        std::int64_t generation = -1;
        std::vector<char> asked;
        bool operator==(const Rows&) const = default;
    };

    void ask(Rows rows, std::shared_ptr<driver::Statement> statement) {
        rows_ = std::move(rows);
        statement_ = std::move(statement);
        statement_->askAhead();
    }
    // The statement whose readRows gives these; nullptr where others were asked for, which are dropped.
    std::shared_ptr<driver::Statement> take(const Rows& rows) {
        std::shared_ptr<driver::Statement> statement = std::exchange(statement_, nullptr);
        return rows == rows_ ? statement : nullptr;
    }
    // Called now and then on the walk: the store goes on sending.
    void takeIn() const {
        if (statement_ != nullptr) {
            statement_->takeIn();
        }
    }
    void drop() { statement_.reset(); }

 private:
    Rows rows_;
    std::shared_ptr<driver::Statement> statement_;
};

}  // namespace dao
