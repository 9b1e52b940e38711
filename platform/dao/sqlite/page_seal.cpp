#include "platform/dao/sqlite/page_seal.h"

#include <algorithm>
#include <array>

#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/params.h>

#include "platform/dao/failure.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/hex.h"

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
constexpr PageNumber kLockPage = 0x40000000 / kPageSize + 1;

const unsigned char* bytes(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}
unsigned char* bytes(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

std::size_t contentStart(PageNumber number) {
    return number == 1 ? kSaltSize : 0;
}

std::string sealKey(const std::string& cipherKey, std::string salt) {
    for (char& c : salt) {
        c = static_cast<char>(static_cast<unsigned char>(c) ^ kSealSaltMask);
    }
    std::string key(kKeySize, '\0');
    PKCS5_PBKDF2_HMAC_SHA1(cipherKey.data(), kKeySize, bytes(salt), static_cast<int>(salt.size()),
                           kSealIterations, kKeySize, bytes(key));
    return key;
}

EVP_MAC_CTX* newSeal(const std::string& key) {
    EVP_MAC* const mac = EVP_MAC_fetch(nullptr, "HMAC", nullptr);
    EVP_MAC_CTX* const context = EVP_MAC_CTX_new(mac);
    EVP_MAC_free(mac);
    char digest[] = "SHA1";
    const OSSL_PARAM parameters[] = {OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, digest, 0),
                                     OSSL_PARAM_construct_end()};
    if (context == nullptr || EVP_MAC_init(context, bytes(key), key.size(), parameters) != 1) {
        EVP_MAC_CTX_free(context);
        fail(errInvalidOperation);
    }
    return context;
}

}  // namespace

PageSeal::PageSeal(const std::string& key) : seal_(nullptr, &EVP_MAC_CTX_free) {
    const std::string raw = fromHex(key);
    cipherKey_ = raw.substr(0, kKeySize);
    seal_.reset(newSeal(sealKey(cipherKey_, raw.substr(kKeySize))));
}

PageSeal::~PageSeal() = default;

bool PageSeal::isWhole(PageNumber number, std::string_view raw) const {
    const std::size_t start = contentStart(number);
    const std::string_view sealed = raw.substr(start, kContent - start + kVectorSize);
    std::array<unsigned char, 4> place{};
    for (std::size_t i = 0; i < place.size(); ++i) {
        place[i] = static_cast<unsigned char>(number >> (8 * i));
    }
    std::array<unsigned char, kSealSize> seal{};
    std::size_t size = 0;
    EVP_MAC_CTX* const context = seal_.get();
    return EVP_MAC_init(context, nullptr, 0, nullptr) == 1 &&
           EVP_MAC_update(context, bytes(sealed), sealed.size()) == 1 &&
           EVP_MAC_update(context, place.data(), place.size()) == 1 &&
           EVP_MAC_final(context, seal.data(), &size, seal.size()) == 1 &&
           std::equal(seal.begin(), seal.end(), bytes(raw) + kContent + kVectorSize);
}

std::string PageSeal::open(PageNumber number, std::string_view raw) const {
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

bool isEmptyPage(std::string_view raw) {
    return raw.find_first_not_of('\0') == std::string_view::npos;
}

bool isLockPage(PageNumber number) {
    return number == kLockPage;
}

}  // namespace dao::driver
