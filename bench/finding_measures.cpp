// Finding and reporting: the quick filters, sorting, refresh, the text report.
#include <benchmark/benchmark.h>

#include <QFile>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "main_window.h"
#include "measures.h"
#include "platform/system/files.h"
#include "platform/system/launch.h"
#include "records/frmMain.h"

namespace {

// --- Quick filters: the question, the narrowing, the three stages filled again.

template <int Number>
void filterOurs(Shop&) {
    mainWindow().ShowMsgBoxFilterResults = false;
    bool ok = false;
    mainWindow().ApplyQuickFilter(Number, ok);
    if (!ok)
        std::abort();
}

long today() {
    return static_cast<long>(std::time(nullptr) / 86400) + 25569;
}

std::string condition(int number) {
    const std::string rest = "((1-Discount/100)*(Price/10000.0)*(1+GST/100)-Paid/10000.0)";
    const std::string due = "ServiceToBeFinished>=2 AND CAST(ServiceToBeFinished AS INTEGER)-" +
                            std::to_string(today()) + "<=5 AND ServiceFinished<2 AND ";
    switch (number) {
        case 0:
            return "ServiceFinished>=2 AND " + rest + ">0.1";
        case 1:
            return "ServiceFinished<2 AND " + rest + ">0.1";
        case 2:
            return rest + "<=0.1 AND ServiceFinished<2 AND Price>0";
        case 3:
            return due + rest + ">0.1";
        default:
            return due + rest + "<=0.1 AND Price>0";
    }
}

// The numbers found, kept as a table that the reads are joined with.
void keep(Shop& shop, const char* table, const std::vector<sqlite3_int64>& numbers) {
    const std::string name = table;
    shop.run(("CREATE TEMP TABLE IF NOT EXISTS " + name + "(id INTEGER PRIMARY KEY)").c_str());
    shop.run(("DELETE FROM " + name).c_str());
    shop.run("BEGIN");
    sqlite3_stmt* insert = shop.prepare(("INSERT OR IGNORE INTO " + name + " VALUES(?)").c_str());
    for (const sqlite3_int64 number : numbers) {
        sqlite3_bind_int64(insert, 1, number);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    shop.run("COMMIT");
}

int readComputers(Shop& shop, const std::string& which) {
    sqlite3_stmt* statement =
        shop.prepare(("SELECT MachineID, MachineName FROM Computers WHERE " + which).c_str());
    int first = -1;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const std::string name = column(statement, 1);
        benchmark::DoNotOptimize(name.data());
        if (first < 0)
            first = sqlite3_column_int(statement, 0);
    }
    sqlite3_finalize(statement);
    return first;
}

template <int Number>
void filterBaseline(Shop& shop) {
    const std::string sql =
        "SELECT Customers.CustID, Computers.MachineID, Services.ID FROM Customers LEFT JOIN (Computers LEFT "
        "JOIN Services ON Computers.MachineID=Services.MachineID) ON Customers.CustID=Computers.CustID "
        "WHERE " +
        condition(Number);
    sqlite3_stmt* statement = shop.prepare(sql.c_str());
    std::vector<sqlite3_int64> found[3];
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int i = 0; i < 3; ++i) {
            const sqlite3_int64 number = sqlite3_column_int64(statement, i);
            if (found[i].empty() || found[i].back() != number)
                found[i].push_back(number);
        }
    }
    sqlite3_finalize(statement);
    if (found[2].empty())
        std::abort();
    keep(shop, "found_clients", found[0]);
    keep(shop, "found_computers", found[1]);
    keep(shop, "found_services", found[2]);
    const int client = readClients(shop, "found_clients JOIN Customers ON CustID=id");
    const int computer =
        readComputers(shop, "MachineID IN found_computers AND CustID=" + std::to_string(client));
    readServices(shop, "ID IN found_services AND MachineID=" + std::to_string(computer));
}

// --- Refresh.

void refreshOurs(Shop&) {
    mainWindow().RefreshAll();
}

void refreshBaseline(Shop& shop) {
    const int client = readClients(shop, "Customers");
    const int computer = readComputers(shop, "CustID=" + std::to_string(client));
    readServices(shop, "MachineID=" + std::to_string(computer));
}

// --- Sorting the 1,000 services of one computer.

template <int Column>
void sortOurs(Shop& shop) {
    static const bool shown = [&shop] {
        mainWindow().RefreshAll();
        showBusyComputer(shop);
        return true;
    }();
    benchmark::DoNotOptimize(shown);
    mainWindow().ListView1_ColumnClick(Column);
    lookAtServices();
}

constexpr const char* kFields[] = {
    "", "ServiceStarted", "ServiceToBeFinished", "ServiceFinished", "Price", "Discount", "GST", "Paid"};

template <int Column>
void sortBaseline(Shop& shop) {
    static bool up = false;
    up = !up;
    readServices(shop, "MachineID=" + std::to_string(busyComputer(shop)) + " ORDER BY " + kFields[Column] +
                           (up ? " ASC" : " DESC"));
}

// --- The text report of all clients.

QString reportFile() {
    return platform::programFolder() + QStringLiteral("/Report.txt");
}

void reportOurs(Shop&) {
    frmMain& window = mainWindow();
    window.ShowOnlySelectedClient = window.ShowOnlySelectedComputer = window.ShowOnlySelectedService = false;
    platform::setShellExecuteHook([](const QString&) { return 33; });
    if (window.ActiveFilter != -1)
        window.RefreshAll();
    window.GenerateReport();
    platform::setShellExecuteHook({});
}

std::size_t readRow(sqlite3_stmt* statement) {
    std::size_t letters = 0;
    for (int i = 0; i < sqlite3_column_count(statement); ++i)
        letters += column(statement, i).size();
    return letters;
}

void reportBaseline(Shop& shop) {
    static const QByteArray bytes = [&shop] {
        reportOurs(shop);
        QFile file(reportFile());
        if (!file.open(QIODevice::ReadOnly))
            std::abort();
        return file.readAll();
    }();
    if (bytes.size() < 1000000)
        std::abort();
    sqlite3_stmt* clients = shop.prepare("SELECT * FROM Customers ORDER BY Surname");
    sqlite3_stmt* computers = shop.prepare("SELECT * FROM Computers WHERE CustID=? ORDER BY MachineName");
    sqlite3_stmt* services = shop.prepare("SELECT * FROM Services WHERE MachineID=? ORDER BY ServiceStarted");
    std::size_t letters = 0;
    while (sqlite3_step(clients) == SQLITE_ROW) {
        letters += readRow(clients);
        sqlite3_bind_int(computers, 1, sqlite3_column_int(clients, 0));
        while (sqlite3_step(computers) == SQLITE_ROW) {
            letters += readRow(computers);
            sqlite3_bind_int(services, 1, sqlite3_column_int(computers, 0));
            while (sqlite3_step(services) == SQLITE_ROW)
                letters += readRow(services);
            sqlite3_reset(services);
        }
        sqlite3_reset(computers);
    }
    for (sqlite3_stmt* statement : {clients, computers, services})
        sqlite3_finalize(statement);
    benchmark::DoNotOptimize(letters);
    QFile file(reportFile() + QStringLiteral(".baseline"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::abort();
}

}  // namespace

std::vector<Measure> findingMeasures() {
    return {
        {"filter_finished_not_paid", 2, filterOurs<0>, filterBaseline<0>, 1, 5},
        {"filter_not_finished_not_paid", 2, filterOurs<1>, filterBaseline<1>, 1, 5},
        {"filter_not_finished_paid", 2, filterOurs<2>, filterBaseline<2>, 1, 5},
        {"filter_due_not_paid", 2, filterOurs<3>, filterBaseline<3>, 1, 5},
        {"filter_due_paid", 2, filterOurs<4>, filterBaseline<4>, 1, 5},
        {"refresh", 2, refreshOurs, refreshBaseline, 20, 7},
        {"sort_by_started", 1.5, sortOurs<1>, sortBaseline<1>, 1, 15},
        {"sort_by_due", 1.5, sortOurs<2>, sortBaseline<2>, 1, 15},
        {"sort_by_finished", 1.5, sortOurs<3>, sortBaseline<3>, 1, 15},
        {"sort_by_price", 1.5, sortOurs<4>, sortBaseline<4>, 1, 15},
        {"sort_by_discount", 1.5, sortOurs<5>, sortBaseline<5>, 1, 15},
        {"sort_by_tax", 1.5, sortOurs<6>, sortBaseline<6>, 1, 15},
        {"sort_by_paid", 1.5, sortOurs<7>, sortBaseline<7>, 1, 15},
        {"text_report_all_clients", 2, reportOurs, reportBaseline, 1, 3},
    };
}
