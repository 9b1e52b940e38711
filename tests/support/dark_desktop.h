#pragma once

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
    // Outside its event loop the toolkit changes the colours and tells nobody.
    static void goOver(const QPalette& colours) {
        QApplication::setPalette(colours);
        for (QWidget* widget : QApplication::allWidgets()) {
            QEvent changed(QEvent::PaletteChange);
            QApplication::sendEvent(widget, &changed);
        }
    }

    QPalette usual_;
};

inline QImage pictureOf(QWidget& window) {
    return window.grab().toImage();
}

inline QImage pictureInTheDark(QWidget& window) {
    const DarkDesktop dark;
    return pictureOf(window);
}
