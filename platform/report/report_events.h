#pragma once

#include <QtGlobal>
#include <functional>

namespace report {

class Section;

struct PageSetup {
    int width = 11906, height = 16838;  // A4 upright, twips
    int left = 850, top = 850, right = 850, bottom = 850;
};

// Told while a report runs: rows done, rows in all. False cancels the run.
using Progress = std::function<bool(qint64 done, qint64 all)>;

// What a report is asked while it is laid out; see Report for the order.
class ReportEvents {
 public:
    ReportEvents() = default;
    ReportEvents(const ReportEvents&) = delete;
    ReportEvents& operator=(const ReportEvents&) = delete;
    virtual ~ReportEvents() = default;

    virtual void ReportStart() {}
    virtual void PageStart() {}
    virtual void Arrange(Section&) {}
    virtual void Format(Section&) {}
    virtual void BeforePrint(Section&) {}
    virtual void ReportEnd() {}  // after the last page, also after a run that was cancelled or failed
};

}  // namespace report
