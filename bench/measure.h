#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class Shop;

// An answer in words, so that two of them can be compared and the first difference be told.
using Lines = std::vector<std::string>;

// One way to an answer: ours, or the plain one. Whatever a program makes ready once (a window, a record set
// that stays open, a prepared statement) belongs into the constructor; what it takes away again into the
// destructor.
class Side {
 public:
    Side() = default;
    Side(const Side&) = delete;
    Side& operator=(const Side&) = delete;
    virtual ~Side() = default;

    virtual void run() = 0;                // timed
    virtual Lines result() { return {}; }  // what run() has left; not timed
};

// The same answer got by us and by a program written straight onto the C API of the same library, each on
// records of its own. `Place` is the shop that both are measured on.
template <class Place>
struct MeasureOn {
    using Make = std::function<std::unique_ptr<Side>(Place&)>;

    std::string name;
    double target = 0;  // ours divided by plain should not be above this; 0: there is no target
    Make ours;
    Make plain;      // empty: there is nothing to compare with
    int pairs = 15;  // turns that each side takes
    int runs = 1;    // in one turn, where a single one is too short to be timed
};
using Measure = MeasureOn<Shop>;

// What makes a side: on whatever shop it takes.
template <class Of, class... With>
auto side(With... with) {
    return [=](auto& shop) -> std::unique_ptr<Side> { return std::make_unique<Of>(shop, with...); };
}

std::vector<Measure> engineMeasures();
std::vector<Measure> windowMeasures();
std::vector<Measure> filterMeasures();
std::vector<Measure> reportMeasures();
std::vector<Measure> catalogueMeasures();
std::vector<Measure> paperMeasures();
std::vector<Measure> backupMeasures();
