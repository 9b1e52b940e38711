#include <gmock/gmock.h>

#include <QProcess>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "exchange/old_format.h"
#include "exchange/take_over.h"
#include "support/fixture.h"
#include "support/places.h"

namespace {

using exchange::TakenOver;
using testing::HasSubstr;
using testing::Not;

// Files of the old format as write_old_shop.py makes them: both versions, every way of writing a text.
class WrittenShops : public DeliveredFixture, public testing::WithParamInterface<const char*> {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        std::filesystem::create_directory(path("taken").toStdString());
        const QString script = QString::fromUtf8(tests::kSourceFolder) + "/exchange/write_old_shop.py";
        QProcess writer;
        writer.start("/usr/bin/python3", QStringList{script} + QString(GetParam()).split(' ') +
                                             QStringList{path("taken/Old.mdb")});
        ASSERT_TRUE(writer.waitForFinished(120000));
        ASSERT_EQ(writer.exitCode(), 0) << writer.readAllStandardError().toStdString();
        taken = exchange::takeOver(path("taken/Old.mdb").toStdString(), target());
    }
    std::string target() { return path("taken/New.mdb").toStdString(); }
    std::string list() const {
        std::ostringstream text;
        text << std::ifstream(taken.list).rdbuf();
        return text.str();
    }
    const exchange::TakenTable& table(const std::string& name) const {
        for (const exchange::TakenTable& one : taken.tables) {
            if (one.name == name) {
                return one;
            }
        }
        throw std::logic_error(name);
    }
    // The first field of the first row.
    dao::Value ask(const std::string& statement) {
        dao::Database shop = dao::DBEngine::OpenDatabase(target(), false, false, connectText().toStdString());
        dao::Recordset rows = shop.OpenRecordset(statement, dao::dbOpenSnapshot);
        dao::Value value = rows.EOF() ? dao::Value("(no row)") : rows.Fields(0).Value();
        rows.Close();
        shop.Close();
        return value;
    }

    TakenOver taken;
};

TEST_P(WrittenShops, CarryEveryLivingRowAndTellOfTheOneThatIsLost) {
    EXPECT_EQ(table("Customers").found, 399);
    EXPECT_EQ(table("Customers").carried, 398);
    EXPECT_EQ(table("Computers").carried, 600);
    EXPECT_EQ(table("Services").carried, 900);
    EXPECT_EQ(table("ServiceTypes").carried, 3);
    EXPECT_EQ(taken.remarks, 1U) << list();
    EXPECT_THAT(list(), HasSubstr("it was moved to a page that is not the table's); left out"));
    EXPECT_EQ(ask("SELECT Surname FROM Customers WHERE CustID=3").asText(), "(no row)") << "it was deleted";
    EXPECT_EQ(ask("SELECT Surname FROM Customers WHERE CustID=400").asText(), "Klijent 400");
}

TEST_P(WrittenShops, KeepTextsOfAllLengths) {
    std::string words = "prvi red\r\ndrugi red, čćžšđ ČĆŽŠĐ €\r\n";
    for (int i = 0; i < 3000; ++i) {
        words += "dugačko ";
    }
    EXPECT_EQ(ask("SELECT Comments FROM Customers WHERE CustID=1").asText(), words + "kraj");
    EXPECT_EQ(ask("SELECT Surname FROM Customers WHERE CustID=1").asText(), "O'Brien \"Obi\"");
    EXPECT_EQ(ask("SELECT GivenName FROM Customers WHERE CustID=1").asText(), "Đorđe");
    EXPECT_EQ(ask("SELECT Surname FROM Customers WHERE CustID=4").asText(), "Preseljen") << "a moved row";
    EXPECT_EQ(ask("SELECT Comments FROM Customers WHERE CustID=4").textRef().size(), 800U);
    EXPECT_EQ(ask("SELECT SN FROM InvoiceData").textRef().size(), 150U);
}

TEST_P(WrittenShops, TellNullFromTheEmptyText) {
    const dao::Value empty = ask("SELECT NickName FROM Customers WHERE CustID=1");
    EXPECT_FALSE(empty.isNull());
    EXPECT_EQ(empty.asText(), "");
    for (const char* field : {"Surname", "NickName", "BirthDate", "Comments"}) {
        EXPECT_TRUE(ask(std::string("SELECT ") + field + " FROM Customers WHERE CustID=2").isNull()) << field;
    }
    EXPECT_FALSE(ask("SELECT FirmAddress FROM Customers WHERE CustID=2").asBool());
    EXPECT_TRUE(ask("SELECT FirmAddress FROM Customers WHERE CustID=1").asBool());
}

TEST_P(WrittenShops, KeepAmountsDatesAndQuantities) {
    EXPECT_EQ(ask("SELECT Price FROM Services WHERE ID=1").asCurrency().scaled(), 1234567890123457);
    EXPECT_EQ(ask("SELECT Paid FROM Services WHERE ID=1").asCurrency().scaled(), -1);
    EXPECT_EQ(ask("SELECT Discount FROM Services WHERE ID=1").asSingle(), 0.5F);
    EXPECT_EQ(ask("SELECT ServiceStarted FROM Services WHERE ID=1").asDate().days, 38019.5);
    EXPECT_EQ(ask("SELECT ServiceFinished FROM Services WHERE ID=1").asDate().days, 1.0);
    EXPECT_TRUE(ask("SELECT ServiceToBeFinished FROM Services WHERE ID=1").isNull());
    EXPECT_EQ(ask("SELECT Stanje FROM Oprema WHERE ID=1").asSingle(), -2.5F);
    EXPECT_EQ(ask("SELECT Cena FROM Oprema WHERE ID=1").asSingle(), 0.1F);
    EXPECT_EQ(ask("SELECT PredracunBroj FROM DocNumber").asLong(), 41);
}

TEST_P(WrittenShops, TellWhatOneSideHasNot) {
    for (const char* line : {"the stored query Dugovi", "the table Zaposleni", "the field Customers.Slika",
                             "the field Customers.Dodatak", "the table JM; it stays empty",
                             "the field Services.GST; it gets what an empty entry gives",
                             "Oprema 2: the name 'MIŠ 3.5\"' is that of 1, too"}) {
        EXPECT_THAT(list(), HasSubstr(std::string("\n  ") + line + "\n"));
    }
    EXPECT_EQ(ask("SELECT GST FROM Services WHERE ID=1").asSingle(), 0.0F);
    EXPECT_THAT(list(), Not(HasSubstr("Zaposleni; it stays")));
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, WrittenShops,
                         testing::Values("3", "4", "4 --packed", "3 --key 0x1234567", "4 --key 0x1234567"));

}  // namespace
