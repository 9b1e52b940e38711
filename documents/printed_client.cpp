#include "documents/printed_client.h"

#include <algorithm>
#include <cmath>

#include "documents/ActiveReport2_design.h"
#include "documents/report_steps.h"
#include "platform/report/report.h"
#include "platform/report/typeface.h"

using namespace active_report2;

namespace {

// In the twips that its text takes, of the width that it has.
int heightOf(const report::Control& label) {
    report::ItemStyle style;
    style.family = label.style.family;
    style.points = label.style.points;
    style.bold = label.style.bold;
    const report::Typeface face(style);
    const auto lines = static_cast<int>(report::breakLines(face, label.Caption, label.Width).size());
    return std::max(kClientLine, static_cast<int>(std::ceil(lines * face.lineHeight())));
}

// The labels under each other. Where the last of them ends, and the gap behind it.
int placeLabels(report::Report& report) {
    int top = kClientTop;
    for (const char* name :
         {"lblKupacIme", "lblKupacAdresa", "lblKupacGrad", "lblKupacPIB", "lblKupacOstalo"}) {
        report::Control* label = nullptr;
        platform::Trap missing;  // the step that fills the label has told it already
        missing([&] { label = &control(report, kHead, name); });
        if (!label) {
            continue;
        }
        label->Top = top;
        if (label->Caption.isEmpty()) {
            continue;
        }
        label->Height = heightOf(*label);
        top += label->Height + (top == kClientTop ? kNameGap : kClientGap);
    }
    return top;
}

// A long address is the client's own: it is written out, however many lines it takes, and never pushes the
// number of the document beside it out of its place.
void place(report::Report& report) {
    const int end = placeLabels(report);
    report::Control& box = control(report, kHead, "Shape1");
    box.Height = std::max(kBoxHeight, end + (kClientTop - kBoxTop) - kBoxTop);
    const int down = box.Height - kBoxHeight;
    report::Control& rule = control(report, kHead, "Line1");
    rule.Y1 = rule.Y2 = kHeadRule + down;
    report.Sections(QLatin1String(kHead)).Height = kHeadEnd + down;
}

}  // namespace

void PrintedClient::show(report::Report& report, ReportSteps& step) {
    step([&] { control(report, kHead, "lblKupacIme").Caption = Naziv; });
    step([&] { control(report, kHead, "lblKupacAdresa").Caption = Adresa; });
    step([&] { control(report, kHead, "lblKupacGrad").Caption = Grad; });
    // Once more on each page; the head of the document, where it stands, has only the first.
    if (!PIB.isEmpty()) {
        PIB.prepend(QStringLiteral("PIB: "));
    }
    step([&] { control(report, kHead, "lblKupacPIB").Caption = PIB; });
    step([&] { control(report, kHead, "lblKupacOstalo").Caption = Ostalo; });
    if (report.pageNumber() <= 1) {  // the head of the document stands on its first page only
        step([&] { place(report); });
    }
}
