#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>
#include <cstdio>
#include <filesystem>
#include <regex>

#include "common/settings.h"
#include "our_window.h"
#include "pairs.h"
#include "platform/system/files.h"
#include "platform/system/settings_store.h"
#include "shop.h"
#include "start_up.h"

namespace {

namespace fs = std::filesystem;

std::vector<Measure> allMeasures() {
    std::vector<Measure> all = engineMeasures();
    for (const auto& more :
         {windowMeasures(), filterMeasures(), reportMeasures(), catalogueMeasures(), paperMeasures()}) {
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

int usage() {
    std::fprintf(stderr,
                 "usage: tarvello_bench SHOP.mdb [--processor] [MEASURE-REGEX]\n"
                 "       tarvello_bench SHOP.mdb --startup\n");
    return 2;
}

struct Arguments {
    fs::path shop;
    bool startUp = false, processor = false;
    std::string wanted;
};

bool read(const QStringList& words, Arguments& arguments) {
    if (words.size() < 2) {
        return false;
    }
    arguments.shop = words.at(1).toStdString();
    for (const QString& word : words.mid(2)) {
        if (word == QLatin1String("--startup")) {
            arguments.startUp = true;
        } else if (word == QLatin1String("--processor")) {
            arguments.processor = true;
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

// Measures on two copies of the shop's file, by the wall's clock or the processor's, those whose name the
// expression is found in. With --startup: one start of the program on that very file, in this process.
int main(int argc, char** argv) {
    const QApplication application(argc, argv);
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
    fs::copy_file(shop, copy);
    measureAll(copy.parent_path(), std::regex(arguments.wanted, std::regex::icase));
    return 0;
}
