#pragma once

#include "records/command_table.h"

// Gives the commands of the main window: by their names, as menus and toolbar do, or by their places in the
// menus, as help and support speak of them.
class MainCommands {
 public:
    // What the targets refer to outlives it.
    explicit MainCommands(CommandTargets targets);

    void give(Command command);
    // Separators counted. A place without a command is told in a box.
    void mnuDatabase_Click(int index);
    void mnuUtilities_Click(int index);
    void mnuView_Click(int index);
    void mnuHelp_Click(int index);
    void mnuPopup_Click(int index);

 private:
    void giveAt(Menu menu, int position, const char* handler);

    CommandTargets targets_;
};
