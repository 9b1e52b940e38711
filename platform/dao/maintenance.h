#pragma once

#include <string>

#include "platform/dao/repair_report.h"

// What is done to a database file as a whole.
namespace dao::maintenance {

void createEmpty(const std::string& target, const std::string& password);
void repair(const std::string& path, const std::string& connect);
const RepairReport& lastRepair();
void compact(const std::string& from, const std::string& to, const std::string& connect);
void copy(const std::string& from, const std::string& to);
void remove(const std::string& path);
void rename(const std::string& from, const std::string& to);

}  // namespace dao::maintenance
