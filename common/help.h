#pragma once

#include <QString>

// The help viewer's commands. The viewer itself is a window (shell/frmHelp); it puts itself in here, so that
// every window can ask for a topic without knowing it.
enum HelpCommand { HELP_CONTEXT = 1, HELP_QUIT = 2, HELP_FINDER = 15, HELP_KEY = 261 };
using HelpViewer = bool (*)(const QString& file, HelpCommand command, int context);
void setHelpViewer(HelpViewer viewer);
bool WinHelp(const QString& file, HelpCommand command, int context = 0);
bool CheckHelpFile();
QString helpFile();  // the path that CheckHelpFile settled
// CheckHelpFile and, where it found the file, the topic of a window or control.
void showHelp(int context);
void showHelpContents();
