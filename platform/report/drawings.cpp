#include "platform/report/drawings.h"

#include <QFile>
#include <QPainter>
#include <QRectF>
#include <QSvgRenderer>

// The drawings lie in a static library: without this call the linker leaves them out.
static void loadDrawings() {
    Q_INIT_RESOURCE(pictures);
}

namespace report {

Drawings::Drawings() {
    loadDrawings();
}

Drawings::~Drawings() = default;

QSvgRenderer* Drawings::renderer(const QString& name) {
    const auto known = renderers_.find(name);
    if (known != renderers_.end()) {
        return known->second.get();
    }
    std::unique_ptr<QSvgRenderer>& made = renderers_[name];
    const QString path = QStringLiteral(":/pictures/%1.svg").arg(name);
    if (!name.isEmpty() && QFile::exists(path)) {
        made = std::make_unique<QSvgRenderer>(path);
        if (!made->isValid()) {
            made.reset();
        }
    }
    return made.get();
}

QSizeF Drawings::size(const QString& name) {
    QSvgRenderer* drawing = renderer(name);
    return drawing ? drawing->viewBoxF().size() : QSizeF();
}

void Drawings::paint(QPainter& painter, const QString& name, const QRectF& place) {
    if (QSvgRenderer* drawing = renderer(name)) {
        drawing->render(&painter, place);
    }
}

}  // namespace report
