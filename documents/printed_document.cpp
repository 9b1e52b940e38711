#include "documents/printed_document.h"

#include "documents/ActiveReport2_design.h"
#include "documents/report_steps.h"
#include "platform/report/report.h"
#include "platform/system/dates.h"

using namespace active_report2;

namespace {

const QString kSignature = QStringLiteral("\n\n_________________________");

}  // namespace

void PrintedDocument::setTip(qint32 type) {
    type_ = type;
    updateTitle();
}

void PrintedDocument::setBroj(const QString& number) {
    number_ = number;
    updateTitle();
}

void PrintedDocument::updateTitle() {
    report_.title = (type_ != 0 ? QStringLiteral("Racun ") : QStringLiteral("Predracun ")) + number_;
}

void PrintedDocument::show(ReportSteps& step) const {
    const bool invoice = type_ != 0;
    step([&] {
        control(report_, kHead, "lblPredRacun").Caption =
            invoice ? QStringLiteral("Racun") : QStringLiteral("PREDRACUN");
    });
    step([&] { control(report_, kHead, "lblOtpremnica").Visible = invoice; });
    step([&] {
        control(report_, kHead, "lblDatumDokumenta").Caption =
            QStringLiteral("U Smederevu, ") + platform::formatShortDate(date_) + QLatin1Char('.');
    });
    step([&] { control(report_, kHead, "lblBrojDokumenta").Caption = QStringLiteral("Br. ") + number_; });
}

void PrintedDocument::showSignatures(ReportSteps& step) const {
    struct Caption {
        const char* name;
        QString text;
    };
    const Caption kSignatures[] = {
        {"lblRobuIzdao", QStringLiteral("Robu izdao:") + kSignature},
        {"lblRobuPrimio", QStringLiteral("Robu primio u ispravnom stanju:") + kSignature}};
    for (const Caption& caption : kSignatures) {
        step([&] { control(report_, kPage, caption.name).Caption = caption.text; });
    }
    for (const char* name : {"lblRobuIzdao", "lblRobuPrimio", "lblMP"}) {
        step([&] { control(report_, kPage, name).Visible = type_ == 1; });
    }
}
