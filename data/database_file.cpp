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

}  // namespace

SoleUse::SoleUse(const QString& path) : use_(dao::LockFile::of(withoutLinks(path))) {}

void removeDatabaseFiles(const QString& path) {
    TryKillFile(path);
    TryKillFile(journalOf(path));
}

}  // namespace data
