#include <gtest/gtest.h>

#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

#include "busy_colleague.h"
#include "platform/system/dates.h"
#include "platform/system/trap.h"
#include "records/frmDetails.h"
#include "records/frmMain.h"
#include "records/service_repricing.h"
#include "shell/program_windows.h"
#include "support/fixture.h"
#include "support/modal.h"

using dao::Currency;
using dao::Date;
using dao::Value;

namespace {

Currency money(double amount) {
    return Currency::fromDouble(amount);
}

Date day(int year, int month, int dayOfMonth) {
    return platform::fromQDate(QDate(year, month, dayOfMonth));
}

// The main window on its third stage, with one client and one computer.
struct Services : DeliveredFixture {
    void SetUp() override {
        DeliveredFixture::SetUp();
        CeneDinarske = false;
        ShowTipsAtStartup = false;
        machine = addComputer(addClient());
    }
    void TearDown() override {
        window_.reset();
        DeliveredFixture::TearDown();
    }

    frmMain& window() {
        if (!window_) {
            window_ = std::make_unique<frmMain>(programWindows());
            EXPECT_TRUE(window_->Display()) << boxes.lastText().toStdString();
            window_->controls.TabStrip1->setCurrentIndex(2);
            EXPECT_EQ(window_->shop.stages.CurrentStage, 3);
        }
        return *window_;
    }
    platform::ListView& list() { return *window().controls.ListView1; }
    const platform::ListItem& row(int id) { return list().item("K" + QString::number(id)); }
    QString description() { return window().shop.fields.text(37); }
    QString kinds() { return window().shop.fields.text(38); }
    void refill(const QString& key = {}) {
        window().controls.Data1[2]->Refresh();
        window().services.list.fill(key);
    }
    Value stored(int id, const std::string& field) { return valueOf("Services", "ID", id, field); }

    // `act` opens the service editor, `work` happens in it, and OK ends it unless `work` has done so.
    void inEditor(const std::function<void()>& act, const std::function<void()>& work) {
        bool opened = false;
        frmDetails* editor = window().services.commands.editor();
        QTimer::singleShot(0, editor, [&] {
            opened = editor->isVisible();
            EXPECT_TRUE(waitUntilActive(*editor));
            work();
            if (editor->isVisible()) {
                press(0);
            }
            if (editor->isVisible()) {
                ADD_FAILURE() << "refused: " << boxes.lastText().toStdString();
                editor->reject();
            }
        });
        act();
        EXPECT_TRUE(opened) << "the editor did not open";
        QCoreApplication::processEvents();
    }
    void addInEditor(const std::function<void()>& work) {
        inEditor([&] { window().services.commands.addNew(); }, work);
    }
    void editInEditor(const std::function<void()>& work) {
        inEditor([&] { window().services.commands.editSelected(); }, work);
    }
    QLineEdit* field(int index) {
        return window().services.commands.editor()->findChild<QLineEdit*>(
            QStringLiteral("Text1(%1)").arg(index));
    }
    void type(int index, const QString& keys) {
        field(index)->setFocus();
        field(index)->selectAll();
        QTest::keyClicks(field(index), keys);
    }
    void press(int button) {
        QTest::mouseClick(window().services.commands.editor()->findChild<QPushButton*>(
                              QStringLiteral("Command1(%1)").arg(button)),
                          Qt::LeftButton);
    }

    int machine = 0;

 private:
    std::unique_ptr<frmMain> window_;
};

QStringList subItems(const platform::ListItem& item) {
    return item.subItems;
}

}  // namespace

// --- Setting up.

TEST_F(Services, ColumnsBearTheirKeysAndTheUnit) {
    QStringList keys, texts;
    for (int column = 1; column <= list().columns().count(); ++column) {
        keys.append(list().columns().key(column));
        texts.append(list().columns().text(column));
    }
    EXPECT_EQ(keys, QStringList({"ServiceStarted", "ServiceToBeFinished", "ServiceFinished", "Price",
                                 "Discount", "GST", "Paid"}));
    EXPECT_EQ(texts, QStringList({"Service started at", "Service due date", "Service finished", "Price [EUR]",
                                  "Discount", "GST", "Paid [EUR]"}));
    const auto side = [&](int column) {
        return list().model()->headerData(column - 1, Qt::Horizontal, Qt::TextAlignmentRole).toInt() &
               Qt::AlignHorizontal_Mask;
    };
    EXPECT_EQ(side(3), Qt::AlignLeft);
    EXPECT_EQ(side(4), Qt::AlignRight);
    EXPECT_EQ(side(7), Qt::AlignRight);
}

TEST_F(Services, ColumnsInDinarsSaySo) {
    CeneDinarske = true;
    EXPECT_EQ(list().columns().text(columnNumber(ServiceColumn::Price)), "Price [DIN]");
    EXPECT_EQ(list().columns().text(columnNumber(ServiceColumn::Paid)), "Paid [DIN]");
}

TEST_F(Services, ColumnsTakeTheirPlacesFromTheSettings) {
    settings::setText(settings::LVWColumnWidths, "1500;3000;1440;1440;1440;1440;900");
    settings::setText(settings::LVWColumnPositions, "2;3;4;1;7;6;5");
    EXPECT_EQ(list().columns().width(columnNumber(ServiceColumn::Started)), 1500);
    EXPECT_EQ(list().columns().width(columnNumber(ServiceColumn::ToBeFinished)), 3000);
    EXPECT_EQ(list().columns().width(columnNumber(ServiceColumn::Paid)), 900);
    const int places[] = {2, 3, 4, 1, 7, 6, 5};
    for (int column = 1; column <= 7; ++column) {
        EXPECT_EQ(list().columns().position(column), places[column - 1]) << column;
    }
}

TEST_F(Services, ListThatCannotBeBuiltSaysWhy) {
    frmMain broken(programWindows());
    broken.start.onStartStep = [](StartStep step) {
        if (step == StartStep::ServiceList) {
            throw platform::RunError(7, "Out of memory");
        }
    };
    QString errorText;
    EXPECT_FALSE(broken.services.InitServiceListView(errorText));
    EXPECT_EQ(errorText,
              "An unexpected error has occured while creating ListView Control. Application will terminate.\n"
              "[7] Out of memory");
}

TEST_F(Services, KindsOfServiceCountFromOne) {
    ASSERT_GT(window().services.list.typeNames().size(), 2);
    dao::Recordset table = openDatabase().OpenRecordset("ServiceTypes", dao::dbOpenTable);
    EXPECT_EQ(window().services.list.typeNames()[1], QString::fromStdString(table["Service"].asText()));
    EXPECT_EQ(window().services.list.typeNames().size() - 1, countRows("ServiceTypes"));
}

// --- Filling.

TEST_F(Services, RowShowsItsService) {
    const int id = addService(machine, {{"ServiceStarted", day(2026, 3, 3)},
                                        {"ServiceToBeFinished", day(2026, 3, 9)},
                                        {"ServiceFinished", day(2026, 3, 8)},
                                        {"ServiceTypes", "2|3"},
                                        {"Comments", "Noisy fan"},
                                        {"Price", money(1234.5)},
                                        {"Discount", 12.5F},
                                        {"GST", 18.0F},
                                        {"Paid", money(1000)}});
    EXPECT_EQ(list().count(), 1);
    EXPECT_EQ(row(id).Text, "3/3/2026");
    EXPECT_EQ(subItems(row(id)), QStringList({"3/9/2026", "3/8/2026", "1,234.50", "12.5", "18", "1,000.00"}));
    EXPECT_EQ(row(id).SmallIcon, "FinishedNotPayed");
    EXPECT_EQ(row(id).Tag, "2|3##Noisy fan");
    EXPECT_EQ(list().selectedIndex(), 1);
    EXPECT_EQ(description(), "Noisy fan");
    EXPECT_EQ(kinds(), window().services.list.typeNames()[2] + '\n' + window().services.list.typeNames()[3]);
    EXPECT_EQ(window().services.list.shownKey(), "K" + QString::number(id));
}

TEST_F(Services, FourStatesAreToldApart) {
    const Value finished = day(2026, 3, 8);
    const int fp = addService(machine, {{"ServiceFinished", finished}, {"Paid", money(100)}});
    const int fnp = addService(machine, {{"ServiceFinished", finished}, {"Paid", money(1)}});
    const int nfp = addService(machine, {{"Paid", money(100)}});
    const int nfnp = addService(machine, {});
    EXPECT_EQ(row(fp).SmallIcon, "FinishedPayed");
    EXPECT_EQ(row(fnp).SmallIcon, "FinishedNotPayed");
    EXPECT_EQ(row(nfp).SmallIcon, "NotFinishedPayed");
    EXPECT_EQ(row(nfnp).SmallIcon, "NotFinishedNotPayed");
    EXPECT_EQ(cellOf(row(nfnp), ServiceColumn::ToBeFinished), "") << "a date left empty";
}

TEST_F(Services, JobWithoutAPriceIsNeverPaid) {
    const int open = addService(machine, {{"Price", Currency()}});
    const int done = addService(machine, {{"Price", Currency()}, {"ServiceFinished", day(2026, 3, 8)}});
    EXPECT_EQ(row(open).SmallIcon, "NotFinishedNotPayed");
    EXPECT_EQ(row(done).SmallIcon, "FinishedNotPayed");
}

TEST_F(Services, DateBefore1990CountsAsNoneInTheList) {
    const int id = addService(machine, {{"ServiceFinished", day(1989, 12, 31)}});
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Finished), "");
    EXPECT_EQ(row(id).SmallIcon, "NotFinishedNotPayed");
}

TEST_F(Services, DinarsAreStoredEuroTimesTheRate) {
    CeneDinarske = true;
    KursKupovni = 76.5F;
    const int id = addService(machine, {{"Price", money(117.2)}, {"Paid", money(10)}});
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Price), "8,965.80");
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Paid), "765.00");
}

TEST_F(Services, ToleranceIsOneOfDinars) {
    const FieldValues twoCentsShort{{"Paid", money(99.98)}};
    const int id = addService(machine, twoCentsShort);
    EXPECT_EQ(row(id).SmallIcon, "NotFinishedPayed") << "two cents are forgiven";
    CeneDinarske = true;
    KursKupovni = 80;
    refill();
    EXPECT_EQ(row(id).SmallIcon, "NotFinishedNotPayed") << "1.60 dinars are not";
}

TEST_F(Services, ComputerWithoutServicesLeavesAllEmpty) {
    window();
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(list().selectedItem(), nullptr);
    EXPECT_EQ(description(), "");
    EXPECT_EQ(kinds(), "");
    addService(machine, {{"Comments", "x"}});
    refill();
    EXPECT_EQ(description(), "x");
    openDatabase().Execute("DELETE * FROM Services");
    refill();
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(description(), "");
    EXPECT_EQ(kinds(), "");
}

TEST_F(Services, WantedRowIsSelected) {
    addService(machine, {{"Comments", "one"}});
    const int second = addService(machine, {{"Comments", "two"}});
    window();
    EXPECT_EQ(description(), "one");
    refill("K" + QString::number(second));
    EXPECT_EQ(list().selectedIndex(), 2);
    EXPECT_EQ(description(), "two");
}

TEST_F(Services, RowThatIsNoLongerThereSelectsNothing) {
    addService(machine);
    window();
    refill("K999999");
    EXPECT_EQ(list().count(), 1);
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(list().selectedItem(), nullptr);
}

TEST_F(Services, AmountThatCannotBeReadIsThatOfTheRowBefore) {
    const int first = addService(machine, {{"Price", Value()}});
    const int second =
        addService(machine, {{"Price", money(50)}, {"GST", 18.0F}, {"ServiceFinished", day(2026, 1, 1)}});
    const int third =
        addService(machine, {{"Price", Value()}, {"GST", Value()}, {"ServiceFinished", Value()}});
    const int fourth = addService(machine, {{"Price", Value()}, {"GST", 8.0F}});
    EXPECT_EQ(cellOf(row(first), ServiceColumn::Price), "0.00") << "nothing before the first";
    EXPECT_EQ(cellOf(row(second), ServiceColumn::Price), "50.00");
    EXPECT_EQ(subItems(row(third)), QStringList({"", "1/1/2026", "50.00", "0", "18", "0.00"}));
    EXPECT_EQ(row(third).SmallIcon, "FinishedNotPayed");
    EXPECT_EQ(cellOf(row(fourth), ServiceColumn::Price), "50.00");
    EXPECT_EQ(cellOf(row(fourth), ServiceColumn::Tax), "8");
}

TEST_F(Services, ClickOnARowShowsItsDetails) {
    addService(machine, {{"Comments", "one"}, {"ServiceTypes", "1"}});
    const int second = addService(machine, {{"Comments", "two\nlines"}, {"ServiceTypes", "99|2"}});
    window().show();
    const QRect place = list().visualRect(list().model()->index(1, 0));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place.center());
    EXPECT_EQ(description(), "two\nlines");
    EXPECT_EQ(kinds(), window().services.list.typeNames()[2])
        << "a kind that is not in the table adds nothing";
    EXPECT_EQ(window().services.list.shownKey(), "K" + QString::number(second));
    QTest::keyClick(&list(), Qt::Key_Up);
    EXPECT_EQ(description(), "one");
}

// --- Long lists.

namespace {

// A computer with more services than are computed at once; every price is the row's number.
struct ManyServices : Services {
    static constexpr int kRows = 1000;
    void SetUp() override {
        Services::SetUp();
        openDatabase();
        dao::DBEngine::BeginTrans();
        for (int i = 1; i <= kRows; ++i) {
            ids.append(addService(machine, {{"Price", i % 100 == 0 ? Value() : Value(money(i))},
                                            {"Comments", std::to_string(i)}}));
        }
        dao::DBEngine::CommitTrans();
    }
    // Of all rows, as they are on screen and behind it.
    QStringList allTexts() {
        QStringList all;
        for (int i = 1; i <= list().count(); ++i) {
            const platform::ListItem& item = list().item(i);
            const QStringList ends{item.Key, item.Text, item.SmallIcon, item.Tag};
            all.append((ends + item.subItems).join('|'));
        }
        return all;
    }
    void sortBy(ServiceColumn column) {
        window().services.sorting.ListView1_ColumnClick(columnNumber(column));
    }
    QList<int> ids;  // [0] is row 1
};

}  // namespace

TEST_F(ManyServices, RowsNobodySeesAreNotComputed) {
    EXPECT_EQ(list().count(), kRows);
    EXPECT_LT(list().madeCount(), 100);
}

TEST_F(ManyServices, EachRowIsItsService) {
    EXPECT_EQ(list().item(777).Key, "K" + QString::number(ids[776]));
    EXPECT_EQ(cellOf(list().item(777), ServiceColumn::Price), "777.00");
    EXPECT_EQ(list().indexOf("K" + QString::number(ids[499])), 500);
    EXPECT_EQ(list().indexOf("K999999"), 0);
    window().services.list.fill("K" + QString::number(ids[899]));
    EXPECT_EQ(list().selectedIndex(), 900);
    EXPECT_EQ(description(), "900");
}

TEST_F(ManyServices, AmountsAreCarriedFromTheRowBeforeThere) {
    EXPECT_EQ(cellOf(list().item(300), ServiceColumn::Price), "299.00");
    openDatabase().Execute("UPDATE Services SET Price=NULL WHERE ID>" + std::to_string(ids[9]));
    refill();
    EXPECT_EQ(cellOf(list().item(1000), ServiceColumn::Price), "10.00");
    EXPECT_EQ(cellOf(list().item(11), ServiceColumn::Price), "10.00");
    EXPECT_EQ(cellOf(list().item(500), ServiceColumn::Price), "10.00");
    openDatabase().Execute("UPDATE Services SET Price=NULL");
    refill();
    EXPECT_EQ(cellOf(list().item(700), ServiceColumn::Price), "0.00");
}

TEST_F(ManyServices, RowStaysAsItWasWhenItWasMade) {
    EXPECT_EQ(cellOf(list().item(5), ServiceColumn::Price), "5.00");
    openDatabase().Execute("UPDATE Services SET Price=77 WHERE ID=" + std::to_string(ids[4]));
    EXPECT_EQ(cellOf(list().item(5), ServiceColumn::Price), "5.00");
    refill();
    EXPECT_EQ(cellOf(list().item(5), ServiceColumn::Price), "77.00");
}

TEST_F(ManyServices, ASortedRowShowsWhatAnotherHasChanged) {
    allTexts();
    openDatabase().Execute("UPDATE Services SET Price=77777, Comments='druga' WHERE ID=" +
                           std::to_string(ids[4]));
    openDatabase().Execute("UPDATE Services SET ServiceFinished=#3/4/2026# WHERE ID=" +
                           std::to_string(ids[5]));
    sortBy(ServiceColumn::Price);
    EXPECT_EQ(list().indexOf("K" + QString::number(ids[4])), kRows) << "the dearest one by now";
    EXPECT_EQ(cellOf(list().item(kRows), ServiceColumn::Price), "77,777.00");
    EXPECT_EQ(list().item(kRows).Tag, "1##druga");
    const platform::ListItem& finished = list().item("K" + QString::number(ids[5]));
    EXPECT_EQ(cellOf(finished, ServiceColumn::Finished), "3/4/2026");
    EXPECT_EQ(finished.SmallIcon, "FinishedNotPayed");
}

TEST_F(ManyServices, SortedRowsAreThoseThatAreMadeAnew) {
    for (const ServiceColumn column : {ServiceColumn::Price, ServiceColumn::Price, ServiceColumn::Started}) {
        allTexts();
        sortBy(column);
        const QStringList turned = allTexts();
        window().services.list.closeRows();
        refill();
        EXPECT_EQ(turned, allTexts());
    }
}

// Every hundredth service has no price of its own.
TEST_F(ManyServices, AmountOfTheRowAboveFollowsTheOrder) {
    allTexts();
    EXPECT_EQ(cellOf(list().item("K" + QString::number(ids[99])), ServiceColumn::Price), "99.00");
    sortBy(ServiceColumn::Price);
    EXPECT_EQ(list().indexOf("K" + QString::number(ids[99])), 1) << "no price comes before all prices";
    EXPECT_EQ(cellOf(list().item(1), ServiceColumn::Price), "0.00");
    sortBy(ServiceColumn::Price);
    EXPECT_EQ(cellOf(list().item("K" + QString::number(ids[99])), ServiceColumn::Price), "1.00");
}

TEST_F(ManyServices, AnotherUnitIsInEveryRow) {
    allTexts();
    CeneDinarske = true;
    KursKupovni = 100;
    sortBy(ServiceColumn::Price);
    EXPECT_EQ(cellOf(list().item("K" + QString::number(ids[4])), ServiceColumn::Price), "500.00");
    KursKupovni = 200;
    sortBy(ServiceColumn::Price);
    EXPECT_EQ(cellOf(list().item("K" + QString::number(ids[4])), ServiceColumn::Price), "1,000.00");
}

TEST_F(ManyServices, ServiceThatAnotherHasDeletedIsGoneFromTheSortedList) {
    allTexts();
    openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(ids[699]));
    sortBy(ServiceColumn::Price);
    EXPECT_EQ(list().count(), kRows - 1);
    EXPECT_EQ(list().indexOf("K" + QString::number(ids[699])), 0);
    EXPECT_FALSE(allTexts().join('\n').contains("K-"));
}

TEST_F(ManyServices, RowsBelowADeletedOneKeepTheirServices) {
    list().select(500);
    window().services.list.showDetails(*list().selectedItem());
    window().services.commands.deleteSelected();
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(list().count(), kRows - 1);
    EXPECT_TRUE(stored(ids[499], "ID").isNull());
    EXPECT_EQ(description(), "501");
    EXPECT_EQ(list().item(499).Tag, "1##499");
    EXPECT_EQ(list().item(600).Tag, "1##601");
    EXPECT_EQ(list().indexOf("K" + QString::number(ids[899])), 899);
    EXPECT_EQ(list().indexOf("K" + QString::number(ids[499])), 0);
}

TEST_F(ManyServices, RowDeletedElsewhereIsEmptyAndTheRestStands) {
    window();
    openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(ids[699]));
    EXPECT_EQ(list().item(700).Text, "");
    EXPECT_EQ(list().item(701).Tag, "1##701");
    EXPECT_EQ(list().item(699).Tag, "1##699");
}

TEST_F(ManyServices, NewServiceStandsAtTheEnd) {
    addInEditor([&] { type(5, "5"); });
    EXPECT_EQ(list().count(), kRows + 1);
    EXPECT_EQ(list().selectedIndex(), kRows + 1);
    EXPECT_EQ(cellOf(list().item(kRows + 1), ServiceColumn::Price), "5.00");
}

// --- Deleting.

TEST_F(Services, DeletingSelectsTheNextRow) {
    const int first = addService(machine, {{"Comments", "one"}});
    const int second = addService(machine, {{"Comments", "two"}});
    window().services.commands.deleteSelected();
    EXPECT_TRUE(stored(first, "ID").isNull());
    EXPECT_EQ(list().count(), 1);
    EXPECT_EQ(list().selectedItem()->Key, "K" + QString::number(second));
    EXPECT_EQ(description(), "two");
    EXPECT_EQ(window().controls.Data1[2]->Recordset()["ID"].asLong(), second);
}

TEST_F(Services, DeletingTheLastRowGoesBackToTheFirst) {
    const int first = addService(machine, {{"Comments", "one"}});
    addService(machine, {{"Comments", "two"}});
    window();
    list().select(2);
    window().services.commands.deleteSelected();
    EXPECT_EQ(description(), "one");
    EXPECT_EQ(window().controls.Data1[2]->Recordset()["ID"].asLong(), first);
}

TEST_F(Services, DeletingTheOnlyServiceEmptiesTheDetails) {
    addService(machine, {{"Comments", "one"}});
    window();
    EXPECT_TRUE(window().bars.toolbar.button("DeleteRecord")->isEnabled());
    window().services.commands.deleteSelected();
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(description(), "");
    EXPECT_EQ(kinds(), "");
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_FALSE(window().bars.toolbar.button("DeleteRecord")->isEnabled());
    window().services.commands.deleteSelected();
    EXPECT_TRUE(boxes.asked.isEmpty()) << "with no rows nothing happens";
}

TEST_F(Services, ServiceThatIsGoneCannotBeDeleted) {
    const int id = addService(machine);
    window();
    openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(id));
    window().services.commands.deleteSelected();
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Oops! Can't find this item in the database so it can not be deleted!");
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(list().count(), 1);
}

TEST_F(Services, FailingDeleteIsReportedAndTheRowStays) {
    addService(machine);
    window();
    window().controls.Data1[2]->Recordset().Close();
    window().services.commands.deleteSelected();
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith(
        "An unexpected error has occured while deleting the selected service.\n\n["))
        << boxes.lastText().toStdString();
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Critical);
    EXPECT_EQ(list().count(), 1);
}

TEST_F(Services, DeleteKeyIsTheDeleteCommandOfTheStage) {
    const int id = addService(machine);
    window();
    boxes.answers = {platform::BoxAnswer::No};
    QTest::keyClick(&list(), Qt::Key_Delete);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(list().count(), 1);
    boxes.answers = {platform::BoxAnswer::Yes};
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(list().count(), 0);
    EXPECT_TRUE(stored(id, "ID").isNull());
}

// --- Adding and editing.

TEST_F(Services, NewServiceGoesIntoListAndDatabase) {
    window().choices.DefaultGST = 18;
    addInEditor([&] {
        EXPECT_EQ(field(8)->text(), "18");
        type(0, "3/3/2026");
        type(1, "3/9/2026");
        type(5, "100");
        type(6, "10");
        type(7, "106.15");
        window()
            .services.commands.editor()
            ->findChild<QPlainTextEdit*>("Text1(4)")
            ->setPlainText("Čist ventilator");
        window().services.commands.editor()->findChild<QListWidget*>("List1")->item(2)->setSelected(true);
    });
    ASSERT_EQ(list().count(), 1);
    const auto& item = list().item(1);
    const int id = item.Key.mid(1).toInt();
    EXPECT_EQ(item.Text, "3/3/2026");
    EXPECT_EQ(subItems(item), QStringList({"3/9/2026", "", "100.00", "10", "18", "106.15"}));
    EXPECT_EQ(item.SmallIcon, "NotFinishedPayed") << "0.05 are below the tolerance";
    EXPECT_EQ(item.Tag, "3##Čist ventilator");
    EXPECT_EQ(description(), "Čist ventilator");
    EXPECT_EQ(kinds(), window().services.list.typeNames()[3]);
    EXPECT_EQ(list().selectedIndex(), 1);

    EXPECT_EQ(stored(id, "MachineID").asLong(), machine);
    EXPECT_EQ(stored(id, "ServiceStarted").asDate(), day(2026, 3, 3));
    EXPECT_EQ(stored(id, "ServiceToBeFinished").asDate(), day(2026, 3, 9));
    EXPECT_EQ(stored(id, "ServiceFinished").asDate(), kEmptyDate);
    EXPECT_EQ(stored(id, "Price").asCurrency(), money(100));
    EXPECT_EQ(stored(id, "Paid").asCurrency(), money(106.15));
    EXPECT_EQ(stored(id, "Discount").asSingle(), 10.0F);
    EXPECT_EQ(stored(id, "GST").asSingle(), 18.0F);
    EXPECT_EQ(stored(id, "Comments").asText(), "Čist ventilator");
    EXPECT_EQ(stored(id, "ServiceTypes").asText(), "3");
    EXPECT_EQ(window().controls.Data1[2]->Recordset()["ID"].asLong(), id) << "the new row is current";
    EXPECT_TRUE(window().bars.toolbar.button("EditRecord")->isEnabled());
    EXPECT_TRUE(window().bars.toolbar.button("DeleteRecord")->isEnabled());
}

TEST_F(Services, CancelledAddLeavesNoRow) {
    addInEditor([&] {
        type(5, "100");
        press(1);
    });
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(countRows("Services"), 0);
    EXPECT_EQ(window().controls.Data1[2]->Recordset().EditMode(), dao::Recordset::EditModeKind::None);
}

TEST_F(Services, EditedServiceChangesItsRowAndItsRecord) {
    const int other = addService(machine, {{"Comments", "other"}});
    const int id = addService(
        machine, {{"Comments", "before"}, {"ServiceTypes", "2"}, {"Discount", 10.0F}, {"GST", 18.0F}});
    window();
    list().select(2);
    window().services.list.showDetails(*list().selectedItem());
    editInEditor([&] {
        EXPECT_EQ(window().services.commands.editor()->ServiceID(), id);
        EXPECT_EQ(field(0)->text(), "3/3/2026");
        EXPECT_EQ(field(1)->text(), "");
        EXPECT_EQ(field(5)->text(), "100.00");
        EXPECT_EQ(field(6)->text(), "10");
        EXPECT_EQ(field(8)->text(), "18");
        EXPECT_EQ(field(7)->text(), "0.00");
        type(2, "3/8/2026");
        type(7, "106.2");
    });
    EXPECT_EQ(list().count(), 2);
    EXPECT_EQ(row(id).SmallIcon, "FinishedPayed");
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Finished), "3/8/2026");
    EXPECT_EQ(row(id).Tag, "2##before");
    EXPECT_EQ(stored(id, "ServiceFinished").asDate(), day(2026, 3, 8));
    EXPECT_EQ(stored(id, "Paid").asCurrency(), money(106.2));
    EXPECT_EQ(stored(id, "Discount").asSingle(), 10.0F);
    EXPECT_EQ(stored(id, "GST").asSingle(), 18.0F);
    EXPECT_EQ(stored(id, "ServiceToBeFinished").asDate(), kEmptyDate);
    EXPECT_EQ(stored(other, "Comments").asText(), "other");
    EXPECT_EQ(list().selectedIndex(), 2);
}

TEST_F(Services, CancelledEditChangesNothing) {
    const int id = addService(machine);
    window();
    editInEditor([&] {
        type(5, "7");
        press(1);
    });
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Price), "100.00");
    EXPECT_EQ(stored(id, "Price").asCurrency(), money(100));
}

TEST_F(Services, ConfirmedEditWritesTheComputerInView) {
    const int id = addService(machine);
    window();
    openDatabase().Execute(
        "UPDATE Services SET MachineID=" + std::to_string(addComputer(addClient("Other"))) +
        " WHERE ID=" + std::to_string(id));
    editInEditor([] {});
    EXPECT_EQ(stored(id, "MachineID").asLong(), machine);
}

TEST_F(Services, ServiceThatIsGoneCannotBeEdited) {
    const int id = addService(machine);
    window();
    editInEditor([&] { openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(id)); });
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Oops! Can't find this item in the database so it can not be edited!");
    EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(countRows("Services"), 0);
}

TEST_F(Services, FieldThatCannotBeWrittenLeavesTheOthers) {
    const int id = addService(machine);
    window();
    editInEditor([&] {
        field(5)->setText("1e30");  // more than the file's money can hold
        type(7, "9");
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(stored(id, "Price").asCurrency(), money(100));
    EXPECT_EQ(stored(id, "Paid").asCurrency(), money(9));
    EXPECT_NE(cellOf(row(id), ServiceColumn::Price), "100.00")
        << "the list shows what was entered, until it is filled again";
    refill();
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Price), "100.00");
}

TEST_F(Services, FailureToWriteIsNotReported) {
    addService(machine);
    window();
    editInEditor([&] {
        type(5, "55");
        window().controls.Data1[2]->Recordset().Close();
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(cellOf(list().item(1), ServiceColumn::Price), "55.00")
        << "the list shows more than the database holds";
}

TEST_F(Services, DoubleClickAndEnterEdit) {
    addService(machine);
    window().show();
    const QPoint place = list().visualRect(list().model()->index(0, 0)).center();
    inEditor(
        [&] {
            QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
            QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place);
        },
        [&] {
            EXPECT_EQ(field(5)->text(), "100.00");
            press(1);
        });
    inEditor([&] { QTest::keyClick(&list(), Qt::Key_Return); }, [&] { press(1); });
}

TEST_F(Services, EnterOnAnEmptyListDoesNothing) {
    window();
    QTest::keyClick(&list(), Qt::Key_Return);
    window().services.commands.editSelected();
    EXPECT_FALSE(window().services.commands.editor()->isVisible());
}

// --- Amounts there and back.

namespace {

struct Surroundings {
    const char* locale;
    bool dinars;
};

struct Amounts : Services, ::testing::WithParamInterface<Surroundings> {
    void SetUp() override {
        Services::SetUp();
        QLocale::setDefault(QLocale(QLatin1String(GetParam().locale)));
        CeneDinarske = GetParam().dinars;
        KursKupovni = 76.5F;
    }
    QString local(QString text) const {  // from the form with a decimal point
        const QLocale locale;
        return text.replace(',', '!')
            .replace('.', locale.decimalPoint())
            .replace('!', locale.groupSeparator());
    }
};

}  // namespace

TEST_P(Amounts, TypedAmountComesBackFromTheDatabase) {
    window();
    addInEditor([&] {
        type(5, "12345.67");
        EXPECT_EQ(field(5)->text(), local("12345.67"));
        type(7, "1000.5");
        type(8, "0");
    });
    const int id = list().item(1).Key.mid(1).toInt();
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Price), local("12,345.67"));
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Paid), local("1,000.50"));
    EXPECT_EQ(stored(id, "Price").asCurrency(), GetParam().dinars ? money(161.3813) : money(12345.67));
    refill();
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Price), local("12,345.67"));
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Paid), local("1,000.50"));
}

TEST_P(Amounts, ConfirmedEditLeavesStoredAmountsAlone) {
    const int id = addService(machine, {{"Price", money(1234.5)}, {"Paid", money(1000.2)}});
    const int large = addService(machine, {{"Price", money(12345.67)}, {"Paid", money(12345.6)}});
    window();
    for (const int service : {id, large}) {
        list().select("K" + QString::number(service));
        const QString price = cellOf(row(service), ServiceColumn::Price);
        for (int i = 0; i < 3; ++i) {
            editInEditor([] {});
        }
        EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
        refill("K" + QString::number(service));
        EXPECT_EQ(cellOf(row(service), ServiceColumn::Price), price);
    }
    EXPECT_EQ(stored(id, "Price").asCurrency(), money(1234.5));
    EXPECT_EQ(stored(id, "Paid").asCurrency(), money(1000.2));
    EXPECT_EQ(stored(large, "Price").asCurrency(), money(12345.67));
    EXPECT_EQ(stored(large, "Paid").asCurrency(), money(12345.6));
}

INSTANTIATE_TEST_SUITE_P(Everywhere, Amounts,
                         ::testing::Values(Surroundings{"en_US", false}, Surroundings{"en_US", true},
                                           Surroundings{"sr_Latn_RS", false},
                                           Surroundings{"sr_Latn_RS", true}),
                         [](const auto& test) {
                             return std::string(test.param.locale) +
                                    (test.param.dinars ? "_dinars" : "_euro");
                         });

TEST_F(Services, DatesOfAnotherLocaleGoThereAndBack) {
    QLocale::setDefault(QLocale("sr_Latn_RS"));
    const int id =
        addService(machine, {{"ServiceStarted", day(2026, 3, 3)}, {"ServiceFinished", day(2026, 12, 1)}});
    window();
    editInEditor([] {});
    EXPECT_EQ(stored(id, "ServiceStarted").asDate(), day(2026, 3, 3));
    EXPECT_EQ(stored(id, "ServiceFinished").asDate(), day(2026, 12, 1));
}

// --- Repricing.

TEST_F(Services, RepricingWritesTheTotalAndThePaidHalf) {
    CeneDinarske = true;
    KursKupovni = 80;
    const int id = addService(machine, {{"Paid", money(100)}, {"ServiceFinished", day(2026, 3, 8)}});
    EXPECT_EQ(row(id).SmallIcon, "FinishedPayed");
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 12000);
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Price), "12,000.00");
    EXPECT_EQ(row(id).SmallIcon, "FinishedNotPayed");
    EXPECT_EQ(stored(id, "Price").asCurrency(), money(150));
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 8000);
    EXPECT_EQ(row(id).SmallIcon, "FinishedPayed");
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 0);
    EXPECT_EQ(row(id).SmallIcon, "FinishedNotPayed") << "no price, never paid";
}

TEST_F(Services, RepricingTakesDiscountAndTaxFromTheRow) {
    const int id = addService(machine, {{"Discount", 10.0F}, {"GST", 18.0F}, {"Paid", money(106.15)}});
    window();
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 100);
    EXPECT_EQ(row(id).SmallIcon, "NotFinishedPayed");
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 101);
    EXPECT_EQ(row(id).SmallIcon, "NotFinishedNotPayed");
}

TEST_F(Services, RepricingKeepsTheFinishHalfWhateverTheDatabaseSays) {
    const int id = addService(machine);
    window();
    openDatabase().Execute("UPDATE Services SET ServiceFinished=#3/8/2026# WHERE ID=" + std::to_string(id));
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 50);
    EXPECT_EQ(row(id).SmallIcon, "NotFinishedNotPayed");
}

TEST_F(Services, RepricingAServiceThatIsGoneSaysSo) {
    const int id = addService(machine);
    window();
    openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(id));
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 50);
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(), "Oops! Can't find this item in the database so it can not be edited!");
}

TEST_F(Services, RepricingWritesTheTotalThoughTheRowCannotBeRead) {
    const int id = addService(machine);
    window();
    list().changeItem("K" + QString::number(id), [](platform::ListItem& item) { item.setSubItems(6, "?"); });
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 50);
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Price), "50.00");
    EXPECT_EQ(row(id).SmallIcon, "NotFinishedNotPayed");
    EXPECT_EQ(stored(id, "Price").asCurrency(), money(50));
}

TEST_F(Services, RepricingWritesTheTotalThoughTheRowIsNotListed) {
    const int id = addService(machine);
    window();
    list().clearItems();
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 50);
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(stored(id, "Price").asCurrency(), money(50));
}

// A lock that stays taken after a failed write would stop every other workstation.
TEST_F(Services, ServiceThatCouldNotBeWrittenHoldsNoLock) {
    window();
    openDatabase().Execute("DELETE * FROM Computers");  // a colleague has thrown the computer out meanwhile
    addInEditor([&] { type(3, "5"); });
    EXPECT_EQ(countRows("SELECT * FROM Services"), 0);
    EXPECT_EQ(window().controls.Data1[2]->Recordset().EditMode(), dao::Recordset::EditModeKind::None);
}

TEST_F(Services, RepricingThatCannotBeWrittenHoldsNoLock) {
    const int id = addService(machine);
    window();
    // The service goes while it is being edited.
    QObject::connect(list().model(), &QAbstractItemModel::dataChanged, &list(), [this, id] {
        openDatabase().Execute("DELETE * FROM Services WHERE ID=" + std::to_string(id));
    });
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 50);
    EXPECT_EQ(countRows("SELECT * FROM Services"), 0);
    EXPECT_EQ(window().controls.Data1[2]->Recordset().EditMode(), dao::Recordset::EditModeKind::None);
}

TEST_F(Services, FailingRepricingIsSilentAndLeavesThePrice) {
    BusyColleague colleague(databaseFile());
    const int id = addService(machine);
    window();
    colleague.hold();
    repriceService(window(), *window().controls.ListView1, *window().controls.Data1[2], id, 50);
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(cellOf(row(id), ServiceColumn::Price), "50.00")
        << "the list goes first, until it is filled again";
    colleague.letGo();
    EXPECT_EQ(stored(id, "Price").asCurrency(), money(100));
    EXPECT_EQ(window().controls.Data1[2]->Recordset().EditMode(), dao::Recordset::EditModeKind::None)
        << "the lock is let go";
}
