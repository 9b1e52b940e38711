#pragma once

class QBoxLayout;
class QCheckBox;
class QWidget;

// The check boxes under a tip: whether one comes at the start, and whether they come by chance. Only what a
// person clicks is stored: the switches must not be written by looking at them.
class TipSwitches {
 public:
    explicit TipSwitches(QWidget* window) : window_(window) {}  // outlives it, and owns the boxes
    void addTo(QBoxLayout* column);
    void load();

 private:
    QCheckBox* makeBox(const char* name, int captionId);
    void keepAtStartup();
    void keepAtRandom();

    QWidget* window_;
    QCheckBox* atStartup_ = nullptr;  // chkLoadTipsAtStartup
    QCheckBox* atRandom_ = nullptr;   // chkShowTipsAtRandom
};
