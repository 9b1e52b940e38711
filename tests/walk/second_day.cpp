#include <QApplication>
#include <QMessageBox>
#include <QWidget>

#include "walker.h"

QString tabCaption(Walker& walker, int tab);

void walkSecondDay(Walker& walker) {
    walker.station("the program starts again and finds the clients");
    walker.when([&walker] { return windowOnShow() != nullptr && walker.shows("TabStrip1"); }, [] {});
    walker.checkText("Combo1(0)", "Pekara Zlatni Klas");
    walker.type("Text2(0)", "pekara");
    walker.checkText("Combo1(0)", "Pekara Zlatni Klas");
    walker.checkText("Text1(0)", "Markovic");
    walker.checkText("Text1(7)", "Bulevar Oslobodjenja 12");
    walker.picture("client-found-again");

    walker.station("the computer is there");
    walker.tab(1);
    walker.checkText("Combo1(1)", "Kasa u pekari");
    walker.checkText("Text1(35)", "Debian 12");

    walker.station("both services are there, with their states");
    walker.tab(2);
    walker.check("the list shows two", [&walker] { return rows(walker.control("ListView1")) == 2; });
    walker.check("the first with its price",
                 [&walker] { return cell(walker.control("ListView1"), 0, 3) == "12,500.50"; });
    walker.check("the second is paid",
                 [&walker] { return cell(walker.control("ListView1"), 1, 6) == "4,800.00"; });
    walker.picture("services-found-again");

    walker.station("a client is deleted, and everything of his goes with him");
    walker.tab(0);
    walker.tool("DeleteRecord");
    walker.answer("This will cause the delition of all related records", QMessageBox::Yes);
    walker.check("two clients are left",
                 [&walker] { return textOf(walker.control("Combo1(0)")) == "Petrovic, Milan"; });
    walker.picture("client-deleted");

    walker.station("the database is compacted under the open window");
    walker.menu("mnuUtilities", "Compact Database");
    walker.checkText("Panel(Text)", "Ready");
    walker.checkText("Combo1(0)", "Petrovic, Milan");
    walker.check("the deleted client's services are gone",
                 [&walker] { return tabCaption(walker, 2) == "Usluge"; });

    walker.station("the picture of the program is shown as its about box");
    walker.menu("mnuHHelp", "O Programu...");
    walker.when([] { return topWindow("frmSplash") != nullptr; }, [] {});
    walker.picture("about", "frmSplash");
    walker.press(Qt::Key_Escape);

    walker.station("the program is closed again");
    walker.act([] { windowOnShow()->close(); });
}
