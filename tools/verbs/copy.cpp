#include <CLI/CLI.hpp>
#include <memory>

#include "data/session.h"
#include "exchange/unfinished.h"
#include "platform/dao/dao.h"
#include "platform/dao/moving.h"
#include "tools/verbs/verbs.h"

namespace {

struct Copy {
    std::string from;
    std::string to;

    void run(Talk& talk) const {
        exchange::needNothingAt(to);
        const std::string connect = connectText().toStdString();
        // Let in before: the engine proves what it copies of a shop that it has the password of.
        dao::DBEngine::OpenDatabase(from, false, true, connect).Close();
        if (dao::DBEngine::IsOnServer(from)) {
            dao::ShopView(from).copyTo(to, [&](const dao::RowState& state) {
                talk.progress(state.comparing ? "comparing" : "copying", state.table, state.done, state.all);
            });
        } else {
            dao::DBEngine::CopyDatabase(from, to);
        }
        talk.say("'" + to + "' holds the shop as it was when the copy began.");
    }
};

}  // namespace

void addCopy(CLI::App& app, Talk& talk) {
    const auto copy = std::make_shared<Copy>();
    CLI::App* verb = app.add_subcommand(
        "copy", "Copies a shop into a new file, also while others work with it, and proves the copy.");
    verb->add_option("DATABASE", copy->from, "The shop's file, or the signpost that leads to its server.")
        ->required();
    verb->add_option("NEW", copy->to, "The new file; nothing may stand there.")->required();
    verb->callback([copy, &talk] { copy->run(talk); });
}
