#include "documents/document_number.h"

#include <memory>
#include <set>
#include <vector>

#include "support/fixture.h"
#include "support/second_process.h"

using document_number::Kind;
using document_number::Refusal;

namespace {

struct DocumentNumberTest : DeliveredFixture {
    void TearDown() override {
        DeliveredFixture::TearDown();
        dao::DBEngine::setLockTimeout(10'000);
    }
    void makeTableWithoutRow() {
        dao::Database& database = openDatabase();
        dao::TableDef table = database.CreateTableDef("DocNumber");
        table.Append(table.CreateField("PredracunBroj", dao::dbLong));
        table.Append(table.CreateField("RacunBroj", dao::dbLong));
        database.TableDefs().Append(table);
        closeDatabases();
    }
    int stored(const std::string& field) {
        dao::Recordset rows = openDatabase().OpenRecordset("DocNumber", dao::dbOpenSnapshot);
        const int number = rows[field].asLong();
        rows.Close();
        closeDatabases();
        return number;
    }
    bool tableIsThere() {
        bool found = false;
        dao::TableDefsCollection tables = openDatabase().TableDefs();
        for (int i = 0; i < tables.Count(); ++i) {
            found = found || tables[i].Name() == "DocNumber";
        }
        closeDatabases();
        return found;
    }
};

}  // namespace

TEST_F(DocumentNumberTest, TheFirstQuestionMakesTheTableAndItsRow) {
    ASSERT_FALSE(tableIsThere());
    EXPECT_EQ(document_number::last(Kind::ProForma), 0);
    ASSERT_TRUE(tableIsThere());
    EXPECT_EQ(countRows("DocNumber"), 1);
    EXPECT_EQ(stored("PredracunBroj"), 0);
    EXPECT_EQ(stored("RacunBroj"), 0);
    EXPECT_EQ(document_number::last(Kind::Invoice), 0);
    EXPECT_EQ(countRows("DocNumber"), 1);
}

TEST_F(DocumentNumberTest, TheFirstDocumentGetsNumberOne) {
    document_number::last(Kind::Invoice);
    const document_number::Change change = document_number::change(Kind::Invoice);
    EXPECT_EQ(change.number, 1);
    EXPECT_EQ(change.refusal, Refusal::None);
    EXPECT_EQ(stored("RacunBroj"), 1);
}

TEST_F(DocumentNumberTest, EachKindCountsForItself) {
    document_number::last(Kind::Invoice);
    EXPECT_EQ(document_number::change(Kind::Invoice).number, 1);
    EXPECT_EQ(document_number::change(Kind::Invoice).number, 2);
    EXPECT_EQ(document_number::change(Kind::ProForma).number, 1);
    EXPECT_EQ(document_number::last(Kind::Invoice), 2);
    EXPECT_EQ(document_number::last(Kind::ProForma), 1);
}

TEST_F(DocumentNumberTest, AskingWithWritingBackChangesNothing) {
    document_number::last(Kind::Invoice);
    document_number::change(Kind::Invoice, 41);
    EXPECT_EQ(document_number::last(Kind::Invoice, true), 41);
    EXPECT_EQ(stored("RacunBroj"), 41);
    EXPECT_EQ(stored("PredracunBroj"), 0);
}

TEST_F(DocumentNumberTest, NinetyNineByHandMakesTheNextOneHundred) {
    document_number::last(Kind::ProForma);
    EXPECT_EQ(document_number::change(Kind::ProForma, 99).number, 99);
    EXPECT_EQ(document_number::change(Kind::ProForma).number, 100);
}

TEST_F(DocumentNumberTest, WithoutTheTableNoNumberIsTaken) {
    const document_number::Change change = document_number::change(Kind::ProForma);
    EXPECT_EQ(change.number, -1);
    EXPECT_EQ(change.refusal, Refusal::NoTable);
    EXPECT_FALSE(tableIsThere());
    EXPECT_EQ(document_number::change(Kind::ProForma, 5).refusal, Refusal::NoTable);
}

TEST_F(DocumentNumberTest, WithoutItsRowNoNumberIsTaken) {
    makeTableWithoutRow();
    const document_number::Change change = document_number::change(Kind::Invoice);
    EXPECT_EQ(change.number, -1);
    EXPECT_EQ(change.refusal, Refusal::NoRow);
    EXPECT_EQ(document_number::last(Kind::Invoice), 0);
    EXPECT_EQ(document_number::change(Kind::Invoice).number, 1);
}

TEST_F(DocumentNumberTest, AColleagueInTheFileRefusesANumberByHand) {
    document_number::last(Kind::Invoice);
    document_number::change(Kind::Invoice, 7);
    const std::string file = databaseFile().toStdString();
    SecondProcess colleague([&](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file, false, false, connectText().toStdString());
        side.ready();
        side.untilReleased();
    });
    ASSERT_TRUE(colleague.waitReady());
    const document_number::Change refused = document_number::change(Kind::Invoice, 99);
    EXPECT_EQ(refused.number, -1);
    EXPECT_EQ(refused.refusal, Refusal::InUse);
    EXPECT_EQ(document_number::last(Kind::Invoice), 7);
    // The running number needs nobody's absence.
    EXPECT_EQ(document_number::change(Kind::Invoice).number, 8);
    colleague.release();
    EXPECT_EQ(colleague.wait(), 0);
    EXPECT_EQ(document_number::change(Kind::Invoice, 99).number, 99);
}

TEST_F(DocumentNumberTest, OurOwnWindowsDoNotRefuseANumberByHand) {
    document_number::last(Kind::Invoice);
    openDatabase();
    EXPECT_EQ(document_number::change(Kind::Invoice, 12).number, 12);
}

TEST_F(DocumentNumberTest, ALockHeldTooLongIsAnErrorAndTakesNoNumber) {
    document_number::last(Kind::Invoice);
    const std::string file = databaseFile().toStdString();
    SecondProcess colleague([&](const SecondProcess::Side& side) {
        dao::Database database = dao::DBEngine::OpenDatabase(file, false, false, connectText().toStdString());
        dao::Recordset rows = database.OpenRecordset("DocNumber");
        rows.Edit();
        side.ready();
        side.untilReleased();
        rows.CancelUpdate();
    });
    ASSERT_TRUE(colleague.waitReady());
    dao::DBEngine::setLockTimeout(200);
    try {
        document_number::change(Kind::Invoice);
        ADD_FAILURE() << "the lock was not heeded";
    } catch (const dao::Error& error) {
        EXPECT_EQ(error.Number(), dao::errLocked);
    }
    colleague.release();
    EXPECT_EQ(colleague.wait(), 0);
    EXPECT_EQ(document_number::change(Kind::Invoice).number, 1);
}

// A busy Monday: eight workstations print a hundred invoices each. The tax office wants every number once.
TEST_F(DocumentNumberTest, EightWorkstationsNeverShareANumberAndLeaveNoneOut) {
    constexpr int kStations = 8;
    constexpr int kEach = 100;
    document_number::last(Kind::Invoice);
    std::vector<std::unique_ptr<SecondProcess>> stations;
    for (int station = 0; station < kStations; ++station) {
        const QString notes = path(QStringLiteral("numbers%1.txt").arg(station));
        stations.push_back(std::make_unique<SecondProcess>([notes](const SecondProcess::Side& side) {
            side.ready();
            side.untilReleased();
            QFile file(notes);
            if (!file.open(QIODevice::WriteOnly)) {
                throw std::runtime_error("no notes");
            }
            for (int i = 0; i < kEach; ++i) {
                file.write(QByteArray::number(document_number::change(Kind::Invoice).number) + '\n');
            }
        }));
    }
    for (auto& station : stations) {
        ASSERT_TRUE(station->waitReady());
    }
    for (auto& station : stations) {
        station->release();
    }
    for (auto& station : stations) {
        ASSERT_EQ(station->wait(), 0);
    }

    std::set<int> taken;
    int count = 0;
    for (int station = 0; station < kStations; ++station) {
        QFile file(path(QStringLiteral("numbers%1.txt").arg(station)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        int before = 0;
        for (const QByteArray& line : file.readAll().trimmed().split('\n')) {
            EXPECT_GT(line.toInt(), before);
            before = line.toInt();
            taken.insert(before);
            ++count;
        }
    }
    EXPECT_EQ(count, kStations * kEach);
    EXPECT_EQ(static_cast<int>(taken.size()), kStations * kEach);
    EXPECT_EQ(*taken.begin(), 1);
    EXPECT_EQ(*taken.rbegin(), kStations * kEach);
    EXPECT_EQ(document_number::last(Kind::Invoice), kStations * kEach);
}
