#pragma once

#include <QList>
#include <QString>
#include <utility>

class QWidget;

// The routines and variables that every window uses.

// Program-wide variables, set by Main before any window opens.
extern float KursKupovni;  // dinars for one euro
extern bool CeneDinarske;  // prices are shown in dinars
extern bool AskBeforeDelete;
extern bool MakeProperCase;
extern bool ShowTipsAtStartup;
extern bool ShowTipsAtRandom;

// A text of the string table; an unknown number gives the empty text.
QString LoadResString(int id);
// The text with each placeholder replaced by its value, one occurrence after the other, always searching from
// the start. A value that holds its own placeholder goes in once and stays as it is.
QString GetResString(int id, const QList<std::pair<QString, QString>>& pairs = {});
QString GetDAOErrors();  // "[number] description", one line an error, no break behind the last
// 14: the decimal separator, 15: the thousands separator (empty where there is none); anything else: empty
QString GetLocaleValue(int field);
// Modes: 0 all capitals, 1 all small, 2 a capital first, 3 each word, 4 each sentence; any other: empty.
QString ConvertCase(const QString& text, int mode);
// A number written under any decimal separator: the first character that is no digit counts as one. 0 for
// anything that is no number then.
float LocaleSingle(const QString& text);
// The stored rate under any decimal separator; writes it back with that of this machine. Throws
// platform::RunError 13 where it is no number, 6 where it is too large.
float ReadKursKupovni();
QString FileNameOf(const QString& path);
void TryKillFile(const QString& path);
bool LaunchAssociated(QWidget* owner, const QString& target);
bool CheckHelpFile();
void SetTopMost(QWidget* window, bool flag);

// Scrambled: ScrambleChars(ScrambleOrder(plain, false)); plain again: ScrambleOrder(ScrambleChars(scrambled),
// true).
QString ScrambleOrder(const QString& text, bool flag);
QString ScrambleChars(const QString& text);

// The places of windows, as the settings hold them: left and top edge in twips with a semicolon between. A
// text that is no place, or a place on no screen of today, leaves the window where it is.
void moveToPlace(QWidget* window, const QString& place);
QString placeOf(const QWidget* window);
// The same with the size: left, top, width and height. With fewer than four figures the size is 12000 by
// 8000 twips. A window is never made larger than the screen.
void moveToPlaceAndSize(QWidget* window, const QString& frame);
QString placeAndSizeOf(const QWidget* window);

// The help viewer's commands. The viewer itself is a window (shell/frmHelp); it puts itself in here, so that
// every window can ask for a topic without knowing it.
enum HelpCommand { HELP_CONTEXT = 1, HELP_QUIT = 2, HELP_FINDER = 15, HELP_KEY = 261 };
using HelpViewer = bool (*)(const QString& file, HelpCommand command, int context);
void setHelpViewer(HelpViewer viewer);
bool WinHelp(const QString& file, HelpCommand command, int context = 0);
QString helpFile();  // the path that CheckHelpFile settled
// CheckHelpFile and, where it found the file, the topic of a window or control.
void showHelp(int context);
void showHelpContents();
