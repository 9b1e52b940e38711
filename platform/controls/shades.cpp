#include "platform/controls/shades.h"

#include <QApplication>
#include <QLineEdit>
#include <QPalette>
#include <algorithm>

#include "platform/controls/dressing.h"

namespace platform {
namespace {

const QColor kRefusal(200, 64, 47);

void tint(QLineEdit& box, bool refuses) {
    constexpr double kTint = 0.3;
    QPalette colours;
    if (refuses) {
        const QColor usual = QApplication::palette(&box).color(QPalette::Active, QPalette::Base);
        colours.setColor(QPalette::Base, mixed(usual, kRefusal, kTint));
    }
    box.setPalette(colours);
}

}  // namespace

QColor mixed(const QColor& ground, const QColor& other, double share) {
    const auto mix = [share](int a, int b) { return qRound(a + (b - a) * share); };
    return QColor(mix(ground.red(), other.red()), mix(ground.green(), other.green()),
                  mix(ground.blue(), other.blue()));
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::WindowText).lightness() >
           palette.color(QPalette::Active, QPalette::Window).lightness();
}

QColor readable(const QColor& colour, const QPalette& palette) {
    constexpr int kLeastInTheDark = 175, kMostInTheLight = 130;  // of 255
    const bool dark = isDark(palette);
    const int lightness =
        dark ? std::max(colour.lightness(), kLeastInTheDark) : std::min(colour.lightness(), kMostInTheLight);
    return lightness == colour.lightness()
               ? colour
               : QColor::fromHsl(colour.hslHue(), colour.hslSaturation(), lightness);
}

void showNothingFound(QLineEdit& box, const QString& description) {
    keepDressed(box, [&box, refuses = !description.isEmpty()] { tint(box, refuses); });
    box.setAccessibleDescription(description);
}

}  // namespace platform
