#include "platform/dao/postgres/statement_cache.h"

#include <utility>

namespace dao::postgres {

std::string StatementCache::keyOf(std::string_view text, std::span<const unsigned> types) {
    std::string key(text);
    for (const unsigned type : types) {
        key += '\0' + std::to_string(type);  // no statement has a zero character
    }
    return key;
}

std::string StatementCache::find(const std::string& key) {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) {
        return {};
    }
    recent_.splice(recent_.begin(), recent_, found->second);
    return recent_.front().name;
}

std::string StatementCache::newName() {
    return "tarvello_" + std::to_string(++named_);
}

void StatementCache::keep(const std::string& key, const std::string& name) {
    recent_.push_front({key, name});
    byKey_.emplace(recent_.front().key, recent_.begin());
    if (recent_.size() > capacity_) {
        leave(std::prev(recent_.end()));
    }
}

void StatementCache::forget(const std::string& key) {
    if (const auto found = byKey_.find(key); found != byKey_.end()) {
        leave(found->second);
    }
}

std::vector<std::string> StatementCache::takeLeft() {
    return std::exchange(left_, {});
}

void StatementCache::leave(Place place) {
    left_.push_back(place->name);
    byKey_.erase(place->key);
    recent_.erase(place);
}

}  // namespace dao::postgres
