// Invents a shop's year, or a shop of any size for measuring, into a copy of the delivered database.
//
//   make_demo OUT.mdb [--from FROM.mdb] [--clients N] [--computers N] [--services N] [--busiest N] [--seed N]
//       [--base-date YYYY-MM-DD]
//
// FROM.mdb is the database as it is delivered: delivered/Tarvello.mdb beside this program unless told
// otherwise. The base date is the last day of the year told. Without --busiest, a shop of 10,000 services and
// more has one computer that owns exactly 1,000 of them; a smaller one has none. OUT.mdb is replaced only by
// a whole new file.

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "data/demo_shop.h"
#include "data/session.h"
#include "platform/dao/dao.h"
#include "tools/arguments.h"
#include "tools/unfinished_file.h"

namespace {

constexpr int kLargeShop = 10000;
constexpr int kBusiest = 1000;

// Days since 30 December 1899.
double dayOf(const std::string& text) {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    char rest = 0;
    const bool read = std::sscanf(text.c_str(), "%4d-%2u-%2u%c", &year, &month, &day, &rest) == 3;
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                           std::chrono::day(day)};
    if (!read || !date.ok()) {
        throw std::invalid_argument("--base-date is no YYYY-MM-DD: " + text);
    }
    constexpr std::chrono::sys_days kFirst = std::chrono::year(1899) / 12 / 30;
    return static_cast<double>((std::chrono::sys_days(date) - kFirst).count());
}

data::DemoPlan planFrom(const Arguments& arguments) {
    data::DemoPlan plan;
    plan.clients = arguments.number("clients", plan.clients);
    plan.computers = arguments.number("computers", plan.computers);
    plan.services = arguments.number("services", plan.services);
    plan.busiest = arguments.number("busiest", plan.services >= kLargeShop ? kBusiest : 0);
    plan.seed = static_cast<std::uint32_t>(arguments.number("seed", static_cast<int>(plan.seed)));
    if (arguments.has("base-date")) {
        plan.baseDate = dayOf(arguments.text("base-date"));
    }
    return plan;
}

void make(const std::string& from, const std::string& out, const data::DemoPlan& plan) {
    UnfinishedFile unfinished(out);
    dao::DBEngine::CopyDatabase(from, unfinished.path());
    dao::Database database =
        dao::DBEngine::OpenDatabase(unfinished.path(), true, false, connectText().toStdString());
    data::fillDemoShop(database, plan);
    database.Close();
    unfinished.finish();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Arguments arguments(
            argc, argv, {"from", "clients", "computers", "services", "busiest", "seed", "base-date"});
        if (arguments.plain().size() != 1) {
            throw std::invalid_argument(
                "usage: make_demo OUT.mdb [--from FROM.mdb] [--clients N] [--computers N] [--services N] "
                "[--busiest N] [--seed N] [--base-date YYYY-MM-DD]");
        }
        const std::filesystem::path beside = std::filesystem::path(argv[0]).parent_path();
        const std::string from =
            arguments.has("from") ? arguments.text("from") : (beside / "delivered" / "Tarvello.mdb").string();
        make(from, arguments.plain()[0], planFrom(arguments));
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "make_demo: " << e.what() << '\n';
        return 1;
    }
}
