#pragma once

#include <unordered_map>

#include "platform/report/page_writer.h"
#include "platform/report/report_events.h"
#include "platform/report/row_pair.h"
#include "platform/report/section_room.h"
#include "platform/report/typeface.h"

namespace report {

// Sections with the row's values in them, asked for their heights. Twips.
class SectionFiller {
 public:
    // All must live as long as this.
    SectionFiller(ReportEvents& events, RowPair& rows, PageWriter& pages)
        : events_(events), rows_(rows), pages_(pages) {}

    // The height that the section will have with this row, as far as can be told before its events.
    double arrange(Section& section);
    double settle(Section& section);  // the height that it has after them
    const SectionRoom& roomOf(const Section& section) { return rooms_[&section]; }

 private:
    void fill(Section& section);
    double heightOf(Section& section);

    ReportEvents& events_;
    RowPair& rows_;
    PageWriter& pages_;
    Typefaces faces_;
    std::unordered_map<const Section*, SectionRoom> rooms_;
};

}  // namespace report
