#include "platform/text/text_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "platform/text/order.h"

namespace {

using alphabet::TextOrder;

std::vector<std::uint32_t> orderOf(const std::vector<std::string>& texts) {
    TextOrder order;
    for (const std::string& text : texts) {
        order.add(text);
    }
    return order.order();
}

// Text by text, as the alphabet compares them.
std::vector<std::uint32_t> comparedOrder(const std::vector<std::string>& texts) {
    std::vector<std::uint32_t> order(texts.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return alphabet::compare(texts[a], texts[b]) < 0;
    });
    return order;
}

// Names that have much in common, so that they differ first at the first letter or far behind.
std::vector<std::string> invented(std::size_t count, unsigned seed) {
    const std::vector<std::string> parts = {
        "Jovanov",          "ić",  "ic", "IC", ", ", "Ž", "ž", "Petar", "petar", "Pét", " - ", "đorđe", "a",
        "\xF0\x9F\x94\xA7", "\xFF"};
    std::mt19937 random(seed);
    std::vector<std::string> texts;
    while (texts.size() < count) {
        std::string text;
        for (unsigned i = random() % 8; i > 0; --i) {
            text += parts[random() % parts.size()];
        }
        texts.push_back(text);
    }
    return texts;
}

TEST(TextOrder, NothingStandsInNoOrder) {
    EXPECT_TRUE(orderOf({}).empty());
    EXPECT_EQ(orderOf({""}), std::vector<std::uint32_t>{0});
}

TEST(TextOrder, StandsAsTheAlphabetHasIt) {
    EXPECT_EQ(orderOf({"Žika", "cz", "čačak", "Antić", "", "antic"}),
              (std::vector<std::uint32_t>{4, 5, 3, 1, 2, 0}));
}

TEST(TextOrder, NamesakesStayAsTheyCame) {
    EXPECT_EQ(orderOf({"Perić, Pera", "PERIĆ, PERA", "A", "perić, pera"}),
              (std::vector<std::uint32_t>{2, 0, 1, 3}));
    const std::vector<std::uint32_t> alike = orderOf(std::vector<std::string>(3000, "Perić, Pera, Beograd"));
    EXPECT_TRUE(std::is_sorted(alike.begin(), alike.end()));
}

TEST(TextOrder, FewAndManyAreTheSameAsComparingEachWithEach) {
    for (const std::size_t count : {2U, 40U, 513U, 20000U}) {
        const std::vector<std::string> texts = invented(count, static_cast<unsigned>(count));
        EXPECT_EQ(orderOf(texts), comparedOrder(texts)) << count;
    }
}

TEST(TextOrder, WhatIsInOrderStaysSo) {
    std::vector<std::string> texts = invented(5000, 3);
    std::sort(texts.begin(), texts.end(),
              [](const std::string& a, const std::string& b) { return alphabet::compare(a, b) < 0; });
    const std::vector<std::uint32_t> order = orderOf(texts);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

}  // namespace
