#pragma once

#include <QFileDevice>
#include <QString>

// Files, in the program's terms. Paths take "\" and the native separator alike.
namespace platform {

// What the program makes of the shop's records is its user's, unless somebody has made it otherwise: what
// stands there already keeps its rights.
inline constexpr QFileDevice::Permissions kForUserAlone = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

// Any existing file, hidden and read-only ones included; not a folder.
bool fileExists(const QString& path);
QString nativePath(const QString& path);  // every "\" becomes the native separator
// Throw RunError: 53 not found, 58 already exists, 61 disk full, 70 permission denied, 75 other.
void copyFile(const QString& from, const QString& to);    // replaces an existing target, whole or not at all
void renameFile(const QString& from, const QString& to);  // 58 if the target exists
void deleteFile(const QString& path);
// For its user alone, in folders made as they are everywhere; one that stands there is left as it is. What
// cannot be made is missed by whoever writes into it.
void makeOwnFolder(const QString& path);
// A text file for people, in UTF-8 with the platform's line ends; lines are parted by "\n" in `text`.
// Replaces what is there, whole or not at all.
void writeTextFile(const QString& path, const QString& text);

// The program's folder: that of the executable while its user may write there, otherwise the user's own data
// folder for Tarvello, seeded once from the delivered files beside the executable. Without a separator behind
// it.
QString programFolder();
// Whether finding it has copied records out of a folder that only looks as if work could go on there: whoever
// has started the program from it has to learn that the records there stay as they are.
bool recordsCopiedAside();
void setProgramFolder(const QString& folder, bool copiedAside = false);  // for tests; empty: found anew

struct ProgramFolder {
    QString path;
    bool recordsCopiedAside = false;
};
// The rule behind it: the first where a file can be made in it and no file "per-user" in it says otherwise
// (who installs the program may write there, and keeps no records there); else the second, seeded from the
// first. The help, which no user changes, is renewed where a newer program brings another one. An installed
// program's records are nobody's: copying those is not copying aside.
ProgramFolder chooseProgramFolder(const QString& executableFolder, const QString& ownFolder);

}  // namespace platform
