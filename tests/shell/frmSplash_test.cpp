#include "shell/frmSplash.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVersionNumber>

namespace {

QLabel* label(const frmSplash& window, const char* name) {
    return window.findChild<QLabel*>(QString::fromLatin1(name));
}

// Counts what the window asks its owner to do.
struct Closings {
    explicit Closings(frmSplash& window) {
        window.setCloseCallback([this] { ++count; });
    }
    int count = 0;
};

}  // namespace

TEST(Splash, ShowsPictureVersionAndRevision) {
    frmSplash window;
    window.show();
    EXPECT_FALSE(label(window, "Image1")->pixmap().isNull());
    const QString version = label(window, "Label1(1)")->text();
    EXPECT_TRUE(QRegularExpression("^\\d+\\.\\d+\\.\\d+$").match(version).hasMatch())
        << version.toStdString();
    EXPECT_EQ(label(window, "Label1(0)")->text(),
              "R" + QString::number(QVersionNumber::fromString(version).microVersion()));
    EXPECT_EQ(label(window, "Label1(1)")->x(), 200 / 15);
    EXPECT_FALSE(window.OpenedAsAbout);
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::FramelessWindowHint));
}

TEST(Splash, LabelsLieWithinThePictureAndApart) {
    frmSplash window;
    window.show();
    const QRect picture = label(window, "Image1")->geometry();
    const QRect revision = label(window, "Label1(0)")->geometry();
    const QRect version = label(window, "Label1(1)")->geometry();
    EXPECT_TRUE(picture.contains(revision));
    EXPECT_TRUE(picture.contains(version));
    EXPECT_FALSE(revision.intersects(version));
}

TEST(Splash, AClickDoesNothingWhileTheProgramStillStarts) {
    frmSplash window;
    Closings closings(window);
    window.show();
    QTest::mouseClick(&window, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(closings.count, 0);
    EXPECT_TRUE(window.isVisible());
}

TEST(Splash, WithTheTimerRunningAClickAnywhereClosesIt) {
    for (const char* name : {"Image1", "Label1(0)", "Label1(1)"}) {
        frmSplash window;
        Closings closings(window);
        window.show();
        window.setTimerInterval(60000);
        QTest::mouseClick(label(window, name), Qt::LeftButton);
        EXPECT_EQ(closings.count, 1) << name;
        EXPECT_FALSE(window.findChild<QTimer*>("Timer1")->isActive());
    }
}

TEST(Splash, TheOtherMouseButtonsCloseNothing) {
    frmSplash window;
    Closings closings(window);
    window.show();
    window.setTimerInterval(60000);
    QTest::mouseClick(&window, Qt::RightButton);
    EXPECT_EQ(closings.count, 0);
}

TEST(Splash, AsAboutWindowAClickOrEscapeClosesItWithoutATimer) {
    frmSplash window;
    window.OpenedAsAbout = true;
    Closings closings(window);
    window.show();
    QTest::mouseClick(&window, Qt::LeftButton);
    EXPECT_EQ(closings.count, 1);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(closings.count, 2);
    EXPECT_FALSE(window.findChild<QTimer*>("Timer1")->isActive());
}

TEST(Splash, TheTimerClosesItOnce) {
    frmSplash window;
    Closings closings(window);
    window.show();
    window.setTimerInterval(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return closings.count == 1; }));
    QTest::qWait(20);
    EXPECT_EQ(closings.count, 1);
}

TEST(Splash, AnIntervalOfNothingStartsNoTimer) {
    frmSplash window;
    window.setTimerInterval(5000);
    window.setTimerInterval(0);
    EXPECT_FALSE(window.findChild<QTimer*>("Timer1")->isActive());
    EXPECT_EQ(window.timerInterval(), 0);
}

TEST(Splash, WithoutAnOwnerItJustCloses) {
    frmSplash window;
    window.show();
    window.setTimerInterval(60000);
    QTest::mouseClick(&window, Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
}

TEST(Splash, TheOwnerMayTakeTheWindowAwayFromInsideTheCallback) {
    auto* window = new frmSplash;
    window->OpenedAsAbout = true;
    window->setCloseCallback([window] { window->deleteLater(); });
    const QSignalSpy gone(window, &QObject::destroyed);
    window->show();
    QTest::mouseClick(window, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(gone.size(), 1);
}
