// The order of the services list, from the clicks on its headers.
#include <QRegularExpression>

#include "narrowed_window.h"
#include "support/second_process.h"

using platform::BoxIcon;

namespace {

const QStringList kNoIcons({"", "", "", "", "", "", ""});

class Sorting : public NarrowedWindow {
 protected:
    void SetUp() override {
        NarrowedWindow::SetUp();
        const int anic = addClient("Anic", "Vesna");
        desk = addComputer(anic, "Desk");
        laptop = addComputer(anic, "Laptop");
        first = service(desk, {2026, 3, 3}, 90, 9, 1.0F);
        second = service(desk, {2026, 1, 10}, 100, 10, 20.0F);
        third = service(desk, {2026, 2, 20}, 20, 100, 3.0F);
    }
    // A finished job and its due date lie ten and twenty days before and behind its start.
    int service(int computer, const QDate& started, double price, double paid, float percent) {
        return addService(computer, {{"ServiceStarted", day(started)},
                                     {"ServiceToBeFinished", day(started.addDays(20))},
                                     {"ServiceFinished", day(started.addDays(10))},
                                     {"Price", money(price)},
                                     {"Paid", money(paid)},
                                     {"Discount", dao::Value(percent)},
                                     {"GST", dao::Value(percent)}});
    }
    void startOnServices() {
        start();
        tab(3);
    }
    QString sortState() {
        return QStringLiteral("%1 %2 %3")
            .arg(win().choices.order.LVWSorted)
            .arg(win().choices.order.LVWSortField, win().choices.order.LVWSortOrder);
    }
    int desk = 0, laptop = 0, first = 0, second = 0, third = 0;
};

TEST_F(Sorting, CtrlAndItsPlaceSortAColumn) {
    startOnServices();
    by_hand::click(win().controls.ListView1);
    by_hand::press(Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(sortState(), "1 Price ASC");
    EXPECT_EQ(listed(), QList<int>({third, first, second}));
    by_hand::press(Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(sortState(), "1 Price DESC");
    EXPECT_EQ(listed(), QList<int>({second, first, third}));
    for (const Qt::Key none : {Qt::Key_0, Qt::Key_8}) {
        by_hand::press(none, Qt::ControlModifier);
        EXPECT_EQ(sortState(), "1 Price DESC");
    }
}

TEST_F(Sorting, EachColumnSortsUpAndDown) {
    startOnServices();
    ASSERT_EQ(listed(), QList<int>({first, second, third}));
    const struct {
        ServiceColumn column;
        const char* field;
        QList<int> ascending;
    } columns[] = {{ServiceColumn::ToBeFinished, "ServiceToBeFinished", {second, third, first}},
                   {ServiceColumn::Finished, "ServiceFinished", {second, third, first}},
                   {ServiceColumn::Price, "Price", {third, first, second}},
                   {ServiceColumn::Discount, "Discount", {first, third, second}},
                   {ServiceColumn::Tax, "GST", {first, third, second}},
                   {ServiceColumn::Paid, "Paid", {first, second, third}},
                   {ServiceColumn::Started, "ServiceStarted", {second, third, first}}};
    for (const auto& each : columns) {
        clickHeader(each.column);
        EXPECT_EQ(listed(), each.ascending) << each.field;
        EXPECT_EQ(sortState(), QStringLiteral("1 %1 ASC").arg(each.field));
        EXPECT_EQ(win().controls.ListView1->columns().icon(columnNumber(each.column)), "SortUp");
        clickHeader(each.column);
        EXPECT_EQ(listed(), QList<int>(each.ascending.rbegin(), each.ascending.rend())) << each.field;
        EXPECT_EQ(sortState(), QStringLiteral("1 %1 DESC").arg(each.field));
        EXPECT_EQ(win().controls.ListView1->columns().icon(columnNumber(each.column)), "SortDown");
    }
}

TEST_F(Sorting, FirstClickOnTheStartDateSortsDownwards) {
    startOnServices();
    clickHeader(ServiceColumn::Started);
    EXPECT_EQ(sortState(), "1 ServiceStarted DESC");
    EXPECT_EQ(listed(), QList<int>({first, third, second}));
    EXPECT_EQ(icons(), QStringList({"SortDown", "", "", "", "", "", ""}));
    clickHeader(ServiceColumn::Started);
    EXPECT_EQ(icons(), QStringList({"SortUp", "", "", "", "", "", ""}));
}

TEST_F(Sorting, ColumnThatIsLeftGetsTheBlankPicture) {
    startOnServices();
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(icons(), QStringList({"", "", "", "SortUp", "", "", ""}))
        << "the usual column had no picture to lose";
    clickHeader(ServiceColumn::Paid);
    EXPECT_EQ(icons(), QStringList({"", "", "", "Dummy", "", "", "SortUp"}));
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(icons(), QStringList({"", "", "", "SortUp", "", "", "Dummy"}));
    EXPECT_EQ(sortState(), "1 Price ASC") << "a new column begins upwards, also the second time";
}

TEST_F(Sorting, OnlyTheOrderInTheSourceChanges) {
    startOnServices();
    const QString plain = QStringLiteral("SELECT * FROM QDServices0 WHERE MachineID=%1").arg(desk);
    ASSERT_EQ(source(2), plain);
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(source(2), plain + " ORDER BY Price ASC");
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(source(2), plain + " ORDER BY Price DESC");
    win().controls.Data1[2]->selection = platform::Selection::statement(plain + "   ");
    clickHeader(ServiceColumn::Paid);
    EXPECT_EQ(source(2), plain + " ORDER BY Paid ASC");
    win().services.sorting.UnsortServices();
    EXPECT_EQ(source(2), plain);
}

TEST_F(Sorting, SelectionStaysOnItsService) {
    startOnServices();
    win().controls.ListView1->select(QStringLiteral("K%1").arg(third));
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(win().controls.ListView1->selectedIndex(), 1);
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(win().controls.ListView1->selectedIndex(), 3);
    EXPECT_EQ(win().services.list.shownKey(), QStringLiteral("K%1").arg(third));
    win().services.sorting.UnsortServices();
    EXPECT_EQ(win().controls.ListView1->selectedItem()->Key, QStringLiteral("K%1").arg(third));
}

TEST_F(Sorting, AmountsSortAsStoredAndNotAsTheirTexts) {
    CeneDinarske = true;
    KursKupovni = 1000.0F;
    startOnServices();
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(listed(), QList<int>({third, first, second})) << "20,000 before 90,000 before 100,000";
}

TEST_F(Sorting, EmptyDatesComeFirst) {
    const int undated = addService(desk);
    startOnServices();
    clickHeader(ServiceColumn::ToBeFinished);
    EXPECT_EQ(listed().first(), undated);
    clickHeader(ServiceColumn::ToBeFinished);
    EXPECT_EQ(listed().last(), undated);
}

TEST_F(Sorting, EmptyListIsNotSorted) {
    startOnServices();
    tab(2);
    choose(1, "Laptop");
    tab(3);
    ASSERT_EQ(win().controls.ListView1->count(), 0);
    const QString before = source(2);
    clickHeader(ServiceColumn::Price);
    win().services.sorting.UnsortServices();
    EXPECT_EQ(sortState(), "0 ServiceStarted ASC");
    EXPECT_EQ(icons(), kNoIcons);
    EXPECT_EQ(source(2), before);
}

TEST_F(Sorting, PopupTakesTheOrderAway) {
    startOnServices();
    clickHeader(ServiceColumn::Price);
    clickHeader(ServiceColumn::Paid);
    giveInPopup(Command::Unsort);
    EXPECT_EQ(sortState(), "0 ServiceStarted ASC");
    EXPECT_EQ(icons(), kNoIcons);
    EXPECT_EQ(listed(), QList<int>({first, second, third}));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Sorting, UnsortIsOfferedOnlyForASortedListWithRows) {
    const auto offered = [&] {
        open(win().bars.menus.menu(Menu::Popup));
        win().bars.menus.menu(Menu::Popup)->close();
        return win().bars.menus.popupEntry(Command::Unsort)->isEnabled();
    };
    startOnServices();
    EXPECT_FALSE(offered());
    clickHeader(ServiceColumn::Price);
    EXPECT_TRUE(offered());
    tab(2);
    choose(1, "Laptop");
    tab(3);
    EXPECT_FALSE(offered());
}

TEST_F(Sorting, UnsortingAnUnsortedListChangesNothing) {
    startOnServices();
    win().controls.ListView1->select(2);
    StatusWatch watch(win());
    win().services.sorting.UnsortServices();
    EXPECT_TRUE(watch.said.isEmpty());
    EXPECT_EQ(win().controls.ListView1->selectedIndex(), 2);
}

TEST_F(Sorting, StatusTellsWhatIsDone) {
    startOnServices();
    {
        StatusWatch watch(win());
        win().services.sorting.ListView1_ColumnClick(4);
        EXPECT_EQ(watch.said, QStringList({"Sorting in progress...", "Ready"}));
    }
    StatusWatch watch(win());
    win().services.sorting.UnsortServices();
    EXPECT_EQ(watch.said, QStringList({"Unsorting in progress...", "Ready"}));
}

TEST_F(Sorting, OrderSurvivesTheChangeToAnotherComputer) {
    const int cheap = service(laptop, {2026, 4, 1}, 1, 0, 0);
    const int dear = service(laptop, {2026, 4, 2}, 500, 0, 0);
    startOnServices();
    clickHeader(ServiceColumn::Price);
    clickHeader(ServiceColumn::Price);
    tab(2);
    choose(1, "Laptop");
    tab(3);
    EXPECT_EQ(listed(), QList<int>({dear, cheap}));
    EXPECT_EQ(win().controls.ListView1->columns().icon(columnNumber(ServiceColumn::Price)), "SortDown");
    tab(1);
    tab(3);
    EXPECT_EQ(listed(), QList<int>({dear, cheap}));
}

TEST_F(Sorting, OrderSurvivesARestartOfTheProgram) {
    startOnServices();
    clickHeader(ServiceColumn::Price);
    clickHeader(ServiceColumn::Price);
    end();
    EXPECT_EQ(settings::text(settings::LVWSortField), "Price");
    EXPECT_EQ(settings::text(settings::LVWSortOrder), "DESC");
    EXPECT_TRUE(settings::boolean(settings::LVWSorted));
    startOnServices();
    EXPECT_EQ(icons(), QStringList({"", "", "", "SortDown", "", "", ""}));
    EXPECT_EQ(listed(), QList<int>({second, first, third}));
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(icons(), QStringList({"", "", "", "SortUp", "", "", ""}));
    win().services.sorting.UnsortServices();
    end();
    startOnServices();
    EXPECT_EQ(icons(), kNoIcons);
    EXPECT_EQ(listed(), QList<int>({first, second, third}));
}

TEST_F(Sorting, FailingSortIsSilentAndItsStateStays) {
    startOnServices();
    openDatabase().QueryDefs().Delete("QDServices0");
    clickHeader(ServiceColumn::Price);
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(sortState(), "1 Price ASC");
    EXPECT_EQ(win().controls.ListView1->columns().icon(columnNumber(ServiceColumn::Price)), "SortUp");
    EXPECT_EQ(win().status.text(), "Ready");
    EXPECT_FALSE(canUse("EditRecord")) << "nothing is listed any more";
}

TEST_F(Sorting, ListIsReadAgainAfterAFailedSort) {
    startOnServices();
    openDatabase().QueryDefs().Delete("QDServices0");
    clickHeader(ServiceColumn::Price);
    openDatabase().CreateQueryDef("QDServices0", "SELECT * FROM Services");
    tab(2);
    tab(3);
    EXPECT_EQ(listed(), QList<int>({third, first, second}));
}

TEST_F(Sorting, FailingUnsortIsToldWithItsLine) {
    startOnServices();
    clickHeader(ServiceColumn::Price);
    openDatabase().QueryDefs().Delete("QDServices0");
    giveInPopup(Command::Unsort);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith(
        "An unexpected error has occured while unsorting the services::\n[3078] "))
        << boxes.lastText().toStdString();
    EXPECT_TRUE(boxes.lastText().contains(QRegularExpression(" in line [1-9][0-9]*$")))
        << boxes.lastText().toStdString();
    EXPECT_EQ(boxes.asked.last().icon, BoxIcon::Exclamation);
    EXPECT_EQ(win().status.text(), "Ready");
}

// A colleague has taken the selected service away: the list comes back in its new order without it.
TEST_F(Sorting, ServicesOfAnotherWorkstationAreInTheNewOrder) {
    closeDatabases();
    SecondProcess other([this](const SecondProcess::Side& side) {
        side.untilReleased();
        openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(first));
        side.say(static_cast<char>(service(desk, {2026, 5, 1}, 1, 0, 0)));
        closeDatabases();
    });
    startOnServices();
    win().controls.ListView1->select(QStringLiteral("K%1").arg(first));
    other.release();
    const int added = other.next();
    ASSERT_EQ(other.wait(), 0);
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(listed(), QList<int>({added, third, second}));
    EXPECT_TRUE(boxes.asked.isEmpty());
    clickHeader(ServiceColumn::Price);
    EXPECT_EQ(listed(), QList<int>({second, third, added})) << "also from a list without a selection";
}

}  // namespace
