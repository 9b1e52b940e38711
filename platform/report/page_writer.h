#pragma once

#include <vector>

#include "platform/report/document.h"
#include "platform/report/drawings.h"
#include "platform/report/report_events.h"
#include "platform/report/section.h"
#include "platform/report/section_room.h"

namespace report {

// The pages of a report as far as they are written: the sections' texts, lines and pictures at their places,
// the contents, and the page numbers, whose texts wait for the number of pages. Lengths in twips from the top
// of the sheet.
class PageWriter {
 public:
    // How far the last page has come.
    struct Mark {
        size_t items = 0, contents = 0;
    };
    // What was taken off the last page, to go to another.
    struct Lifted {
        Mark mark;
        size_t page = 0, numbers = 0;
        std::vector<PageItem> items;
        std::vector<ContentsEntry> contents, pending;
    };

    explicit PageWriter(const PageSetup& page) : page_(page) {}  // which must live as long as this

    Document& document() { return document_; }
    int pageCount() const { return document_.pageCount(); }
    void newPage() { document_.pages.emplace_back(); }
    int styleNumber(const ItemStyle& style);  // its place in Document::styles
    // Points at the section that is put next.
    void addToContents(const QString& text, int level) { pending_.push_back({text, level, 0, 0}); }
    // `limit`: nothing stands below it; for a section that no page can hold.
    void put(Section& section, const SectionRoom& rooms, double top, double limit);

    Mark mark() const { return {document_.pages.back().items.size(), document_.contents.size()}; }
    Lifted lift(const Mark& mark);         // what stands behind it on the last page
    void lay(Lifted lifted, double down);  // on the page that is the last one now, further down by that
    void numberPages();

 private:
    struct Number {
        size_t page, item;
        QString caption;
        double left, width;
        Align align;
        const Typeface* face;
    };
    void putText(const Control& control, const ControlRoom& room, double top, double limit);
    void putDrawn(const Control& control, const ControlRoom& room, double top, double limit);
    void putNumber(const Control& control, const ControlRoom& room, double top);
    Page& currentPage() { return document_.pages.back(); }

    const PageSetup& page_;
    Document document_;
    Drawings drawings_;
    std::vector<ContentsEntry> pending_;
    std::vector<Number> numbers_;
};

}  // namespace report
