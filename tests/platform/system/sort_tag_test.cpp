#include "platform/system/sort_tag.h"

#include <gtest/gtest.h>

#include "platform/system/trap.h"

namespace {

using platform::makeSortTag;
using platform::SortTag;
using platform::splitSortTag;

int errorOf(const char* tag) {
    platform::Trap step;
    step([&] { splitSortTag(QString::fromUtf8(tag)); });
    return step.number();
}

TEST(SortTag, FlagFieldAndOrderAreReadApart) {
    EXPECT_EQ(splitSortTag("0Naziv0"), (SortTag{false, "Naziv", "ASC"}));
    EXPECT_EQ(splitSortTag("1Cena11"), (SortTag{true, "Cena1", "DESC"})) << "the field may end in a digit";
    EXPECT_EQ(splitSortTag("1Stanje0"), (SortTag{true, "Stanje", "ASC"}));
}

TEST(SortTag, AnyDigitButZeroMeansSortedAndAnythingButZeroDescending) {
    EXPECT_EQ(splitSortTag("2Opis9"), (SortTag{true, "Opis", "DESC"}));
    EXPECT_EQ(splitSortTag("0Opisx"), (SortTag{false, "Opis", "DESC"}));
}

TEST(SortTag, ATagMayHaveNoField) {
    EXPECT_EQ(splitSortTag("10"), (SortTag{true, "", "ASC"}));
}

TEST(SortTag, ATextWithoutItsTwoDigitsIsNone) {
    EXPECT_EQ(errorOf(""), 5);
    EXPECT_EQ(errorOf("1"), 5);
    EXPECT_EQ(errorOf("xNaziv0"), 13);
    EXPECT_EQ(errorOf("Naziv"), 13);
}

TEST(SortTag, WhatIsWrittenIsReadAgain) {
    EXPECT_EQ(makeSortTag({true, "Grupa", "DESC"}), "1Grupa1");
    EXPECT_EQ(makeSortTag({false, "Grupa", "ASC"}), "0Grupa0");
    EXPECT_EQ(makeSortTag({}), "00");
    for (const char* tag : {"0Naziv0", "1Cena11", "1Proizvodjac0", "0Opis1"}) {
        EXPECT_EQ(makeSortTag(splitSortTag(tag)), tag);
    }
}

}  // namespace
