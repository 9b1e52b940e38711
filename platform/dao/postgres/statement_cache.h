#pragma once

#include <list>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace dao::postgres {

// Which statements the server holds prepared for a connection, and under what name: those used last.
class StatementCache {
 public:
    explicit StatementCache(std::size_t capacity) : capacity_(capacity) {}

    // What a statement is known by. The same text with other types is another statement.
    static std::string keyOf(std::string_view text, std::span<const unsigned> types);

    std::string find(const std::string& key);  // its name; empty: it is not prepared
    std::string newName();                     // one that no statement of this connection ever had
    void keep(const std::string& key, const std::string& name);
    void forget(const std::string& key);

    // The names of those that have left since the last call: the server can drop them.
    std::vector<std::string> takeLeft();

 private:
    struct Kept {
        std::string key;
        std::string name;
    };
    using Place = std::list<Kept>::iterator;
    void leave(Place place);

    std::size_t capacity_;
    std::list<Kept> recent_;  // last used first
    std::unordered_map<std::string_view, Place> byKey_;
    std::vector<std::string> left_;
    long long named_ = 0;
};

}  // namespace dao::postgres
