// The crypto library's own derivation allocates for each round what it hashes in, and takes more than twice
// as long for it: every opening of a shop waits for nearly two hundred thousand rounds. Its plain functions
// take no memory and cannot fail.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "platform/dao/sqlite/pbkdf2.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>

#include <openssl/sha.h>

namespace dao {
namespace {

using Digest = std::array<unsigned char, SHA_DIGEST_LENGTH>;
using Pad = std::array<unsigned char, SHA_CBLOCK>;

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

Digest finished(SHA_CTX hash) {
    Digest digest;
    SHA1_Final(digest.data(), &hash);
    return digest;
}

// HMAC-SHA1 under one password, whose own two blocks are hashed once for all texts.
class Hmac {
 public:
    explicit Hmac(std::string_view password) {
        Pad key{};
        if (password.size() > key.size()) {
            SHA1(bytesOf(password), password.size(), key.data());
        } else {
            std::ranges::copy(password, key.begin());
        }
        inner_ = begun(key, 0x36);
        outer_ = begun(key, 0x5C);
    }

    Digest of(const unsigned char* text, std::size_t size) const {
        SHA_CTX inner = inner_;
        SHA1_Update(&inner, text, size);
        const Digest digest = finished(inner);
        SHA_CTX outer = outer_;
        SHA1_Update(&outer, digest.data(), digest.size());
        return finished(outer);
    }

 private:
    static SHA_CTX begun(Pad key, unsigned char mask) {
        for (unsigned char& byte : key) {
            byte ^= mask;
        }
        SHA_CTX hash;
        SHA1_Init(&hash);
        SHA1_Update(&hash, key.data(), key.size());
        return hash;
    }

    SHA_CTX inner_, outer_;
};

// Blocks count from 1.
Digest block(const Hmac& hmac, std::string_view salt, std::uint32_t number, int rounds) {
    std::string numbered(salt);
    for (int shift = 24; shift >= 0; shift -= 8) {
        numbered.push_back(static_cast<char>(number >> shift));
    }
    Digest round = hmac.of(bytesOf(numbered), numbered.size());
    Digest all = round;
    for (int i = 1; i < rounds; ++i) {
        round = hmac.of(round.data(), round.size());
        std::ranges::transform(all, round, all.begin(), std::bit_xor<unsigned char>());
    }
    return all;
}

}  // namespace

std::string pbkdf2(std::string_view password, std::string_view salt, int rounds, std::size_t size) {
    const Hmac hmac(password);
    std::string bytes;
    for (std::uint32_t number = 1; bytes.size() < size; ++number) {
        const Digest next = block(hmac, salt, number, rounds);
        bytes.append(next.begin(), next.end());
    }
    bytes.resize(size);
    return bytes;
}

}  // namespace dao
