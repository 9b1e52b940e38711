#pragma once

namespace dao {

// For a program that was asked to end while it makes or reads a whole database: what goes through many rows
// or pages fails with errCancelled at its next block, and takes what is half made away with it, as after any
// failure. There is no way back: the process is about to end. Safe within a signal's handler.
void breakOff() noexcept;

// False after breakOff().
bool isGoingOn() noexcept;
// Throws errCancelled then.
void needGoingOn();

}  // namespace dao
