#pragma once

#include <span>

#include "platform/report/report.h"

// A report as tables: its sections, and what stands in each of them. A banded report is one such design and
// one query; a class of its own is needed only where something is to happen while it runs.
//
// Lengths in twips. The tables are read once, when the report is designed; texts are UTF-8.
namespace report {

// Between the margins of a page that nobody has set up otherwise.
constexpr int kPaperWidth = PageSetup{}.width - PageSetup{}.left - PageSetup{}.right;

// The inks of the shop's papers.
constexpr char kInk[] = "#22303f";
constexpr char kFaint[] = "#5b6875";
constexpr char kAccent[] = "#2f6fb5";
constexpr char kRule[] = "#8a96a3";

// How texts of one sort look, or lines and frames; nullptr: a frame that nothing fills.
struct Look {
    double points = 9;
    Align align = Align::Left;
    const char* color = kInk;
    bool bold = false, italic = false;
    int lineWidth = 15;
    const char* fill = nullptr;
};

struct SectionDesign {
    Section::Kind kind;
    const char* name;
    int height = 0;
    const char* groupedOn = "";  // GroupHeader: the field whose change begins a group
    bool canShrink = false, repeatOnPage = false;
};

struct ControlDesign {
    const char* section;
    Control::Kind kind;
    const char* name;
    // A line runs from the left top corner on by width and height.
    int left, top, width, height;
    Look look = {};
    // Of a field the row's field, of a picture the drawing's name, of all else the caption.
    const char* text = "";
    bool canGrow = false;
    const char* format = "";  // of a field: its OutputFormat
};

// Builds the sections of `report`, and in them the controls, in the order of the tables. RunError 457 for a
// name that is there already, 35601 for a control whose section is none of these.
void design(Report& report, std::span<const SectionDesign> sections, std::span<const ControlDesign> controls);

}  // namespace report
