#pragma once

#include "platform/controls/long_wait.h"

// As long as it lives, each wait is left before one of its pieces of work, counted from 1.
class LeftWait {
 public:
    explicit LeftWait(int piece) : before_(platform::waitTimes()) {
        platform::waitTimes().atPiece = [this, piece] {
            if (++pieces == piece) {
                platform::LongWait::leave();
            }
        };
    }
    ~LeftWait() { platform::waitTimes() = before_; }
    LeftWait(const LeftWait&) = delete;
    LeftWait& operator=(const LeftWait&) = delete;

    int pieces = 0;

 private:
    platform::WaitTimes before_;
};
