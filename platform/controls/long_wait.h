#pragma once

#include <QElapsedTimer>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>

#include "platform/controls/typed_ahead.h"

class QEventLoop;

namespace platform {

class WaitSign;

// Milliseconds, and what a test wants to know.
struct WaitTimes {
    int untilTurning = 60;          // since the windows had their last turn
    int untilSign = 1000;           // of the whole, before it is seen and can be left
    std::function<void()> atPiece;  // before each piece of work; empty: nothing
};
WaitTimes& waitTimes();

// A command that waits for the engine, and may wait long: as long as this lives, the pieces of work that are
// given to run() and finish(), wherever they stand, are done on a thread of their own. The command goes on
// when they are done; meanwhile the windows are painted, timers run, and nothing that a person does gets
// through: what is typed is given to the windows afterwards. After a second a sign with a moving bar stands
// over the window; it takes keys and clicks from then on, and Esc or its button leaves the work.
//
// Only the engine may be asked in these pieces, and nobody else may ask it meanwhile: isAway() tells.
class LongWait {
 public:
    // `doing`: what the sign says of it. Within another wait it is a part of that one.
    explicit LongWait(const QString& doing);
    ~LongWait();
    LongWait(const LongWait&) = delete;
    LongWait& operator=(const LongWait&) = delete;

    bool isLeft() const { return whole_->left_; }

    // Both throw what the work throws. Where nobody waits it is done here, at once. What is at its end when
    // it is left has been done.
    static void run(const std::function<void()>& work);     // errCancelled where it is left, or was before
    static void finish(const std::function<void()>& work);  // cannot be left, whatever has been left before
    static void needStay();  // throws errCancelled where the wait has been left
    static void leave();     // as Esc on the sign does; nothing without a wait
    static bool wasLeft();   // the wait that goes on
    static bool isAway();    // a piece of work is being done just now

 private:
    enum class Kind { Leavable, Whole };
    static void give(const std::function<void()>& work, Kind kind);
    void doAside(const std::function<void()>& work, Kind kind);
    void turn(QEventLoop& loop, const std::atomic<bool>& done);
    void showSign();
    // Milliseconds; none left: 0.
    int untilSign() const;
    int untilTurning() const;

    LongWait* whole_;
    QString doing_;
    QElapsedTimer since_;
    QElapsedTimer turned_;  // since the windows had their last turn
    std::atomic<bool> left_{false};
    bool leavable_ = true;  // the piece of work that goes on
    std::unique_ptr<WaitSign> sign_;
    TypedAhead typed_;  // before it was there
};

}  // namespace platform
