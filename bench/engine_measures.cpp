#include <benchmark/benchmark.h>

#include <random>

#include "measures.h"
#include "platform/dao/database_impl.h"

namespace {

std::vector<int> randomNumbers(int count) {
    std::mt19937 random(20260101);
    std::vector<int> numbers(static_cast<std::size_t>(count));
    for (int& number : numbers)
        number = 1 + static_cast<int>(random() % Shop::kServices);
    return numbers;
}

// Open a dynaset over all services.

void openOurs(Shop& shop) {
    dao::Recordset rows = shop.database().OpenRecordset("SELECT * FROM Services");
    benchmark::DoNotOptimize(rows.RecordCount());
    rows.Close();
}

void openBaseline(Shop& shop) {
    sqlite3_stmt* statement = shop.prepare("SELECT ID FROM Services ORDER BY ID");
    std::vector<sqlite3_int64> keys;
    while (sqlite3_step(statement) == SQLITE_ROW)
        keys.push_back(sqlite3_column_int64(statement, 0));
    benchmark::DoNotOptimize(keys.data());
    sqlite3_finalize(statement);
}

// Walk all services, reading eight fields of each.

constexpr const char* kEightFields[] = {"ID",    "MachineID", "ServiceStarted", "ServiceFinished",
                                        "Price", "Discount",  "ServiceTypes",   "Comments"};

void walkOurs(Shop& shop) {
    dao::Recordset rows = shop.database().OpenRecordset("SELECT * FROM Services");
    std::vector<dao::Field> fields;
    for (const char* name : kEightFields)
        fields.push_back(rows.Fields(name));
    double sum = 0;
    std::size_t letters = 0;
    for (; !rows.EOF(); rows.MoveNext()) {
        sum += fields[0].Value().asLong() + fields[1].Value().asLong();
        sum += fields[2].Value().asDouble() + fields[3].Value().asDouble();
        sum += fields[4].Value().asDouble() + fields[5].Value().asDouble();
        letters += fields[6].Value().textRef().size() + fields[7].Value().textRef().size();
    }
    benchmark::DoNotOptimize(sum);
    benchmark::DoNotOptimize(letters);
}

void walkBaseline(Shop& shop) {
    sqlite3_stmt* statement = shop.prepare(
        "SELECT ID, MachineID, ServiceStarted, ServiceFinished, Price, Discount, ServiceTypes, Comments"
        " FROM Services ORDER BY ID");
    double sum = 0;
    std::size_t letters = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        sum += static_cast<double>(sqlite3_column_int64(statement, 0) + sqlite3_column_int64(statement, 1));
        for (int column = 2; column < 6; ++column)
            sum += sqlite3_column_double(statement, column);
        for (int column = 6; column < 8; ++column) {
            benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
            letters += static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
        }
    }
    benchmark::DoNotOptimize(sum);
    benchmark::DoNotOptimize(letters);
    sqlite3_finalize(statement);
}

// Find 10,000 services by number, at random, and read the price.

void findOurs(Shop& shop) {
    static dao::Recordset rows = shop.database().OpenRecordset("SELECT * FROM Services");
    static const std::vector<int> numbers = randomNumbers(10000);
    double sum = 0;
    for (const int number : numbers) {
        rows.FindFirst("ID=" + std::to_string(number));
        sum += rows["Price"].asDouble();
    }
    benchmark::DoNotOptimize(sum);
}

void findBaseline(Shop& shop) {
    static sqlite3_stmt* statement = shop.prepare("SELECT * FROM Services WHERE ID=?");
    static const std::vector<int> numbers = randomNumbers(10000);
    double sum = 0;
    for (const int number : numbers) {
        sqlite3_bind_int(statement, 1, number);
        if (sqlite3_step(statement) == SQLITE_ROW)
            sum += static_cast<double>(sqlite3_column_int64(statement, 7));
        sqlite3_reset(statement);
    }
    benchmark::DoNotOptimize(sum);
}

// 1,000 times Edit, change, Update.

void editOurs(Shop& shop) {
    dao::Recordset rows = shop.database().OpenRecordset("SELECT * FROM Services WHERE ID<=1000");
    dao::Field price = rows.Fields("Price");
    for (; !rows.EOF(); rows.MoveNext()) {
        rows.Edit();
        price = dao::Currency::fromScaled(price.Value().asCurrency().scaled() + 1);
        rows.Update();
    }
}

void editBaseline(Shop& shop) {
    sqlite3_stmt* begin = shop.prepare("BEGIN IMMEDIATE");
    sqlite3_stmt* commit = shop.prepare("COMMIT");
    sqlite3_stmt* read = shop.prepare("SELECT Price FROM Services WHERE ID=?");
    sqlite3_stmt* write = shop.prepare("UPDATE Services SET Price=? WHERE ID=?");
    for (int number = 1; number <= 1000; ++number) {
        sqlite3_step(begin);
        sqlite3_reset(begin);
        sqlite3_bind_int(read, 1, number);
        sqlite3_step(read);
        const sqlite3_int64 price = sqlite3_column_int64(read, 0);
        sqlite3_reset(read);
        sqlite3_bind_int64(write, 1, price + 1);
        sqlite3_bind_int(write, 2, number);
        sqlite3_step(write);
        sqlite3_reset(write);
        sqlite3_step(commit);
        sqlite3_reset(commit);
    }
    for (sqlite3_stmt* statement : {begin, commit, read, write})
        sqlite3_finalize(statement);
}

// Narrow a stored query to 100,000 numbers and open the dynaset over it again.

std::string narrowingText() {
    std::string text = "SELECT * FROM Services WHERE ";
    for (int i = 0; i < 100000; ++i) {
        if (i > 0)
            text += " OR ";
        text += "ID=" + std::to_string(3 * i + 1);
    }
    return text + ";";
}

// A blank more or less: a text that stayed the same would not have to be written or understood again.
std::string changedText() {
    static const std::string text = narrowingText();
    static int turn = 0;
    return text + std::string(static_cast<std::size_t>(++turn % 7), ' ');
}

void narrowOurs(Shop& shop) {
    static dao::QueryDef query = shop.database().CreateQueryDef("QDBench", "SELECT * FROM Services");
    query.setSQL(changedText());
    dao::Recordset rows = shop.database().OpenRecordset("SELECT * FROM QDBench");
    if (rows.RecordCount() != 100000)
        std::abort();
}

void narrowBaseline(Shop& shop) {
    static const bool made = [&shop] {
        shop.run("CREATE TABLE IF NOT EXISTS bench_queries(name TEXT PRIMARY KEY, sql TEXT)");
        shop.run("INSERT OR IGNORE INTO bench_queries VALUES('q','')");
        shop.run("CREATE TEMP TABLE ids(id INTEGER PRIMARY KEY)");
        return true;
    }();
    benchmark::DoNotOptimize(made);
    const std::string text = changedText();
    sqlite3_stmt* keep = shop.prepare("UPDATE bench_queries SET sql=? WHERE name='q'");
    sqlite3_bind_text(keep, 1, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    sqlite3_step(keep);
    sqlite3_finalize(keep);
    shop.run("DELETE FROM ids");
    shop.run("BEGIN");
    sqlite3_stmt* insert = shop.prepare("INSERT INTO ids VALUES(?)");
    for (int i = 0; i < 100000; ++i) {
        sqlite3_bind_int(insert, 1, 3 * i + 1);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    shop.run("COMMIT");
    sqlite3_stmt* read = shop.prepare("SELECT Services.ID FROM ids JOIN Services ON Services.ID=ids.id");
    std::vector<sqlite3_int64> keys;
    while (sqlite3_step(read) == SQLITE_ROW)
        keys.push_back(sqlite3_column_int64(read, 0));
    sqlite3_finalize(read);
    if (keys.size() != 100000)
        std::abort();
}

// Translate the five filter statements: read into a tree, looked up in the file's tables, written for the
// store.

constexpr const char* kRemainder =
    "(((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/100))))-[Services]![Paid]";

std::vector<std::string> filterTexts() {
    const std::string rest = kRemainder;
    const std::string from =
        " FROM Customers LEFT JOIN (Computers LEFT JOIN Services ON Computers.MachineID = "
        "Services.MachineID) ON"
        " Customers.CustID = Computers.CustID WHERE ";
    const std::string head = "SELECT Customers.CustID, Computers.MachineID, Services.ID" + from;
    const std::string due =
        "(((Services.ServiceToBeFinished)>=#1/1/1900#) AND "
        "((DateDiff(\"d\",Now(),[Services]![ServiceToBeFinished]";
    const std::string open = " AND ((Services.ServiceFinished)<#1/1/1900#) AND (" + rest;
    return {
        head + "(((Services.ServiceFinished)>=#1/1/1900#) AND (" + rest + ")>0.1);",
        head + "(((Services.ServiceFinished)<#1/1/1900#) AND (" + rest + ")>0.1);",
        "SELECT Customers.CustID, Computers.MachineID, Services.ID, " + rest + " AS Expr1" + from + "((" +
            rest + ")<=0.1) AND ((Services.ServiceFinished)<#1/1/1900#) AND ((Services.Price)>0);",
        head + due + "))<=5)" + open + ")>0.1);",
        head + due + ",2))<=5)" + open + ")<=0.1) AND ((Services.Price)>0);",
    };
}

void translate(Shop& shop, const std::string& behind) {
    static const std::vector<std::string> texts = filterTexts();
    for (const std::string& text : texts)
        benchmark::DoNotOptimize(shop.database().impl()->file().compile(text + behind));
}

void translateCold(Shop& shop) {
    // A number of blanks that no text has had yet: nothing has been kept of it.
    static std::size_t turn = 0;
    translate(shop, std::string(++turn, ' '));
}

void translateCached(Shop& shop) {
    translate(shop, {});
}

}  // namespace

std::vector<Measure> engineMeasures() {
    return {
        {"open_dynaset_all_services", 1.3, openOurs, openBaseline, 1, 7},
        {"walk_all_services_8_fields", 2, walkOurs, walkBaseline, 1, 5},
        {"findfirst_10000_random", 5, findOurs, findBaseline, 1, 5},
        {"edit_update_1000", 1.5, editOurs, editBaseline, 1, 5},
        {"narrow_query_100000_reopen", 2, narrowOurs, narrowBaseline, 1, 5},
        {"translate_5_filters_cold", 0, translateCold, {}, 100, 5},
        {"translate_5_filters_cached", 0, translateCached, {}, 100, 5},
    };
}
