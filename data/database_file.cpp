#include "data/database_file.h"

#include <filesystem>

#include "platform/system/files.h"
#include "shell/modMain.h"

namespace data {
namespace {

QString journalOf(const QString& path) {
    return path + QStringLiteral("-journal");
}

std::string withoutLinks(const QString& path) {
    std::error_code error;
    const std::filesystem::path found = std::filesystem::weakly_canonical(path.toStdString(), error);
    return error ? path.toStdString() : found.string();
}

void moveJournal(const QString& from, const QString& to) {
    TryKillFile(journalOf(to));
    if (platform::fileExists(journalOf(from))) {
        platform::renameFile(journalOf(from), journalOf(to));
    }
}

}  // namespace

SoleUse::SoleUse(const QString& path) : use_(dao::LockFile::of(withoutLinks(path))) {}

void removeDatabaseFiles(const QString& path) {
    TryKillFile(path);
    TryKillFile(journalOf(path));
}

void setDatabaseAside(const QString& path, const QString& saved) {
    if (platform::fileExists(path)) {
        platform::deleteFile(path);
    }
    moveJournal(path, saved);
}

void renameDatabaseFiles(const QString& from, const QString& to) {
    platform::renameFile(from, to);
    moveJournal(from, to);
}

}  // namespace data
