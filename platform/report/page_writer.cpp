#include "platform/report/page_writer.h"

#include <QGuiApplication>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace report {
namespace {

constexpr double kTolerance = 0.5;  // twips

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

}  // namespace

int PageWriter::styleNumber(const ItemStyle& style) {
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

void PageWriter::put(Section& section, const SectionRoom& rooms, double top, double limit) {
    for (ContentsEntry& entry : pending_) {
        entry.page = document_.pageCount();
        entry.top = top;
        document_.contents.push_back(std::move(entry));
    }
    pending_.clear();
    if (!section.Visible) {
        return;
    }
    const auto& controls = section.all();
    for (size_t i = 0; i < controls.size(); ++i) {
        const Control& control = *controls[i];
        if (!control.Visible) {
            continue;
        }
        switch (control.kind) {
            case Control::Kind::Label:
            case Control::Kind::Field:
                putText(control, rooms.of(i), top, limit);
                break;
            case Control::Kind::PageNumber:
                putNumber(control, rooms.of(i), top);
                break;
            case Control::Kind::Line:
            case Control::Kind::Shape:
            case Control::Kind::Image:
                putDrawn(control, rooms.of(i), top, limit);
                break;
        }
    }
}

void PageWriter::putText(const Control& control, const ControlRoom& room, double top, double limit) {
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
            page_.left + alignedLeft(control.style.align, control.Left, control.Width, line.width);
        PageItem item;
        item.place = QRectF(left, y, line.width, height);
        item.text = line.text;
        item.style = room.style;
        item.join = line.join;
        currentPage().items.push_back(std::move(item));
    }
}

void PageWriter::putDrawn(const Control& control, const ControlRoom& room, double top, double limit) {
    PageItem item;
    const double originX = page_.left;
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
    item.style = styleNumber(style);
    currentPage().items.push_back(std::move(item));
}

void PageWriter::putNumber(const Control& control, const ControlRoom& room, double top) {
    PageItem item;
    item.place = QRectF(0, top + room.top, 0, room.face->lineHeight());
    item.style = room.style;
    currentPage().items.push_back(std::move(item));
    numbers_.push_back({document_.pages.size() - 1, currentPage().items.size() - 1, control.Caption,
                        static_cast<double>(page_.left + control.Left), static_cast<double>(control.Width),
                        control.style.align, room.face});
}

PageWriter::Lifted PageWriter::lift(const Mark& mark) {
    Lifted lifted;
    lifted.mark = mark;
    lifted.page = document_.pages.size() - 1;
    lifted.numbers = numbers_.size();
    auto& from = currentPage().items;
    const auto first = from.begin() + static_cast<std::ptrdiff_t>(mark.items);
    lifted.items.assign(std::make_move_iterator(first), std::make_move_iterator(from.end()));
    from.erase(first, from.end());
    lifted.contents.assign(document_.contents.begin() + static_cast<std::ptrdiff_t>(mark.contents),
                           document_.contents.end());
    document_.contents.resize(mark.contents);
    lifted.pending = std::move(pending_);
    pending_.clear();
    return lifted;
}

void PageWriter::lay(Lifted lifted, double down) {
    pending_ = std::move(lifted.pending);
    // The page numbers among them; the page's own footer has added its number after these.
    const size_t offset = currentPage().items.size();
    for (size_t i = 0; i < lifted.numbers; ++i) {
        if (numbers_[i].page == lifted.page && numbers_[i].item >= lifted.mark.items) {
            numbers_[i].page = document_.pages.size() - 1;
            numbers_[i].item += offset - lifted.mark.items;
        }
    }
    for (PageItem& item : lifted.items) {
        item.place.translate(0, down);
        currentPage().items.push_back(std::move(item));
    }
    for (ContentsEntry& entry : lifted.contents) {
        entry.page = document_.pageCount();
        entry.top += down;
        document_.contents.push_back(entry);
    }
}

void PageWriter::numberPages() {
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
