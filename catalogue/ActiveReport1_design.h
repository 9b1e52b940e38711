#pragma once

namespace report {
class Report;
}

namespace active_report1 {

// The sections of the price list and what stands in them.
void design(report::Report& report);

}  // namespace active_report1
