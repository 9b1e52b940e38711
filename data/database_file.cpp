#include "data/database_file.h"

#include <filesystem>

#include "common/modMain.h"
#include "platform/dao/companion_files.h"
#include "platform/system/files.h"

namespace data {
namespace {

std::string withoutLinks(const QString& path) {
    std::error_code error;
    const std::filesystem::path found = std::filesystem::weakly_canonical(path.toStdString(), error);
    return error ? path.toStdString() : found.string();
}

}  // namespace

SoleUse::SoleUse(const QString& path) : use_(dao::LockFile::of(withoutLinks(path))) {}

void removeDatabaseFiles(const QString& path) {
    TryKillFile(path);
    TryKillFile(QString::fromStdString(dao::journalOf(path.toStdString())));
}

}  // namespace data
