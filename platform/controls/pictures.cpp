#include "platform/controls/pictures.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>

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

}  // namespace

QIcon icon(const QString& name) {
    const QString path = drawing("icons", name);
    return path.isEmpty() ? QIcon() : QIcon(path);
}

QPixmap picture(const QString& name, int width) {
    const QString path = drawing("pictures", name);
    if (path.isEmpty() || width <= 0) {
        return QPixmap();
    }
    QSvgRenderer renderer(path);
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
