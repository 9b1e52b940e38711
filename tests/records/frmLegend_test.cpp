#include "records/frmLegend.h"

#include <gtest/gtest.h>

#include <QTest>

#include "common/window_help.h"
#include "common/window_places.h"
#include "platform/controls/pictures.h"
#include "records/main_window.h"
#include "support/modal.h"
#include "support/topics.h"

namespace {

class Legend : public MainWindow {
 protected:
    static void show(frmLegend& legend, const std::function<void()>& work) {
        inModal<frmLegend>([&] { legend.Display(); }, [&](frmLegend&) { work(); });
    }
    // The window on the services stage, with a service in the list.
    void startWithService() {
        addService(addComputer(addClient()));
        start();
        tab(3);
    }
};

TEST_F(Legend, TellsTheFourMarksInTheirOrder) {
    frmLegend legend;
    const struct {
        const char* picture;
        const char* text;
    } rows[] = {{"FinishedPayed", "This service IS BOTH, finished and paid."},
                {"NotFinishedNotPayed", "This service is NOT finished and NOT paid yet."},
                {"NotFinishedPayed", "This service is NOT finished but it IS paid."},
                {"FinishedNotPayed", "This service IS finished but NOT paid yet."}};
    show(legend, [&] {
        EXPECT_EQ(legend.windowTitle(), "Legend");
        for (size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(legend.Label1[i]->text(), rows[i].text);
            const QIcon icon = platform::icon(QString::fromLatin1(rows[i].picture));
            ASSERT_FALSE(icon.isNull());
            EXPECT_EQ(legend.Image1[i]->pixmap().toImage(), icon.pixmap(32, 32).toImage()) << i;
            EXPECT_EQ(legend.Image1[i]->pixmap().size(), QSize(32, 32));
        }
        QTest::mouseClick(legend.Command1, Qt::LeftButton);
    });
    EXPECT_FALSE(legend.isVisible());
}

TEST_F(Legend, EscapeHidesIt) {
    frmLegend legend;
    show(legend, [&] { QTest::keyClick(&legend, Qt::Key_Escape); });
    EXPECT_FALSE(legend.isVisible());
}

TEST_F(Legend, EnterHidesIt) {
    frmLegend legend;
    show(legend, [&] { QTest::keyClick(legend.windowHandle(), Qt::Key_Return); });
    EXPECT_FALSE(legend.isVisible());
}

TEST_F(Legend, IsExplainedByF1) {
    frmLegend legend;
    show(legend, [&] {
        EXPECT_EQ(topicsOfF1(legend), QList<int>({LegendTopic}));
        legend.close();
    });
}

TEST_F(Legend, KeepsItsPlace) {
    EXPECT_EQ(settings::text(settings::LegendPosition), "1500;1500");
    settings::setText(settings::LegendPosition, "3000;750");
    {
        frmLegend legend;
        show(legend, [&] {
            EXPECT_EQ(placeOf(&legend), "3000;750");
            legend.move(50, 60);
            legend.close();
        });
    }
    EXPECT_EQ(settings::text(settings::LegendPosition), "750;900");
}

TEST_F(Legend, APlaceThatIsNoneLeavesItWhereItIs) {
    settings::setText(settings::LegendPosition, "somewhere");
    frmLegend legend;
    show(legend, [&] {
        EXPECT_TRUE(boxes.asked.isEmpty());
        legend.close();
    });
}

TEST_F(Legend, AMissingPictureIsToldAndNothingIsShown) {
    settings::setText(settings::LegendPosition, "3000;750");
    {
        frmLegend legend;
        legend.pictures = [](const QString& name) {
            return name == "NotFinishedPayed" ? QIcon() : platform::icon(name);
        };
        legend.Display();
        EXPECT_FALSE(legend.isVisible());
    }
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.lastText(),
              "An unexpected error has occured while loading Legend window.\n[481] Invalid picture: "
              "NotFinishedPayed");
    EXPECT_EQ(boxes.asked.first().icon, platform::BoxIcon::Critical);
    EXPECT_EQ(boxes.asked.first().title, GetResString(1));
    EXPECT_EQ(settings::text(settings::LegendPosition), "3000;750");
}

TEST_F(Legend, OpensFromTheHelpMenuOnTheServicesStage) {
    startWithService();
    inModal<frmLegend>([this] { give(Command::Legend); },
                       [&](frmLegend& legend) {
                           EXPECT_EQ(legend.parentWidget(), &win());
                           legend.close();
                       });
    tab(1);
    open(win().bars.menus.menu(Menu::Help));
    EXPECT_FALSE(win().bars.menus.entry(Command::Legend)->isEnabled());
    win().bars.menus.menu(Menu::Help)->close();
}

TEST_F(Legend, OpensFromThePopupMenuOfAListWithRows) {
    startWithService();
    inModal<frmLegend>([this] { giveInPopup(Command::Legend); }, [](frmLegend& legend) { legend.close(); });
}

}  // namespace
