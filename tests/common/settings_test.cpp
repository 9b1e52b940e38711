#include "common/settings.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSet>
#include <stdexcept>

#include "common/modMain.h"
#include "common/scramble.h"
#include "platform/system/files.h"
#include "platform/system/settings_store.h"
#include "platform/system/trap.h"
#include "support/own_folder.h"

namespace {

class Settings : public OwnFolderFixture {
 protected:
    QString stored(const char* section, const char* key) const {
        return platform::GetSetting("Tarvello", section, key, "(missing)");
    }
};

}  // namespace

TEST_F(Settings, EveryKeyStandsInTheTableOnce) {
    QSet<QString> names;
    for (const settings::Setting& setting : settings::all()) {
        const QString name = QString(setting.section) + '/' + setting.key;
        EXPECT_FALSE(names.contains(name)) << name.toStdString();
        names.insert(name);
    }
    EXPECT_EQ(settings::all().size(), 120U);
}

TEST_F(Settings, DefaultsStandWithoutAnythingBeingWritten) {
    EXPECT_TRUE(settings::boolean(settings::CeneDinarske));
    EXPECT_TRUE(settings::boolean(settings::AskBeforeDelete));
    EXPECT_TRUE(settings::boolean(settings::MakeProperCase));
    EXPECT_TRUE(settings::boolean(settings::ShowTipsAtStartup));
    EXPECT_FALSE(settings::boolean(settings::ShowTipsAtRandom));
    EXPECT_FALSE(settings::boolean(settings::LVWSorted));
    EXPECT_EQ(settings::text(settings::KursKupovni), "80");
    EXPECT_EQ(settings::text(settings::MainPosition), "500;500");
    EXPECT_EQ(settings::text(settings::LegendPosition), "1500;1500");
    EXPECT_EQ(settings::text(settings::KonfigInputWindowData), "800;800");
    EXPECT_EQ(settings::text(settings::LVWSortField), "ServiceStarted");
    EXPECT_EQ(settings::integer(settings::DueDateDiff), 5);
    EXPECT_EQ(settings::integer(settings::DefaultGST), 0);
    EXPECT_FALSE(QFile::exists(platform::settingsFile("Tarvello")));
}

TEST_F(Settings, TheTwoFilesLieInTheProgramFolderUntilSomebodySaysOtherwise) {
    EXPECT_EQ(settings::text(settings::DatabasePath), folder_.filePath("Tarvello.mdb"));
    EXPECT_EQ(settings::text(settings::HelpFilePath), folder_.filePath("Tarvello.hlp"));
    settings::setText(settings::DatabasePath, "/server/Tarvello.mdb");
    EXPECT_EQ(settings::text(settings::DatabasePath), "/server/Tarvello.mdb");
}

TEST_F(Settings, TheSameKeyInTwoWindowsHasTwoDefaults) {
    EXPECT_EQ(settings::integer(settings::find("frmKonfigPrint", "PriceRoundUp")), 0);
    EXPECT_EQ(settings::integer(settings::find("frmPrintInvoiceEx", "PriceRoundUp")), 2);
    EXPECT_TRUE(settings::boolean(settings::MakeProperCase));
    EXPECT_TRUE(settings::boolean(settings::find("frmInputBox", "MakeProperCase")));
    EXPECT_FALSE(settings::boolean(settings::find("frmInputBox", "AppendSerialNumber")));
    settings::setText(settings::find("frmInputBox", "MakeProperCase"), "0");
    EXPECT_FALSE(settings::boolean(settings::find("frmInputBox", "MakeProperCase")));
    EXPECT_TRUE(settings::boolean(settings::MakeProperCase));
}

TEST_F(Settings, DefaultsOfTheOtherWindows) {
    EXPECT_EQ(settings::text(settings::find("frmKonfiguratorEx", "WindowData")), "800;800;12000;8000");
    EXPECT_EQ(settings::integer(settings::find("frmKonfiguratorEx", "VerticalSplitPosition")), 50);
    EXPECT_EQ(settings::text(settings::find("frmKonfiguratorEx", "PRDSort")), "0Naziv0");
    EXPECT_EQ(settings::text(settings::find("frmInvoiceEx", "LVWColumnSort")), "0Proizvodjac0");
    EXPECT_EQ(settings::text(settings::find("frmInvoiceEx", "LVWColumnWidths")),
              "1440;1440;1440;1440;1440;1440;;1440;1440");
    EXPECT_EQ(settings::text(settings::find("frmKonfigPrint", "WindowData")), "1800;1800");
    EXPECT_EQ(settings::integer(settings::find("frmPrintInvoiceEx", "ChkFooterFromSett")), 1);
    EXPECT_EQ(settings::text(settings::find("frmJM", "SortedHow")), "ASC");
    EXPECT_EQ(settings::text(settings::find("frmTrebovanjeError", "LVWColumnPositions")), "1;2;3;4;5;6");
}

TEST_F(Settings, AnUnknownKeyIsAMistakeOfTheCaller) {
    EXPECT_THROW(settings::find("Settings", "NoSuchKey"), std::out_of_range);
    EXPECT_THROW(settings::find("frmJM", "KursKupovni"), std::out_of_range);
}

TEST_F(Settings, ABooleanReadsBothForms) {
    for (const char* text : {"1", "True", "true", "TRUE", "-1", " 1 ", "2"}) {
        settings::setText(settings::LVWSorted, text);
        EXPECT_TRUE(settings::boolean(settings::LVWSorted)) << text;
    }
    for (const char* text : {"0", "False", "false", "0.0"}) {
        settings::setText(settings::CeneDinarske, text);
        EXPECT_FALSE(settings::boolean(settings::CeneDinarske)) << text;
    }
}

TEST_F(Settings, AnUnreadableValueGivesTheDefault) {
    for (const char* text : {"", "perhaps", "1;2"}) {
        settings::setText(settings::CeneDinarske, text);
        EXPECT_TRUE(settings::boolean(settings::CeneDinarske)) << text;
        settings::setText(settings::DueDateDiff, text);
        EXPECT_EQ(settings::integer(settings::DueDateDiff), 5) << text;
    }
    settings::setText(settings::DueDateDiff, "99999999999");
    EXPECT_EQ(settings::integer(settings::DueDateDiff), 5);
}

TEST_F(Settings, ABooleanIsWrittenAsItsText) {
    settings::setBoolean(settings::ToolbarVisible, false);
    EXPECT_EQ(stored("Settings", "ToolbarVisible"), "False");
    settings::setBoolean(settings::ToolbarVisible, true);
    EXPECT_EQ(stored("Settings", "ToolbarVisible"), "True");
    settings::setInteger(settings::DueDateDiff, -3);
    EXPECT_EQ(stored("Settings", "DueDateDiff"), "-3");
}

TEST_F(Settings, TheFirmsDataNeverStandInPlainTextAndReadBack) {
    const settings::Setting& address = settings::find("Settings", "frmSettAdresa");
    for (const QString& plain :
         {QString(), QString("a"), QString("ab"), QString("abc"), QString("Lipova 1, Beograd"),
          QStringLiteral("\u010Ca\u010Dak \u0160\u0110\u017D \u0448"), QString("two\r\nlines"),
          QString(300, 'x')}) {
        settings::setScrambled(address, plain);
        EXPECT_EQ(settings::scrambled(address), plain);
        if (!plain.isEmpty()) {
            EXPECT_NE(stored("Settings", "frmSettAdresa"), plain);
        }
    }
    settings::setScrambled(address, "Lipova");
    QFile file(platform::settingsFile("Tarvello"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains("Lipova"));
}

TEST_F(Settings, AnAddressOfTwoCharactersIsOnlyTurnedCharacterByCharacter) {
    settings::setScrambled(settings::find("Settings", "frmSettAdresa"), "ab");
    EXPECT_EQ(stored("Settings", "frmSettAdresa"), ScrambleChars("ab"));
    EXPECT_EQ(settings::scrambled(settings::find("Settings", "frmSettAdresa")), "ab");
}

TEST_F(Settings, AStoreThatCannotBeReadGivesDefaultsAndSaysSoWhereItIsAsked) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir("Tarvello.ini"));
    EXPECT_EQ(settings::text(settings::KursKupovni), "80");
    EXPECT_TRUE(settings::boolean(settings::CeneDinarske));
    EXPECT_THROW(settings::requireReadable(), platform::RunError);
    EXPECT_THROW(settings::setText(settings::KursKupovni, "90"), platform::RunError);
}

TEST_F(Settings, TheNamedRowsAreThoseOfTheTable) {
    EXPECT_STREQ(settings::find("Settings", "MainPosition").defaultValue,
                 settings::MainPosition.defaultValue);
    for (const settings::Setting* row :
         {&settings::DatabasePath, &settings::KonfigInputWindowData, &settings::AlwaysCreateBackupDB,
          &settings::PrintPheriperalDetails}) {
        EXPECT_EQ(settings::find(row->section, row->key).kind, row->kind);
    }
}
