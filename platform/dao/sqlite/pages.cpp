#include "platform/dao/sqlite/pages.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/dao/failure.h"
#include "platform/dao/sqlite/file_paths.h"

namespace dao::driver {
namespace {

// Layout of a page as the cipher writes it: enciphered content, then this reserve at the end.
constexpr std::size_t kReserve = 48;
constexpr std::size_t kVectorSize = 16;
constexpr std::size_t kSealSize = 20;
constexpr std::size_t kContent = kPageSize - kReserve;
constexpr std::size_t kSaltSize = 16;
constexpr std::size_t kKeySize = 32;
constexpr unsigned char kSealSaltMask = 0x3A;
constexpr int kSealIterations = 2;
constexpr std::string_view kFirstBytes{"SQLite format 3\0", 16};
constexpr std::size_t kCachedPages = 4096;
constexpr std::size_t kPageCountField = 28;

const unsigned char* bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}
unsigned char* bytes(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

std::string fromHex(std::string_view hex) {
    std::string out;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        out += static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16));
    }
    return out;
}

std::size_t contentStart(PageNumber number) {
    return number == 1 ? kSaltSize : 0;
}

}  // namespace

std::uint32_t bigEndian(std::string_view text, std::size_t at, int size) {
    std::uint32_t number = 0;
    for (int i = 0; i < size; ++i) {
        number = (number << 8) | static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
    }
    return number;
}

PageFile::PageFile(const std::string& path, const std::string& key)
    : fd_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (fd_ < 0) {
        failWithSystemError(errno);
    }
    const std::string raw = fromHex(key);
    cipherKey_ = raw.substr(0, kKeySize);
    std::string sealSalt = raw.substr(kKeySize);
    for (char& c : sealSalt) {
        c = static_cast<char>(static_cast<unsigned char>(c) ^ kSealSaltMask);
    }
    sealKey_.resize(kKeySize);
    PKCS5_PBKDF2_HMAC_SHA1(cipherKey_.data(), kKeySize, bytes(sealSalt), static_cast<int>(sealSalt.size()),
                           kSealIterations, kKeySize, bytes(sealKey_));
    struct stat found {};
    if (fstat(fd_, &found) == 0) {
        size_ = static_cast<PageNumber>(found.st_size / static_cast<off_t>(kPageSize));
    }
    expected_ = size_;
    const std::string_view first = page(1);
    if (!first.empty() && bigEndian(first, 24, 4) == bigEndian(first, 92, 4)) {
        expected_ = bigEndian(first, kPageCountField, 4);
    }
}

PageFile::~PageFile() {
    close(fd_);
}

bool PageFile::readRaw(PageNumber number, std::string& raw) const {
    if (number == 0 || number > size_) {
        return false;
    }
    raw.resize(kPageSize);
    const off_t at = static_cast<off_t>(number - 1) * static_cast<off_t>(kPageSize);
    return pread(fd_, raw.data(), kPageSize, at) == static_cast<ssize_t>(kPageSize);
}

bool PageFile::isSealed(PageNumber number, const std::string& raw) const {
    const std::size_t start = contentStart(number);
    std::string sealed = raw.substr(start, kContent - start + kVectorSize);
    for (int shift = 0; shift < 32; shift += 8) {
        sealed += static_cast<char>(number >> shift);
    }
    std::string seal(EVP_MAX_MD_SIZE, '\0');
    unsigned size = 0;
    HMAC(EVP_sha1(), sealKey_.data(), kKeySize, bytes(sealed), sealed.size(), bytes(seal), &size);
    return raw.compare(kContent + kVectorSize, kSealSize, seal, 0, kSealSize) == 0;
}

std::string PageFile::decrypt(PageNumber number, const std::string& raw) const {
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  &EVP_CIPHER_CTX_free);
    const std::size_t start = contentStart(number);
    std::string plain(kContent - start, '\0');
    int size = 0;
    if (EVP_DecryptInit_ex(context.get(), EVP_aes_256_cbc(), nullptr, bytes(cipherKey_),
                           bytes(raw) + kContent) != 1 ||
        EVP_CIPHER_CTX_set_padding(context.get(), 0) != 1 ||
        EVP_DecryptUpdate(context.get(), bytes(plain), &size, bytes(raw) + start,
                          static_cast<int>(plain.size())) != 1) {
        return {};
    }
    return number == 1 ? std::string(kFirstBytes) + plain : plain;
}

PageFile::State PageFile::state(PageNumber number) {
    std::string raw;
    if (!readRaw(number, raw)) {
        return State::Missing;
    }
    if (std::all_of(raw.begin(), raw.end(), [](char c) { return c == 0; })) {
        return State::Empty;
    }
    return isSealed(number, raw) ? State::Whole : State::Broken;
}

std::string_view PageFile::page(PageNumber number) {
    const auto known = cache_.find(number);
    if (known != cache_.end()) {
        return known->second;
    }
    std::string raw;
    if (!readRaw(number, raw) || !isSealed(number, raw)) {
        return {};
    }
    if (cache_.size() >= kCachedPages) {
        cache_.clear();
    }
    return cache_[number] = decrypt(number, raw);
}

}  // namespace dao::driver
