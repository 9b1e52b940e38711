#include "platform/report/section_room.h"

#include <algorithm>

namespace report {
namespace {

bool holdsText(const Control& control) {
    return control.kind == Control::Kind::Label || control.kind == Control::Kind::Field ||
           control.kind == Control::Kind::PageNumber;
}

const QString& shownText(const Control& control) {
    return control.kind == Control::Kind::Field ? control.Text : control.Caption;
}

bool mayGrow(const Control& control) {
    return control.CanGrow && (control.kind == Control::Kind::Label || control.kind == Control::Kind::Field);
}

bool sideBySide(const Control& a, const Control& b) {
    return a.Left < b.Left + b.Width && b.Left < a.Left + a.Width;
}

}  // namespace

void SectionRoom::breakText(const Control& control, ControlRoom& room, Typefaces& faces,
                            const StyleOf& styleOf) {
    const QString& text = shownText(control);
    const bool restyled = room.style < 0 || !(room.textStyle == control.style);
    if (!restyled && room.width == control.Width && room.height == control.Height &&
        room.canGrow == control.CanGrow && room.text == text) {
        return;
    }
    if (restyled) {
        ItemStyle style;
        style.family = control.style.family;
        style.points = control.style.points;
        style.bold = control.style.bold;
        style.italic = control.style.italic;
        style.color = control.style.color;
        room.style = styleOf(style);
        room.face = &faces.of(style);
        room.textStyle = control.style;
    }
    room.text = text;
    room.width = control.Width;
    room.height = control.Height;
    room.canGrow = control.CanGrow;
    if (control.kind == Control::Kind::PageNumber || text.isEmpty()) {
        room.lines.clear();
    } else if (mayGrow(control)) {
        room.lines = breakLines(*room.face, text, control.Width);
    } else {
        room.lines = cutLines(*room.face, text, control.Width, control.Height);
    }
}

double SectionRoom::moved(double edge) const {
    double by = 0;
    for (const Growth& growth : growths_) {
        if (growth.edge <= edge) {
            by = std::max(by, growth.by);
        }
    }
    return edge + by;
}

// The lower edge of a frame: it goes down with a text that grows inside it, not with one beside it.
double SectionRoom::movedFrame(const Control& shape) const {
    const double edge = shape.Top + shape.Height;
    double by = 0;
    for (const Growth& growth : growths_) {
        if (growth.edge <= shape.Top || (growth.edge <= edge && sideBySide(*growth.control, shape))) {
            by = std::max(by, growth.by);
        }
    }
    return edge + by;
}

// From the top downwards, so that a text that has moved hands its own growth on together with what moved it.
void SectionRoom::grow(Section& section) {
    growths_.clear();
    const auto& controls = section.all();
    for (size_t i = 0; i < controls.size(); ++i) {
        const Control& control = *controls[i];
        if (!control.Visible || !mayGrow(control) || rooms_[i].lines.empty()) {
            continue;
        }
        const double needed = static_cast<double>(rooms_[i].lines.size()) * rooms_[i].face->lineHeight();
        if (needed > control.Height + 0.5) {
            growths_.push_back(
                {&control, static_cast<double>(control.Top) + control.Height, needed - control.Height});
        }
    }
    std::stable_sort(growths_.begin(), growths_.end(),
                     [](const Growth& a, const Growth& b) { return a.control->Top < b.control->Top; });
    for (size_t i = 0; i < growths_.size(); ++i) {
        double above = 0;
        for (size_t j = 0; j < i; ++j) {
            if (growths_[j].edge <= growths_[i].control->Top) {
                above = std::max(above, growths_[j].by);
            }
        }
        growths_[i].by += above;
    }
}

double SectionRoom::measure(Section& section, Typefaces& faces, const StyleOf& styleOf) {
    const auto& controls = section.all();
    rooms_.resize(controls.size());
    if (!section.Visible) {
        return 0;
    }
    for (size_t i = 0; i < controls.size(); ++i) {
        if (controls[i]->Visible && holdsText(*controls[i])) {
            breakText(*controls[i], rooms_[i], faces, styleOf);
        }
    }
    grow(section);
    double lowest = 0;
    for (size_t i = 0; i < controls.size(); ++i) {
        const Control& control = *controls[i];
        ControlRoom& room = rooms_[i];
        if (!control.Visible) {
            continue;
        }
        if (control.kind == Control::Kind::Line) {
            room.top = moved(control.Y1);
            room.bottom = moved(control.Y2);
        } else {
            room.top = moved(control.Top);
            room.bottom =
                control.kind == Control::Kind::Shape ? movedFrame(control) : room.top + control.Height;
            if (mayGrow(control) && !room.lines.empty()) {
                room.bottom = std::max(
                    room.bottom, room.top + static_cast<double>(room.lines.size()) * room.face->lineHeight());
            }
        }
        lowest = std::max({lowest, room.top, room.bottom});
    }
    return section.CanShrink ? lowest : std::max(lowest, static_cast<double>(section.Height));
}

}  // namespace report
