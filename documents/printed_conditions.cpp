#include "documents/printed_conditions.h"

#include "documents/ActiveReport2_design.h"
#include "documents/report_steps.h"
#include "platform/report/report.h"

using namespace active_report2;

void PrintedConditions::show(report::Report& report, ReportSteps& step, bool belowWords) const {
    struct Row {
        const Condition& condition;
        const char* caption;
        const char* value;
    };
    const Row kRows[] = {{NacinPlacanja, "lblNacinPlacanjaTxt", "lblNacinPlacanja"},
                         {RokPlacanja, "lblRokPlacanjaTxt", "lblRokPlacanja"},
                         {RokIsporuke, "lblRokIsporukeTxt", "lblRokIsporuke"},
                         {Isporuka, "lblIsporukaTxt", "lblIsporuka"},
                         {Napomena, "lblNapomenaTxt", "lblNapomena"}};
    int top = belowWords ? kConditionsTop : kConditionsTopWithoutWords;
    for (const Row& row : kRows) {
        const bool isShown = !row.condition.caption.isEmpty() && !row.condition.value.isEmpty();
        const auto showLabel = [&](const char* name, const QString& text) {
            step([&] {
                report::Control& label = control(report, kFoot, name);
                // Also back to visible: the report outlives its documents, and a pro-forma invoice that
                // follows an invoice has its conditions again.
                label.Visible = isShown;
                if (!isShown) {
                    return;
                }
                label.Caption = text;
                label.Top = top;
            });
        };
        showLabel(row.caption, row.condition.caption);
        showLabel(row.value, row.condition.value);
        if (isShown) {
            top += kConditionHeight;
        }
    }
}

void PrintedConditions::showFooter(report::Report& report, ReportSteps& step) const {
    step([&] { control(report, kPage, "lblPecat").Caption = PecatSpor; });
    step([&] { control(report, kPage, "txtFooter").Text = Footer; });
    step([&] { control(report, kPage, "Line9").Visible = !PecatSpor.isEmpty() || !Footer.isEmpty(); });
}
