#pragma once

namespace report {
class Report;
}

namespace active_report2 {

// The conditions stand one under the other; those that are not printed leave no gap. Twips, in GroupFooter1.
constexpr int kConditionsTop = 2960;
constexpr int kConditionsTopWithoutWords = 2440;
constexpr int kConditionHeight = 260;

// The sections of the document and what stands in them.
void design(report::Report& report);

}  // namespace active_report2
