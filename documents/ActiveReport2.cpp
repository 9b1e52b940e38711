#include "documents/ActiveReport2.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "documents/ActiveReport2_design.h"
#include "documents/amount_in_words.h"
#include "platform/controls/boxes.h"
#include "platform/dao/recordset.h"
#include "platform/report/typeface.h"
#include "platform/system/dates.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

constexpr char kHead[] = "ReportHeader";
constexpr char kTitles[] = "GroupHeader1";
constexpr char kDetail[] = "Detail";
constexpr char kFoot[] = "GroupFooter1";
constexpr char kPage[] = "PageFooter";

const QString kSignature = QStringLiteral("\n\n_________________________");

const QString kWrongSums = QStringLiteral(
    "Doslo je do neocekivane greske prilikom sracunavanja rabata, poreza i ostalih troskova. Dokument ce "
    "biti generisan ali ce rezultati biti nekorektni.");

}  // namespace

// Goes on past a failing step, so that one odd value does not cost the customer his document, and tells all
// that failed at once.
class ActiveReport2::Steps {
 public:
    template <typename Step>
    void operator()(Step&& step, std::source_location where = std::source_location::current()) {
        platform::Trap trap;
        trap(std::forward<Step>(step), where);
        add(trap);
    }
    void add(const platform::Trap& trap) {
        if (trap.failed()) {
            errors_ += trap.line();
        }
    }
    void tell(const QString& message) const {
        if (errors_.isEmpty()) {
            return;
        }
        platform::Box box;
        box.text = message + QStringLiteral("\n\nDetalji greske:\n\n") + errors_.join(QLatin1Char('\n'));
        box.title = GetResString(1);
        box.icon = platform::BoxIcon::Exclamation;
        platform::showBox(box);
    }

 private:
    QStringList errors_;
};

ActiveReport2::ActiveReport2(QObject* parent) : report::Report(parent) {
    active_report2::design(*this);
    setRecordset({});
}

ActiveReport2& ActiveReport2::instance() {
    static ActiveReport2 report;
    return report;
}

void ActiveReport2::setDokumentBroj(const QString& number) {
    dokumentBroj_ = number;
    updateTitle();
}

void ActiveReport2::setDokumentTip(qint32 type) {
    dokumentTip_ = type;
    updateTitle();
}

void ActiveReport2::updateTitle() {
    title = (dokumentTip_ != 0 ? QStringLiteral("Racun ") : QStringLiteral("Predracun ")) + dokumentBroj_;
}

void ActiveReport2::setRecordset(const dao::Recordset& rows) {
    rowFailure_.clear();
    // A document whose rows could not be had, or not all of them, is still a document: its number is taken.
    setRows(report::rowsOf(rows, {.failure = &rowFailure_}));
}

void ActiveReport2::ReportStart() {
    ActiveReport_ReportStart();
}

void ActiveReport2::PageStart() {
    ActiveReport_PageStart();
}

void ActiveReport2::Arrange(report::Section& section) {
    if (section.kind() == report::Section::Kind::Detail) {
        Steps step;  // the row's Format comes to the same failure, and tells it
        placeSerialNumber(step);
    }
}

void ActiveReport2::Format(report::Section& section) {
    if (section.kind() == report::Section::Kind::Detail) {
        Detail_Format();
    }
}

void ActiveReport2::BeforePrint(report::Section& section) {
    if (section.kind() == report::Section::Kind::GroupFooter) {
        GroupFooter1_BeforePrint();
    }
}

// The sums lack the rows that could not be had, also where that left none to be summed up.
void ActiveReport2::ReportEnd() {
    Steps step;
    step.add(rowFailure_);
    step.tell(kWrongSums);
}

report::Control& ActiveReport2::control(const char* section, const char* name) {
    return Sections(QLatin1String(section)).Controls(QLatin1String(name));
}

void ActiveReport2::chooseFormat() {
    static const QString kFormats[] = {QStringLiteral("#,##0"), QStringLiteral("#,##0.0"),
                                       QStringLiteral("#,##0.00")};
    if (priceRoundUp_ >= 0 && priceRoundUp_ <= 2) {
        numberFormat_ = kFormats[priceRoundUp_];
    }
}

QString ActiveReport2::formatted(float amount) const {
    const qsizetype point = numberFormat_.indexOf(QLatin1Char('.'));
    const auto decimals = point < 0 ? 0 : static_cast<int>(numberFormat_.size() - point - 1);
    return platform::formatGrouped(amount, decimals);
}

void ActiveReport2::ActiveReport_ReportStart() {
    SumMedjuTotal_ = SumBezPDV_ = SumOstalo_ = SumRabat_ = SumPDV_ = 0;
}

void ActiveReport2::ActiveReport_PageStart() {
    Steps step;
    rowNumber_ = 1;
    chooseFormat();
    for (const char* name : {"txtCena", "txtMedjuTotal", "txtPDV", "txtPDVPrice"}) {
        step([&] { control(kDetail, name).OutputFormat = numberFormat_; });
    }
    step([&] {
        control(kTitles, "lblPDVHeader").Caption =
            QStringLiteral("PDV-") + platform::textOfSingle(calcPDV_) + QLatin1Char('%');
    });
    showFirm(step);
    showClient(step);
    showDocument(step);
    showConditions(step);
    showFooter(step);
    step.tell(
        QStringLiteral("Doslo je do neocekivane greske prilikom formiranja dokumenta. Dokument ce biti "
                       "generisan ali ce njegov izgled i podaci biti nekorektni."));
}

void ActiveReport2::showFirm(Steps& step) {
    static constexpr const char* kLabels[] = {"lblFrmMatBr", "lblFrmRegBr", "lblFrmSifDel",
                                              "lblFrmPIB",   "lblFrmPDV",   "lblFrmRacunBr"};
    for (std::size_t i = 0; i < firma_.size(); ++i) {
        step([&] { control(kHead, kLabels[i]).Caption = firma_[i]; });
        step([&] { control(kHead, kLabels[i]).Visible = !firma_[i].isEmpty(); });
    }
}

void ActiveReport2::showClient(Steps& step) {
    step([&] { control(kHead, "lblKupacIme").Caption = kupacNaziv_; });
    step([&] { control(kHead, "lblKupacAdresa").Caption = kupacAdresa_; });
    step([&] { control(kHead, "lblKupacGrad").Caption = kupacGrad_; });
    // Once more on each page; the head of the document, where it stands, has only the first.
    if (!kupacPIB_.isEmpty()) {
        kupacPIB_.prepend(QStringLiteral("PIB: "));
    }
    step([&] { control(kHead, "lblKupacPIB").Caption = kupacPIB_; });
    step([&] { control(kHead, "lblKupacOstalo").Caption = kupacOstalo_; });
    if (pageNumber() <= 1) {  // the head of the document stands on its first page only
        step([&] { placeClient(); });
    }
}

// A long address is the client's own: it is written out, however many lines it takes, and never pushes the
// number of the document beside it out of its place.
void ActiveReport2::placeClient() {
    using namespace active_report2;
    int top = kClientTop;
    for (const char* name :
         {"lblKupacIme", "lblKupacAdresa", "lblKupacGrad", "lblKupacPIB", "lblKupacOstalo"}) {
        report::Control* found = nullptr;
        platform::Trap missing;  // the step that fills the label has told it already
        missing([&] { found = &control(kHead, name); });
        if (!found) {
            continue;
        }
        report::Control& label = *found;
        label.Top = top;
        if (label.Caption.isEmpty()) {
            continue;
        }
        report::ItemStyle style;
        style.family = label.style.family;
        style.points = label.style.points;
        style.bold = label.style.bold;
        const report::Typeface face(style);
        const auto lines = static_cast<int>(report::breakLines(face, label.Caption, label.Width).size());
        label.Height = std::max(kClientLine, static_cast<int>(std::ceil(lines * face.lineHeight())));
        top += label.Height + (top == kClientTop ? kNameGap : kClientGap);
    }
    report::Control& box = control(kHead, "Shape1");
    box.Height = std::max(kBoxHeight, top + (kClientTop - kBoxTop) - kBoxTop);
    const int down = box.Height - kBoxHeight;
    report::Control& rule = control(kHead, "Line1");
    rule.Y1 = rule.Y2 = kHeadRule + down;
    Sections(QLatin1String(kHead)).Height = kHeadEnd + down;
}

void ActiveReport2::showDocument(Steps& step) {
    const bool invoice = dokumentTip_ != 0;
    step([&] {
        control(kHead, "lblPredRacun").Caption =
            invoice ? QStringLiteral("Racun") : QStringLiteral("PREDRACUN");
    });
    step([&] { control(kHead, "lblOtpremnica").Visible = invoice; });
    step([&] {
        control(kHead, "lblDatumDokumenta").Caption =
            QStringLiteral("U Smederevu, ") + platform::formatShortDate(dokumentDatum_) + QLatin1Char('.');
    });
    step([&] { control(kHead, "lblBrojDokumenta").Caption = QStringLiteral("Br. ") + dokumentBroj_; });
}

void ActiveReport2::showConditions(Steps& step) {
    struct Labels {
        const char* caption;
        const char* value;
    };
    static constexpr Labels kLabels[] = {{"lblNacinPlacanjaTxt", "lblNacinPlacanja"},
                                         {"lblRokPlacanjaTxt", "lblRokPlacanja"},
                                         {"lblRokIsporukeTxt", "lblRokIsporuke"},
                                         {"lblIsporukaTxt", "lblIsporuka"},
                                         {"lblNapomenaTxt", "lblNapomena"}};
    int top = slovimaTotal_ ? active_report2::kConditionsTop : active_report2::kConditionsTopWithoutWords;
    for (std::size_t i = 0; i < conditions_.size(); ++i) {
        const Condition& condition = conditions_[i];
        const bool isShown = !condition.caption.isEmpty() && !condition.value.isEmpty();
        const auto show = [&](const char* name, const QString& text) {
            step([&] {
                report::Control& label = control(kFoot, name);
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
        show(kLabels[i].caption, condition.caption);
        show(kLabels[i].value, condition.value);
        if (isShown) {
            top += active_report2::kConditionHeight;
        }
    }
}

void ActiveReport2::showFooter(Steps& step) {
    struct Caption {
        const char* name;
        QString text;
    };
    const Caption kSignatures[] = {
        {"lblRobuIzdao", QStringLiteral("Robu izdao:") + kSignature},
        {"lblRobuPrimio", QStringLiteral("Robu primio u ispravnom stanju:") + kSignature}};
    for (const Caption& caption : kSignatures) {
        step([&] { control(kPage, caption.name).Caption = caption.text; });
    }
    for (const char* name : {"lblRobuIzdao", "lblRobuPrimio", "lblMP"}) {
        step([&] { control(kPage, name).Visible = dokumentTip_ == 1; });
    }
    step([&] { control(kPage, "lblPecat").Caption = optPecatSpor_; });
    step([&] { control(kPage, "txtFooter").Text = optFooter_; });
    step([&] { control(kPage, "Line9").Visible = !optPecatSpor_.isEmpty() || !optFooter_.isEmpty(); });
}

void ActiveReport2::Detail_Format() {
    Steps step;
    step([&] { control(kDetail, "txtRedniBr").Text = QString::number(rowNumber_); });
    step([&] {
        if (rowNumber_ == std::numeric_limits<qint16>::max()) {
            throw platform::RunError(6, QStringLiteral("Overflow"));
        }
        ++rowNumber_;
    });
    addRow(step);
    placeSerialNumber(step);
    step.tell(QStringLiteral(
        "Doslo je do neocekivane greske prilikom formiranja Details dela dokumenta. Dokument ce "
        "biti generisan ali ce njegov izgled i podaci biti nekorektni."));
}

// The tax is reckoned on the price before the discount and without the other costs: so the shop's documents
// have always been made out.
void ActiveReport2::addRow(Steps& step) {
    const auto number = [this](const char* field) { return control(kDetail, field).DataValue.asDouble(); };
    const auto quantity = [&] { return number("txtStanje"); };
    const auto price = [&] { return number("txtCena"); };
    const double rabat = calcRabat_ / 100.0;
    const double rest = calcRest_ / 100.0;
    const double tax = calcPDV_ / 100.0;
    const auto add = [&](float& sum, auto amount) {
        step([&] { sum = static_cast<float>(sum + amount()); });
    };
    add(SumMedjuTotal_, [&] { return number("txtMedjuTotal"); });
    add(SumBezPDV_, [&] { return price() * quantity(); });
    add(SumRabat_, [&] { return quantity() * price() * rabat; });
    add(SumOstalo_, [&] { return price() * (1 - rabat) * quantity() * rest; });
    add(SumPDV_, [&] { return quantity() * tax * price(); });
}

void ActiveReport2::placeSerialNumber(Steps& step) {
    bool isShown = false;
    step([&] { isShown = !control(kDetail, "txtSN").Text.isEmpty(); });
    for (const char* name : {"txtSN", "lblSNtext"}) {
        step([&] { control(kDetail, name).Visible = isShown; });
    }
    step([&] {
        const report::Control& above = control(kDetail, isShown ? "txtSN" : "txtNaziv");
        report::Control& rule = control(kDetail, "Line3");
        rule.Y1 = rule.Y2 = above.Top + above.Height;
    });
}

// Every sum goes through its shown text, so that a customer who adds the column up comes to the same total.
void ActiveReport2::GroupFooter1_BeforePrint() {
    Steps step;
    const auto show = [&](const char* name, auto caption) {
        step([&] { control(kFoot, name).Caption = caption(); });
    };
    const auto shown = [&](const char* name) { return singleOf(control(kFoot, name).Caption); };
    const auto percent = [](const char* text, float value) {
        return QLatin1String(text) + QStringLiteral(" (") + platform::textOfSingle(value) +
               QStringLiteral("%):");
    };

    show("lblSumBezPDV", [&] { return formatted(SumBezPDV_); });
    show("lblRabatText", [&] { return percent("Ukupan rabat", calcRabat_); });
    show("lblRabat", [&] { return formatted(SumRabat_); });
    show("lblRabatMedjutotal", [&] { return formatted(shown("lblSumBezPDV") - shown("lblRabat")); });
    show("lblOstaloText", [&] { return percent("Ukupni ostali troskovi", calcRest_); });
    show("lblOstalo", [&] { return formatted(SumOstalo_); });
    show("lblSumSaOstalo", [&] { return formatted(shown("lblRabatMedjutotal") + shown("lblOstalo")); });
    show("lblSumPDV", [&] { return formatted(SumPDV_); });
    show("lblTotal",
         [&] { return QLatin1Char('=') + formatted(shown("lblSumSaOstalo") + shown("lblSumPDV")); });
    step([&] { control(kFoot, "lblSlovima").Visible = slovimaTotal_; });
    if (slovimaTotal_) {
        show("lblSlovima", [&] {
            return QStringLiteral("Slovima: ") +
                   AmountInWords(control(kFoot, "lblTotal").Caption.mid(1), ceneDinarske_);
        });
    }
    step.tell(kWrongSums);
}
