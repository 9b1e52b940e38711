#include <CLI/CLI.hpp>
#include <memory>

#include "exchange/take_over.h"
#include "tools/verbs/verbs.h"

namespace {

struct TakeOver {
    std::string old;
    std::string target;

    void run(Talk& talk) const {
        const exchange::TakenOver taken =
            exchange::takeOver(old, target,
                               [&](const char* doing, const std::string& table, std::int64_t done,
                                   std::int64_t all) { talk.progress(doing, table, done, all); });
        for (const exchange::TakenTable& table : taken.tables) {
            talk.say(table.name + ": " + std::to_string(table.carried) + " of " +
                     std::to_string(table.found) + " rows" +
                     (table.made > 0 ? ", " + std::to_string(table.made) + " made" : "") +
                     (table.left > 0 ? ", " + std::to_string(table.left) + " left out" : ""));
        }
        for (const std::string& amount : taken.amounts) {
            talk.say(amount);
        }
        talk.say(std::to_string(taken.remarks) + " remarks; what was left out or changed is listed in " +
                 taken.list);
        talk.say(exchange::kNotInTheFile);
    }
};

}  // namespace

void addTakeOver(CLI::App& app, Talk& talk) {
    const auto takeOver = std::make_shared<TakeOver>();
    CLI::App* verb = app.add_subcommand(
        "take-over", "Takes over a shop from a database of the old format into a new one.");
    verb->add_option("OLD", takeOver->old, "The old file. It is only read.")->required();
    verb->add_option("NEW", takeOver->target,
                     "A file that is not there yet, or the signpost of an empty server database.")
        ->required();
    verb->footer(
        "Nobody may have the old file open. The new shop appears when it is whole and was compared, or not "
        "at "
        "all.\n"
        "What was left out or changed is listed in take-over.txt beside it.");
    verb->callback([takeOver, &talk] { takeOver->run(talk); });
}
