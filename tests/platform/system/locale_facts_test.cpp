#include "platform/system/locale_facts.h"

#include <gtest/gtest.h>

#include "locale_scope.h"
#include "platform/system/numbers.h"

namespace {

TEST(HeldLocale, StaysUntilItIsLetGoAndThenTheOneInForceCounts) {
    const LocaleScope american("en_US");
    {
        const platform::HeldLocale row;
        const LocaleScope german("de_DE");
        EXPECT_EQ(platform::formatGrouped(1234.5).toStdString(), "1,234.50");
        { const platform::HeldLocale cell; }
        EXPECT_EQ(platform::formatGrouped(1234.5).toStdString(), "1,234.50");
    }
    const LocaleScope german("de_DE");
    EXPECT_EQ(platform::formatGrouped(1234.5).toStdString(), "1.234,50");
}

}  // namespace
