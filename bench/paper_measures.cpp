// Documents as PDF files. The plain side reads the same rows and paints texts whose places it knows
// beforehand: it has no page to lay out.
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdlib>
#include <optional>
#include <utility>

#include "catalogue/ActiveReport1.h"
#include "catalogue/frmKonfigPrint_rules.h"
#include "documents/ActiveReport2.h"
#include "plain_texts.h"
#include "platform/dao/recordset.h"
#include "shop.h"

namespace {

// One side's file, and what is to be read in it.
class Paper {
 public:
    QString path() const { return folder_.filePath(QStringLiteral("paper.pdf")); }
    Lines lines() const {
        QProcess reader;
        reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-raw"), path(), QStringLiteral("-")});
        if (!reader.waitForFinished(600000) || reader.exitCode() != 0) {
            std::abort();
        }
        // Some letters draw "fi" and "fl" as one sign, which is no other text.
        const QString text =
            QString::fromUtf8(reader.readAllStandardOutput()).normalized(QString::NormalizationForm_KC);
        Lines lines;
        for (const QString& line : text.split(QLatin1Char('\n'))) {
            lines.push_back(line.toStdString());
        }
        return lines;
    }

 private:
    QTemporaryDir folder_;
};

std::vector<QFont> fontsOf(const report::Document& known) {
    std::vector<QFont> fonts;
    for (const report::ItemStyle& style : known.styles) {
        QFont font(style.family);
        font.setPixelSize(qRound(style.points * 20));
        font.setBold(style.bold);
        font.setItalic(style.italic);
        font.setHintingPreference(QFont::PreferNoHinting);
        font.setKerning(false);  // it costs time, and moves no text away from where it is known to stand
        fonts.push_back(font);
    }
    return fonts;
}

void paintPage(QPainter& painter, const report::Page& page, const std::vector<QFont>& fonts) {
    int style = -1;
    for (const report::PageItem& item : page.items) {
        if (item.kind == report::PageItem::Kind::Line) {
            painter.drawLine(item.place.topLeft(), item.place.bottomRight());
        }
        if (item.kind != report::PageItem::Kind::Text) {
            continue;
        }
        if (std::exchange(style, item.style) != item.style) {
            painter.setFont(fonts[static_cast<std::size_t>(style)]);
        }
        painter.drawText(item.place.bottomLeft(), item.text);
    }
}

void paint(const report::Document& known, const QString& path) {
    const std::vector<QFont> fonts = fontsOf(known);
    QPdfWriter file(path);
    file.setPageMargins(QMarginsF());
    file.setResolution(1440);
    QPainter painter(&file);
    for (const report::Page& page : known.pages) {
        if (&page != &known.pages.front()) {
            file.newPage();
        }
        paintPage(painter, page, fonts);
        painter.setFont(QFont());
    }
}

// --- An invoice.

constexpr const char* kInvoiceText =
    "SELECT InvoiceData.Grupa & ', ' & InvoiceData.Proizvodjac & ', ' & InvoiceData.Naziv AS XXX, "
    "InvoiceData.SN, InvoiceData.JM, InvoiceData.Stanje, InvoiceData.Cena*80 AS Cena1, "
    "InvoiceData.Cena*InvoiceData.Stanje*80*(1+20/100) AS MedjuTotal, InvoiceData.Cena*80*(20/100) AS PDV, "
    "InvoiceData.Cena*80*(1+20/100) AS PDVPrice FROM InvoiceData WHERE InvoiceData.ServiceID = ";
constexpr const char* kInvoiceOrder =
    " ORDER BY InvoiceData.Grupa & ', ' & InvoiceData.Proizvodjac & ', ' & InvoiceData.Naziv";

class Invoice {
 public:
    explicit Invoice(Shop& shop)
        : rows_(shop.ours().OpenRecordset(kInvoiceText + std::to_string(shop.stock().service) +
                                          kInvoiceOrder)) {
        report_.Calc.PriceRoundUp = 2;
        report_.Calc.PDV = 20;
        report_.Dokument.setTip(1);
        report_.Dokument.setBroj(QStringLiteral("17/2026"));
        report_.setRecordset(rows_);
    }
    std::optional<report::Document> document() { return report_.run(); }

 private:
    dao::Recordset rows_;
    ActiveReport2 report_;
};

class InvoiceOurs : public Side {
 public:
    explicit InvoiceOurs(Shop& shop) : invoice_(shop) {}
    void run() override { invoice_.document()->savePdf(paper_.path()); }
    Lines result() override { return paper_.lines(); }

 private:
    Invoice invoice_;
    Paper paper_;
};

class InvoicePlain : public Side {
 public:
    explicit InvoicePlain(Shop& shop)
        : known_(*Invoice(shop).document()),
          service_(shop.stock().service),
          rows_(
              shop.plain(),
              "SELECT Grupa||', '||Proizvodjac||', '||Naziv, SN, JM, Stanje, Cena*80 FROM InvoiceData WHERE "
              "ServiceID=? ORDER BY 1") {}
    void run() override {
        cells_.clear();
        rows_.bind(1, service_);
        while (rows_.next()) {
            const Row row = rows_.row();
            for (int column = 0; column < 3; ++column) {
                cells_.add(row.text(column));
            }
            for (int column = 3; column < 5; ++column) {
                appendAmount(cells_.text(), centsOf(row.number(column)));
                cells_.end();
            }
        }
        paint(known_, paper_.path());
    }
    Lines result() override { return paper_.lines(); }

 private:
    report::Document known_;
    int service_;
    Statement rows_;
    Cells cells_;
    Paper paper_;
};

// --- The price list.

class PriceList {
 public:
    explicit PriceList(Shop& shop) : shop_(shop) {}
    std::optional<report::Document> document() {
        report_.setRecordset(
            shop_.ours().OpenRecordset(price_list::statement({.range = 0, .stock = 0}).toStdString()));
        report_.setReportHeader(QStringLiteral("Cenovnik"));
        report_.setPriceRoundUp(2);
        return report_.run();
    }

 private:
    Shop& shop_;
    ActiveReport1 report_;
};

class PriceListOurs : public Side {
 public:
    explicit PriceListOurs(Shop& shop) : list_(shop) {}
    void run() override { list_.document()->savePdf(paper_.path()); }
    Lines result() override { return paper_.lines(); }

 private:
    PriceList list_;
    Paper paper_;
};

class PriceListPlain : public Side {
 public:
    explicit PriceListPlain(Shop& shop)
        : known_(*PriceList(shop).document()),
          rows_(
              shop.plain(),
              "SELECT Grupa, Proizvodjac, Naziv, Opis, Cena*80 FROM Grupe JOIN Oprema ON "
              "Oprema.IDGrupe=Grupe.ID LEFT JOIN Proizvodjaci ON Proizvodjaci.ID=Oprema.IDProizvodjaca ORDER "
              "BY Grupa, Proizvodjac") {}
    void run() override {
        cells_.clear();
        while (rows_.next()) {
            const Row row = rows_.row();
            for (int column = 0; column < 4; ++column) {
                cells_.add(row.text(column));
            }
            appendAmount(cells_.text(), centsOf(row.number(4)));
            cells_.end();
        }
        paint(known_, paper_.path());
    }
    Lines result() override { return paper_.lines(); }

 private:
    report::Document known_;
    Statement rows_;
    Cells cells_;
    Paper paper_;
};

}  // namespace

std::vector<Measure> paperMeasures() {
    return {
        {"an invoice of 5,000 rows to PDF", 2, side<InvoiceOurs>(), side<InvoicePlain>(), 9},
        {"a price list of 50,000 products to PDF", 2, side<PriceListOurs>(), side<PriceListPlain>(), 5},
    };
}
