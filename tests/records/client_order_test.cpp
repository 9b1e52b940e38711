#include "records/client_order.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(ClientOrder, IsTheAlphabetOfTheShopNullFirst) {
    ClientOrder order;
    const std::string names[] = {"Zoric", "Čolić", "colic", "", "Cvetić"};
    for (std::int32_t i = 0; i < 5; ++i) {
        order.add(i, &names[i]);
    }
    order.add(5, nullptr);
    order.sort();
    EXPECT_EQ(order.numbers(), (std::vector<std::int32_t>{5, 3, 2, 4, 1, 0}));
}

TEST(ClientOrder, LeavesThoseOfOneNameAsTheyCame) {
    ClientOrder order;
    const std::string names[] = {"Peric", "PERIC", "Anic"};
    for (std::int32_t i = 0; i < 90; ++i) {
        order.add(i, &names[i % 3]);
    }
    order.sort();
    const std::vector<std::int32_t> numbers = order.numbers();
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.begin() + 30));
    EXPECT_TRUE(std::is_sorted(numbers.begin() + 30, numbers.end()));
    EXPECT_EQ(numbers.front() % 3, 2);
}

}  // namespace
