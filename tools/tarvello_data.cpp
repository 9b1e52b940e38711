// The command for those who look after a shop's data. What it does to a shop it does to the whole of it, and
// says so: one verb a job, its own --help, and a manual page (docs/tarvello-data.1). It needs no display and
// asks for no password: the file's is the program's own.
//
// Exit status: 0 done; 1 refused or failed, with a sentence, nothing changed that the sentence does not name;
// 2 not understood.

#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>

#include "data/schema.h"
#include "platform/dao/breaking_off.h"
#include "platform/dao/dbengine.h"
#include "tools/verbs/verbs.h"

namespace {

constexpr int kFailed = 1;
constexpr int kNotUnderstood = 2;

// The verbs run amid the parsing.
int run(int argc, char** argv, Talk& talk) {
    CLI::App app("Looks after the records of a Tarvello shop.", "tarvello-data");
    app.require_subcommand(1);
    app.fallthrough();
    app.add_flag("-q,--quiet", talk.quiet, "Says nothing but what went wrong.");
    for (const auto addVerb : {addTakeOver, addMove, addCopy, addCheck, addRepair, addCompact, addQueries,
                               addExport, addImport, addImportProducts}) {
        addVerb(app, talk);
    }
    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kNotUnderstood;
    }
}

// Ctrl+C, a shutdown, a closed terminal: what is half made goes, and then the program. Whoever asks a second
// time ends it at once; the next run sweeps up then. What its starter has switched off, as nohup does, stays
// so.
void endWhenAsked() {
    struct sigaction breaking {};
    breaking.sa_handler = [](int) { dao::breakOff(); };
    breaking.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) {
            sigaction(signal, &breaking, nullptr);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    Talk talk;
    endWhenAsked();
    dao::DBEngine::setKnownForm(data::kShopForm);
    try {
        return run(argc, argv, talk);
    } catch (const std::exception& error) {
        talk.settle();
        std::cerr << "tarvello-data: " << error.what() << '\n';
        return kFailed;
    }
}
