#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <QWidget>

// A desktop with light letters on a dark ground, as long as it lives; the windows that are open already go
// over to it, and back.
class DarkDesktop {
 public:
    DarkDesktop() : usual_(QApplication::palette()) {
        QPalette dark(QColor(49, 54, 59), QColor(42, 46, 50));
        dark.setColor(QPalette::WindowText, QColor(252, 252, 252));
        dark.setColor(QPalette::Base, QColor(27, 30, 32));
        dark.setColor(QPalette::Text, QColor(252, 252, 252));
        dark.setColor(QPalette::ButtonText, QColor(252, 252, 252));
        goOver(dark);
    }
    ~DarkDesktop() { goOver(usual_); }
    DarkDesktop(const DarkDesktop&) = delete;
    DarkDesktop& operator=(const DarkDesktop&) = delete;

 private:
    // Outside its event loop the toolkit changes the colours and tells no window.
    static void goOver(const QPalette& colours) {
        QApplication::setPalette(colours);
        for (QWidget* window : QApplication::topLevelWidgets()) {
            QEvent changed(QEvent::ApplicationPaletteChange);
            QApplication::sendEvent(window, &changed);
        }
    }

    QPalette usual_;
};

inline QImage pictureOf(QWidget& window) {
    QApplication::processEvents();  // layouts that still wait
    return window.grab().toImage();
}

// Where two pictures differ is told by the rectangle around it.
inline void expectAlike(const QImage& turned, const QImage& opened) {
    ASSERT_EQ(turned.size(), opened.size());
    QRect differing;
    for (int y = 0; y < turned.height(); ++y) {
        for (int x = 0; x < turned.width(); ++x) {
            if (turned.pixel(x, y) != opened.pixel(x, y)) {
                differing |= QRect(x, y, 1, 1);
            }
        }
    }
    EXPECT_TRUE(differing.isNull()) << "from " << differing.left() << ", " << differing.top() << " to "
                                    << differing.right() << ", " << differing.bottom();
}

inline QImage pictureInTheDark(QWidget& window) {
    const DarkDesktop dark;
    return pictureOf(window);
}
