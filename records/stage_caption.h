#pragma once

#include <QString>

class MainView;

// What the tab of one stage says: the record on show there.
class StageCaption {
 public:
    // `window` outlives it. `index`: the stage, from 0.
    StageCaption(int index, MainView& window) : index_(index), window_(window) {}

    void show(const QString& text);
    void showUsual();  // that of a stage where nothing is chosen

 private:
    int index_;
    MainView& window_;
};
