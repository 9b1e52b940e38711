#pragma once

#include <memory>
#include <vector>

#include "platform/report/section.h"

namespace report {

// The sections of a report by their place on paper; nullptr for one that it does not have.
struct Bands {
    Bands() = default;
    explicit Bands(const std::vector<std::unique_ptr<Section>>& sections);

    Section* reportHeader = nullptr;
    Section* pageHeader = nullptr;
    Section* detail = nullptr;
    Section* pageFooter = nullptr;
    Section* reportFooter = nullptr;
    // From the outermost inwards, as many of one as of the other; nullptr where a group has none.
    std::vector<Section*> groupHeaders;
    std::vector<Section*> groupFooters;
};

}  // namespace report
