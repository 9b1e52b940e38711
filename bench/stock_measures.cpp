// The catalogue, the requisition and the documents, on 50,000 products and a requisition of 5,000 rows.
#include <benchmark/benchmark.h>

#include <QLineEdit>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "catalogue/ActiveReport1.h"
#include "catalogue/frmKonfigPrint_rules.h"
#include "catalogue/frmKonfiguratorEx.h"
#include "catalogue/stock_draw.h"
#include "data/session.h"
#include "documents/ActiveReport2.h"
#include "documents/frmInvoiceEx.h"
#include "main_window.h"
#include "measures.h"
#include "platform/controls/boxes.h"
#include "shell/modMain.h"
#include "stock.h"

namespace {

std::string money(double amount) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", amount);
    std::string grouped = text;
    for (std::size_t at = grouped.size() - 3; at > 3; at -= 3)
        grouped.insert(at - 3, 1, ',');
    return grouped;
}

std::string plain(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%g", number);
    return text;
}

template <typename Row, typename Read>
void readAll(sqlite3_stmt* statement, int expected, Read read) {
    std::vector<Row> rows;
    while (sqlite3_step(statement) == SQLITE_ROW)
        rows.push_back(read(statement));
    sqlite3_finalize(statement);
    if (static_cast<int>(rows.size()) != expected)
        std::abort();
    benchmark::DoNotOptimize(rows.data());
}

// --- The product list.

// The catalogue, filled as for the first group, of all manufacturers.
frmKonfiguratorEx& catalogue(Shop& shop) {
    static frmKonfiguratorEx* const window = [&shop] {
        stockOf(shop);
        auto* made = new frmKonfiguratorEx;
        QTimer::singleShot(0, made, [made] { made->hide(); });
        made->Display();
        made->PrikaziSveProizvodjace = true;
        platform::ListBox& groups = *made->List1[frmKonfiguratorEx::kGroups];
        if (!groups.setCurSel(groups.findString(QStringLiteral("Grupa 0"))))
            std::abort();
        return made;
    }();
    return *window;
}

void productsOurs(Shop& shop) {
    frmKonfiguratorEx& window = catalogue(shop);
    window.DataUpdate(frmKonfiguratorEx::kProducts, QString(), false);
    if (window.ListView1->count() != Stock::kProducts / Stock::kGroups)
        std::abort();
}

void productsBaseline(Shop& shop) {
    struct Row {
        std::string key, maker, name, description, price, stock, tag;
        bool some;
    };
    sqlite3_stmt* statement = shop.prepare(
        "SELECT Oprema.ID, Proizvodjac, Naziv, Opis, Cena*?1, Stanje, Napomena, JM FROM Proizvodjaci LEFT "
        "JOIN "
        "Oprema ON Proizvodjaci.ID=Oprema.IDProizvodjaca WHERE Oprema.IDGrupe=?2");
    sqlite3_bind_double(statement, 1, static_cast<double>(KursKupovni));
    sqlite3_bind_int(statement, 2, stockOf(shop).firstGroup);
    readAll<Row>(statement, Stock::kProducts / Stock::kGroups, [](sqlite3_stmt* at) {
        return Row{"K" + column(at, 0),
                   column(at, 1),
                   column(at, 2),
                   column(at, 3),
                   money(sqlite3_column_double(at, 4)),
                   plain(sqlite3_column_double(at, 5)),
                   column(at, 6) + "|" + column(at, 7),
                   sqlite3_column_double(at, 5) > 0};
    });
}

// --- One key in a search box over 5,000 manufacturers.

void typeAhead(Shop& shop) {
    frmKonfiguratorEx& window = catalogue(shop);
    QLineEdit& box = *window.Text1[frmKonfiguratorEx::kManufacturers];
    // The last one in the list: the search goes through all of them.
    static const QString name = window.List1[1]->text(window.List1[1]->count() - 1);
    static qsizetype length = 0;
    length = length < name.size() ? length + 1 : 1;
    box.setText(name.left(length - 1));
    QTest::keyClick(&box, name.at(length - 1).toLatin1());
}

// --- Drawing one product.

void drawOurs(Shop& shop) {
    static const Stock& stock = stockOf(shop);
    static dao::Recordset products = shop.database().OpenRecordset("SELECT * FROM Oprema WHERE IDGrupe=" +
                                                                   std::to_string(stock.firstGroup));
    static dao::Recordset requisition = shop.database().OpenRecordset(
        "SELECT * FROM InvoiceData WHERE ServiceID=" + std::to_string(stock.service));
    static int next = 0;
    const std::string id = std::to_string(stock.firstProduct + next++ % Stock::kDrawn);
    products.FindFirst("ID=" + id);
    stock_draw::takeFromStock(products, 1);
    requisition.FindFirst("OpremaID=" + id);
    stock_draw::addToRow(requisition, {.quantity = 1, .serialNumber = "S", .append = false, .unit = "Kom."});
}

void drawBaseline(Shop& shop) {
    static const Stock& stock = stockOf(shop);
    static sqlite3_stmt* const readStock = shop.prepare("SELECT Stanje FROM Oprema WHERE ID=?");
    static sqlite3_stmt* const writeStock = shop.prepare("UPDATE Oprema SET Stanje=? WHERE ID=?");
    static sqlite3_stmt* const readRow =
        shop.prepare("SELECT rowid, Stanje FROM InvoiceData WHERE ServiceID=? AND OpremaID=?");
    static sqlite3_stmt* const writeRow =
        shop.prepare("UPDATE InvoiceData SET Stanje=?, SN='S', JM='Kom.' WHERE rowid=?");
    static int next = 0;
    const int id = stock.firstProduct + next++ % Stock::kDrawn;
    shop.run("BEGIN IMMEDIATE");
    sqlite3_bind_int(readStock, 1, id);
    sqlite3_step(readStock);
    sqlite3_bind_double(writeStock, 1, sqlite3_column_double(readStock, 0) - 1);
    sqlite3_reset(readStock);
    sqlite3_bind_int(writeStock, 2, id);
    sqlite3_step(writeStock);
    sqlite3_reset(writeStock);
    shop.run("COMMIT");
    shop.run("BEGIN IMMEDIATE");
    sqlite3_bind_int(readRow, 1, stock.service);
    sqlite3_bind_int(readRow, 2, id);
    if (sqlite3_step(readRow) != SQLITE_ROW)
        std::abort();
    sqlite3_bind_double(writeRow, 1, sqlite3_column_double(readRow, 1) + 1);
    sqlite3_bind_int64(writeRow, 2, sqlite3_column_int64(readRow, 0));
    sqlite3_reset(readRow);
    sqlite3_step(writeRow);
    sqlite3_reset(writeRow);
    shop.run("COMMIT");
}

// --- The requisition.

void requisitionOurs(Shop& shop) {
    static frmInvoiceEx* const window = [&shop] {
        const platform::BoxScript quiet;  // the first opening says that it has no widths yet
        auto* made = new frmInvoiceEx;
        made->setServiceID(stockOf(shop).service);
        QTimer::singleShot(0, made, [made] { made->hide(); });
        made->Display();
        return made;
    }();
    window->UpdateDATA(QString(), true);
    if (window->ListView1->count() != Stock::kDrawn + 1)
        std::abort();
}

void requisitionBaseline(Shop& shop) {
    struct Row {
        std::string key, maker, group, name, description, serial, price, quantity, amount, unit;
    };
    sqlite3_stmt* statement = shop.prepare(
        "SELECT OpremaID, Proizvodjac, Grupa, Naziv, Opis, SN, Cena, Stanje, JM FROM InvoiceData WHERE "
        "ServiceID=?");
    sqlite3_bind_int(statement, 1, stockOf(shop).service);
    double total = 0;
    readAll<Row>(statement, Stock::kDrawn, [&total](sqlite3_stmt* at) {
        const double price = sqlite3_column_double(at, 6) * static_cast<double>(KursKupovni);
        const double quantity = sqlite3_column_double(at, 7);
        total += price * quantity;
        return Row{"K" + column(at, 0),     column(at, 1), column(at, 2), column(at, 3),
                   column(at, 4),           column(at, 5), money(price),  plain(quantity),
                   money(price * quantity), column(at, 8)};
    });
    benchmark::DoNotOptimize(total);
}

// --- An invoice to PDF.

QString paper() {
    static const QTemporaryDir folder;
    return folder.filePath(QStringLiteral("invoice.pdf"));
}

report::Document invoice(Shop& shop) {
    static ActiveReport2 report;
    static dao::Recordset rows = shop.database().OpenRecordset(
        "SELECT InvoiceData.Grupa & ', ' & InvoiceData.Proizvodjac & ', ' & InvoiceData.Naziv AS XXX, "
        "InvoiceData.SN, InvoiceData.JM, InvoiceData.Stanje, InvoiceData.Cena*80 AS Cena1, "
        "InvoiceData.Cena*InvoiceData.Stanje*80*(1+20/100) AS MedjuTotal, InvoiceData.Cena*80*(20/100) AS "
        "PDV, "
        "InvoiceData.Cena*80*(1+20/100) AS PDVPrice FROM InvoiceData WHERE InvoiceData.ServiceID = " +
        std::to_string(stockOf(shop).service) +
        " ORDER BY InvoiceData.Grupa & ', ' & InvoiceData.Proizvodjac & ', ' & InvoiceData.Naziv");
    report.setPriceRoundUp(2);
    report.setCalcPDV(20);
    report.setDokumentTip(1);
    report.setDokumentBroj(QStringLiteral("17/2026"));
    report.setRecordset(rows);
    return *report.run();
}

void invoiceOurs(Shop& shop) {
    invoice(shop).savePdf(paper());
}

// With nothing to work out: texts at places known beforehand.
void paintKnown(const report::Document& known) {
    std::vector<QFont> fonts;
    for (const report::ItemStyle& style : known.styles) {
        QFont font(style.family);
        font.setPixelSize(qRound(style.points * 20));
        font.setBold(style.bold);
        font.setItalic(style.italic);
        fonts.push_back(font);
    }
    QPdfWriter file(paper());
    file.setPageMargins(QMarginsF());
    file.setResolution(1440);
    QPainter painter(&file);
    for (const report::Page& page : known.pages) {
        if (&page != &known.pages.front())
            file.newPage();
        for (const report::PageItem& item : page.items) {
            if (item.kind == report::PageItem::Kind::Text) {
                painter.setFont(fonts[static_cast<std::size_t>(item.style)]);
                painter.drawText(item.place.bottomLeft(), item.text);
            } else if (item.kind == report::PageItem::Kind::Line) {
                painter.drawLine(item.place.topLeft(), item.place.bottomRight());
            }
        }
    }
}

// The same texts, read from the file, and painted where they are known to stand.
void invoiceBaseline(Shop& shop) {
    static const report::Document known = invoice(shop);
    sqlite3_stmt* statement = shop.prepare(
        "SELECT Grupa||', '||Proizvodjac||', '||Naziv, SN, JM, Stanje, Cena*80 FROM InvoiceData WHERE "
        "ServiceID=? ORDER BY 1");
    sqlite3_bind_int(statement, 1, stockOf(shop).service);
    struct Row {
        std::string name, serial, unit;
        double quantity, price;
    };
    readAll<Row>(statement, Stock::kDrawn, [](sqlite3_stmt* at) {
        return Row{column(at, 0), column(at, 1), column(at, 2), sqlite3_column_double(at, 3),
                   sqlite3_column_double(at, 4)};
    });
    paintKnown(known);
}

// --- The price list to PDF.

report::Document priceList(Shop& shop) {
    stockOf(shop);
    static ActiveReport1 report;
    report.setRecordset(
        shop.database().OpenRecordset(price_list::statement({.range = 0, .stock = 0}).toStdString()));
    report.setReportHeader(QStringLiteral("Cenovnik"));
    report.setPriceRoundUp(2);
    return *report.run();
}

void priceListOurs(Shop& shop) {
    priceList(shop).savePdf(paper());
}

void priceListBaseline(Shop& shop) {
    static const report::Document known = priceList(shop);
    sqlite3_stmt* statement = shop.prepare(
        "SELECT Grupa, Proizvodjac, Naziv, Opis, Cena*80 FROM Grupe JOIN Oprema ON Oprema.IDGrupe=Grupe.ID "
        "LEFT "
        "JOIN Proizvodjaci ON Proizvodjaci.ID=Oprema.IDProizvodjaca ORDER BY Grupa, "
        "Proizvodjac");
    struct Row {
        std::string group, maker, name, description;
        double price;
    };
    std::vector<Row> rows;
    while (sqlite3_step(statement) == SQLITE_ROW)
        rows.push_back({column(statement, 0), column(statement, 1), column(statement, 2),
                        column(statement, 3), sqlite3_column_double(statement, 4)});
    sqlite3_finalize(statement);
    if (rows.size() < Stock::kProducts)
        std::abort();
    paintKnown(known);
}

}  // namespace

std::vector<Measure> stockMeasures() {
    return {
        {"fill_product_list_5000", 3, productsOurs, productsBaseline, 1, 9},
        {"draw_one_product", 1.5, drawOurs, drawBaseline, 1000, 5},
        {"fill_requisition_5000", 3, requisitionOurs, requisitionBaseline, 1, 9},
        {"invoice_5000_rows_to_pdf", 2, invoiceOurs, invoiceBaseline, 1, 5},
        {"price_list_50000_to_pdf", 2, priceListOurs, priceListBaseline, 1, 3},
        {"type_ahead_5000_manufacturers", 0, typeAhead, {}, 100, 5},
    };
}
