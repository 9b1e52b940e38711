#include <QApplication>
#include <QMessageBox>
#include <QTabBar>
#include <QWidget>

#include "walker.h"

namespace {

// An entry field of the main window or the service editor, by its index.
QString field(int index) {
    return QStringLiteral("Text1(%1)").arg(index);
}

struct Entry {
    int field;
    const char* text;
};

void fill(Walker& walker, std::initializer_list<Entry> entries) {
    for (const Entry& entry : entries) {
        walker.type(field(entry.field), QString::fromUtf8(entry.text));
    }
}

QString caption(Walker& walker, int tab) {
    auto* strip = qobject_cast<QTabBar*>(walker.control(QStringLiteral("TabStrip1")));
    return strip == nullptr ? QString()
                            : strip->tabText(tab).replace(QLatin1String("&&"), QLatin1String("&"));
}

void takeInClients(Walker& walker) {
    walker.station("a client is refused while fields are missing");
    walker.tool("NewRecord");
    walker.checkText("Panel(Text)", "Add new mode...");
    fill(walker, {{0, "Markovic"}, {1, "Jelena"}});
    walker.picture("client-being-typed");
    walker.tool("SaveRecord");
    walker.when([] { return boxOnShow() != nullptr; }, [] {});
    walker.picture("client-refused");
    walker.answer("Missing Client's Address - Street Name & Number.", QMessageBox::Yes);
    walker.check("the first missing field has the focus",
                 [] { return focusOnShow() != nullptr && focusOnShow()->objectName() == "Text1(7)"; });

    walker.station("a client with a firm is taken in");
    fill(walker, {{6, "Pekara Zlatni Klas"},
                  {7, "Bulevar Oslobodjenja 12"},
                  {8, "Novi Sad"},
                  {9, "Vojvodina"},
                  {10, "21000"},
                  {11, "Srbija"},
                  {12, "021 555 0101"},
                  {15, "jelena@zlatniklas.example"}});
    walker.click("Check1");
    walker.tool("SaveRecord");
    walker.checkText("Combo1(0)", "Pekara Zlatni Klas");
    walker.check("the firm's name stands on the tab",
                 [&walker] { return caption(walker, 0) == "Pekara Zlatni Klas"; });
    walker.picture("client-with-firm");

    walker.station("two people are taken in");
    for (const auto& [surname, given, street] :
         {std::tuple{"Petrovic", "Milan", "Cara Dusana 5"}, std::tuple{"Anic", "Vesna", "Njegoseva 48"}}) {
        walker.tool("NewRecord");
        fill(walker, {{0, surname}, {1, given}, {7, street}, {8, "Beograd"}, {10, "11000"}, {11, "Srbija"}});
        walker.tool("SaveRecord");
        walker.checkText("Combo1(0)",
                         QStringLiteral("%1, %2").arg(QLatin1String(surname), QLatin1String(given)));
    }

    walker.station("a client is found by typing");
    walker.type("Text2(0)", "pek");
    walker.checkText("Combo1(0)", "Pekara Zlatni Klas");
    walker.checkText(field(0), "Markovic");
    walker.picture("client-found");
}

void takeInComputer(Walker& walker) {
    walker.station("a computer without a name is refused, and dropped");
    walker.tab(1);
    walker.checkText("Combo1(1)", "");
    walker.picture("no-computers-yet");
    walker.tool("NewRecord");
    fill(walker, {{20, "six cores"}});
    walker.tool("SaveRecord");
    walker.answer("Missing Client's Computer Name.", QMessageBox::No);
    walker.checkText("Combo1(1)", "");

    walker.station("a computer is taken in");
    walker.tool("NewRecord");
    fill(walker, {{19, "Kasa u pekari"},
                  {20, "Ryzen 5 8500G"},
                  {21, "B650M"},
                  {23, "16 GB DDR5"},
                  {24, "SSD 1 TB"},
                  {35, "Debian 12"},
                  {36, "Brasno u ventilatoru; cistiti svaka tri meseca."}});
    walker.tool("SaveRecord");
    walker.checkText("Combo1(1)", "Kasa u pekari");
    walker.picture("computer");
}

void takeInServices(Walker& walker) {
    walker.station("a service with a wrong date and tax is refused");
    walker.tab(2);
    walker.check("the list is empty", [&walker] { return rows(walker.control("ListView1")) == 0; });
    walker.picture("no-services-yet");
    walker.tool("NewRecord");
    fill(walker, {{0, "the day before"}, {8, "100"}});
    walker.click("Command1(0)");
    walker.when([] { return boxOnShow() != nullptr; }, [] {});
    walker.picture("service-refused");
    walker.answer("GST must not be a number greater then or equal to 100%.", QMessageBox::Ok);

    walker.station("a service is taken in, finished and paid");
    fill(walker, {{0, "03/02/2026"},
                  {2, "05/02/2026"},
                  {5, "12500.50"},
                  {6, "10"},
                  {7, "13500.54"},
                  {8, "20"},
                  {4, "Ociscen ventilator, zamenjena pasta."}});
    walker.checkText(field(3), "0.00");
    walker.picture("service-editor");
    walker.click("Command1(0)");
    walker.check("the list shows it", [&walker] { return rows(walker.control("ListView1")) == 1; });
    walker.check("with its price",
                 [&walker] { return cell(walker.control("ListView1"), 0, 3) == "12,500.50"; });
    walker.checkText(field(37), "Ociscen ventilator, zamenjena pasta.");

    walker.station("a second service is taken in, neither finished nor paid");
    walker.tool("NewRecord");
    fill(walker, {{0, "10/03/2026"},
                  {1, "20/03/2026"},
                  {5, "4000"},
                  {8, "20"},
                  {4, "Ne pali se posle nestanka struje."}});
    walker.checkText(field(3), "4,800.00");
    walker.click("Command1(0)");
    walker.check("the list shows two", [&walker] { return rows(walker.control("ListView1")) == 2; });
    walker.picture("two-services");

    walker.station("a third service is taken in by mistake and deleted");
    walker.tool("NewRecord");
    fill(walker, {{0, "11/03/2026"}, {5, "1"}});
    walker.click("Command1(0)");
    walker.check("the list shows three", [&walker] { return rows(walker.control("ListView1")) == 3; });
    walker.tool("DeleteRecord");
    walker.when([] { return boxOnShow() != nullptr; }, [] {});
    walker.picture("delete-asked");
    walker.answer("This will cause the delition of all related records", QMessageBox::Yes);
    walker.check("the list shows two again", [&walker] { return rows(walker.control("ListView1")) == 2; });

    walker.station("a service is opened again by Enter, and paid");
    walker.act([&walker] { walker.control("ListView1")->setFocus(); });
    walker.press(Qt::Key_End);
    walker.press(Qt::Key_Return);
    walker.checkText(field(5), "4,000.00");
    fill(walker, {{7, "4800"}});
    walker.checkText(field(3), "0.00");
    walker.click("Command1(0)");
    walker.check("it is paid", [&walker] { return cell(walker.control("ListView1"), 1, 6) == "4,800.00"; });
    walker.picture("service-paid");
}

void lookAround(Walker& walker) {
    walker.station("the menus open");
    for (const char* name : {"mnuDDatabase", "mnuVView", "mnuHHelp"}) {
        walker.openMenu(name);
        walker.picture(QLatin1String(name), name);
        walker.press(Qt::Key_Escape);
    }

    walker.station("the service's help is opened and closed");
    walker.press(Qt::Key_F1);
    walker.when([] { return topWindow("frmHelp") != nullptr; }, [] {});
    walker.picture("help", "frmHelp");
    walker.act([] { topWindow("frmHelp")->close(); });
}

}  // namespace

QString tabCaption(Walker& walker, int tab) {
    return caption(walker, tab);
}

void walkFirstDay(Walker& walker) {
    walker.station("the program starts on an empty shop");
    walker.when([] { return topWindow("frmSplash") != nullptr || topWindow("frmTip") != nullptr; }, [] {});
    walker.glimpse("splash", "frmSplash");
    walker.when([] { return topWindow("frmTip") != nullptr; }, [] {});
    walker.picture("tip-of-the-day", "frmTip");
    walker.click("cmdNextTip");
    walker.click("chkLoadTipsAtStartup");
    walker.click("cmdOK");
    walker.when([&walker] { return windowOnShow() != nullptr && walker.shows("TabStrip1"); }, [] {});
    walker.check("the tab says Klijenti", [&walker] { return caption(walker, 0) == "Klijenti"; });
    walker.checkText("Panel(Text)", "Ready");
    walker.picture("empty-shop");

    takeInClients(walker);
    takeInComputer(walker);
    takeInServices(walker);
    lookAround(walker);

    walker.station("the program is closed");
    walker.menu("mnuDDatabase", "Exit");
}
