#pragma once

#include <functional>
#include <vector>

#include "platform/report/section.h"
#include "platform/report/typeface.h"

namespace report {

// Where a control stands in its section once the texts above it have grown. Twips from the section's top.
struct ControlRoom {
    double top = 0, bottom = 0;  // Line: the places of its two ends
    std::vector<BrokenLine> lines;
    int style = -1;  // into Document::styles
    const Typeface* face = nullptr;

    // What the lines were broken for; the same again need not be broken again.
    QString text;
    TextStyle textStyle;
    int width = -1, height = -1;
    bool canGrow = false;
};

// The room that a section's controls take, with the texts they hold at the moment.
class SectionRoom {
 public:
    // Gives the place of a style in Document::styles.
    using StyleOf = std::function<int(const ItemStyle&)>;
    // The height of the section. 0 where it is not visible.
    double measure(Section& section, Typefaces& faces, const StyleOf& styleOf);
    const ControlRoom& of(size_t control) const { return rooms_[control]; }

 private:
    struct Growth {
        const Control* control;
        double edge;  // the bottom edge in the design
        double by;    // how far everything under that edge moves down
    };
    void breakText(const Control& control, ControlRoom& room, Typefaces& faces, const StyleOf& styleOf);
    double moved(double edge) const;
    double movedFrame(const Control& shape) const;
    void grow(Section& section);
    std::vector<ControlRoom> rooms_;
    std::vector<Growth> growths_;
};

}  // namespace report
