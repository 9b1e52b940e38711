#include "catalogue/ActiveReport1_design.h"

#include "platform/report/design.h"

// A4 with margins of a centimetre and a half. Lengths in twips.
namespace active_report1 {
namespace {

using report::Align;
using report::Control;
using report::ControlDesign;
using report::kFaint;
using report::kPaperWidth;
using report::Look;
using report::Section;
using report::SectionDesign;

constexpr Look kHead{.points = 12, .bold = true};
constexpr Look kGroupName{.points = 11, .color = report::kAccent, .bold = true};
constexpr Look kMaker{.points = 8.5, .color = kFaint};
constexpr Look kCell{.points = 8.5};
constexpr Look kPrice{.points = 8.5, .align = Align::Right};
constexpr Look kFoot{.points = 8, .color = kFaint};
constexpr Look kPage{.points = 8, .align = Align::Right, .color = kFaint};
constexpr Look kHairline{.color = report::kRule, .lineWidth = 8};

constexpr SectionDesign kSections[] = {
    {Section::Kind::PageHeader, "PageHeader", 0, "", true},
    {Section::Kind::GroupHeader, "GroupHeader1", 490, "Grupa"},
    {Section::Kind::Detail, "Detail", 280},
    {Section::Kind::GroupFooter, "GroupFooter1"},
    {Section::Kind::PageFooter, "PageFooter", 360},
};

constexpr auto kLabel = Control::Kind::Label;
constexpr auto kField = Control::Kind::Field;
constexpr auto kLine = Control::Kind::Line;
constexpr auto kNumber = Control::Kind::PageNumber;

constexpr int kWide = 9000;
constexpr int kPriceLeft = 8780;

// What cannot stand in its width goes on below: a name or a price cut off on a price list makes trouble at
// the counter.
constexpr ControlDesign kControls[] = {
    {"PageHeader", kLabel, "lblHeader", 0, 0, kWide, 400, kHead, "", true},

    {"GroupHeader1", kField, "txtGrupa", 0, 160, kPaperWidth, 290, kGroupName, "Grupa", true},

    {"Detail", kField, "Field1", 0, 30, 1580, 220, kMaker, "Proizvodjac", true},
    {"Detail", kField, "Field2", 1680, 30, 3300, 220, kCell, "Naziv", true},
    {"Detail", kField, "Field3", 5100, 30, 3590, 220, kCell, "Opis", true},
    {"Detail", kField, "txtCena", kPriceLeft, 30, kPaperWidth - kPriceLeft, 220, kPrice, "Cena1", true},
    {"Detail", kLine, "Line1", 0, 270, kPaperWidth, 0, kHairline},

    {"PageFooter", kLine, "Line2", 0, 60, kPaperWidth, 0, kHairline},
    {"PageFooter", kField, "txtFooter", 0, 120, kWide, 230, kFoot, "", true},
    {"PageFooter", kNumber, "Field4", kWide, 120, kPaperWidth - kWide, 230, kPage, "%1 / %2"},
};

}  // namespace

void design(report::Report& report) {
    report::design(report, kSections, kControls);
}

}  // namespace active_report1
