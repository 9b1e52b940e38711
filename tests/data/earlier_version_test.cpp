// What a shop has from an earlier release, as that release left it: the database and the settings of somebody
// who worked with it for some days and closed the program. The files themselves are never changed.
#include <climits>

#include "data/session.h"
#include "data/session_fixture.h"

namespace {

class Version101 : public SessionFixture {
 protected:
    void SetUp() override {
        SessionFixture::SetUp();
        bring("Tarvello.mdb", databaseFile());
        bring("Tarvello.ini", path("settings/Tarvello.ini"));
        settings::setText(settings::DatabasePath, databaseFile());
    }

    void bring(const QString& name, const QString& to) {
        QFile::remove(to);
        ASSERT_TRUE(QFile::copy(kept(name), to));
        ASSERT_TRUE(QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner));
    }
    static QString kept(const QString& name) {
        return QLatin1String(tests::kSourceFolder) + QStringLiteral("/data/version-1.0.1/") + name;
    }
    std::string textOf(const std::string& table, const std::string& key, int number,
                       const std::string& field) {
        return valueOf(table, key, number, field).asText();
    }
    void expectItsRows() {
        EXPECT_EQ(countRows("Customers"), 2);
        EXPECT_EQ(textOf("Customers", "CustID", 2, "Surname"), "Petrovic");
        EXPECT_EQ(textOf("Customers", "CustID", 3, "Street"), "Njegoseva 48");
        EXPECT_EQ(countRows("Computers"), 1);
        EXPECT_EQ(textOf("Computers", "MachineID", 3, "MachineName"), "Radna stanica");
        EXPECT_EQ(countRows("Services"), 1);
        EXPECT_EQ(textOf("Services", "ID", 4, "Price"), "657");
        EXPECT_EQ(textOf("Services", "ID", 4, "ServiceStarted"), "2026-03-16");
        EXPECT_EQ(countRows("InvoiceData"), 2);
        EXPECT_EQ(textOf("InvoiceData", "OpremaID", 3, "SN"), "SN-7600-01, SN-7600-02");
        EXPECT_EQ(countRows("SELECT * FROM DocNumber WHERE PredracunBroj=1 AND RacunBroj=18"), 1);
        EXPECT_EQ(countRows("Oprema"), 157);
        EXPECT_EQ(countRows("OpremaGrupe"), 157);
        EXPECT_EQ(countRows("ServiceTypes"), 16);
        EXPECT_EQ(openDatabase().Relations().size(), 5U);
        closeDatabases();
    }
    QString errorText;
};

TEST_F(Version101, ItsDatabaseIsFoundAndBroughtUpToDateWithoutAWord) {
    EXPECT_TRUE(CheckDatabase(errorText)) << errorText.toStdString();
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(openDatabase().Form(), 1);
    expectItsRows();
}

TEST_F(Version101, OnceUpToDateItIsLeftAlone) {
    ASSERT_TRUE(CheckDatabase(errorText)) << errorText.toStdString();
    const QByteArray before = bytesOf(databaseFile());
    EXPECT_TRUE(CheckDatabase(errorText)) << errorText.toStdString();
    EXPECT_EQ(bytesOf(databaseFile()), before);
}

TEST_F(Version101, ItsRowsAreThere) {
    expectItsRows();
}

TEST_F(Version101, ItsDatabaseIsSound) {
    dao::DBEngine::RepairDatabase(file(), connect());
    EXPECT_FALSE(dao::DBEngine::LastRepair().damaged);
}

TEST_F(Version101, ItIsWorkedOnAndCountsOn) {
    EXPECT_EQ(CreateWorkQueries(openDatabase()), 0);
    EXPECT_EQ(countRows("QDCustomers0"), 2);
    DropWorkQueries(openDatabase(), 0);
    EXPECT_EQ(addClient(), 4);
    EXPECT_EQ(addService(addComputer(4)), 5);
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID=2");
    EXPECT_EQ(countRows("Services"), 1);
}

TEST_F(Version101, ItIsBackedUpCompactedAndRevertedTo) {
    ASSERT_TRUE(BackupDatabase(errorText)) << errorText.toStdString();
    ASSERT_TRUE(RepairAndCompactDatabase(errorText, true)) << errorText.toStdString();
    expectItsRows();
    openDatabase().Execute("DELETE * FROM Customers");
    closeDatabases();
    ASSERT_TRUE(UseBackupDatabase(errorText, true)) << errorText.toStdString();
    EXPECT_EQ(bytesOf(databaseFile()), bytesOf(path("Tarvello.bkp")));
    expectItsRows();
}

TEST_F(Version101, ItsSettingsAreRead) {
    bring("Tarvello.ini", path("settings/Tarvello.ini"));
    EXPECT_EQ(settings::text(settings::DatabasePath), "/home/shop/Tarvello/Tarvello.mdb");
    EXPECT_EQ(settings::text(settings::KursKupovni), "117.2");
    EXPECT_EQ(settings::integer(settings::DueDateDiff), 8);
    EXPECT_FALSE(settings::boolean(settings::AlwaysCreateBackupDB));
    EXPECT_TRUE(settings::boolean(settings::ProperlyClosed));
    EXPECT_FALSE(settings::boolean(settings::ShowTipsAtStartup));
    EXPECT_EQ(settings::text(settings::LVWSortField), "ServiceStarted");
    EXPECT_EQ(settings::text(settings::LVWColumnWidths), "1440;1440;1440;1440;1440;1440;1440");
    EXPECT_EQ(settings::text(settings::find("frmPrintInvoiceEx", "txtNacinPlacanja2")), "100% avans.");
}

// What a later version leaves behind may mean something else to this one: it is neither read nor "repaired".
class LaterVersion : public SessionFixture {
 protected:
    void SetUp() override {
        SessionFixture::SetUp();
        settings::setText(settings::DatabasePath, databaseFile());
        openDatabase().setForm(2);
        closeDatabases();
    }
    void TearDown() override {
        dao::DBEngine::setKnownForm(INT_MAX);
        SessionFixture::TearDown();
    }
    QString errorText;
};

TEST_F(LaterVersion, ItsDatabaseIsRefusedWithoutAnOfferOfRepairOrBackup) {
    const QByteArray before = bytesOf(databaseFile());
    EXPECT_FALSE(CheckDatabase(errorText));
    EXPECT_EQ(errorText,
              "The database was written by a newer version of Tarvello. Please install that version on this "
              "workstation, too.");
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(bytesOf(databaseFile()), before);
}

}  // namespace
