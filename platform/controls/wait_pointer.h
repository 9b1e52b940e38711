#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace platform {

// The wait pointer, for as long as the object lives.
class WaitPointer {
 public:
    WaitPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitPointer() { QGuiApplication::restoreOverrideCursor(); }
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
};

}  // namespace platform
