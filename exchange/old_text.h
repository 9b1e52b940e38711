#pragma once

#include <string>
#include <string_view>

// Text as files of the old format hold it, turned into ours.
namespace exchange {

struct OldText {
    std::string text;   // UTF-8
    bool sound = true;  // false: letters that no store takes stand in it as U+FFFD
};

// Of version 3: one byte a letter, in the code page of the country these shops are in, Windows-1250. The
// file's own mark of a code page tells the language of its sorting and not that of its texts.
OldText fromCodePage(std::string_view bytes);

// Of version 4: two bytes a letter, the lower first, or packed, which the first two bytes tell: then
// stretches of one byte a letter and of two take turns, with a zero byte between them.
OldText fromTwoBytes(std::string_view bytes);

}  // namespace exchange
