#include <CLI/CLI.hpp>
#include <memory>

#include "data/session.h"
#include "platform/dao/dao.h"
#include "tools/verbs/table_lines.h"
#include "tools/verbs/verbs.h"

namespace {

struct Repair {
    std::string path;
    std::string backup;

    void run(Talk& talk) const {
        dao::DBEngine::RepairDatabase(path, connectText().toStdString(), backup);
        const dao::RepairReport& report = dao::DBEngine::LastRepair();
        if (dao::DBEngine::IsOnServer(path)) {
            talk.say("Every row on the server can be read, and its indexes were made anew.");
        } else if (!report.damaged) {
            talk.say("Every page is in order; nothing was changed.");
        } else {
            tell(report, talk);
        }
    }

    static void tell(const dao::RepairReport& report, Talk& talk) {
        std::vector<std::vector<std::string>> counts{{"Table", "Kept", "Lost"}};
        for (const dao::RepairReport::TableCount& table : report.tables) {
            counts.push_back({table.table, grouped(table.kept), grouped(table.lost)});
        }
        counts.push_back({"all", grouped(report.rowsKept), grouped(report.rowsLost)});
        for (const std::string& line : tableLines(counts)) {
            talk.say(line);
        }
        for (const std::string& note : report.notes) {
            talk.say(note);
        }
        talk.say("The file was damaged and is whole again; the hurt one stays beside it (NAME.damaged.mdb).");
    }
};

}  // namespace

void addRepair(CLI::App& app, Talk& talk) {
    const auto repair = std::make_shared<Repair>();
    CLI::App* verb = app.add_subcommand(
        "repair",
        "Checks every page of a shop's file, and saves what can be read where something is broken.");
    verb->add_option("DATABASE", repair->path, "The shop's file, or the signpost that leads to its server.")
        ->required();
    verb->add_option("--backup", repair->backup,
                     "An earlier copy of the file, which may tell its first bytes where they are gone.");
    verb->footer(
        "Nobody else may have the shop open. The repaired file takes the old one's place when it is whole; "
        "the "
        "hurt one stays beside it.\nOn a server every row is read and the indexes are made anew.");
    verb->callback([repair, &talk] { repair->run(talk); });
}
