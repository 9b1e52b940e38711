#include "platform/dao/sqlite/companion_files.h"

#include <unistd.h>

namespace dao {
namespace {

// Where the extension begins; the end where there is none.
std::size_t extensionAt(const std::string& database) {
    const std::size_t slash = database.rfind('/');
    const std::size_t dot = database.rfind('.');
    const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash + 1);
    return hasExtension ? dot : database.size();
}

std::string withExtension(const std::string& database, const char* extension) {
    return database.substr(0, extensionAt(database)) + extension;
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

std::string beforeServerOf(const std::string& database) {
    return std::string(database).insert(extensionAt(database), ".before-server");
}

std::string unfinishedOf(const std::string& database) {
    return database + ".part" + std::to_string(getpid());
}

}  // namespace dao
