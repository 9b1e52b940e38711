#include <CLI/CLI.hpp>
#include <memory>

#include "exchange/table_import.h"
#include "exchange/unfinished.h"
#include "platform/dao/dbengine.h"
#include "tools/verbs/verbs.h"

namespace {

struct Import {
    std::string to;
    std::string from;

    void run(Talk& talk) const {
        if (!dao::DBEngine::IsOnServer(to)) {
            exchange::needNothingAt(to);
        }
        exchange::readTableFiles(from, to, [&](const dao::RowState& state) {
            talk.progress(state.comparing ? "comparing" : "reading", state.table, state.done, state.all);
        });
        talk.say("'" + to + "' holds the shop of '" + from + "'.");
    }
};

}  // namespace

void addImport(CLI::App& app, Talk& talk) {
    const auto verb = std::make_shared<Import>();
    CLI::App* command =
        app.add_subcommand("import", "Makes a new shop out of the CSV files that export has written.");
    command
        ->add_option("DATABASE", verb->to,
                     "A file that is not there yet, or the signpost of an empty server database.")
        ->required();
    command->add_option("FOLDER", verb->from, "The folder with a CSV file for each table.")->required();
    command->footer(
        "All numbers are kept, and the counters go on where they were. Where a file cannot be taken, its "
        "line and "
        "column are told and nothing is made.");
    command->callback([verb, &talk] { verb->run(talk); });
}
