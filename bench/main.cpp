#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>

#include "measures.h"
#include "platform/system/files.h"
#include "platform/system/settings_store.h"
#include "shell/settings.h"

namespace {

// Keeps the medians instead of printing a table of its own.
class Medians : public benchmark::BenchmarkReporter {
 public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.aggregate_name == "median")
                milliseconds_[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }
    double of(const std::string& name) const {
        const auto found = milliseconds_.find(name);
        return found == milliseconds_.end() ? 0 : found->second;
    }

 private:
    std::map<std::string, double> milliseconds_;
};

void enter(const Measure& measure, Shop& shop) {
    const auto add = [&](const char* side, const std::function<void(Shop&)>& body) {
        if (!body)
            return;
        benchmark::RegisterBenchmark((measure.name + side).c_str(),
                                     [&shop, body](benchmark::State& state) {
                                         for (auto turn : state) {
                                             (void)turn;
                                             body(shop);
                                         }
                                     })
            ->Iterations(measure.iterations)
            ->Repetitions(measure.repetitions)
            ->ReportAggregatesOnly(true)
            ->Unit(benchmark::kMillisecond);
    };
    add("/ours", measure.ours);
    add("/baseline", measure.baseline);
}

void print(const Measure& measure, const Medians& medians) {
    const double ours = medians.of(measure.name + "/ours");
    const double baseline = medians.of(measure.name + "/baseline");
    if (!measure.baseline) {
        std::printf("%-32s %10.3f ms          -       -       -\n", measure.name.c_str(), ours);
        return;
    }
    std::printf("%-32s %10.3f ms %10.3f ms %6.2f  %6.2f%s\n", measure.name.c_str(), ours, baseline,
                ours / baseline, measure.target,
                measure.target > 0 && ours / baseline > measure.target ? "  above target" : "");
}

int measureAll(const std::string& path) {
    Shop shop(path);
    std::vector<Measure> measures = engineMeasures();
    for (const auto& more : {windowMeasures(), stockMeasures(), findingMeasures()})
        measures.insert(measures.end(), more.begin(), more.end());
    Medians medians;
    for (const Measure& measure : measures)
        enter(measure, shop);
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::printf("%-32s %13s %13s %6s  %6s\n", "measure", "ours", "baseline", "ratio", "target");
    for (const Measure& measure : measures)
        print(measure, medians);
    return 0;
}

}  // namespace

// tarvello_bench SHOP.mdb: measures on a copy of that shop's file.
// tarvello_bench --startup SHOP.mdb: one start of the program on that very file, in this process.
int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const bool startUp = argc == 3 && std::strcmp(argv[1], "--startup") == 0;
    if (!startUp && argc != 2) {
        std::fprintf(stderr, "usage: tarvello_bench [--startup] SHOP.mdb\n");
        return 2;
    }
    QApplication application(argc, argv);
    QTemporaryDir place;
    std::filesystem::path file = argv[argc - 1];
    if (!startUp) {
        file = std::filesystem::path(place.path().toStdString()) / "Tarvello.mdb";
        std::filesystem::copy_file(argv[1], file);
    }
    platform::setProgramFolder(place.path());
    platform::setSettingsFolder(place.path());
    settings::setText(settings::DatabasePath, QString::fromStdString(file.string()));
    const std::filesystem::path help = std::filesystem::path(argv[argc - 1]).parent_path() / "Tarvello.hlp";
    settings::setText(settings::HelpFilePath, QString::fromStdString(help.string()));
    return startUp ? startUpMeasure() : measureAll(file.string());
}
