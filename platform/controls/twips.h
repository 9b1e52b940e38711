#pragma once

namespace platform {

// Lengths on the screen as the settings keep them. A twip is a fifteenth of a logical pixel at the letters
// that the kept widths were made for; where the desktop's letters are wider, what has to hold letters (a
// column, a window) grows with them, and places do not.
inline constexpr int kTwipsPerPixel = 15;

// How much wider the desktop's letters are than those; never below 1.
double letterFactor();

// A length that holds letters: told in twips, shown in logical pixels, and kept as it was told until a person
// changes it on the screen. Whole pixels would make another number of it each time it is read and written.
class LetterLength {
 public:
    int show(int twips);          // the pixels to show it with; a negative length is none
    int twips(int pixels) const;  // of the pixels that are on the screen now

 private:
    int told_ = 0;   // twips
    int shown_ = 0;  // pixels
};

}  // namespace platform
