#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace alphabet {

// Whether every store can keep the text: valid UTF-8, every letter in its shortest form and none of them half
// of a pair, without U+0000.
bool isSound(std::string_view text);

// How many letters a text of UTF-8 has, and as many bytes of it as hold the first `letters` of them: of the
// whole text where it has no more.
std::size_t lettersIn(std::string_view text);
std::size_t bytesOfLetters(std::string_view text, std::size_t letters);

// The letter as UTF-8 at the end of a text. Any number below U+110000, also what is no letter.
void appendUtf8(std::string& text, char32_t letter);

}  // namespace alphabet
