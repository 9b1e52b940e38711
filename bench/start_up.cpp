#include "start_up.h"

#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>

#include "common/help.h"
#include "common/modMain.h"
#include "data/session.h"
#include "records/frmMain.h"
#include "shell/program_windows.h"

namespace {

double millisecondsNow() {
    std::timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// When this process was started, by the kernel's own book (to a hundredth of a second).
double processStart() {
    std::ifstream file("/proc/self/stat");
    std::string text((std::istreambuf_iterator<char>(file)), {});
    std::istringstream words(text.substr(text.rfind(')') + 2));
    std::string word;
    for (int field = 3; field <= 22; ++field) {
        words >> word;
    }
    return std::stod(word) * 1e3 / static_cast<double>(sysconf(_SC_CLK_TCK));
}

// The most that this process has held so far, in MiB.
long peakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

}  // namespace

int startUpMeasure() {
    const double started = processStart();
    const double ready = millisecondsNow();
    CheckHelpFile();
    KursKupovni = ReadKursKupovni();
    QString errorText;
    if (!CheckDatabase(errorText)) {
        std::fprintf(stderr, "%s\n", qPrintable(errorText));
        return 1;
    }
    const double checked = millisecondsNow();
    ShowTipsAtStartup = false;
    frmMain main(programWindows());
    qint64 tick = 0;
    main.start.splash.GetTickCount = [&tick] { return tick += SplashCover::kSplashTime; };
    double built = checked;
    main.start.onStartStep = [&built](StartStep) { built = millisecondsNow(); };
    if (!main.Display()) {
        return 1;
    }
    const double filled = millisecondsNow();
    QApplication::processEvents();
    main.grab();
    const double painted = millisecondsNow();
    std::printf(
        "start_up %.0f ms: program and Qt loaded %.0f, database checked %.0f, window built %.0f,"
        " record sets opened and lists filled %.0f, painted %.0f; memory %ld MiB\n",
        painted - started, ready - started, checked - ready, built - checked, filled - built,
        painted - filled, peakMemory());
    main.choices.session.AlwaysCreateBackupDB = false;
    main.unload();
    return 0;
}
