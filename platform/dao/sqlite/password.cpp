#include "platform/dao/sqlite/password.h"

#include <algorithm>
#include <map>
#include <utility>

#include <nettle/pbkdf2.h>
#include <openssl/rand.h>
#include <openssl/sha.h>

#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/dao/sqlite/hex.h"

namespace dao {
namespace {

constexpr int kIterations = 64000;
constexpr std::size_t kRandomSize = 8;
constexpr std::size_t kMarkedSize = 12;
constexpr std::string_view kMark = "engine file, form 1";

using Bytes = std::string;

// Every opening of a shop waits for this: the other crypto library at hand takes memory for each of nearly
// two hundred thousand rounds, and twice as long.
Bytes derive(const std::string& password, const unsigned char* salt, std::size_t saltSize, std::size_t size) {
    Bytes out(size, '\0');
    pbkdf2_hmac_sha1(password.size(), reinterpret_cast<const std::uint8_t*>(password.data()), kIterations,
                     saltSize, salt, size, reinterpret_cast<std::uint8_t*>(out.data()));
    return out;
}

void mark(Salt& salt) {
    Bytes text(salt.begin(), salt.begin() + kRandomSize);
    text += kMark;
    std::array<unsigned char, SHA256_DIGEST_LENGTH> digest{};
    SHA256(reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest.data());
    std::copy_n(digest.begin(), kMarkedSize - kRandomSize, salt.begin() + kRandomSize);
}

struct Derived {
    bool right = false;
    std::string key;
};

std::map<std::pair<std::string, Salt>, Derived>& derivedKeys() {
    static std::map<std::pair<std::string, Salt>, Derived> keys;
    return keys;
}

std::map<Salt, std::string>& rightPasswords() {
    static std::map<Salt, std::string> passwords;
    return passwords;
}

Derived deriveBoth(const std::string& password, const Salt& salt) {
    const Bytes check = derive(password, salt.data(), kMarkedSize, salt.size() - kMarkedSize);
    if (!std::equal(check.begin(), check.end(), salt.begin() + kMarkedSize,
                    [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; })) {
        return {};
    }
    return {true,
            toHex(derive(password, salt.data(), salt.size(), 32)) + toHex(Bytes(salt.begin(), salt.end()))};
}

const Derived& derived(const std::string& password, const Salt& salt) {
    const std::pair<std::string, Salt> asked{password, salt};
    auto found = derivedKeys().find(asked);
    if (found == derivedKeys().end()) {  // what cannot be derived this time is not taken for a wrong password
        found = derivedKeys().emplace(asked, deriveBoth(password, salt)).first;
    }
    if (found->second.right) {
        rightPasswords()[salt] = password;
    }
    return found->second;
}

}  // namespace

Salt newSalt(const std::string& password) {
    Salt salt{};
    if (RAND_bytes(salt.data(), kRandomSize) != 1) {
        fail(errInvalidOperation);
    }
    mark(salt);
    const Bytes check = derive(password, salt.data(), kMarkedSize, salt.size() - kMarkedSize);
    std::copy(check.begin(), check.end(), salt.begin() + kMarkedSize);
    return salt;
}

bool hasOurMark(const Salt& salt) {
    Salt expected = salt;
    mark(expected);
    return expected == salt;
}

bool isRightPassword(const std::string& password, const Salt& salt) {
    return derived(password, salt).right;
}

std::string rawKey(const std::string& password, const Salt& salt) {
    return derived(password, salt).key;
}

bool rememberedPassword(const Salt& salt, std::string& password) {
    const auto found = rightPasswords().find(salt);
    if (found == rightPasswords().end()) {
        return false;
    }
    password = found->second;
    return true;
}

bool passwordFrom(std::string_view connect, std::string& password) {
    constexpr std::string_view kKey = "pwd=";
    while (!connect.empty()) {
        const std::size_t end = std::min(connect.find(';'), connect.size());
        const std::string_view part = connect.substr(0, end);
        if (part.size() >= kKey.size() && sameName(part.substr(0, kKey.size()), kKey)) {
            password = part.substr(kKey.size());
            return true;
        }
        connect.remove_prefix(std::min(end + 1, connect.size()));
    }
    return false;
}

}  // namespace dao
