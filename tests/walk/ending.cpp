// To a place where the program is asked to end from outside; there it says "ready" and stands still. The shop
// has a client, a computer and a service.
#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QSessionManager>
#include <cstdio>
#include <cstdlib>

#include "walker.h"

namespace {

void dismissTip(Walker& walker) {
    walker.when([] { return topWindow("frmTip") != nullptr; }, [] {});
    walker.click("cmdOK");
    walker.when([&walker] { return windowOnShow() != nullptr && walker.shows("TabStrip1"); }, [] {});
}

void typeClient(Walker& walker) {
    dismissTip(walker);
    walker.tool("NewRecord");
    walker.type("Text1(0)", "Markovic");
    walker.type("Text1(1)", "Jelena");
}

void openBox(Walker& walker) {
    typeClient(walker);
    walker.tool("SaveRecord");
    walker.when([] { return boxOnShow() != nullptr; }, [] {});
}

void openServices(Walker& walker) {
    dismissTip(walker);
    walker.tab(1);
    walker.tab(2);
    walker.check("the list shows the service", [&walker] { return rows(walker.control("ListView1")) == 1; });
}

void typeService(Walker& walker) {
    openServices(walker);
    walker.tool("NewRecord");
    walker.when([&walker] { return walker.shows("Command1(0)"); }, [] {});
    walker.type("Text1(5)", "12500");
}

void typeQuantity(Walker& walker) {
    openServices(walker);
    walker.act([&walker] { walker.control("ListView1")->setFocus(); });
    walker.press(Qt::Key_End);
    walker.tool("PriceList");
    walker.answer("Neocekivana greska prilikom stvaranja ListView kontrole:", QMessageBox::Ok);
    walker.when([&walker] { return walker.shows("frmInvoiceEx"); }, [] {});
    walker.press(Qt::Key_F12);
    walker.when([&walker] { return walker.shows("frmKonfiguratorEx"); }, [] {});
    walker.type("Text1(0)", "Pro");
    walker.press(Qt::Key_Down);
    walker.type("Text1(1)", "AM");
    walker.press(Qt::Key_Down);
    walker.row("ListView1", 1, "Ryzen 5 7600");
    walker.press(Qt::Key_Return);
    walker.when([&walker] { return walker.shows("frmInputBox"); }, [] {});
    walker.type("Text1(0)", "1");
}

// What the session manager asks first when the person logs out; the toolkit's part of it belongs to the
// application, and hands the question on.
void askToCommit() {
    auto* session = qApp->findChild<QSessionManager*>();
    if (session == nullptr) {
        std::puts("no session");
        std::_Exit(1);
    }
    emit qApp->commitDataRequest(*session);
}

}  // namespace

void walkToAnEnd(Walker& walker, const QString& where) {
    walker.station(where);
    if (where == QLatin1String("typing") || where == QLatin1String("commit-typing")) {
        typeClient(walker);
    } else if (where == QLatin1String("box") || where == QLatin1String("logout")) {
        openBox(walker);
    } else if (where == QLatin1String("editor") || where == QLatin1String("commit-editor")) {
        typeService(walker);
    } else if (where == QLatin1String("quantity")) {
        typeQuantity(walker);
    } else if (where == QLatin1String("start")) {
        walker.when([] { return QApplication::activeModalWidget() != nullptr; }, [] {});
    } else {
        walker.when([] { return topWindow("frmTip") != nullptr; }, [] {});
    }
    walker.act([where] {
        std::puts("ready");
        std::fflush(stdout);
        if (where == QLatin1String("logout")) {  // the desktop's word, as its session manager passes it on
            QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit));
        } else if (where.startsWith(QLatin1String("commit"))) {
            askToCommit();
        }
    });
}
