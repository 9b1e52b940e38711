#pragma once

#include <memory>
#include <string>

#include "platform/dao/copy_watch.h"
#include "platform/dao/repair_report.h"
#include "platform/dao/sqlite/file_place.h"

// What is done to a database file as a whole: the functions of StoreKind, for files.
namespace dao::maintenance {

std::shared_ptr<const FilePlace> examine(const std::string& path, const std::string& connect,
                                         bool remembered);
void create(const std::string& path, const std::string& connect);
RepairReport repair(const std::string& path, const std::string& connect, const std::string& copy);
void compact(const std::string& from, const std::string& to, const std::string& connect);
void copy(const std::string& from, const std::string& to, const CopyWatch& watch);
void remove(const std::string& path);
void rename(const std::string& from, const std::string& to);
void discard(const std::string& path) noexcept;

}  // namespace dao::maintenance
