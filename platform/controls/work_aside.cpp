#include "platform/controls/work_aside.h"

#include <future>

namespace platform {

bool workAside(const std::function<void()>& work, const std::function<bool()>& turn,
               std::chrono::milliseconds between) {
    std::future<void> done = std::async(std::launch::async, work);
    bool goesOn = true;
    while (goesOn && done.wait_for(between) != std::future_status::ready) {
        goesOn = turn();
    }
    done.get();
    return goesOn;
}

}  // namespace platform
