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

Figures alone(const Measure& measure, Side& ours) {
    std::vector<double> taken;
    for (int i = 0; i < measure.pairs; ++i) {
        taken.push_back(turn(ours, measure.runs));
    }
    return {median(taken), 0, 0};
}

}  // namespace

void timeBy(Clock clock) {
    theClock = clock == Clock::Processor ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC;
}

Figures takeTurns(const Measure& measure, Shop& shop) {
    const std::unique_ptr<Side> ours = measure.ours(shop);
    turn(*ours, measure.runs);
    if (!measure.plain) {
        return alone(measure, *ours);
    }
    const std::unique_ptr<Side> plain = measure.plain(shop);
    turn(*plain, measure.runs);
    checkEqual(measure.name, ours->result(), plain->result());
    std::vector<double> oursTaken, plainTaken, ratios;
    for (int i = 0; i < measure.pairs; ++i) {
        oursTaken.push_back(turn(*ours, measure.runs));
        plainTaken.push_back(turn(*plain, measure.runs));
        ratios.push_back(oursTaken.back() / plainTaken.back());
    }
    checkEqual(measure.name, ours->result(), plain->result());
    return {median(oursTaken), median(plainTaken), median(ratios)};
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
