#include "platform/report/design.h"

namespace report {
namespace {

QColor colorOf(const char* name) {
    return QColor(QString::fromLatin1(name));
}

TextStyle styleOf(const Look& look) {
    TextStyle style;
    style.points = look.points;
    style.bold = look.bold;
    style.italic = look.italic;
    style.align = look.align;
    style.color = colorOf(look.color);
    return style;
}

void drawBy(const Look& look, Control& control) {
    control.lineWidth = look.lineWidth;
    control.lineColor = colorOf(look.color);
    if (look.fill) {
        control.fill = colorOf(look.fill);
    }
}

Control controlOf(const ControlDesign& row) {
    const QString text = QString::fromUtf8(row.text);
    Control control;
    control.kind = row.kind;
    control.name = QString::fromUtf8(row.name);
    control.Left = row.left;
    control.Top = row.top;
    control.Width = row.width;
    control.Height = row.height;
    control.style = styleOf(row.look);
    control.CanGrow = row.canGrow;
    switch (row.kind) {
        case Control::Kind::Label:
        case Control::Kind::PageNumber:
            control.Caption = text;
            break;
        case Control::Kind::Field:
            control.DataField = text;
            control.OutputFormat = QString::fromUtf8(row.format);
            break;
        case Control::Kind::Image:
            control.picture = text;
            break;
        case Control::Kind::Line:
            control.X1 = row.left;
            control.Y1 = row.top;
            control.X2 = row.left + row.width;
            control.Y2 = row.top + row.height;
            [[fallthrough]];
        case Control::Kind::Shape:
            drawBy(row.look, control);
            break;
    }
    return control;
}

}  // namespace

void design(Report& report, std::span<const SectionDesign> sections,
            std::span<const ControlDesign> controls) {
    for (const SectionDesign& row : sections) {
        Section& section = report.addSection(row.kind, QString::fromUtf8(row.name));
        section.Height = row.height;
        section.CanShrink = row.canShrink;
        section.RepeatOnPage = row.repeatOnPage;
        section.DataField = QString::fromUtf8(row.groupedOn);
    }
    for (const ControlDesign& row : controls) {
        report.Sections(QString::fromUtf8(row.section)).add(controlOf(row));
    }
}

}  // namespace report
