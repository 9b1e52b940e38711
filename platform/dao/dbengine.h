#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dao {

class Database;
struct ErrorEntry;
struct RepairReport;

enum IdleOption { dbRefreshCache = 8 };

class Workspace {
 public:
    Database OpenDatabase(const std::string& path, bool exclusive = false, bool readOnly = false,
                          const std::string& connect = {});
    void BeginTrans();
    void CommitTrans();
    void Rollback();
};

// The engine. One for a process, as the file is one for all its windows.
// Paths are UTF-8. A connect text is ";pwd=" and the password, the key in any case; empty: no password given.
class DBEngine {
 public:
    static Workspace& Workspaces(int index);  // 0 is the only one: 3265 otherwise

    // Errors: 3024 no such file, 3044 a directory, 3343 no database of this engine, 3031 wrong or missing
    // password (a file that this process has open with the right one is let in without), 3049 the engine's
    // own but damaged, 3045 exclusive wanted and another process has it, 3356 another process has it
    // exclusively, 3050 its folder takes no lock file, 3027 the file is read-only and `readOnly` is false,
    // 3811 it was written by a newer version of the program.
    static Database OpenDatabase(const std::string& path, bool exclusive = false, bool readOnly = false,
                                 const std::string& connect = {});
    // A new empty file, for its user alone. 3012 if there is one already.
    static Database CreateDatabase(const std::string& path, const std::string& connect);

    // Checks every page; if something is broken all rows that can still be read go into a fresh file, which
    // takes the old one's place only when it is whole. Needs the file for this process alone: 3045. Uses the
    // password that this process last opened the file with, or, failing that, the one given; 3031 with
    // neither.
    // Before the fresh file takes its place the hurt one is kept beside it (NAME.damaged.mdb), at most one.
    // Where the first bytes are gone, without which no password opens the file, `copy` may tell them: an
    // earlier copy of it, as a backup is; or this workstation's notes.
    static void RepairDatabase(const std::string& path, const std::string& connect = {},
                               const std::string& copy = {});
    static const RepairReport& LastRepair();
    // Writes a fresh, dense copy, same password. 3045 while another process has the source open, 3012 if the
    // target exists. `connect` as for OpenDatabase; empty: the password this process last opened it with.
    static void CompactDatabase(const std::string& from, const std::string& to,
                                const std::string& connect = {});
    // A consistent copy of the file, byte for byte, also while other processes write to it: writers wait.
    // Each page that is copied is checked, and the copy once more before it takes its place: 3049 where one
    // is damaged, and then the next opening of that file checks all of it, until it is repaired. What is no
    // database, or one whose password this process never had, is copied as it lies. The target is written
    // beside and renamed, so it is whole or absent; an existing target is replaced only then, behind whatever
    // link leads to it, and the copy takes over its rights; a new one has those of its source. This process's
    // own windows on the target find the copy; 3045 while one of them is in the middle of an Edit. 3044 for a
    // target that is a link to nothing. From a server into a file, a consistent copy is made while others go
    // on working, enciphered with the password that the shop was last opened with; from a file to a server (a
    // signpost at `to`) the whole shop there is set back to what the file holds, in one transaction, which
    // needs the server alone: 3045.
    static void CopyDatabase(const std::string& from, const std::string& to);

    // Whether a signpost stands there, and the records are on a server: its keepers look after them, and
    // repair and compaction leave them in their place.
    static bool IsOnServer(const std::string& path);

    // Takes a database file away, or gives it another name in the place of whatever stands there, together
    // with the journal that a crash may have left beside it: a journal must never meet a file it was not
    // written for. 3024 if there is no such file, 3045 while another process has either of them open.
    static void DeleteDatabase(const std::string& path);
    static void RenameDatabase(const std::string& from, const std::string& to);

    // Takes away a copy that nobody needs and nobody has open, with its journal, whatever comes of it.
    static void DiscardDatabase(const std::string& path) noexcept;

    static void Idle(int option = 0);  // dbRefreshCache: the next read asks the file again
    static void BeginTrans() { Workspaces(0).BeginTrans(); }
    static void CommitTrans() { Workspaces(0).CommitTrans(); }
    static void Rollback() { Workspaces(0).Rollback(); }

    static const std::vector<ErrorEntry>& Errors();  // of the last failing operation

    // The highest form (Database::Form) that the program knows: a file of a higher one is refused on every
    // road, opening, repair and compaction: 3811. At the start every form is known.
    static void setKnownForm(int form);

    // A file of this workstation's own, made when there is something to note in it: see RepairDatabase.
    // Empty, as at the start: nothing is noted.
    static void setNotesFile(const std::string& path);

    // How long Edit, Update and the like wait for another workstation's lock. Milliseconds; 10,000 at the
    // start.
    static void setLockTimeout(int milliseconds);
};

}  // namespace dao
