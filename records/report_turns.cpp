#include "records/report_turns.h"

#include <chrono>

#include "platform/controls/work_aside.h"

bool ReportTurns::run(std::size_t clients, const std::function<void()>& work, const Turn& turn) const {
    constexpr std::chrono::milliseconds kBetweenTurns{5};
    if (clients >= large_) {
        return platform::workAside(work, turn, kBetweenTurns);
    }
    work();
    return true;
}
