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
void SetTopMost(QWidget* window, bool flag);
