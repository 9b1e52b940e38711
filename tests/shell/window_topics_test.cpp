// F1 in the program's own windows, and that the help has a page for every topic that a window asks for.

#include <gtest/gtest.h>

#include <QTabWidget>

#include "common/window_help.h"
#include "shell/frmHelp.h"
#include "shell/frmOptions.h"
#include "shell/frmSplash.h"
#include "shell/frmTip.h"
#include "shell/help_file.h"
#include "shell/program_windows.h"
#include "support/fixture.h"
#include "support/modal.h"
#include "support/topics.h"

namespace {

class WindowTopics : public DeliveredFixture {};

TEST_F(WindowTopics, EachHasItsPage) {
    QFile file(QLatin1String(tests::kDeliveredFolder) + QStringLiteral("/Tarvello.hlp"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    HelpBook book;
    QString errorText;
    ASSERT_TRUE(book.fromFile(file.readAll(), errorText)) << errorText.toStdString();
    const QList<QPair<int, QString>> pages{
        {CatalogueTopic, "catalogue"},  {ProductTopic, "catalogue"},  {UnitsTopic, "options"},
        {PriceListTopic, "price-list"}, {DocumentTopic, "documents"}, {DrawTopic, "requisition"},
        {CriticalTopic, "requisition"}, {PreviewTopic, "preview"},    {LegendTopic, "services"},
        {TipTopic, "options"},          {AboutTopic, "commands"},     {HelpTopic, "overview"}};
    ASSERT_EQ(pages.size(), HelpTopic - CatalogueTopic + 1);
    for (const auto& [topic, page] : pages) {
        EXPECT_EQ(book.target(topic).page, page) << topic;
    }
}

TEST_F(WindowTopics, OfTheTipTheAboutBoxAndTheHelp) {
    frmTip tip;
    tip.show();
    EXPECT_TRUE(waitUntilActive(tip));
    EXPECT_EQ(topicsOfF1(tip), QList<int>({TipTopic}));
    tip.hide();
    frmHelp help;
    help.show();
    EXPECT_TRUE(waitUntilActive(help));
    EXPECT_EQ(topicsOfF1(help), QList<int>({HelpTopic}));
    help.hide();
    programWindows().showAbout(nullptr);
    QWidget* about = QApplication::activeModalWidget();
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(waitUntilActive(*about));
    EXPECT_EQ(topicsOfF1(*about), QList<int>({AboutTopic}));
    about->close();
}

TEST_F(WindowTopics, PageKeysTurnTheTabsOfTheOptions) {
    frmOptions window;
    inModal<frmOptions>([&] { window.Display(); },
                        [](frmOptions& shown) {
                            const auto* tabs = shown.findChild<QTabWidget*>("SSTab1");
                            QTest::keyClick(shown.focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);
                            EXPECT_EQ(tabs->currentIndex(), 1);
                            QTest::keyClick(shown.focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
                            EXPECT_EQ(tabs->currentIndex(), 0);
                            shown.reject();
                        });
}

}  // namespace
