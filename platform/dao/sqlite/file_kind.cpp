#include "platform/dao/sqlite/file_kind.h"

#include <filesystem>

#include "platform/dao/sqlite/maintenance.h"

namespace dao {
namespace {

class FileKind final : public StoreKind {
 public:
    bool owns(const std::string&) const override { return true; }
    PlacePtr examine(const std::string& path, const std::string& connect, bool remembered) const override {
        return maintenance::examine(path, connect, remembered);
    }

    std::shared_ptr<Presence> enterAt(const std::string& path) const override {
        std::error_code error;
        const std::filesystem::path found = std::filesystem::weakly_canonical(path, error);
        return LockFile::of(error ? path : found.string());
    }

    void create(const std::string& path, const std::string& connect) const override {
        maintenance::create(path, connect);
    }
    RepairReport repair(const std::string& path, const std::string& connect,
                        const std::string& copy) const override {
        return maintenance::repair(path, connect, copy);
    }
    void compact(const std::string& from, const std::string& to, const std::string& connect) const override {
        maintenance::compact(from, to, connect);
    }
    void copy(const std::string& from, const std::string& to, const CopyWatch& watch) const override {
        maintenance::copy(from, to, watch);
    }
    void remove(const std::string& path) const override { maintenance::remove(path); }
    void rename(const std::string& from, const std::string& to) const override {
        maintenance::rename(from, to);
    }
    void discard(const std::string& path) const noexcept override { maintenance::discard(path); }
};

}  // namespace

const StoreKind& fileKind() {
    static const FileKind kind;
    return kind;
}

}  // namespace dao
