#include "platform/report/rows.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/dao/dao.h"
#include "platform/system/trap.h"
#include "tests/platform/report/sample.h"

// The rows of a record set as a report takes them, also where they are not what its design asks for.
namespace {

struct ReportRows : ::testing::Test {
    void SetUp() override {
        database = dao::DBEngine::CreateDatabase((folder.path() + "/r.mdb").toStdString(), ";pwd=report");
        dao::TableDef table = database.CreateTableDef("T");
        table.Append({"Naziv", dao::dbText, 50});
        database.TableDefs().Append(table);
        set = database.OpenRecordset("SELECT * FROM T");
        for (const char* name : {"Mis", "Ekran", "Disk"}) {
            set.AddNew();
            set.Fields("Naziv") = name;
            set.Update();
        }
    }
    void TearDown() override {
        set.Close();
        database.Close();
    }
    static QString namesOf(report::RowSource& rows) {
        QStringList names;
        for (rows.rewind(); rows.next();) {
            names.append(QString::fromStdString(rows.value("Naziv").asText()));
        }
        return names.join(' ');
    }
    QTemporaryDir folder;
    dao::Database database;
    dao::Recordset set;
    platform::Trap failure;
};

int errorOf(const std::function<void()>& work) {
    platform::Trap step;
    step(work);
    return step.number();
}

TEST_F(ReportRows, TheyBeginWithTheFirstHoweverOften) {
    const auto rows = report::rowsOf(set);
    set.MoveLast();
    EXPECT_EQ(namesOf(*rows), "Mis Ekran Disk");
    EXPECT_EQ(namesOf(*rows), "Mis Ekran Disk");
    EXPECT_EQ(rows->count(), 3);
}

TEST_F(ReportRows, ALackingFieldIsAnErrorUnlessTheReportCanDoWithoutIt) {
    const auto strict = report::rowsOf(set);
    strict->rewind();
    ASSERT_TRUE(strict->next());
    EXPECT_EQ(errorOf([&] { strict->value("Cena"); }), 3265);

    const auto content = report::rowsOf(set, {.lacking = true});
    content->rewind();
    ASSERT_TRUE(content->next());
    EXPECT_TRUE(content->value("Cena").isNull());
    EXPECT_TRUE(content->value("Cena").isNull());
    EXPECT_EQ(content->value("Naziv").asText(), "Mis");
    // Only the field is forgiven.
    content->next();
    content->next();
    content->next();
    EXPECT_EQ(errorOf([&] { content->value("Naziv"); }), 3021);
}

TEST_F(ReportRows, RowsThatCannotBeReadOnAreThrown) {
    const auto rows = report::rowsOf(set);
    rows->rewind();
    ASSERT_TRUE(rows->next());
    set.Close();
    EXPECT_EQ(errorOf([&] { rows->next(); }), 3420);
    EXPECT_EQ(errorOf([&] { rows->count(); }), 3420);
}

TEST_F(ReportRows, OrTheyEndThereAndTheFailureIsNoted) {
    const auto rows = report::rowsOf(set, {.failure = &failure});
    rows->rewind();
    ASSERT_TRUE(rows->next());
    EXPECT_FALSE(failure.failed());
    EXPECT_TRUE(rows->value("Cena").isNull());
    EXPECT_EQ(failure.number(), 3265);
    rows->rewind();
    EXPECT_FALSE(failure.failed()) << "a new run knows nothing of the one before";
    ASSERT_TRUE(rows->next());
    set.Close();
    EXPECT_FALSE(rows->next());
    EXPECT_EQ(failure.number(), 3420);
    EXPECT_EQ(rows->count(), 0);
}

TEST_F(ReportRows, ASetThatWasNeverOpenedHasNoRows) {
    const auto rows = report::rowsOf({}, {.failure = &failure});
    EXPECT_EQ(namesOf(*rows), "");
    EXPECT_EQ(rows->count(), 0);
    EXPECT_TRUE(rows->value("Naziv").isNull());
    EXPECT_FALSE(failure.failed());
}

}  // namespace
