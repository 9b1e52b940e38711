#pragma once

#include <QObject>

class MainBars;
class MainStatus;
class QMainWindow;
class QWidget;
struct MainChoices;

// The height of the main window: a bar that comes or goes makes the window taller or shorter, and the panes
// keep theirs.
class MainShape : public QObject {
    Q_OBJECT
 public:
    // All of these outlive it.
    MainShape(QMainWindow& window, MainBars& bars, MainStatus& status, MainChoices& choices);

    // Nothing where the bar could not be made.
    void ToggleToolbar();
    void ToggleStatusBar();
    void ArrangeControls();  // nothing in a maximized window

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void toggle(QWidget* bar, bool& wanted);
    int insideHeight() const;

    QMainWindow& window_;
    MainBars& bars_;
    MainStatus& status_;
    MainChoices& choices_;
    bool activated_ = false;
    bool arranging_ = false;
    int insideHeight_ = 0;  // what the window's inside keeps; logical pixels, 0: not known
};
