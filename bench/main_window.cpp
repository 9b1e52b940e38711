#include "main_window.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "records/frmMain.h"
#include "shell/modMain.h"

// The seven seconds of the splash window are over for it before they begin.
frmMain& mainWindow() {
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

void showBusyComputer(Shop& shop) {
    platform::DataControl& source = *mainWindow().Data1[2];
    source.RecordSource = QStringLiteral("SELECT * FROM QDServices%1 WHERE MachineID=%2")
                              .arg(mainWindow().QuerySuffix)
                              .arg(busyComputer(shop));
    source.Refresh();
    mainWindow().FillServiceList({});
}

void lookAtServices() {
    qsizetype letters = 0;
    const int count = mainWindow().ListView1->count();
    if (count != 1000)
        std::abort();
    for (int row = 1; row <= count; ++row)
        letters += mainWindow().ListView1->item(row).SubItems(6).size();
    benchmark::DoNotOptimize(letters);
}

std::string column(sqlite3_stmt* statement, int index) {
    const unsigned char* text = sqlite3_column_text(statement, index);
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

static std::string lowered(std::string text) {
    for (char& letter : text)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return text;
}

int readClients(Shop& shop, const std::string& from) {
    struct Entry {
        std::string order, text;
        int number;
    };
    const std::string sql = "SELECT CustID, Surname, GivenName, NickName, FirmName, FirmAddress FROM " + from;
    sqlite3_stmt* statement = shop.prepare(sql.c_str());
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
    return entries.empty() ? -1 : entries.front().number;
}

void readServices(Shop& shop, const std::string& which) {
    struct Row {
        int number;
        std::string started, due, finished, price, discount, tax, paid, tag;
        bool isFinished, isPaid;
    };
    const std::string sql =
        "SELECT ID, ServiceStarted, ServiceToBeFinished, ServiceFinished, Price, Discount, GST, Paid, "
        "ServiceTypes, Comments FROM Services WHERE " +
        which;
    sqlite3_stmt* statement = shop.prepare(sql.c_str());
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
