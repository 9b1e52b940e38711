#pragma once

#include <QtGlobal>
#include <functional>
#include <memory>

class SplashWindow;

// The picture that covers the start, until the main window takes it away: it stays for seven seconds in all,
// however much of that time the building takes.
class SplashCover {
 public:
    static constexpr int kSplashTime = 7000;  // milliseconds from the start

    SplashCover();
    ~SplashCover();

    // For tests in the place of the real clock: milliseconds since some moment in the past.
    std::function<qint64()> GetTickCount;

    void setSplash(std::unique_ptr<SplashWindow> splash);
    SplashWindow* window() const { return splash_.get(); }  // nullptr where there is none, or no more
    void repaint();
    // The window is built; it was begun at `startTick`.
    void settle(qint64 startTick);
    void DistroySplashForm();

 private:
    std::unique_ptr<SplashWindow> splash_;
};
