#include "platform/system/trap.h"

#include <gtest/gtest.h>

using platform::RunError;
using platform::Trap;

TEST(TrapTest, ASuccessfulStepLeavesAnEarlierFailureStanding) {
    Trap step;
    step([] { throw dao::Error(3021, "No current record."); });
    step([] {});
    EXPECT_TRUE(step.failed());
    EXPECT_EQ(step.line(), "[3021] No current record.");
    step.clear();
    EXPECT_FALSE(step.failed());
    EXPECT_EQ(step.number(), 0);
}

TEST(TrapTest, KnowsTheNumbersOfBothKindsOfFailure) {
    Trap step;
    step([] { throw RunError(53, QStringLiteral("File not found: \u0160")); });
    EXPECT_EQ(step.number(), 53);
    EXPECT_EQ(step.description(), QStringLiteral("File not found: \u0160"));
    step([] { throw std::runtime_error("odd"); });
    EXPECT_EQ(step.number(), 51);
}

TEST(TrapTest, APercentSignInADescriptionStaysAsItIs) {
    Trap step;
    step([] { throw RunError(5, QStringLiteral("100%1 wrong")); });
    EXPECT_EQ(step.line(), "[5] 100%1 wrong");
}

TEST(TrapTest, KnowsTheLineOfTheStepThatFailed) {
    platform::Trap step;
    EXPECT_EQ(step.codeLine(), 0);
    step([] {});
    EXPECT_EQ(step.codeLine(), 0);
    const int line = __LINE__ + 1;
    step([] { throw platform::RunError(5, QStringLiteral("first")); });
    step([] {});
    EXPECT_EQ(step.codeLine(), line);
    step.clear();
    EXPECT_EQ(step.codeLine(), 0);
}
