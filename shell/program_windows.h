#pragma once

#include "records/program_windows.h"

// Options, tips and the about window, for the main window. One for the whole program.
ProgramWindows& programWindows();
