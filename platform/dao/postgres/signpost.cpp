#include "platform/dao/postgres/signpost.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/dao/failure.h"

namespace dao::postgres {
namespace {

constexpr std::string_view kMark = "Tarvello server ";
constexpr std::string_view kVersion = "1";
// Nobody writes so long a one by hand: it is some other file.
constexpr std::size_t kLongest = 4096;

// A descriptor that is closed with its scope.
class File {
 public:
    explicit File(int descriptor) : descriptor_(descriptor) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    int number() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }

 private:
    int descriptor_;
};

[[noreturn]] void failWithSystemError(int code, const std::string& path) {
    const std::string reason = path + ": " + std::strerror(code) + ".";
    switch (code) {
        case ENOENT:
        case ENOTDIR:
            fail(errFileNotFound);
        case EACCES:
        case EPERM:
            fail(errNoPermission);
        case ENOSPC:
        case EDQUOT:
            fail(errNotEnoughSpace);
        case EROFS:
            fail(errReadOnly);
        default:
            fail(errDiskIo, "Disk or network error: " + reason);
    }
}

// At most `most` bytes of it; nothing, and errno, where it cannot be read.
std::optional<std::string> startOf(const std::string& path, std::size_t most) {
    // A pipe or a device of that name must not be waited for.
    const File file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen()) {
        return {};
    }
    std::string text(most, '\0');
    std::size_t length = 0;
    while (length < most) {
        const ssize_t got = ::read(file.number(), text.data() + length, most - length);
        if (got < 0 && errno != EINTR) {
            return {};
        }
        if (got == 0) {
            break;
        }
        length += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    text.resize(length);
    return text;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kSpaces = " \t\r";
    const std::size_t begin = text.find_first_not_of(kSpaces);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(kSpaces) - begin + 1);
}

std::string_view takeLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return trimmed(line);
}

[[noreturn]] void refuseLine(const std::string& path, int number, const std::string& fault) {
    fail(errUnrecognisedFormat, "Line " + std::to_string(number) + " of " + path + ": " + fault + ".");
}

void proveHead(std::string_view line, const std::string& path) {
    if (!line.starts_with(kMark)) {
        fail(errUnrecognisedFormat);
    }
    if (line.substr(kMark.size()) != kVersion) {
        fail(errNewerForm, path + " was written for a newer version of the program.");
    }
}

// Both parts of "key = value".
std::pair<std::string_view, std::string_view> partsOf(std::string_view line, const std::string& path,
                                                      int number) {
    const std::size_t sign = line.find('=');
    if (sign == std::string_view::npos) {
        refuseLine(path, number, "there is no '=' in it");
    }
    return {trimmed(line.substr(0, sign)), trimmed(line.substr(sign + 1))};
}

void takeKeyword(Address& place, std::string_view line, const std::string& path, int number) {
    const auto [keyword, value] = partsOf(line, path, number);
    if (const std::string fault = keywordFault(keyword); !fault.empty()) {
        refuseLine(path, number, fault);
    }
    for (const PlaceKeyword& each : kPlaceKeywords) {
        if (each.keyword == keyword) {
            if (!(place.*each.value).empty()) {
                refuseLine(path, number, "'" + std::string(keyword) + "' stands there for the second time");
            }
            place.*each.value = value;
        }
    }
}

std::string written(const Address& place) {
    std::string text = std::string(kMark) + std::string(kVersion) + "\n";
    for (const PlaceKeyword& each : kPlaceKeywords) {
        const std::string& value = place.*each.value;
        const bool plain = std::none_of(value.begin(), value.end(),
                                        [](unsigned char letter) { return letter < ' ' || letter == 127; });
        if (!plain || trimmed(value) != value) {
            fail(errInvalidOperation,
                 "The " + std::string(each.keyword) + " of a server can't be written: '" + value + "'.");
        }
        if (!value.empty()) {
            text += std::string(each.keyword) + " = " + value + "\n";
        }
    }
    return text;
}

bool writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t done = ::write(file, text.data(), text.size());
        if (done < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(done > 0 ? static_cast<std::size_t>(done) : 0);
    }
    return true;
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// The name is as lasting as the file only once the folder is on disk too.
void syncFolderOf(const std::string& path) {
    const File folder(::open(folderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        ::fsync(folder.number());
    }
}

// Everybody who may read the old one may read the new one; a new one is for everybody, as the shop's folder
// is.
mode_t rightsFor(const std::string& path) {
    struct stat old {};
    return ::stat(path.c_str(), &old) == 0 ? old.st_mode & 07777 : 0644;
}

// A database is never as small as a signpost, and must not be looked into here: where this process has it
// open, closing another handle on it would let go of every lock that the process has there.
constexpr off_t kSmallestDatabase = kLongest;

}  // namespace

bool isSignpost(const std::string& path) {
    struct stat found {};
    return stat(path.c_str(), &found) == 0 && found.st_size < kSmallestDatabase &&
           startOf(path, kMark.size()) == kMark;
}

Address readSignpost(const std::string& path) {
    const std::optional<std::string> text = startOf(path, kLongest);
    if (!text.has_value()) {
        failWithSystemError(errno, path);
    }
    if (text->size() == kLongest) {
        fail(errUnrecognisedFormat);
    }
    std::string_view rest = *text;
    proveHead(takeLine(rest), path);
    Address place;
    for (int number = 2; !rest.empty(); ++number) {
        const std::string_view line = takeLine(rest);
        if (!line.empty() && line.front() != '#') {
            takeKeyword(place, line, path, number);
        }
    }
    if (const std::string fault = placeFault(place); !fault.empty()) {
        fail(errUnrecognisedFormat, path + ": " + fault + ".");
    }
    return place;
}

void writeSignpost(const std::string& path, const Address& place) {
    if (const std::string fault = placeFault(place); !fault.empty()) {
        fail(errInvalidOperation, "The place of a server can't be written: " + fault + ".");
    }
    const std::string text = written(place);
    const mode_t rights = rightsFor(path);
    std::string beside = path + ".XXXXXX";
    const File file(::mkostemp(beside.data(), O_CLOEXEC));
    const bool done = file.isOpen() && ::fchmod(file.number(), rights) == 0 &&
                      writeAll(file.number(), text) && ::fsync(file.number()) == 0 &&
                      ::rename(beside.c_str(), path.c_str()) == 0;
    if (!done) {
        const int code = errno;
        if (file.isOpen()) {
            ::unlink(beside.c_str());
        }
        failWithSystemError(code, path);
    }
    syncFolderOf(path);
}

}  // namespace dao::postgres
