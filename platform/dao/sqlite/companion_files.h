#pragma once

#include <string>
#include <string_view>

// What may lie beside a database file, by name. Earlier releases look for the same names on the same share: a
// name that changes lets two workstations into one file that should keep each other out.
namespace dao {

std::string journalOf(const std::string& database);      // of a change under way, or crossed out
std::string lockFileOf(const std::string& database);     // who is in
std::string numbersFileOf(const std::string& database);  // who holds which number
// The file itself, once its shop has moved to a server and a signpost stands in its place.
std::string beforeServerOf(const std::string& database);
// Left by a copy that found the file damaged: whoever opens it next checks every page.
std::string damageMarkOf(const std::string& database);
// The hurt file itself, once a repair has put a fresh one in its place.
std::string damagedOf(const std::string& database);
// A file that this process is writing and that will take the database's place.
std::string unfinishedOf(const std::string& database);
// The process that was writing such a file, or its journal, by the name in its folder; 0: it is none of the
// database's.
int writerOf(const std::string& database, std::string_view name);

}  // namespace dao
