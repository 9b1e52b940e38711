// make_icons DRAWING FOLDER: the program's icon as PNG, in the sizes that desktops ask for, as
// FOLDER/48x48/apps/tarvello.png and so on. For desktops and lists that draw no SVG.
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

namespace {

bool make(QSvgRenderer& drawing, int size, const QString& folder) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        drawing.render(&painter);
    }
    const QString place = QStringLiteral("%1/%2x%2/apps").arg(folder).arg(size);
    return QDir().mkpath(place) && image.save(place + QStringLiteral("/tarvello.png"), "PNG");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: make_icons DRAWING FOLDER\n", stderr);
        return 2;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid()) {
        std::fprintf(stderr, "%s is no drawing\n", argv[1]);
        return 1;
    }
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        if (!make(drawing, size, QString::fromLocal8Bit(argv[2]))) {
            std::fprintf(stderr, "no icon of %d pixels could be written\n", size);
            return 1;
        }
    }
    return 0;
}
