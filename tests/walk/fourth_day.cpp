#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QMessageBox>
#include <QTabBar>
#include <QTest>
#include <QTreeView>
#include <QWidget>

#include "walker.h"

namespace {

constexpr int kPrice = 3;  // column of the services list

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool mainWindow(Walker& walker) {
    return windowOnShow() != nullptr && walker.shows("TabStrip1");
}

void filter(Walker& walker) {
    walker.station("a quick filter finds who still owes, and one that finds nothing changes nothing");
    walker.when([&walker] { return mainWindow(walker); }, [] {});
    walker.menu("mnuQuickSearch", "Not finished and not paid services");
    walker.answer("Filtering the database suceeded. Returned:", QMessageBox::Ok);
    const QString caption = QStringLiteral("FILTER: Not finished and not paid services");
    walker.checkText("Panel(Filter)", caption);
    walker.picture("quick-filter");
    walker.menu("mnuQuickSearch", "Not finished and paid services");
    walker.answer("Quick filtering didn't result with any data.", QMessageBox::Ok);
    walker.checkText("Panel(Filter)", caption);
    walker.tool("RemoveFilter");
    walker.check("the caption is gone", [&walker] { return !walker.shows("Panel(Filter)"); });
    walker.tool("ApplyFilter");
    walker.answer("Press a little down arrow", QMessageBox::Ok);
}

void sortServices(Walker& walker) {
    walker.station("the services are sorted by a click, and put back");
    walker.tab(0);
    walker.type("Text2(0)", "pet");
    walker.tab(2);
    walker.act([&walker] {
        auto* list = qobject_cast<QTreeView*>(walker.control("ListView1"));
        QHeaderView* head = list->header();
        QTest::mouseClick(head->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(head->sectionViewportPosition(kPrice) + 10, head->height() / 2));
    });
    walker.picture("services-sorted");
    walker.menu("mnuPPopup", "Unsort All");
    walker.checkText("Panel(Text)", "Ready");

    walker.station("the legend explains the pictures");
    walker.menu("mnuHHelp", "Simboli");
    walker.when([&walker] { return walker.shows("frmLegend"); }, [] {});
    walker.picture("legend");
    walker.press(Qt::Key_Escape);
}

void report(Walker& walker, const QString& folder) {
    walker.station("the report is written and opened");
    walker.when([&walker] { return mainWindow(walker); }, [] {});
    walker.menu("mnuVView", "Report Options...");
    walker.when([&walker] { return walker.shows("frmReportOptions"); }, [] {});
    walker.picture("report-options");
    walker.click("Command1(0)");
    walker.when([&walker] { return mainWindow(walker); }, [] {});
    walker.tool("ViewReport");
    walker.check("the client stands in it",
                 [folder] { return contentOf(folder + "/Report.txt").contains("Petrovic, Milan"); });
    walker.check("and is shown", [folder] { return contentOf(folder + "/opened").contains("Report.txt"); });
}

void setOptions(Walker& walker) {
    walker.station("the options take the firm's data and a new rate, which is felt at once");
    walker.menu("mnuVView", "Options...");
    walker.when([&walker] { return walker.shows("frmOptions"); }, [] {});
    walker.picture("options");
    walker.click("Command1(4)");
    walker.when([&walker] { return walker.shows("frmJM"); }, [] {});
    walker.picture("units");
    walker.press(Qt::Key_Escape);
    walker.when([&walker] { return walker.shows("frmOptions"); }, [] {});
    walker.type("Text1(2)", "160");
    walker.act([&walker] {
        auto* tabs = walker.control("frmOptions")->findChild<QTabBar*>();
        QTest::mouseClick(tabs, Qt::LeftButton, Qt::NoModifier, tabs->tabRect(1).center());
    });
    struct Entry {
        const char *field, *text;
    };
    for (const Entry& entry : {Entry{"Text2(0)", "Kralja Petra 12"}, Entry{"Text2(1)", "Smederevo"},
                               Entry{"Text2(2)", "11300"}, Entry{"Text2(3)", "026 555 010"},
                               Entry{"Text2(5)", "servis@primer.rs"}, Entry{"Text2(10)", "101234567"}}) {
        walker.type(entry.field, entry.text);
    }
    walker.picture("options-firm");
    walker.click("Command1(0)");
    walker.check("the price is twice as high", [&walker] {
        return mainWindow(walker) && cell(walker.control("ListView1"), 0, kPrice) == "105,120.00";
    });
}

void priceList(Walker& walker, const QString& papers, const QString& folder) {
    walker.station("the requisition goes out as text");
    walker.tool("PriceList");
    walker.when([&walker] { return walker.shows("frmInvoiceEx"); }, [] {});
    walker.press(Qt::Key_P, Qt::ControlModifier);
    walker.check("it is shown", [folder] { return contentOf(folder + "/opened").contains("PriceList.txt"); });

    walker.station("the catalogue goes out as a price list");
    walker.press(Qt::Key_F12);
    walker.when([&walker] { return walker.shows("frmKonfiguratorEx"); }, [] {});
    walker.type("Text1(0)", "Pro");
    walker.press(Qt::Key_Down);
    walker.type("Text1(1)", "AMD");
    walker.press(Qt::Key_Down);
    walker.row("ListView1", 1, "Ryzen 5 7600");
    walker.tool("print");
    walker.when([&walker] { return walker.shows("frmKonfigPrint"); }, [] {});
    walker.type("Text1(0)", "Cenovnik");
    walker.picture("price-list-options");
    walker.click("Command1(0)");
    walker.when([&walker] { return walker.shows("Preview"); }, [] {});
    walker.pause(300);
    walker.picture("price-list");
    const QString file = papers + "/price-list.pdf";
    walker.press(Qt::Key_S, Qt::ControlModifier);
    walker.enter("FileDialog", file);
    walker.check("the paper is kept", [file] { return QFile::exists(file); });
    for (const char* window : {"Preview", "frmKonfigPrint", "frmKonfiguratorEx", "frmInvoiceEx"}) {
        walker.when([&walker, window] { return walker.shows(window); }, [] {});
        walker.press(Qt::Key_Escape);
        walker.check(QStringLiteral("%1 is closed").arg(window),
                     [window] { return topWindow(window) == nullptr; });
    }
}

void lastCommands(Walker& walker) {
    walker.station("everything is read afresh");
    walker.when([&walker] { return mainWindow(walker); }, [] {});
    walker.tool("Refresh");
    walker.checkText("Panel(Text)", "Ready");
    walker.station("what is not built yet says so, and the bars can be hidden");
    walker.menu("mnuDDatabase", "Search...");
    walker.answer("This is an additional feature that will be built in later.", QMessageBox::Ok);
    for (const char* bar : {"Toolbar", "Statusbar"}) {
        walker.menu("mnuVView", bar);
        walker.menu("mnuVView", bar);
        walker.check("the whole window is on the screen", [] { return isOnScreen(*windowOnShow()); });
    }
    walker.station("the clients are previewed by a click on the status bar");
    walker.click("Panel(Text)");
    walker.when([&walker] { return walker.shows("Preview"); }, [] {});
    walker.picture("clients-preview");
    walker.press(Qt::Key_Escape);
    walker.station("the program is closed for good");
    walker.when([&walker] { return mainWindow(walker); }, [] {});
    walker.act([] { windowOnShow()->close(); });
}

}  // namespace

void walkFourthDay(Walker& walker, const QString& papers) {
    const QString folder = QApplication::applicationDirPath();
    filter(walker);
    sortServices(walker);
    report(walker, folder);
    setOptions(walker);
    priceList(walker, papers, folder);
    lastCommands(walker);
}
