#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "exchange/still_shop.h"
#include "exchange/unfinished.h"
#include "exchange/workbook.h"
#include "platform/text/ascii.h"
#include "tools/verbs/table_lines.h"
#include "tools/verbs/verbs.h"

namespace {

bool isWorkbook(const std::string& name) {
    constexpr std::string_view kEnd = ".xlsx";
    return name.size() > kEnd.size() &&
           std::equal(kEnd.rbegin(), kEnd.rend(), name.rbegin(),
                      [](char a, char b) { return a == alphabet::lowerAscii(b); });
}

struct Export {
    std::string from;
    std::string to;

    void run(Talk& talk) const {
        exchange::needNothingAt(to);
        const dao::RowWatch watch = [&](const dao::RowState& state) {
            talk.progress("writing", state.table, state.done, state.all);
        };
        exchange::StillShop shop(from);
        if (isWorkbook(to)) {
            if (const int cut = exchange::writeWorkbook(shop, to, watch)) {
                talk.say(counted(cut, "text") + " longer than a cell takes, 32,767 letters, cut there.");
            }
        } else {
            exchange::writeTableFiles(shop, to, watch);
        }
        talk.say("'" + to + "' holds all tables of the shop as they were when it began.");
    }
};

}  // namespace

void addExport(CLI::App& app, Talk& talk) {
    const auto verb = std::make_shared<Export>();
    CLI::App* command = app.add_subcommand(
        "export", "Writes every table of a shop as CSV files, or all of them as one workbook.");
    command->add_option("DATABASE", verb->from, "The shop's file, or the signpost that leads to its server.")
        ->required();
    command
        ->add_option("TO", verb->to,
                     "A folder that is to be made, with a CSV file for each table; or FILE.xlsx, a workbook. "
                     "Nothing may stand there.")
        ->required();
    command->footer(
        "The CSV files are UTF-8 with a comma, points in numbers and ISO dates. A field that is empty is "
        "Null, "
        "\"\" is an empty text, and the date of a field left empty in the program is 1899-12-31. What is "
        "written "
        "holds all of the shop, and no password: it is for its user alone.");
    command->callback([verb, &talk] { verb->run(talk); });
}
