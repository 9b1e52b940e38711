#include "platform/dao/sqlite/companion_files.h"

#include <unistd.h>

namespace dao {
namespace {

std::string withExtension(const std::string& database, const char* extension) {
    const std::size_t slash = database.rfind('/');
    const std::size_t dot = database.rfind('.');
    const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash + 1);
    return (hasExtension ? database.substr(0, dot) : database) + extension;
}

}  // namespace

std::string journalOf(const std::string& database) {
    return database + "-journal";
}

std::string lockFileOf(const std::string& database) {
    return withExtension(database, ".ldb");
}

std::string numbersFileOf(const std::string& database) {
    return withExtension(database, ".numbers");
}

std::string unfinishedOf(const std::string& database) {
    return database + ".part" + std::to_string(getpid());
}

}  // namespace dao
