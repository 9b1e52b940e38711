// The ways from the main window to the requisition and the documents of a service, and back.
#include <QLabel>

#include "documents/frmInvoiceEx.h"
#include "documents/frmPrintInvoiceEx.h"
#include "main_window.h"
#include "records/main_window_view.h"
#include "support/modal.h"

using dao::Currency;
using dao::Date;
using platform::BoxAnswer;

namespace {

class Documents : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        CeneDinarske = false;
        client = addClient("Anic", "Vesna",
                           {{"FirmName", "Anic i sinovi"}, {"Phone", "555-1"}, {"PIDNo", "100200300"}});
        computer = addComputer(client, "Desk");
    }
    // A service with two parts drawn for it: 2 x 10 and 1 x 5 euro.
    int serviceWithParts() {
        const int id = addService(computer);
        for (const auto& [product, quantity, price] :
             {std::tuple{1, 2.0F, 10.0F}, std::tuple{2, 1.0F, 5.0F}}) {
            addRow("InvoiceData", "",
                   {{"ServiceID", id},
                    {"OpremaID", product},
                    {"Proizvodjac", "ASUS"},
                    {"Grupa", "Ploce"},
                    {"Naziv", "Part " + std::to_string(product)},
                    {"JM", "Kom."},
                    {"Stanje", quantity},
                    {"Cena", price}});
        }
        return id;
    }
    void startOnServices(int id) {
        start();
        tab(3);
        by_hand::clickRow(win().controls.ListView1,
                          win().controls.ListView1->indexOf(QStringLiteral("K%1").arg(id)));
    }
    static void leave(QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }
    // Opens the requisition by `deed`, looks and leaves.
    void visit(const std::function<void()>& deed, qint32 id) {
        inModal<frmInvoiceEx>(deed, [&](frmInvoiceEx& requisition) {
            EXPECT_EQ(requisition.ServiceID(), id);
            EXPECT_EQ(requisition.parentWidget(), &win());
            leave(requisition);
        });
    }
    QString price(int id) {
        return cellOf(win().controls.ListView1->item(QStringLiteral("K%1").arg(id)), ServiceColumn::Price);
    }
    Currency storedPrice(int id) { return valueOf("Services", "ID", id, "Price").asCurrency(); }

    int client = 0, computer = 0;
};

TEST_F(Documents, TheTotalOfTheRequisitionBecomesThePrice) {
    const int id = serviceWithParts();
    startOnServices(id);
    visit([&] { tool("PriceList"); }, id);
    EXPECT_EQ(price(id), "25.00");
    EXPECT_EQ(storedPrice(id), Currency::fromDouble(25));
}

TEST_F(Documents, InDinarsThePriceIsKeptInEuro) {
    CeneDinarske = true;
    KursKupovni = 117.5F;
    const int id = serviceWithParts();
    startOnServices(id);
    visit([&] { tool("PriceList"); }, id);
    EXPECT_EQ(price(id), "2,937.50");
    EXPECT_EQ(storedPrice(id), Currency::fromDouble(25));
}

TEST_F(Documents, AnEmptyRequisitionMakesThePriceZero) {
    const int id = addService(computer);
    startOnServices(id);
    visit([&] { tool("PriceList"); }, id);
    EXPECT_EQ(price(id), "0.00");
    EXPECT_EQ(storedPrice(id), Currency());
}

TEST_F(Documents, ViewMenuAndPopupOpenTheRequisitionToo) {
    const int id = serviceWithParts();
    startOnServices(id);
    visit([&] { give(Command::PriceList); }, id);
    visit([&] { giveInPopup(Command::PriceList); }, id);
}

TEST_F(Documents, AServiceDeletedMeanwhileIsToldOf) {
    const int id = serviceWithParts();
    startOnServices(id);
    boxes.asked.clear();
    inModal<frmInvoiceEx>([&] { tool("PriceList"); },
                          [&](frmInvoiceEx& requisition) {
                              openDatabase().Execute("DELETE * FROM Services");
                              leave(requisition);
                          });
    EXPECT_EQ(boxes.lastText(), "Oops! Can't find this item in the database so it can not be edited!");
}

TEST_F(Documents, WithoutASelectedServiceNothingOpens) {
    start();
    tab(3);
    win().services.commands.openRequisition();
    win().services.commands.openDocument(true);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Documents, EachCommandOpensItsKindOfDocument) {
    const int id = serviceWithParts();
    startOnServices(id);
    const auto opens = [&](const std::function<void()>& deed) {
        int type = -1;
        inModal<frmPrintInvoiceEx>(deed, [&](frmPrintInvoiceEx& window) {
            type = window.OpenType;
            leave(window);
        });
        return type;
    };
    EXPECT_EQ(opens([&] { tool("Invoice"); }), frmPrintInvoiceEx::Invoice);
    EXPECT_EQ(opens([&] { tool("Quotation"); }), frmPrintInvoiceEx::ProForma);
    // In the pop-up menu both open the invoice.
    EXPECT_EQ(opens([&] { giveInPopup(Command::Invoice); }), frmPrintInvoiceEx::Invoice);
    EXPECT_EQ(opens([&] { giveInPopup(Command::QuotationOfRow); }), frmPrintInvoiceEx::Invoice);
    EXPECT_EQ(opens([&] { give(Command::Invoice); }), frmPrintInvoiceEx::Invoice);
    EXPECT_EQ(opens([&] { give(Command::Quotation); }), frmPrintInvoiceEx::ProForma);
}

TEST_F(Documents, ThePriceOfAServiceBeingEditedFollowsItsRequisition) {
    const int id = serviceWithParts();
    startOnServices(id);
    frmDetails* editor = win().services.commands.editor();
    inModal<frmDetails>(
        [&] { tool("EditRecord"); },
        [&](frmDetails&) {
            auto* payment = editor->findChild<QLineEdit*>("Text1(3)");
            inModal<frmInvoiceEx>(
                [&] { QTest::mouseClick(editor->findChild<QWidget*>("Label3"), Qt::LeftButton); },
                [&](frmInvoiceEx& requisition) {
                    EXPECT_EQ(requisition.ServiceID(), id);
                    EXPECT_EQ(requisition.parentWidget(), editor);
                    leave(requisition);
                });
            EXPECT_EQ(editor->findChild<QLineEdit*>("Text1(5)")->text(), "25");
            EXPECT_EQ(payment->text(), "25.00");
            editor->reject();
        });
    EXPECT_EQ(storedPrice(id), Currency::fromDouble(100)) << "the editor was cancelled";
}

TEST_F(Documents, TheViewOfTheMainWindowShowsServiceAndClient) {
    const int id = addService(computer, {{"Discount", 10.0F}, {"GST", 18.0F}, {"Comments", "Ne radi"}});
    startOnServices(id);
    const ServiceView& view = win().services.view;
    EXPECT_EQ(view.tabCaption(1), caption(1));
    EXPECT_EQ(view.tabCaption(2), "Desk");
    EXPECT_EQ(view.serviceId(), id);
    EXPECT_EQ(view.serviceStarted(), "3/3/2026");
    EXPECT_EQ(view.serviceDiscount(), "10");
    EXPECT_EQ(view.serviceTax(), "18");
    EXPECT_EQ(view.serviceDescription(), "Ne radi");
    EXPECT_EQ(view.clientField("Surname"), "Anic");
    EXPECT_EQ(view.clientField("FirmName"), "Anic i sinovi");
    EXPECT_EQ(view.clientField("ZIP"), "11000");
    EXPECT_EQ(view.clientField("NoSuchField"), "");
    EXPECT_FALSE(view.isFirm());
    tab(1);
    by_hand::click(win().controls.Check1);
    EXPECT_TRUE(view.isFirm());
}

}  // namespace
