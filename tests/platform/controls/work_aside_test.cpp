#include "platform/controls/work_aside.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

namespace {

using platform::workAside;
using namespace std::chrono_literals;

TEST(WorkAside, TheTurnsAreHereAndTheWorkIsNot) {
    std::atomic<bool> turned{false};
    std::thread::id worker, turner;
    EXPECT_TRUE(workAside(
        [&] {
            worker = std::this_thread::get_id();
            turned.wait(false);
        },
        [&] {
            turner = std::this_thread::get_id();
            turned = true;
            turned.notify_all();
            return true;
        },
        1ms));
    EXPECT_EQ(turner, std::this_thread::get_id());
    EXPECT_NE(worker, turner);
}

TEST(WorkAside, WorkThatIsTurnedFromGoesToItsEnd) {
    std::atomic<bool> left{false};
    bool ended = false;
    int turns = 0;
    EXPECT_FALSE(workAside(
        [&] {
            left.wait(false);
            std::this_thread::sleep_for(20ms);
            ended = true;
        },
        [&] {
            ++turns;
            left = true;
            left.notify_all();
            return false;
        },
        1ms));
    EXPECT_TRUE(ended);
    EXPECT_EQ(turns, 1);
}

TEST(WorkAside, WhatTheWorkThrowsIsThrownHere) {
    const auto turn = [] { return true; };
    EXPECT_THROW(workAside([] { throw std::runtime_error("no room"); }, turn, 1ms), std::runtime_error);
}

TEST(WorkAside, WhatATurnThrowsComesWhenTheWorkIsDone) {
    std::atomic<bool> turned{false};
    bool ended = false;
    const auto turn = [&]() -> bool {
        turned = true;
        turned.notify_all();
        throw std::runtime_error("no window");
    };
    const auto work = [&] {
        turned.wait(false);
        ended = true;
    };
    EXPECT_THROW(workAside(work, turn, 1ms), std::runtime_error);
    EXPECT_TRUE(ended);
}

}  // namespace
