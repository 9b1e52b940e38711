#pragma once

#include <functional>

#include "records/program_windows.h"

class QLabel;
class QTimer;

// The picture shown while the program starts, and the about window. Frameless, in the middle of the screen,
// or of the window that owns it.
class frmSplash : public SplashWindow {
    Q_OBJECT

 public:
    explicit frmSplash(QWidget* parent = nullptr);

    // Set before the window is shown from the menu: then a click or Escape closes it, with no timer running.
    bool OpenedAsAbout = false;

    // What takes the window away, on its timer or on a click: the main window puts its own routine here,
    // which also forgets the window. Without one the window just closes.
    void setCloseCallback(std::function<void()> callback) override;
    // Milliseconds until the window goes by itself; 0 stops the timer.
    void setTimerInterval(int milliseconds) override;
    int timerInterval() const override;

 protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    void closeByUser();
    void takeAway();

    QLabel* image_;
    QLabel* revision_;
    QLabel* version_;
    QTimer* timer_;
    std::function<void()> closeCallback_;
};
