#pragma once

// What came of a text report.
enum class ReportResult {
    Written,
    Failed,         // something could not be read or written; the rest is in the file
    Empty,          // there is no client; no file was touched
    ClientMissing,  // the selected one is not there; no file was touched
    NotRead,        // the clients could not be read; no file was touched
    BrokenOff,      // whoever waits for it said so; no part of it is left
};
