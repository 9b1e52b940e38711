#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/report/bands.h"
#include "platform/report/document.h"
#include "platform/report/page_writer.h"
#include "platform/report/report_events.h"
#include "platform/report/row_pair.h"
#include "platform/report/rows.h"
#include "platform/report/section.h"
#include "platform/report/section_filler.h"

namespace report {

// The report of a run. All of it may change while its events are told.
struct Design {
    const QString& title;
    const PageSetup& page;
    const std::vector<std::unique_ptr<Section>>& sections;
    const std::unique_ptr<RowSource>& rows;  // nothing: a report without rows
    ReportEvents& events;
    const Progress& progress;
};

// One run of a report: takes the rows one after the other, asks the report's handlers, and puts sections onto
// pages. Lengths in twips from the top of the sheet.
class Layout {
 public:
    explicit Layout(const Design& design)
        : report_(design),
          rows_(report_.rows),
          pages_(report_.page),
          filler_(report_.events, rows_, pages_) {}
    std::optional<Document> run();
    void addToContents(const QString& text, int level) { pages_.addToContents(text, level); }
    int pageNumber() const { return pages_.pageCount(); }

 private:
    // Group headers that begin with a row stay on the page of that row. Until the row has its place, they may
    // still have to move.
    struct Keep {
        PageWriter::Mark mark;  // before the headers
        double top = 0;
        size_t level = 0;  // the outermost group that begins
    };

    bool layRows();  // false: cancelled
    size_t firstChanged() const;
    void beginGroups(size_t level);
    void endGroups(size_t level);

    void put(Section& section, double top, double limit);
    void placeFixed(Section* section);
    void placeInFlow(Section& section, size_t repeated);

    bool fits(double height) const;
    void beginPage(size_t repeated);
    void endPage();
    void breakPage(size_t repeated);
    void breakPageKeeping(const Keep& kept);

    const Design report_;
    Bands bands_;
    RowPair rows_;
    PageWriter pages_;
    SectionFiller filler_;
    double y_ = 0;           // where the next section begins
    double bodyTop_ = 0;     // where it would begin on a page that holds nothing but its headers
    double bodyBottom_ = 0;  // where the page footer begins
    std::optional<Keep> keep_;
};

}  // namespace report
