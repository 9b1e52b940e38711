#pragma once

#include <QString>
#include <memory>

#include "platform/dao/lock_file.h"

// Taking a database file away. A database is more than its one file: beside it may lie a journal of
// unfinished work, and one left behind would be rolled into whatever file next bears that name.
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

}  // namespace data
