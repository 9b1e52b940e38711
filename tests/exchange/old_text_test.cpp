#include "exchange/old_text.h"

#include <gtest/gtest.h>

namespace {

using exchange::fromCodePage;
using exchange::fromTwoBytes;
using namespace std::string_view_literals;

TEST(OldText, ReadsTheLettersOfTheCountrysCodePage) {
    EXPECT_EQ(fromCodePage("\x8A\x9A\xD0\xF0\xC8\xE8\xC6\xE6\x8E\x9E \x80").text, "ŠšĐđČčĆćŽž €");
    EXPECT_TRUE(fromCodePage("\x81").sound) << "a place that the code page leaves empty stands for itself";
    EXPECT_EQ(fromCodePage("\x81").text, "\xC2\x81");
}

TEST(OldText, ReadsTwoBytesALetter) {
    EXPECT_EQ(fromTwoBytes("A\0\x0D\x01"sv).text, "Ač");
    EXPECT_EQ(fromTwoBytes("\x3D\xD8\x00\xDE"sv).text, "\xF0\x9F\x98\x80") << "a pair is one letter";
}

TEST(OldText, ReadsPackedTexts) {
    EXPECT_EQ(fromTwoBytes("\xFF\xFE"
                           "Pera"sv)
                  .text,
              "Pera");
    EXPECT_EQ(fromTwoBytes("\xFF\xFE"
                           "a\0\x0D\x01\0b\xE9"sv)
                  .text,
              "ačbé")
        << "stretches take turns";
    EXPECT_EQ(fromTwoBytes("\xFF\xFE"sv).text, "");
}

TEST(OldText, SaysWhereLettersAreNone) {
    EXPECT_FALSE(fromTwoBytes("\x3D\xD8"
                              "A\0"sv)
                     .sound)
        << "half a pair";
    EXPECT_EQ(fromTwoBytes("\x3D\xD8"
                           "A\0"sv)
                  .text,
              "\xEF\xBF\xBD"
              "A");
    EXPECT_FALSE(fromTwoBytes("\x00\xDE"sv).sound) << "the other half";
    EXPECT_FALSE(fromTwoBytes("A\0B"sv).sound) << "half a letter";
    EXPECT_FALSE(fromTwoBytes("\0\0"sv).sound) << "a zero character";
    EXPECT_FALSE(fromCodePage("a\0b"sv).sound);
}

}  // namespace
