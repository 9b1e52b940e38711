// What the keyboard does in the main window beside walking through the fields: the keys of commands, those
// that lead from stage to stage, and the letters of the labels.

#include <gmock/gmock.h>

#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QMap>

#include "common/window_helpers.h"
#include "documents/frmPrintInvoiceEx.h"
#include "main_window.h"
#include "support/modal.h"
#include "support/spoken.h"

namespace {

class Keys : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        client = addClient("Anic", "Vesna");
        computer = addComputer(client, "Desk");
    }
    static void ctrl(Qt::Key key) { by_hand::press(key, Qt::ControlModifier); }
    static void alt(Qt::Key key) { by_hand::press(key, Qt::AltModifier); }
    int stage() { return win().shop.stages.CurrentStage; }
    std::string stored(const char* column) { return valueOf("Customers", "CustID", client, column).asText(); }
    QWidget* searchBox(size_t stageIndex) { return win().controls.Text2[stageIndex]; }

    int client = 0, computer = 0;
};

TEST_F(Keys, StandBesideTheirCommandsInTheMenus) {
    start();
    const auto keyOf = [&](Command command) {
        return win().bars.menus.entry(command)->shortcut().toString(QKeySequence::PortableText);
    };
    EXPECT_EQ(keyOf(Command::AddRecord), "Ctrl+N");
    EXPECT_EQ(keyOf(Command::SaveRecord), "Ctrl+S");
    EXPECT_EQ(keyOf(Command::Invoice), "Ctrl+P");
    EXPECT_EQ(keyOf(Command::Refresh), "F5");
    EXPECT_TRUE(win().bars.menus.popupEntry(Command::Invoice)->shortcut().isEmpty());
}

TEST_F(Keys, CtrlNBeginsARecordAndCtrlSSavesIt) {
    start();
    by_hand::click(field(12));
    ctrl(Qt::Key_N);
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    typeClient("Babic", "Ana");
    ctrl(Qt::Key_S);
    EXPECT_FALSE(win().shop.editing.AddNewMode);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Babic, Ana"}));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Keys, CtrlNKeepsWhatIsTypedInTheRecordThatItLeaves) {
    start();
    type(12, "011 555");
    ctrl(Qt::Key_N);
    EXPECT_TRUE(win().shop.editing.AddNewMode);
    EXPECT_EQ(stored("Phone"), "011 555");
}

TEST_F(Keys, OfCommandsThatMayNotBeGivenDoNothing) {
    start();
    by_hand::click(field(12));
    ctrl(Qt::Key_S);
    ctrl(Qt::Key_P);
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(text(12), "") << "and no letter is typed";
}

TEST_F(Keys, CtrlNOnServicesWantsAComputer) {
    addClient("Zoric", "Ivan");
    start();
    choose(0, QStringLiteral("Zoric, Ivan"));
    tab(2);
    tab(3);
    by_hand::click(win().controls.ListView1);
    ctrl(Qt::Key_N);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(Keys, CtrlPShowsTheInvoiceOfTheChosenService) {
    addService(computer);
    start();
    tab(3);
    by_hand::click(win().controls.ListView1);
    QString title;
    inModal<frmPrintInvoiceEx>([] { ctrl(Qt::Key_P); },
                               [&](frmPrintInvoiceEx& window) {
                                   title = window.windowTitle();
                                   window.reject();
                               });
    EXPECT_EQ(title, "Stampanje Racuna");
}

TEST_F(Keys, F5ReadsEverythingAfreshAndKeepsWhatIsTyped) {
    start();
    type(12, "011 555");
    addClient("Zoric", "Ivan");
    ASSERT_EQ(entries(0), QStringList({"Anic, Vesna"}));
    by_hand::click(field(12));
    by_hand::press(Qt::Key_F5);
    EXPECT_EQ(entries(0), QStringList({"Anic, Vesna", "Zoric, Ivan"}));
    EXPECT_EQ(text(12), "011 555");
}

TEST_F(Keys, LeadFromStageToStage) {
    addService(computer);
    start();
    by_hand::click(field(0));
    ctrl(Qt::Key_PageUp);
    EXPECT_EQ(stage(), 1) << "there is none before it";
    ctrl(Qt::Key_PageDown);
    EXPECT_EQ(stage(), 2);
    EXPECT_EQ(QApplication::focusWidget(), searchBox(1));
    ctrl(Qt::Key_PageDown);
    EXPECT_EQ(stage(), 3);
    EXPECT_EQ(QApplication::focusWidget(), win().controls.ListView1);
    ctrl(Qt::Key_PageDown);
    EXPECT_EQ(stage(), 3) << "there is none behind it";
    ctrl(Qt::Key_PageUp);
    EXPECT_EQ(stage(), 2);
    alt(Qt::Key_1);
    EXPECT_EQ(stage(), 1);
    EXPECT_EQ(QApplication::focusWidget(), searchBox(0));
    alt(Qt::Key_3);
    EXPECT_EQ(stage(), 3);
    alt(Qt::Key_2);
    EXPECT_EQ(stage(), 2);
}

TEST_F(Keys, StayOnTheStageThatHasToBeMended) {
    start();
    type(0, "");
    boxes.answers = {platform::BoxAnswer::Yes};
    alt(Qt::Key_2);
    EXPECT_EQ(stage(), 1);
    EXPECT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(QApplication::focusWidget(), field(0));
}

TEST_F(Keys, LetADateThatIsJustBeingTypedCount) {
    start();
    const auto born = [&] { return valueOf("Customers", "CustID", client, "BirthDate"); };
    type(12, "011 555");
    type(win().controls.DTPicker1[0]->edit(), "1/1/1970");
    ctrl(Qt::Key_S);
    EXPECT_EQ(born(), dao::Value(dao::Date{25569.0}));
    type(12, "011 556");
    type(win().controls.DTPicker1[0]->edit(), "1/2/1970");
    ctrl(Qt::Key_PageDown);
    EXPECT_EQ(born(), dao::Value(dao::Date{25570.0}));
}

TEST_F(Keys, CtrlFLeadsToTheSearchBoxAndMarksWhatStandsThere) {
    start();
    for (const int each : {1, 2}) {
        tab(each);
        QWidget* box = searchBox(static_cast<size_t>(each - 1));
        type(box, "x");
        by_hand::press(Qt::Key_Tab);
        ASSERT_NE(QApplication::focusWidget(), box);
        ctrl(Qt::Key_F);
        ASSERT_EQ(QApplication::focusWidget(), box);
        EXPECT_EQ(qobject_cast<QLineEdit*>(box)->selectedText(), "x");
    }
    tab(3);
    by_hand::click(win().controls.ListView1);
    ctrl(Qt::Key_F);
    EXPECT_EQ(QApplication::focusWidget(), win().controls.ListView1) << "services have no search box";
}

// --- Letters.

// The letters that lead somewhere, each with what it leads to.
QMultiMap<QString, QString> lettersOf(const QWidget& pane) {
    QMultiMap<QString, QString> letters;
    const auto add = [&](const QString& caption) {
        letters.insert(QKeySequence::mnemonic(caption).toString(), spokenCaption(caption));
    };
    for (const QLabel* label : pane.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            add(label->text());
        }
    }
    for (const QCheckBox* check : pane.findChildren<QCheckBox*>()) {
        if (!check->text().isEmpty()) {
            add(check->text());
        }
    }
    return letters;
}

TEST_F(Keys, EachLabelHasALetterAndFewShareOne) {
    start();
    const QStringList ofMenus{"Alt+D", "Alt+V", "Alt+P"};
    const QList<QStringList> shared{{"Alt+B", "Alt+I", "Alt+T"}, {}};
    for (qsizetype i = 0; i < 2; ++i) {
        const auto letters = lettersOf(*win().controls.Picture1[static_cast<size_t>(i)]);
        EXPECT_EQ(letters.size(), i == 0 ? 23 : 20);
        EXPECT_EQ(letters.count(QString()), 0) << letters.value(QString()).toStdString();
        QStringList twice;
        for (const QString& letter : letters.uniqueKeys()) {
            EXPECT_FALSE(ofMenus.contains(letter)) << letter.toStdString();
            if (letters.count(letter) > 1) {
                twice.append(letter);
            }
        }
        EXPECT_EQ(twice, shared.at(i));
    }
}

TEST_F(Keys, TheLetterOfALabelLeadsToItsField) {
    start();
    by_hand::click(field(12));
    const std::pair<Qt::Key, int> letters[] = {
        {Qt::Key_S, 0}, {Qt::Key_M, 13}, {Qt::Key_X, 14}, {Qt::Key_C, 18}, {Qt::Key_G, 1}};
    for (const auto& [letter, index] : letters) {
        alt(letter);
        EXPECT_EQ(QApplication::focusWidget(), field(index)) << static_cast<char>(letter);
    }
    alt(Qt::Key_U);
    EXPECT_EQ(QApplication::focusWidget(), win().controls.DTPicker1[2]->edit());
    alt(Qt::Key_L);
    EXPECT_EQ(QApplication::focusWidget(), win().controls.Combo1[0]);
}

TEST_F(Keys, ASharedLetterLeadsToOneAfterTheOther) {
    start();
    by_hand::click(field(12));
    QWidgetList reached;
    for (int i = 0; i < 2; ++i) {
        alt(Qt::Key_T);
        reached.append(QApplication::focusWidget());
    }
    EXPECT_THAT(reached, testing::UnorderedElementsAre(field(8), field(9)));
}

// --- The Tab key.

TEST_F(Keys, TabGoesDownTheColumnsOfThePanes) {
    start();
    const QList<int> columns[] = {
        {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18},
        {19, 35, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 39, 40, 32, 33, 34, 36}};
    for (const int each : {1, 2}) {
        tab(each);
        QList<int> met;
        by_hand::click(searchBox(static_cast<size_t>(each - 1)));
        for (int step = 0; step < 40; ++step) {
            by_hand::press(Qt::Key_Tab);
            for (int i = 0; i < EntryFields::kCount; ++i) {
                if (QApplication::focusWidget() == field(i) && !met.contains(i)) {
                    met.append(i);
                }
            }
        }
        EXPECT_EQ(met, columns[each - 1]);
        expectTabFollowsTheEye(win());
    }
    tab(3);
    expectTabFollowsTheEye(win());
}

}  // namespace
