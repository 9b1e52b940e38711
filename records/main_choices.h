#pragma once

#include "records/list_order.h"
#include "records/report_choices.h"
#include "records/shop_filter.h"
#include "records/shop_session.h"

// What the main window remembers from one day to the next, besides its place on the screen.
struct MainChoices {
    ReportChoices report;
    FilterChoices filter;
    SessionChoices session;
    ListOrder order;
    int DefaultGST = 0;          // percent, of a new service; 0: none is proposed
    bool ToolbarVisible = true;  // what the user wants, also while a bar could not be made
    bool StatusbarVisible = true;
};
