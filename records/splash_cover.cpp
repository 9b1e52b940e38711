#include "records/splash_cover.h"

#include <chrono>
#include <utility>

#include "common/modMain.h"
#include "records/program_windows.h"

namespace {

qint64 steadyMilliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

SplashCover::SplashCover() : GetTickCount(steadyMilliseconds) {}

SplashCover::~SplashCover() = default;

void SplashCover::setSplash(std::unique_ptr<SplashWindow> splash) {
    splash_ = std::move(splash);
    if (splash_) {
        splash_->setCloseCallback([this] { DistroySplashForm(); });
    }
}

void SplashCover::repaint() {
    if (splash_) {
        splash_->repaint();
    }
}

void SplashCover::settle(qint64 startTick) {
    if (!splash_) {
        return;
    }
    const qint64 elapsed = GetTickCount() - startTick;
    if (elapsed >= kSplashTime) {
        return DistroySplashForm();
    }
    SetTopMost(splash_.get(), true);
    splash_->repaint();
    splash_->setTimerInterval(static_cast<int>(kSplashTime - elapsed));
}

void SplashCover::DistroySplashForm() {
    if (!splash_) {
        return;
    }
    splash_->hide();
    // The splash window's own timer may be what asks for this, so it must outlive the call.
    splash_.release()->deleteLater();
}
