#pragma once

#include <string>

#include "shop.h"

class frmMain;

// The one main window of all window measures, on the generated shop, and what a plain program would do to
// show the same: read through the C API, and make the texts.
frmMain& mainWindow();

int busyComputer(Shop& shop);       // the one with 1,000 services
void showBusyComputer(Shop& shop);  // its services in the list of the window
void lookAtServices();              // at each of those 1,000 rows, also those that nobody sees

std::string column(sqlite3_stmt* statement, int index);  // Null is the empty text
// The sorted entries of the selector. `from`: a table, or a join with one. The number of the first.
int readClients(Shop& shop, const std::string& from);
// The rows of the list, as texts. `which`: a condition, with an order behind it.
void readServices(Shop& shop, const std::string& which);
