#pragma once

#include <optional>
#include <stdexcept>
#include <string>

// Files of the old database format, in which shops have kept their books before: told apart by their first
// bytes, and by who has them open.
namespace exchange {

// Why nothing is taken over, as a sentence for the person.
class OldFileError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

enum class OldFormat {
    None,      // something else, or nothing that can be read
    Version3,  // text in the code page of the country
    Version4,  // text in two bytes a letter
    Later      // of the same family, in a form that came after
};

// Looks at the head of the file alone. Never throws.
OldFormat oldFormatOf(const std::string& path);

// Who has it open for work: the entry of a lock file beside it that a living program holds, "MACHINE (USER)";
// nothing where nobody does. What a crash has left in the lock file holds nobody up.
std::optional<std::string> holderOf(const std::string& path);

// Throws OldFileError for what is not of versions 3 or 4, cannot be opened, or is open elsewhere.
void needOldFile(const std::string& path);

}  // namespace exchange
