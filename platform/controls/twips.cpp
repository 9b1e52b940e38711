#include "platform/controls/twips.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace platform {
namespace {

// Of a letter in the letters that the kept widths were made for, logical pixels. In them the longest header
// of a list takes the usual 1440 twips, with the arrow of the order in front of it.
constexpr double kUsualLetter = 4.8;

}  // namespace

double letterFactor() {
    static const QString kLetters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const double letters = QFontMetricsF(QApplication::font("QTreeView")).horizontalAdvance(kLetters);
    return std::max(1.0, letters / static_cast<double>(kLetters.size()) / kUsualLetter);
}

int LetterLength::show(int twips) {
    told_ = std::max(0, twips);
    shown_ = static_cast<int>(std::lround(told_ * letterFactor() / kTwipsPerPixel));
    return shown_;
}

int LetterLength::twips(int pixels) const {
    return pixels == shown_ ? told_ : static_cast<int>(std::lround(pixels * kTwipsPerPixel / letterFactor()));
}

}  // namespace platform
