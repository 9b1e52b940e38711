#include "shell/help_history.h"

#include <gtest/gtest.h>

namespace {

const HelpPlace kOverview{"overview", {}};
const HelpPlace kDatabase{"database", {}};
const HelpPlace kBackup{"database", "backup"};

TEST(HelpHistoryTest, BeforeTheFirstVisitItIsNowhereAndLeadsNowhere) {
    HelpHistory history;
    EXPECT_EQ(history.current(), HelpPlace());
    EXPECT_FALSE(history.canStep(-1));
    EXPECT_FALSE(history.canStep(1));
}

TEST(HelpHistoryTest, BackAndForwardLeadAlongTheVisits) {
    HelpHistory history;
    for (const HelpPlace& place : {kOverview, kDatabase, kBackup}) {
        history.visit(place);
    }
    EXPECT_EQ(history.current(), kBackup);
    EXPECT_FALSE(history.canStep(1));
    history.step(-1);
    EXPECT_EQ(history.current(), kDatabase);
    EXPECT_TRUE(history.canStep(1));
    history.step(-1);
    EXPECT_EQ(history.current(), kOverview);
    EXPECT_FALSE(history.canStep(-1));
    history.step(1);
    history.step(1);
    EXPECT_EQ(history.current(), kBackup);
}

TEST(HelpHistoryTest, BeyondTheEndsAStepStays) {
    HelpHistory history;
    history.step(-1);
    EXPECT_EQ(history.current(), HelpPlace());
    history.visit(kOverview);
    history.step(-1);
    history.step(1);
    EXPECT_EQ(history.current(), kOverview);
}

TEST(HelpHistoryTest, ThePlaceOnShowIsNotVisitedTwice) {
    HelpHistory history;
    history.visit(kOverview);
    history.visit(kOverview);
    EXPECT_FALSE(history.canStep(-1));
    history.visit(kDatabase);
    history.step(-1);
    history.visit(kOverview);
    EXPECT_TRUE(history.canStep(1)) << "what lies forward is still there";
}

TEST(HelpHistoryTest, AnotherWayForgetsWhatLayForward) {
    HelpHistory history;
    history.visit(kOverview);
    history.visit(kDatabase);
    history.step(-1);
    history.visit(kBackup);
    EXPECT_EQ(history.current(), kBackup);
    EXPECT_FALSE(history.canStep(1));
    history.step(-1);
    EXPECT_EQ(history.current(), kOverview);
}

TEST(HelpHistoryTest, ClearedItStartsAgain) {
    HelpHistory history;
    history.visit(kOverview);
    history.visit(kDatabase);
    history.clear();
    EXPECT_EQ(history.current(), HelpPlace());
    history.visit(kDatabase);
    EXPECT_EQ(history.current(), kDatabase);
    EXPECT_FALSE(history.canStep(-1));
}

}  // namespace
