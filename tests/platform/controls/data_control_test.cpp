#include "platform/controls/data_control.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDateEdit>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "platform/controls/date_field.h"
#include "platform/dao/dbengine.h"
#include "platform/dao/error.h"
#include "platform/system/dates.h"
#include "platform/system/trap.h"

namespace {

using platform::DataControl;
using platform::DateField;
using platform::Selection;

constexpr char kConnect[] = ";Pwd=secret";
constexpr dao::Date kEmptyDay{1.0};

template <typename Step>
int errorOf(Step step) {
    platform::Trap trap;
    trap(step);
    return trap.number();
}

// A client file of three: Antic, Babic, Cvetic.
class DataControlTest : public ::testing::Test {
 protected:
    void SetUp() override {
        file = folder.filePath("Shop.mdb");
        dao::Database database = dao::DBEngine::CreateDatabase(file.toStdString(), kConnect);
        dao::TableDef table = database.CreateTableDef("Customers");
        dao::FieldDef key = table.CreateField("CustID", dao::dbLong);
        key.counter = true;
        table.Append(key);
        table.Append(table.CreateField("Surname", dao::dbText, 20));
        table.Append(table.CreateField("NickName", dao::dbText, 20));
        table.Append(table.CreateField("Comments", dao::dbMemo));
        table.Append(table.CreateField("FirmAddress", dao::dbBoolean));
        table.Append(table.CreateField("BirthDate", dao::dbDate));
        database.TableDefs().Append(table);
        for (const char* surname : {"Antic", "Babic", "Cvetic"}) {
            dao::Recordset rows = database.OpenRecordset("Customers");
            rows.AddNew();
            rows.Fields("Surname") = surname;
            rows.Fields("FirmAddress") = surname[0] == 'B';
            if (surname[0] == 'B') {
                rows.Fields("Comments") = "first line\nsecond line";
                rows.Fields("BirthDate") = platform::fromQDate(QDate(1975, 4, 21));
            }
            if (surname[0] == 'C') {
                rows.Fields("BirthDate") = kEmptyDay;
            }
            rows.Update();
        }
        database.Close();
        data.DatabaseName = file;
        data.Connect = kConnect;
        data.selection = Selection::statement("SELECT * FROM Customers ORDER BY CustID");
        data.fields().bind(&surnameLine, "Surname");
        data.fields().bind(&nickLine, "NickName");
        data.fields().bind(&comments, "Comments");
        data.fields().bind(&firm, "FirmAddress");
        data.fields().bind(&birth, "BirthDate");
    }
    void TearDown() override {
        data.Close();
        other.Close();
    }
    // The file as a colleague at another workstation has it open.
    dao::Database& colleague() {
        if (!other) {
            other = dao::DBEngine::OpenDatabase(file.toStdString(), false, false, kConnect);
        }
        return other;
    }
    dao::Value stored(int number, const char* field) {
        dao::Recordset rows = colleague().OpenRecordset(
            "SELECT * FROM Customers WHERE CustID=" + std::to_string(number), dao::dbOpenSnapshot);
        return rows[field];
    }
    int rowsStored() { return static_cast<int>(colleague().OpenRecordset("Customers").RecordCount()); }
    bool allEmpty() const {
        return surnameLine.text().isEmpty() && nickLine.text().isEmpty() &&
               comments.toPlainText().isEmpty() && !firm.isChecked() && !birth.value();
    }

    QTemporaryDir folder;
    QString file;
    dao::Database other;
    DataControl data;
    QLineEdit surnameLine, nickLine;
    QPlainTextEdit comments;
    QCheckBox firm;
    DateField birth{true};
};

TEST_F(DataControlTest, RefreshOpensTheFileAndShowsTheFirstRow) {
    QSignalSpy shown(&data, &DataControl::repositioned);
    EXPECT_FALSE(data.isOpen());
    data.Refresh();
    EXPECT_TRUE(data.isOpen());
    EXPECT_EQ(surnameLine.text(), "Antic");
    EXPECT_EQ(data.Recordset().RecordCount(), 3);
    EXPECT_EQ(shown.count(), 1);
}

TEST_F(DataControlTest, EachKindOfWidgetShowsItsField) {
    data.Refresh();
    data.MoveNext();
    EXPECT_EQ(surnameLine.text(), "Babic");
    EXPECT_EQ(nickLine.text(), "") << "Null";
    EXPECT_EQ(comments.toPlainText(), "first line\nsecond line");
    EXPECT_TRUE(firm.isChecked());
    EXPECT_EQ(birth.value(), QDate(1975, 4, 21));
    data.MoveNext();
    EXPECT_EQ(comments.toPlainText(), "");
    EXPECT_FALSE(firm.isChecked());
    EXPECT_EQ(birth.value(), std::nullopt) << "a date left empty shows as none";
}

TEST_F(DataControlTest, EveryMoveShowsItsRow) {
    data.Refresh();
    data.MoveLast();
    EXPECT_EQ(surnameLine.text(), "Cvetic");
    const dao::Bookmark place = data.Recordset().Bookmark();
    data.MoveFirst();
    EXPECT_EQ(surnameLine.text(), "Antic");
    data.Move(1);
    EXPECT_EQ(surnameLine.text(), "Babic");
    data.setBookmark(place);
    EXPECT_EQ(surnameLine.text(), "Cvetic");
    data.FindFirst("CustID=2");
    EXPECT_EQ(surnameLine.text(), "Babic");
}

TEST_F(DataControlTest, AMoveBehindTheLastRowShowsNothing) {
    data.Refresh();
    data.MoveLast();
    data.MoveNext();
    EXPECT_TRUE(data.Recordset().EOF());
    EXPECT_TRUE(allEmpty());
    EXPECT_EQ(errorOf([&] { data.MoveNext(); }), dao::errNoCurrentRecord);
    data.MoveFirst();
    EXPECT_EQ(surnameLine.text(), "Antic");
}

TEST_F(DataControlTest, AnEmptyFileShowsNothing) {
    data.selection = Selection::statement("SELECT * FROM Customers WHERE CustID=-1");
    data.Refresh();
    EXPECT_TRUE(data.isOpen());
    EXPECT_TRUE(allEmpty());
    EXPECT_EQ(errorOf([&] { data.MoveLast(); }), dao::errNoCurrentRecord);
}

TEST_F(DataControlTest, ASearchThatFindsNothingLeavesRowAndFieldsAlone) {
    data.Refresh();
    data.MoveNext();
    surnameLine.setText("typed");
    data.FindFirst("CustID=77");
    EXPECT_TRUE(data.Recordset().NoMatch());
    EXPECT_EQ(surnameLine.text(), "typed");
    EXPECT_TRUE(data.fields().isChanged(&surnameLine));
    EXPECT_EQ(data.Recordset()["CustID"].asLong(), 2);
}

TEST_F(DataControlTest, AMoveWritesNothingThatWasTyped) {
    data.Refresh();
    surnameLine.setText("typed");
    data.MoveNext();
    data.MoveFirst();
    EXPECT_EQ(surnameLine.text(), "Antic");
    EXPECT_EQ(stored(1, "Surname").asText(), "Antic");
}

TEST_F(DataControlTest, AMoveThatFailsKeepsWhatWasTyped) {
    data.Refresh();
    surnameLine.setText("typed");
    data.Recordset().Close();
    EXPECT_NE(errorOf([&] { data.MoveNext(); }), 0);
    EXPECT_EQ(surnameLine.text(), "typed");
    EXPECT_TRUE(data.fields().isChanged(&surnameLine));
}

TEST_F(DataControlTest, OnlyAPersonsChangeMarksAField) {
    data.Refresh();
    for (QWidget* widget : {static_cast<QWidget*>(&surnameLine), static_cast<QWidget*>(&comments),
                            static_cast<QWidget*>(&firm), static_cast<QWidget*>(&birth)}) {
        EXPECT_FALSE(data.fields().isChanged(widget));
    }
    surnameLine.setText("A");
    comments.setPlainText("B");
    firm.click();
    birth.setValue(QDate(2000, 1, 1));
    for (QWidget* widget : {static_cast<QWidget*>(&surnameLine), static_cast<QWidget*>(&comments),
                            static_cast<QWidget*>(&firm), static_cast<QWidget*>(&birth)}) {
        EXPECT_TRUE(data.fields().isChanged(widget));
    }
    EXPECT_FALSE(data.fields().isChanged(&nickLine));
    data.MoveNext();
    EXPECT_FALSE(data.fields().isChanged(&surnameLine));
    data.fields().setChanged(&surnameLine, true);
    EXPECT_TRUE(data.fields().isChanged(&surnameLine));
    const QLineEdit stranger;
    EXPECT_FALSE(data.fields().isChanged(&stranger));
}

TEST_F(DataControlTest, WhileARowIsShownNoFieldCountsAsChanged) {
    data.Refresh();
    surnameLine.setText("A");
    comments.setPlainText("B");
    bool any = false;
    const QObject test;
    QObject::connect(&surnameLine, &QLineEdit::textChanged, &test, [&] {
        any |= data.fields().isChanged(&surnameLine) || data.fields().isChanged(&comments);
    });
    data.MoveNext();
    EXPECT_FALSE(any);
}

TEST_F(DataControlTest, UpdateRecordWritesTheFieldsThatWereTouched) {
    data.Refresh();
    data.MoveNext();
    surnameLine.setText("Petrović");
    firm.click();
    birth.setValue(QDate(1980, 2, 29));
    comments.setPlainText("one\ntwo");
    data.UpdateRecord();
    EXPECT_EQ(stored(2, "Surname").asText(), "Petrović");
    EXPECT_FALSE(stored(2, "FirmAddress").asBool());
    EXPECT_EQ(platform::toQDate(stored(2, "BirthDate").asDate()), QDate(1980, 2, 29));
    EXPECT_EQ(stored(2, "Comments").asText(), "one\ntwo");
    EXPECT_FALSE(data.fields().isChanged(&surnameLine));
    EXPECT_EQ(data.Recordset()["Surname"].asText(), "Petrović");
    firm.click();
    data.UpdateRecord();
    EXPECT_TRUE(stored(2, "FirmAddress").asBool());
}

TEST_F(DataControlTest, AFieldNobodyTouchedKeepsAColleaguesChange) {
    data.Refresh();
    surnameLine.setText("Antić");
    colleague().Execute("UPDATE Customers SET NickName='Toza' WHERE CustID=1");
    data.UpdateRecord();
    EXPECT_EQ(stored(1, "Surname").asText(), "Antić");
    EXPECT_EQ(stored(1, "NickName").asText(), "Toza");
}

TEST_F(DataControlTest, AnEmptyTextLeavesANullAndReplacesAText) {
    data.Refresh();
    nickLine.setText("x");
    nickLine.setText("");
    data.UpdateRecord();
    EXPECT_TRUE(stored(1, "NickName").isNull());
    nickLine.setText("Toza");
    data.UpdateRecord();
    nickLine.setText("");
    data.UpdateRecord();
    EXPECT_FALSE(stored(1, "NickName").isNull());
    EXPECT_EQ(stored(1, "NickName").asText(), "");
}

TEST_F(DataControlTest, ADateTakenAwayIsWrittenAsTheEmptyDate) {
    data.Refresh();
    data.MoveNext();
    birth.setValue(std::nullopt);
    data.UpdateRecord();
    EXPECT_EQ(stored(2, "BirthDate").asDate(), kEmptyDay);
    data.UpdateControls();
    EXPECT_EQ(birth.value(), std::nullopt);
}

TEST_F(DataControlTest, ADateStillBeingTypedIsWritten) {
    data.Refresh();
    birth.show();
    birth.edit()->selectAll();
    QTest::keyClicks(birth.edit(), "7/5/2005");
    data.UpdateRecord();
    EXPECT_EQ(platform::toQDate(stored(1, "BirthDate").asDate()), QDate(2005, 7, 5));
}

TEST_F(DataControlTest, UpdateControlsThrowsAwayWhatWasTyped) {
    data.Refresh();
    surnameLine.setText("typed");
    data.UpdateControls();
    EXPECT_EQ(surnameLine.text(), "Antic");
    EXPECT_FALSE(data.fields().isChanged(&surnameLine));
}

TEST_F(DataControlTest, AddingEmptiesTheFieldsAndWritesANewRow) {
    data.Refresh();
    data.MoveNext();
    QSignalSpy shown(&data, &DataControl::repositioned);
    data.AddNew();
    EXPECT_TRUE(allEmpty());
    EXPECT_EQ(shown.count(), 1);
    EXPECT_FALSE(data.fields().isChanged(&surnameLine));
    surnameLine.setText("Djokic");
    data.UpdateRecord();
    EXPECT_EQ(rowsStored(), 4);
    EXPECT_EQ(stored(4, "Surname").asText(), "Djokic");
    EXPECT_TRUE(stored(4, "NickName").isNull());
    EXPECT_FALSE(stored(4, "FirmAddress").asBool());
    EXPECT_EQ(stored(4, "BirthDate").asDate(), kEmptyDay) << "a date left empty is never Null";
    data.setBookmark(data.Recordset().LastModified());
    EXPECT_EQ(surnameLine.text(), "Djokic");
}

TEST_F(DataControlTest, AFieldSetOnTheRecordSetWhileAddingIsKept) {
    data.Refresh();
    data.AddNew();
    data.Recordset().Fields("NickName") = "set by the program";
    surnameLine.setText("Djokic");
    data.UpdateRecord();
    EXPECT_EQ(stored(4, "NickName").asText(), "set by the program");
}

TEST_F(DataControlTest, CancellingAnAdditionShowsTheOldRow) {
    data.Refresh();
    data.MoveNext();
    data.AddNew();
    surnameLine.setText("Djokic");
    data.CancelUpdate();
    EXPECT_EQ(surnameLine.text(), "Babic");
    EXPECT_EQ(rowsStored(), 3);
}

TEST_F(DataControlTest, MovingAwayDropsAnAddition) {
    data.Refresh();
    data.AddNew();
    surnameLine.setText("Djokic");
    data.MoveLast();
    EXPECT_EQ(surnameLine.text(), "Cvetic");
    EXPECT_EQ(rowsStored(), 3);
}

TEST_F(DataControlTest, AddingToAnEmptySetWorks) {
    data.selection = Selection::statement("SELECT * FROM Customers WHERE CustID=-1");
    data.Refresh();
    data.AddNew();
    surnameLine.setText("Djokic");
    data.UpdateRecord();
    EXPECT_EQ(rowsStored(), 4);
}

TEST_F(DataControlTest, AfterADeletionTheFieldsShowTheRowUntilTheNextMove) {
    data.Refresh();
    data.MoveNext();
    data.Delete();
    EXPECT_EQ(surnameLine.text(), "Babic");
    EXPECT_EQ(rowsStored(), 2);
    data.MoveNext();
    EXPECT_EQ(surnameLine.text(), "Cvetic");
}

TEST_F(DataControlTest, ARowThatAColleagueDeletedShowsNothingAndCannotBeWritten) {
    data.Refresh();
    data.MoveLast();
    colleague().Execute("DELETE * FROM Customers WHERE CustID=2");
    dao::DBEngine::Idle(dao::dbRefreshCache);
    surnameLine.setText("typed");
    QSignalSpy shown(&data, &DataControl::repositioned);
    EXPECT_EQ(errorOf([&] { data.Move(-1); }), 0);
    EXPECT_TRUE(allEmpty());
    EXPECT_EQ(shown.count(), 1);
    surnameLine.setText("typed");
    EXPECT_EQ(errorOf([&] { data.UpdateRecord(); }), dao::errRecordDeleted);
    EXPECT_EQ(surnameLine.text(), "typed");
    EXPECT_TRUE(data.fields().isChanged(&surnameLine));
}

TEST_F(DataControlTest, AFailedWriteKeepsWhatWasTypedAndDropsTheEdit) {
    data.Refresh();
    surnameLine.setMaxLength(100);
    surnameLine.setText(QString(30, 'x'));
    EXPECT_EQ(errorOf([&] { data.UpdateRecord(); }), dao::errFieldTooSmall);
    EXPECT_EQ(surnameLine.text().size(), 30);
    EXPECT_TRUE(data.fields().isChanged(&surnameLine));
    EXPECT_EQ(data.Recordset().EditMode(), dao::Recordset::EditModeKind::None);
    EXPECT_EQ(stored(1, "Surname").asText(), "Antic");
    surnameLine.setText("short");
    data.UpdateRecord();
    EXPECT_EQ(stored(1, "Surname").asText(), "short");
}

TEST_F(DataControlTest, ALineTakesNoMoreThanItsFieldHolds) {
    data.Refresh();
    EXPECT_EQ(surnameLine.maxLength(), 20);
    QTest::keyClicks(&surnameLine, QString(50, 'y'));
    EXPECT_EQ(surnameLine.text().size(), 20);
    data.UpdateRecord();
    EXPECT_EQ(stored(1, "Surname").asText().size(), 20U);
}

TEST_F(DataControlTest, ANewSourceTakesEffectAtRefresh) {
    data.Refresh();
    data.selection = Selection::statement("SELECT * FROM Customers WHERE CustID=3");
    EXPECT_EQ(surnameLine.text(), "Antic");
    data.Refresh();
    EXPECT_EQ(surnameLine.text(), "Cvetic");
    EXPECT_EQ(data.Recordset().RecordCount(), 1);
}

TEST_F(DataControlTest, WithoutASourceOnlyTheFileIsOpened) {
    data.selection = {};
    data.Refresh();
    EXPECT_FALSE(data.isOpen());
    EXPECT_TRUE(static_cast<bool>(data.Database()));
    EXPECT_EQ(errorOf([&] { data.MoveFirst(); }), dao::errObjectClosed);
}

TEST_F(DataControlTest, AFailedRefreshLeavesNoRecordSetAndEmptyFields) {
    data.Refresh();
    QSignalSpy shown(&data, &DataControl::repositioned);
    data.selection = Selection::statement("SELECT * FROM NoSuchTable");
    EXPECT_EQ(errorOf([&] { data.Refresh(); }), dao::errUnknownObject);
    EXPECT_FALSE(data.isOpen());
    EXPECT_TRUE(allEmpty());
    EXPECT_EQ(shown.count(), 1);
    data.DatabaseName = folder.filePath("Missing.mdb");
    EXPECT_EQ(errorOf([&] { data.Refresh(); }), dao::errFileNotFound);
    data.DatabaseName = file;
    data.selection = Selection::statement("SELECT * FROM Customers");
    data.Refresh();
    EXPECT_EQ(surnameLine.text(), "Antic");
}

TEST_F(DataControlTest, AnotherFileNameOpensAnotherFile) {
    data.Refresh();
    const QString copy = folder.filePath("Copy.mdb");
    dao::DBEngine::CopyDatabase(file.toStdString(), copy.toStdString());
    data.DatabaseName = copy;
    data.Refresh();
    EXPECT_EQ(QString::fromStdString(data.Database().Name()), copy);
    surnameLine.setText("in the copy");
    data.UpdateRecord();
    EXPECT_EQ(stored(1, "Surname").asText(), "Antic");
}

TEST_F(DataControlTest, ClosingEmptiesTheFields) {
    data.Refresh();
    data.Close();
    EXPECT_FALSE(data.isOpen());
    EXPECT_FALSE(static_cast<bool>(data.Database()));
    EXPECT_TRUE(allEmpty());
    data.Close();
    data.Refresh();
    EXPECT_EQ(surnameLine.text(), "Antic");
}

TEST_F(DataControlTest, AWidgetThatIsGoneIsPassedOver) {
    auto* passing = new QLineEdit;
    data.fields().bind(passing, "NickName");
    data.Refresh();
    delete passing;
    data.MoveNext();
    surnameLine.setText("still written");
    data.UpdateRecord();
    EXPECT_EQ(stored(2, "Surname").asText(), "still written");
}

}  // namespace
