// A shop's key is slow to derive on purpose, and nearly every test of a window opens a copy of the same two
// shops in a process of its own. What the derivation gives for those two is kept beside them; for every other
// file, and for every other password, it is done in full. The linker leads the engine's calls here (--wrap).

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "platform/dao/sqlite/hex.h"
#include "support/places.h"

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the linker's names.
void __real_nettle_pbkdf2_hmac_sha1(std::size_t passwordSize, const std::uint8_t* password, unsigned rounds,
                                    std::size_t saltSize, const std::uint8_t* salt, std::size_t size,
                                    std::uint8_t* key);
void __wrap_nettle_pbkdf2_hmac_sha1(std::size_t passwordSize, const std::uint8_t* password, unsigned rounds,
                                    std::size_t saltSize, const std::uint8_t* salt, std::size_t size,
                                    std::uint8_t* key);
}

namespace tests {
namespace {

namespace fs = std::filesystem;

char* bytes(std::uint8_t* memory) {
    return reinterpret_cast<char*>(memory);
}

std::string textOf(const std::uint8_t* memory, std::size_t size) {
    return {reinterpret_cast<const char*>(memory), size};
}

bool beginsWith(const fs::path& file, const std::string& salt) {
    std::string head(salt.size(), '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    return stream.good() && head == salt;
}

bool isDelivered(const std::string& salt) {
    const fs::path folder = kDeliveredFolder;
    return beginsWith(folder / "Tarvello.mdb", salt) || beginsWith(folder / "Demo.mdb", salt);
}

bool isRead(const fs::path& file, std::uint8_t* key, std::size_t size) {
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes(key), static_cast<std::streamsize>(size));
    return stream.good();
}

// Under a name of this process first: another one may be reading.
void write(const fs::path& file, std::uint8_t* key, std::size_t size) {
    std::error_code ignored;
    fs::create_directories(file.parent_path(), ignored);
    const fs::path begun = file.string() + "." + std::to_string(getpid());
    std::ofstream stream(begun, std::ios::binary);
    stream.write(bytes(key), static_cast<std::streamsize>(size));
    stream.close();
    if (stream.good()) {
        fs::rename(begun, file, ignored);
    }
}

}  // namespace
}  // namespace tests

void __wrap_nettle_pbkdf2_hmac_sha1(std::size_t passwordSize, const std::uint8_t* password, unsigned rounds,
                                    std::size_t saltSize, const std::uint8_t* salt, std::size_t size,
                                    std::uint8_t* key) {
    const std::string saltText = tests::textOf(salt, saltSize);
    const std::string name = dao::toHex(tests::textOf(password, passwordSize)) + "-" + dao::toHex(saltText) +
                             "-" + std::to_string(rounds) + "-" + std::to_string(size);
    const auto file = std::filesystem::path(tests::kDeliveredFolder).parent_path() / "delivered-keys" / name;
    const bool delivered = tests::isDelivered(saltText);
    if (delivered && tests::isRead(file, key, size)) {
        return;
    }
    __real_nettle_pbkdf2_hmac_sha1(passwordSize, password, rounds, saltSize, salt, size, key);
    if (delivered) {
        tests::write(file, key, size);
    }
}
// NOLINTEND(bugprone-reserved-identifier)
