#include "platform/controls/twips.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

namespace {

using platform::letterFactor;
using platform::LetterLength;

// The desktop's letters in another size, as long as it lives.
class Letters {
 public:
    explicit Letters(int pixels) : usual_(QApplication::font()) {
        QFont font = usual_;
        font.setPixelSize(pixels);
        QApplication::setFont(font);
    }
    ~Letters() { QApplication::setFont(usual_); }

 private:
    QFont usual_;
};

TEST(Twips, AreAFifteenthOfAPixelAtSmallLettersAndNeverLess) {
    const Letters tiny(5);
    EXPECT_EQ(letterFactor(), 1.0);
    LetterLength length;
    EXPECT_EQ(length.show(1440), 96);
    EXPECT_EQ(length.twips(100), 1500);
}

TEST(Twips, GrowWithTheLetters) {
    double small = 0;
    {
        const Letters letters(16);
        small = letterFactor();
        EXPECT_GT(small, 1.5);
    }
    const Letters letters(32);
    EXPECT_NEAR(letterFactor(), 2 * small, 0.1);
    LetterLength length;
    EXPECT_EQ(length.show(1440), qRound(96 * letterFactor()));
    EXPECT_NEAR(length.twips(length.show(1440) * 2), 2880, 15);
}

TEST(Twips, NothingStaysNothing) {
    const Letters letters(32);
    LetterLength length;
    EXPECT_EQ(length.show(0), 0);
    EXPECT_EQ(length.twips(0), 0);
    EXPECT_EQ(length.show(-15), 0);
    EXPECT_EQ(length.twips(0), 0);
}

TEST(Twips, WhatWasToldIsKeptWhileTheLengthOnScreenIsTheSame) {
    for (const int pixels : {11, 13, 17, 24}) {
        const Letters letters(pixels);
        for (int told = 1; told < 4000; told += 7) {
            LetterLength length;
            const int shown = length.show(told);
            ASSERT_EQ(length.twips(shown), told);
            ASSERT_NE(length.twips(shown + 1), told);
        }
    }
}

}  // namespace
