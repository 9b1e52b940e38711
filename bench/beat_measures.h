#pragma once

#include <regex>
#include <string>

struct Beats {
    bool byProcessor = false;  // by its time instead of the wall's
    std::regex wanted;         // only those whose name it is found in
    std::string old;           // a database of the old format, to be taken over; empty: none
};

// The waits of a large shop, one after the other on the shop that DatabasePath tells, and how long the
// windows stood still in each: prints a table. The shop gets a stock of products first, and is gone where an
// old one is taken over. The exit status.
int beatMeasures(const Beats& beats);
