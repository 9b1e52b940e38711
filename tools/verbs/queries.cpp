#include <CLI/CLI.hpp>
#include <memory>

#include "data/left_queries.h"
#include "data/session.h"
#include "platform/dao/dao.h"
#include "tools/verbs/table_lines.h"
#include "tools/verbs/verbs.h"

namespace {

const char* wordFor(data::StoredQuery::Whose whose) {
    switch (whose) {
        case data::StoredQuery::Whose::Shop:
            return "the shop's";
        case data::StoredQuery::Whose::Running:
            return "in use";
        case data::StoredQuery::Whose::Nobody:
            return "left behind";
    }
    return "";
}

// A narrowed view of a large shop is a text of megabytes.
std::string shortened(const std::string& text) {
    constexpr std::size_t kMost = 70;
    return text.size() <= kMost ? text : text.substr(0, kMost) + "...";
}

struct Queries {
    std::string path;
    bool sweep = false;

    void run(Talk& talk) const {
        dao::Database database =
            dao::DBEngine::OpenDatabase(path, false, !sweep, connectText().toStdString());
        if (sweep) {
            tellSwept(data::sweepLeftQueries(database), talk);
        } else {
            tellAll(data::storedQueries(database), talk);
        }
        database.Close();
    }

    static void tellSwept(const std::vector<std::string>& swept, Talk& talk) {
        for (const std::string& name : swept) {
            talk.say("Removed " + name + '.');
        }
        if (swept.empty()) {
            talk.say("No stored query was left behind.");
        }
    }

    static void tellAll(const std::vector<data::StoredQuery>& queries, Talk& talk) {
        std::vector<std::vector<std::string>> rows{{"Query", "Whose", "Statement"}};
        for (const data::StoredQuery& query : queries) {
            rows.push_back({query.name, wordFor(query.whose), shortened(query.text)});
        }
        for (const std::string& line : tableLines(rows)) {
            talk.say(line);
        }
    }
};

}  // namespace

void addQueries(CLI::App& app, Talk& talk) {
    const auto queries = std::make_shared<Queries>();
    CLI::App* verb = app.add_subcommand(
        "queries", "Lists the stored queries of a shop, and sweeps those that crashed copies left behind.");
    verb->add_option("DATABASE", queries->path, "The shop's file, or the signpost that leads to its server.")
        ->required();
    verb->add_flag("--sweep", queries->sweep, "Removes the ones left behind; those of running copies stay.");
    verb->callback([queries, &talk] { queries->run(talk); });
}
