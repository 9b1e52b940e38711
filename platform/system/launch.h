#pragma once

#include <QString>
#include <functional>

namespace platform {

// Opens an address or a file with the associated program of the desktop. Above 32: success; else one of the
// values 0, 2 (file not found), 3 (path not found), 5 (denied), 31 (no program for it), ... that the program
// has a sentence for.
int shellExecute(const QString& target);
// The desktop's own panel for date and time, whichever is installed. False where there is none.
bool openDateTimePanel();

// Tests put their own in the place of the desktop, and read what was asked. An empty function restores it.
void setShellExecuteHook(std::function<int(const QString&)> hook);
void setDateTimePanelHook(std::function<bool()> hook);

}  // namespace platform
