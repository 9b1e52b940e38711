#include "documents/printed_sums.h"

#include "common/window_helpers.h"
#include "documents/ActiveReport2_design.h"
#include "documents/amount_in_words.h"
#include "documents/report_steps.h"
#include "platform/report/report.h"
#include "platform/system/numbers.h"

using namespace active_report2;

namespace {

QString percentText(const char* text, float value) {
    return QLatin1String(text) + QStringLiteral(" (") + platform::textOfSingle(value) + QStringLiteral("%):");
}

}  // namespace

void PrintedSums::begin() {
    ofRows_ = withoutTax_ = other_ = discount_ = tax_ = 0;
}

void PrintedSums::showFormat(report::Report& report, ReportSteps& step) {
    static const QString kFormats[] = {QStringLiteral("#,##0"), QStringLiteral("#,##0.0"),
                                       QStringLiteral("#,##0.00")};
    if (PriceRoundUp >= 0 && PriceRoundUp <= 2) {
        numberFormat_ = kFormats[PriceRoundUp];
    }
    for (const char* name : {"txtCena", "txtMedjuTotal", "txtPDV", "txtPDVPrice"}) {
        step([&] { control(report, kDetail, name).OutputFormat = numberFormat_; });
    }
    step([&] {
        control(report, kTitles, "lblPDVHeader").Caption =
            QStringLiteral("PDV-") + platform::textOfSingle(PDV) + QLatin1Char('%');
    });
}

QString PrintedSums::formatted(float amount) const {
    const qsizetype point = numberFormat_.indexOf(QLatin1Char('.'));
    const auto decimals = point < 0 ? 0 : static_cast<int>(numberFormat_.size() - point - 1);
    return platform::formatGrouped(amount, decimals);
}

// The tax is reckoned on the price before the discount and without the other costs: so the shop's documents
// have always been made out.
void PrintedSums::addRow(report::Report& report, ReportSteps& step) {
    const auto number = [&](const char* field) {
        return control(report, kDetail, field).DataValue.asDouble();
    };
    const auto quantity = [&] { return number("txtStanje"); };
    const auto price = [&] { return number("txtCena"); };
    const double rabat = Rabat / 100.0;
    const double rest = Rest / 100.0;
    const double tax = PDV / 100.0;
    const auto add = [&](float& sum, auto amount) {
        step([&] { sum = static_cast<float>(sum + amount()); });
    };
    add(ofRows_, [&] { return number("txtMedjuTotal"); });
    add(withoutTax_, [&] { return price() * quantity(); });
    add(discount_, [&] { return quantity() * price() * rabat; });
    add(other_, [&] { return price() * (1 - rabat) * quantity() * rest; });
    add(tax_, [&] { return quantity() * tax * price(); });
}

// Every sum goes through its shown text, so that a customer who adds the column up comes to the same total.
void PrintedSums::show(report::Report& report, ReportSteps& step) const {
    const auto fill = [&](const char* name, auto caption) {
        step([&] { control(report, kFoot, name).Caption = caption(); });
    };
    const auto shown = [&](const char* name) { return singleOf(control(report, kFoot, name).Caption); };

    fill("lblSumBezPDV", [&] { return formatted(withoutTax_); });
    fill("lblRabatText", [&] { return percentText("Ukupan rabat", Rabat); });
    fill("lblRabat", [&] { return formatted(discount_); });
    fill("lblRabatMedjutotal", [&] { return formatted(shown("lblSumBezPDV") - shown("lblRabat")); });
    fill("lblOstaloText", [&] { return percentText("Ukupni ostali troskovi", Rest); });
    fill("lblOstalo", [&] { return formatted(other_); });
    fill("lblSumSaOstalo", [&] { return formatted(shown("lblRabatMedjutotal") + shown("lblOstalo")); });
    fill("lblSumPDV", [&] { return formatted(tax_); });
    fill("lblTotal",
         [&] { return QLatin1Char('=') + formatted(shown("lblSumSaOstalo") + shown("lblSumPDV")); });
    showInWords(report, step);
}

void PrintedSums::showInWords(report::Report& report, ReportSteps& step) const {
    step([&] { control(report, kFoot, "lblSlovima").Visible = SlovimaTotal; });
    if (SlovimaTotal) {
        step([&] {
            control(report, kFoot, "lblSlovima").Caption =
                QStringLiteral("Slovima: ") +
                AmountInWords(control(report, kFoot, "lblTotal").Caption.mid(1), CeneDinarske);
        });
    }
}
