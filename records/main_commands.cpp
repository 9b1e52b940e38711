#include "records/main_commands.h"

#include <QString>
#include <utility>

#include "common/window_helpers.h"
#include "platform/controls/long_wait.h"

MainCommands::MainCommands(CommandTargets targets) : targets_(std::move(targets)) {}

void MainCommands::give(Command command) {
    if (platform::LongWait::isAway()) {
        return;
    }
    const CommandRow* row = commandOf(commandTable(), command);
    if (row != nullptr && row->action != nullptr) {
        row->action(targets_);
    }
}

void MainCommands::giveAt(Menu menu, int position, const char* handler) {
    if (const CommandRow* row = commandAt(commandTable(), menu, position)) {
        return give(row->name);
    }
    box(&targets_.window, QStringLiteral("Unknown index: %1(%2)").arg(QLatin1String(handler)).arg(position),
        platform::BoxIcon::Exclamation);
}

void MainCommands::mnuDatabase_Click(int index) {
    giveAt(Menu::Database, index, "mnuDatabase_Click");
}

void MainCommands::mnuUtilities_Click(int index) {
    giveAt(Menu::Utilities, index, "mnuUtilities_Click");
}

void MainCommands::mnuView_Click(int index) {
    giveAt(Menu::View, index, "mnuView_Click");
}

void MainCommands::mnuHelp_Click(int index) {
    giveAt(Menu::Help, index, "mnuHelp_Click");
}

void MainCommands::mnuPopup_Click(int index) {
    giveAt(Menu::Popup, index, "mnuPopup_Click");
}
