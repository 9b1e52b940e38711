#include "platform/system/launch.h"

#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

using namespace platform;

namespace {

// Stands where the desktop would open addresses and files.
class Desktop : public QObject {
    Q_OBJECT

 public:
    Desktop() {
        for (const char* scheme : {"http", "mailto", "file"}) {
            QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "open");
        }
    }
    ~Desktop() override {
        for (const char* scheme : {"http", "mailto", "file"}) {
            QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
        }
    }
    QList<QUrl> opened;

 public slots:
    void open(const QUrl& url) { opened += url; }
};

constexpr int kLastFailure = 32;

}  // namespace

TEST(Launching, AddressesGoToTheDesktop) {
    Desktop desktop;
    EXPECT_GT(shellExecute("http://www.example.com/page?x=1"), kLastFailure);
    EXPECT_GT(shellExecute("mailto:ana@example.com"), kLastFailure);
    ASSERT_EQ(desktop.opened.size(), 2);
    EXPECT_EQ(desktop.opened[0], QUrl("http://www.example.com/page?x=1"));
    EXPECT_EQ(desktop.opened[1], QUrl("mailto:ana@example.com"));
}

TEST(Launching, AFileGoesToTheDesktopUnderEitherSeparator) {
    Desktop desktop;
    const QTemporaryDir folder;
    QFile file(folder.filePath("Report.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_GT(shellExecute(folder.path() + "\\Report.txt"), kLastFailure);
    ASSERT_EQ(desktop.opened.size(), 1);
    EXPECT_EQ(desktop.opened[0].toLocalFile(), file.fileName());
}

TEST(Launching, WhatIsNotThereHasItsOwnNumber) {
    const QTemporaryDir folder;
    EXPECT_EQ(shellExecute(folder.filePath("nobody.txt")), 2);
    EXPECT_EQ(shellExecute(""), 2);
    EXPECT_EQ(shellExecute(folder.filePath("nowhere/nobody.txt")), 3);
}

TEST(Launching, ATestCanStandInForTheDesktop) {
    QString asked;
    setShellExecuteHook([&](const QString& target) {
        asked = target;
        return 31;
    });
    EXPECT_EQ(shellExecute("x.abc"), 31);
    EXPECT_EQ(asked, "x.abc");
    setShellExecuteHook({});

    setDateTimePanelHook([] { return false; });
    EXPECT_FALSE(openDateTimePanel());
    setDateTimePanelHook([] { return true; });
    EXPECT_TRUE(openDateTimePanel());
    setDateTimePanelHook({});
}

TEST(Launching, WithoutAnInstalledPanelTheDateAndTimeAreAFailure) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    EXPECT_FALSE(openDateTimePanel());
    qputenv("PATH", path);
}

#include "launch_test.moc"
