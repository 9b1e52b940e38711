#include "data/left_queries.h"

#include <charconv>
#include <map>
#include <optional>

#include "data/session.h"
#include "platform/dao/dao.h"

namespace data {
namespace {

// The number behind the name of a copy's query; nothing for any other name.
std::optional<int> numberIn(const std::string& name) {
    for (const char* const start : kWorkQueries) {
        const std::string_view word = start;
        if (name.size() <= word.size() || name.compare(0, word.size(), word) != 0) {
            continue;
        }
        int number = 0;
        const char* const end = name.data() + name.size();
        const auto [read, error] = std::from_chars(name.data() + word.size(), end, number);
        if (error == std::errc() && read == end && name == word.data() + std::to_string(number)) {
            return number;
        }
    }
    return std::nullopt;
}

// The numbers that a running copy holds, as far as they have been asked for; those that nobody has are held
// by us until this is gone.
class Numbers {
 public:
    explicit Numbers(dao::Database& database) : database_(database) {}

    bool isFree(int number) {
        const auto [found, isNew] = held_.try_emplace(number);
        if (isNew) {
            dao::HeldNumber tried(database_, number);
            if (tried.value() == number) {
                found->second = std::move(tried);
            }
        }
        return found->second.value() == number;
    }

 private:
    dao::Database& database_;
    std::map<int, dao::HeldNumber> held_;
};

StoredQuery::Whose whoseIs(const std::string& name, Numbers& numbers) {
    const std::optional<int> number = numberIn(name);
    if (!number) {
        return StoredQuery::Whose::Shop;
    }
    return numbers.isFree(*number) ? StoredQuery::Whose::Nobody : StoredQuery::Whose::Running;
}

std::vector<StoredQuery> queriesOf(dao::Database& database, Numbers& numbers) {
    std::vector<StoredQuery> found;
    const dao::QueryDefsCollection defs = database.QueryDefs();
    for (int i = 0; i < defs.Count(); ++i) {
        const dao::QueryDef query = defs[i];
        found.push_back({query.Name(), query.SQL(), whoseIs(query.Name(), numbers)});
    }
    return found;
}

}  // namespace

std::vector<StoredQuery> storedQueries(dao::Database& database) {
    Numbers numbers(database);
    return queriesOf(database, numbers);
}

std::vector<std::string> sweepLeftQueries(dao::Database& database) {
    Numbers numbers(database);
    std::vector<std::string> swept;
    for (const StoredQuery& query : queriesOf(database, numbers)) {
        if (query.whose == StoredQuery::Whose::Nobody) {
            database.QueryDefs().Delete(query.name);
            swept.push_back(query.name);
        }
    }
    return swept;
}

}  // namespace data
