#include "common/window_places.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <QWidget>
#include <cmath>
#include <optional>

namespace {

constexpr int kTwipsToPixel = 15;

std::optional<int> pixelsOf(const QString& twips) {
    bool isNumber = false;
    const double number = twips.trimmed().toDouble(&isNumber);
    constexpr double kFarthest = 1e6;
    if (!isNumber || !(std::abs(number) <= kFarthest)) {
        return std::nullopt;
    }
    return static_cast<int>(std::lround(number / kTwipsToPixel));
}

bool onSomeScreen(const QRect& frame) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->availableGeometry().intersects(frame)) {
            return true;
        }
    }
    return false;
}

}  // namespace

void moveToPlace(QWidget* window, const QString& place) {
    const qsizetype semicolon = place.indexOf(QLatin1Char(';'));
    if (semicolon < 0) {
        return;
    }
    const std::optional<int> left = pixelsOf(place.left(semicolon));
    const std::optional<int> top = pixelsOf(place.mid(semicolon + 1));
    // The second monitor may be gone since; a window out of sight would be lost for good.
    if (left && top && onSomeScreen(QRect(QPoint(*left, *top), window->size()))) {
        window->move(*left, *top);
    }
}

void moveToPlaceAndSize(QWidget* window, const QString& frame) {
    constexpr int kParts = 4;
    constexpr int kUsualWidth = 12000;
    constexpr int kUsualHeight = 8000;
    QStringList parts = frame.split(QLatin1Char(';'));
    if (parts.size() < kParts) {
        parts.resize(kParts);
        parts[2] = QString::number(kUsualWidth);
        parts[3] = QString::number(kUsualHeight);
    }
    const std::optional<int> width = pixelsOf(parts[2]);
    const std::optional<int> height = pixelsOf(parts[3]);
    if (width && height && *width > 0 && *height > 0) {
        window->resize(QSize(*width, *height).boundedTo(window->screen()->availableSize()));
    }
    moveToPlace(window, parts[0] + QLatin1Char(';') + parts[1]);
}

QString placeAndSizeOf(const QWidget* window) {
    return QStringLiteral("%1;%2;%3")
        .arg(placeOf(window))
        .arg(window->width() * kTwipsToPixel)
        .arg(window->height() * kTwipsToPixel);
}

QString placeOf(const QWidget* window) {
    return QStringLiteral("%1;%2").arg(window->x() * kTwipsToPixel).arg(window->y() * kTwipsToPixel);
}
