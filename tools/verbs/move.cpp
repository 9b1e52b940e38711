#include <CLI/CLI.hpp>
#include <memory>

#include "data/session.h"
#include "platform/dao/dao.h"
#include "platform/dao/moving.h"
#include "tools/verbs/verbs.h"

namespace {

struct Move {
    std::string from;
    std::string to;

    void run(Talk& talk) const {
        const std::string connect = connectText().toStdString();
        const dao::RowWatch watch = [&](const dao::RowState& state) {
            talk.progress(state.comparing ? "comparing" : "copying", state.table, state.done, state.all);
        };
        if (dao::DBEngine::IsOnServer(from)) {
            dao::moveHome(from, to, connect, watch);
        } else {
            dao::moveToServer(from, connect, to, watch);
        }
    }
};

}  // namespace

void addMove(CLI::App& app, Talk& talk) {
    const auto move = std::make_shared<Move>();
    CLI::App* verb = app.add_subcommand(
        "move", "Moves a shop from its file to a server, or home again from the server into a new file.");
    verb->add_option("FROM", move->from, "The shop's file, or the signpost that leads to its server.")
        ->required();
    verb->add_option("TO", move->to,
                     "The server's database, \"host=... dbname=...\" (port, user, sslmode, sslrootcert and "
                     "passfile may be told, too); from a signpost, a new file.")
        ->required();
    verb->footer(
        "Nobody else may have the shop open. Every table is compared before anything that existed is "
        "changed.\n"
        "The file stays as NAME.before-server.mdb beside the signpost that takes its place.");
    verb->callback([move, &talk] { move->run(talk); });
}
