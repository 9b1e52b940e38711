// The command for those who look after a shop's data. What it does to a shop it does to the whole of it, and
// says so: one verb a job, its own --help, and a manual page (docs/tarvello-data.1).
//
// Exit status: 0 done; 1 refused or failed, with a sentence, nothing changed that the sentence does not name;
// 2 not understood.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "data/session.h"
#include "platform/dao/dao.h"
#include "platform/dao/moving.h"

namespace {

constexpr int kFailed = 1;
constexpr int kNotUnderstood = 2;

// One line that is written over and over, for somebody who watches; a log has no use for it.
class ProgressLine {
 public:
    void operator()(const dao::TransferState& state) {
        if (!watched_ || state.allRows == 0) {
            return;
        }
        std::fprintf(stderr, "\r%-9s %3d %%  %-20s", state.comparing ? "comparing" : "copying",
                     static_cast<int>(100 * state.rows / state.allRows), state.table.c_str());
        written_ = true;
    }
    ~ProgressLine() {
        if (written_) {
            std::fputs("\r                                        \r", stderr);
        }
    }

 private:
    bool watched_ = isatty(STDERR_FILENO) != 0;
    bool written_ = false;
};

void move(const std::string& from, const std::string& to) {
    const std::string connect = connectText().toStdString();
    ProgressLine progress;
    const dao::TransferWatch watch = [&](const dao::TransferState& state) { progress(state); };
    if (dao::DBEngine::IsOnServer(from)) {
        dao::moveHome(from, to, connect, watch);
    } else {
        dao::moveToServer(from, connect, to, watch);
    }
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Looks after the records of a Tarvello shop.", "tarvello-data");
    app.require_subcommand(1);
    std::string from;
    std::string to;
    CLI::App* moving = app.add_subcommand(
        "move", "Moves a shop from its file to a server, or home again from the server into a new file.");
    moving->add_option("FROM", from, "The shop's file, or the signpost that leads to its server.")
        ->required();
    moving
        ->add_option(
            "TO", to,
            "The server's database, \"host=... dbname=...\" (port, user, sslmode, sslrootcert and passfile "
            "may be told, too); from a signpost, a new file.")
        ->required();
    moving->footer(
        "Nobody else may have the shop open. Every table is compared before anything that existed is "
        "changed.\n"
        "The file stays as NAME.before-server.mdb beside the signpost that takes its place.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kNotUnderstood;
    }
    try {
        move(from, to);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "tarvello-data: " << error.what() << '\n';
        return kFailed;
    }
}
