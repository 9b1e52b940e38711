#include "documents/printed_firm.h"

#include "documents/ActiveReport2_design.h"
#include "documents/report_steps.h"
#include "platform/report/report.h"

using namespace active_report2;

void PrintedFirm::show(report::Report& report, ReportSteps& step) const {
    struct Label {
        const char* name;
        const QString& text;
    };
    const Label kLabels[] = {{"lblFrmMatBr", MatBr}, {"lblFrmRegBr", RegBr}, {"lblFrmSifDel", SifraDel},
                             {"lblFrmPIB", PIB},     {"lblFrmPDV", PDV},     {"lblFrmRacunBr", RacunBr}};
    for (const Label& label : kLabels) {
        step([&] { control(report, kHead, label.name).Caption = label.text; });
        step([&] { control(report, kHead, label.name).Visible = !label.text.isEmpty(); });
    }
}
