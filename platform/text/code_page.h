#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace alphabet {

// Windows-1250, the code page of the country, one byte a letter. The five places that it leaves open stand
// for the control characters of the same number, so that all 256 codes go there and back.
char32_t letterOf(unsigned char code);
// Nothing for a letter that the page has not.
std::optional<unsigned char> codeOf(char32_t letter);
// A text of that page as UTF-8.
std::string fromCodePage(std::string_view bytes);

}  // namespace alphabet
