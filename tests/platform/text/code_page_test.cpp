#include "platform/text/code_page.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

TEST(CodePage, GoesThereAndBackForEveryCode) {
    std::set<char32_t> letters;
    for (int code = 0; code < 256; ++code) {
        const char32_t letter = alphabet::letterOf(static_cast<unsigned char>(code));
        EXPECT_EQ(alphabet::codeOf(letter), code);
        letters.insert(letter);
    }
    EXPECT_EQ(letters.size(), 256U) << "no letter stands for two codes";
}

TEST(CodePage, KnowsTheLettersOfTheCountry) {
    EXPECT_EQ(alphabet::fromCodePage("\xE8\x65vli\xE6 \x8A\x9A\xD0\xF0\x8E\x9E \x80"), "čevlić ŠšĐđŽž €");
    EXPECT_EQ(alphabet::codeOf(U'đ'), 0xF0);
    EXPECT_EQ(alphabet::codeOf(U'€'), 0x80);
    EXPECT_EQ(alphabet::letterOf(0x81), 0x81) << "a place that the page leaves open";
}

TEST(CodePage, HasNoLettersOfOtherPages) {
    EXPECT_EQ(alphabet::codeOf(U'æ'), std::nullopt);
    EXPECT_EQ(alphabet::codeOf(U'Ж'), std::nullopt);
    EXPECT_EQ(alphabet::codeOf(0x1F600), std::nullopt);
}
