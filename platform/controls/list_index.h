#pragma once

#include "platform/system/trap.h"

namespace platform {

// The place, from 0, of the row or column `index`, which counts from 1 among `count` of them. Throws RunError
// 35600 where there is none.
inline int checkedIndex(int index, int count) {
    if (index < 1 || index > count) {
        throw RunError(35600, QStringLiteral("Index out of bounds"));
    }
    return index - 1;
}

}  // namespace platform
