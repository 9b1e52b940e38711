#include "support/looks.h"

#include <gtest/gtest.h>

#include "records/frmLegend.h"
#include "records/frmReportOptions.h"
#include "records/main_window.h"
#include "records/service_editor.h"
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
