#include "common/window_places.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <QVariant>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/controls/twips.h"

namespace {

using platform::kTwipsPerPixel;
using platform::LetterLength;

constexpr const char* kToldSize = "toldSize";  // of a window: a Sizes

// The size that a window was told, in twips, and the one that it got for it, in logical pixels.
using Sizes = std::pair<QSize, QSize>;

// Twips; not so many that no screen could be that far away.
std::optional<double> twipsOf(const QString& figure) {
    bool isNumber = false;
    const double number = figure.trimmed().toDouble(&isNumber);
    constexpr double kFarthest = 1e6;
    if (!isNumber || !(std::abs(number) <= kFarthest)) {
        return std::nullopt;
    }
    return number;
}

int pixelsOf(double twips) {
    return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}

void giveSize(QWidget& window, const QSize& told) {
    LetterLength width, height;
    const QSize wanted(width.show(told.width()), height.show(told.height()));
    window.resize(wanted.boundedTo(window.screen()->availableSize()));
    window.setProperty(kToldSize, QVariant::fromValue(Sizes(told, window.size())));
}

QSize toldSizeOf(const QWidget& window) {
    const auto [told, shown] = window.property(kToldSize).value<Sizes>();
    if (shown == window.size()) {
        return told;
    }
    const LetterLength letters;
    return QSize(letters.twips(window.width()), letters.twips(window.height()));
}

// What the screen has no room for is not what the person wants smaller: the told size is still kept.
void shrink(QWidget& window, const QSize& most) {
    const auto [told, shown] = window.property(kToldSize).value<Sizes>();
    const bool asTold = shown == window.size();
    window.resize(window.size().boundedTo(most));
    if (asTold) {
        window.setProperty(kToldSize, QVariant::fromValue(Sizes(told, window.size())));
    }
}

bool isOnScreens(const QRect& frame) {
    const QPoint corners[] = {frame.topLeft(), frame.topRight(), frame.bottomLeft(), frame.bottomRight()};
    const QList<QScreen*> screens = QGuiApplication::screens();
    return std::all_of(std::begin(corners), std::end(corners), [&screens](const QPoint& corner) {
        return std::any_of(screens.begin(), screens.end(), [&corner](const QScreen* screen) {
            return screen->availableGeometry().contains(corner);
        });
    });
}

// The room of the screen whose middle is the nearest to the frame's.
QRect nearestRoom(const QRect& frame) {
    QRect nearest;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect room = screen->availableGeometry();
        const auto distance = [&frame](const QRect& from) {
            return (from.center() - frame.center()).manhattanLength();
        };
        if (nearest.isNull() || distance(room) < distance(nearest)) {
            nearest = room;
        }
    }
    return nearest;
}

// A window has its size only when it is shown, and its frame only when the desktop has put one around it.
class OnScreen : public QObject {
 public:
    explicit OnScreen(QWidget* window) : QObject(window) { window->installEventFilter(this); }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isLast = event->type() == QEvent::WindowActivate;
        if (isLast || event->type() == QEvent::Show) {
            bringOnScreen(static_cast<QWidget*>(watched));
        }
        if (isLast) {
            watched->removeEventFilter(this);
            deleteLater();
        }
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

void moveToPlace(QWidget* window, const QString& place) {
    const qsizetype semicolon = place.indexOf(QLatin1Char(';'));
    if (semicolon < 0) {
        return;
    }
    const std::optional<double> left = twipsOf(place.left(semicolon));
    const std::optional<double> top = twipsOf(place.mid(semicolon + 1));
    if (left && top) {
        window->move(pixelsOf(*left), pixelsOf(*top));
        new OnScreen(window);
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
    const std::optional<double> width = twipsOf(parts[2]);
    const std::optional<double> height = twipsOf(parts[3]);
    if (width && height && pixelsOf(*width) > 0 && pixelsOf(*height) > 0) {
        giveSize(*window, QSizeF(*width, *height).toSize());
    }
    moveToPlace(window, parts[0] + QLatin1Char(';') + parts[1]);
}

QString placeAndSizeOf(const QWidget* window) {
    const QSize size = toldSizeOf(*window);
    return QStringLiteral("%1;%2;%3").arg(placeOf(window)).arg(size.width()).arg(size.height());
}

QString placeOf(const QWidget* window) {
    return QStringLiteral("%1;%2").arg(window->x() * kTwipsPerPixel).arg(window->y() * kTwipsPerPixel);
}

void bringOnScreen(QWidget* window) {
    const QRect frame = window->frameGeometry();
    if (window->isMaximized() || window->isFullScreen() || isOnScreens(frame)) {
        return;
    }
    const QRect room = nearestRoom(frame);
    shrink(*window, room.size() - (frame.size() - window->size()));
    const QSize size = window->frameGeometry().size();
    window->move(std::max(room.left(), std::min(frame.left(), room.right() + 1 - size.width())),
                 std::max(room.top(), std::min(frame.top(), room.bottom() + 1 - size.height())));
}
