#pragma once

#include <string>
#include <string_view>

// The one alphabet of the shop: the record store sorts and compares by it, the selectors list by it, the
// reports form their groups by it. Independent of the user's locale and of the machine, since an index made
// on one workstation is read on all others.
//
// Texts compare without regard to case. č and ć stand as letters of their own behind c, đ behind d, š behind
// s, ž behind z. A letter with any other mark counts as its plain letter ("Łukasz" stands as "Lukasz" would),
// and the marks decide only where two texts are otherwise the same, the plain one first. Letters of other
// alphabets stand behind z by their codes, digits and signs by theirs. An accent that follows its letter as a
// character of its own counts as a sign.
//
// Texts are UTF-8. A byte that is no UTF-8 counts as a letter of its own behind all others; no text is
// refused.
namespace alphabet {

// Raised whenever the order of any two texts changes: what was put in order by another one has to be put in
// order anew.
inline constexpr int kOrderVersion = 1;

// Below, at or above 0 as `a` stands before, with or behind `b`. 0 exactly where they differ in nothing but
// case.
int compare(std::string_view a, std::string_view b);

inline bool same(std::string_view a, std::string_view b) {
    return a.size() == b.size() && a == b ? true : compare(a, b) == 0;
}

// Below, at or above 0 as `text` stands before, among or behind all that begin with the letters of `front`,
// whatever their marks.
int compareFront(std::string_view text, std::string_view front);

// Bytes that compare, as unsigned bytes, as the texts do: for whoever can only compare bytes, or compares
// often. Only of texts without U+0000.
std::string orderKey(std::string_view text);
// The same behind what is there already.
void appendOrderKey(std::string& key, std::string_view text);

}  // namespace alphabet
