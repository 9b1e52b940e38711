#pragma once

#include <cstdint>
#include <string>

#include "platform/dao/sqlite/password.h"

struct stat;

// What the engine asks of the file system. Paths are UTF-8; every failure is the engine's error for it.
namespace dao {

inline constexpr std::size_t kPageSize = 4096;
// Bytes that a connection keeps of a file, all of a large shop's: a page once deciphered need not be
// deciphered again. A file that is larger still is gone through from end to end, and more room for it would
// not save a page.
inline constexpr std::int64_t kPageCache = std::int64_t{128} << 20;

// What the system tells of it; false where there is nothing. 3043 where the disk does not tell.
bool lookAt(const std::string& path, struct stat& found);
// The file's path without links. 3024 no such file, 3044 a directory or a folder that is not there.
std::string existingFile(const std::string& path);
// The same for a file that may not be there yet; its folder must. 3044 for a link to nothing as well.
std::string targetFile(const std::string& path);
// 3043 where the disk does not tell.
bool fileExists(const std::string& path);
bool mayWrite(const std::string& path);
bool folderMayWrite(const std::string& path);
// One that holds what is to be put back into the file. A finished change leaves a crossed-out one. 3027 or
// 3043 where it cannot be read.
bool hasJournal(const std::string& path);
void removeSpentJournal(const std::string& path) noexcept;
// 3026, 3027 or 3043 by the operating system's own number.
[[noreturn]] void failWithSystemError(int systemError);

// The first bytes of a file that this process does not have open: another handle on an open one would let go
// of its locks. 3343 for a file shorter than a page or without our mark.
Salt readSalt(const std::string& path);

// Whoever could use the one file can use the other: its rights, and its group where the system lets us give
// it; where not, the group gets none. Nothing happens where `like` is not there. For a file of this process's
// own.
void followRights(const std::string& path, const std::string& like) noexcept;

// Keeps what stands at `path` under the second name too, in the place of whatever stood there.
void keepUnder(const std::string& path, const std::string& kept);
// Takes away what processes that have died were writing for this database. Only for whoever has it alone.
void sweepUnfinished(const std::string& path) noexcept;

void syncFolderOf(const std::string& path);
void removeFile(const std::string& path);  // one that is not there is no error
// In the place of whatever stands there; both are on disk when it returns.
void renameFile(const std::string& from, const std::string& to);

// A file's name for the time until it is whole; gone if it never becomes so.
class UnfinishedFile {
 public:
    explicit UnfinishedFile(std::string target);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    const std::string& path() const { return path_; }
    // An empty file for its user alone.
    void make() const;
    // Onto disk and into its place, where the former file and its journal give way. It takes over the former
    // file's rights.
    void finish();

 private:
    std::string target_;
    std::string path_;
    bool finished_ = false;
};

}  // namespace dao
