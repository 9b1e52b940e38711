#pragma once

#include <functional>
#include <memory>

class frmMain;

// The program's start: help file, rate and preferences, a word where the records have just been copied out of
// a folder that cannot be written, the splash window, the database, the main window.
// Gives the main window on show, or nothing where the database or the window failed; the reason has been
// shown then. `prepare` is called with the main window before it builds itself; tests use it.
std::unique_ptr<frmMain> Main(const std::function<void(frmMain&)>& prepare = {});
