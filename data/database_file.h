#pragma once

#include <QString>
#include <memory>

#include "platform/dao/lock_file.h"

// Taking a database file away and putting another in its place. A database is more than its one file: beside
// it may lie a journal of unfinished work, and one left behind would be rolled into whatever file next bears
// that name.
namespace data {

// While it lives no other process can open the database of that path. Throws dao::Error 3045 while one has it
// open, 3050 where its folder takes no lock file. The file itself need not be there.
class SoleUse {
 public:
    explicit SoleUse(const QString& path);

 private:
    dao::ExclusiveUse use_;
};

// Deletes file and journal, whatever comes of it.
void removeDatabaseFiles(const QString& path);
// Deletes `path`, of which `saved` is a copy, and puts the journal beside the copy. A `path` that is not
// there, and a copy that is not, are no failures.
void setDatabaseAside(const QString& path, const QString& saved);
// Renames file and journal, also onto another disk or server. Throws platform::RunError where the file cannot
// be renamed (58: `to` exists).
void renameDatabaseFiles(const QString& from, const QString& to);

}  // namespace data
