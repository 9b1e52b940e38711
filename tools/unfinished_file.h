#pragma once

#include <filesystem>
#include <string>
#include <system_error>

// A file in the making, beside the one whose place it takes when it is whole; gone again where that never
// comes.
class UnfinishedFile {
 public:
    explicit UnfinishedFile(const std::string& target) : target_(target), path_(target + ".new") { remove(); }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile() { remove(); }

    const std::string& path() const { return path_; }
    void finish() { std::filesystem::rename(path_, target_); }

 private:
    void remove() noexcept {
        std::error_code missing;
        std::filesystem::remove(path_, missing);
    }

    std::string target_;
    std::string path_;
};
