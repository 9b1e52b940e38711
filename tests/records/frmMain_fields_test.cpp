// The entry fields of the panes: which column each shows and writes, and what stands before it.

#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>

#include "common/window_helpers.h"
#include "common/window_places.h"
#include "main_window.h"
#include "support/topics.h"

namespace {

struct Entry {
    int index;  // of Text1
    const char* column;
    const char* label;  // "": the frame's title says it
    bool required = false;
};

const Entry kClient[] = {
    {0, "Surname", "Surname", true},
    {1, "GivenName", "Given name", true},
    {2, "NickName", "Nickname"},
    {3, "BirthPlace", "Birth place"},
    {4, "PIDNo", "Card number"},
    {5, "IssuePlace", "Issued in"},
    {6, "FirmName", "Firm"},
    {7, "Street", "Street and number", true},
    {8, "City", "Town", true},
    {9, "State", "State"},
    {10, "ZIP", "Postal code", true},
    {11, "Country", "Country", true},
    {12, "Phone", "Phone"},
    {13, "Cellular", "Mobile phone"},
    {14, "FAX", "Fax"},
    {15, "EMail", "E-mail"},
    {16, "Web", "Web"},
    {17, "ICQ", "ICQ"},
    {18, "Comments", ""},
};
const Entry kComputer[] = {
    {19, "MachineName", "Computer name", true},
    {20, "Processor", "Processor"},
    {21, "MotherBoard", "Motherboard"},
    {22, "CacheMem", "Cache memory"},
    {23, "RAMMem", "Memory (RAM)"},
    {24, "HD", "Hard disk"},
    {25, "Floppy", "Floppy drive"},
    {26, "CD", "CD/DVD drive"},
    {27, "CDWriter", "CD writer"},
    {28, "VideoCard", "Video card"},
    {29, "SoundCard", "Sound card"},
    {30, "PowerSupply", "Power supply"},
    {31, "Modem", "Modem"},
    {32, "Monitor", "Monitor"},
    {33, "Printer", "Printer"},
    {34, "Scanner", "Scanner"},
    {35, "OS", "Operating system"},
    {36, "Comments", ""},
    {39, "Network", "Network"},
    {40, "InternetEquipment", "Internet equipment"},
};

class Fields : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        client = addClient("Anic", "Vesna");
        computer = addComputer(client, "Desk");
    }
    // Short enough for the narrowest column.
    static QString words(const Entry& entry) { return QStringLiteral("w%1").arg(entry.index); }
    std::string stored(const char* table, const char* key, int number, const char* column) {
        return valueOf(table, key, number, column).asText();
    }
    QString labelOf(const QWidget* widget) {
        for (const QLabel* label : win().findChildren<QLabel*>()) {
            if (label->buddy() == widget) {
                return spokenCaption(label->text());
            }
        }
        return {};
    }
    int client = 0, computer = 0;
};

TEST_F(Fields, WhatIsTypedGoesIntoItsColumnAndComesBack) {
    start();
    for (const Entry& entry : kClient) {
        type(entry.index, words(entry));
    }
    tool("SaveRecord");
    tab(2);
    for (const Entry& entry : kComputer) {
        type(entry.index, words(entry));
    }
    tool("SaveRecord");
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    for (const Entry& entry : kClient) {
        EXPECT_EQ(stored("Customers", "CustID", client, entry.column), words(entry).toStdString());
    }
    for (const Entry& entry : kComputer) {
        EXPECT_EQ(stored("Computers", "MachineID", computer, entry.column), words(entry).toStdString());
    }
    end();
    start();
    for (const Entry& entry : kClient) {
        EXPECT_EQ(text(entry.index), words(entry)) << entry.column;
    }
    for (const Entry& entry : kComputer) {
        EXPECT_EQ(text(entry.index), words(entry)) << entry.column;
    }
}

TEST_F(Fields, DatesAndTheFirmBoxGoIntoTheirColumns) {
    start();
    const char* days[] = {"1/1/1970", "1/2/1970", "1/3/1970"};
    for (size_t i = 0; i < 3; ++i) {
        type(win().controls.DTPicker1[i]->edit(), days[i]);
        by_hand::press(Qt::Key_Tab);
    }
    by_hand::click(win().controls.Check1);
    tool("SaveRecord");
    const auto value = [&](const char* column) { return valueOf("Customers", "CustID", client, column); };
    EXPECT_EQ(value("BirthDate"), dao::Value(dao::Date{25569.0}));
    EXPECT_EQ(value("IssueDate"), dao::Value(dao::Date{25570.0}));
    EXPECT_EQ(value("ValidUntil"), dao::Value(dao::Date{25571.0}));
    EXPECT_TRUE(value("FirmAddress").asBool());
}

TEST_F(Fields, EachHasItsLabelAndTheRequiredOnesAStar) {
    start();
    for (const auto& entries : {std::span<const Entry>(kClient), std::span<const Entry>(kComputer)}) {
        for (const Entry& entry : entries) {
            const QString label = QLatin1String(entry.label) + QLatin1String(entry.required ? " *" : "");
            EXPECT_EQ(labelOf(field(entry.index)), label) << entry.column;
        }
    }
    EXPECT_EQ(labelOf(win().controls.DTPicker1[0]), "Birth date");
    EXPECT_EQ(labelOf(win().controls.DTPicker1[1]), "Issued on");
    EXPECT_EQ(labelOf(win().controls.DTPicker1[2]), "Valid until");
    EXPECT_EQ(spokenCaption(win().controls.Check1->text()), "Firm's address");
    EXPECT_EQ(labelOf(win().controls.Combo1[0]), "Client");
    EXPECT_EQ(labelOf(win().controls.Combo1[1]), "Computer");
    for (const int comments : {18, 36}) {
        EXPECT_EQ(qobject_cast<QGroupBox*>(field(comments)->parentWidget())->title(), "&Comments");
    }
}

TEST_F(Fields, FieldsAreSeenOnThePaneOfTheirStage) {
    start();
    for (const int stage : {1, 2, 3}) {
        tab(stage);
        for (int i = 0; i < EntryFields::kCount; ++i) {
            const int home = i <= 18 ? 1 : i == 37 || i == 38 ? 3 : 2;
            EXPECT_EQ(field(i)->isVisible(), home == stage) << i << " on stage " << stage;
        }
    }
}

TEST_F(Fields, EachFieldHasItsOwnTopic) {
    AskedTopics topics;
    const auto topicOf = [&](QWidget* widget) {
        topics.clear();
        by_hand::click(widget);
        by_hand::press(Qt::Key_F1);
        return topics.all();
    };
    start();
    const int expected[] = {503, 504, 505, 507, 508, 511, 512, 514, 515, 516,
                            517, 518, 519, 520, 521, 522, 523, 524, 525};
    for (int i = 0; i < 19; ++i) {
        EXPECT_EQ(topicOf(field(i)), QList<int>({expected[i]})) << i;
    }
    EXPECT_EQ(topicOf(win().controls.DTPicker1[0]->edit()), QList<int>({506}));
    EXPECT_EQ(topicOf(win().controls.DTPicker1[1]->edit()), QList<int>({509}));
    EXPECT_EQ(topicOf(win().controls.DTPicker1[2]->edit()), QList<int>({510}));
    EXPECT_EQ(topicOf(win().controls.Text2[0]), QList<int>({501}));
    by_hand::press(Qt::Key_Tab);
    by_hand::press(Qt::Key_F1);
    EXPECT_EQ(topics.all().last(), 502) << "the selector";
    tab(2);
    for (int i = 19; i <= 36; ++i) {
        EXPECT_EQ(topicOf(field(i)), QList<int>({602 + i - 19})) << i;
    }
    EXPECT_EQ(topicOf(field(39)), QList<int>({620}));
    EXPECT_EQ(topicOf(field(40)), QList<int>({621}));
    EXPECT_EQ(topicOf(win().controls.Text2[1]), QList<int>({601}));
    tab(3);
    EXPECT_EQ(topicOf(field(37)), QList<int>({702}));
    EXPECT_EQ(topicOf(field(38)), QList<int>({703}));
}

TEST_F(Fields, SmallButtonsHaveTopicsAndTipsToo) {
    AskedTopics topics;
    start();
    by_hand::click(field(15));
    for (const int topic : {526, 523, 527}) {  // the button, the web field, its button
        by_hand::press(Qt::Key_Tab);
        by_hand::press(Qt::Key_F1);
        EXPECT_EQ(topics.all().last(), topic);
    }
    EXPECT_EQ(win().controls.Command1[0]->toolTip(), "Write an e-mail");
    EXPECT_EQ(win().controls.Command1[1]->toolTip(), "Open the web page");
    EXPECT_FALSE(win().controls.Command1[0]->icon().isNull());
    EXPECT_FALSE(win().controls.Command1[1]->icon().isNull());
    EXPECT_NE(win().controls.Command1[0]->icon().pixmap(16, 16).toImage(),
              win().controls.Command1[1]->icon().pixmap(16, 16).toImage());
}

TEST_F(Fields, FramesBearTheirTitles) {
    start();
    const auto titles = [&](int stageIndex) {
        QStringList all;
        for (const QGroupBox* frame :
             win().controls.Picture1[static_cast<size_t>(stageIndex)]->findChildren<QGroupBox*>()) {
            all.append(spokenCaption(frame->title()));
        }
        return all;
    };
    EXPECT_EQ(titles(0),
              QStringList({"Identity", "Firm and address", "Contact", "Personal card", "Comments"}));
    EXPECT_EQ(titles(1),
              QStringList({"Computer", "Processor and memory", "Storage", "Peripherals", "Comments"}));
    EXPECT_EQ(titles(2), QStringList({"Description", "Kinds of service"}));
    for (const size_t i : {0U, 1U}) {
        EXPECT_EQ(win().controls.Text2[i]->placeholderText(), "Type to find");
    }
}

TEST_F(Fields, TabLeavesTheCommentsAndSelectsThemOnTheWayIn) {
    start();
    type(18, "Pays late.");
    by_hand::press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_NE(QApplication::focusWidget(), field(18));
    by_hand::press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), field(18));
    EXPECT_EQ(qobject_cast<QPlainTextEdit*>(field(18))->textCursor().selectedText(), "Pays late.");
    by_hand::press(Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), field(18));
    EXPECT_EQ(text(18), "Pays late.");
}

TEST_F(Fields, CtrlEnterBreaksNoLineInALockedText) {
    start();
    tab(3);
    by_hand::click(field(37));
    by_hand::press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(text(37), "");
}

TEST_F(Fields, NoneCoversAnother) {
    start();
    const auto placeOf = [&](const QWidget* widget) {
        return QRect(widget->mapTo(&win(), QPoint(0, 0)), widget->size());
    };
    for (const int stage : {1, 2, 3}) {
        tab(stage);
        QList<QWidget*> shown;
        for (QWidget* widget :
             win().controls.Picture1[static_cast<size_t>(stage - 1)]->findChildren<QWidget*>()) {
            const bool entry = widget->objectName().contains('(') || widget == win().controls.ListView1 ||
                               qobject_cast<QLabel*>(widget) != nullptr;
            if (widget->isVisible() && entry && !widget->objectName().startsWith("qt_")) {
                shown.append(widget);
            }
        }
        ASSERT_GT(shown.size(), 1);
        for (const QWidget* one : std::as_const(shown)) {
            EXPECT_TRUE(
                placeOf(win().controls.Picture1[static_cast<size_t>(stage - 1)]).contains(placeOf(one)))
                << one->objectName().toStdString();
            for (const QWidget* other : std::as_const(shown)) {
                EXPECT_TRUE(one == other || one->isAncestorOf(other) || other->isAncestorOf(one) ||
                            !placeOf(one).intersects(placeOf(other)))
                    << one->objectName().toStdString() << " and " << other->objectName().toStdString();
            }
        }
    }
}

TEST_F(Fields, TypeAheadBoxStandsBeforeItsSelectorOnTheSameLine) {
    start();
    for (const size_t i : {0U, 1U}) {
        tab(static_cast<int>(i) + 1);
        EXPECT_LT(win().controls.Text2[i]->geometry().right(), win().controls.Combo1[i]->geometry().left());
        EXPECT_EQ(win().controls.Text2[i]->geometry().center().y(),
                  win().controls.Combo1[i]->geometry().center().y());
    }
}

TEST_F(Fields, ListOfServicesTakesTheGreaterPartOfItsPane) {
    start();
    tab(3);
    const QWidget* pane = win().controls.Picture1[2];
    EXPECT_GT(win().controls.ListView1->height(), pane->height() / 2);
    EXPECT_GT(win().controls.ListView1->width(), pane->width() * 9 / 10);
    EXPECT_GT(field(37)->width(), field(38)->width());
}

TEST_F(Fields, DatesAreReadOutByTheirNames) {
    start();
    EXPECT_EQ(win().controls.DTPicker1[0]->edit()->accessibleName(), "Birth date");
    EXPECT_EQ(win().controls.DTPicker1[1]->edit()->accessibleName(), "Issued on");
    EXPECT_EQ(win().controls.DTPicker1[2]->edit()->accessibleName(), "Valid until");
}

}  // namespace
