#include "beat_measures.h"

#include <malloc.h>

#include <QFile>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <regex>
#include <string>

#include "catalogue/ActiveReport1.h"
#include "catalogue/frmKonfigPrint.h"
#include "data/session.h"
#include "our_window.h"
#include "plain_shop.h"
#include "platform/controls/boxes.h"
#include "platform/report/progress_window.h"
#include "platform/system/launch.h"
#include "records/frmMain.h"
#include "records/quick_filters.h"
#include "shell/old_shop.h"
#include "stock.h"

namespace {

clockid_t& clockInUse() {
    static clockid_t clock = CLOCK_MONOTONIC;
    return clock;
}

double millisecondsNow() {
    std::timespec now{};
    clock_gettime(clockInUse(), &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// The longest time that the event loop let go by without a turn, from the first moment to the last.
class Beat {
 public:
    Beat() {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { turn(); });
        timer_.start(kEvery);
    }
    double longestGap() {  // milliseconds
        turn();
        return longest_;
    }

 private:
    static constexpr std::chrono::milliseconds kEvery{20};

    void turn() {
        const double now = millisecondsNow();
        longest_ = std::max(longest_, now - last_);
        last_ = now;
    }

    QTimer timer_;
    double last_ = millisecondsNow();
    double longest_ = 0;
};

// MiB; `what`: "VmRSS" now, "VmHWM" the most since it was last forgotten.
double memoryOf(const std::string& what) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, what.size(), what) == 0) {
            return std::stod(line.substr(what.size() + 1)) / 1024;
        }
    }
    return 0;
}

void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << 5;
}

std::regex& wantedBeats() {
    static std::regex wanted;
    return wanted;
}

// MiB, of all that has been told of.
double& mostMemory() {
    static double most = 0;
    return most;
}

void tellOf(const std::string& name, const std::function<void()>& deed) {
    if (!std::regex_search(name, wantedBeats())) {
        return;
    }
    forgetPeak();
    const double before = memoryOf("VmRSS");
    const double begun = millisecondsNow();
    Beat beat;
    deed();
    const double gap = beat.longestGap();
    mostMemory() = std::max(mostMemory(), memoryOf("VmHWM"));
    std::printf("| %s | %.0f ms | %.0f ms | %.0f MiB |\n", name.c_str(), millisecondsNow() - begun, gap,
                memoryOf("VmHWM") - before);
    std::fflush(stdout);
}

void filter(int number) {
    bool ok = false;
    mainWindow().shop.filter.ApplyQuickFilter(number, ok);
}

void tellOfFilters(frmMain& window) {
    window.choices.filter.ShowMsgBoxFilterResults = false;
    for (int number = 0; number < static_cast<int>(quick_filters::kFilters.size()); ++number) {
        const std::string name = "filter " + std::to_string(number);
        tellOf(name, [&] { filter(number); });
        tellOf("removing " + name, [&] { window.shop.filter.RemoveFilters(); });
    }
}

// All of its pages, as they are laid out before the preview comes up.
void layOut(ActiveReport1& list) {
    report::ProgressWindow progress(nullptr);
    list.run([&](qint64 done, qint64 all) { return progress.show(done, all); });
}

// Of all products.
void makePriceList() {
    frmKonfigPrint window;
    window.onShow = layOut;
    QString errorText;
    if (!window.DoPrintDataReport(errorText)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(errorText));
    }
}

void tellOfTheDay() {
    tellOf("opening the window", [] { mainWindow(); });
    frmMain& window = mainWindow();  // also where its opening is not told of
    window.choices.report.ShowOnlySelectedClient = window.choices.report.ShowOnlySelectedComputer =
        window.choices.report.ShowOnlySelectedService = false;
    tellOf("text report", [&] { window.report.GenerateReport(); });
    tellOf("refresh", [&] { window.shop.filter.RefreshAll(); });
    tellOfFilters(window);
    tellOf("price list", makePriceList);
    window.choices.session.AlwaysCreateBackupDB = true;
    tellOf("backup at closing", [] { closeMainWindow(); });
    closeMainWindow();  // where it is still open
    std::printf("| the most memory of this day | | | %.0f MiB |\n", mostMemory());
}

// The start of the program on an old database in the place of the shop's, to the moment when it is proved.
void tellOfTakingOver(const QString& old) {
    QFile::remove(databasePath());
    if (!QFile::copy(old, databasePath())) {
        std::fprintf(stderr, "%s cannot be copied\n", qUtf8Printable(old));
        return;
    }
    offerToTakeOldShops();
    platform::BoxScript boxes;
    boxes.answers = {platform::BoxAnswer::Yes};
    QString errorText;
    tellOf("take-over of an old database", [&] { CheckDatabase(errorText); });
    std::fprintf(stderr, "%s\n", qUtf8Printable(errorText.isEmpty() ? boxes.lastText() : errorText));
}

}  // namespace

int beatMeasures(const Beats& beats) {
    wantedBeats() = beats.wanted;
    clockInUse() = beats.byProcessor ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC;
    platform::setShellExecuteHook([](const QString&) { return 33; });  // nothing opens the report
    fillStock(PlainShop(databasePath().toStdString()));
    malloc_trim(0);  // what that took is none of the day's
    std::printf("| | time | longest gap between two turns | memory above the start |\n|---|---|---|---|\n");
    tellOfTheDay();
    QString errorText;
    tellOf("repair and compaction", [&] { RepairAndCompactDatabase(errorText, true); });
    if (!beats.old.empty()) {
        tellOfTakingOver(QString::fromStdString(beats.old));
    }
    platform::setShellExecuteHook({});
    return 0;
}
