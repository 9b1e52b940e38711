#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/dao/driver.h"

namespace dao::driver {

// The prepared statements used last, by their texts.
class RecentStatements {
 public:
    std::shared_ptr<Statement> find(const std::string& text);  // nullptr: it is not among them
    void keep(const std::string& text, const std::shared_ptr<Statement>& statement);
    void clear() noexcept;

 private:
    struct Kept {
        std::string text;
        std::shared_ptr<Statement> statement;
    };

    std::list<Kept> recent_;  // last used first
    std::unordered_map<std::string_view, std::list<Kept>::iterator> byText_;
};

}  // namespace dao::driver
