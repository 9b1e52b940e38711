#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <regex>

#include "beat_measures.h"
#include "common/settings.h"
#include "delay.h"
#include "drawing.h"
#include "our_window.h"
#include "pairs.h"
#include "platform/dao/postgres/place.h"
#include "platform/system/files.h"
#include "platform/system/settings_store.h"
#include "server_shop.h"
#include "shop.h"
#include "start_up.h"

namespace {

namespace fs = std::filesystem;

std::vector<Measure> allMeasures() {
    std::vector<Measure> all = engineMeasures();
    for (const auto& more : {windowMeasures(), filterMeasures(), reportMeasures(), catalogueMeasures(),
                             paperMeasures(), backupMeasures()}) {
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

std::string milliseconds(double time) {
    char text[32];
    std::snprintf(text, sizeof text, time < 10 ? "%.2f ms" : time < 100 ? "%.1f ms" : "%.0f ms", time);
    return text;
}

// A row of the table that stands in README.md; a ratio above its target in bold letters.
void print(const Measure& measure, const Figures& figures) {
    const char* const name = measure.name.c_str();
    if (!measure.plain) {
        std::printf("| %s | %s | - | - | - | %d |\n", name, milliseconds(figures.ours).c_str(),
                    measure.pairs);
        return;
    }
    if (measure.target == 0) {
        std::printf("| %s | %s | %s | %.2f | - | %d |\n", name, milliseconds(figures.ours).c_str(),
                    milliseconds(figures.plain).c_str(), figures.ratio, measure.pairs);
        return;
    }
    const char* const mark = figures.ratio > measure.target ? "**" : "";
    std::printf("| %s | %s | %s | %s%.2f%s | %g | %d |\n", name, milliseconds(figures.ours).c_str(),
                milliseconds(figures.plain).c_str(), mark, figures.ratio, mark, measure.target,
                measure.pairs);
}

void measureAll(const fs::path& folder, const std::regex& wanted) {
    Shop shop((folder / "Tarvello.mdb").string(), (folder / "plain.mdb").string());
    std::printf("| | ours | plain | ratio | target | pairs |\n|---|---|---|---|---|---|\n");
    for (const Measure& measure : allMeasures()) {
        if (!std::regex_search(measure.name, wanted)) {
            continue;
        }
        print(measure, takeTurns(measure, shop));
        std::fflush(stdout);
    }
    closeMainWindow();
    shop.checkNothingLeft();
}

// How often our side has asked the server in its last run.
class CountedSide : public Side {
 public:
    CountedSide(std::unique_ptr<Side> side, ServerShop& shop, std::int64_t& asked)
        : side_(std::move(side)), shop_(shop), asked_(asked) {}
    void run() override {
        const std::int64_t before = shop_.roundTrips();
        side_->run();
        asked_ = shop_.roundTrips() - before;
    }
    Lines result() override { return side_->result(); }

 private:
    std::unique_ptr<Side> side_;
    ServerShop& shop_;
    std::int64_t& asked_;
};

// A row of the table of the server. The least of all turns: what others do on the machine takes from both.
void printOnServer(const MeasureOn<ServerShop>& measure, const Figures& figures, std::int64_t roundTrips) {
    const double ratio = figures.oursLeast / figures.plainLeast;
    const char* const mark = ratio > measure.target ? "**" : "";
    std::printf("| %s | %s | %s | %s%.2f%s | %g | %lld | %d |\n", measure.name.c_str(),
                milliseconds(figures.plainLeast).c_str(), milliseconds(figures.oursLeast).c_str(), mark,
                ratio, mark, measure.target, static_cast<long long>(roundTrips), measure.pairs);
}

void measureOnServer(const fs::path& file, const fs::path& signpost, const std::string& server,
                     const std::regex& wanted, bool isFar) {
    ServerShop shop(file, dao::postgres::placeFromText(server), signpost);
    std::printf("| | plain | ours | ratio | target | round trips | pairs |\n|---|---|---|---|---|---|---|\n");
    std::vector<MeasureOn<ServerShop>> all = serverMeasures(isFar);
    for (MeasureOn<ServerShop>& more : serverFilterMeasures()) {
        all.push_back(std::move(more));
    }
    for (const MeasureOn<ServerShop>& measure : all) {
        if (!std::regex_search(measure.name, wanted)) {
            continue;
        }
        std::int64_t asked = 0;
        MeasureOn<ServerShop> counted = measure;
        counted.ours = [&](ServerShop& on) {
            return std::make_unique<CountedSide>(measure.ours(on), on, asked);
        };
        const Figures figures = takeTurns(counted, shop);
        printOnServer(measure, figures, asked);
        std::fflush(stdout);
    }
    closeMainWindow();
    shop.checkSameRows();
}

int usage() {
    std::fprintf(stderr,
                 "usage: tarvello_bench SHOP.mdb [--processor] [MEASURE-REGEX]\n"
                 "       tarvello_bench SHOP.mdb --server \"host=FOLDER user=NAME dbname=postgres\" [--far] "
                 "[MEASURE-REGEX]\n"
                 "       tarvello_bench SHOP.mdb --startup\n"
                 "       tarvello_bench SHOP.mdb --beats [--processor] [--old OLD.mdb] [BEAT-REGEX]\n"
                 "       tarvello_bench SHOP.mdb --drawing SECONDS WORKSTATION\n"
                 "       tarvello_bench SOCKET-FOLDER --delaying MICROSECONDS SERVER-FOLDER\n");
    return 2;
}

struct Arguments {
    fs::path shop;
    bool startUp = false, beats = false, processor = false, isFar = false;
    std::string server, wanted, old;
};

bool read(const QStringList& words, Arguments& arguments) {
    if (words.size() < 2) {
        return false;
    }
    arguments.shop = words.at(1).toStdString();
    for (qsizetype at = 2; at < words.size(); ++at) {
        const QString& word = words.at(at);
        if (word == QLatin1String("--startup")) {
            arguments.startUp = true;
        } else if (word == QLatin1String("--beats")) {
            arguments.beats = true;
        } else if (word == QLatin1String("--processor")) {
            arguments.processor = true;
        } else if (word == QLatin1String("--far")) {
            arguments.isFar = true;
        } else if (word == QLatin1String("--server") && at + 1 < words.size()) {
            arguments.server = words.at(++at).toStdString();
        } else if (word == QLatin1String("--old") && at + 1 < words.size()) {
            arguments.old = words.at(++at).toStdString();
        } else if (arguments.wanted.empty() && !word.startsWith(QLatin1String("--"))) {
            arguments.wanted = word.toStdString();
        } else {
            return false;
        }
    }
    return true;
}

void useFolder(const QString& folder, const fs::path& file, const fs::path& help) {
    platform::setProgramFolder(folder);
    platform::setSettingsFolder(folder);
    settings::setText(settings::DatabasePath, QString::fromStdString(file.string()));
    settings::setText(settings::HelpFilePath, QString::fromStdString(help.string()));
}

}  // namespace

// The parts that take turns with others of their kind: one of several workstations, the network between.
std::optional<int> runPart(const QStringList& words) {
    if (words.size() != 5) {
        return std::nullopt;
    }
    if (words.at(2) == QLatin1String("--drawing")) {
        return drawForSeconds(words.at(1).toStdString(), words.at(3).toInt(), words.at(4).toInt());
    }
    if (words.at(2) == QLatin1String("--delaying")) {
        delayBetween(words.at(1).toStdString(), words.at(4).toStdString(),
                     std::chrono::microseconds(words.at(3).toInt()));
    }
    return std::nullopt;
}

// Measures on two copies of the shop's file, by the wall's clock or the processor's, those whose name the
// expression is found in. With --startup: one start of the program on that very file, in this process. With
// --beats: how long the windows stand still while something long is done.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (const std::optional<int> status = runPart(QApplication::arguments())) {
        return *status;
    }
    Arguments arguments;
    if (!read(QApplication::arguments(), arguments)) {
        return usage();
    }
    const fs::path& shop = arguments.shop;
    const QTemporaryDir place;
    const fs::path copy = fs::path(place.path().toStdString()) / "Tarvello.mdb";
    useFolder(place.path(), arguments.startUp ? shop : copy, shop.parent_path() / "Tarvello.hlp");
    if (arguments.startUp) {
        return startUpMeasure();
    }
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    timeBy(arguments.processor ? Clock::Processor : Clock::Wall);
    const std::regex wanted(arguments.wanted, std::regex::icase);
    if (!arguments.server.empty()) {
        measureOnServer(shop, copy, arguments.server, wanted, arguments.isFar);
        return 0;
    }
    fs::copy_file(shop, copy);
    if (arguments.beats) {
        return beatMeasures({arguments.processor, wanted, arguments.old});
    }
    measureAll(copy.parent_path(), wanted);
    return 0;
}
