#pragma once

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <functional>
#include <memory>

#include "common/list_cells.h"
#include "records/commands.h"
#include "records/frmDetails.h"
#include "records/frmMain.h"
#include "records/service_fields.h"
#include "shell/frmSplash.h"
#include "shell/program_windows.h"
#include "support/by_hand.h"
#include "support/fixture.h"

// The main window on the shop's first morning, driven by keys and clicks.
class MainWindow : public DeliveredFixture {
 protected:
    void TearDown() override {
        window_.reset();
        DeliveredFixture::TearDown();
    }

    // The window before Display. No tip comes up over it.
    frmMain& make() {
        ShowTipsAtStartup = false;
        window_ = std::make_unique<frmMain>(programWindows());
        return *window_;
    }
    // The window on show. Records the test needs are added before.
    frmMain& start() {
        closeDatabases();
        make();
        EXPECT_TRUE(window_->Display());
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        return *window_;
    }
    // Closed and gone, as at the end of the day.
    void end() {
        window_->close();
        window_.reset();
    }
    frmMain& win() { return *window_; }

    // The stored queries of the shop, by name.
    QStringList queries() {
        QStringList names;
        const dao::QueryDefsCollection all = openDatabase().QueryDefs();
        for (int i = 0; i < all.Count(); ++i) {
            names.append(QString::fromStdString(all[i].Name()));
        }
        closeDatabases();
        return names;
    }
    // Looks at the bar of something long, at each turn of the windows at which it is there, from now on until
    // the watch is stopped.
    void whileProgressIsShown(QTimer& watch, const std::function<void(const QProgressBar&)>& look) {
        QObject::connect(&watch, &QTimer::timeout, &watch, [this, look] {
            if (const auto* bar = win().findChild<QProgressBar*>("ProgressBar1"); bar != nullptr) {
                look(*bar);
            }
        });
        watch.start(0);
    }
    // A day's end whose backup takes long enough for its bar to come; `look` sees that at each turn.
    void expectBackupShown(const std::function<void(const QProgressBar&)>& look) {
        start();
        win().shop.session.BackupPatience = 0;
        int turns = 0;
        QTimer watch;
        whileProgressIsShown(watch, [&](const QProgressBar& bar) {
            ++turns;
            EXPECT_TRUE(bar.isVisible());
            EXPECT_EQ(bar.accessibleName(), "Backup");
            look(bar);
        });
        win().close();
        watch.stop();
        EXPECT_GT(turns, 0);
        EXPECT_EQ(win().findChild<QProgressBar*>("ProgressBar1"), nullptr);
        EXPECT_TRUE(win().isUnloaded());
        EXPECT_TRUE(QFile::exists(path("Tarvello.bkp")));
        EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    }

    QWidget* face(const QString& key) {
        return win().controls.Toolbar1->widgetForAction(win().bars.toolbar.button(key));
    }
    void tool(const QString& key) { QTest::mouseClick(face(key), Qt::LeftButton); }
    bool canUse(const QString& key) { return win().bars.toolbar.button(key)->isEnabled(); }
    void tab(int stage) {
        QTest::mouseClick(win().controls.TabStrip1, Qt::LeftButton, Qt::NoModifier,
                          win().controls.TabStrip1->tabRect(stage - 1).center());
    }
    QString caption(int stage) { return win().controls.TabStrip1->caption(stage - 1); }

    // Opens the menu that the command stands in where it hangs, with its state rule, and clicks its entry.
    void give(Command command) { choose(win().bars.menus.entry(command)); }
    void giveInPopup(Command command) { choose(win().bars.menus.popupEntry(command)); }
    void choose(QAction* entry) {
        QMenu* menu = menuOf(entry);
        open(menu);
        by_hand::clickItem(menu, entry);
    }
    static QMenu* menuOf(const QAction* entry) {
        for (QObject* place : entry->associatedObjects()) {
            if (auto* menu = qobject_cast<QMenu*>(place)) {
                return menu;
            }
        }
        return nullptr;
    }
    // The pop-up menu comes with a right click on the chosen row, on the empty list where there is none.
    void open(QMenu* menu) {
        if (menu != win().bars.menus.menu(Menu::Popup)) {
            return by_hand::openMenu(menu);
        }
        const int row = win().controls.ListView1->selectedIndex();
        if (row > 0) {
            by_hand::rightClickRow(win().controls.ListView1, row);
        } else {
            by_hand::rightClick(win().controls.ListView1, QPoint(20, 20));
        }
        by_hand::waitUntilOpen(menu);
    }
    QMenu* menuNamed(const char* name) { return win().findChild<QMenu*>(QLatin1String(name)); }

    QWidget* field(int index) { return win().controls.Text1[static_cast<size_t>(index)]; }
    QString text(int index) { return win().shop.fields.text(index); }
    void type(int index, const QString& words) { type(field(index), words); }
    static void type(QWidget* widget, const QString& words) { by_hand::type(widget, words); }
    QString chosen(int stageIndex) {
        return win().controls.Combo1[static_cast<size_t>(stageIndex)]->currentText();
    }
    QStringList entries(int stageIndex) {
        QStringList all;
        const platform::Selector* selector = win().controls.Combo1[static_cast<size_t>(stageIndex)];
        for (int i = 0; i < selector->entryCount(); ++i) {
            all.append(selector->entryText(i));
        }
        return all;
    }
    // From the list that drops down.
    void choose(int stageIndex, const QString& entry) {
        const int wanted = static_cast<int>(entries(stageIndex).indexOf(entry));
        ASSERT_GE(wanted, 0) << entry.toStdString();
        by_hand::pick(win().controls.Combo1[static_cast<size_t>(stageIndex)], wanted);
    }
    // Types the required fields of a client into the pane.
    void typeClient(const QString& surname, const QString& givenName) {
        type(0, surname);
        type(1, givenName);
        type(7, QStringLiteral("Lipova 1"));
        type(8, QStringLiteral("Beograd"));
        type(10, QStringLiteral("11000"));
        type(11, QStringLiteral("Srbija"));
    }
    bool locked(int index) {
        if (const auto* line = qobject_cast<const QLineEdit*>(field(index))) {
            return line->isReadOnly();
        }
        return qobject_cast<const QPlainTextEdit*>(field(index))->isReadOnly();
    }
    qint32 currentKey(int stageIndex) {
        const char* keys[] = {"CustID", "MachineID", "ID"};
        return win().controls.Data1[static_cast<size_t>(stageIndex)]->Recordset()[keys[stageIndex]].asLong();
    }

 private:
    std::unique_ptr<frmMain> window_;
};
