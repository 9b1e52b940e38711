#include "platform/dao/key_list.h"

#include <gtest/gtest.h>

namespace {

using dao::KeyList;
using Keys = std::vector<std::int64_t>;

Keys keysOf(const KeyList& list) {
    Keys keys;
    for (std::size_t row = 0; row < list.size(); ++row) {
        for (const std::int64_t key : list.at(row)) {
            keys.push_back(key);
        }
    }
    return keys;
}

// Finds each of its rows where it is, and none of the numbers around them.
void expectFound(const KeyList& list) {
    for (std::size_t row = 0; row < list.size(); ++row) {
        EXPECT_EQ(list.findKey(list.key(row, 0), 0), row);
        EXPECT_EQ(list.find(list.at(row)), row);
    }
    for (const std::int64_t none : {INT64_MIN, std::int64_t{-1}, std::int64_t{99}, INT64_MAX}) {
        EXPECT_EQ(list.findKey(none, 0), std::nullopt) << none;
    }
}

TEST(KeyListTest, HoldsWhatItWasGiven) {
    for (const Keys& keys : {Keys{}, Keys{7}, Keys{5, 6, 7, 8}, Keys{5, 6, 8}, Keys{8, 5, 6}}) {
        const KeyList list(keys);
        EXPECT_EQ(keysOf(list), keys);
        expectFound(list);
    }
    EXPECT_EQ(keysOf(KeyList({1, 2, 3, 4}, 2)), Keys({1, 2, 3, 4}));
    EXPECT_EQ(KeyList({1, 2, 3, 4}, 2).size(), 2U);
}

TEST(KeyListTest, ARangeIsAsItsKeysOneByOne) {
    for (const Keys& keys : {Keys{5}, Keys{5, 6, 7, 8}}) {
        const KeyList list(5, keys.size());
        EXPECT_EQ(keysOf(list), keys);
        EXPECT_TRUE(list.isAscending());
        expectFound(list);
    }
}

TEST(KeyListTest, ARangeOfNoRowsGrowsAsAnyListDoes) {
    for (const std::int64_t only : {4, 5}) {
        KeyList list(5, 0);
        EXPECT_EQ(list.findKey(5, 0), std::nullopt);
        list.append({&only, 1});
        EXPECT_EQ(keysOf(list), Keys{only});
        expectFound(list);
    }
}

// Fifty numbers of which four are missing, and others on both sides of a gap come and go.
TEST(KeyListTest, FewGapsAreAsGoodAsNone) {
    Keys keys;
    for (std::int64_t key = 2; key <= 51; ++key) {
        if (key != 3 && key != 20 && key != 21 && key != 40) {
            keys.push_back(key);
        }
    }
    KeyList list(keys);
    EXPECT_EQ(keysOf(list), keys);
    EXPECT_TRUE(list.isAscending());
    expectFound(list);
    for (const std::int64_t gone : {1, 3, 20, 21, 40, 52}) {
        EXPECT_EQ(list.findKey(gone, 0), std::nullopt) << gone;
    }
    for (const std::size_t row : {45, 0, 0, 16, 15, 30, 7, 8, 0}) {
        list.erase(row);
        keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(row));
        EXPECT_EQ(keysOf(list), keys) << row;
        expectFound(list);
    }
    for (const std::int64_t more : {53, 54, 80, 81, 79}) {
        list.append({&more, 1});
        keys.push_back(more);
        EXPECT_EQ(keysOf(list), keys);
        EXPECT_EQ(list.isAscending(), more != 79);
        expectFound(list);
    }
}

TEST(KeyListTest, ARunThatIsTakenAwayRowByRowLeavesNothing) {
    KeyList list(Keys{5, 6, 7});
    for (const std::size_t row : {1, 0, 0}) {
        list.erase(row);
    }
    EXPECT_EQ(list.size(), 0U);
    const std::int64_t next = 9;
    list.append({&next, 1});
    EXPECT_EQ(keysOf(list), Keys{9});
    expectFound(list);
}

TEST(KeyListTest, GrowsAtItsEnd) {
    for (const std::int64_t next : {9, 20, 2}) {
        KeyList list(Keys{5, 6, 7, 8});
        list.append({&next, 1});
        EXPECT_EQ(keysOf(list), Keys({5, 6, 7, 8, next}));
        EXPECT_EQ(list.isAscending(), next > 8);
        expectFound(list);
        const std::int64_t another = next + 1;
        list.append({&another, 1});
        EXPECT_EQ(list.key(5, 0), another);
        expectFound(list);
    }
}

TEST(KeyListTest, LosesAnyRow) {
    for (std::size_t row = 0; row < 4; ++row) {
        Keys keys = {5, 6, 7, 8};
        KeyList list(keys);
        list.erase(row);
        keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(row));
        EXPECT_EQ(keysOf(list), keys);
        EXPECT_TRUE(list.isAscending());
        expectFound(list);
    }
}

TEST(KeyListTest, ARowMayTakeAnotherKey) {
    KeyList list(Keys{5, 6, 7});
    const std::int64_t other = 40;
    list.replace(1, {&other, 1});
    EXPECT_EQ(keysOf(list), Keys({5, 40, 7}));
    expectFound(list);
}

TEST(KeyListTest, IsAsNewWhenItIsGivenOthers) {
    KeyList list(Keys{5, 6, 7});
    list = KeyList(Keys{3, 9});
    EXPECT_EQ(keysOf(list), Keys({3, 9}));
    expectFound(list);
    list = {};
    EXPECT_EQ(list.size(), 0U);
    expectFound(list);
}

}  // namespace
