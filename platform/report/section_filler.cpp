#include "platform/report/section_filler.h"

#include "platform/report/field_text.h"

namespace report {

void SectionFiller::fill(Section& section) {
    for (const auto& control : section.all()) {
        if (control->kind != Control::Kind::Field || control->DataField.isEmpty()) {
            continue;
        }
        control->DataValue = rows_.value(control->DataField);
        control->Text = fieldText(control->DataValue, control->OutputFormat);
    }
}

double SectionFiller::heightOf(Section& section) {
    return rooms_[&section].measure(section, faces_,
                                    [this](const ItemStyle& style) { return pages_.styleNumber(style); });
}

double SectionFiller::arrange(Section& section) {
    fill(section);
    events_.Arrange(section);
    return heightOf(section);
}

double SectionFiller::settle(Section& section) {
    events_.Format(section);
    events_.BeforePrint(section);
    return heightOf(section);
}

}  // namespace report
