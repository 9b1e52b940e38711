#include "platform/text/utf8.h"

#include <gtest/gtest.h>

#include <string>

using alphabet::isSound;

TEST(SoundText, IsEveryTextThatALetterCanBeWrittenIn) {
    EXPECT_TRUE(isSound(""));
    EXPECT_TRUE(isSound("Pera \x01\t\n\x7F"));
    EXPECT_TRUE(isSound("Đorđević Žika, Łódź, ЖИКА, €"));
    for (const char* letter : {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                               "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF3\xBF\xBF\xBF", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(isSound(letter)) << letter;
        EXPECT_TRUE(isSound(std::string("a") + letter + "b")) << letter;
    }
}

TEST(SoundText, HasNoZeroCharacter) {
    EXPECT_FALSE(isSound(std::string("\0", 1)));
    EXPECT_FALSE(isSound(std::string("Pera\0", 5)));
    EXPECT_FALSE(isSound("\xC0\x80")) << "nor one in two bytes";
}

TEST(SoundText, HasNoBytesThatAreNoLetter) {
    for (const char* bytes :
         {"\x80",          "\xBF",          "Peri\xE6",         "\xC1\xBF",         "\xC2",
          "\xC2z",         "\xC2\xC2\x80",  "\xE0\x9F\xBF",     "\xE2\x82",         "\xE2\x82z",
          "\xE2z\xAC",     "\xED\xA0\x80",  "\xED\xBF\xBF",     "\xF0\x8F\xBF\xBF", "\xF0\x90\x80",
          "\xF0\x90\x80z", "\xF0\x90z\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80",
          "\xFE",          "\xFF"}) {
        EXPECT_FALSE(isSound(bytes)) << bytes;
        EXPECT_FALSE(isSound(std::string("a") + bytes + "b")) << bytes;
    }
}

TEST(Utf8, CountsLettersAndNotBytes) {
    EXPECT_EQ(alphabet::lettersIn(""), 0U);
    EXPECT_EQ(alphabet::lettersIn("Đorđe €"), 7U);
    EXPECT_EQ(alphabet::bytesOfLetters("Đorđe", 0), 0U);
    EXPECT_EQ(alphabet::bytesOfLetters("Đorđe", 1), 2U);
    EXPECT_EQ(alphabet::bytesOfLetters("Đorđe", 4), 6U);
    EXPECT_EQ(alphabet::bytesOfLetters("Đorđe", 9), 7U);
}

TEST(Utf8, WritesEachLetterInItsShortestForm) {
    std::string text;
    for (const char32_t letter :
         {U'a', U'\x7F', U'\x80', U'š', U'\x7FF', U'\x800', U'€', U'\xFFFF', U'\x10000', U'\x10FFFF'}) {
        alphabet::appendUtf8(text, letter);
    }
    EXPECT_EQ(text, "a\x7F\xC2\x80š\xDF\xBF\xE0\xA0\x80€\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
    EXPECT_TRUE(isSound(text));
}
