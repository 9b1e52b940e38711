#include "documents/ActiveReport2_design.h"

#include <QLatin1String>

#include "platform/report/report.h"

// A4 with margins of a centimetre and a half, so that every printer in town takes it. Lengths in twips.
namespace active_report2 {
namespace {

using report::Align;
using report::Control;
using report::Section;
using report::TextStyle;

enum Look {
    kNone,
    kPlain,
    kMuted,
    kBold,
    kTitle,
    kSubtitle,
    kDate,
    kColumn,
    kColumnRight,
    kCell,
    kCellRight,
    kCellCenter,
    kSerial,
    kSum,
    kSumRight,
    kTotal,
    kTotalRight,
    kWords,
    kSmallCenter,
    kSmall
};

constexpr char kInk[] = "#22303f";
constexpr char kFaint[] = "#5b6875";

struct LookOf {
    Look look;
    double points;
    bool bold, italic;
    Align align;
    const char* color;
};
constexpr LookOf kLooks[] = {
    {kPlain, 9, false, false, Align::Left, kInk},
    {kMuted, 8.5, false, false, Align::Left, kFaint},
    {kBold, 11, true, false, Align::Left, kInk},
    {kTitle, 22, true, false, Align::Left, "#2f6fb5"},
    {kSubtitle, 13, true, false, Align::Left, kInk},
    {kDate, 10, false, false, Align::Left, kInk},
    {kColumn, 8, true, false, Align::Left, kInk},
    {kColumnRight, 8, true, false, Align::Right, kInk},
    {kCell, 8.5, false, false, Align::Left, kInk},
    {kCellRight, 8, false, false, Align::Right, kInk},
    {kCellCenter, 8, false, false, Align::Center, kInk},
    {kSerial, 8, false, true, Align::Left, kFaint},
    {kSum, 9, false, false, Align::Left, kInk},
    {kSumRight, 9, false, false, Align::Right, kInk},
    {kTotal, 11, true, false, Align::Left, kInk},
    {kTotalRight, 11, true, false, Align::Right, kInk},
    {kWords, 9, false, true, Align::Left, kInk},
    {kSmallCenter, 8, false, false, Align::Center, kFaint},
    {kSmall, 8.5, false, false, Align::Center, kInk},
};

struct SectionRow {
    Section::Kind kind;
    const char* name;
    int height;
    bool canShrink, repeat;
};
constexpr SectionRow kSections[] = {
    {Section::Kind::ReportHeader, "ReportHeader", kHeadEnd, false, false},
    {Section::Kind::PageHeader, "PageHeader", 0, false, false},
    {Section::Kind::GroupHeader, "GroupHeader1", 420, false, true},
    {Section::Kind::Detail, "Detail", 300, true, false},
    {Section::Kind::GroupFooter, "GroupFooter1", 4400, true, false},
    {Section::Kind::PageFooter, "PageFooter", 2060, false, false},
    {Section::Kind::ReportFooter, "ReportFooter", 0, false, false},
};

constexpr auto kLabel = Control::Kind::Label;
constexpr auto kField = Control::Kind::Field;
constexpr auto kLine = Control::Kind::Line;
constexpr auto kShape = Control::Kind::Shape;
constexpr auto kImage = Control::Kind::Image;

// `text`: the caption of a label, the row's field of a field, the drawing of an image. A line runs from its
// left top corner on by its width and height.
struct ControlRow {
    const char* section;
    Control::Kind kind;
    const char* name;
    int left, top, width, height;
    Look look;
    const char* text;
    bool canGrow = false;
};

constexpr char kHead[] = "ReportHeader";
constexpr char kTitles[] = "GroupHeader1";
constexpr char kDetail[] = "Detail";
constexpr char kFoot[] = "GroupFooter1";
constexpr char kPage[] = "PageFooter";

constexpr int kPaper = 10206;  // between the margins
constexpr int kSumsLeft = 4900, kSumsWidth = 3100, kAmountLeft = 8000, kAmountWidth = kPaper - kAmountLeft;
constexpr int kTotalLeft = 7200;  // in large letters, and never cut off
constexpr int kValueLeft = 2500, kValueWidth = kPaper - kValueLeft;

constexpr ControlRow kControls[] = {
    {kHead, kImage, "Image1", 0, 0, 1500, 1000, kNone, "DocumentHead1"},
    {kHead, kImage, "Image2", 0, 1060, kPaper, 510, kNone, "DocumentHead2"},
    {kHead, kLabel, "lblFrmMatBrTxt", 1900, 120, 1500, 250, kMuted, "Maticni broj:"},
    {kHead, kLabel, "lblFrmMatBr", 3420, 120, 2380, 250, kPlain, ""},
    {kHead, kLabel, "lblFrmRegBrTxt", 1900, 400, 1500, 250, kMuted, "Registarski broj:"},
    {kHead, kLabel, "lblFrmRegBr", 3420, 400, 2380, 250, kPlain, ""},
    {kHead, kLabel, "lblFrmSifDelTxt", 1900, 680, 1500, 250, kMuted, "Sifra delatnosti:"},
    {kHead, kLabel, "lblFrmSifDel", 3420, 680, 2380, 250, kPlain, ""},
    {kHead, kLabel, "lblFrmPIBTxt", 5900, 120, 1150, 250, kMuted, "PIB:"},
    {kHead, kLabel, "lblFrmPIB", 7070, 120, 3136, 250, kPlain, ""},
    {kHead, kLabel, "lblFrmPDVTxt", 5900, 400, 1150, 250, kMuted, "PDV:"},
    {kHead, kLabel, "lblFrmPDV", 7070, 400, 3136, 250, kPlain, ""},
    {kHead, kLabel, "lblFrmRacunBrTxt", 5900, 680, 1150, 250, kMuted, "Racun broj:"},
    {kHead, kLabel, "lblFrmRacunBr", 7070, 680, 3136, 250, kPlain, ""},
    // The client's lines are set one under the other when they are known: see ActiveReport2::placeClient.
    {kHead, kShape, "Shape1", 5200, kBoxTop, kPaper - 5200, kBoxHeight, kNone, ""},
    {kHead, kLabel, "lblKupacIme", 5360, kClientTop, 4700, 290, kBold, ""},
    {kHead, kLabel, "lblKupacAdresa", 5360, kClientTop, 4700, kClientLine, kPlain, ""},
    {kHead, kLabel, "lblKupacGrad", 5360, kClientTop, 4700, kClientLine, kPlain, ""},
    {kHead, kLabel, "lblKupacPIB", 5360, kClientTop, 4700, kClientLine, kPlain, ""},
    {kHead, kLabel, "lblKupacOstalo", 5360, kClientTop, 4700, kClientLine, kPlain, ""},
    {kHead, kLabel, "lblPredRacun", 0, 1700, 5000, 560, kTitle, ""},
    {kHead, kLabel, "lblBrojDokumenta", 0, 2380, 5000, 330, kSubtitle, ""},
    {kHead, kLabel, "lblOtpremnica", 0, 2760, 5000, 330, kSubtitle, "OTPREMNICA"},
    {kHead, kLabel, "lblDatumDokumenta", 0, 3180, 5000, 280, kDate, ""},
    {kHead, kLine, "Line1", 0, kHeadRule, kPaper, 0, kNone, ""},

    {kTitles, kLine, "Line2", 0, 30, kPaper, 0, kNone, ""},
    {kTitles, kLabel, "", 0, 110, 720, 220, kColumn, "R. br."},
    {kTitles, kLabel, "", 760, 110, 3020, 220, kColumn, "Naziv"},
    {kTitles, kLabel, "", 3840, 110, 480, 220, kColumn, "J/M"},
    {kTitles, kLabel, "", 4320, 110, 740, 220, kColumnRight, "Kolicina"},
    {kTitles, kLabel, "", 5100, 110, 1240, 220, kColumnRight, "Jed. cena"},
    {kTitles, kLabel, "lblPDVHeader", 6380, 110, 1120, 220, kColumnRight, "..."},
    {kTitles, kLabel, "", 7540, 110, 1200, 220, kColumnRight, "Cena+PDV"},
    {kTitles, kLabel, "", 8780, 110, 1426, 220, kColumnRight, "Ukupno"},
    {kTitles, kLine, "Line10", 0, 390, kPaper, 0, kNone, ""},

    {kDetail, kField, "txtRedniBr", 0, 30, 560, 220, kCellCenter, ""},
    {kDetail, kField, "txtNaziv", 760, 30, 3020, 240, kCell, "XXX", true},
    {kDetail, kField, "txtJM", 3840, 30, 480, 240, kCell, "JM", true},
    {kDetail, kField, "txtStanje", 4320, 30, 740, 220, kCellRight, "Stanje"},
    {kDetail, kField, "txtCena", 5100, 30, 1240, 220, kCellRight, "Cena1"},
    {kDetail, kField, "txtPDV", 6380, 30, 1120, 220, kCellRight, "PDV"},
    {kDetail, kField, "txtPDVPrice", 7540, 30, 1200, 220, kCellRight, "PDVPrice"},
    {kDetail, kField, "txtMedjuTotal", 8780, 30, 1426, 220, kCellRight, "MedjuTotal"},
    {kDetail, kLabel, "lblSNtext", 760, 270, 1100, 220, kSerial, "Serijski broj:"},
    {kDetail, kField, "txtSN", 1860, 270, 8280, 230, kSerial, "SN", true},
    {kDetail, kLine, "Line3", 0, 500, kPaper, 0, kNone, ""},

    {kFoot, kLabel, "Label7", kSumsLeft, 120, kSumsWidth, 250, kSum, "Ukupno bez PDV-a:"},
    {kFoot, kLabel, "lblSumBezPDV", kAmountLeft, 120, kAmountWidth, 250, kSumRight, ""},
    {kFoot, kLabel, "lblRabatText", kSumsLeft, 380, kSumsWidth, 250, kSum, "Ukupan rabat (...%):"},
    {kFoot, kLabel, "lblRabat", kAmountLeft, 380, kAmountWidth, 250, kSumRight, ""},
    {kFoot, kLine, "Line4", kSumsLeft, 660, kPaper - kSumsLeft, 0, kNone, ""},
    {kFoot, kLabel, "Label9", kSumsLeft, 700, kSumsWidth, 250, kSum, "Ukupno sa rabatom:"},
    {kFoot, kLabel, "lblRabatMedjutotal", kAmountLeft, 700, kAmountWidth, 250, kSumRight, ""},
    {kFoot, kLabel, "lblOstaloText", kSumsLeft, 960, kSumsWidth, 250, kSum, "Ostali troskovi (...%):"},
    {kFoot, kLabel, "lblOstalo", kAmountLeft, 960, kAmountWidth, 250, kSumRight, ""},
    {kFoot, kLine, "Line5", kSumsLeft, 1240, kPaper - kSumsLeft, 0, kNone, ""},
    {kFoot, kLabel, "lblSumSaOstaloText", kSumsLeft, 1280, kSumsWidth, 250, kSum,
     "Ukupno sa ostalim troskovima:"},
    {kFoot, kLabel, "lblSumSaOstalo", kAmountLeft, 1280, kAmountWidth, 250, kSumRight, ""},
    {kFoot, kLabel, "lblSumPDVText", kSumsLeft, 1540, kSumsWidth, 250, kSum, "Ukupan PDV:"},
    {kFoot, kLabel, "lblSumPDV", kAmountLeft, 1540, kAmountWidth, 250, kSumRight, ""},
    {kFoot, kLine, "Line6", kSumsLeft, 1830, kPaper - kSumsLeft, 0, kNone, ""},
    {kFoot, kLabel, "Label12", kSumsLeft, 1890, kTotalLeft - kSumsLeft, 310, kTotal, "TOTAL za uplatu:"},
    {kFoot, kLabel, "lblTotal", kTotalLeft, 1890, kPaper - kTotalLeft, 310, kTotalRight, ""},
    {kFoot, kLine, "Line7", kSumsLeft, 2230, kPaper - kSumsLeft, 0, kNone, ""},
    {kFoot, kLine, "Line8", kSumsLeft, 2265, kPaper - kSumsLeft, 0, kNone, ""},
    // Two lines: its height is settled before its words are.
    {kFoot, kLabel, "lblSlovima", 0, 2380, kPaper, 500, kWords, "", true},
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

    {kPage, kLabel, "lblRobuIzdao", 0, 60, 3400, 720, kSmall, ""},
    {kPage, kLabel, "lblMP", 4400, 460, 1406, 240, kSmall, "M.P."},
    {kPage, kLabel, "lblRobuPrimio", kPaper - 3400, 60, 3400, 720, kSmall, ""},
    {kPage, kLabel, "lblPecat", 300, 860, kPaper - 600, 430, kSmallCenter, "", true},
    {kPage, kLine, "Line9", 0, 1360, kPaper, 0, kNone, ""},
    {kPage, kField, "txtFooter", 300, 1420, kPaper - 600, 620, kSmallCenter, "", true},
};

TextStyle styleOf(Look look) {
    TextStyle style;
    for (const LookOf& row : kLooks) {
        if (row.look != look)
            continue;
        style.points = row.points;
        style.bold = row.bold;
        style.italic = row.italic;
        style.align = row.align;
        style.color = QColor(QLatin1String(row.color));
    }
    return style;
}

Control controlOf(const ControlRow& row) {
    Control control;
    control.kind = row.kind;
    control.name = QLatin1String(row.name);
    control.Left = row.left;
    control.Top = row.top;
    control.Width = row.width;
    control.Height = row.height;
    control.style = styleOf(row.look);
    control.CanGrow = row.canGrow;
    switch (row.kind) {
        case kField:
            control.DataField = QLatin1String(row.text);
            break;
        case kImage:
            control.picture = QLatin1String(row.text);
            break;
        case kLine:
            control.X1 = row.left;
            control.Y1 = row.top;
            control.X2 = row.left + row.width;
            control.Y2 = row.top + row.height;
            control.lineColor = QColor(QLatin1String("#8a96a3"));
            break;
        case kShape:
            control.lineColor = QColor(QLatin1String("#8a96a3"));
            control.fill = QColor(QLatin1String("#f7fafd"));
            break;
        default:
            control.Caption = QString::fromUtf8(row.text);
    }
    return control;
}

}  // namespace

void design(report::Report& report) {
    for (const SectionRow& row : kSections) {
        Section& section = report.addSection(row.kind, QLatin1String(row.name));
        section.Height = row.height;
        section.CanShrink = row.canShrink;
        section.RepeatOnPage = row.repeat;
    }
    for (const ControlRow& row : kControls)
        report.Sections(QLatin1String(row.section)).add(controlOf(row));
    // A hairline between the rows of the table, so that the eye keeps to its row.
    report.Sections(QLatin1String(kDetail)).Controls(QStringLiteral("Line3")).lineWidth = 8;
}

}  // namespace active_report2
