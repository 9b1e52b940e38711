#pragma once

#include <memory>
#include <string>

#include "platform/dao/place.h"
#include "platform/dao/sqlite/lock_file.h"
#include "platform/dao/sqlite/password.h"
#include "platform/dao/sqlite/store.h"

namespace dao {

// An encrypted file, and what it takes to get into it.
class FilePlace final : public Place {
 public:
    // `path`: without links. The password is right for the salt.
    FilePlace(std::string path, std::string password, const Salt& salt)
        : path_(std::move(path)), password_(std::move(password)), salt_(salt) {}

    const std::string& path() const override { return path_; }
    std::string identity() const override;
    PlacePtr again() const override;
    void needWritable() const override;
    std::shared_ptr<Presence> enter(bool reading) const override;
    std::shared_ptr<Numbers> numbers() const override;
    std::unique_ptr<driver::Store> open() const override;
    void prove(driver::Store& store) const override;
    void sweep() const noexcept override;
    void tidy() const noexcept override;

    const std::string& password() const { return password_; }
    const Salt& salt() const { return salt_; }
    driver::OpenRequest request(bool writable) const;
    std::unique_ptr<driver::SqliteStore> open(bool writable) const;

 private:
    std::string path_;
    std::string password_;
    Salt salt_;
};

// The same for every path that leads to the file; empty where there is none.
std::string fileIdentity(const std::string& path);
// The salt of the file at that path, which is there and without links; of one that this process has open
// without a look into the file. 3343 for a file that is not ours.
Salt saltOf(const std::string& path);
// Nothing where the folder takes no lock file and nothing is to be written: 3050 otherwise.
std::shared_ptr<LockFile> lockFor(const std::string& path, bool reading);

}  // namespace dao
