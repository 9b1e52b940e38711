// What a shop has from an earlier release, as that release left it: the database and the settings of somebody
// who worked with it for some days and closed the program. The files themselves are never changed.
#include <QSettings>
#include <climits>
#include <vector>

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

// Nothing that somebody has set is forgotten: each value is found under its old name, as it was. A key that
// this version did not know any more would throw.
TEST_F(Version101, EveryOneOfItsSettingsIsReadAsItWas) {
    bring("Tarvello.ini", path("settings/Tarvello.ini"));
    struct Kept {
        const char* section;
        const char* key;
        const char* value;
    };
    const std::vector<Kept> all{
        {"Settings", "AlwaysCreateBackupDB", "False"},
        {"Settings", "DatabasePath", "/home/shop/Tarvello/Tarvello.mdb"},
        {"Settings", "DefaultGST", "0"},
        {"Settings", "DetailsPosition", "495;495"},
        {"Settings", "DueDateDiff", "8"},
        {"Settings", "HelpFilePath", "/home/shop/Tarvello/Tarvello.hlp"},
        {"Settings", "IncludeClients", "True"},
        {"Settings", "IncludeComputers", "True"},
        {"Settings", "IncludeServices", "True"},
        {"Settings", "KursKupovni", "117.2"},
        {"Settings", "LVWColumnPositions", "1;2;3;4;5;6;7"},
        {"Settings", "LVWColumnWidths", "1440;1440;1440;1440;1440;1440;1440"},
        {"Settings", "LVWSortField", "ServiceStarted"},
        {"Settings", "LVWSortOrder", "ASC"},
        {"Settings", "LVWSorted", "False"},
        {"Settings", "MainPosition", "495;495"},
        {"Settings", "PrintAddressDetails", "True"},
        {"Settings", "PrintBirthDetails", "True"},
        {"Settings", "PrintClientComments", "True"},
        {"Settings", "PrintComputerComments", "True"},
        {"Settings", "PrintContactDetails", "True"},
        {"Settings", "PrintMemoryDetails", "True"},
        {"Settings", "PrintOSDetails", "True"},
        {"Settings", "PrintPIDCardDetails", "True"},
        {"Settings", "PrintPheriperalDetails", "True"},
        {"Settings", "PrintStorageDetails", "True"},
        {"Settings", "ProperlyClosed", "True"},
        {"Settings", "ShowFilterStatistics", "True"},
        {"Settings", "ShowOnlySelectedClient", "True"},
        {"Settings", "ShowOnlySelectedComputer", "True"},
        {"Settings", "ShowOnlySelectedService", "True"},
        {"Settings", "ShowTipsAtStartup", "False"},
        {"Settings", "StatusbarVisible", "True"},
        {"Settings", "ToolbarVisible", "True"},
        {"frmInputBox", "AppendSerialNumber", "1"},
        {"frmInputBox", "MakeProperCase", "1"},
        {"frmInputBox", "WindowData", "495;495"},
        {"frmInvoiceEx", "LVWColumnPositions", "1;2;3;4;5;6;7;8"},
        {"frmInvoiceEx", "LVWColumnSort", "0Proizvodjac0"},
        {"frmInvoiceEx", "LVWColumnWidths", "1440;1440;1440;1440;1440;1440;0;1440"},
        {"frmInvoiceEx", "WindowData", "10500;8400;12000;7995"},
        {"frmKonfiguratorEx", "GRPSort", "0Grupa0"},
        {"frmKonfiguratorEx", "HorisontalSplitPosition", "50"},
        {"frmKonfiguratorEx", "LVWColumnPositions", "1;2;3;4;5"},
        {"frmKonfiguratorEx", "LVWColumnWidths", "1440;1440;1440;1440;1440"},
        {"frmKonfiguratorEx", "MFTSort", "0Proizvodjac0"},
        {"frmKonfiguratorEx", "PRDSort", "0Naziv0"},
        {"frmKonfiguratorEx", "PrikaziStanjaVecaOdNule", "False"},
        {"frmKonfiguratorEx", "PrikaziSveProizvodjace", "False"},
        {"frmKonfiguratorEx", "VerticalSplitPosition", "50"},
        {"frmKonfiguratorEx", "WindowData", "795;795;12000;7995"},
        {"frmPrintInvoiceEx", "ChkFooter", "1"},
        {"frmPrintInvoiceEx", "ChkFooterFromSett", "1"},
        {"frmPrintInvoiceEx", "ChkIsporuka", "1"},
        {"frmPrintInvoiceEx", "ChkNacinPlacanja", "1"},
        {"frmPrintInvoiceEx", "ChkNapomena", "1"},
        {"frmPrintInvoiceEx", "ChkPecatPotpis", "1"},
        {"frmPrintInvoiceEx", "ChkRokIsporuke", "1"},
        {"frmPrintInvoiceEx", "ChkRokPlacanja", "1"},
        {"frmPrintInvoiceEx", "NumberDelimiter", "0"},
        {"frmPrintInvoiceEx", "NumberSuffix", "0"},
        {"frmPrintInvoiceEx", "OstaliTrosak", ""},
        {"frmPrintInvoiceEx", "PriceRoundUp", "2"},
        {"frmPrintInvoiceEx", "Slovima", "1"},
        {"frmPrintInvoiceEx", "TabIndex", "1"},
        {"frmPrintInvoiceEx", "WindowData", "1800;1800"},
        {"frmPrintInvoiceEx", "frmSettKupacOstalo", ""},
        {"frmPrintInvoiceEx", "frmSettMatBr", ""},
        {"frmPrintInvoiceEx", "frmSettPDV", ""},
        {"frmPrintInvoiceEx", "frmSettPIB", ""},
        {"frmPrintInvoiceEx", "frmSettRegBr", ""},
        {"frmPrintInvoiceEx", "frmSettRnBr", ""},
        {"frmPrintInvoiceEx", "frmSettSifDel", ""},
        {"frmPrintInvoiceEx", "txtFooter", ""},
        {"frmPrintInvoiceEx", "txtIsporuka1", "Isporuka:"},
        {"frmPrintInvoiceEx", "txtIsporuka2", "FCO prostorije firme."},
        {"frmPrintInvoiceEx", "txtNacinPlacanja1", "Nacin placanja:"},
        {"frmPrintInvoiceEx", "txtNacinPlacanja2", "100% avans."},
        {"frmPrintInvoiceEx", "txtNapomena1", "Napomena:"},
        {"frmPrintInvoiceEx", "txtNapomena2", ""},
        {"frmPrintInvoiceEx", "txtPecatPotpis",
         "Dokument je uradjen na racunaru i vazi bez pecata i potpisa. U slucaju spora, nadlezan je "
         "privredni sud u Smederevu."},
        {"frmPrintInvoiceEx", "txtRokIsporuke1", "Rok isporuke:"},
        {"frmPrintInvoiceEx", "txtRokIsporuke2", "Odmah nakon uplate."},
        {"frmPrintInvoiceEx", "txtRokPlacanja1", "Rok za uplatu:"},
        {"frmPrintInvoiceEx", "txtRokPlacanja2", "Tri dana od datuma dokumenta."},
    };
    for (const Kept& kept : all) {
        EXPECT_EQ(settings::text(settings::find(kept.section, kept.key), "(not stored)"),
                  QString::fromUtf8(kept.value))
            << kept.section << " " << kept.key;
    }
    const QSettings file(path("settings/Tarvello.ini"), QSettings::IniFormat);
    EXPECT_EQ(file.allKeys().size(), static_cast<qsizetype>(all.size()));
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
