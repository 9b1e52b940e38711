#pragma once

#include <functional>
#include <string>
#include <vector>

#include "shop.h"

// A measure: the same answer got by us and by the plain C API of the same library on the same file.
struct Measure {
    std::string name;
    double target = 0;  // ours divided by baseline should not be above this; 0: reported only
    std::function<void(Shop&)> ours;
    std::function<void(Shop&)> baseline;
    int iterations = 1;   // of one repetition
    int repetitions = 5;  // the median counts
};

std::vector<Measure> engineMeasures();
std::vector<Measure> windowMeasures();
std::vector<Measure> stockMeasures();
std::vector<Measure> findingMeasures();

// Prints the milliseconds from the start of this process to the usable main window, with what they were spent
// on. One start for a process.
int startUpMeasure();
