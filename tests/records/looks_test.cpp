#include "support/looks.h"

#include <gtest/gtest.h>

#include "records/frmLegend.h"
#include "records/frmReportOptions.h"
#include "records/main_window.h"
#include "records/service_editor.h"
#include "support/dark_desktop.h"
#include "support/modal.h"

namespace {

class Looks : public MainWindow {};

TEST_F(Looks, OfTheMainWindowOnEachOfItsTabs) {
    addService(addComputer(addClient()));
    start();
    for (int stage = 1; stage <= 3; ++stage) {
        tab(stage);
        win().menuBar()->setFocus();
        expectLooks(win(), QStringLiteral("main_%1").arg(stage));
    }
}

TEST_F(Looks, OfTheMainWindowBeforeTheFirstClient) {
    start();
    expectLooks(win(), QStringLiteral("main_empty"));
}

TEST_F(Looks, OfTheLegend) {
    start();
    inModal<frmLegend>([this] { win().commands.give(Command::Legend); },
                       [](frmLegend& legend) {
                           expectLooks(legend, QStringLiteral("legend"));
                           legend.close();
                       });
}

TEST_F(Looks, OfTheReportsOptions) {
    start();
    inModal<frmReportOptions>([this] { win().report.OpenReportOptions(); },
                              [](frmReportOptions& options) {
                                  expectLooks(options, QStringLiteral("report_options"));
                                  options.reject();
                              });
}

TEST_F(Looks, LockedFieldsHaveTheWindowsPaperWhenTheDesktopTurnsDark) {
    start();
    const QWidget* field = win().controls.Text1[0];
    EXPECT_EQ(field->palette().color(QPalette::Base), win().palette().color(QPalette::Window))
        << "locked, as there is no client";
    const DarkDesktop dark;
    EXPECT_EQ(field->palette().color(QPalette::Base), QColor(42, 46, 50));
}

// Whoever has a window open while the desktop turns dark sees what somebody sees who opens it then.
TEST_F(Looks, TheLegendTurnsDarkWithTheDesktop) {
    start();
    QImage turned, opened;
    const auto open = [this](const std::function<void(frmLegend&)>& look) {
        inModal<frmLegend>([this] { win().commands.give(Command::Legend); },
                           [&](frmLegend& legend) {
                               look(legend);
                               legend.close();
                           });
    };
    open([&](frmLegend& legend) { turned = pictureInTheDark(legend); });
    const DarkDesktop dark;
    open([&](frmLegend& legend) { opened = pictureOf(legend); });
    expectAlike(turned, opened);
}

TEST_F(ServiceEditor, WhatIsToBePaidHasTheWindowsPaperWhenTheDesktopTurnsDark) {
    add([&] {
        const DarkDesktop dark;
        EXPECT_EQ(field(3)->palette().color(QPalette::Base), QColor(42, 46, 50));
        editor().reject();
    });
}

TEST_F(ServiceEditor, LooksAsItAlwaysDid) {
    add([&] {
        expectLooks(editor(), QStringLiteral("service_editor_add"));
        editor().reject();
    });
    edit([&] {
        expectLooks(editor(), QStringLiteral("service_editor_edit"));
        editor().reject();
    });
}

}  // namespace
