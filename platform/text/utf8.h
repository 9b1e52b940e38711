#pragma once

#include <string_view>

namespace alphabet {

// Whether every store can keep the text: valid UTF-8, every letter in its shortest form and none of them half
// of a pair, without U+0000.
bool isSound(std::string_view text);

}  // namespace alphabet
