#include "platform/report/bands.h"

#include <algorithm>

namespace report {

Bands::Bands(const std::vector<std::unique_ptr<Section>>& sections) {
    for (const auto& section : sections) {
        switch (section->kind()) {
            case Section::Kind::ReportHeader:
                reportHeader = section.get();
                break;
            case Section::Kind::PageHeader:
                pageHeader = section.get();
                break;
            case Section::Kind::GroupHeader:
                groupHeaders.push_back(section.get());
                break;
            case Section::Kind::Detail:
                detail = section.get();
                break;
            case Section::Kind::GroupFooter:
                groupFooters.insert(groupFooters.begin(), section.get());
                break;
            case Section::Kind::PageFooter:
                pageFooter = section.get();
                break;
            case Section::Kind::ReportFooter:
                reportFooter = section.get();
                break;
        }
    }
    const size_t levels = std::max(groupHeaders.size(), groupFooters.size());
    groupHeaders.insert(groupHeaders.begin(), levels - groupHeaders.size(), nullptr);
    groupFooters.insert(groupFooters.begin(), levels - groupFooters.size(), nullptr);
}

}  // namespace report
