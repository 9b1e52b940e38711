// The quick filters at work: what they find, what they leave in view, what they say.
#include <QLabel>

#include "narrowed_window.h"
#include "records/quick_filters.h"
#include "support/second_process.h"

using platform::BoxIcon;

namespace {

const QString kNothing = QStringLiteral("Quick filtering didn't result with any data.");

class Filters : public NarrowedWindow {
 protected:
    // One service for each filter, on three computers of two clients; a client whose computer has never been
    // here, and one who has none.
    void shop() {
        anic = addClient("Anic", "Vesna");
        babic = addClient("Babic", "Bo");
        ciric = addClient("Ciric", "Cica");
        addClient("Dukic", "Dule");
        desk = addComputer(anic, "Desk");
        laptop = addComputer(anic, "Laptop");
        tower = addComputer(babic, "Tower");
        addComputer(ciric, "Unused");
        finishedOwed = addService(desk, {{"ServiceFinished", day({2026, 3, 5})}});
        openOwed = addService(laptop);
        openPaid = addService(tower, {{"Paid", money(100)}});
        dueOwed = addService(tower, {{"ServiceToBeFinished", inDays(2)}});
        duePaid = addService(tower, {{"ServiceToBeFinished", inDays(2)}, {"Paid", money(100)}});
        addService(desk, {{"ServiceFinished", day({2026, 3, 5})}, {"Paid", money(100)}});
    }
    // What the filter of that number finds among the services of one computer.
    QList<int> found(int number) {
        if (!started_) {
            start();
            started_ = true;
        }
        bool ok = false;
        win().shop.filter.ApplyQuickFilter(number, ok);
        const QList<int> all = ok ? services() : QList<int>();
        win().shop.filter.RemoveFilters();
        return all;
    }
    QStringList usableEntries() {
        QStringList keys;
        for (const quick_filters::Filter& each : quick_filters::kFilters) {
            if (win().bars.toolbar.filterEntry(each.key)->isEnabled()) {
                keys.append(each.key);
            }
        }
        return keys;
    }
    QList<Command> checked() {
        open(win().bars.menus.menu(Menu::Database));
        win().bars.menus.menu(Menu::Database)->close();
        QList<Command> commands;
        for (const CommandRow& row : commandTable()) {
            const QAction* item = win().bars.menus.entry(row.name);
            if (item != nullptr && menuOf(item) == menuNamed("mnuQuickSearch") && item->isChecked()) {
                commands.append(row.name);
            }
        }
        return commands;
    }

    int anic = 0, babic = 0, ciric = 0, desk = 0, laptop = 0, tower = 0;
    int finishedOwed = 0, openOwed = 0, openPaid = 0, dueOwed = 0, duePaid = 0;

 private:
    bool started_ = false;
};

TEST_F(Filters, EachFindsItsServices) {
    shop();
    EXPECT_EQ(found(0), QList<int>({finishedOwed}));
    EXPECT_EQ(found(1), QList<int>({openOwed, dueOwed}));
    EXPECT_EQ(found(2), QList<int>({openPaid, duePaid}));
    EXPECT_EQ(found(3), QList<int>({dueOwed}));
    EXPECT_EQ(found(4), QList<int>({duePaid}));
}

TEST_F(Filters, AllThreeStagesAreNarrowedByNumbers) {
    shop();
    start();
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_EQ(queryText("QDCustomers0"),
              QStringLiteral("SELECT * FROM Customers WHERE CustID=%1 OR CustID=%2;")
                  .arg(anic)
                  .arg(babic)
                  .toStdString());
    EXPECT_EQ(queryText("QDComputers0"),
              QStringLiteral("SELECT * FROM Computers WHERE MachineID=%1 OR MachineID=%2;")
                  .arg(laptop)
                  .arg(tower)
                  .toStdString());
    EXPECT_EQ(queryText("QDServices0"), QStringLiteral("SELECT * FROM Services WHERE ID=%1 OR ID=%2;")
                                            .arg(openOwed)
                                            .arg(dueOwed)
                                            .toStdString());
    EXPECT_EQ(source(0), "SELECT * FROM QDCustomers0");
    EXPECT_EQ(source(1), QStringLiteral("SELECT * FROM QDComputers0 WHERE CustID=%1").arg(anic));
    EXPECT_EQ(source(2), QStringLiteral("Select * FROM QDServices0 Where MachineID=%1").arg(laptop));
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo"}));
    EXPECT_EQ(entries(1), QStringList({"Laptop"})) << "the desk computer's jobs do not match";
    EXPECT_EQ(listed(), QList<int>({openOwed}));
    EXPECT_EQ(win().controls.ListView1->selectedIndex(), 1);
    EXPECT_TRUE(win().controls.StageDirty[1]);
}

TEST_F(Filters, NarrowedSetsOutliveTheChangesOfStage) {
    shop();
    start();
    filter(Command::FilterNotFinishedNotPaid);
    choose(0, "Babic, Bo");
    tab(2);
    EXPECT_EQ(entries(1), QStringList({"Tower"}));
    tab(3);
    EXPECT_EQ(listed(), QList<int>({dueOwed})) << "the tower's paid jobs stay out";
    tab(1);
    choose(0, "Anic, Vesna");
    tab(3);
    EXPECT_EQ(listed(), QList<int>({openOwed}));
}

TEST_F(Filters, StatisticsAreToldInTheProgramsName) {
    shop();
    start();
    boxes.asked.clear();
    filter(Command::FilterNotFinishedPaid);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(),
              "Filtering the database suceeded. Returned:\n\nClient(s): 1\nComputer(s): 1\nSevice(s): 2");
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Information);
    EXPECT_EQ(boxes.asked.last().title, GetResString(1));
}

TEST_F(Filters, StatisticsCanBeSwitchedOffButNotTheNewsOfAnEmptyResult) {
    shop();
    settings::setBoolean(settings::ShowFilterStatistics, false);
    openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(finishedOwed));
    start();
    EXPECT_FALSE(win().choices.filter.ShowMsgBoxFilterResults);
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(win().shop.filter.ActiveFilter, 1);
    filter(Command::FilterFinishedNotPaid);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), kNothing);
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Information);
    EXPECT_EQ(boxes.asked.last().title, GetResString(1));
}

TEST_F(Filters, FilterThatFindsNothingKeepsTheOneInForce) {
    shop();
    openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(finishedOwed));
    start();
    filter(Command::FilterNotFinishedPaid);
    const std::string kept = queryText("QDServices0");
    const QString text = win().status.text();
    boxes.asked.clear();
    filter(Command::FilterFinishedNotPaid);
    EXPECT_EQ(boxes.lastText(), kNothing);
    EXPECT_EQ(win().shop.filter.ActiveFilter, 2);
    EXPECT_EQ(win().controls.StatusBar1->panelText("Filter"), "FILTER: Not finished but paid services");
    EXPECT_EQ(queryText("QDServices0"), kept);
    EXPECT_EQ(entries(0), QStringList({"Babic, Bo"}));
    EXPECT_TRUE(canUse("RemoveFilter"));
    EXPECT_EQ(usableEntries(), QStringList({"FNP", "NFNP", "NFNPDD", "NFPDD"}));
    EXPECT_EQ(win().status.text(), text);
    EXPECT_NE(win().cursor().shape(), Qt::WaitCursor);
}

TEST_F(Filters, FilterThatFindsNothingLeavesTheWholeShopAlone) {
    addService(addComputer(addClient(), "Desk"));
    start();
    boxes.asked.clear();
    filter(Command::FilterFinishedNotPaid);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Text");
    EXPECT_FALSE(canUse("RemoveFilter"));
    EXPECT_EQ(usableEntries().size(), 5);
    EXPECT_EQ(queryText("QDServices0"), "SELECT * FROM Services");
    EXPECT_EQ(source(2), "SELECT * FROM QDServices0");
    EXPECT_FALSE(win().controls.StageDirty[1]);
}

TEST_F(Filters, EachHasItsCaptionInAPanelWithoutAFrame) {
    shop();
    start();
    const char* const captions[] = {
        "FILTER: Finished but not paid services", "FILTER: Not finished and not paid services",
        "FILTER: Not finished but paid services", "FILTER: Not finished and not paid services with due date",
        "FILTER: Not finished but paid services with due date"};
    for (int number = 0; number < 5; ++number) {
        filter(quickFilter(number));
        EXPECT_EQ(win().shop.filter.ActiveFilter, number);
        EXPECT_EQ(win().controls.StatusBar1->firstPanelKey(), "Filter");
        const QLabel* panel = win().controls.StatusBar1->panel("Filter");
        EXPECT_EQ(panel->text(), captions[number]);
        EXPECT_EQ(panel->frameShape(), QFrame::NoFrame);
        QCoreApplication::processEvents();
        EXPECT_GE(panel->width(), panel->fontMetrics().horizontalAdvance(panel->text()));
    }
}

TEST_F(Filters, ChosenFilterIsCheckedInTheMenuAndShutInTheDropDown) {
    shop();
    start();
    EXPECT_EQ(checked(), QList<Command>());
    EXPECT_FALSE(win().bars.menus.entry(Command::RemoveFilters)->isEnabled());
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_EQ(checked(), QList<Command>({Command::FilterNotFinishedNotPaid}));
    EXPECT_TRUE(win().bars.menus.entry(Command::RemoveFilters)->isEnabled());
    EXPECT_EQ(usableEntries(), QStringList({"FNP", "NFP", "NFNPDD", "NFPDD"}));
    EXPECT_TRUE(canUse("RemoveFilter"));
    filter(Command::FilterDuePaid);
    EXPECT_EQ(checked(), QList<Command>({Command::FilterDuePaid}));
    EXPECT_EQ(usableEntries(), QStringList({"FNP", "NFNP", "NFP", "NFNPDD"}));
    filter(Command::RemoveFilters);
    EXPECT_EQ(checked(), QList<Command>());
    EXPECT_FALSE(win().bars.menus.entry(Command::RemoveFilters)->isEnabled());
}

TEST_F(Filters, DropDownCallsTheSameFilters) {
    shop();
    start();
    int number = 0;
    for (const quick_filters::Filter& each : quick_filters::kFilters) {
        win().bars.toolbar.filterEntry(each.key)->trigger();
        EXPECT_EQ(win().shop.filter.ActiveFilter, number) << each.key;
        EXPECT_FALSE(win().bars.toolbar.filterEntry(each.key)->isEnabled()) << each.key;
        ++number;
    }
}

TEST_F(Filters, UnknownPositionsAndNumbersDoNothing) {
    shop();
    start();
    for (const int position : {-1, 1, 7}) {
        win().filters.mnuQuickSearch_Click(position);
        EXPECT_EQ(boxes.lastText(), QStringLiteral("Unknown index: mnuQuickSearch_Click(%1)").arg(position));
        EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    }
    boxes.asked.clear();
    bool ok = false;
    win().shop.filter.ApplyQuickFilter(5, ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Filters, WindowSaysThatItIsAtWork) {
    shop();
    start();
    StatusWatch watch(win());
    bool ok = false;
    win().shop.filter.ApplyQuickFilter(1, ok);
    EXPECT_EQ(watch.said, QStringList({"Filtering data... Please wait...", "Ready"}));
    EXPECT_EQ(watch.underHourglass.value(0), "Filtering data... Please wait...")
        << "text and pointer come together";
    EXPECT_NE(win().cursor().shape(), Qt::WaitCursor);
}

TEST_F(Filters, OneFilterReplacesAnotherFromTheWholeShop) {
    shop();
    start();
    filter(Command::FilterFinishedNotPaid);
    EXPECT_EQ(services(), QList<int>({finishedOwed}));
    filter(Command::FilterNotFinishedPaid);
    EXPECT_EQ(services(), QList<int>({openPaid, duePaid})) << "not only among what the first had found";
}

// --- What counts as finished, paid and due.

TEST_F(Filters, AmountsAreThoseOfTheFileWithoutRateOrRounding) {
    const int computer = addComputer(addClient());
    const int owed = addService(computer, {{"Paid", money(99.89)}});
    const int paid = addService(computer, {{"Paid", money(99.95)}});
    CeneDinarske = true;
    KursKupovni = 117.5F;  // in dinars both would be owed
    EXPECT_EQ(found(1), QList<int>({owed}));
    EXPECT_EQ(found(2), QList<int>({paid}));
}

TEST_F(Filters, DiscountAndTaxTakePart) {
    const int computer = addComputer(addClient());
    const int paid = addService(
        computer, {{"Discount", dao::Value(10.0F)}, {"GST", dao::Value(18.0F)}, {"Paid", money(106.15)}});
    const int owed = addService(
        computer, {{"Discount", dao::Value(10.0F)}, {"GST", dao::Value(18.0F)}, {"Paid", money(106.05)}});
    EXPECT_EQ(found(2), QList<int>({paid}));
    EXPECT_EQ(found(1), QList<int>({owed}));
}

TEST_F(Filters, JobWithoutAPriceMatchesNone) {
    const int computer = addComputer(addClient());
    addService(computer, {{"Price", money(0)}});
    addService(computer, {{"Price", money(0)}, {"ServiceFinished", day({2026, 3, 5})}});
    addService(computer, {{"Price", money(0)}, {"ServiceToBeFinished", inDays(1)}});
    addService(computer, {{"Price", money(0)}, {"ServiceToBeFinished", inDays(1)}, {"Paid", money(50)}});
    for (int number = 0; number < 5; ++number) {
        EXPECT_EQ(found(number), QList<int>()) << number;
    }
}

TEST_F(Filters, FinishDateBefore1990IsOneToTheFilters) {
    const int computer = addComputer(addClient());
    const int old = addService(computer, {{"ServiceFinished", day({1989, 12, 31})}});
    EXPECT_EQ(found(0), QList<int>({old}));
    EXPECT_EQ(found(1), QList<int>());
    EXPECT_EQ(win().controls.ListView1->item(1).SmallIcon, "NotFinishedNotPayed") << "and none to the list";
}

TEST_F(Filters, DueWithinTheSetDays) {
    const int computer = addComputer(addClient());
    const int overdue = addService(computer, {{"ServiceToBeFinished", inDays(-40)}});
    const int today = addService(computer, {{"ServiceToBeFinished", inDays(0)}});
    const int inFive = addService(computer, {{"ServiceToBeFinished", inDays(5)}});
    addService(computer, {{"ServiceToBeFinished", inDays(6)}});
    addService(computer);  // without a due date
    EXPECT_EQ(found(3), QList<int>({overdue, today, inFive}));
    win().choices.filter.DueDateDiff = 0;
    EXPECT_EQ(found(3), QList<int>({overdue, today}));
    win().choices.filter.DueDateDiff = -1;
    EXPECT_EQ(found(3), QList<int>({overdue}));
}

TEST_F(Filters, EmptyDueDateIsNeverDue) {
    const int computer = addComputer(addClient());
    addService(computer);
    addService(computer, {{"Paid", money(100)}});
    const int due = addService(computer, {{"ServiceToBeFinished", inDays(0)}, {"Paid", money(100)}});
    EXPECT_EQ(found(3), QList<int>());
    EXPECT_EQ(found(4), QList<int>({due}));
}

TEST_F(Filters, DueDaysComeFromTheSettings) {
    settings::setInteger(settings::DueDateDiff, 1);
    const int computer = addComputer(addClient());
    addService(computer, {{"ServiceToBeFinished", inDays(2)}});
    EXPECT_EQ(found(3), QList<int>());
    EXPECT_EQ(win().choices.filter.DueDateDiff, 1);
}

TEST_F(Filters, ClientsAndComputersWithoutMatchesAreOut) {
    shop();
    start();
    for (int number = 0; number < 5; ++number) {
        filter(quickFilter(number));
        EXPECT_FALSE(clients().contains(ciric));
        EXPECT_FALSE(entries(0).contains("Dukic, Dule"));
        EXPECT_FALSE(computers().isEmpty());
    }
}

TEST_F(Filters, OrderInForceSurvives) {
    const int computer = addComputer(addClient(), "Desk");
    const int cheap = addService(computer, {{"Price", money(10)}});
    addService(computer, {{"Price", money(30)}, {"Paid", money(30)}});
    const int dear = addService(computer, {{"Price", money(90)}});
    start();
    tab(3);
    clickHeader(ServiceColumn::Price);
    clickHeader(ServiceColumn::Price);
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_EQ(listed(), QList<int>({dear, cheap}));
    EXPECT_TRUE(source(2).endsWith(" ORDER BY Price DESC"));
    EXPECT_EQ(win().controls.ListView1->columns().icon(columnNumber(ServiceColumn::Price)), "SortDown");
}

// --- What was typed, and what fails.

TEST_F(Filters, WhatWasTypedIsSavedFirst) {
    shop();
    start();
    type(13, "064 111");
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_EQ(valueOf("Customers", "CustID", anic, "Cellular").asText(), "064 111");
    EXPECT_FALSE(win().controls.StageDirty[0]);
    EXPECT_EQ(win().shop.filter.ActiveFilter, 1);
}

TEST_F(Filters, RecordThatHasToBeMendedIsNotLeft) {
    shop();
    start();
    type(0, "");
    boxes.answers << platform::BoxAnswer::Yes;
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    EXPECT_FALSE(canUse("RemoveFilter"));
    EXPECT_EQ(text(0), "");
    EXPECT_TRUE(win().controls.StageDirty[0]);
    EXPECT_EQ(queryText("QDCustomers0"), "SELECT * FROM Customers");
}

TEST_F(Filters, FailureHalfWayIsToldAndShowsTheWholeShop) {
    shop();
    start();
    openDatabase().QueryDefs().Delete("QDServices0");
    boxes.asked.clear();
    filter(Command::FilterFinishedNotPaid);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith("An unexpected error has occured - [3265] "))
        << boxes.lastText().toStdString();
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    EXPECT_EQ(queryText("QDCustomers0"), "SELECT * FROM Customers");
    EXPECT_EQ(entries(0).size(), 4);
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_NE(win().cursor().shape(), Qt::WaitCursor);
    EXPECT_FALSE(canUse("RemoveFilter"));
}

TEST_F(Filters, FailureAtTheBeginningKeepsTheFilterInForce) {
    shop();
    start();
    filter(Command::FilterNotFinishedNotPaid);
    openDatabase().QueryDefs().Delete("QDCustomers0");
    boxes.asked.clear();
    filter(Command::FilterFinishedNotPaid);
    EXPECT_TRUE(boxes.lastText().startsWith("An unexpected error has occured - [3265] "))
        << boxes.lastText().toStdString();
    EXPECT_EQ(win().shop.filter.ActiveFilter, 1);
    EXPECT_EQ(win().controls.StatusBar1->panelText("Filter"), "FILTER: Not finished and not paid services");
    EXPECT_EQ(services(), QList<int>({openOwed, dueOwed}));
    EXPECT_TRUE(canUse("RemoveFilter"));
}

// --- How much, and who else.

class HugeShop : public Filters {};

TEST_F(HugeShop, HundredThousandServicesAreNarrowedTo) {
    const int computer = addComputer(addClient("Anic", "Vesna"), "Desk");
    openDatabase();
    dao::DBEngine::BeginTrans();
    dao::Recordset rows = openDatabase().OpenRecordset("Services");
    for (int i = 0; i <= 100000; ++i) {
        rows.AddNew();
        rows.Fields("MachineID") = computer;
        rows.Fields("ServiceFinished") = kEmptyDate;
        rows.Fields("Price") = money(100);
        rows.Fields("Paid") = money(i == 50000 ? 100 : 0);
        rows.Fields("Discount") = dao::Value(0.0F);
        rows.Fields("GST") = dao::Value(0.0F);
        rows.Update();
    }
    rows.Close();
    dao::DBEngine::CommitTrans();
    start();
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_EQ(
        boxes.lastText(),
        "Filtering the database suceeded. Returned:\n\nClient(s): 1\nComputer(s): 1\nSevice(s): 100000");
    EXPECT_EQ(win().controls.ListView1->count(), 100000);
    EXPECT_EQ(win().controls.ListView1->item(100000).Key, "K100001");
    EXPECT_EQ(win().controls.ListView1->indexOf("K50001"), 0) << "the paid one in their midst";
    filter(Command::FilterNotFinishedPaid);
    EXPECT_EQ(listed(), QList<int>({50001}));
    filter(Command::RemoveFilters);
    EXPECT_EQ(win().controls.ListView1->count(), 100001);
}

// Another workstation with stored queries of its own, which works while this one looks through a filter.
TEST_F(Filters, AnotherWorkstationKeepsItsOwnViewAndItsNewClientsStayOut) {
    shop();
    closeDatabases();
    SecondProcess other([this](const SecondProcess::Side& side) {
        const int suffix = CreateWorkQueries(openDatabase());
        const std::string query = "QDCustomers" + std::to_string(suffix);
        side.say(static_cast<char>('0' + suffix));
        side.untilReleased();
        side.say(static_cast<char>('0' + countRows(query)));
        addService(addComputer(addClient("Zoric", "Zora"), "New"));
        openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(babic));
        side.say(static_cast<char>('0' + countRows(query)));
        side.untilReleased();
        DropWorkQueries(openDatabase(), suffix);
        closeDatabases();
    });
    ASSERT_EQ(other.next(), '0');
    start();
    ASSERT_EQ(win().shop.stages.QuerySuffix, 1);
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo"}));
    other.release();
    EXPECT_EQ(other.next(), '4') << "the filter here narrows nothing there";
    EXPECT_EQ(other.next(), '4') << "one came, one went";
    boxes.asked.clear();
    choose(0, "Babic, Bo");
    EXPECT_EQ(boxes.lastText(),
              "Sorry, Babic, Bo is not found in the database. First item will be selected.");
    EXPECT_EQ(numbers("QDCustomers1", "CustID"), QList<int>({anic}))
        << "a new client is in no list of numbers";
    filter(Command::FilterNotFinishedNotPaid);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Zoric, Zora"})) << "a filter sees the moment it runs";
    filter(Command::RemoveFilters);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Ciric, Cica", "Dukic, Dule", "Zoric, Zora"}));
    other.release();
    EXPECT_EQ(other.wait(), 0);
}

TEST_F(Filters, FiltersComeAndGoWhileAnotherWorkstationIsBusy) {
    shop();
    closeDatabases();
    SecondProcess other([this](const SecondProcess::Side& side) {
        side.untilReleased();
        for (int i = 0; i < 100; ++i) {
            const int client = addClient("Busy", "Client");
            addService(addComputer(client));
            openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(client));
        }
        closeDatabases();
        side.ready();
    });
    start();
    win().choices.filter.ShowMsgBoxFilterResults = false;
    other.release();
    boxes.asked.clear();
    for (int round = 0; round < 10; ++round) {
        for (int number = 0; number < 5; ++number) {
            win().filters.mnuQuickSearch_Click(number + 2);
            EXPECT_EQ(win().shop.filter.ActiveFilter, number);
        }
        tool("RemoveFilter");
        EXPECT_EQ(win().shop.filter.ActiveFilter, -1);
    }
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    ASSERT_TRUE(other.waitReady());
    tool("Refresh");
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Bo", "Ciric, Cica", "Dukic, Dule"}));
    EXPECT_EQ(other.wait(), 0);
}

}  // namespace
