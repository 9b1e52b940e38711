#include "platform/controls/shades.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPalette>

namespace {

using platform::isDark;
using platform::mixed;
using platform::readable;

QPalette dark() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(42, 46, 50));
    palette.setColor(QPalette::WindowText, QColor(252, 252, 252));
    return palette;
}

TEST(Shades, AMixtureLiesBetweenItsColours) {
    EXPECT_EQ(mixed(Qt::white, Qt::black, 0), QColor(Qt::white));
    EXPECT_EQ(mixed(Qt::white, Qt::black, 1), QColor(Qt::black));
    EXPECT_EQ(mixed(QColor(100, 200, 0), QColor(200, 100, 10), 0.5), QColor(150, 150, 5));
}

TEST(Shades, ADesktopIsDarkWhereItsLettersAreLighterThanTheirGround) {
    EXPECT_FALSE(isDark(QPalette(QColor(240, 240, 240))));
    EXPECT_TRUE(isDark(dark()));
}

TEST(Shades, AColourIsReadOnBothDesktops) {
    const QColor red = readable(Qt::red, QPalette(QColor(240, 240, 240)));
    const QColor redInTheDark = readable(Qt::red, dark());
    EXPECT_LE(red.lightness(), 130);
    EXPECT_GE(redInTheDark.lightness(), 175);
    EXPECT_EQ(red.hslHue(), redInTheDark.hslHue());
}

TEST(Shades, ABoxThatFindsNothingIsTintedAndSaysSo) {
    QLineEdit box;
    const QColor usual = box.palette().color(QPalette::Base);
    platform::showNothingFound(box, "Nothing");
    EXPECT_NE(box.palette().color(QPalette::Base), usual);
    EXPECT_GT(box.palette().color(QPalette::Base).red(), box.palette().color(QPalette::Base).blue());
    EXPECT_EQ(box.accessibleDescription(), "Nothing");
    platform::showNothingFound(box, {});
    EXPECT_EQ(box.palette().color(QPalette::Base), usual);
    EXPECT_EQ(box.accessibleDescription(), "");
}

}  // namespace
