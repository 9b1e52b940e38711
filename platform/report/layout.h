#pragma once

#include <QList>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/dao/value.h"
#include "platform/report/document.h"
#include "platform/report/drawings.h"
#include "platform/report/report_events.h"
#include "platform/report/rows.h"
#include "platform/report/section.h"
#include "platform/report/section_room.h"
#include "platform/report/typeface.h"

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
    explicit Layout(const Design& design) : report_(design) {}
    std::optional<Document> run();
    void addToContents(const QString& text, int level) { pending_.push_back({text, level, 0, 0}); }
    int pageNumber() const { return document_.pageCount(); }

 private:
    using Row = std::vector<dao::Value>;
    // Group headers that begin with a row stay on the page of that row. Until the row has its place, they may
    // still have to move.
    struct Keep {
        size_t items = 0, contents = 0;  // of the page and the document, before the headers
        double top = 0;
        size_t level = 0;  // the outermost group that begins
    };
    // A page number, whose text waits for the number of pages.
    struct Number {
        size_t page, item;
        QString caption;
        double left, width;
        Align align;
        const Typeface* face;
    };

    void sortSections();
    void readRow(Row& row);
    size_t columnOf(const QString& field);
    size_t firstChanged() const;
    bool layRows();  // false: cancelled
    void beginGroups(size_t level);
    void endGroups(size_t level);

    void fill(Section& section);
    double arrange(Section& section);
    double settle(Section& section);
    double heightOf(Section& section);
    void placeFixed(Section* section);
    void placeInFlow(Section& section, size_t repeated);

    bool fits(double height) const;
    void beginPage(size_t repeated);
    void endPage();
    void breakPage(size_t repeated);
    void breakPageKeeping();

    void emitSection(Section& section, double top, double limit);
    void emitText(const Control& control, const ControlRoom& room, double top, double limit);
    void emitDrawn(const Control& control, const ControlRoom& room, double top, double limit);
    void emitNumber(const Control& control, const ControlRoom& room, double top);
    int drawnStyle(const ItemStyle& style);
    void numberPages();
    Page& currentPage() { return document_.pages.back(); }

    const Design report_;
    Document document_;
    Typefaces faces_;
    Drawings drawings_;
    std::unordered_map<const Section*, SectionRoom> rooms_;

    Section* reportHeader_ = nullptr;
    Section* pageHeader_ = nullptr;
    Section* detail_ = nullptr;
    Section* pageFooter_ = nullptr;
    Section* reportFooter_ = nullptr;
    std::vector<Section*> groupHeaders_;  // from the outermost inwards
    std::vector<Section*> groupFooters_;  // likewise, nullptr where a group has none

    std::vector<QString> columns_;
    Row current_, next_;
    double y_ = 0;           // where the next section begins
    double bodyTop_ = 0;     // where it would begin on a page that holds nothing but its headers
    double bodyBottom_ = 0;  // where the page footer begins
    std::optional<Keep> keep_;
    std::vector<ContentsEntry> pending_;
    std::vector<Number> numbers_;
};

}  // namespace report
