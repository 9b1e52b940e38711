#include "support/looks.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include "shell/frmHelp.h"
#include "shell/frmOptions.h"
#include "shell/frmSplash.h"
#include "shell/frmTip.h"
#include "support/dark_desktop.h"
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

// A page with headings, tables and a picture.
TEST_F(ShellLooks, OfAPageOfTheHelp) {
    frmHelp window;
    QString errorText;
    ASSERT_TRUE(
        window.open(QLatin1String(tests::kDeliveredFolder) + QStringLiteral("/Tarvello.hlp"), errorText));
    window.show();
    window.showContext(701);  // the services: headings, a table, pictures
    const auto* text = window.findChild<QTextBrowser*>();
    ASSERT_NE(text, nullptr);
    expectLooks(*text->document(), QStringLiteral("help_page"));
}

TEST_F(ShellLooks, TheHelpTurnsDarkWithTheDesktopAndStaysWhereItIs) {
    const auto open = [](frmHelp& window) {
        QString errorText;
        ASSERT_TRUE(
            window.open(QLatin1String(tests::kDeliveredFolder) + QStringLiteral("/Tarvello.hlp"), errorText));
        window.show();
        window.showContext(701);
    };
    frmHelp before;
    open(before);
    auto* text = before.findChild<QTextBrowser*>();
    const int at = text->verticalScrollBar()->value();
    EXPECT_GT(at, 0);
    const DarkDesktop dark;
    EXPECT_EQ(text->verticalScrollBar()->value(), at);
    frmHelp later;
    open(later);
    expectAlike(pictureOf(*text->viewport()), pictureOf(*later.findChild<QTextBrowser*>()->viewport()));
}

TEST_F(ShellLooks, ATipTurnsDarkWithTheDesktop) {
    frmTip before;
    before.Display();
    const DarkDesktop dark;
    frmTip later;
    later.Display();
    for (const char* name : {"Image1", "Picture1"}) {
        EXPECT_EQ(before.findChild<QLabel*>(name)->pixmap().toImage(),
                  later.findChild<QLabel*>(name)->pixmap().toImage())
            << name;
    }
}

TEST_F(ShellLooks, OfTheSplash) {
    frmSplash window;
    window.show();
    expectLooks(window, QStringLiteral("splash"));
    // Each label is as large as its words and stands on the lower edge.
    for (const char* name : {"Label1(0)", "Label1(1)"}) {
        const auto* label = window.findChild<QLabel*>(QLatin1String(name));
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->size(), label->sizeHint()) << name;
        EXPECT_EQ(label->geometry().bottom(), window.height() - 11) << name;
    }
    EXPECT_EQ(window.findChild<QLabel*>("Label1(0)")->geometry().right(), window.width() - 200 / 15 - 1);
}

}  // namespace
