#include "platform/system/end_signals.h"

#include <QSocketNotifier>
#include <array>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#endif

namespace platform {

#ifdef Q_OS_UNIX

namespace {

constexpr std::array<int, 3> kSignals{SIGTERM, SIGHUP, SIGINT};
std::array<struct sigaction, kSignals.size()> before;
int reading = -1;
int writing = -1;

// A signal comes in the middle of anything: nothing is safe here but to leave a mark for the event loop. A
// pipe that is full holds marks enough.
void mark(int) {
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(writing, &byte, 1);
    errno = error;
}

void openPipe() {
    int ends[2];
    if (pipe(ends) != 0) {
        return;
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    reading = ends[0];
    writing = ends[1];
}

void catchSignals() {
    struct sigaction action {};
    action.sa_handler = mark;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &before[i]);
        if (before[i].sa_handler != SIG_IGN) {
            sigaction(kSignals[i], &action, nullptr);
        }
    }
}

}  // namespace

EndSignals::EndSignals() {
    openPipe();
    if (reading < 0) {
        return;  // then a signal kills, as it would without this object
    }
    auto* notifier = new QSocketNotifier(reading, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &EndSignals::read);
    catchSignals();
}

EndSignals::~EndSignals() {
    if (reading < 0) {
        return;
    }
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], &before[i], nullptr);
    }
    close(reading);
    close(writing);
    reading = writing = -1;
}

void EndSignals::read() {
    std::array<char, 16> marks{};
    while (::read(reading, marks.data(), marks.size()) > 0) {
    }
    emit received();
}

#else

EndSignals::EndSignals() = default;
EndSignals::~EndSignals() = default;
void EndSignals::read() {}

#endif

}  // namespace platform
