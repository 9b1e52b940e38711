#pragma once

#include <atomic>

namespace dao {

// For a program that was asked to end while it makes or reads a whole database: what goes through many rows
// or pages fails with errCancelled at its next block, page or step of a statement, and takes what is half
// made away with it, as after any failure. There is no way back: the process is about to end. Safe within a
// signal's handler.
void breakOff() noexcept;

// False after breakOff(), and where this thread's work has been left.
bool isGoingOn() noexcept;
// Throws errCancelled then.
void needGoingOn();

// Work that somebody waits for and may leave: as long as this lives, what the engine does on the thread that
// made it is left once `left` is true. It fails with errCancelled soon after, also within one statement, in
// the file or on the server.
class Leavable {
 public:
    explicit Leavable(const std::atomic<bool>& left);  // outlives this
    ~Leavable();
    Leavable(const Leavable&) = delete;
    Leavable& operator=(const Leavable&) = delete;

 private:
    const std::atomic<bool>* around_;
};
bool isLeft() noexcept;  // the work of this thread
// What this thread's work is left by, for another thread that does a part of it; nullptr: it cannot be.
const std::atomic<bool>* leftBy() noexcept;

// What has to come to its end within work that may be left: a commit, a rollback.
class Unleavable {
 public:
    Unleavable() noexcept;
    ~Unleavable();
    Unleavable(const Unleavable&) = delete;
    Unleavable& operator=(const Unleavable&) = delete;

 private:
    const std::atomic<bool>* around_;
};

}  // namespace dao
