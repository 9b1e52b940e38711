#pragma once

#include <chrono>
#include <functional>

namespace dao::postgres {

using Clock = std::chrono::steady_clock;

// How long a call to the server may take, counted from the making of this.
class Patience {
 public:
    // As long as the engine waits for a lock, and half a second: the server is the first to end the waiting
    // for a lock, since it can say that it was one. What is left (dao::Leavable) is given up before.
    Patience();
    explicit Patience(std::chrono::milliseconds time) : until_(Clock::now() + time) {}

    // For long work: as long as it takes. `goOn` is asked about ten times a second; false gives up.
    static Patience whileTrue(std::function<bool()> goOn);

    Clock::time_point until() const { return until_; }
    bool goesOn() const { return !goOn_ || goOn_(); }

 private:
    Clock::time_point until_;
    std::function<bool()> goOn_;
};

}  // namespace dao::postgres
