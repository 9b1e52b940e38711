// The report as the main window makes it: from its choices and selections into the program's folder.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QProgressBar>
#include <QTimer>

#include "data/demo_shop.h"
#include "platform/system/launch.h"
#include "records/main_window.h"
#include "support/places.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* kErrors = "Some errors have encountered while creating this report.";

class Report : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        platform::setShellExecuteHook([this](const QString& target) {
            launched.append(target);
            statusAtLaunch = hasWindow ? win().status.text() : QString();
            waitingAtLaunch = QGuiApplication::overrideCursor() != nullptr;
            return 33;
        });
    }
    void TearDown() override {
        platform::setShellExecuteHook({});
        MainWindow::TearDown();
    }
    frmMain& begin() {
        start();
        hasWindow = true;
        return win();
    }
    QString file() const { return path("Report.txt"); }
    std::string written() const { return contentsOf(file()); }
    static std::string contentsOf(const QString& path) {
        QFile reader(path);
        return reader.open(QIODevice::ReadOnly) ? reader.readAll().toStdString() : "(no file)";
    }
    static std::string expected(const char* name) {
        return contentsOf(QLatin1String(tests::kSourceFolder) + QStringLiteral("/records/expected/") +
                          QLatin1String(name));
    }
    // The report against the one that was read through and kept.
    void expectKept(const char* name) {
        tool("ViewReport");
        const std::string kept = expected(name);
        const std::string now = written();
        if (now == kept) {
            return;
        }
        const QString beside = QDir::tempPath() + QLatin1String("/tarvello_report_") + QLatin1String(name);
        QFile::remove(beside);
        QFile::copy(file(), beside);
        ADD_FAILURE() << name << " differs; what came out is " << beside.toStdString();
    }
    // A client with two computers of the demonstration year, a computer and a service of it selected.
    void selectInDemo() {
        useDemo();
        begin();
        by_hand::pick(win().controls.Combo1[0], 7);
        tab(2);
        tab(3);
        by_hand::clickRow(win().controls.ListView1, 1);
    }
    void wholeShop() {
        win().choices.report.ShowOnlySelectedClient = win().choices.report.ShowOnlySelectedComputer = false;
        win().choices.report.ShowOnlySelectedService = false;
    }
    void fillShop(int clients) {
        data::DemoPlan plan;
        plan.clients = clients;
        plan.computers = clients * 3 / 2;
        plan.services = clients * 6;
        data::fillDemoShop(openDatabase(), plan);
    }

    QStringList launched;
    QString statusAtLaunch;
    bool waitingAtLaunch = false;
    bool hasWindow = false;
};

TEST_F(Report, IsWrittenAndOpenedWithTheToolbar) {
    addService(addComputer(addClient()));
    begin();
    tool("ViewReport");
    EXPECT_THAT(written(), StartsWith("Peric, Pera\n---"));
    EXPECT_EQ(launched, QStringList(file()));
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(Report, IsWrittenByTheMenu) {
    addClient();
    begin();
    give(Command::Report);
    EXPECT_EQ(launched, QStringList(file()));
}

TEST_F(Report, SaysWhatItDoesUntilTheFileIsOpen) {
    addClient();
    begin();
    tool("ViewReport");
    EXPECT_EQ(statusAtLaunch, "Genearting report... Please Wait...");
    EXPECT_TRUE(waitingAtLaunch);
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Report, AnEmptyDatabaseHasNothingToPrint) {
    addClient();
    begin();
    openDatabase().Execute("DELETE * FROM Customers");
    QString statusAtBox;
    boxes.onBox = [&](const platform::Box&) {
        statusAtBox = win().status.text();
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    };
    tool("ViewReport");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Database is empty - nothing to print! Action is cancelled.");
    EXPECT_EQ(boxes.asked.first().icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(boxes.asked.first().title, GetResString(1));
    EXPECT_EQ(statusAtBox, "Ready");
    EXPECT_TRUE(launched.isEmpty());
    EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(Report, ASelectedClientWhoIsGoneIsTold) {
    const int client = addClient();
    addClient("Anic", "Ana");
    begin();
    choose(0, "Peric, Pera");
    openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(client));
    tool("ViewReport");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(),
              "An unexpected error has occured - selected client has not been found in the database! Action "
              "has failed");
    EXPECT_EQ(boxes.asked.first().icon, platform::BoxIcon::Exclamation);
    EXPECT_TRUE(launched.isEmpty());
    EXPECT_EQ(win().status.text(), "Ready");
}

TEST_F(Report, ComputersLeftOutGiveTheClientsAndTheMessage) {
    addService(addComputer(addClient()));
    addClient("Anic", "Ana");
    begin();
    wholeShop();
    win().choices.report.IncludeComputers = false;
    tool("ViewReport");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kErrors);
    EXPECT_EQ(boxes.asked.first().icon, platform::BoxIcon::Critical);
    EXPECT_THAT(written(), StartsWith("Anic, Ana\n"));
    EXPECT_THAT(written(), HasSubstr("Peric, Pera\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Computer name")));
    EXPECT_EQ(launched.size(), 1) << "the list of clients is wanted all the same";
}

TEST_F(Report, AFileThatCannotBeOpenedEndsWithTheMessage) {
    addClient();
    QDir().mkpath(file());
    begin();
    tool("ViewReport");
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kErrors);
    EXPECT_EQ(win().status.text(), "Ready");
    QDir().rmdir(file());
    tool("ViewReport");
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_THAT(written(), StartsWith("Peric, Pera\n"));
}

TEST_F(Report, TakesWhatIsSelectedOnTheStages) {
    const int client = addClient("Anic", "Ana");
    addComputer(client, "Apple");
    const int second = addComputer(client, "Pear");
    addService(second, {{"Comments", "one"}});
    addService(second, {{"Comments", "two"}});
    begin();
    tab(2);
    choose(1, "Pear");
    tab(3);
    by_hand::clickRow(win().controls.ListView1, 2);
    tool("ViewReport");
    EXPECT_THAT(written(), HasSubstr("Computer name: Pear\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Apple")));
    EXPECT_THAT(written(), HasSubstr("Comments: two\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Comments: one\n")));
}

TEST_F(Report, AFilterLimitsItToWhatTheFilterShows) {
    const int owing = addClient("Anic", "Ana");
    const int machine = addComputer(owing, "Owing");
    addComputer(owing, "Idle");
    addService(machine, {{"ServiceFinished", dao::Date{46090.0}}, {"Comments", "unpaid"}});
    addService(machine, {{"ServiceFinished", dao::Date{46091.0}},
                         {"Paid", dao::Currency::fromScaled(1000000)},
                         {"Comments", "settled"}});
    addService(addComputer(addClient("Peric", "Pera")));
    begin();
    wholeShop();
    give(Command::FilterFinishedNotPaid);
    ASSERT_EQ(win().shop.filter.ActiveFilter, 0);
    boxes.asked.clear();
    tool("ViewReport");
    EXPECT_THAT(written(), StartsWith("Anic, Ana\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Peric")));
    EXPECT_THAT(written(), HasSubstr("Computer name: Owing\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Idle")));
    EXPECT_THAT(written(), HasSubstr("unpaid"));
    EXPECT_THAT(written(), Not(HasSubstr("settled")));
    tool("RemoveFilter");
    tool("ViewReport");
    EXPECT_THAT(written(), HasSubstr("Peric"));
    EXPECT_THAT(written(), HasSubstr("settled"));
}

// --- The demonstration year, kept as it was read through.

TEST_F(Report, KeepsTheDemonstrationWithAllChoicesOn) {
    selectInDemo();
    expectKept("all_choices_on.txt");
}

TEST_F(Report, KeepsTheDemonstrationOfTheWholeShop) {
    selectInDemo();
    wholeShop();
    expectKept("whole_shop.txt");
}

TEST_F(Report, KeepsTheDemonstrationWithoutClientDetails) {
    selectInDemo();
    win().choices.report.PrintBirthDetails = win().choices.report.PrintPIDCardDetails =
        win().choices.report.PrintAddressDetails = false;
    win().choices.report.PrintContactDetails = win().choices.report.PrintClientComments = false;
    expectKept("client_details_off.txt");
}

TEST_F(Report, KeepsTheDemonstrationWithTheClientChoicesOff) {
    selectInDemo();
    win().choices.report.IncludeClients = win().choices.report.ShowOnlySelectedClient = false;
    expectKept("client_choices_off.txt");
}

TEST_F(Report, KeepsTheDemonstrationWithoutComputerDetails) {
    selectInDemo();
    win().choices.report.ShowOnlySelectedComputer = false;
    win().choices.report.PrintMemoryDetails = win().choices.report.PrintStorageDetails =
        win().choices.report.PrintPheriperalDetails = false;
    win().choices.report.PrintOSDetails = win().choices.report.PrintComputerComments = false;
    expectKept("computer_details_off.txt");
}

TEST_F(Report, KeepsTheDemonstrationWithoutComputers) {
    selectInDemo();
    win().choices.report.IncludeComputers = false;
    expectKept("computers_off.txt");
}

TEST_F(Report, KeepsTheDemonstrationWithTheServiceChoicesOff) {
    selectInDemo();
    win().choices.report.IncludeServices = win().choices.report.ShowOnlySelectedService = false;
    expectKept("service_choices_off.txt");
}

TEST_F(Report, KeepsTheDemonstrationUnderAFilter) {
    selectInDemo();
    wholeShop();
    give(Command::FilterNotFinishedPaid);
    ASSERT_EQ(win().shop.filter.ActiveFilter, 2);
    expectKept("filtered.txt");
}

// --- A shop so large that the report takes a while.

TEST_F(Report, ALargeOneShowsHowFarItIsAndTakesNoCommands) {
    fillShop(200);
    begin();
    win().report.ReportTurn = 0;  // after each client
    wholeShop();
    int turns = 0;
    int furthest = 0;
    QString status;
    QTimer watch;
    whileProgressIsShown(watch, [&](const QProgressBar& bar) {
        ++turns;
        EXPECT_TRUE(bar.isVisible());
        EXPECT_GE(bar.value(), furthest);
        furthest = bar.value();
        status = win().status.text();
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
        tab(3);
        tool("ViewReport");
        QTest::keyClick(&win(), Qt::Key_F5);
        win().report.GenerateReport();  // for a call that comes some other way
    });
    tool("ViewReport");
    watch.stop();
    EXPECT_GE(turns, 10);
    EXPECT_GT(furthest, 0);
    EXPECT_EQ(status, "Genearting report... Please Wait...");
    EXPECT_EQ(win().shop.stages.CurrentStage, 1) << "a click on the tab counted";
    EXPECT_EQ(launched.size(), 1);
    EXPECT_EQ(win().findChild<QProgressBar*>("ProgressBar1"), nullptr);
    tab(2);
    EXPECT_EQ(win().shop.stages.CurrentStage, 2) << "commands count again";
}

TEST_F(Report, ClosingTheWindowMeanwhileEndsItAndTheDay) {
    fillShop(200);
    begin();
    win().report.ReportTurn = 0;  // after each client
    wholeShop();
    bool closed = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (win().findChild<QProgressBar*>("ProgressBar1") == nullptr) {
            return;
        }
        watch.stop();
        closed = win().close();
    });
    watch.start(0);
    tool("ViewReport");
    EXPECT_TRUE(closed);
    EXPECT_TRUE(win().isUnloaded());
    EXPECT_TRUE(launched.isEmpty());
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_FALSE(QFile::exists(file()));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(countRows("Customers"), 200);
    EXPECT_TRUE(QFile::exists(path("Tarvello.bkp")));
}

}  // namespace
