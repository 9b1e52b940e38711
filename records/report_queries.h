#pragma once

#include <string>

// The statements that a report reads from. `suffix`: the number behind this copy's stored queries, through
// which a quick filter narrows the report.
struct ReportQueries {
    std::string suffix;
    std::string clients;  // without an order

    std::string clientTable() const { return "(" + clients + ") AS Clients"; }  // behind FROM
    std::string computers() const { return "SELECT * FROM QDComputers" + suffix; }
    std::string services() const { return "SELECT * FROM QDServices" + suffix; }
};
