#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <map>

#include "exchange/command.h"
#include "platform/dao/postgres/signpost.h"
#include "support/second_process.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

using Files = std::map<std::string, std::string>;

class OutAndIn : public CommandFixture {
 protected:
    Files filesIn(const char* folder) const {
        Files files;
        const QDir place(at(folder));
        for (const QString& name : place.entryList(QDir::Files | QDir::Hidden)) {
            files[name.toStdString()] = bytesOf(place.filePath(name)).toStdString();
        }
        return files;
    }
    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    static void write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    // One occurrence in one of the exported files.
    void change(const char* file, const char* from, const char* to) const {
        const QString path = at("out") + '/' + file;
        QByteArray bytes = bytesOf(path);
        const qsizetype found = bytes.indexOf(from);
        ASSERT_GE(found, 0) << from;
        bytes.replace(found, QByteArray(from).size(), to);
        write(path, bytes);
    }

    void exportTo(const char* name) const {
        const Answer answer = run({"export", path(), at(name)});
        ASSERT_EQ(answer.status, 0) << answer.errors;
    }
    // What the import of the changed files says; nothing may have been made.
    std::string refusal() const {
        const QStringList before = QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden);
        const Answer answer = run({"import", at("New.mdb"), at("out")});
        EXPECT_EQ(answer.status, 1);
        EXPECT_EQ(QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden), before);
        return answer.errors;
    }

    // Rows with everything that might get lost on the way.
    void addOddRows() const {
        dao::Database database = open(path());
        dao::Recordset clients = database.OpenRecordset("Customers");
        clients.AddNew();
        clients.Fields("Surname") = "O'Brien \"Obi\", Đorđe";
        clients.Fields("GivenName") = "";
        clients.Fields("BirthDate") = dao::Date{1};
        clients.Fields("IssueDate") = dao::Date{-1.25};
        clients.Fields("ValidUntil") = dao::Date{46348.123456789};
        clients.Fields("FirmAddress") = true;
        clients.Fields("Comments") = "one\r\ntwo\nthree\rfour; =SUM(A1)";
        clients.Update();
        clients.setBookmark(clients.LastModified());
        const std::int32_t client = clients["CustID"].asLong();
        clients.Close();
        database.Execute("INSERT INTO Computers (CustID, MachineName) VALUES (" + std::to_string(client) +
                         ", 'Ćošak')");
        database.Execute("DELETE * FROM Computers WHERE MachineName='Ćošak'");
        dao::Recordset services = database.OpenRecordset("Services");
        services.Edit();
        services.Fields("Price") = dao::Currency::fromScaled(1234567890123457);
        services.Fields("Discount") = 0.1F;
        services.Fields("ServiceFinished") = dao::Date{1};
        services.Update();
        services.Close();
        dao::Recordset products = database.OpenRecordset("Oprema");
        products.Edit();
        products.Fields("Stanje") = -2.5F;
        products.Fields("Opis") = dao::Value();
        products.Fields("Napomena") = "";
        products.Update();
        products.Close();
        database.Execute("INSERT INTO ServiceTypes (Service) VALUES (NULL)");
        database.Execute("INSERT INTO ServiceTypes (Service) VALUES ('')");
        database.Close();
    }
};

TEST_F(OutAndIn, TheSameShopComesBack) {
    deliver();
    addOddRows();
    exportTo("out");
    const Answer answer = run({"import", at("New.mdb"), at("out")});
    ASSERT_EQ(answer.status, 0) << answer.errors;
    ASSERT_EQ(run({"export", at("New.mdb"), at("again")}).status, 0);
    const Files out = filesIn("out");
    EXPECT_EQ(out, filesIn("again"));
    EXPECT_GE(out.size(), 10U);
    EXPECT_EQ(rowsOf(at("New.mdb"), "SELECT * FROM Oprema WHERE Opis IS NULL AND Napomena=''"), 1);
    EXPECT_EQ(rowsOf(at("New.mdb"), "OpremaGrupe"), rowsOf(path(), "OpremaGrupe"));
    EXPECT_EQ(run({"check", at("New.mdb")}).status, 0);
}

TEST_F(OutAndIn, CountersGoOnBehindNumbersThatAreGone) {
    deliver();
    addOddRows();
    exportTo("out");
    ASSERT_EQ(run({"import", at("New.mdb"), at("out")}).status, 0);
    std::int32_t next[2] = {};
    for (const int i : {0, 1}) {
        dao::Database database = open(i == 0 ? path() : at("New.mdb"));
        dao::Recordset computers = database.OpenRecordset("Computers");
        computers.AddNew();
        next[i] = computers["MachineID"].asLong();
        computers.CancelUpdate();
        database.Close();
    }
    EXPECT_EQ(next[0], next[1]);
    EXPECT_EQ(next[1], 92);  // ninety of the demonstration, and the one that was deleted
}

TEST_F(OutAndIn, FilesAreByTheBook) {
    deliver();
    addOddRows();
    exportTo("out");
    const Files out = filesIn("out");
    EXPECT_THAT(out.at("Customers.csv"), StartsWith("CustID,Surname,GivenName,NickName,BirthDate,"));
    EXPECT_THAT(out.at("Customers.csv"), HasSubstr("\r\n61,\"O'Brien \"\"Obi\"\", Đorđe\",\"\",,1899-12-31,,,"
                                                   "1899-12-29T06:00:00,"));
    EXPECT_THAT(out.at("Customers.csv"), HasSubstr(",\"one\r\ntwo\nthree\rfour; =SUM(A1)\"\r\n"));
    EXPECT_THAT(out.at("Services.csv"), HasSubstr(",123456789012.3457,0.1,"));
    EXPECT_THAT(out.at("Oprema.csv"), ContainsRegex("\r\n1,[0-9]+,[0-9]+,[^\r\n]*,,\"\",Kom\\.,-2\\.5,"));
    EXPECT_THAT(out.at("ServiceTypes.csv"), testing::EndsWith("\r\n\r\n\"\"\r\n"));
    EXPECT_THAT(out.at("Counters.csv"), HasSubstr("Computers,91\r\n"));
}

TEST_F(OutAndIn, WhatIsWrittenIsForItsUserAlone) {
    deliver();
    exportTo("out");
    exportTo("out.xlsx");
    constexpr auto kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(QFile::permissions(at("out")) & kOthers);
    EXPECT_FALSE(QFile::permissions(at("out") + "/Customers.csv") & kOthers);
    EXPECT_FALSE(QFile::permissions(at("out.xlsx")) & kOthers);
}

TEST_F(OutAndIn, NothingIsWrittenOverWhatIsThere) {
    deliver();
    ASSERT_TRUE(QDir(folder_.path()).mkdir("out"));
    write(at("out.xlsx"), "mine");
    for (const char* const taken : {"out", "out/", "out.xlsx"}) {
        const Answer answer = run({"export", path(), at(taken)});
        EXPECT_EQ(answer.status, 1);
        EXPECT_THAT(answer.errors, HasSubstr("is there already")) << taken;
    }
    EXPECT_EQ(bytesOf(at("out.xlsx")), "mine");
    EXPECT_EQ(filesIn("out").size(), 0U);
    exportTo("other");
    EXPECT_EQ(run({"import", path(), at("other")}).status, 1);
    EXPECT_EQ(rowsOf(path(), "Customers"), 60);
}

TEST_F(OutAndIn, AFolderMayBeNamedWithItsSeparator) {
    deliver();
    ASSERT_EQ(run({"export", path(), at("out/")}).status, 0);
    EXPECT_GE(filesIn("out").size(), 10U);
}

TEST_F(OutAndIn, WhatCannotBeMadeLeavesNothing) {
    deliver();
    const Answer answer = run({"export", path(), at("nowhere/out")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.errors, HasSubstr("cannot be made"));
    write(path(), QByteArray(8192, 'x'));
    EXPECT_EQ(run({"export", path(), at("out")}).status, 1);
    EXPECT_EQ(run({"export", path(), at("out.xlsx")}).status, 1);
    EXPECT_EQ(
        QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name),
        (QStringList{"Shop.mdb"}));
}

TEST_F(OutAndIn, ItIsWrittenWhileAnotherWorks) {
    deliver();
    SecondProcess other([this](const SecondProcess::Side& side) {
        dao::Database database = open(path());
        CreateWorkQueries(database);
        side.ready();
        side.untilReleased();
    });
    ASSERT_TRUE(other.waitReady());
    exportTo("out");
    exportTo("out.xlsx");
}

// ----- files that somebody has changed

TEST_F(OutAndIn, WhatIsWrongIsToldWithItsPlace) {
    deliver();
    exportTo("out");
    const auto says = [&](const char* file, const char* from, const char* to, const char* sentence) {
        const QByteArray before = bytesOf(at("out") + '/' + file);
        change(file, from, to);
        EXPECT_THAT(refusal(), HasSubstr(sentence));
        write(at("out") + '/' + file, before);
    };
    says("Customers.csv", "\r\n2,", "\r\nx,",
         "Customers.csv, line 3, column CustID: \"x\": is no whole number.");
    says("Customers.csv", "\r\n2,", "\r\n1,",
         "Customers.csv, line 3, column CustID: \"1\": stands in line 2, too.");
    says("Customers.csv", "\r\n2,", "\r\n,", "line 3, column CustID: \"\": the row has no number.");
    says("Customers.csv", "Surname", "Sirname", "Customers.csv, line 1: the table has no field \"Sirname\".");
    says("Customers.csv", "NickName", "Surname",
         "Customers.csv, line 1: the column Surname stands here twice.");
    says("Customers.csv", "\r\n2,", "\r\n2,\"", "Customers.csv, line ");
    says("Customers.csv", "\r\n2,", "\r\n2,x,", "Customers.csv, line 3: 25 fields, and the heading has 24.");
    says("Computers.csv", "\r\n1,", "\r\n1,999\r\n1,", "Computers.csv, line 2: 2 fields");
    says("Grupe.csv", "\r\n1,", "\r\n1,\xff", "Grupe.csv, line 2, column Grupa: \"\xff");
    says("Grupe.csv", "\r\n1,", ("\r\n1," + std::string(256, 'x')).c_str(), "is longer than 255 characters.");
    says("Oprema.csv", "\r\n1,1,", "\r\n1,4711,",
         "Oprema.csv, line 2, column IDGrupe: \"4711\": there is no row of that number in the table Grupe.");
    says("Counters.csv", "Computers,", "Computer,", "Counters.csv, line ");
}

TEST_F(OutAndIn, MissingAndUnknownFilesAreNamed) {
    deliver();
    exportTo("out");
    ASSERT_TRUE(QFile::rename(at("out") + "/JM.csv", at("out") + "/Units.csv"));
    EXPECT_THAT(refusal(), HasSubstr("Units.csv: a shop has no such table."));
    ASSERT_TRUE(QFile::remove(at("out") + "/Units.csv"));
    EXPECT_THAT(refusal(), HasSubstr("JM.csv: "));
    write(at("out") + "/JM.csv", "");
    EXPECT_THAT(refusal(), HasSubstr("JM.csv: it is empty"));
    const Answer answer = run({"import", at("New.mdb"), at("nowhere")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_THAT(answer.errors, HasSubstr("There is no folder"));
}

TEST_F(OutAndIn, ColumnsMayStandInAnotherOrder) {
    deliver();
    exportTo("out");
    write(at("out") + "/JM.csv", "\xEF\xBB\xBFNaziv,AID\nKom.,5\nm,2\n");
    ASSERT_EQ(run({"import", at("New.mdb"), at("out")}).status, 0);
    EXPECT_EQ(rowsOf(at("New.mdb"), "SELECT * FROM JM WHERE AID=5 AND Naziv='Kom.'"), 1);
}

TEST_F(OutAndIn, DocumentNumbersComeBackWhereTheyWere) {
    deliver("Tarvello.mdb");
    {
        dao::Database database = open(path());
        dao::TableDef numbers = database.CreateTableDef("DocNumber");
        numbers.Append(numbers.CreateField("PredracunBroj", dao::dbLong));
        numbers.Append(numbers.CreateField("RacunBroj", dao::dbLong));
        database.TableDefs().Append(numbers);
        database.Execute("INSERT INTO DocNumber (PredracunBroj, RacunBroj) VALUES (12, 34)");
        database.Close();
    }
    exportTo("out");
    ASSERT_EQ(run({"import", at("New.mdb"), at("out")}).status, 0);
    EXPECT_EQ(rowsOf(at("New.mdb"), "SELECT * FROM DocNumber WHERE PredracunBroj=12 AND RacunBroj=34"), 1);
}

// ----- on a server

TEST_F(OutAndIn, AServersShopComesHomeAndGoesBack) {
    deliver();
    addOddRows();
    exportTo("out");
    const tests::ServerDatabase database;
    const QString signpost = at("Signpost.mdb");
    dao::postgres::writeSignpost(signpost.toStdString(), database.place());
    const Answer there = run({"import", signpost, at("out")});
    ASSERT_EQ(there.status, 0) << there.errors;
    const Answer home = run({"export", signpost, at("again")});
    ASSERT_EQ(home.status, 0) << home.errors;
    EXPECT_EQ(filesIn("out"), filesIn("again"));
    EXPECT_EQ(run({"import", signpost, at("out")}).status, 1);
}

// ----- the workbook

// Opened with a program that none of us has written.
TEST_F(OutAndIn, AnotherProgramReadsTheWorkbook) {
    deliver();
    addOddRows();
    exportTo("out.xlsx");
    QProcess reader;
    reader.start("/usr/bin/python3",
                 {QString::fromUtf8(tests::kSourceFolder) + "/exchange/read_workbook.py", at("out.xlsx")});
    ASSERT_TRUE(reader.waitForFinished(120000));
    ASSERT_EQ(reader.exitCode(), 0) << reader.readAllStandardError().toStdString();
    const std::string read = reader.readAllStandardOutput().toStdString();
    EXPECT_THAT(read, HasSubstr("sheet Customers rows 62 frozen A2 bold True\n"));
    EXPECT_THAT(read, HasSubstr("sheet Services rows 301 frozen A2 bold True\n"));
    EXPECT_THAT(read, HasSubstr("Customers.B62 str O'Brien \"Obi\", Đorđe\n"));
    EXPECT_THAT(read, HasSubstr("Customers.C62 NoneType None\n"));
    EXPECT_THAT(read, HasSubstr("Customers.E62 datetime yyyy-mm-dd 1\n"));
    EXPECT_THAT(read, HasSubstr("Customers.L62 bool True\n"));
    // A number in a cell has fifteen digits; an amount of more stands there as a text.
    EXPECT_THAT(read, HasSubstr("Services.H2 str 123456789012.3457\n"));
    EXPECT_THAT(read, HasSubstr("Services.I2 float 0.1\n"));
    EXPECT_THAT(read, HasSubstr("Oprema.H2 float -2.5\n"));
}

TEST_F(OutAndIn, AWorkbookTellsWhatACellIsTooSmallFor) {
    deliver();
    {
        dao::Database database = open(path());
        dao::Recordset clients = database.OpenRecordset("Customers");
        clients.Edit();
        clients.Fields("Comments") = std::string(40000, 'x');
        clients.Update();
        database.Close();
    }
    const Answer answer = run({"export", path(), at("out.xlsx")});
    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(answer.out, StartsWith("1 text longer than a cell takes"));
}

}  // namespace
