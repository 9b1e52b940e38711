#pragma once

#include <QLabel>

#include "main_window.h"
#include "platform/system/dates.h"

// What the first panel of text said while the window was at work, each time it was painted anew, and whether
// the window had the hourglass then.
class StatusWatch : public QObject {
 public:
    explicit StatusWatch(frmMain& window)
        : window_(window), panel_(window.controls.StatusBar1->panel("Text")) {
        panel_->installEventFilter(this);
    }
    ~StatusWatch() override { panel_->removeEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && (said.isEmpty() || said.last() != panel_->text())) {
            said.append(panel_->text());
            if (window_.cursor().shape() == Qt::WaitCursor) {
                underHourglass.append(panel_->text());
            }
        }
        return QObject::eventFilter(watched, event);
    }
    QStringList said, underHourglass;

 private:
    frmMain& window_;
    QLabel* panel_;
};

// The main window under filters and orders, with the few things that the tests of these ask of it.
class NarrowedWindow : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        CeneDinarske = false;
    }

    static dao::Value money(double amount) { return dao::Currency::fromDouble(amount); }
    static dao::Value day(const QDate& date) { return platform::fromQDate(date); }
    static dao::Value inDays(int days) { return day(QDate::currentDate().addDays(days)); }

    static Command quickFilter(int number) {
        return static_cast<Command>(static_cast<int>(Command::FilterFinishedNotPaid) + number);
    }
    // From the menu, with its state rule.
    void filter(Command command) {
        open(win().bars.menus.menu(Menu::Database));
        give(command);
        win().bars.menus.menu(Menu::Database)->close();
    }
    std::string queryText(const std::string& name) { return openDatabase().QueryDefs()[name].SQL(); }
    // The numbers in one of this copy's stored queries.
    QList<int> numbers(const std::string& query, const char* key) {
        dao::Recordset rows =
            openDatabase().OpenRecordset("SELECT * FROM " + query + " ORDER BY " + key, dao::dbOpenSnapshot);
        QList<int> all;
        for (; !rows.EOF(); rows.MoveNext()) {
            all.append(rows[key].asLong());
        }
        rows.Close();
        return all;
    }
    QList<int> services() { return numbers("QDServices0", "ID"); }
    QList<int> computers() { return numbers("QDComputers0", "MachineID"); }
    QList<int> clients() { return numbers("QDCustomers0", "CustID"); }
    // Of the list, from the top.
    QList<int> listed() {
        QList<int> all;
        for (int row = 1; row <= win().controls.ListView1->count(); ++row) {
            all.append(win().controls.ListView1->item(row).Key.mid(1).toInt());
        }
        return all;
    }
    QStringList icons() {
        QStringList all;
        for (int column = 1; column <= 7; ++column) {
            all.append(win().controls.ListView1->columns().icon(column));
        }
        return all;
    }
    void clickHeader(ServiceColumn column) {
        by_hand::clickHeader(win().controls.ListView1, columnNumber(column));
    }
    QString source(int stageIndex) {
        return win().controls.Data1[static_cast<size_t>(stageIndex)]->RecordSource();
    }
};

// A client who has paid, and another with two computers who owes one job of two.
class PaidAndOwed : public NarrowedWindow {
 protected:
    void SetUp() override {
        NarrowedWindow::SetUp();
        anic = addClient("Anic", "Vesna");
        babic = addClient("Babic", "Bo");
        desk = addComputer(anic, "Desk");
        tower = addComputer(babic, "Tower");
        mill = addComputer(babic, "Mill");
        addService(desk, {{"Paid", money(100)}});
        owed = addService(tower);
        paid = addService(tower, {{"Paid", money(100)}});
    }
    int anic = 0, babic = 0, desk = 0, tower = 0, mill = 0, owed = 0, paid = 0;
};
