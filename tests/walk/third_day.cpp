#include <QApplication>
#include <QDate>
#include <QFile>
#include <QMessageBox>
#include <QWidget>

#include "walker.h"

namespace {

constexpr int kName = 1;  // columns of the catalogue's product list
constexpr int kStock = 4;
constexpr int kPartName = 2;  // columns of the requisition
constexpr int kPartSerial = 4;
constexpr int kSubtotal = 7;

// The text of a list's column in the row whose other column holds `key`; empty where there is no such row.
QString beside(const QWidget* list, int column, const QString& key, int wanted) {
    for (int row = 0; row < rows(list); ++row) {
        if (cell(list, row, column) == key) {
            return cell(list, row, wanted);
        }
    }
    return {};
}

void checkStock(Walker& walker, const QString& product, const QString& stock) {
    walker.check(QStringLiteral("%1 of \"%2\" on the shelf").arg(stock, product), [&walker, product, stock] {
        return walker.shows("frmKonfiguratorEx") &&
               beside(walker.control("ListView1"), kName, product, kStock) == stock;
    });
}

void checkPart(Walker& walker, const QString& product, int column, const QString& text) {
    walker.check(QStringLiteral("\"%1\" stands in the requisition with %2").arg(product, text),
                 [&walker, product, column, text] {
                     return walker.shows("frmInvoiceEx") &&
                            beside(walker.control("ListView1"), kPartName, product, column) == text;
                 });
}

// What the small window asks for each product drawn.
void giveQuantity(Walker& walker, const QString& quantity, const QString& serialNumber) {
    walker.when([&walker] { return walker.shows("frmInputBox"); }, [] {});
    walker.type("Text1(0)", quantity);
    if (!serialNumber.isEmpty()) {
        walker.type("Text1(1)", serialNumber);
    }
}

void takeInService(Walker& walker) {
    walker.station("a service for a new machine is taken in");
    walker.when([&walker] { return windowOnShow() != nullptr && walker.shows("TabStrip1"); }, [] {});
    walker.type("Text2(0)", "pet");
    walker.checkText("Combo1(0)", "Petrovic, Milan");
    walker.tab(1);
    walker.tool("NewRecord");
    walker.type("Text1(19)", "Radna stanica");
    walker.tool("SaveRecord");
    walker.checkText("Combo1(1)", "Radna stanica");
    walker.tab(2);
    walker.tool("NewRecord");
    walker.when([&walker] { return walker.shows("Command1(0)"); }, [] {});
    walker.type("Text1(0)", "16/03/2026");
    walker.type("Text1(5)", "1");
    walker.type("Text1(6)", "5");
    walker.type("Text1(8)", "20");
    walker.type("Text1(4)", "Sklapanje racunara po zelji.");
    walker.click("Command1(0)");
    walker.check("the list shows it", [&walker] { return rows(walker.control("ListView1")) == 1; });
}

void openCatalogue(Walker& walker) {
    walker.station("its requisition opens, empty");
    walker.tool("PriceList");
    walker.answer("Neocekivana greska prilikom stvaranja ListView kontrole:", QMessageBox::Ok);
    walker.check("there is only the total", [&walker] {
        return walker.shows("frmInvoiceEx") && cell(walker.control("ListView1"), 0, kSubtotal) == "0.00";
    });
    walker.picture("requisition-empty");

    walker.station("the catalogue finds a group and a manufacturer while one types");
    walker.press(Qt::Key_F12);
    walker.when([&walker] { return walker.shows("frmKonfiguratorEx"); }, [] {});
    walker.picture("catalogue-opened");
    walker.type("Text1(0)", "Pro");
    walker.checkText("Text1(0)", "Procesori");
    walker.press(Qt::Key_Down);
    walker.type("Text1(1)", "AM");
    walker.checkText("Text1(1)", "AMD");
    walker.press(Qt::Key_Down);
    walker.check("the processors are listed", [&walker] { return rows(walker.control("ListView1")) == 8; });
    walker.row("ListView1", kName, "Ryzen 5 7600");
    walker.picture("catalogue");
}

void draw(Walker& walker) {
    walker.station("a processor is drawn by Enter, with its serial number");
    walker.row("ListView1", kName, "Ryzen 5 7600");
    walker.press(Qt::Key_Return);
    giveQuantity(walker, "1", "sn-7600-01");
    walker.picture("quantity");
    walker.click("Command1(0)");
    checkStock(walker, "Ryzen 5 7600", "4");

    walker.station("the same once more, its number added to the first");
    walker.press(Qt::Key_Return);
    giveQuantity(walker, "1", "sn-7600-02");
    walker.click("Check1(1)");
    walker.click("Command1(0)");
    walker.answer("Proizvod je vec trebovan.", QMessageBox::Yes);
    checkStock(walker, "Ryzen 5 7600", "3");

    walker.station("what is not on the shelf is refused");
    walker.row("ListView1", kName, "Ryzen 9 9950X");
    walker.press(Qt::Key_Return);
    walker.answer("Proizvoda nema na stanju. Ne mozete da ga trebujete.", QMessageBox::Ok);

    walker.station("another one is carried over with the mouse");
    walker.act([] { topWindow("frmInvoiceEx")->move(700, 560); });
    walker.drag("ListView1", kName, "Ryzen 7 9700X", "frmInvoiceEx");
    giveQuantity(walker, "1", {});
    walker.click("Command1(0)");
    checkStock(walker, "Ryzen 7 9700X", "1");
    walker.act([] { topWindow("frmInvoiceEx")->move(0, 0); });

    walker.station("memory is drawn from another group");
    walker.type("Text1(0)", "Mem");
    walker.checkText("Text1(0)", "Memorija");
    walker.press(Qt::Key_Down);
    walker.type("Text1(1)", "Kin");
    walker.checkText("Text1(1)", "Kingston");
    walker.press(Qt::Key_Down);
    walker.row("ListView1", kName, "FURY Beast DDR5 32GB 6000 (2x16GB)");
    walker.press(Qt::Key_Return);
    giveQuantity(walker, "2", {});
    walker.click("Command1(0)");
    checkStock(walker, "FURY Beast DDR5 32GB 6000 (2x16GB)", "3");
    walker.press(Qt::Key_Escape);
}

void giveBack(Walker& walker) {
    walker.station("the requisition has all of it, and its total");
    checkPart(walker, "Ryzen 5 7600", kPartSerial, "SN-7600-01, SN-7600-02");
    checkPart(walker, "Ryzen 5 7600", kSubtotal, "28,640.00");
    checkPart(walker, "Ryzen 7 9700X", kSubtotal, "23,920.00");
    checkPart(walker, "FURY Beast DDR5 32GB 6000 (2x16GB)", kSubtotal, "30,240.00");
    walker.check("the total",
                 [&walker] { return cell(walker.control("ListView1"), 0, kSubtotal) == "82,800.00"; });
    walker.picture("requisition");

    walker.station("the memory goes back to the shelf");
    walker.row("ListView1", kPartName, "FURY Beast DDR5 32GB 6000 (2x16GB)");
    walker.press(Qt::Key_Delete);
    walker.answer("Spremate se da izbrisete trebovanu stavku iz liste trebovanja.", QMessageBox::Yes);
    walker.check("the total is less",
                 [&walker] { return cell(walker.control("ListView1"), 0, kSubtotal) == "52,560.00"; });
    walker.press(Qt::Key_F12);
    walker.when([&walker] { return walker.shows("frmKonfiguratorEx"); }, [] {});
    walker.type("Text1(0)", "Mem");
    walker.press(Qt::Key_Down);
    walker.type("Text1(1)", "Kin");
    walker.press(Qt::Key_Down);
    checkStock(walker, "FURY Beast DDR5 32GB 6000 (2x16GB)", "5");
    walker.press(Qt::Key_Escape);
    walker.check("the requisition is on show again", [&walker] { return walker.shows("frmInvoiceEx"); });
    walker.press(Qt::Key_Escape);

    walker.station("the total has become the price of the service");
    walker.check("its price", [&walker] {
        return walker.shows("TabStrip1") && cell(walker.control("ListView1"), 0, 3) == "52,560.00";
    });
    walker.picture("service-priced");
}

// From the options of a document to its PDF and back to the main window.
void issue(Walker& walker, const QString& file, const QString& picture) {
    walker.click("Command1(0)");
    walker.when([&walker] { return walker.shows("Preview"); }, [] {});
    walker.pause(200);
    if (!picture.isEmpty()) {
        walker.picture(picture);
    }
    walker.press(Qt::Key_S, Qt::ControlModifier);
    walker.enter("FileDialog", file);
    walker.check("the paper is kept", [file] { return QFile::exists(file); });
    walker.when([&walker] { return walker.shows("Preview"); }, [] {});
    walker.press(Qt::Key_Escape);
    walker.when([&walker] { return walker.shows("frmPrintInvoiceEx"); }, [] {});
}

void issueDocuments(Walker& walker, const QString& papers) {
    const QString year = QString::number(QDate::currentDate().year());
    walker.station("a pro-forma invoice is issued");
    walker.tool("Quotation");
    walker.when([&walker] { return walker.shows("frmPrintInvoiceEx"); }, [] {});
    walker.picture("document-options");
    walker.click("Check1(0)");
    issue(walker, papers + "/pro-forma.pdf", "pro-forma-preview");
    walker.checkText("Command1(2)", "1");
    walker.press(Qt::Key_Escape);

    walker.station("the number of invoices is set by hand, and two follow each other");
    walker.when([&walker] { return walker.shows("TabStrip1"); }, [] {});
    walker.tool("Invoice");
    walker.when([&walker] { return walker.shows("frmPrintInvoiceEx"); }, [] {});
    walker.checkText("Command1(2)", "0");
    walker.click("Command1(2)");
    walker.enter("InputBox", "16");
    walker.checkText("Command1(2)", "16");
    walker.picture("invoice-options");
    issue(walker, papers + "/invoice-17.pdf", "invoice-preview");
    walker.checkText("Label3(1)", QStringLiteral("17/%1, od").arg(year));
    issue(walker, papers + "/invoice-18.pdf", {});
    walker.checkText("Command1(2)", "18");
    walker.press(Qt::Key_Escape);
}

}  // namespace

void walkThirdDay(Walker& walker, const QString& papers) {
    takeInService(walker);
    openCatalogue(walker);
    draw(walker);
    giveBack(walker);
    issueDocuments(walker, papers);
    walker.station("the program is closed for the night");
    walker.when([&walker] { return walker.shows("TabStrip1"); }, [] {});
    walker.act([] { windowOnShow()->close(); });
}
