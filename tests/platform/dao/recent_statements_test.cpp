#include "platform/dao/sqlite/recent_statements.h"

#include <gtest/gtest.h>

using dao::driver::RecentStatements;

namespace {

class AnyStatement final : public dao::driver::Statement {
 public:
    void bind(int, const dao::Value&) override {}
    void bindInteger(int, std::int64_t) override {}
    void bindRowKey(int, std::int64_t) override {}
    void bindNumbers(int, sql::IdSetPtr) override {}
    std::int64_t run() override { return 0; }
    void readKeys(std::vector<std::int64_t>&, int) override {}
    std::size_t readRows(dao::RowBlock&, int, std::vector<std::int64_t>*, std::size_t,
                         const std::vector<int>*) override {
        return 0;
    }
    void readBlocks(dao::RowBlock&, const std::function<void()>&) override {}
};

std::string textOf(int number) {
    return "SELECT " + std::to_string(number);
}

void keepMany(RecentStatements& recent, int first, int last) {
    for (int number = first; number <= last; ++number) {
        recent.keep(textOf(number), std::make_shared<AnyStatement>());
    }
}

TEST(RecentStatementsTest, GiveTheStatementOfThatText) {
    RecentStatements recent;
    const auto one = std::make_shared<AnyStatement>();
    EXPECT_EQ(recent.find(textOf(1)), nullptr);
    recent.keep(textOf(1), one);
    recent.keep(textOf(2), std::make_shared<AnyStatement>());
    EXPECT_EQ(recent.find(textOf(1)), one);
    EXPECT_NE(recent.find(textOf(2)), one);
    EXPECT_EQ(recent.find(textOf(1) + " "), nullptr);
}

TEST(RecentStatementsTest, ForgetWhatHasNotBeenAskedForTheLongest) {
    RecentStatements recent;
    keepMany(recent, 1, 64);
    EXPECT_NE(recent.find(textOf(1)), nullptr);
    keepMany(recent, 65, 65);
    EXPECT_EQ(recent.find(textOf(2)), nullptr);
    EXPECT_NE(recent.find(textOf(1)), nullptr);
    EXPECT_NE(recent.find(textOf(3)), nullptr);
    EXPECT_NE(recent.find(textOf(65)), nullptr);
}

TEST(RecentStatementsTest, HoldNoStatementThatTheyHaveForgotten) {
    RecentStatements recent;
    const auto one = std::make_shared<AnyStatement>();
    recent.keep(textOf(1), one);
    EXPECT_EQ(one.use_count(), 2);
    keepMany(recent, 2, 65);
    EXPECT_EQ(one.use_count(), 1);
}

TEST(RecentStatementsTest, TextsOfAnyLengthAreNotKept) {
    RecentStatements recent;
    recent.keep(std::string(4096, 'a'), std::make_shared<AnyStatement>());
    recent.keep(std::string(4097, 'a'), std::make_shared<AnyStatement>());
    EXPECT_NE(recent.find(std::string(4096, 'a')), nullptr);
    EXPECT_EQ(recent.find(std::string(4097, 'a')), nullptr);
}

TEST(RecentStatementsTest, AreGoneWhenTheyAreCleared) {
    RecentStatements recent;
    keepMany(recent, 1, 64);
    recent.clear();
    EXPECT_EQ(recent.find(textOf(1)), nullptr);
    keepMany(recent, 1, 64);
    EXPECT_NE(recent.find(textOf(1)), nullptr);
    EXPECT_NE(recent.find(textOf(64)), nullptr);
}

}  // namespace
