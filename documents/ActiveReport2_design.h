#pragma once

namespace report {
class Report;
}

namespace active_report2 {

// The conditions stand one under the other; those that are not printed leave no gap. Twips, in GroupFooter1.
constexpr int kConditionsTop = 2960;
constexpr int kConditionsTopWithoutWords = 2440;
constexpr int kConditionHeight = 260;

// The client's box in ReportHeader holds five lines; a name or an address that takes more makes it higher,
// and the rule and the section's end go down with it. The number and the date beside it stay where they are.
constexpr int kBoxTop = 1720, kBoxHeight = 1780;
constexpr int kClientTop = 1810, kClientLine = 250, kNameGap = 40, kClientGap = 10;
constexpr int kHeadRule = 3720, kHeadEnd = 3725;

// The sections of the document and what stands in them.
void design(report::Report& report);

}  // namespace active_report2
