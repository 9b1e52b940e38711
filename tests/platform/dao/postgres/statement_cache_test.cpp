#include "platform/dao/postgres/statement_cache.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using dao::postgres::StatementCache;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::string keptIn(StatementCache& cache, const std::string& key) {
    std::string name = cache.newName();
    cache.keep(key, name);
    return name;
}

}  // namespace

TEST(StatementCache, KeepsThoseUsedLast) {
    StatementCache cache(2);
    const std::string first = keptIn(cache, "a");
    const std::string second = keptIn(cache, "b");
    EXPECT_EQ(cache.find("a"), first);
    keptIn(cache, "c");
    EXPECT_EQ(cache.find("b"), "");
    EXPECT_EQ(cache.find("a"), first);
    EXPECT_THAT(cache.takeLeft(), ElementsAre(second));
    EXPECT_THAT(cache.takeLeft(), IsEmpty());
}

TEST(StatementCache, NeverGivesANameTwice) {
    StatementCache cache(2);
    const std::string name = keptIn(cache, "a");
    cache.forget("a");
    EXPECT_EQ(cache.find("a"), "");
    EXPECT_THAT(cache.takeLeft(), ElementsAre(name));
    EXPECT_NE(keptIn(cache, "a"), name);
    cache.forget("never there");
    EXPECT_THAT(cache.takeLeft(), IsEmpty());
}

TEST(StatementCache, TellsStatementsApartByTheirTypes) {
    const unsigned one[] = {20};
    const unsigned two[] = {20, 25};
    EXPECT_NE(StatementCache::keyOf("SELECT $1", one), StatementCache::keyOf("SELECT $1", {}));
    EXPECT_NE(StatementCache::keyOf("SELECT $1", one), StatementCache::keyOf("SELECT $1", two));
    EXPECT_EQ(StatementCache::keyOf("SELECT $1", two), StatementCache::keyOf("SELECT $1", two));
}
