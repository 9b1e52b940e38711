#include "beat_measures.h"

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
#include "platform/system/launch.h"
#include "records/frmMain.h"
#include "records/quick_filters.h"

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

// Of all products, up to the moment when its first page is laid out.
void readPriceList() {
    frmKonfigPrint window;
    window.onShow = [](ActiveReport1&) {};
    QString errorText;
    if (!window.DoPrintDataReport(errorText)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(errorText));
    }
}

}  // namespace

int beatMeasures(bool processor, const std::regex& wanted) {
    wantedBeats() = wanted;
    clockInUse() = processor ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC;
    platform::setShellExecuteHook([](const QString&) { return 33; });  // nothing opens the report
    std::printf("| | time | longest gap between two turns | memory above the start |\n|---|---|---|---|\n");
    tellOf("opening the window", [] { mainWindow(); });
    frmMain& window = mainWindow();  // also where its opening is not told of
    window.choices.report.ShowOnlySelectedClient = window.choices.report.ShowOnlySelectedComputer =
        window.choices.report.ShowOnlySelectedService = false;
    tellOf("text report", [&] { window.report.GenerateReport(); });
    tellOf("refresh", [&] { window.shop.filter.RefreshAll(); });
    window.choices.filter.ShowMsgBoxFilterResults = false;
    for (int number = 0; number < static_cast<int>(quick_filters::kFilters.size()); ++number) {
        const std::string name = "filter " + std::to_string(number);
        tellOf(name, [&] { filter(number); });
        tellOf("removing " + name, [&] { window.shop.filter.RemoveFilters(); });
    }
    tellOf("price list", readPriceList);
    window.choices.session.AlwaysCreateBackupDB = true;
    tellOf("backup at closing", [] { closeMainWindow(); });
    closeMainWindow();  // where it is still open
    QString errorText;
    std::printf("| the most memory of this day | | | %.0f MiB |\n", mostMemory());
    tellOf("repair and compaction", [&] { RepairAndCompactDatabase(errorText, true); });
    platform::setShellExecuteHook({});
    return 0;
}
