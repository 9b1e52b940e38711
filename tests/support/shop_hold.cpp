#include "support/shop_hold.h"

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

#include "data/session.h"
#include "platform/dao/database.h"
#include "platform/dao/dbengine.h"
#include "platform/dao/postgres/connection.h"
#include "platform/dao/postgres/signpost.h"

namespace tests {

class ShopHold::Hold {
 public:
    Hold() = default;
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    virtual ~Hold() = default;
};

// Begins to write and does not end.
class ShopHold::FileHold : public Hold {
 public:
    explicit FileHold(const std::string& path)
        : file_(dao::DBEngine::OpenDatabase(path, false, false, connectText().toStdString())) {
        dao::DBEngine::BeginTrans();
        file_.Execute("UPDATE JM SET Naziv='x'");
    }
    ~FileHold() override { dao::DBEngine::Rollback(); }

 private:
    dao::Database file_;
};

// The bytes by which workstations meet in the file, taken as by one who writes his pages out.
class ShopHold::FileBytes : public Hold {
 public:
    explicit FileBytes(const std::string& path) : file_(::open(path.c_str(), O_RDWR)) {
        struct flock all = {};
        all.l_type = F_WRLCK;
        all.l_whence = SEEK_SET;
        all.l_start = 0x40000000;
        all.l_len = 512;
        if (file_ < 0 || fcntl(file_, F_SETLKW, &all) != 0) {
            throw std::runtime_error("no lock");
        }
    }
    ~FileBytes() override { ::close(file_); }

 private:
    int file_;
};

// All tables of the shop. No workstation does so in its work; a backup of the whole server or its repair may.
class ShopHold::ServerHold : public Hold {
 public:
    ServerHold(const std::string& path, Against against) : server_(dao::postgres::readSignpost(path)) {
        const std::string mode = against == Against::Writers ? "EXCLUSIVE" : "ACCESS EXCLUSIVE";
        server_.execute("BEGIN");
        server_.execute(
            "DO $$ DECLARE each record; BEGIN FOR each IN SELECT tablename FROM pg_tables WHERE schemaname"
            " = 'shop' LOOP EXECUTE format('LOCK TABLE shop.%I IN " +
            mode + " MODE', each.tablename); END LOOP; END $$");
    }

 private:
    dao::postgres::Connection server_;
};

ShopHold::ShopHold(const std::string& path, Against against) {
    if (dao::DBEngine::IsOnServer(path)) {
        hold_ = std::make_unique<ServerHold>(path, against);
    } else if (against == Against::Writers) {
        hold_ = std::make_unique<FileHold>(path);
    } else {
        hold_ = std::make_unique<FileBytes>(path);
    }
}

ShopHold::~ShopHold() = default;

}  // namespace tests
