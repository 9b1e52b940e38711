#include "platform/controls/pictures.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>

#include "platform/controls/drawing_engine.h"

// The drawings lie in a static library: without this call the linker leaves them out.
static void loadDrawings() {
    Q_INIT_RESOURCE(pictures);
}

namespace platform {
namespace {

QString drawing(const char* folder, const QString& name) {
    static const bool loaded = [] {
        loadDrawings();
        return true;
    }();
    Q_UNUSED(loaded);
    const QString path = QStringLiteral(":/%1/%2.svg").arg(QLatin1String(folder), name);
    return !name.isEmpty() && QFile::exists(path) ? path : QString();
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return !path.isEmpty() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

QIcon icon(const QString& name) {
    const QByteArray drawn = contentOf(drawing("icons", name));
    return drawn.isEmpty() ? QIcon() : QIcon(new DrawingEngine(name, drawn));
}

QPixmap picture(const QString& name, int width) {
    const QByteArray drawn = contentOf(drawing("pictures", name));
    if (drawn.isEmpty() || width <= 0) {
        return QPixmap();
    }
    // What brings its own ground along looks the same on every desktop.
    const bool hasGround = drawn.contains("data-ground=\"own\"");
    QSvgRenderer renderer(hasGround ? drawn : inColoursOfDesktop(drawn));
    const QSizeF natural = renderer.viewBoxF().size();
    if (natural.isEmpty()) {
        return QPixmap();
    }
    const double height = width * natural.height() / natural.width();
    const double scale = qGuiApp->devicePixelRatio();
    QPixmap pixmap(qRound(width * scale), qRound(height * scale));
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(pixmap.rect()));
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

}  // namespace platform
