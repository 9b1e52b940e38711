#pragma once

namespace alphabet {

// The plain letter in lower case, whatever the machine's locale says; everything else as it is.
constexpr char lowerAscii(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

}  // namespace alphabet
