#pragma once

#include <memory>
#include <string_view>

#include "platform/dao/recordset_kinds.h"

namespace dao {

class DatabaseImpl;
class RecordsetImpl;

// The rows behind a name or a SELECT, as Database::OpenRecordset takes them; they close with the database.
std::shared_ptr<RecordsetImpl> openRecords(const std::shared_ptr<DatabaseImpl>& database,
                                           std::string_view source, RecordsetType type);

}  // namespace dao
