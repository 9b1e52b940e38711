#pragma once

// Prints the milliseconds from the start of this process to the usable main window, with what they were spent
// on. One start for a process.
int startUpMeasure();
