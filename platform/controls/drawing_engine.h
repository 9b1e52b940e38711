#pragma once

#include <QByteArray>
#include <QIconEngine>

namespace platform {

// An SVG drawing in the colours of the desktop: on a dark one ink and paper change places, and the colours
// are lighter.
QByteArray inColoursOfDesktop(QByteArray drawing);

// One of our drawings as an icon, sharp at any size. Which desktop it is on, is asked each time it is shown.
class DrawingEngine : public QIconEngine {
 public:
    // `drawing`: an SVG file. `name` tells it from the others.
    DrawingEngine(const QString& name, const QByteArray& drawing);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QIconEngine* clone() const override { return new DrawingEngine(*this); }
    bool isNull() override { return drawing_.isEmpty(); }

 private:
    QString name_;
    QByteArray drawing_;
};

}  // namespace platform
