#include "catalogue/price_list_steps.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace {

void fail(const char* why) {
    throw platform::RunError(53, QString::fromLatin1(why));
}

TEST(PriceListSteps, EveryStepIsTakenAndEachFailureHasItsLine) {
    QString errorText;
    PriceListSteps step(errorText);
    QString taken;
    step([&] { taken += "1"; });
    EXPECT_FALSE(step.failed());
    step([&] { fail("first"); });
    step([&] { taken += "3"; });
    step([&] { fail("second"); });
    EXPECT_TRUE(step.failed());
    EXPECT_EQ(taken, "13");
    const QStringList lines = errorText.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith("[53] first Prog. linija: "));
    EXPECT_TRUE(lines[1].startsWith("[53] second Prog. linija: "));
    EXPECT_TRUE(lines[1].endsWith("; frmDobavljaciAll -> DoPrintDataReport procedure."));
}

TEST(PriceListSteps, TheLineOfCodeIsThatOfTheStep) {
    QString errorText;
    PriceListSteps step(errorText);
    step([&] { fail("x"); });
    EXPECT_TRUE(errorText.contains(QStringLiteral("linija: %1;").arg(__LINE__ - 1)))
        << errorText.toStdString();
}

}  // namespace
