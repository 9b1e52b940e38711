#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <string>

#include "platform/dao/recordset.h"

// The five quick filters: who still owes money, and which jobs are due. What they ask the database, and what
// becomes of the answer; the window that is narrowed by it is not known here.
namespace quick_filters {

struct Filter {
    const char* key;      // of its entry in the toolbar button's drop-down
    int textId;           // of its menu text
    const char* caption;  // in the status bar
};

// By number. In the menu "Quick Filter" number 0 stands at kFirstPosition, behind "Remove" and a separator.
inline constexpr std::array<Filter, 5> kFilters = {{
    {"FNP", 523, "FILTER: Finished but not paid services"},
    {"NFNP", 524, "FILTER: Not finished and not paid services"},
    {"NFP", 525, "FILTER: Not finished but paid services"},
    {"NFNPDD", 526, "FILTER: Not finished and not paid services with due date"},
    {"NFPDD", 527, "FILTER: Not finished but paid services with due date"},
}};
inline constexpr int kFirstPosition = 2;

bool isFilter(int number);
// Empty for a number that is no filter.
QString caption(int number);
// What the filter asks: the numbers of client, computer and service, one row a service that matches. The due
// date filters take services that are due within `dueDateDiff` days, overdue ones included. Empty for a
// number that is no filter.
QString statement(int number, int dueDateDiff);

// The numbers of one kind that a filter has found, as the condition that picks them out of their table. A
// number is left out only where the row before it had the same.
class IdList {
 public:
    explicit IdList(const char* field) : term_(std::string(field) + "=") {}
    void add(std::int32_t id);
    int count() const { return count_; }
    // All of those rows of the table. An empty list gives a text that picks nothing the engine would take.
    std::string selection(const char* table) const;

 private:
    std::string term_;
    std::string terms_;
    std::int32_t last_ = -1;
    int count_ = 0;
};

struct Found {
    IdList clients{"CustID"};
    IdList computers{"MachineID"};
    IdList services{"ID"};

    bool isEmpty() const { return services.count() == 0; }
};

// Reads the answer from its first row to its end. Throws dao::Error.
Found collect(dao::Recordset rows);

// The counts as the message shows them. A client whose computers come in two runs counts twice.
QString statistics(const Found& found);

}  // namespace quick_filters
