#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/dao/database.h"
#include "platform/dao/open_file.h"
#include "platform/dao/recordset.h"

namespace dao {

class RecordsetImpl;

// A table as the file has it, in the words of Database::TableDefs.
TableDef definitionOf(const sql::TableInfo& table);

// One opening of a file, as a window makes it.
class DatabaseImpl : public std::enable_shared_from_this<DatabaseImpl> {
 public:
    DatabaseImpl(std::string name, std::shared_ptr<OpenFile> file, bool readOnly, ExclusiveUse exclusive)
        : name_(std::move(name)),
          file_(std::move(file)),
          exclusive_(std::move(exclusive)),
          readOnly_(readOnly) {}
    ~DatabaseImpl() { close(); }
    DatabaseImpl(const DatabaseImpl&) = delete;
    DatabaseImpl& operator=(const DatabaseImpl&) = delete;

    const std::string& name() const { return name_; }
    bool isReadOnly() const { return readOnly_; }
    OpenFile& file() const;          // 3420 when closed
    OpenFile& writableFile() const;  // 3027 too
    void close() noexcept;

    std::shared_ptr<RecordsetImpl> openRecordset(std::string_view source, RecordsetType type);
    void keep(const std::shared_ptr<RecordsetImpl>& set);  // closes with this opening
    std::int64_t recordsAffected = 0;

 private:
    std::string name_;
    std::shared_ptr<OpenFile> file_;
    ExclusiveUse exclusive_;
    bool readOnly_;
    std::vector<std::weak_ptr<RecordsetImpl>> sets_;
};

}  // namespace dao
