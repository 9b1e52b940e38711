#include "platform/report/layout.h"

#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/report/field_text.h"
#include "platform/text/order.h"

namespace report {
namespace {

constexpr double kTolerance = 0.5;  // twips
constexpr double kNoLimit = std::numeric_limits<double>::max();

double alignedLeft(Align align, double left, double width, double textWidth) {
    switch (align) {
        case Align::Right:
            return left + width - textWidth;
        case Align::Center:
            return left + (width - textWidth) / 2;
        case Align::Left:
            break;
    }
    return left;
}

// Rows come ordered without regard to case, as the engine orders them; a group must not fall apart over a
// capital letter.
bool sameGroup(const dao::Value& a, const dao::Value& b) {
    if (a == b) {
        return true;
    }
    if (!std::holds_alternative<std::string>(a.store()) || !std::holds_alternative<std::string>(b.store())) {
        return false;
    }
    return alphabet::same(a.textRef(), b.textRef());
}

}  // namespace

// --- the run
// ------------------------------------------------------------------------------------------------

std::optional<Document> Layout::run() {
    document_.title = report_.title;
    document_.width = report_.page.width;
    document_.height = report_.page.height;
    report_.events.ReportStart();
    sortSections();
    if (report_.rows) {
        report_.rows->rewind();
    }
    if (!layRows()) {
        return std::nullopt;
    }
    if (reportFooter_) {
        placeInFlow(*reportFooter_, 0);
    }
    endPage();
    numberPages();
    return std::move(document_);
}

void Layout::sortSections() {
    for (const auto& section : report_.sections) {
        switch (section->kind()) {
            case Section::Kind::ReportHeader:
                reportHeader_ = section.get();
                break;
            case Section::Kind::PageHeader:
                pageHeader_ = section.get();
                break;
            case Section::Kind::GroupHeader:
                groupHeaders_.push_back(section.get());
                if (!section->DataField.isEmpty()) {
                    columnOf(section->DataField);
                }
                break;
            case Section::Kind::Detail:
                detail_ = section.get();
                break;
            case Section::Kind::GroupFooter:
                groupFooters_.insert(groupFooters_.begin(), section.get());
                break;
            case Section::Kind::PageFooter:
                pageFooter_ = section.get();
                break;
            case Section::Kind::ReportFooter:
                reportFooter_ = section.get();
                break;
        }
        for (const auto& control : section->all()) {
            if (control->kind == Control::Kind::Field && !control->DataField.isEmpty()) {
                columnOf(control->DataField);
            }
        }
    }
    const size_t levels = std::max(groupHeaders_.size(), groupFooters_.size());
    groupHeaders_.insert(groupHeaders_.begin(), levels - groupHeaders_.size(), nullptr);
    groupFooters_.insert(groupFooters_.begin(), levels - groupFooters_.size(), nullptr);
}

bool Layout::layRows() {
    const qint64 all = report_.rows ? report_.rows->count() : 0;
    bool more = report_.rows && report_.rows->next();
    if (more) {
        readRow(current_);
    }
    beginPage(0);
    size_t begins = 0;
    for (qint64 done = 1; more; ++done) {
        beginGroups(begins);
        if (detail_) {
            placeInFlow(*detail_, groupHeaders_.size());
        }
        keep_.reset();
        if (report_.progress && !report_.progress(done, all)) {
            return false;
        }
        more = report_.rows->next();
        if (more) {
            readRow(next_);
        }
        begins = more ? firstChanged() : 0;
        endGroups(begins);
        if (more) {
            std::swap(current_, next_);
        }
    }
    return true;
}

void Layout::readRow(Row& row) {
    row.resize(columns_.size());
    for (size_t i = 0; i < columns_.size(); ++i) {
        row[i] = report_.rows->value(columns_[i]);
    }
}

size_t Layout::columnOf(const QString& field) {
    const auto known = std::find(columns_.begin(), columns_.end(), field);
    const auto column = static_cast<size_t>(known - columns_.begin());
    if (known == columns_.end()) {
        columns_.push_back(field);
    }
    return column;
}

// The outermost group that the next row does not belong to any more; the number of groups where it belongs to
// all.
size_t Layout::firstChanged() const {
    for (size_t level = 0; level < groupHeaders_.size(); ++level) {
        const Section* header = groupHeaders_[level];
        if (!header || header->DataField.isEmpty()) {
            continue;
        }
        const auto column = static_cast<size_t>(
            std::find(columns_.begin(), columns_.end(), header->DataField) - columns_.begin());
        if (column < current_.size() && column < next_.size() &&
            !sameGroup(current_[column], next_[column])) {
            return level;
        }
    }
    return groupHeaders_.size();
}

void Layout::beginGroups(size_t level) {
    if (level >= groupHeaders_.size()) {
        return;
    }
    double needed = 0;
    for (size_t i = level; i < groupHeaders_.size(); ++i) {
        needed += groupHeaders_[i] ? arrange(*groupHeaders_[i]) : 0;
    }
    needed += detail_ ? arrange(*detail_) : 0;
    if (!fits(needed)) {
        breakPage(level);
    }
    keep_ = Keep{currentPage().items.size(), document_.contents.size(), y_, level};
    for (size_t i = level; i < groupHeaders_.size(); ++i) {
        if (groupHeaders_[i]) {
            placeInFlow(*groupHeaders_[i], i);
        }
    }
}

void Layout::endGroups(size_t level) {
    for (size_t i = groupFooters_.size(); i > level; --i) {
        if (groupFooters_[i - 1]) {
            placeInFlow(*groupFooters_[i - 1], level);
        }
    }
}

// --- one section
// --------------------------------------------------------------------------------------------

void Layout::fill(Section& section) {
    for (const auto& control : section.all()) {
        if (control->kind != Control::Kind::Field || control->DataField.isEmpty()) {
            continue;
        }
        const size_t column = columnOf(control->DataField);
        // A field bound in the midst of a run joins in with this row.
        while (current_.size() <= column && report_.rows && !current_.empty()) {
            current_.push_back(report_.rows->value(columns_[current_.size()]));
        }
        control->DataValue = column < current_.size() ? current_[column] : dao::Value();
        control->Text = fieldText(control->DataValue, control->OutputFormat);
    }
}

double Layout::heightOf(Section& section) {
    return rooms_[&section].measure(section, faces_,
                                    [this](const ItemStyle& style) { return drawnStyle(style); });
}

// The height that the section will have with this row, as far as can be told before its events.
double Layout::arrange(Section& section) {
    fill(section);
    report_.events.Arrange(section);
    return heightOf(section);
}

double Layout::settle(Section& section) {
    report_.events.Format(section);
    report_.events.BeforePrint(section);
    return heightOf(section);
}

void Layout::placeFixed(Section* section) {
    if (!section) {
        return;
    }
    arrange(*section);
    const double height = settle(*section);
    emitSection(*section, y_, kNoLimit);
    y_ += height;
}

void Layout::placeInFlow(Section& section, size_t repeated) {
    if (!fits(arrange(section))) {
        breakPage(repeated);
        arrange(section);  // PageStart may have changed a format
    }
    const double height = settle(section);
    if (!fits(height)) {
        breakPage(repeated);
    }
    emitSection(section, y_, fits(height) ? kNoLimit : bodyBottom_);
    y_ = std::min(y_ + height, std::max(y_, bodyBottom_));
}

// --- pages
// --------------------------------------------------------------------------------------------------

bool Layout::fits(double height) const {
    return height <= kTolerance || y_ + height <= bodyBottom_ + kTolerance;
}

// `repeated`: so many groups, from the outermost, have rows on this page too.
void Layout::beginPage(size_t repeated) {
    document_.pages.emplace_back();
    report_.events.PageStart();
    y_ = report_.page.top;
    const double footer = pageFooter_ ? arrange(*pageFooter_) : 0;
    bodyBottom_ = report_.page.height - report_.page.bottom - footer;
    if (document_.pageCount() == 1) {
        placeFixed(reportHeader_);
    }
    const double reportHeader = y_ - report_.page.top;
    placeFixed(pageHeader_);
    for (size_t level = 0; level < std::min(repeated, groupHeaders_.size()); ++level) {
        if (groupHeaders_[level] && groupHeaders_[level]->RepeatOnPage) {
            placeFixed(groupHeaders_[level]);
        }
    }
    bodyTop_ = y_ - reportHeader;
}

void Layout::endPage() {
    if (!pageFooter_) {
        return;
    }
    arrange(*pageFooter_);
    const double height = settle(*pageFooter_);
    // A footer that has grown after the page was planned goes into the margin rather than over the rows.
    const double top = std::max(y_, static_cast<double>(report_.page.height - report_.page.bottom) - height);
    emitSection(*pageFooter_, top, kNoLimit);
}

void Layout::breakPage(size_t repeated) {
    if (y_ <= bodyTop_ + kTolerance) {
        return;  // the next page would have no more room than this one
    }
    if (keep_ && keep_->top > bodyTop_ + kTolerance) {
        breakPageKeeping();
        return;
    }
    keep_.reset();
    endPage();
    beginPage(repeated);
}

// The headers at the page's foot go along to the page of their first row.
void Layout::breakPageKeeping() {
    const Keep kept = *keep_;
    keep_.reset();
    const size_t oldPage = document_.pages.size() - 1;
    auto& from = document_.pages[oldPage].items;
    const auto first = from.begin() + static_cast<std::ptrdiff_t>(kept.items);
    std::vector<PageItem> moving(std::make_move_iterator(first), std::make_move_iterator(from.end()));
    from.erase(first, from.end());
    std::vector<ContentsEntry> entries(
        document_.contents.begin() + static_cast<std::ptrdiff_t>(kept.contents), document_.contents.end());
    document_.contents.resize(kept.contents);
    const double height = y_ - kept.top;
    y_ = kept.top;
    // The page numbers among them; the page's own footer adds its number after these.
    const size_t numbersBefore = numbers_.size();
    std::vector<ContentsEntry> pending = std::move(pending_);
    pending_.clear();
    endPage();
    beginPage(kept.level);
    pending_ = std::move(pending);

    const double down = y_ - kept.top;
    const size_t offset = currentPage().items.size();
    for (size_t i = 0; i < numbersBefore; ++i) {
        if (numbers_[i].page == oldPage && numbers_[i].item >= kept.items) {
            numbers_[i].page = document_.pages.size() - 1;
            numbers_[i].item += offset - kept.items;
        }
    }
    for (PageItem& item : moving) {
        item.place.translate(0, down);
        currentPage().items.push_back(std::move(item));
    }
    for (ContentsEntry& entry : entries) {
        entry.page = document_.pageCount();
        entry.top += down;
        document_.contents.push_back(entry);
    }
    y_ += height;
}

// --- items
// --------------------------------------------------------------------------------------------------

int Layout::drawnStyle(const ItemStyle& style) {
    ItemStyle own = style;
    // The program's own font by its name, so that a document looks the same however long it is kept open.
    if (own.family.isEmpty()) {
        own.family = QGuiApplication::font().family();
    }
    auto& styles = document_.styles;
    const auto known = std::find(styles.begin(), styles.end(), own);
    if (known != styles.end()) {
        return static_cast<int>(known - styles.begin());
    }
    styles.push_back(own);
    return static_cast<int>(styles.size()) - 1;
}

// `limit`: nothing stands below it; for a section that no page can hold.
void Layout::emitSection(Section& section, double top, double limit) {
    for (ContentsEntry& entry : pending_) {
        entry.page = document_.pageCount();
        entry.top = top;
        document_.contents.push_back(std::move(entry));
    }
    pending_.clear();
    if (!section.Visible) {
        return;
    }
    const SectionRoom& rooms = rooms_[&section];
    const auto& controls = section.all();
    for (size_t i = 0; i < controls.size(); ++i) {
        const Control& control = *controls[i];
        if (!control.Visible) {
            continue;
        }
        switch (control.kind) {
            case Control::Kind::Label:
            case Control::Kind::Field:
                emitText(control, rooms.of(i), top, limit);
                break;
            case Control::Kind::PageNumber:
                emitNumber(control, rooms.of(i), top);
                break;
            case Control::Kind::Line:
            case Control::Kind::Shape:
            case Control::Kind::Image:
                emitDrawn(control, rooms.of(i), top, limit);
                break;
        }
    }
}

void Layout::emitText(const Control& control, const ControlRoom& room, double top, double limit) {
    double y = top + room.top;
    const double height = room.lines.empty() ? 0 : room.face->lineHeight();
    for (size_t i = 0; i < room.lines.size(); ++i, y += height) {
        const BrokenLine& line = room.lines[i];
        if (y + height > limit + kTolerance) {
            if (i > 0) {
                currentPage().items.back().join = PageItem::Join::None;
            }
            return;
        }
        const double left =
            report_.page.left + alignedLeft(control.style.align, control.Left, control.Width, line.width);
        PageItem item;
        item.place = QRectF(left, y, line.width, height);
        item.text = line.text;
        item.style = room.style;
        item.join = line.join;
        currentPage().items.push_back(std::move(item));
    }
}

void Layout::emitDrawn(const Control& control, const ControlRoom& room, double top, double limit) {
    PageItem item;
    const double originX = report_.page.left;
    const double above = top + room.top;
    if (above > limit) {
        return;
    }
    const double below = std::min(top + room.bottom, limit);
    if (control.kind == Control::Kind::Image) {
        const QSizeF natural = drawings_.size(control.picture);
        if (natural.isEmpty() || below < top + room.bottom) {
            return;
        }
        const QSizeF size = natural.scaled(control.Width, control.Height, Qt::KeepAspectRatio);
        item.kind = PageItem::Kind::Image;
        item.text = control.picture;
        const double left = alignedLeft(control.style.align, control.Left, control.Width, size.width());
        item.place = QRectF(QPointF(originX + left, above), size);
    } else if (control.kind == Control::Kind::Line) {
        item.kind = PageItem::Kind::Line;
        item.place = QRectF(QPointF(originX + control.X1, above), QPointF(originX + control.X2, below));
    } else {
        item.kind = PageItem::Kind::Frame;
        item.place = QRectF(QPointF(originX + control.Left, above),
                            QPointF(originX + control.Left + control.Width, below));
    }
    ItemStyle style;
    style.color = control.lineColor;
    style.lineWidth = control.lineWidth;
    if (control.kind == Control::Kind::Shape) {
        style.fill = control.fill;
    }
    item.style = drawnStyle(style);
    currentPage().items.push_back(std::move(item));
}

void Layout::emitNumber(const Control& control, const ControlRoom& room, double top) {
    PageItem item;
    item.place = QRectF(0, top + room.top, 0, room.face->lineHeight());
    item.style = room.style;
    currentPage().items.push_back(std::move(item));
    numbers_.push_back({document_.pages.size() - 1, currentPage().items.size() - 1, control.Caption,
                        static_cast<double>(report_.page.left + control.Left),
                        static_cast<double>(control.Width), control.style.align, room.face});
}

void Layout::numberPages() {
    const QString all = QString::number(document_.pageCount());
    for (const Number& number : numbers_) {
        PageItem& item = document_.pages[number.page].items[number.item];
        QString text = number.caption;
        text.replace(QLatin1String("%1"), QString::number(number.page + 1));
        text.replace(QLatin1String("%2"), all);
        const BrokenLine line = cutLines(*number.face, text, number.width, 0).front();
        item.text = line.text;
        item.place.setWidth(line.width);
        item.place.moveLeft(alignedLeft(number.align, number.left, number.width, line.width));
    }
}

}  // namespace report
