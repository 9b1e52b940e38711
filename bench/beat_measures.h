#pragma once

// The waits of a large shop, one after the other on the shop that DatabasePath tells, and how long the
// windows stood still in each: prints a table. `processor`: by the processor's time instead of the wall's.
// The exit status.
int beatMeasures(bool processor);
