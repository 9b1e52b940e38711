#include "platform/dao/sqlite/recent_statements.h"

namespace dao::driver {
namespace {

constexpr std::size_t kStatements = 64;
constexpr std::size_t kTextLimit = 4096;

}  // namespace

std::shared_ptr<Statement> RecentStatements::find(const std::string& text) {
    const auto found = byText_.find(text);
    if (found == byText_.end()) {
        return nullptr;
    }
    recent_.splice(recent_.begin(), recent_, found->second);
    return recent_.front().statement;
}

void RecentStatements::keep(const std::string& text, const std::shared_ptr<Statement>& statement) {
    if (text.size() > kTextLimit) {
        return;
    }
    recent_.push_front({text, statement});
    byText_.emplace(recent_.front().text, recent_.begin());
    if (recent_.size() > kStatements) {
        byText_.erase(recent_.back().text);
        recent_.pop_back();
    }
}

void RecentStatements::clear() noexcept {
    byText_.clear();
    recent_.clear();
}

}  // namespace dao::driver
