#include "platform/dao/filling.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/server_kind.h"
#include "platform/dao/postgres/shop_making.h"
#include "platform/dao/postgres/signpost.h"
#include "platform/dao/sqlite/companion_files.h"
#include "platform/dao/sqlite/file_kind.h"
#include "platform/dao/sqlite/file_paths.h"

namespace dao {

class Filling::Making {
 public:
    Making() = default;
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;
    virtual ~Making() = default;

    virtual driver::Store& store() = 0;
    virtual void appear() = 0;
    virtual void replace(const std::string& kept) = 0;
};

namespace {

[[noreturn]] void failTaken(const std::string& path) {
    fail(errObjectExists, "Database '" + path + "' already exists.");
}

// Some disks know of no second name for a file, and some of no renaming that spares what is there.
void giveName(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return;
    }
    if (errno == EEXIST) {
        failTaken(to);
    }
    if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
        return;
    }
    if (errno == EEXIST || fileExists(to)) {
        failTaken(to);
    }
    renameFile(from, to);
}

// The file at `path` under a second name, so that the first is never empty; a disk that knows of no second
// names has it moved. A try that was killed may have come as far as here. Whether the second name is a new
// one.
bool keepBeside(const std::string& path, const std::string& kept) {
    if (link(path.c_str(), kept.c_str()) == 0) {
        return true;
    }
    const int failure = errno;
    std::error_code unknown;
    if (std::filesystem::equivalent(path, kept, unknown)) {
        return false;
    }
    if (failure == EEXIST) {
        failTaken(kept);
    }
    giveName(path, kept);
    return true;
}

// For where the file that was kept is wanted in its place after all.
void putBack(const std::string& kept, const std::string& path) noexcept {
    if (fileExists(path)) {
        unlink(kept.c_str());
    } else {
        rename(kept.c_str(), path.c_str());
    }
}

}  // namespace

class Filling::FileMaking final : public Filling::Making {
 public:
    FileMaking(const std::string& target, const std::string& connect)
        : target_(targetFile(target)), fresh_(target_) {
        sweepUnfinished(target_);
        fileKind().create(fresh_.path(), connect);
        store_ = fileKind().examine(fresh_.path(), connect, false)->open();
        store_->transaction().beginWrite();
    }
    ~FileMaking() override { leave(); }

    driver::Store& store() override { return *store_; }

    void appear() override {
        leave();
        if (fileExists(target_)) {
            failTaken(target_);
        }
        forgetFormer();
        giveName(fresh_.path(), target_);
        syncFolderOf(target_);
    }

    void replace(const std::string& kept) override {
        leave();
        followRights(fresh_.path(), target_);
        const bool isNew = keepBeside(target_, kept);
        try {
            forgetFormer();
            renameFile(fresh_.path(), target_);
        } catch (...) {
            if (isNew) {
                putBack(kept, target_);
            }
            throw;
        }
    }

 private:
    // What may lie about of a former file of that name must never meet this one.
    void forgetFormer() const {
        removeFile(journalOf(target_));
        unlink(damageMarkOf(target_).c_str());
    }

    void leave() noexcept {
        if (store_ != nullptr) {
            store_->transaction().rollback();
            store_.reset();
        }
    }

    std::string target_;
    UnfinishedFile fresh_;
    std::unique_ptr<driver::Store> store_;
};

class Filling::ServerMaking final : public Filling::Making {
 public:
    explicit ServerMaking(const std::string& signpost) : shop_(postgres::readSignpost(signpost)) {
        shop_.store().transaction().beginWrite();
    }
    ~ServerMaking() override {
        shop_.store().transaction().rollback();
        if (!finished_) {
            shop_.giveUp();
        }
    }

    driver::Store& store() override { return shop_.store(); }

    void appear() override {
        shop_.store().transaction().rollback();
        shop_.finish();
        finished_ = true;
    }

    void replace(const std::string&) override { fail(errInvalidOperation); }

 private:
    postgres::NewShop shop_;
    bool finished_ = false;
};

Filling::Filling(const std::string& target, const std::string& connect) {
    if (serverKind().owns(target)) {
        making_ = std::make_unique<ServerMaking>(target);
    } else {
        making_ = std::make_unique<FileMaking>(target, connect);
    }
}

Filling::~Filling() = default;

driver::Store& Filling::store() {
    return making_->store();
}

void Filling::keep() {
    store().transaction().commit();
    store().transaction().beginRead();
}

void Filling::appear() {
    making_->appear();
}

void Filling::replace(const std::string& kept) {
    making_->replace(kept);
}

}  // namespace dao
