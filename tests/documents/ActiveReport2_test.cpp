#include "documents/ActiveReport2.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <memory>
#include <tuple>

#include "common/window_places.h"
#include "documents/document_rows.h"
#include "platform/controls/boxes.h"
#include "platform/dao/recordset.h"
#include "platform/system/locale_scope.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace {

struct Total {
    const char* label;
    const char* text;
};

struct ActiveReport2Test : ::testing::Test {
    void SetUp() override {
        before_ = QLocale();
        QLocale::setDefault(QLocale("en_US"));
        report.Dokument.setTip(0);
        report.Dokument.setBroj("17/2026");
        report.Dokument.setDatum(QDate(2026, 3, 5));
        report.Kupac.Naziv = "Peric Pera";
        report.Kupac.Adresa = "Lipova 1";
        report.Kupac.Grad = "Beograd, 11000";
        report.Calc.CeneDinarske = true;
    }
    void TearDown() override { QLocale::setDefault(before_); }

    report::Document make(std::vector<DocumentRow> rows) {
        report.setRows(std::make_unique<DocumentRows>(std::move(rows), tax));
        report.Calc.PDV = static_cast<float>(tax);
        return report.run().value();
    }
    QString textOf(const report::Document& document) {
        QString text;
        for (int page = 1; page <= document.pageCount(); ++page) {
            text += document.textOfPage(page) + "\n";
        }
        return text;
    }
    report::Control& control(const char* section, const char* name) {
        return report.Sections(section).Controls(name);
    }
    QString caption(const char* name) { return control("GroupFooter1", name).Caption; }
    QString head(const char* name) { return control("ReportHeader", name).Caption; }
    void expectTotals(const std::vector<Total>& totals) {
        for (const Total& total : totals) {
            EXPECT_EQ(caption(total.label), QString(total.text)) << total.label;
        }
    }
    void giveConditions() {
        report.Opt.NacinPlacanja.caption = "Nacin placanja:";
        report.Opt.NacinPlacanja.value = "100% avans.";
        report.Opt.RokPlacanja.caption = "Rok za uplatu:";
        report.Opt.RokPlacanja.value = "Tri dana.";
        report.Opt.RokIsporuke.caption = "Rok isporuke:";
        report.Opt.RokIsporuke.value = "Odmah.";
        report.Opt.Isporuka.caption = "Isporuka:";
        report.Opt.Isporuka.value = "FCO prostorije.";
        report.Opt.Napomena.caption = "Napomena:";
        report.Opt.Napomena.value = "Garancija dve godine.";
    }
    // The numbers in front of the rows of a page.
    QStringList runningNumbers(const report::Document& document, int page) {
        QStringList numbers;
        static const QRegularExpression kRow("^(\\d+) Red ");
        for (const QString& line : document.textOfPage(page).split('\n')) {
            const auto match = kRow.match(line);
            if (match.hasMatch()) {
                numbers += match.captured(1);
            }
        }
        return numbers;
    }
    static std::vector<DocumentRow> rows(int count) {
        std::vector<DocumentRow> made;
        for (int i = 1; i <= count; ++i) {
            made.push_back({.name = "Red " + std::to_string(i)});
        }
        return made;
    }

    ActiveReport2 report;
    platform::BoxScript boxes;
    double tax = 18;

 private:
    QLocale before_;
};

}  // namespace

TEST_F(ActiveReport2Test, TheTotalsOfOneRow) {
    report.Calc.Rabat = 10;
    report.Calc.Rest = 5;
    make({{.quantity = 2, .price = 100}});
    expectTotals({{"lblSumBezPDV", "200.00"},
                  {"lblRabatText", "Ukupan rabat (10%):"},
                  {"lblRabat", "20.00"},
                  {"lblRabatMedjutotal", "180.00"},
                  {"lblOstaloText", "Ukupni ostali troskovi (5%):"},
                  {"lblOstalo", "9.00"},
                  {"lblSumSaOstalo", "189.00"},
                  {"lblSumPDV", "36.00"},
                  {"lblTotal", "=225.00"}});
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(ActiveReport2Test, WithoutDecimalsEveryLineIsRounded) {
    report.Calc.PriceRoundUp = 0;
    report.Calc.SlovimaTotal = true;
    tax = 0;
    make({{.quantity = 1, .price = 225.4}});
    EXPECT_EQ(caption("lblTotal"), "=225");
    EXPECT_EQ(caption("lblSlovima"), "Slovima: dvestotinedvadesetpetdin. i 0/100");
    // 0.4 and 0.4 are nothing and nothing: the rounding falls at each line, not at the end.
    tax = 40;
    make({{.quantity = 1, .price = 1.4}});
    EXPECT_EQ(caption("lblSumBezPDV"), "1");
    EXPECT_EQ(caption("lblSumPDV"), "1");
    EXPECT_EQ(caption("lblTotal"), "=2");
    tax = 30;
    make({{.quantity = 1, .price = 1.4}});
    EXPECT_EQ(caption("lblSumPDV"), "0");
    EXPECT_EQ(caption("lblTotal"), "=1");
}

TEST_F(ActiveReport2Test, OneDecimalAndTwo) {
    tax = 18;
    report.Calc.PriceRoundUp = 1;
    report::Document document = make({{.quantity = 1, .price = 1234.56}});
    EXPECT_EQ(caption("lblSumBezPDV"), "1,234.6");
    EXPECT_EQ(caption("lblSumPDV"), "222.2");
    EXPECT_EQ(caption("lblTotal"), "=1,456.8");
    EXPECT_TRUE(textOf(document).contains("1,234.6 222.2 1,456.8 1,456.8"));
    report.Calc.PriceRoundUp = 2;
    document = make({{.quantity = 1, .price = 1234.56}});
    EXPECT_EQ(caption("lblTotal"), "=1,456.78");
    EXPECT_TRUE(textOf(document).contains("1,234.56 222.22 1,456.78 1,456.78"));
}

TEST_F(ActiveReport2Test, AnotherRoundingKeepsTheFormer) {
    report.Calc.PriceRoundUp = 1;
    make({{.price = 10}});
    report.Calc.PriceRoundUp = 7;
    make({{.price = 10}});
    EXPECT_EQ(caption("lblSumBezPDV"), "10.0");
    report.Calc.PriceRoundUp = -1;
    make({{.price = 10}});
    EXPECT_EQ(caption("lblSumBezPDV"), "10.0");
}

TEST_F(ActiveReport2Test, TheTaxIsReckonedBeforeDiscountAndCosts) {
    report.Calc.Rabat = 50;
    report.Calc.Rest = 50;
    tax = 20;
    make({{.quantity = 3, .price = 10}});
    expectTotals(
        {{"lblSumPDV", "6.00"}, {"lblRabat", "15.00"}, {"lblOstalo", "7.50"}, {"lblTotal", "=28.50"}});
}

TEST_F(ActiveReport2Test, TheAmountInWordsOnlyWhereItIsWanted) {
    make({{.price = 100}});
    EXPECT_FALSE(control("GroupFooter1", "lblSlovima").Visible);
    report.Calc.SlovimaTotal = true;
    report::Document document = make({{.price = 100}});
    EXPECT_TRUE(textOf(document).contains("Slovima: stotinuosamnaestdin. i 0/100"));
    report.Calc.CeneDinarske = false;
    document = make({{.price = 100}});
    EXPECT_TRUE(textOf(document).contains("Slovima: stotinuosamnaesteur. i 0/100"));
    report.Calc.SlovimaTotal = false;
    document = make({{.price = 100}});
    EXPECT_FALSE(textOf(document).contains("Slovima"));
}

TEST_F(ActiveReport2Test, ANewPageBeginsItsRunningNumbersAnewWhileTheSumsGoOn) {
    const report::Document document = make(rows(60));
    ASSERT_GE(document.pageCount(), 2);
    int seen = 0;
    for (int page = 1; page <= document.pageCount(); ++page) {
        const QStringList numbers = runningNumbers(document, page);
        for (int i = 0; i < numbers.size(); ++i) {
            EXPECT_EQ(numbers[i].toInt(), i + 1);
        }
        seen += static_cast<int>(numbers.size());
    }
    EXPECT_EQ(seen, 60);
    EXPECT_EQ(caption("lblSumBezPDV"), "6,000.00");
    EXPECT_EQ(caption("lblTotal"), "=7,080.00");
}

TEST_F(ActiveReport2Test, ColumnTitlesStandOnEachPageAndTheHeadOnTheFirst) {
    const report::Document document = make(rows(60));
    for (int page = 1; page <= document.pageCount(); ++page) {
        if (!runningNumbers(document, page).isEmpty()) {
            EXPECT_TRUE(document.textOfPage(page).contains("R. br. Naziv J/M Kolicina Jed. cena PDV-18%"));
        }
        EXPECT_EQ(document.textOfPage(page).contains("PREDRACUN"), page == 1);
        EXPECT_EQ(document.textOfPage(page).contains("TOTAL za uplatu:"), page == document.pageCount());
    }
}

TEST_F(ActiveReport2Test, EachRunBeginsItsSumsAnew) {
    make({{.price = 100}});
    make({{.price = 50}});
    EXPECT_EQ(caption("lblSumBezPDV"), "50.00");
}

TEST_F(ActiveReport2Test, WithoutASerialNumberTheRuleSitsUnderTheName) {
    const report::Document document = make({{.serial = ""}});
    EXPECT_FALSE(textOf(document).contains("Serijski broj:"));
    const report::Control& name = control("Detail", "txtNaziv");
    EXPECT_EQ(control("Detail", "Line3").Y1, name.Top + name.Height);
    EXPECT_EQ(control("Detail", "Line3").Y2, name.Top + name.Height);
    EXPECT_FALSE(control("Detail", "txtSN").Visible);
    EXPECT_FALSE(control("Detail", "lblSNtext").Visible);
}

TEST_F(ActiveReport2Test, ASerialNumberHasItsLineAndTheRuleSitsUnderIt) {
    const report::Document document = make({{.serial = "SN-4711"}});
    EXPECT_TRUE(textOf(document).contains("Serijski broj: SN-4711"));
    const report::Control& serial = control("Detail", "txtSN");
    EXPECT_EQ(control("Detail", "Line3").Y1, serial.Top + serial.Height);
    EXPECT_TRUE(control("Detail", "lblSNtext").Visible);
}

TEST_F(ActiveReport2Test, MeasuringARowCountsNothing) {
    std::vector<DocumentRow> many;
    for (int i = 1; i <= 80; ++i) {
        DocumentRow row{.name = "Red " + std::to_string(i)};
        row.serial = i % 2 == 0 ? "SN" + std::to_string(i) : "";
        many.push_back(row);
    }
    make(many);
    EXPECT_EQ(caption("lblSumBezPDV"), "8,000.00");
}

TEST_F(ActiveReport2Test, AProFormaInvoice) {
    const report::Document document = make({{}});
    EXPECT_EQ(head("lblPredRacun"), "PREDRACUN");
    EXPECT_FALSE(control("ReportHeader", "lblOtpremnica").Visible);
    const QString text = textOf(document);
    for (const char* absent : {"OTPREMNICA", "Robu izdao:", "Robu primio u ispravnom stanju:", "M.P."}) {
        EXPECT_FALSE(text.contains(absent)) << absent;
    }
    EXPECT_TRUE(text.contains("Br. 17/2026"));
    EXPECT_TRUE(text.contains("U Smederevu, 3/5/2026."));
    EXPECT_EQ(report.title, "Predracun 17/2026");
}

TEST_F(ActiveReport2Test, AnInvoice) {
    report.Dokument.setTip(1);
    const report::Document document = make({{}});
    EXPECT_EQ(head("lblPredRacun"), "Racun");
    const QString text = textOf(document);
    for (const char* wanted : {"Racun", "OTPREMNICA", "Robu izdao:", "Robu primio u ispravnom stanju:",
                               "M.P.", "_________________________"}) {
        EXPECT_TRUE(text.contains(wanted)) << wanted;
    }
    EXPECT_EQ(control("PageFooter", "lblRobuIzdao").Caption, "Robu izdao:\n\n_________________________");
    EXPECT_EQ(control("PageFooter", "lblRobuPrimio").Caption,
              "Robu primio u ispravnom stanju:\n\n_________________________");
    EXPECT_EQ(report.title, "Racun 17/2026");
}

TEST_F(ActiveReport2Test, AnyOtherKindIsAnInvoiceThatNobodySigns) {
    report.Dokument.setTip(2);
    const QString text = textOf(make({{}}));
    EXPECT_TRUE(text.contains("Racun"));
    EXPECT_TRUE(text.contains("OTPREMNICA"));
    for (const char* absent : {"Robu izdao:", "Robu primio u ispravnom stanju:", "M.P."}) {
        EXPECT_FALSE(text.contains(absent)) << absent;
    }
}

TEST_F(ActiveReport2Test, EverySectionHasItsControlsAndTheirFirstTexts) {
    const std::pair<const char*, std::vector<const char*>> kNames[] = {
        {"ReportHeader",
         {"Image1",         "Image2",        "lblFrmMatBrTxt",   "lblFrmRegBrTxt",    "lblFrmSifDelTxt",
          "lblFrmPIBTxt",   "lblFrmPDVTxt",  "lblFrmRacunBrTxt", "lblFrmMatBr",       "lblFrmRegBr",
          "lblFrmSifDel",   "lblFrmPIB",     "lblFrmPDV",        "lblFrmRacunBr",     "lblKupacIme",
          "lblKupacAdresa", "lblKupacGrad",  "lblKupacPIB",      "lblKupacOstalo",    "Shape1",
          "lblPredRacun",   "lblOtpremnica", "lblBrojDokumenta", "lblDatumDokumenta", "Line1"}},
        {"GroupHeader1", {"lblPDVHeader", "Line2", "Line10"}},
        {"Detail",
         {"txtRedniBr", "txtNaziv", "txtStanje", "txtCena", "txtPDV", "txtPDVPrice", "txtMedjuTotal",
          "lblSNtext", "txtSN", "Line3"}},
        {"GroupFooter1",
         {"lblSlovima", "lblNacinPlacanjaTxt", "lblNacinPlacanja", "lblRokPlacanjaTxt", "lblRokPlacanja",
          "lblRokIsporukeTxt", "lblRokIsporuke", "lblIsporukaTxt", "lblIsporuka", "lblNapomenaTxt",
          "lblNapomena", "Line4", "Line5", "Line6", "Line7", "Line8"}},
        {"PageFooter", {"lblRobuIzdao", "lblRobuPrimio", "lblMP", "lblPecat", "Line9", "txtFooter"}}};
    for (const auto& [section, names] : kNames) {
        for (const char* name : names) {
            EXPECT_NO_THROW(control(section, name)) << section << " " << name;
        }
    }
    EXPECT_TRUE(report.Sections("PageHeader").all().empty());
    EXPECT_TRUE(report.Sections("ReportFooter").all().empty());

    const std::tuple<const char*, const char*, const char*> kTexts[] = {
        {"ReportHeader", "lblFrmMatBrTxt", "Maticni broj:"},
        {"ReportHeader", "lblFrmRegBrTxt", "Registarski broj:"},
        {"ReportHeader", "lblFrmSifDelTxt", "Sifra delatnosti:"},
        {"ReportHeader", "lblFrmPIBTxt", "PIB:"},
        {"ReportHeader", "lblFrmPDVTxt", "PDV:"},
        {"ReportHeader", "lblFrmRacunBrTxt", "Racun broj:"},
        {"ReportHeader", "lblOtpremnica", "OTPREMNICA"},
        {"GroupHeader1", "lblPDVHeader", "..."},
        {"Detail", "lblSNtext", "Serijski broj:"},
        {"GroupFooter1", "Label7", "Ukupno bez PDV-a:"},
        {"GroupFooter1", "lblRabatText", "Ukupan rabat (...%):"},
        {"GroupFooter1", "Label9", "Ukupno sa rabatom:"},
        {"GroupFooter1", "lblOstaloText", "Ostali troskovi (...%):"},
        {"GroupFooter1", "lblSumSaOstaloText", "Ukupno sa ostalim troskovima:"},
        {"GroupFooter1", "lblSumPDVText", "Ukupan PDV:"},
        {"GroupFooter1", "Label12", "TOTAL za uplatu:"},
        {"PageFooter", "lblMP", "M.P."}};
    for (const auto& [section, name, text] : kTexts) {
        EXPECT_EQ(control(section, name).Caption, text) << name;
    }
    const std::pair<const char*, const char*> kFields[] = {
        {"txtNaziv", "XXX"},         {"txtStanje", "Stanje"},         {"txtCena", "Cena1"}, {"txtPDV", "PDV"},
        {"txtPDVPrice", "PDVPrice"}, {"txtMedjuTotal", "MedjuTotal"}, {"txtSN", "SN"}};
    for (const auto& [name, field] : kFields) {
        EXPECT_EQ(control("Detail", name).DataField, field) << name;
    }
}

// Titles stand over their figures, and each title stands at the sum it names.
TEST_F(ActiveReport2Test, TheSumsStandAtTheirTitles) {
    report.Calc.Rabat = 10;
    report.Calc.Rest = 5;
    const QString text = textOf(make({{.quantity = 2, .price = 100}}));
    for (const char* line :
         {"R. br. Naziv J/M Kolicina Jed. cena PDV-18% Cena+PDV Ukupno", "Ukupno bez PDV-a: 200.00",
          "Ukupan rabat (10%): 20.00", "Ukupno sa rabatom: 180.00", "Ukupni ostali troskovi (5%): 9.00",
          "Ukupno sa ostalim troskovima: 189.00", "Ukupan PDV: 36.00", "TOTAL za uplatu: =225.00"}) {
        EXPECT_TRUE(text.contains(line)) << line << "\n" << text.toStdString();
    }
}

TEST_F(ActiveReport2Test, ALongClientIsWrittenOutAndLeavesTheNumberInItsPlace) {
    const auto placeOf = [](const report::Document& document, const QString& text) {
        for (const report::PageItem& item : document.pages.front().items) {
            if (item.text == text) {
                return item.place;
            }
        }
        ADD_FAILURE() << text.toStdString();
        return QRectF();
    };
    const report::Document plain = make({{}});
    report.Kupac.Naziv = "Preduzece za proizvodnju, promet i usluge racunarske opreme PRIMER d.o.o. Beograd";
    report.Kupac.Adresa = "Bulevar kralja Aleksandra 123456, lamela C, ulaz 7, sprat 4, stan 21";
    report.Kupac.PIB = "100200300";
    report.Kupac.Ostalo = "Na ruke gospodji Mileni Petrovic-Jovanovic, nabavka, drugi sprat levo";
    const report::Document full = make({{}});
    const QString text = textOf(full);
    for (const char* end : {"Beograd", "stan 21", "Beograd, 11000", "PIB: 100200300", "sprat levo"}) {
        EXPECT_TRUE(text.contains(end)) << end;
    }
    EXPECT_FALSE(text.contains(QChar(0x2026))) << text.toStdString();
    for (const char* beside : {"PREDRACUN", "Br. 17/2026", "U Smederevu, 3/5/2026."}) {
        EXPECT_EQ(placeOf(full, beside), placeOf(plain, beside)) << beside;
    }
    const double titles = placeOf(full, "Naziv").top();
    EXPECT_GT(titles, placeOf(plain, "Naziv").top());
    for (const report::PageItem& item : full.pages.front().items) {
        if (item.kind == report::PageItem::Kind::Frame) {
            EXPECT_LT(item.place.bottom(), titles);
            EXPECT_GT(item.place.bottom(), placeOf(full, "PIB: 100200300").bottom());
        }
    }
    report.Kupac.Naziv = "Peric Pera";
    report.Kupac.Adresa = "Lipova 1";
    report.Kupac.Ostalo = "";
    EXPECT_EQ(placeOf(make({{}}), "Naziv"), placeOf(plain, "Naziv"))
        << "the next client's box is small again";
}

TEST_F(ActiveReport2Test, NothingOfAnOrdinaryDocumentIsCutOff) {
    giveConditions();
    report.Dokument.setTip(1);
    report.Calc.SlovimaTotal = true;
    report.Calc.PriceRoundUp = 2;
    report.Firma.RacunBr = "160-0000000012345-67";
    tax = 18.25;  // the total is past a milliard
    for (const bool comma : {false, true}) {
        QLocale::setDefault(QLocale(comma ? "sr_Latn_RS" : "en_US"));
        const QString text =
            textOf(make({{.quantity = 12.5, .price = 1234567.89, .serial = "SN-1", .unit = "Kom."},
                         {.quantity = 100, .price = 12345678.9, .unit = "Pak."},
                         {.quantity = 1, .price = 0.5, .unit = "Komplet"}}));
        EXPECT_FALSE(text.contains(QChar(0x2026))) << text.toStdString();
    }
}

TEST_F(ActiveReport2Test, TheFirmsValuesHideWhereEmptyAndTheirTitlesStay) {
    report.Firma.MatBr = "0123";
    report.Firma.RacunBr = "160-1-1";
    const QString text = textOf(make({{}}));
    EXPECT_TRUE(control("ReportHeader", "lblFrmMatBr").Visible);
    EXPECT_TRUE(text.contains("0123"));
    EXPECT_TRUE(text.contains("160-1-1"));
    EXPECT_FALSE(control("ReportHeader", "lblFrmPIB").Visible);
    for (const char* title :
         {"Maticni broj:", "Registarski broj:", "Sifra delatnosti:", "PIB:", "PDV:", "Racun broj:"}) {
        EXPECT_TRUE(text.contains(title)) << title;
    }
}

TEST_F(ActiveReport2Test, EachFirmsValueStandsAtItsTitle) {
    report.Firma.MatBr = "m";
    report.Firma.RegBr = "r";
    report.Firma.SifraDel = "s";
    report.Firma.PIB = "p";
    report.Firma.PDV = "d";
    report.Firma.RacunBr = "b";
    make({{}});
    const char* const names[] = {"lblFrmMatBr", "lblFrmRegBr", "lblFrmSifDel",
                                 "lblFrmPIB",   "lblFrmPDV",   "lblFrmRacunBr"};
    const char* const texts[] = {"m", "r", "s", "p", "d", "b"};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(head(names[i]), QString(texts[i]));
    }
}

TEST_F(ActiveReport2Test, TheClientsBlock) {
    report.Kupac.PIB = "100200300";
    report.Kupac.Ostalo = "Na ruke Mileni";
    const QString text = textOf(make({{}}));
    for (const char* line :
         {"Peric Pera", "Lipova 1", "Beograd, 11000", "PIB: 100200300", "Na ruke Mileni"}) {
        EXPECT_TRUE(text.contains(line)) << line;
    }
    // The name stands apart from the lines below it, which follow each other closely.
    const auto gapUnder = [&](const char* upper, const char* lower) {
        const report::Control& above = control("ReportHeader", upper);
        return control("ReportHeader", lower).Top - above.Top - above.Height;
    };
    EXPECT_EQ(gapUnder("lblKupacIme", "lblKupacAdresa"), 40);
    EXPECT_EQ(gapUnder("lblKupacAdresa", "lblKupacGrad"), 10);
    EXPECT_EQ(head("lblKupacPIB"), "PIB: 100200300");
    report.Kupac.PIB = "";
    make({{}});
    EXPECT_EQ(head("lblKupacPIB"), "");
}

TEST_F(ActiveReport2Test, OnSeveralPagesTheTaxNumberIsPrefixedOnceOnPaper) {
    report.Kupac.PIB = "100200300";
    const QString text = textOf(make(rows(80)));
    EXPECT_TRUE(text.contains("PIB: 100200300"));
    EXPECT_FALSE(text.contains("PIB: PIB:"));
}

TEST_F(ActiveReport2Test, AllConditions) {
    giveConditions();
    const QString text = textOf(make({{}}));
    for (const char* line :
         {"Nacin placanja: 100% avans.", "Rok za uplatu: Tri dana.", "Rok isporuke: Odmah.",
          "Isporuka: FCO prostorije.", "Napomena: Garancija dve godine."}) {
        EXPECT_TRUE(text.contains(line)) << line;
    }
}

TEST_F(ActiveReport2Test, AConditionWithoutItsValueOrItsCaptionPrintsNeither) {
    giveConditions();
    report.Opt.RokPlacanja.value = "";
    report.Opt.Isporuka.caption = "";
    const QString text = textOf(make({{}}));
    for (const char* absent : {"Rok za uplatu:", "Tri dana.", "Isporuka:", "FCO prostorije."}) {
        EXPECT_FALSE(text.contains(absent)) << absent;
    }
    EXPECT_TRUE(text.contains("Napomena: Garancija dve godine."));
}

TEST_F(ActiveReport2Test, TheConditionsComeBackWithTheNextDocument) {
    giveConditions();
    report.Opt.RokPlacanja.caption = "";
    make({{}});
    giveConditions();
    EXPECT_TRUE(textOf(make({{}})).contains("Rok za uplatu: Tri dana."));
}

TEST_F(ActiveReport2Test, TheFootOfThePage) {
    report.Opt.PecatSpor = "Vazi bez pecata.";
    report.Opt.Footer = "Lipova 1\n026/123-456";
    const report::Document document = make(rows(60));
    for (int page = 1; page <= document.pageCount(); ++page) {
        EXPECT_TRUE(document.textOfPage(page).contains("Vazi bez pecata."));
        EXPECT_TRUE(document.textOfPage(page).contains("026/123-456"));
    }
    EXPECT_TRUE(control("PageFooter", "Line9").Visible);
    report.Opt.PecatSpor = "";
    make({{}});
    EXPECT_TRUE(control("PageFooter", "Line9").Visible);
    report.Opt.Footer = "";
    make({{}});
    EXPECT_FALSE(control("PageFooter", "Line9").Visible);
    report.Opt.PecatSpor = "x";
    make({{}});
    EXPECT_TRUE(control("PageFooter", "Line9").Visible);
}

TEST_F(ActiveReport2Test, PercentsStandInTheirPlainForm) {
    tax = 18.5;
    report.Calc.Rabat = 7.25F;
    report.Calc.Rest = 3;
    make({{}});
    EXPECT_EQ(control("GroupHeader1", "lblPDVHeader").Caption, "PDV-18.5%");
    EXPECT_EQ(caption("lblRabatText"), "Ukupan rabat (7.25%):");
}

TEST_F(ActiveReport2Test, UnderACommaAmountsAndWordsGoByTheComma) {
    LocaleScope serbian("sr_Latn_RS");
    report.Calc.SlovimaTotal = true;
    report.Calc.Rabat = 10;
    report.Calc.Rest = 5;
    tax = 18.5;
    const QString text = textOf(make({{.quantity = 2, .price = 1234.5}}));
    EXPECT_EQ(caption("lblSumBezPDV"), "2.469,00");
    EXPECT_EQ(caption("lblRabat"), "246,90");
    EXPECT_EQ(caption("lblRabatMedjutotal"), "2.222,10");
    EXPECT_EQ(caption("lblOstalo"), "111,11");
    EXPECT_EQ(caption("lblSumPDV"), "456,77");
    EXPECT_EQ(caption("lblTotal"), "=2.789,98");
    EXPECT_EQ(caption("lblSlovima"), "Slovima: dvehiljadesedamstotinaosamdesetdevetdin. i 98/100");
    EXPECT_EQ(control("GroupHeader1", "lblPDVHeader").Caption, "PDV-18,5%");
    EXPECT_TRUE(text.contains("U Smederevu, 5.3.2026..")) << text.toStdString();
}

TEST_F(ActiveReport2Test, SumsAreSingles) {
    // 16,777,216 and one more is the same Single.
    tax = 0;
    make({{.price = 16777216}, {.price = 1}});
    EXPECT_EQ(caption("lblSumBezPDV"), "16,777,216.00");
}

TEST_F(ActiveReport2Test, ARowWithoutAQuantityIsToldAndTheDocumentGoesOn) {
    const report::Document document = make({{.name = "Red bez kolicine", .quantity = -1}, {.price = 40}});
    ASSERT_EQ(boxes.asked.size(), 1);
    const platform::Box box = boxes.asked.first();
    EXPECT_EQ(box.icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(box.title, "Tarvello");
    EXPECT_TRUE(
        box.text.startsWith("Doslo je do neocekivane greske prilikom formiranja Details dela dokumenta. "
                            "Dokument ce biti generisan "
                            "ali ce njegov izgled i podaci biti nekorektni.\n\nDetalji greske:\n\n[94] "))
        << box.text.toStdString();
    EXPECT_FALSE(box.text.endsWith('\n'));
    EXPECT_TRUE(textOf(document).contains("Red bez kolicine"));
    EXPECT_EQ(caption("lblSumBezPDV"), "40.00");
}

TEST_F(ActiveReport2Test, AMissingLabelIsToldAtThePagesStart) {
    control("ReportHeader", "lblKupacGrad").name = "renamed";
    control("PageFooter", "lblPecat").name = "renamed2";
    const report::Document document = make({{}});
    ASSERT_EQ(boxes.asked.size(), 1);
    const QString text = boxes.lastText();
    EXPECT_TRUE(
        text.startsWith("Doslo je do neocekivane greske prilikom formiranja dokumenta. Dokument ce biti "
                        "generisan ali ce njegov izgled i podaci biti nekorektni.\n\nDetalji greske:\n\n"
                        "[35601] "));
    EXPECT_EQ(text.count("[35601]"), 2);
    EXPECT_EQ(text.count('\n'), 5);
    EXPECT_TRUE(textOf(document).contains("=118.00"));
}

TEST_F(ActiveReport2Test, AnAmountPastAllWordsIsToldAndTheDocumentStands) {
    report.Calc.SlovimaTotal = true;
    const report::Document document = make({{.quantity = 3, .price = 1e9}});
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_TRUE(boxes.lastText().startsWith(
        "Doslo je do neocekivane greske prilikom sracunavanja rabata, poreza i ostalih troskova. Dokument ce "
        "biti generisan ali ce rezultati biti nekorektni.\n\nDetalji greske:\n\n[6] "));
    EXPECT_TRUE(textOf(document).contains("=3,540,000,000.00"));
}

TEST_F(ActiveReport2Test, ADocumentWithoutRowsIsADocument) {
    report.setRecordset({});
    const report::Document document = report.run().value();
    EXPECT_EQ(document.pageCount(), 1);
    EXPECT_TRUE(textOf(document).contains("Br. 17/2026"));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(ActiveReport2Test, LongNamesWrapAndWideAmountsFit) {
    const QString text = textOf(
        make({{.name = "Graficka karta, Veoma Dug Naziv Proizvodjaca Koji Nikako Ne Staje U Jedan Red, "
                       "Model 9000 Sa Dodatkom",
               .quantity = 1,
               .price = 12345678.9,
               .serial = "A-1"}}));
    for (const char* part : {"Graficka karta,", "Dodatkom", "12,345,678.90", "Serijski broj: A-1"}) {
        EXPECT_TRUE(text.contains(part)) << part << "\n" << text.toStdString();
    }
}

TEST_F(ActiveReport2Test, AmountsLineUpAtTheRight) {
    const report::Document document = make({{.price = 5}, {.price = 12345.67}});
    double right = 0;
    int found = 0;
    for (const report::PageItem& item : document.pages.front().items) {
        if (item.text == "5.00" || item.text == "12,345.67") {
            if (found++ > 0) {
                EXPECT_NEAR(item.place.right(), right, 2);
            }
            right = item.place.right();
        }
    }
    EXPECT_EQ(found, 2);
}

TEST_F(ActiveReport2Test, NothingOnThePaperIsOutsideOfItsMargins) {
    giveConditions();
    report.Calc.SlovimaTotal = true;
    report.Opt.PecatSpor = QString("Vazi bez pecata i potpisa. ").repeated(8);
    const report::Document document = make({{.quantity = 1000, .price = 1234567.8, .serial = "x"}});
    for (const report::Page& page : document.pages) {
        for (const report::PageItem& item : page.items) {
            EXPECT_GE(item.place.left(), 840) << item.text.toStdString();
            EXPECT_LE(item.place.right(), 11906 - 840) << item.text.toStdString();
            EXPECT_LE(item.place.bottom(), 16838 - 800) << item.text.toStdString();
        }
    }
}

TEST_F(ActiveReport2Test, ThePdfHoldsTheText) {
    QTemporaryDir folder;
    report.Calc.SlovimaTotal = true;
    const QString file = folder.path() + "/racun.pdf";
    make({{.price = 100}}).savePdf(file);
    QProcess reader;
    reader.start("pdftotext", {"-layout", file, "-"});
    if (!reader.waitForStarted()) {
        GTEST_SKIP() << "there is no reader of PDF files here";
    }
    ASSERT_TRUE(reader.waitForFinished());
    const QString text = QString::fromUtf8(reader.readAllStandardOutput());
    for (const char* part : {"PREDRACUN", "Br. 17/2026", "Memorija, Proizvodjac, Modul", "=118.00",
                             "stotinuosamnaestdin. i 0/100"}) {
        EXPECT_TRUE(text.contains(part)) << part << "\n" << text.toStdString();
    }
}

TEST_F(ActiveReport2Test, ThereIsOneForTheProgram) {
    EXPECT_EQ(&ActiveReport2::instance(), &ActiveReport2::instance());
}
