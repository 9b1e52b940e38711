#include "platform/report/layout.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace report {
namespace {

constexpr double kTolerance = 0.5;  // twips
constexpr double kNoLimit = std::numeric_limits<double>::max();

}  // namespace

// --- the run
// ------------------------------------------------------------------------------------------------

std::optional<Document> Layout::run() {
    Document& document = pages_.document();
    document.title = report_.title;
    document.width = report_.page.width;
    document.height = report_.page.height;
    report_.events.ReportStart();
    bands_ = Bands(report_.sections);
    rows_.readFieldsOf(report_.sections);
    if (report_.rows) {
        report_.rows->rewind();
    }
    if (!layRows()) {
        return std::nullopt;
    }
    if (bands_.reportFooter) {
        placeInFlow(*bands_.reportFooter, 0);
    }
    endPage();
    pages_.numberPages();
    return std::move(document);
}

bool Layout::layRows() {
    const qint64 all = rows_.count();
    bool more = rows_.begin();
    beginPage(0);
    size_t begins = 0;
    for (qint64 done = 1; more; ++done) {
        beginGroups(begins);
        if (bands_.detail) {
            placeInFlow(*bands_.detail, bands_.groupHeaders.size());
        }
        keep_.reset();
        if (report_.progress && !report_.progress(done, all)) {
            return false;
        }
        more = rows_.peek();
        begins = more ? firstChanged() : 0;
        endGroups(begins);
        if (more) {
            rows_.goOn();
        }
    }
    return true;
}

// The outermost group that the next row does not belong to any more; the number of groups where it belongs to
// all.
size_t Layout::firstChanged() const {
    for (size_t level = 0; level < bands_.groupHeaders.size(); ++level) {
        const Section* header = bands_.groupHeaders[level];
        if (header && !header->DataField.isEmpty() && rows_.differ(header->DataField)) {
            return level;
        }
    }
    return bands_.groupHeaders.size();
}

void Layout::beginGroups(size_t level) {
    if (level >= bands_.groupHeaders.size()) {
        return;
    }
    double needed = 0;
    for (size_t i = level; i < bands_.groupHeaders.size(); ++i) {
        needed += bands_.groupHeaders[i] ? filler_.arrange(*bands_.groupHeaders[i]) : 0;
    }
    needed += bands_.detail ? filler_.arrange(*bands_.detail) : 0;
    if (!fits(needed)) {
        breakPage(level);
    }
    keep_ = Keep{pages_.mark(), y_, level};
    for (size_t i = level; i < bands_.groupHeaders.size(); ++i) {
        if (bands_.groupHeaders[i]) {
            placeInFlow(*bands_.groupHeaders[i], i);
        }
    }
}

void Layout::endGroups(size_t level) {
    for (size_t i = bands_.groupFooters.size(); i > level; --i) {
        if (bands_.groupFooters[i - 1]) {
            placeInFlow(*bands_.groupFooters[i - 1], level);
        }
    }
}

// --- one section
// --------------------------------------------------------------------------------------------

void Layout::put(Section& section, double top, double limit) {
    pages_.put(section, filler_.roomOf(section), top, limit);
}

void Layout::placeFixed(Section* section) {
    if (!section) {
        return;
    }
    filler_.arrange(*section);
    const double height = filler_.settle(*section);
    put(*section, y_, kNoLimit);
    y_ += height;
}

void Layout::placeInFlow(Section& section, size_t repeated) {
    if (!fits(filler_.arrange(section))) {
        breakPage(repeated);
        filler_.arrange(section);  // PageStart may have changed a format
    }
    const double height = filler_.settle(section);
    if (!fits(height)) {
        breakPage(repeated);
    }
    put(section, y_, fits(height) ? kNoLimit : bodyBottom_);
    y_ = std::min(y_ + height, std::max(y_, bodyBottom_));
}

// --- pages
// --------------------------------------------------------------------------------------------------

bool Layout::fits(double height) const {
    return height <= kTolerance || y_ + height <= bodyBottom_ + kTolerance;
}

// `repeated`: so many groups, from the outermost, have rows on this page too.
void Layout::beginPage(size_t repeated) {
    pages_.newPage();
    report_.events.PageStart();
    y_ = report_.page.top;
    const double footer = bands_.pageFooter ? filler_.arrange(*bands_.pageFooter) : 0;
    bodyBottom_ = report_.page.height - report_.page.bottom - footer;
    if (pages_.pageCount() == 1) {
        placeFixed(bands_.reportHeader);
    }
    const double reportHeader = y_ - report_.page.top;
    placeFixed(bands_.pageHeader);
    for (size_t level = 0; level < std::min(repeated, bands_.groupHeaders.size()); ++level) {
        if (bands_.groupHeaders[level] && bands_.groupHeaders[level]->RepeatOnPage) {
            placeFixed(bands_.groupHeaders[level]);
        }
    }
    bodyTop_ = y_ - reportHeader;
}

void Layout::endPage() {
    if (!bands_.pageFooter) {
        return;
    }
    filler_.arrange(*bands_.pageFooter);
    const double height = filler_.settle(*bands_.pageFooter);
    // A footer that has grown after the page was planned goes into the margin rather than over the rows.
    const double top = std::max(y_, static_cast<double>(report_.page.height - report_.page.bottom) - height);
    put(*bands_.pageFooter, top, kNoLimit);
}

void Layout::breakPage(size_t repeated) {
    if (y_ <= bodyTop_ + kTolerance) {
        return;  // the next page would have no more room than this one
    }
    const std::optional<Keep> kept = std::exchange(keep_, std::nullopt);
    if (kept && kept->top > bodyTop_ + kTolerance) {
        breakPageKeeping(*kept);
        return;
    }
    endPage();
    beginPage(repeated);
}

// The headers at the page's foot go along to the page of their first row.
void Layout::breakPageKeeping(const Keep& kept) {
    PageWriter::Lifted lifted = pages_.lift(kept.mark);
    const double height = y_ - kept.top;
    y_ = kept.top;
    endPage();
    beginPage(kept.level);
    pages_.lay(std::move(lifted), y_ - kept.top);
    y_ += height;
}

}  // namespace report
