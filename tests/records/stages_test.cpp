#include "records/stages.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <memory>

#include "platform/controls/date_field.h"
#include "platform/system/trap.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"
#include "records/main_view.h"
#include "records/record_editing.h"
#include "records/stage_reading.h"
#include "records/typed_entry.h"
#include "support/fixture.h"

namespace {

using platform::BoxAnswer;

// Stands where the main window stands, and writes down what it was told.
class NotedWindow final : public MainView {
 public:
    BoxAnswer box(const QString& text, platform::BoxIcon, platform::BoxButtons, BoxAnswer) override {
        said.append(text);
        return answer;
    }
    void SetStatusText(const QString& text, bool) override { status.append(text); }
    void setWaiting(bool) override {}
    std::unique_ptr<WorkProgress> progress(const QString&, int, int) override { return nullptr; }
    void setTabCaption(int stage, const QString& caption) override { captions[stage] = caption; }
    void showFirstStage() override {}
    void UpdateToolbarState() override {}
    void UpdateServiceButtons() override {}
    void showFilter(int) override {}
    void showNoFilter() override {}
    void FillServiceList(const QString&) override { ++fillings; }
    QString selectedService() const override { return {}; }
    void CloseServiceRows() override {}
    void LoadServiceTypes() override {}
    void showUnit() override {}
    void EditService(int) override {}
    void DeleteSelectedService() override {}

    BoxAnswer answer = BoxAnswer::Yes;
    QStringList said, status;
    QHash<int, QString> captions;
    int fillings = 0;
};

// The stages over a shop's file, with fields and selectors of their own instead of a window.
class StagesWithoutWindow : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        anton = addClient("Antic", "Ana");
        peric = addClient("Peric", "Pera");
        desk = addComputer(peric, "DESK");
        for (int i = 0; i < EntryFields::kCount; ++i) {
            fields.texts[static_cast<size_t>(i)] = new QLineEdit(&pane);
        }
        fields.texts[18] = new QPlainTextEdit(&pane);
        fields.texts[36] = new QPlainTextEdit(&pane);
        for (platform::DateField*& date : fields.dates) {
            date = new platform::DateField(true, &pane);
        }
        fields.firm = new QCheckBox(&pane);
        for (int i = 0; i < kSelectorCount; ++i) {
            stages[i].entries.setSelector(new platform::Selector(&pane));
        }
        for (const Stage& stage : stages) {
            for (const EntryRow& row : stage.pane.rows()) {
                stage.data().fields().bind(fields.of(row), QLatin1String(row.field));
            }
        }
    }
    void TearDown() override {
        for (const Stage& stage : stages) {
            stage.data().Close();
        }
        DeliveredFixture::TearDown();
    }
    // All clients and all computers, straight from the tables.
    void read() {
        closeDatabases();
        for (int i = 0; i < kSelectorCount; ++i) {
            stages[i].data().DatabaseName = databaseFile();
            stages[i].data().Connect = connectText();
            stages[i].records.refresh(platform::Selection::all(QLatin1String(stages[i].facts().table)));
        }
        reading.FillClientCombo();
        reading.FillComputerCombo();
    }
    void type(int index, const QString& text) { fields.setText(index, text); }
    QString surnameOf(int client) {
        return QString::fromStdString(valueOf("Customers", "CustID", client, "Surname").asText());
    }

    int anton = 0, peric = 0, desk = 0;
    QWidget pane;
    EntryFields fields;
    ListOrder order;
    NotedWindow window;
    Stages stages{fields, order, window, &pane};
    StageReading reading{stages, window};
    RecordEditing editing{stages, fields, window};
};

TEST_F(StagesWithoutWindow, ReadTheStoredQueriesOfThisCopy) {
    stages.QuerySuffix = 3;
    const char* queries[] = {"QDCustomers3", "QDComputers3", "QDServices3"};
    for (int i = 0; i < kStageCount; ++i) {
        EXPECT_EQ(stages.query(i), queries[i]);
        EXPECT_EQ(stages.all(i).text(), QStringLiteral("SELECT * FROM ") + queries[i]);
    }
    EXPECT_EQ(stages.all(kServices, platform::Selection::Words::Initials).text(),
              "Select * FROM QDServices3");
}

TEST_F(StagesWithoutWindow, AStageShowsWhatBelongsToTheOneBefore) {
    EXPECT_EQ(stages.computersOfClient().text(), "SELECT * FROM QDComputers0 WHERE CustID=-1");
    EXPECT_EQ(stages.servicesOfComputer().text(), "SELECT * FROM QDServices0 WHERE MachineID=-1");
    stages[kClients].entries.selector().setEntries({{"Antic, Ana", 7}, {"Peric, Pera", 4}});
    stages[kComputers].entries.selector().setEntries({{"DESK", 12}});
    stages[kClients].entries.select(1);
    stages[kComputers].entries.select(0);
    EXPECT_EQ(stages.computersOfClient().text(), "SELECT * FROM QDComputers0 WHERE CustID=4");
    EXPECT_EQ(stages.servicesOfComputer().text(), "SELECT * FROM QDServices0 WHERE MachineID=12");
    order.LVWSorted = true;
    order.LVWSortField = QStringLiteral("Paid");
    order.LVWSortOrder = QStringLiteral("DESC");
    EXPECT_EQ(stages.computersOfClient().text(), "SELECT * FROM QDComputers0 WHERE CustID=4");
    EXPECT_EQ(stages.servicesOfComputer().text(),
              "SELECT * FROM QDServices0 WHERE MachineID=12 ORDER BY Paid DESC");
}

TEST_F(StagesWithoutWindow, FillingShowsTheFirstRecordAndWritesItOnTheTab) {
    read();
    EXPECT_EQ(window.captions.value(1), "Antic, Ana");
    EXPECT_EQ(window.captions.value(2), "DESK");
    EXPECT_EQ(stages[kClients].chosen(), anton);
    EXPECT_EQ(stages[kClients].records.key(), anton);
    EXPECT_EQ(stages[kClients].entries.remembered, 0);
    EXPECT_FALSE(stages[kClients].pane.isLocked());
    EXPECT_FALSE(stages.LoadingList);
}

TEST_F(StagesWithoutWindow, AnEmptyStageIsLockedUnderItsUsualCaption) {
    read();
    stages[kComputers].records.refresh(platform::Selection::all("Computers").matching("CustID=-1"));
    reading.FillComputerCombo();
    EXPECT_TRUE(stages[kComputers].pane.isLocked());
    EXPECT_TRUE(stages[kComputers].entries.isEmpty());
    EXPECT_EQ(window.captions.value(2), GetResString(102));
    EXPECT_TRUE(qobject_cast<QLineEdit*>(fields.texts[kMachineName])->isReadOnly());
    EXPECT_FALSE(qobject_cast<QLineEdit*>(fields.texts[kSurname])->isReadOnly());
}

TEST_F(StagesWithoutWindow, AStageThatCouldNotBeReadIsStale) {
    read();
    const platform::Selection clients = platform::Selection::all("Customers");
    EXPECT_FALSE(stages[kClients].records.isStale(platform::Selection::all("CUSTOMERS")));
    EXPECT_THROW(stages[kClients].records.refresh(platform::Selection::all("NoSuchTable")), dao::Error);
    EXPECT_TRUE(stages[kClients].records.isStale(platform::Selection::all("NoSuchTable")));
    EXPECT_TRUE(stages[kClients].records.isStale(clients));
}

TEST_F(StagesWithoutWindow, WhatIsMissingIsAskedForInTheOrderOfThePane) {
    int focus = 0;
    EXPECT_EQ(stages[kClients].pane.missing(focus).split('\n').size(), 6);
    EXPECT_EQ(focus, kSurname);
    type(kSurname, "Antic");
    type(kGivenName, " ");
    EXPECT_EQ(stages[kClients].pane.missing(focus).split('\n').first(), GetResString(120));
    EXPECT_EQ(focus, kGivenName);
    EXPECT_EQ(stages[kComputers].pane.missing(focus), GetResString(125));
    EXPECT_EQ(focus, kMachineName);
    type(kMachineName, "DESK");
    EXPECT_EQ(stages[kComputers].pane.missing(focus), "");
    EXPECT_EQ(focus, -1);
    EXPECT_EQ(stages[kServices].pane.missing(focus), "");
}

TEST_F(StagesWithoutWindow, ChoosingAnotherClientWritesTheOneThatIsLeft) {
    read();
    type(kSurname, "Arsic");
    stages.fieldTyped(kClients, fields.texts[kSurname]);
    EXPECT_TRUE(stages[kClients].dirty);
    stages[kClients].entries.selector().setCurrentIndex(1);
    editing.choose(kClients);
    EXPECT_EQ(surnameOf(anton), "Arsic");
    EXPECT_EQ(stages[kClients].records.key(), peric);
    EXPECT_FALSE(stages[kClients].dirty);
    EXPECT_EQ(stages[kClients].entries.remembered, 1);
    EXPECT_EQ(window.captions.value(1), "Peric, Pera");
    EXPECT_EQ(window.captions.value(2), GetResString(102)) << "no computer of this client is chosen yet";
}

TEST_F(StagesWithoutWindow, WhoStaysToMendHasTheirEntryBack) {
    read();
    type(kSurname, "");
    stages.fieldTyped(kClients, fields.texts[kSurname]);
    stages[kClients].entries.selector().setCurrentIndex(1);
    editing.choose(kClients);
    EXPECT_EQ(window.said.size(), 1);
    EXPECT_EQ(stages[kClients].entries.selector().currentIndex(), 0);
    EXPECT_EQ(stages[kClients].records.key(), anton);
    EXPECT_TRUE(stages[kClients].dirty);
    window.answer = BoxAnswer::No;
    stages[kClients].entries.selector().setCurrentIndex(1);
    editing.choose(kClients);
    EXPECT_EQ(stages[kClients].records.key(), peric);
    EXPECT_EQ(surnameOf(anton), "Antic");
}

TEST_F(StagesWithoutWindow, TypedTextGoesBackIntoItsStageAndMarksIt) {
    read();
    type(kSurname, "Arsic");
    fields.dates[0]->setValue(QDate(1970, 5, 4));
    const TypedEntry typed(stages[kClients]);
    stages[kClients].data().UpdateControls();
    EXPECT_EQ(fields.text(kSurname), "Antic");
    typed.putBack(stages[kClients]);
    EXPECT_EQ(fields.text(kSurname), "Arsic");
    EXPECT_EQ(fields.dates[0]->value(), QDate(1970, 5, 4));
    EXPECT_TRUE(stages[kClients].dirty);
    EXPECT_TRUE(TypedEntry(stages[kComputers]).isEmpty());
}

TEST_F(StagesWithoutWindow, AMoveAheadReadsAStageOnlyWhereItsRecordsAreOthers) {
    read();
    platform::Trap step;
    stages[kServices].data().DatabaseName = databaseFile();
    stages[kServices].data().Connect = connectText();
    stages[kServices].data().selection = stages.servicesOfComputer();
    reading.updateAhead(2, 3, step);
    EXPECT_EQ(window.fillings, 0);
    stages[kServices].data().selection = {};
    reading.updateAhead(3, 1, step);
    EXPECT_EQ(window.fillings, 0) << "a move back changes nothing";
    reading.updateAhead(2, 3, step);
    EXPECT_EQ(window.fillings, 1);
    EXPECT_EQ(window.status, QStringList({"Working... Please Wait...", ""}));
    EXPECT_TRUE(step.failed()) << "this file has no stored query of ours, and that is told";
}

}  // namespace
