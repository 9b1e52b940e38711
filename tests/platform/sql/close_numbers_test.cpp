#include "platform/sql/close_numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <set>

namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

void expectSorted(std::vector<std::int64_t> numbers) {
    const std::set<std::int64_t> expected(numbers.begin(), numbers.end());
    sql::sortOnce(numbers);
    EXPECT_EQ(numbers, std::vector<std::int64_t>(expected.begin(), expected.end()));
}

TEST(CloseNumbers, SpanIsExactOverAllNumbers) {
    EXPECT_EQ(sql::spanOf(5, 5), 0U);
    EXPECT_EQ(sql::spanOf(-3, 4), 7U);
    EXPECT_EQ(sql::spanOf(kLowest, kHighest), std::numeric_limits<std::uint64_t>::max());
}

TEST(CloseNumbers, WhatIsLowerIsFurtherThanAnythingAbove) {
    EXPECT_GT(sql::spanOf(5, 4), sql::spanOf(5, kHighest));
    EXPECT_GT(sql::spanOf(5, kLowest), sql::spanOf(5, kHighest));
}

TEST(CloseNumbers, AreCloseUpToSoManyPlacesForEach) {
    EXPECT_TRUE(sql::areClose(1, 8, 2, 4));
    EXPECT_FALSE(sql::areClose(1, 9, 2, 4));
    EXPECT_TRUE(sql::areClose(7, 7, 1, 1));
    EXPECT_FALSE(sql::areClose(7, 7, 0, 1));
    EXPECT_FALSE(sql::areClose(kLowest, kHighest, 1'000'000, 64));
}

TEST(CloseNumbers, ComeInOrderEachOnce) {
    expectSorted({});
    expectSorted({7});
    expectSorted({1, 2, 3});
    expectSorted({1, 1, 2});
    expectSorted({3, 1, 2, 1});
    expectSorted({64, 0, 63, 65, 128, 127});
    expectSorted({-1, -64, 0, -65, 64});
}

TEST(CloseNumbers, FarFromEachOtherComeInOrderToo) {
    expectSorted({kHighest, kLowest, 0, -1, kHighest});
    expectSorted({1'000'000, 1});
    expectSorted({kHighest, kHighest - 3, kHighest - 1});
    expectSorted({kLowest + 70, kLowest, kLowest + 2});
}

TEST(CloseNumbers, ComeInOrderAtAnyDensity) {
    std::minstd_rand random(7);
    for (const std::int64_t range : {50, 1000, 100'000, 10'000'000}) {
        std::vector<std::int64_t> numbers(1000);
        std::generate(numbers.begin(), numbers.end(),
                      [&] { return static_cast<std::int64_t>(random()) % range - range / 2; });
        expectSorted(std::move(numbers));
    }
}

}  // namespace
