#include "documents/ActiveReport2_design.h"

#include "platform/report/design.h"
#include "platform/report/report.h"

// A4 with margins of a centimetre and a half, so that every printer in town takes it. Lengths in twips.
namespace active_report2 {
namespace {

using report::Align;
using report::Control;
using report::ControlDesign;
using report::kFaint;
using report::kPaperWidth;
using report::Look;
using report::Section;
using report::SectionDesign;

constexpr Look kPlain{};
constexpr Look kMuted{.points = 8.5, .color = kFaint};
constexpr Look kBold{.points = 11, .bold = true};
constexpr Look kTitle{.points = 22, .color = report::kAccent, .bold = true};
constexpr Look kSubtitle{.points = 13, .bold = true};
constexpr Look kDate{.points = 10};
constexpr Look kColumn{.points = 8, .bold = true};
constexpr Look kColumnRight{.points = 8, .align = Align::Right, .bold = true};
constexpr Look kCell{.points = 8.5};
constexpr Look kCellRight{.points = 8, .align = Align::Right};
constexpr Look kCellCenter{.points = 8, .align = Align::Center};
constexpr Look kSerial{.points = 8, .color = kFaint, .italic = true};
constexpr Look kSum{};
constexpr Look kSumRight{.align = Align::Right};
constexpr Look kTotal{.points = 11, .bold = true};
constexpr Look kTotalRight{.points = 11, .align = Align::Right, .bold = true};
constexpr Look kWords{.italic = true};
constexpr Look kSmallCenter{.points = 8, .align = Align::Center, .color = kFaint};
constexpr Look kSmall{.points = 8.5, .align = Align::Center};
constexpr Look kStroke{.color = report::kRule};
constexpr Look kHairline{.color = report::kRule, .lineWidth = 8};
constexpr Look kFrame{.color = report::kRule, .fill = "#f7fafd"};

constexpr SectionDesign kSections[] = {
    {Section::Kind::ReportHeader, kHead, kHeadEnd},
    {Section::Kind::PageHeader, "PageHeader"},
    {Section::Kind::GroupHeader, kTitles, 420, "", false, true},
    {Section::Kind::Detail, kDetail, 300, "", true},
    {Section::Kind::GroupFooter, kFoot, 4400, "", true},
    {Section::Kind::PageFooter, kPage, 2060},
    {Section::Kind::ReportFooter, "ReportFooter"},
};

constexpr auto kLabel = Control::Kind::Label;
constexpr auto kField = Control::Kind::Field;
constexpr auto kLine = Control::Kind::Line;
constexpr auto kShape = Control::Kind::Shape;
constexpr auto kImage = Control::Kind::Image;

constexpr int kSumsLeft = 4900, kSumsWidth = 3100, kAmountLeft = 8000,
              kAmountWidth = kPaperWidth - kAmountLeft;
constexpr int kTotalLeft = 7200;  // in large letters, and never cut off
constexpr int kValueLeft = 2500, kValueWidth = kPaperWidth - kValueLeft;

constexpr ControlDesign kControls[] = {
    {kHead, kImage, "Image1", 0, 0, 1500, 1000, kPlain, "DocumentHead1"},
    {kHead, kImage, "Image2", 0, 1060, kPaperWidth, 510, kPlain, "DocumentHead2"},
    {kHead, kLabel, "lblFrmMatBrTxt", 1900, 120, 1500, 250, kMuted, "Maticni broj:"},
    {kHead, kLabel, "lblFrmMatBr", 3420, 120, 2380, 250, kPlain},
    {kHead, kLabel, "lblFrmRegBrTxt", 1900, 400, 1500, 250, kMuted, "Registarski broj:"},
    {kHead, kLabel, "lblFrmRegBr", 3420, 400, 2380, 250, kPlain},
    {kHead, kLabel, "lblFrmSifDelTxt", 1900, 680, 1500, 250, kMuted, "Sifra delatnosti:"},
    {kHead, kLabel, "lblFrmSifDel", 3420, 680, 2380, 250, kPlain},
    {kHead, kLabel, "lblFrmPIBTxt", 5900, 120, 1150, 250, kMuted, "PIB:"},
    {kHead, kLabel, "lblFrmPIB", 7070, 120, 3136, 250, kPlain},
    {kHead, kLabel, "lblFrmPDVTxt", 5900, 400, 1150, 250, kMuted, "PDV:"},
    {kHead, kLabel, "lblFrmPDV", 7070, 400, 3136, 250, kPlain},
    {kHead, kLabel, "lblFrmRacunBrTxt", 5900, 680, 1150, 250, kMuted, "Racun broj:"},
    {kHead, kLabel, "lblFrmRacunBr", 7070, 680, 3136, 250, kPlain},
    // The client's lines are set one under the other when they are known: see ActiveReport2::placeClient.
    {kHead, kShape, "Shape1", 5200, kBoxTop, kPaperWidth - 5200, kBoxHeight, kFrame},
    {kHead, kLabel, "lblKupacIme", 5360, kClientTop, 4700, 290, kBold},
    {kHead, kLabel, "lblKupacAdresa", 5360, kClientTop, 4700, kClientLine, kPlain},
    {kHead, kLabel, "lblKupacGrad", 5360, kClientTop, 4700, kClientLine, kPlain},
    {kHead, kLabel, "lblKupacPIB", 5360, kClientTop, 4700, kClientLine, kPlain},
    {kHead, kLabel, "lblKupacOstalo", 5360, kClientTop, 4700, kClientLine, kPlain},
    {kHead, kLabel, "lblPredRacun", 0, 1700, 5000, 560, kTitle},
    {kHead, kLabel, "lblBrojDokumenta", 0, 2380, 5000, 330, kSubtitle},
    {kHead, kLabel, "lblOtpremnica", 0, 2760, 5000, 330, kSubtitle, "OTPREMNICA"},
    {kHead, kLabel, "lblDatumDokumenta", 0, 3180, 5000, 280, kDate},
    {kHead, kLine, "Line1", 0, kHeadRule, kPaperWidth, 0, kStroke},

    {kTitles, kLine, "Line2", 0, 30, kPaperWidth, 0, kStroke},
    {kTitles, kLabel, "", 0, 110, 720, 220, kColumn, "R. br."},
    {kTitles, kLabel, "", 760, 110, 3020, 220, kColumn, "Naziv"},
    {kTitles, kLabel, "", 3840, 110, 480, 220, kColumn, "J/M"},
    {kTitles, kLabel, "", 4320, 110, 740, 220, kColumnRight, "Kolicina"},
    {kTitles, kLabel, "", 5100, 110, 1240, 220, kColumnRight, "Jed. cena"},
    {kTitles, kLabel, "lblPDVHeader", 6380, 110, 1120, 220, kColumnRight, "..."},
    {kTitles, kLabel, "", 7540, 110, 1200, 220, kColumnRight, "Cena+PDV"},
    {kTitles, kLabel, "", 8780, 110, 1426, 220, kColumnRight, "Ukupno"},
    {kTitles, kLine, "Line10", 0, 390, kPaperWidth, 0, kStroke},

    {kDetail, kField, "txtRedniBr", 0, 30, 560, 220, kCellCenter},
    {kDetail, kField, "txtNaziv", 760, 30, 3020, 240, kCell, "XXX", true},
    {kDetail, kField, "txtJM", 3840, 30, 480, 240, kCell, "JM", true},
    {kDetail, kField, "txtStanje", 4320, 30, 740, 220, kCellRight, "Stanje"},
    {kDetail, kField, "txtCena", 5100, 30, 1240, 220, kCellRight, "Cena1"},
    {kDetail, kField, "txtPDV", 6380, 30, 1120, 220, kCellRight, "PDV"},
    {kDetail, kField, "txtPDVPrice", 7540, 30, 1200, 220, kCellRight, "PDVPrice"},
    {kDetail, kField, "txtMedjuTotal", 8780, 30, 1426, 220, kCellRight, "MedjuTotal"},
    {kDetail, kLabel, "lblSNtext", 760, 270, 1100, 220, kSerial, "Serijski broj:"},
    {kDetail, kField, "txtSN", 1860, 270, 8280, 230, kSerial, "SN", true},
    // A hairline between the rows of the table, so that the eye keeps to its row.
    {kDetail, kLine, "Line3", 0, 500, kPaperWidth, 0, kHairline},

    {kFoot, kLabel, "Label7", kSumsLeft, 120, kSumsWidth, 250, kSum, "Ukupno bez PDV-a:"},
    {kFoot, kLabel, "lblSumBezPDV", kAmountLeft, 120, kAmountWidth, 250, kSumRight},
    {kFoot, kLabel, "lblRabatText", kSumsLeft, 380, kSumsWidth, 250, kSum, "Ukupan rabat (...%):"},
    {kFoot, kLabel, "lblRabat", kAmountLeft, 380, kAmountWidth, 250, kSumRight},
    {kFoot, kLine, "Line4", kSumsLeft, 660, kPaperWidth - kSumsLeft, 0, kStroke},
    {kFoot, kLabel, "Label9", kSumsLeft, 700, kSumsWidth, 250, kSum, "Ukupno sa rabatom:"},
    {kFoot, kLabel, "lblRabatMedjutotal", kAmountLeft, 700, kAmountWidth, 250, kSumRight},
    {kFoot, kLabel, "lblOstaloText", kSumsLeft, 960, kSumsWidth, 250, kSum, "Ostali troskovi (...%):"},
    {kFoot, kLabel, "lblOstalo", kAmountLeft, 960, kAmountWidth, 250, kSumRight},
    {kFoot, kLine, "Line5", kSumsLeft, 1240, kPaperWidth - kSumsLeft, 0, kStroke},
    {kFoot, kLabel, "lblSumSaOstaloText", kSumsLeft, 1280, kSumsWidth, 250, kSum,
     "Ukupno sa ostalim troskovima:"},
    {kFoot, kLabel, "lblSumSaOstalo", kAmountLeft, 1280, kAmountWidth, 250, kSumRight},
    {kFoot, kLabel, "lblSumPDVText", kSumsLeft, 1540, kSumsWidth, 250, kSum, "Ukupan PDV:"},
    {kFoot, kLabel, "lblSumPDV", kAmountLeft, 1540, kAmountWidth, 250, kSumRight},
    {kFoot, kLine, "Line6", kSumsLeft, 1830, kPaperWidth - kSumsLeft, 0, kStroke},
    {kFoot, kLabel, "Label12", kSumsLeft, 1890, kTotalLeft - kSumsLeft, 310, kTotal, "TOTAL za uplatu:"},
    {kFoot, kLabel, "lblTotal", kTotalLeft, 1890, kPaperWidth - kTotalLeft, 310, kTotalRight},
    {kFoot, kLine, "Line7", kSumsLeft, 2230, kPaperWidth - kSumsLeft, 0, kStroke},
    {kFoot, kLine, "Line8", kSumsLeft, 2265, kPaperWidth - kSumsLeft, 0, kStroke},
    // Two lines: its height is settled before its words are.
    {kFoot, kLabel, "lblSlovima", 0, 2380, kPaperWidth, 500, kWords, "", true},
    {kFoot, kLabel, "lblNacinPlacanjaTxt", 0, 2960, 2400, 240, kMuted, "", true},
    {kFoot, kLabel, "lblNacinPlacanja", kValueLeft, 2960, kValueWidth, 240, kPlain, "", true},
    {kFoot, kLabel, "lblRokPlacanjaTxt", 0, 3220, 2400, 240, kMuted, "", true},
    {kFoot, kLabel, "lblRokPlacanja", kValueLeft, 3220, kValueWidth, 240, kPlain, "", true},
    {kFoot, kLabel, "lblRokIsporukeTxt", 0, 3480, 2400, 240, kMuted, "", true},
    {kFoot, kLabel, "lblRokIsporuke", kValueLeft, 3480, kValueWidth, 240, kPlain, "", true},
    {kFoot, kLabel, "lblIsporukaTxt", 0, 3740, 2400, 240, kMuted, "", true},
    {kFoot, kLabel, "lblIsporuka", kValueLeft, 3740, kValueWidth, 240, kPlain, "", true},
    {kFoot, kLabel, "lblNapomenaTxt", 0, 4000, 2400, 240, kMuted, "", true},
    {kFoot, kLabel, "lblNapomena", kValueLeft, 4000, kValueWidth, 240, kPlain, "", true},

    {kPage, kLabel, "lblRobuIzdao", 0, 60, 3400, 720, kSmall},
    {kPage, kLabel, "lblMP", 4400, 460, 1406, 240, kSmall, "M.P."},
    {kPage, kLabel, "lblRobuPrimio", kPaperWidth - 3400, 60, 3400, 720, kSmall},
    {kPage, kLabel, "lblPecat", 300, 860, kPaperWidth - 600, 430, kSmallCenter, "", true},
    {kPage, kLine, "Line9", 0, 1360, kPaperWidth, 0, kStroke},
    {kPage, kField, "txtFooter", 300, 1420, kPaperWidth - 600, 620, kSmallCenter, "", true},
};

}  // namespace

void design(report::Report& report) {
    report::design(report, kSections, kControls);
}

report::Control& control(report::Report& report, const char* section, const char* name) {
    return report.Sections(QLatin1String(section)).Controls(QLatin1String(name));
}

}  // namespace active_report2
