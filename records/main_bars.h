#pragma once

#include <functional>

#include "records/main_menus.h"
#include "records/main_start.h"
#include "records/main_toolbar.h"

// The menus and the toolbar together: their making at the window's start, and what may be given in them.
class MainBars {
 public:
    // `window` and `start` outlive the bars, as do `rows`. `state` is asked whenever a bar is renewed.
    MainBars(QMainWindow& window, std::span<const CommandRow> rows, const MainStart& start,
             std::function<CommandState()> state);

    MainMenus menus;
    MainToolbar toolbar;

    // False on failure, with the text to show in `errorText`. Without pictures there is no toolbar to be
    // seen; without menus the window has no menu bar.
    bool CreateToolbarImages(QString& errorText);
    bool CreateMenus(QString& errorText);
    bool CreateToolbar(bool visible, QString& errorText);

    // The record buttons, after each change of a field, a record or a stage.
    void UpdateToolbarState() { renew(Renewal::WithRecords); }
    // The service buttons, on a stage change and after the list is filled.
    void UpdateServiceButtons() { renew(Renewal::WithServices); }
    void renew(Menu menu) { menus.renew(menu, state_()); }

 private:
    void renew(Renewal renewal);
    void hangMenus();

    QMainWindow& window_;
    std::span<const CommandRow> rows_;
    const MainStart& start_;
    std::function<CommandState()> state_;
    Pictures pictures_;
    bool picturesFailed_ = false;
};
