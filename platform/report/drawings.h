#pragma once

#include <QSizeF>
#include <QString>
#include <map>
#include <memory>

class QPainter;
class QRectF;
class QSvgRenderer;

namespace report {

// The drawings of resources/pictures as lines and areas, not as points: a printer draws them as fine as it
// can.
class Drawings {
 public:
    Drawings();
    ~Drawings();
    QSizeF size(const QString& name);  // empty where there is no such drawing
    void paint(QPainter& painter, const QString& name, const QRectF& place);

 private:
    QSvgRenderer* renderer(const QString& name);  // nullptr where there is none
    std::map<QString, std::unique_ptr<QSvgRenderer>> renderers_;
};

}  // namespace report
