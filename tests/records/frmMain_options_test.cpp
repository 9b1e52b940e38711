// The options opened from the main window, and what of them is felt there at once.
#include <QFile>
#include <QPushButton>
#include <limits>

#include "main_window.h"
#include "shell/frmOptions.h"
#include "support/modal.h"

namespace {

class MainOptions : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        CeneDinarske = false;
        client = addClient();
        service = addService(addComputer(client));
    }
    void startOnServices() {
        start();
        tab(3);
        by_hand::clickRow(win().controls.ListView1, win().controls.ListView1->indexOf(key()));
    }
    QString key() const { return QStringLiteral("K%1").arg(service); }
    QString price() { return cellOf(win().controls.ListView1->item(key()), ServiceColumn::Price); }
    // Opens the window from the menu; `work` may leave it by itself, otherwise it is left by OK.
    void options(const std::function<void(frmOptions&)>& work) {
        inModal<frmOptions>([&] { give(Command::Options); },
                            [&](frmOptions& window) {
                                work(window);
                                if (window.isVisible()) {
                                    by_hand::click(button(window, 0));
                                }
                            });
    }
    static QPushButton* button(frmOptions& window, int index) {
        return window.findChild<QPushButton*>(QStringLiteral("Command1(%1)").arg(index));
    }
    static QLineEdit* number(frmOptions& window, int index) {
        return window.findChild<QLineEdit*>(QStringLiteral("Text1(%1)").arg(index));
    }
    static QCheckBox* check(frmOptions& window, int index) {
        return window.findChild<QCheckBox*>(QStringLiteral("Check1(%1)").arg(index));
    }
    static QString stored(const char* name) {
        return platform::GetSetting("Tarvello", "Settings", name, "(none)");
    }

    int client = 0, service = 0;
};

TEST_F(MainOptions, TheMenuOpensThemAtAnyTime) {
    start();
    open(win().bars.menus.menu(Menu::View));
    EXPECT_TRUE(win().bars.menus.entry(Command::Options)->isEnabled());
    by_hand::closeMenus();
    options([&](frmOptions& window) {
        EXPECT_EQ(window.parentWidget(), &win());
        by_hand::click(button(window, 1));
    });
    EXPECT_EQ(win().findChild<frmOptions*>(), nullptr);
    EXPECT_NE(stored("OptionsPosition"), "(none)");
}

TEST_F(MainOptions, TheMainWindowsValuesGoInAndComeBack) {
    start();
    win().choices.session.AlwaysCreateBackupDB = false;
    win().choices.filter.ShowMsgBoxFilterResults = true;
    win().choices.filter.DueDateDiff = 11;
    win().choices.DefaultGST = 7;
    options([&](frmOptions& window) {
        EXPECT_FALSE(check(window, 0)->isChecked());
        EXPECT_TRUE(check(window, 1)->isChecked());
        EXPECT_EQ(number(window, 0)->text(), "11");
        EXPECT_EQ(number(window, 1)->text(), "7");
        by_hand::click(check(window, 0));
        by_hand::click(check(window, 1));
        type(number(window, 0), "21");
        type(number(window, 1), "18");
    });
    EXPECT_TRUE(win().choices.session.AlwaysCreateBackupDB);
    EXPECT_FALSE(win().choices.filter.ShowMsgBoxFilterResults);
    EXPECT_EQ(win().choices.filter.DueDateDiff, 21);
    EXPECT_EQ(win().choices.DefaultGST, 18);
    end();
    EXPECT_EQ(stored("AlwaysCreateBackupDB"), "True");
    EXPECT_EQ(stored("ShowFilterStatistics"), "False");
    EXPECT_EQ(stored("DueDateDiff"), "21");
    EXPECT_EQ(stored("DefaultGST"), "18");
}

TEST_F(MainOptions, CancelBringsNothingBack) {
    startOnServices();
    options([&](frmOptions& window) {
        by_hand::click(check(window, 0));
        by_hand::click(check(window, 1));
        by_hand::click(check(window, 2));
        type(number(window, 0), "21");
        type(number(window, 1), "18");
        type(number(window, 2), "90");
        by_hand::click(button(window, 1));
    });
    EXPECT_TRUE(win().choices.session.AlwaysCreateBackupDB);
    EXPECT_TRUE(win().choices.filter.ShowMsgBoxFilterResults);
    EXPECT_EQ(win().choices.filter.DueDateDiff, 5);
    EXPECT_EQ(win().choices.DefaultGST, 0);
    EXPECT_FALSE(CeneDinarske);
    EXPECT_EQ(KursKupovni, 80.0F);
    EXPECT_EQ(price(), "100.00");
}

TEST_F(MainOptions, AnotherUnitShowsTheAmountsAnewAtOnce) {
    startOnServices();
    EXPECT_EQ(price(), "100.00");
    options([&](frmOptions& window) { by_hand::click(check(window, 2)); });
    tab(3);
    EXPECT_EQ(price(), "8,000.00");
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Price)), "Price [DIN]");
    options([&](frmOptions& window) { type(number(window, 2), "117.5"); });
    tab(3);
    EXPECT_EQ(price(), "11,750.00");
    options([&](frmOptions& window) { by_hand::click(check(window, 2)); });
    tab(3);
    EXPECT_EQ(price(), "100.00");
    EXPECT_EQ(win().controls.ListView1->columns().text(columnNumber(ServiceColumn::Price)), "Price [EUR]");
}

// A refresh reads every record of the shop again; it must come when it is needed, and only then.
TEST_F(MainOptions, WithoutAChangeOfUnitOrRateNothingIsReadAgain) {
    startOnServices();
    ASSERT_EQ(price(), "100.00");
    openDatabase().Execute("UPDATE Services SET Price=200");
    options([&](frmOptions& window) {
        by_hand::click(check(window, 3));
        type(number(window, 0), "9");
    });
    EXPECT_EQ(price(), "100.00");
    options([&](frmOptions& window) { type(number(window, 2), "90"); });
    tab(3);
    EXPECT_EQ(price(), "200.00");
}

TEST_F(MainOptions, TheDefaultTaxStandsInTheNextNewService) {
    startOnServices();
    options([&](frmOptions& window) { type(number(window, 1), "18"); });
    inModal<frmDetails>([&] { tool("NewRecord"); },
                        [](frmDetails& editor) {
                            EXPECT_EQ(editor.findChild<QLineEdit*>("Text1(8)")->text(), "18");
                            editor.reject();
                        });
}

TEST_F(MainOptions, TheBackupGoesByWhatWasChosenLast) {
    start();
    options([&](frmOptions& window) { by_hand::click(check(window, 0)); });
    end();
    EXPECT_FALSE(QFile::exists(path("Tarvello.bkp")));
    start();
    options([&](frmOptions& window) { by_hand::click(check(window, 0)); });
    end();
    EXPECT_TRUE(QFile::exists(path("Tarvello.bkp")));
}

// Somebody may have written anything into the settings by hand.
TEST_F(MainOptions, ValuesTooLargeForTheWindowAreTakenAsTheLargest) {
    start();
    win().choices.filter.DueDateDiff = 100000;
    win().choices.DefaultGST = -100000;
    options([&](frmOptions& window) {
        EXPECT_EQ(number(window, 0)->text(), QString::number(std::numeric_limits<qint16>::max()));
        EXPECT_EQ(number(window, 1)->text(), QString::number(std::numeric_limits<qint16>::min()));
        by_hand::click(button(window, 1));
    });
    EXPECT_EQ(win().choices.filter.DueDateDiff, 100000);
}

}  // namespace
