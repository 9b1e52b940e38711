#include "support/looks.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QScrollArea>
#include <QTest>
#include <QTimer>

#include "shell/frmHelp.h"
#include "shell/frmOptions.h"
#include "shell/frmTip.h"
#include "support/fixture.h"
#include "support/modal.h"
#include "support/places.h"

namespace {

class ShellLooks : public DeliveredFixture {};

TEST_F(ShellLooks, OfTheOptions) {
    frmOptions window;
    inModal<frmOptions>([&] { window.Display(); },
                        [](frmOptions& shown) {
                            expectLooks(shown, QStringLiteral("options"));
                            shown.reject();
                        });
}

TEST_F(ShellLooks, OfATip) {
    QFile tips(path("tipoftheday.txt"));
    ASSERT_TRUE(tips.open(QIODevice::WriteOnly));
    tips.write("one\ntwo\n");
    tips.close();
    frmTip window;
    window.Display();
    expectLooks(window, QStringLiteral("tip"));
    // Wide and high enough for a sentence: fifty-six letters, eight lines.
    const auto* area = window.findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    EXPECT_EQ(area->minimumWidth() / window.fontMetrics().averageCharWidth(), 56);
    EXPECT_EQ(area->minimumHeight() / window.fontMetrics().height(), 8);
}

TEST_F(ShellLooks, OfTheHelp) {
    frmHelp window;
    QString errorText;
    ASSERT_TRUE(
        window.open(QLatin1String(tests::kDeliveredFolder) + QStringLiteral("/Tarvello.hlp"), errorText));
    window.show();
    expectLooks(window, QStringLiteral("help"));
}

}  // namespace
