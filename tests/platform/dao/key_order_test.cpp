#include "platform/dao/key_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

using dao::KeyOrder;
using Keys = std::vector<std::int64_t>;
using Places = std::vector<std::uint32_t>;

namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

KeyOrder rowsOf(const std::vector<Keys>& rows, std::size_t columns) {
    KeyOrder order(columns);
    for (const Keys& row : rows) {
        for (const std::int64_t key : row) {
            order.put(key);
        }
    }
    return order;
}

Places sortedPlaces(const std::vector<Keys>& rows) {
    Places places(rows.size());
    std::iota(places.begin(), places.end(), 0);
    std::stable_sort(places.begin(), places.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return rows[a] < rows[b]; });
    return places;
}

TEST(KeyOrderTest, TheFirstKeyDecidesThenTheNext) {
    EXPECT_EQ(rowsOf({{2, 1}, {1, 9}, {1, 8}, {2, 0}}, 2).order(), (Places{2, 1, 3, 0}));
    EXPECT_EQ(rowsOf({}, 2).order(), Places());
    EXPECT_EQ(rowsOf({{5}}, 1).order(), Places{0});
}

TEST(KeyOrderTest, WhatIsAlikeStaysAsItStood) {
    EXPECT_EQ(rowsOf({{3}, {1}, {3}, {1}, {3}}, 1).order(), (Places{1, 3, 0, 2, 4}));
}

TEST(KeyOrderTest, TheLowestAndTheHighestNumberAreNumbersToo) {
    EXPECT_EQ(rowsOf({{kHighest}, {0}, {kLowest}, {-1}}, 1).order(), (Places{2, 3, 1, 0}));
}

TEST(KeyOrderTest, AColumnOfKeysIsSetAtOnce) {
    KeyOrder order(2);
    order.setColumn(1, {9, 8, 7});
    EXPECT_EQ(order.order(), (Places{2, 1, 0}));
    order.setColumn(0, {1, 2, 1});
    EXPECT_EQ(order.order(), (Places{2, 0, 1}));
    EXPECT_EQ(order.rows(), 3);
}

TEST(KeyOrderTest, ARowWithoutAllItsKeysIsTakenBack) {
    KeyOrder order = rowsOf({{1, 2}}, 2);
    order.put(7);
    order.takeBack();
    order.takeBack();
    EXPECT_EQ(order.rows(), 1);
    order.put(0);
    order.put(5);
    EXPECT_EQ(order.order(), (Places{1, 0}));
    EXPECT_EQ(order.key(1, 1), 5);
}

TEST(KeyOrderTest, RowsOfAnotherStandBehind) {
    KeyOrder order = rowsOf({{4}, {2}}, 1);
    order.append(rowsOf({{3}, {2}}, 1));
    EXPECT_EQ(order.rows(), 4);
    EXPECT_EQ(order.order(), (Places{1, 3, 2, 0}));
}

TEST(KeyOrderTest, StandInOrderHoweverFarApart) {
    std::minstd_rand random(2);
    for (const std::int64_t range : {3, 40, 800, 1'000'000}) {
        for (int turn = 0; turn < 20; ++turn) {
            std::vector<Keys> rows(50);
            for (Keys& row : rows) {
                row = {static_cast<std::int64_t>(random()) % range - range / 2,
                       static_cast<std::int64_t>(random()) % 3};
            }
            ASSERT_EQ(rowsOf(rows, 2).order(), sortedPlaces(rows)) << range;
        }
    }
}

}  // namespace
