#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QApplication>
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>

#include "data/session.h"
#include "measures.h"
#include "records/frmDetails.h"
#include "records/frmMain.h"
#include "shell/frmSplash.h"
#include "shell/modMain.h"

namespace {

// One main window for all window measures, on the generated shop. The seven seconds of the splash window are
// over for it before they begin.
frmMain& window() {
    static frmMain* const main = [] {
        ShowTipsAtStartup = false;
        auto* made = new frmMain;
        made->GetTickCount = [] {
            static qint64 tick = 0;
            return tick += frmMain::kSplashTime;
        };
        if (!made->Display())
            std::abort();
        return made;
    }();
    return *main;
}

void clientsOurs(Shop&) {
    window().FillClientCombo();
}

std::string lowered(std::string text) {
    for (char& letter : text)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return text;
}

std::string column(sqlite3_stmt* statement, int index) {
    const unsigned char* text = sqlite3_column_text(statement, index);
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

void clientsBaseline(Shop& shop) {
    struct Entry {
        std::string order, text;
        int number;
    };
    sqlite3_stmt* statement =
        shop.prepare("SELECT CustID, Surname, GivenName, NickName, FirmName, FirmAddress FROM Customers");
    std::vector<Entry> entries;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        std::string text = column(statement, 4);
        if (sqlite3_column_int(statement, 5) == 0 || text.empty()) {
            text = column(statement, 1) + ", " + column(statement, 2);
            if (const std::string nick = column(statement, 3); !nick.empty())
                text += " - " + nick;
        }
        entries.push_back({lowered(text), text, sqlite3_column_int(statement, 0)});
    }
    sqlite3_finalize(statement);
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.order < b.order; });
    benchmark::DoNotOptimize(entries.data());
}

// The computer with 1,000 services.
int busyComputer(Shop& shop) {
    static const int number = [&shop] {
        sqlite3_stmt* statement =
            shop.prepare("SELECT MachineID FROM Services GROUP BY MachineID ORDER BY count(*) DESC LIMIT 1");
        sqlite3_step(statement);
        const int found = sqlite3_column_int(statement, 0);
        sqlite3_finalize(statement);
        return found;
    }();
    return number;
}

void listOurs(Shop& shop) {
    platform::DataControl& source = *window().Data1[2];
    source.RecordSource = QStringLiteral("SELECT * FROM QDServices%1 WHERE MachineID=%2")
                              .arg(window().QuerySuffix)
                              .arg(busyComputer(shop));
    source.Refresh();
    window().FillServiceList({});
    qsizetype letters = 0;
    const int count = window().ListView1->count();
    if (count != 1000)
        std::abort();
    for (int row = 1; row <= count; ++row)  // all of them, also those that nobody sees
        letters += window().ListView1->item(row).SubItems(6).size();
    benchmark::DoNotOptimize(letters);
}

void listBaseline(Shop& shop) {
    struct Row {
        int number;
        std::string started, due, finished, price, discount, tax, paid, tag;
        bool isFinished, isPaid;
    };
    sqlite3_stmt* statement = shop.prepare(
        "SELECT ID, ServiceStarted, ServiceToBeFinished, ServiceFinished, Price, Discount, GST, Paid, "
        "ServiceTypes,"
        " Comments FROM Services WHERE MachineID=? ORDER BY ID");
    sqlite3_bind_int(statement, 1, busyComputer(shop));
    std::vector<Row> rows;
    char text[64];
    const auto day = [&text](double days) {
        const std::time_t seconds = static_cast<std::time_t>((days - 25569) * 86400);
        std::tm parts{};
        gmtime_r(&seconds, &parts);
        std::strftime(text, sizeof text, "%m/%d/%Y", &parts);
        return std::string(text);
    };
    const auto money = [&text](double amount) {
        std::snprintf(text, sizeof text, "%.2f", amount * KursKupovni);
        std::string grouped = text;
        for (std::size_t at = grouped.size() - 3; at > 3; at -= 3)
            grouped.insert(at - 3, 1, ',');
        return grouped;
    };
    const auto percent = [&text](double number) {
        std::snprintf(text, sizeof text, "%g", number);
        return std::string(text);
    };
    while (sqlite3_step(statement) == SQLITE_ROW) {
        Row row;
        row.number = sqlite3_column_int(statement, 0);
        row.started = day(sqlite3_column_double(statement, 1));
        row.due = day(sqlite3_column_double(statement, 2));
        row.finished = day(sqlite3_column_double(statement, 3));
        const double price = sqlite3_column_double(statement, 4) / 10000;
        const double discount = sqlite3_column_double(statement, 5);
        const double tax = sqlite3_column_double(statement, 6);
        const double paid = sqlite3_column_double(statement, 7) / 10000;
        row.price = money(price);
        row.discount = percent(discount);
        row.tax = percent(tax);
        row.paid = money(paid);
        row.isFinished = sqlite3_column_double(statement, 3) >= 32874;
        row.isPaid = ((1 - discount / 100) * price * (1 + tax / 100) - paid) * KursKupovni < 0.1 && price > 0;
        row.tag = column(statement, 8) + "##" + column(statement, 9);
        rows.push_back(std::move(row));
    }
    sqlite3_finalize(statement);
    benchmark::DoNotOptimize(rows.data());
}

double millisecondsNow() {
    std::timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// When this process was started, by the kernel's own book (to a hundredth of a second).
double processStart() {
    std::ifstream file("/proc/self/stat");
    std::string text((std::istreambuf_iterator<char>(file)), {});
    std::istringstream words(text.substr(text.rfind(')') + 2));
    std::string word;
    for (int field = 3; field <= 22; ++field)
        words >> word;
    return std::stod(word) * 1e3 / static_cast<double>(sysconf(_SC_CLK_TCK));
}

}  // namespace

std::vector<Measure> windowMeasures() {
    return {
        {"fill_client_selector_50000", 3, clientsOurs, clientsBaseline, 1, 7},
        {"fill_list_1000_services", 3, listOurs, listBaseline, 1, 15},
    };
}

int startUpMeasure() {
    const double started = processStart();
    const double ready = millisecondsNow();
    CheckHelpFile();
    KursKupovni = ReadKursKupovni();
    QString errorText;
    if (!CheckDatabase(errorText)) {
        std::fprintf(stderr, "%s\n", qPrintable(errorText));
        return 1;
    }
    const double checked = millisecondsNow();
    ShowTipsAtStartup = false;
    frmMain main;
    qint64 tick = 0;
    main.GetTickCount = [&tick] { return tick += frmMain::kSplashTime; };
    double built = checked;
    main.onStartStep = [&built](StartStep) { built = millisecondsNow(); };
    if (!main.Display())
        return 1;
    const double filled = millisecondsNow();
    QApplication::processEvents();
    main.grab();
    const double painted = millisecondsNow();
    std::printf(
        "start_up %.0f ms: program and Qt loaded %.0f, database checked %.0f, window built %.0f,"
        " record sets opened and lists filled %.0f, painted %.0f\n",
        painted - started, ready - started, checked - ready, built - checked, filled - built,
        painted - filled);
    main.AlwaysCreateBackupDB = false;
    main.unload();
    return 0;
}
