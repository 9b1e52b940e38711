// The preview of the clients by a click on the status bar.
#include <QLabel>
#include <QTest>
#include <algorithm>
#include <functional>

#include "main_window.h"
#include "platform/report/preview.h"
#include "platform/system/launch.h"
#include "support/modal.h"

namespace {

class ClientsPreview : public MainWindow {
 protected:
    QWidget* panel(const char* key) { return win().controls.StatusBar1->panel(key); }
    // What is seen after a click there.
    void preview(QWidget* place, const std::function<void(report::ReportPreview&)>& look) {
        bool done = false;
        inModal<report::ReportPreview>(
            [&] {
                QTest::mouseClick(place, Qt::LeftButton);
                EXPECT_TRUE(QTest::qWaitFor([&] { return done; }));
            },
            [&](report::ReportPreview& shown) {
                look(shown);
                shown.reject();
                done = true;
            });
    }
};

int linesOf(const report::Document& document) {
    int lines = 0;
    for (const report::Page& page : document.pages) {
        lines += static_cast<int>(std::count_if(page.items.begin(), page.items.end(), [](const auto& item) {
            return item.kind == report::PageItem::Kind::Line;
        }));
    }
    return lines - document.pageCount();  // one of them is the footer's
}

}  // namespace

TEST_F(ClientsPreview, AClickOnTheStatusBarShowsARowForEachClient) {
    addClient("Anic", "Ana");
    addClient("Bozic", "Boza");
    addClient("Ciric", "Cira");
    start();
    const QString chosenBefore = chosen(0), nameBefore = text(0);
    preview(panel("Text"), [&](report::ReportPreview& shown) {
        EXPECT_TRUE(shown.isModal());
        EXPECT_EQ(shown.parentWidget(), &win());
        EXPECT_EQ(linesOf(shown.document()), 3);
    });
    EXPECT_EQ(chosen(0), chosenBefore);
    EXPECT_EQ(text(0), nameBefore) << "the current client stays";
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(ClientsPreview, OnlyTheStoredQuerysClientsAreShown) {
    addClient("Anic", "Ana");
    addClient("Bozic", "Boza");
    start();
    win()
        .controls.Data1[0]
        ->Database()
        .QueryDefs()["QDCustomers" + std::to_string(win().shop.stages.QuerySuffix)]
        .setSQL("SELECT * FROM Customers WHERE Surname='Bozic'");
    preview(win().controls.StatusBar1,
            [&](report::ReportPreview& shown) { EXPECT_EQ(linesOf(shown.document()), 1); });
}

TEST_F(ClientsPreview, AQueryThatIsGoneIsToldOf) {
    start();
    boxes.asked.clear();
    win().controls.Data1[0]->Database().QueryDefs().Delete("QDCustomers" +
                                                           std::to_string(win().shop.stages.QuerySuffix));
    QTest::mouseClick(win().controls.StatusBar1, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !boxes.asked.isEmpty(); }));
    EXPECT_TRUE(boxes.lastText().startsWith("[3078] ")) << boxes.lastText().toStdString();
    EXPECT_EQ(boxes.asked.last().icon, platform::BoxIcon::Exclamation);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(ClientsPreview, ADoubleClickOnTheClockShowsNoClients) {
    addClient();
    start();
    int opened = 0;
    platform::setDateTimePanelHook([&] { return ++opened == 1; });
    QTest::mouseClick(panel("Time"), Qt::LeftButton);
    QTest::mouseDClick(panel("Time"), Qt::LeftButton);
    QTest::qWait(2 * QApplication::doubleClickInterval());
    platform::setDateTimePanelHook({});
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}
