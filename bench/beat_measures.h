#pragma once

#include <regex>

// The waits of a large shop, one after the other on the shop that DatabasePath tells, and how long the
// windows stood still in each: prints a table. `processor`: by the processor's time instead of the wall's.
// `wanted`: only those whose name it is found in; the window is opened and closed in any case. The exit
// status.
int beatMeasures(bool processor, const std::regex& wanted);
