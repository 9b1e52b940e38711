#include "platform/controls/drawing_engine.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

#include "platform/controls/shades.h"

namespace platform {
namespace {

struct Recolouring {
    const char* light;
    const char* dark;
};
// Light lines that lie on a coloured ground are no paper, and stay.
constexpr Recolouring kRecolourings[] = {
    {"stroke=\"#22303F\"", "stroke=\"#DCE4EC\""}, {"fill=\"#22303F\"", "fill=\"#DCE4EC\""},
    {"fill=\"#F7FAFD\"", "fill=\"#26323E\""},     {"fill=\"#EEF1F4\"", "fill=\"#3A4753\""},
    {"fill=\"#C9D0D8\"", "fill=\"#5D6974\""},     {"fill=\"#BCD6F0\"", "fill=\"#3E6896\""},
    {"fill=\"#2F6FB5\"", "fill=\"#3F86D2\""},     {"stroke=\"#2F6FB5\"", "stroke=\"#7DB4EE\""},
    {"stroke=\"#1F4E85\"", "stroke=\"#7DB4EE\""}, {"fill=\"#C8402F\"", "fill=\"#E8604C\""},
    {"stroke=\"#C8402F\"", "stroke=\"#E8604C\""}, {"stroke=\"#77828E\"", "stroke=\"#A9B4BF\""},
    {"stroke=\"#5B6672\"", "stroke=\"#A9B4BF\""},
};

QPixmap rendered(const QByteArray& drawing, const QSize& size) {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(drawing);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(pixmap.rect()));
    return pixmap;
}

}  // namespace

QByteArray inColoursOfDesktop(QByteArray drawing) {
    if (isDark(QApplication::palette())) {
        for (const Recolouring& each : kRecolourings) {
            drawing.replace(each.light, each.dark);
        }
    }
    return drawing;
}

DrawingEngine::DrawingEngine(const QString& name, const QByteArray& drawing)
    : name_(name), drawing_(drawing) {}

void DrawingEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    const qreal scale = painter->device()->devicePixelRatioF();
    QPixmap picture = scaledPixmap(rect.size() * scale, mode, state, scale);
    picture.setDevicePixelRatio(1.0);
    painter->drawPixmap(rect, picture);
}

QPixmap DrawingEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    return scaledPixmap(size, mode, state, 1.0);
}

// `size` counts the dots of the screen.
QPixmap DrawingEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) {
    const QPalette desktop = QApplication::palette();
    const QString key = QStringLiteral("%1 %2x%3 %4 %5")
                            .arg(name_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(mode)
                            .arg(desktop.cacheKey());
    QPixmap picture;
    if (size.isEmpty() || QPixmapCache::find(key, &picture)) {
        return picture;
    }
    picture = rendered(inColoursOfDesktop(drawing_), size);
    if (mode != QIcon::Normal) {
        QStyleOption option;
        option.palette = desktop;
        picture = QApplication::style()->generatedIconPixmap(mode, picture, &option);
    }
    QPixmapCache::insert(key, picture);
    return picture;
}

}  // namespace platform
