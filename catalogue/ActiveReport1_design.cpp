#include "catalogue/ActiveReport1_design.h"

#include <QColor>
#include <QLatin1String>

#include "platform/report/report.h"

// A4 with margins of a centimetre and a half. Lengths in twips.
namespace active_report1 {
namespace {

using report::Align;
using report::Control;
using report::Section;

constexpr char kInk[] = "#22303f";
constexpr char kFaint[] = "#5b6875";
constexpr char kGroup[] = "#2f6fb5";

struct Look {
    double points;
    bool bold;
    Align align;
    const char* color;
};
constexpr Look kNone{9, false, Align::Left, kInk};
constexpr Look kHead{12, true, Align::Left, kInk};
constexpr Look kGroupName{11, true, Align::Left, kGroup};
constexpr Look kMaker{8.5, false, Align::Left, kFaint};
constexpr Look kName{8.5, false, Align::Left, kInk};
constexpr Look kCell{8.5, false, Align::Left, kInk};
constexpr Look kPrice{8.5, false, Align::Right, kInk};
constexpr Look kFoot{8, false, Align::Left, kFaint};
constexpr Look kPage{8, false, Align::Right, kFaint};

struct SectionRow {
    Section::Kind kind;
    const char* name;
    int height;
    const char* groupedOn;
};
constexpr SectionRow kSections[] = {
    {Section::Kind::PageHeader, "PageHeader", 0, ""},
    {Section::Kind::GroupHeader, "GroupHeader1", 490, "Grupa"},
    {Section::Kind::Detail, "Detail", 280, ""},
    {Section::Kind::GroupFooter, "GroupFooter1", 0, ""},
    {Section::Kind::PageFooter, "PageFooter", 360, ""},
};

constexpr auto kLabel = Control::Kind::Label;
constexpr auto kField = Control::Kind::Field;
constexpr auto kLine = Control::Kind::Line;
constexpr auto kNumber = Control::Kind::PageNumber;

// `text`: the row's field of a field, the caption of the page's number. A line runs along its top. What
// cannot stand in its width goes on below: a name or a price cut off on a price list makes trouble at the
// counter.
struct ControlRow {
    const char* section;
    Control::Kind kind;
    const char* name;
    int left, top, width, height;
    Look look;
    const char* text;
};

constexpr int kPaper = 10206;  // between the margins
constexpr int kWide = 9000;
constexpr int kPriceLeft = 8780;

constexpr ControlRow kControls[] = {
    {"PageHeader", kLabel, "lblHeader", 0, 0, kWide, 400, kHead, ""},

    {"GroupHeader1", kField, "txtGrupa", 0, 160, kPaper, 290, kGroupName, "Grupa"},

    {"Detail", kField, "Field1", 0, 30, 1580, 220, kMaker, "Proizvodjac"},
    {"Detail", kField, "Field2", 1680, 30, 3300, 220, kName, "Naziv"},
    {"Detail", kField, "Field3", 5100, 30, 3590, 220, kCell, "Opis"},
    {"Detail", kField, "txtCena", kPriceLeft, 30, kPaper - kPriceLeft, 220, kPrice, "Cena1"},
    {"Detail", kLine, "Line1", 0, 270, kPaper, 0, kNone, ""},

    {"PageFooter", kLine, "Line2", 0, 60, kPaper, 0, kNone, ""},
    {"PageFooter", kField, "txtFooter", 0, 120, kWide, 230, kFoot, ""},
    {"PageFooter", kNumber, "Field4", kWide, 120, kPaper - kWide, 230, kPage, "%1 / %2"},
};

Control controlOf(const ControlRow& row) {
    Control control;
    control.kind = row.kind;
    control.name = QLatin1String(row.name);
    control.Left = row.left;
    control.Top = row.top;
    control.Width = row.width;
    control.Height = row.height;
    control.style.points = row.look.points;
    control.style.bold = row.look.bold;
    control.style.align = row.look.align;
    control.style.color = QColor(QLatin1String(row.look.color));
    control.CanGrow = row.kind == kLabel || row.kind == kField;
    control.X1 = row.left;
    control.X2 = row.left + row.width;
    control.Y1 = control.Y2 = row.top;
    control.lineWidth = 8;
    control.lineColor = QColor(QLatin1String("#8a96a3"));
    if (row.kind == kField)
        control.DataField = QLatin1String(row.text);
    else
        control.Caption = QLatin1String(row.text);
    return control;
}

}  // namespace

void design(report::Report& report) {
    for (const SectionRow& row : kSections) {
        Section& section = report.addSection(row.kind, QLatin1String(row.name));
        section.Height = row.height;
        section.CanShrink = row.kind == Section::Kind::PageHeader;
        section.DataField = QLatin1String(row.groupedOn);
    }
    for (const ControlRow& row : kControls)
        report.Sections(QLatin1String(row.section)).add(controlOf(row));
}

}  // namespace active_report1
