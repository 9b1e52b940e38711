#pragma once

#include "platform/system/trap.h"

// What is thrown where a name is asked for that no element of a report has, or given that one has already.
namespace report {

inline platform::RunError elementNotFound(const QString& name) {
    return platform::RunError(35601, QStringLiteral("Element not found: %1").arg(name));
}

inline platform::RunError elementNotUnique(const QString& name) {
    return platform::RunError(457,
                              QStringLiteral("This name belongs to another element already: %1").arg(name));
}

}  // namespace report
