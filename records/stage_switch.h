#pragma once

#include <QString>

#include "records/main_start.h"

class MainView;
class StagePanes;
class StageTabs;
struct ShopRecords;
namespace platform {
class Trap;
}

// The tabs above the panes, and the way from one stage to another: what is left is saved, what is reached is
// read again where it has gone stale. Whoever has to mend something first stays.
class StageSwitch {
 public:
    // All of these outlive it. `window` owns the tabs.
    StageSwitch(const MainStart& start, StagePanes& panes, ShopRecords& shop, MainView& window);

    bool TabImagesFailed = false;

    // False on failure, with the text to show in `errorText`.
    bool CreateTabImages(QString& errorText);
    bool CreateTabs(QString& errorText);
    StageTabs* const& tabs() const { return tabs_; }  // nullptr until CreateTabs

    void setCaption(int stage, const QString& caption);  // from 1; nothing without tabs
    void showFirst();                                    // as a click on its tab

 private:
    void buildTabs();
    void showPictures(int stage);
    void tabChanged(int tabIndex);
    void showStage(int newStage, platform::Trap& step);

    const MainStart& start_;
    StagePanes& panes_;
    ShopRecords& shop_;
    MainView& window_;
    StageTabs* tabs_ = nullptr;
    Pictures pictures_;
    bool puttingBack_ = false;
};
