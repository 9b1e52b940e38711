#include "pairs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

clockid_t theClock = CLOCK_MONOTONIC;

double milliseconds() {
    std::timespec now{};
    clock_gettime(theClock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double turn(Side& side, int runs) {
    const double start = milliseconds();
    for (int i = 0; i < runs; ++i) {
        side.run();
    }
    return (milliseconds() - start) / runs;
}

double median(std::vector<double> numbers) {
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

double least(const std::vector<double>& numbers) {
    return *std::min_element(numbers.begin(), numbers.end());
}

Figures alone(const Turns& turns, Side& ours) {
    std::vector<double> taken;
    for (int i = 0; i < turns.pairs; ++i) {
        taken.push_back(turn(ours, turns.runs));
    }
    return {median(taken), 0, 0, least(taken), 0};
}

}  // namespace

void timeBy(Clock clock) {
    theClock = clock == Clock::Processor ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC;
}

Figures takeTurns(const Turns& turns, const MakeSide& makeOurs, const MakeSide& makePlain) {
    const std::unique_ptr<Side> ours = makeOurs();
    turn(*ours, turns.runs);
    if (!makePlain) {
        return alone(turns, *ours);
    }
    const std::unique_ptr<Side> plain = makePlain();
    turn(*plain, turns.runs);
    checkEqual(turns.name, ours->result(), plain->result());
    std::vector<double> oursTaken, plainTaken, ratios;
    for (int i = 0; i < turns.pairs; ++i) {
        oursTaken.push_back(turn(*ours, turns.runs));
        plainTaken.push_back(turn(*plain, turns.runs));
        ratios.push_back(oursTaken.back() / plainTaken.back());
    }
    checkEqual(turns.name, ours->result(), plain->result());
    return {median(oursTaken), median(plainTaken), median(ratios), least(oursTaken), least(plainTaken)};
}

void checkEqual(const std::string& what, const Lines& ours, const Lines& plain) {
    if (ours == plain && !ours.empty()) {
        return;
    }
    std::fprintf(stderr, "%s: the two sides do not end the same (%zu lines and %zu)\n", what.c_str(),
                 ours.size(), plain.size());
    const std::size_t common = std::min(ours.size(), plain.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (ours[i] == plain[i]) {
            continue;
        }
        std::fprintf(stderr, "line %zu\nours:  %.2000s\nplain: %.2000s\n", i, ours[i].c_str(),
                     plain[i].c_str());
        break;
    }
    std::exit(1);
}
