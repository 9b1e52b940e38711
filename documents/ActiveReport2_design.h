#pragma once

namespace report {
struct Control;
class Report;
}  // namespace report

namespace active_report2 {

// The sections that are filled by name.
inline constexpr char kHead[] = "ReportHeader";
inline constexpr char kTitles[] = "GroupHeader1";
inline constexpr char kDetail[] = "Detail";
inline constexpr char kFoot[] = "GroupFooter1";
inline constexpr char kPage[] = "PageFooter";

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

// RunError 35601 where there is none of that name.
report::Control& control(report::Report& report, const char* section, const char* name);

}  // namespace active_report2
