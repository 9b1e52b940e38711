#pragma once

#include <string>

// What holds for every store that this process opens.
namespace dao::driver {

// How long a store waits for somebody else's lock. Milliseconds; 10,000 at the start.
void setLockTimeout(int milliseconds);
int lockTimeout();

// Records of a higher form are not opened: errNewerForm. Every form is known at the start.
void setKnownForm(int form);
int knownForm();

// Where this workstation notes what it takes to repair the files it works with; empty, as at the start:
// nowhere.
void setNotesFile(const std::string& path);
const std::string& notesFile();

}  // namespace dao::driver
