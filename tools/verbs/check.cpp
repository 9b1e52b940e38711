#include <CLI/CLI.hpp>
#include <memory>

#include "exchange/still_shop.h"
#include "tools/verbs/table_lines.h"
#include "tools/verbs/verbs.h"

namespace {

// Reads every row of every table, as any window would: what cannot be read is told by the engine.
void check(const std::string& path, Talk& talk) {
    exchange::StillShop shop(path);
    std::vector<std::vector<std::string>> counts{{"Table", "Rows"}};
    for (const dao::TableDef& table : shop.rows().tables()) {
        const std::int64_t all = shop.rows().rowsIn(table.Name());
        std::int64_t read = 0;
        shop.rows().read(table.Name(), [&](dao::ShopReading::Row) {
            if (++read % 10000 == 0) {
                talk.progress("checking", table.Name(), read, all);
            }
        });
        counts.push_back({table.Name(), grouped(read)});
    }
    for (const std::string& line : tableLines(counts)) {
        talk.say(line);
    }
    talk.say("Every record can be read.");
}

}  // namespace

void addCheck(CLI::App& app, Talk& talk) {
    const auto path = std::make_shared<std::string>();
    CLI::App* verb = app.add_subcommand(
        "check", "Reads a whole shop, also while others work with it, and says whether it is sound.");
    verb->add_option("DATABASE", *path, "The shop's file, or the signpost that leads to its server.")
        ->required();
    verb->footer(
        "Nothing of the shop is changed. A file is copied for it into the system's folder for temporary "
        "files, "
        "enciphered as it is. Of a file that is damaged the next opening checks every page.");
    verb->callback([path, &talk] { check(*path, talk); });
}
