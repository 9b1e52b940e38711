#include "platform/system/settings_store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "platform/system/trap.h"
#include "support/file_writes.h"
#include "support/no_room.h"

using namespace platform;

namespace {

class SettingsStore : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        before_ = QFileInfo(settingsFile("x")).path();
        setSettingsFolder(folder_.path());
    }
    void TearDown() override { setSettingsFolder(before_); }

    QString fileContent() const {
        QFile file(settingsFile("Tarvello"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    void writeFile(const QByteArray& content) const {
        QFile file(settingsFile("Tarvello"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    QTemporaryDir folder_;
    QString before_;
};

void expectSurvives(const QString& value) {
    SaveSetting("Tarvello", "Settings", "Probe", value);
    EXPECT_EQ(GetSetting("Tarvello", "Settings", "Probe", "missing"), value) << value.toStdString();
}

}  // namespace

TEST_F(SettingsStore, AMissingKeyGivesTheDefaultAndWritesNothing) {
    EXPECT_EQ(GetSetting("Tarvello", "Settings", "KursKupovni", "80"), "80");
    EXPECT_EQ(GetSetting("Tarvello", "Settings", "KursKupovni"), "");
    EXPECT_FALSE(QFile::exists(settingsFile("Tarvello")));
}

TEST_F(SettingsStore, TheSameKeyInTwoSectionsHoldsTwoValues) {
    SaveSetting("Tarvello", "Settings", "MakeProperCase", "True");
    SaveSetting("Tarvello", "frmInputBox", "MakeProperCase", "False");
    EXPECT_EQ(GetSetting("Tarvello", "Settings", "MakeProperCase"), "True");
    EXPECT_EQ(GetSetting("Tarvello", "frmInputBox", "MakeProperCase"), "False");
}

TEST_F(SettingsStore, ApplicationsHaveFilesOfTheirOwn) {
    SaveSetting("Tarvello", "Settings", "Key", "ours");
    EXPECT_EQ(GetSetting("Another", "Settings", "Key", "none"), "none");
}

TEST_F(SettingsStore, EveryTextSurvives) {
    const char* const kTexts[] = {"",
                                  " ",
                                  " a",
                                  "a ",
                                  "@",
                                  "@Invalid()",
                                  "@@x",
                                  "a,b",
                                  "76,5",
                                  "a;b",
                                  "\"a\"",
                                  "a\\b",
                                  "50%",
                                  "%41",
                                  "%u0041",
                                  "%",
                                  "a=b",
                                  "[x]",
                                  "#x",
                                  "; x",
                                  "500;500",
                                  "\xC5\xA0\xC4\x87",
                                  "\xF0\x9F\x98\x80",
                                  "a/b",
                                  "True",
                                  "1,2,3,"};
    for (const char* text : kTexts) {
        expectSurvives(QString::fromUtf8(text));
    }
    expectSurvives(QStringLiteral("two\nlines\r\nand\ta tab"));
    expectSurvives(QString(QChar(0xD83D)));  // half a character, as cutting a text may leave it
    expectSurvives(QString(100000, QLatin1Char('x')));
    for (int code = 0; code <= 0x20; ++code) {
        expectSurvives(QChar(code));
    }
    QString all;
    for (int code = 0; code < 0x300; ++code) {
        all += QChar(code);
    }
    expectSurvives(all);
    for (const int code : {0x2028, 0x2029, 0xFEFF, 0xFFFE, 0xFFFF, 0x200E}) {
        expectSurvives(QChar(code));
    }
}

TEST_F(SettingsStore, AnEmptyValueIsNotAMissingOne) {
    SaveSetting("Tarvello", "Settings", "frmSettGrad", "");
    EXPECT_EQ(GetSetting("Tarvello", "Settings", "frmSettGrad", "default"), "");
}

TEST_F(SettingsStore, OrdinaryValuesStandReadableInTheFile) {
    SaveSetting("Tarvello", "Settings", "DatabasePath", "/home/shop/Tarvello data/Tarvello.mdb");
    SaveSetting("Tarvello", "Settings", "KursKupovni", "117.25");
    EXPECT_TRUE(fileContent().contains("[Settings]"));
    EXPECT_TRUE(fileContent().contains("DatabasePath=/home/shop/Tarvello data/Tarvello.mdb"));
    EXPECT_TRUE(fileContent().contains("KursKupovni=117.25"));
}

TEST_F(SettingsStore, ARateTypedIntoTheFileWithACommaIsOneText) {
    writeFile("[Settings]\nKursKupovni=76,5\n");
    EXPECT_EQ(GetSetting("Tarvello", "Settings", "KursKupovni", "80"), "76,5");
}

TEST_F(SettingsStore, WhatAnotherCopyOfTheProgramWritesIsSeenAndKept) {
    SaveSetting("Tarvello", "Settings", "Ours", "1");
    {
        // Another process knows nothing of our buffers; here the file is changed behind the store's back.
        const QString content = fileContent();
        writeFile((content + "Theirs=22\n").toUtf8());
    }
    EXPECT_EQ(GetSetting("Tarvello", "Settings", "Theirs", "none"), "22");
    SaveSetting("Tarvello", "Settings", "Ours", "2");
    EXPECT_TRUE(fileContent().contains("Theirs=22"));
    EXPECT_TRUE(fileContent().contains("Ours=2"));
}

TEST_F(SettingsStore, AnUnchangedValueDoesNotWriteTheFileAgain) {
    SaveSetting("Tarvello", "Settings", "Key", "value");
    const QDateTime longAgo(QDate(2005, 7, 5), QTime(12, 0));
    QFile file(settingsFile("Tarvello"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    file.close();
    SaveSetting("Tarvello", "Settings", "Key", "value");
    EXPECT_EQ(QFileInfo(settingsFile("Tarvello")).lastModified(), longAgo);
    SaveSetting("Tarvello", "Settings", "Key", "other");
    EXPECT_NE(QFileInfo(settingsFile("Tarvello")).lastModified(), longAgo);
}

TEST_F(SettingsStore, SeveralAreOneWriteOfTheFile) {
    SaveSetting("Tarvello", "Settings", "Kept", "as it was");
    FileWrites writes(settingsFile("Tarvello"));
    const std::vector<SettingText> several = {
        {"Settings", "Kept", "as it was"}, {"Settings", "New", "1"}, {"frmJM", "Sorted", "0"}};
    EXPECT_EQ(firstUnsaved("Tarvello", several), 1U);
    SaveSettings("Tarvello", several);
    EXPECT_EQ(writes.count(), 1);
    EXPECT_EQ(firstUnsaved("Tarvello", several), several.size());
    SaveSettings("Tarvello", several);
    EXPECT_EQ(writes.count(), 0) << "unchanged";
    EXPECT_EQ(GetSetting("Tarvello", "Settings", "New"), "1");
    EXPECT_EQ(GetSetting("Tarvello", "frmJM", "Sorted"), "0");
}

TEST_F(SettingsStore, SeveralThatFindNoRoomLeaveTheFileAsItWas) {
    SaveSetting("Tarvello", "Settings", "Key", "value");
    const QString before = fileContent();
    {
        const NoRoom full;
        EXPECT_THROW(SaveSettings("Tarvello", {{"Settings", "Key", "other"}, {"Settings", "New", "1"}}),
                     RunError);
    }
    EXPECT_EQ(fileContent(), before);
}

TEST_F(SettingsStore, AFolderThatTakesNoFilesIsAnError) {
    QFile inTheWay(folder_.filePath("file"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    setSettingsFolder(folder_.filePath("file"));
    try {
        SaveSetting("Tarvello", "Settings", "Key", "value");
        FAIL() << "no error";
    } catch (const RunError& e) {
        EXPECT_EQ(e.number(), 75);
        EXPECT_NE(std::string(e.what()).find("Tarvello.ini"), std::string::npos);
    }
}

TEST_F(SettingsStore, AFolderInThePlaceOfTheFileIsAnErrorOnReading) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir("Tarvello.ini"));
    EXPECT_THROW(GetSetting("Tarvello", "Settings", "Key"), RunError);
}

TEST_F(SettingsStore, LiesInTheUsersConfigurationByDefault) {
    setSettingsFolder({});
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    EXPECT_EQ(settingsFile("Tarvello"), config + "/Tarvello/Tarvello.ini");
}

TEST_F(SettingsStore, TheFileIsForItsUserAloneUnlessMadeOtherwise) {
    const mode_t before = umask(0);
    SaveSetting("Tarvello", "Settings", "Probe", "1");
    umask(before);
    const auto own =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser | QFileDevice::WriteUser;
    QFile file(settingsFile("Tarvello"));
    EXPECT_EQ(file.permissions(), own);
    file.setPermissions(own | QFileDevice::ReadGroup);
    SaveSetting("Tarvello", "Settings", "Probe", "2");
    EXPECT_EQ(file.permissions(), own | QFileDevice::ReadGroup);
}
