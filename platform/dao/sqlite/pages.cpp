#include "platform/dao/sqlite/pages.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/sqlite/file_paths.h"

namespace dao::driver {
namespace {

constexpr std::size_t kCachedPages = 4096;
constexpr std::size_t kPageCountField = 28;
constexpr std::size_t kChangesField = 24;
constexpr std::size_t kCountedAtField = 92;

class ClosedFile final : public PageSource {
 public:
    explicit ClosedFile(const std::string& path) : fd_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (fd_ < 0) {
            failWithSystemError(errno);
        }
    }
    ~ClosedFile() override { close(fd_); }
    std::int64_t bytes() const override {
        struct stat found {};
        return fstat(fd_, &found) == 0 ? found.st_size : 0;
    }
    bool read(PageNumber number, std::string& raw) override {
        raw.resize(kPageSize);
        return pread(fd_, raw.data(), kPageSize, placeOf(number)) == static_cast<ssize_t>(kPageSize);
    }

 private:
    int fd_;
};

}  // namespace

std::int64_t placeOf(PageNumber number) {
    return static_cast<std::int64_t>(number - 1) * static_cast<std::int64_t>(kPageSize);
}

std::unique_ptr<PageSource> pagesOfClosed(const std::string& path) {
    return std::make_unique<ClosedFile>(path);
}

std::uint32_t bigEndian(std::string_view text, std::size_t at, int size) {
    std::uint32_t number = 0;
    for (int i = 0; i < size; ++i) {
        number = (number << 8) | static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
    }
    return number;
}

PageFile::PageFile(std::unique_ptr<PageSource> source, const std::string& key)
    : source_(std::move(source)),
      seal_(key),
      size_(static_cast<PageNumber>(source_->bytes() / static_cast<std::int64_t>(kPageSize))) {
    expected_ = size_;
    const std::string_view first = page(1);
    if (!first.empty() && bigEndian(first, kChangesField, 4) == bigEndian(first, kCountedAtField, 4)) {
        expected_ = bigEndian(first, kPageCountField, 4);
    }
}

PageFile::~PageFile() = default;

bool PageFile::isWhole(PageNumber number) {
    needGoingOn();
    return number != 0 && number <= size_ &&
           (isLockPage(number) || (source_->read(number, raw_) && seal_.isWhole(number, raw_)));
}

bool PageFile::isAllWhole() {
    for (PageNumber number = 1; number <= expected_; ++number) {
        if (!isWhole(number)) {
            return false;
        }
    }
    return true;
}

std::string_view PageFile::page(PageNumber number) {
    const auto known = cache_.find(number);
    if (known != cache_.end()) {
        return known->second;
    }
    if (isLockPage(number) || !isWhole(number)) {
        return {};
    }
    if (cache_.size() >= kCachedPages) {
        cache_.clear();
    }
    return cache_[number] = seal_.open(number, raw_);
}

}  // namespace dao::driver
