#pragma once

class QWidget;
class StagePanes;
class StageTabs;

// The keys that lead about in the main window: Alt+1 to Alt+3, Ctrl+Page Up and Ctrl+Page Down from stage to
// stage, as a click on the tab does, and Ctrl+F to the search box of the stage on show; the services have
// none. All of these outlive the keys, which belong to `window`.
void addStageKeys(QWidget& window, StageTabs& tabs, const StagePanes& panes);
