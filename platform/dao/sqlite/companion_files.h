#pragma once

#include <string>

// What may lie beside a database file, by name. Earlier releases look for the same names on the same share: a
// name that changes lets two workstations into one file that should keep each other out.
namespace dao {

std::string journalOf(const std::string& database);      // of a change under way, or crossed out
std::string lockFileOf(const std::string& database);     // who is in
std::string numbersFileOf(const std::string& database);  // who holds which number
// The file itself, once its shop has moved to a server and a signpost stands in its place.
std::string beforeServerOf(const std::string& database);
// A file that this process is writing and that will take the database's place.
std::string unfinishedOf(const std::string& database);

}  // namespace dao
