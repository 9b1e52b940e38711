#pragma once

#include <chrono>
#include <functional>

namespace platform {

// Does the work on a thread of its own, since it takes longer in one piece than the windows may wait;
// meanwhile `turn` is called here again and again, with `between` in between, and lets them have their turns.
// Nobody holds a person's doing back, as LongWait does: that is up to `turn`.
//
// Comes back when the work is done. False where `turn` has said so: it is called no more from then on, and
// the work goes to its end all the same. Throws what the work throws, and what `turn` throws once the work is
// done.
bool workAside(const std::function<void()>& work, const std::function<bool()>& turn,
               std::chrono::milliseconds between);

}  // namespace platform
