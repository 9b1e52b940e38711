#include "platform/controls/dressing.h"

#include <gtest/gtest.h>

#include <QDateEdit>
#include <QFocusEvent>
#include <QLineEdit>
#include <QTimer>

#include "platform/controls/date_field.h"
#include "platform/controls/link_label.h"
#include "platform/controls/shades.h"
#include "support/dark_desktop.h"

namespace {

TEST(Dressing, IsDoneAtOnceAndWheneverTheDesktopChanges) {
    QWidget widget;
    int times = 0;
    platform::keepDressed(widget, [&] { ++times; });
    EXPECT_EQ(times, 1);
    {
        const DarkDesktop dark;
        EXPECT_EQ(times, 2);
    }
    EXPECT_EQ(times, 3);
}

TEST(Dressing, IsDoneInARunningProgram) {
    const QPalette usual = QApplication::palette();
    QWidget widget;
    int times = 0;
    platform::keepDressed(widget, [&] { ++times; });
    QTimer::singleShot(0, &widget, [] {
        QApplication::setPalette(QPalette(QColor(49, 54, 59), QColor(42, 46, 50)));
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    });
    QApplication::exec();
    EXPECT_EQ(times, 2);
    QApplication::setPalette(usual);
}

TEST(Dressing, ANewOneTakesThePlaceOfTheOneBefore) {
    QWidget widget;
    int before = 0, now = 0;
    platform::keepDressed(widget, [&] { ++before; });
    platform::keepDressed(widget, [&] { ++now; });
    const DarkDesktop dark;
    EXPECT_EQ(before, 1);
    EXPECT_EQ(now, 2);
}

TEST(Dressing, ColoursOfTheWidgetAloneAreNoneOfTheDesktops) {
    QWidget widget;
    int times = 0;
    platform::keepDressed(widget, [&] {
        ++times;
        QPalette own;
        own.setColor(QPalette::Base, times % 2 == 0 ? Qt::red : Qt::green);
        widget.setPalette(own);
    });
    QPalette other;
    other.setColor(QPalette::Base, Qt::blue);
    widget.setPalette(other);
    EXPECT_EQ(times, 1);
    const DarkDesktop dark;
    EXPECT_EQ(times, 2) << "nor do they call for another dressing";
}

TEST(Dressing, ABoxThatFindsNothingIsTintedAsTheDarkWantsIt) {
    QLineEdit box, other;
    platform::showNothingFound(box, "Nothing");
    const DarkDesktop dark;
    platform::showNothingFound(other, "Nothing");
    EXPECT_EQ(box.palette().color(QPalette::Base), other.palette().color(QPalette::Base));
    EXPECT_LT(box.palette().color(QPalette::Base).lightness(), 128);
}

TEST(Dressing, ALinkUnderTheMouseIsReadInTheDark) {
    platform::LinkLabel link("View price list");
    QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(&link, &focus);
    const QColor inTheLight = link.palette().color(QPalette::WindowText);
    const DarkDesktop dark;
    EXPECT_GE(link.palette().color(QPalette::WindowText).lightness(), 175);
    EXPECT_NE(link.palette().color(QPalette::WindowText), inTheLight);
}

TEST(Dressing, ADateThatIsNoneStaysRedInTheDark) {
    platform::DateField field(true);
    auto* line = field.findChild<QDateEdit*>()->findChild<QLineEdit*>();
    line->setText("31.2.");
    const QColor inTheLight = line->palette().color(QPalette::Text);
    const DarkDesktop dark;
    EXPECT_GE(line->palette().color(QPalette::Text).lightness(), 175);
    EXPECT_EQ(line->palette().color(QPalette::Text).hslHue(), inTheLight.hslHue());
}

}  // namespace
