#pragma once

#include <array>
#include <string>
#include <string_view>

// How the engine knows its own files, and a wrong password from a damaged page, before it decrypts anything.
// The first sixteen bytes of a file are the salt of its key; ours are eight random bytes, four that mark them
// as ours, and four that only the right password gives.
namespace dao {

using Salt = std::array<unsigned char, 16>;

// A new file's salt for a password.
Salt newSalt(const std::string& password);
bool hasOurMark(const Salt& salt);
// Slow on purpose; the answer for a password and salt is remembered while the process lives.
bool isRightPassword(const std::string& password, const Salt& salt);
// The raw key with the salt, hexadecimal. The same key that the cipher itself would make of the password.
std::string rawKey(const std::string& password, const Salt& salt);

// The password last given rightly for a file of this salt; empty optional-like: false where there was none.
bool rememberedPassword(const Salt& salt, std::string& password);

// The password in a connect text: ";pwd=" in any case, up to the next ";". False where the text gives none.
bool passwordFrom(std::string_view connect, std::string& password);

}  // namespace dao
