#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/dao/open_file.h"

namespace dao {

// What ends with the opening it was made on.
class Dependent {
 public:
    Dependent() = default;
    Dependent(const Dependent&) = delete;
    Dependent& operator=(const Dependent&) = delete;
    virtual ~Dependent() = default;
    virtual void Close() noexcept = 0;
};

// One opening of a file, as a window makes it.
class DatabaseImpl {
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

    void keep(const std::shared_ptr<Dependent>& dependent);  // closes with this opening
    std::int64_t recordsAffected = 0;

 private:
    std::string name_;
    std::shared_ptr<OpenFile> file_;
    ExclusiveUse exclusive_;
    bool readOnly_;
    std::vector<std::weak_ptr<Dependent>> dependents_;
};

}  // namespace dao
