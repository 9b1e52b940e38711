#include "support/looks.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>
#include <memory>

#include "documents/ActiveReport2.h"
#include "documents/document_rows.h"
#include "documents/document_window.h"
#include "documents/frmTrebovanjeError.h"
#include "documents/requisition_window.h"
#include "support/dark_desktop.h"

namespace {

class RequisitionLooks : public RequisitionWindow {};

TEST_F(RequisitionLooks, OfTheRequisition) {
    draw(addProduct("Disk", 4), "Adler", "Disk", 10.5F, 2);
    show([&] { expectLooks(win(), QStringLiteral("requisition")); });
}

TEST_F(RequisitionLooks, OfTheCriticalProducts) {
    frmTrebovanjeError window;
    window.AddListItem("K1", "Seagate", "Diskovi", "Disk", "opis", 12.5F, 2.5F, 1);
    bool seen = false;
    QTimer::singleShot(0, &window, [&] {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        expectLooks(window, QStringLiteral("critical_products"));
        seen = true;
        window.reject();
    });
    window.Display();
    EXPECT_TRUE(seen);
}

struct DocumentLooks : DocumentWindow {};

TEST_F(DocumentLooks, OfTheDocumentsWindow) {
    proForma([&] { expectLooks(window(), QStringLiteral("document_pro_forma")); });
    closeWindow();
    invoice([&] { expectLooks(window(), QStringLiteral("document_invoice")); });
}

TEST_F(DocumentLooks, TheDocumentsWindowTurnsDarkWithTheDesktop) {
    QImage turned, opened;
    proForma([&] { turned = pictureInTheDark(window()); });
    closeWindow();
    const DarkDesktop dark;
    proForma([&] { opened = pictureOf(window()); });
    expectAlike(turned, opened);
}

TEST(PaperLooks, OfTheDocumentsDesign) {
    ActiveReport2 report;
    expectDesign(report,
                 {"ReportHeader", "PageHeader", "GroupHeader1", "Detail", "GroupFooter1", "PageFooter",
                  "ReportFooter"},
                 QStringLiteral("design_document"));
}

// An invoice of three rows with everything on it.
TEST_F(DocumentLooks, OfThePrintedInvoice) {
    ActiveReport2 report;
    report.Dokument.setTip(1);
    report.Dokument.setBroj("17/2025");
    report.Dokument.setDatum(QDate(2025, 3, 5));
    report.Kupac.Naziv = "Peric Pera";
    report.Kupac.Adresa = "Lipova 1";
    report.Kupac.Grad = "Beograd, 11000";
    report.Calc.CeneDinarske = true;
    report.Opt.NacinPlacanja.caption = "Nacin placanja:";
    report.Opt.NacinPlacanja.value = "100% avans.";
    report.Opt.Napomena.caption = "Napomena:";
    report.Opt.Napomena.value = "Garancija dve godine.";
    report.Calc.Rabat = 10;
    report.Calc.PDV = 18;
    std::vector<DocumentRow> rows;
    for (const char* name : {"Disk", "Monitor", "Mis"}) {
        rows.push_back({.name = name, .quantity = 2, .price = 100});
    }
    report.setRows(std::make_unique<DocumentRows>(std::move(rows), 18));
    expectLooks(report.run().value(), QStringLiteral("printed_invoice"));
}

}  // namespace
