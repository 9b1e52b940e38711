#include "platform/dao/postgres/patience.h"

#include <utility>

#include "platform/dao/breaking_off.h"
#include "platform/dao/limits.h"

namespace dao::postgres {
namespace {

constexpr std::chrono::milliseconds kAfterServer{500};

}  // namespace

Patience::Patience() : Patience(std::chrono::milliseconds(driver::lockTimeout()) + kAfterServer) {
    goOn_ = [] { return !isLeft(); };
}

Patience Patience::whileTrue(std::function<bool()> goOn) {
    Patience patience;
    patience.until_ = Clock::time_point::max();
    patience.goOn_ = std::move(goOn);
    return patience;
}

}  // namespace dao::postgres
