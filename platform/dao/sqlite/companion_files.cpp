#include "platform/dao/sqlite/companion_files.h"

#include <charconv>

#include <unistd.h>

namespace dao {
namespace {

constexpr std::string_view kJournal = "-journal";
constexpr std::string_view kUnfinished = ".part";

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

std::string unfinishedBy(int process) {
    return std::string(kUnfinished) + std::to_string(process);
}

}  // namespace

std::string journalOf(const std::string& database) {
    return database + std::string(kJournal);
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

std::string damageMarkOf(const std::string& database) {
    return database + ".damaged";
}

std::string damagedOf(const std::string& database) {
    return std::string(database).insert(extensionAt(database), ".damaged");
}

std::string unfinishedOf(const std::string& database) {
    return database + unfinishedBy(getpid());
}

int writerOf(const std::string& database, std::string_view name) {
    const std::string_view path(database);
    const std::string_view base = path.substr(path.rfind('/') + 1);
    if (name.substr(0, base.size()) != base) {
        return 0;
    }
    name.remove_prefix(base.size());
    if (name.substr(0, kUnfinished.size()) != kUnfinished) {
        return 0;
    }
    name.remove_prefix(kUnfinished.size());
    int process = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    std::string_view rest = name.substr(static_cast<std::size_t>(end - name.data()));
    // A database that is filled under such a name is made under one more.
    if (const std::string again = unfinishedBy(process); rest.starts_with(again)) {
        rest.remove_prefix(again.size());
    }
    return error == std::errc() && (rest.empty() || rest == kJournal) ? process : 0;
}

}  // namespace dao
