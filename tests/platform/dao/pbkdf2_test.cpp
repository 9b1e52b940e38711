#include "platform/dao/sqlite/pbkdf2.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

namespace {

std::string byTheLibrary(const std::string& password, const std::string& salt, int rounds, std::size_t size) {
    std::string out(size, '\0');
    EXPECT_EQ(PKCS5_PBKDF2_HMAC_SHA1(password.data(), static_cast<int>(password.size()),
                                     reinterpret_cast<const unsigned char*>(salt.data()),
                                     static_cast<int>(salt.size()), rounds, static_cast<int>(size),
                                     reinterpret_cast<unsigned char*>(out.data())),
              1);
    return out;
}

// The password's length on both sides of what one block of the hash holds, the result's on both sides of what
// one block of the derivation gives.
TEST(Pbkdf2Test, GivesWhatTheLibraryGives) {
    for (const std::size_t length : {0, 1, 7, 63, 64, 65, 200}) {
        const std::string password(length, '\xC5');
        for (const std::string& salt : {std::string(12, '\0'), std::string("sixteen bytes...")}) {
            for (const int rounds : {1, 2, 300}) {
                for (const std::size_t size : {1, 4, 19, 20, 21, 32, 40, 41}) {
                    EXPECT_EQ(dao::pbkdf2(password, salt, rounds, size),
                              byTheLibrary(password, salt, rounds, size))
                        << length << ' ' << salt.size() << ' ' << rounds << ' ' << size;
                }
            }
        }
    }
}

TEST(Pbkdf2Test, EveryByteOfPasswordAndSaltCounts) {
    const std::string known = dao::pbkdf2("lozinka", "salt", 2, 20);
    EXPECT_NE(dao::pbkdf2("lozinkb", "salt", 2, 20), known);
    EXPECT_NE(dao::pbkdf2("lozinka", "sals", 2, 20), known);
    EXPECT_NE(dao::pbkdf2("lozinka", "salt", 3, 20), known);
}

}  // namespace
