#pragma once

#include <QString>

// Commands of the main window whose own windows the shop is still waiting for: shown, and disabled. They are
// named by the object names of their menu entries and toolbar buttons. A row taken out of the table puts the
// command under the rules of its menu and of the toolbar.
bool isNotYet(const QString& command);
