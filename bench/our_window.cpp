#include "our_window.h"

#include <cstdlib>
#include <memory>

#include "common/modMain.h"
#include "measured_shop.h"
#include "platform/dao/dao.h"
#include "records/frmMain.h"
#include "shell/program_windows.h"

namespace {

std::unique_ptr<frmMain>& theWindow() {
    static std::unique_ptr<frmMain> window;
    return window;
}

}  // namespace

// The seven seconds of the splash window are over for it before they begin.
frmMain& mainWindow() {
    std::unique_ptr<frmMain>& window = theWindow();
    if (window != nullptr) {
        return *window;
    }
    ShowTipsAtStartup = false;
    window = std::make_unique<frmMain>(programWindows());
    window->start.splash.GetTickCount = [] {
        static qint64 tick = 0;
        return tick += SplashCover::kSplashTime;
    };
    if (!window->Display()) {
        std::abort();
    }
    window->choices.filter.ShowMsgBoxFilterResults = false;
    window->choices.session.AlwaysCreateBackupDB = false;
    return *window;
}

void closeMainWindow() {
    if (theWindow() != nullptr) {
        theWindow()->unload();
    }
    theWindow().reset();
}

Lines entriesOf(const platform::Selector& selector) {
    Lines lines{"chosen: " + std::to_string(selector.currentIndex())};
    for (int i = 0; i < selector.entryCount(); ++i) {
        lines.push_back(selector.entryText(i).toStdString() + "|" + std::to_string(selector.entryData(i)));
    }
    return lines;
}

Lines rowsOf(const platform::ListView& list) {
    Lines lines;
    for (int i = 1; i <= list.count(); ++i) {
        const platform::ListItem& row = list.item(i);
        const QStringList first{row.Key, row.Text, row.SmallIcon};
        lines.push_back((first + row.subItems + QStringList{row.Tag}).join(QLatin1Char('|')).toStdString());
    }
    return lines;
}

Lines stagesOf(const frmMain& window) {
    Lines lines = entriesOf(*window.controls.Combo1[0]);
    for (const Lines& more : {entriesOf(*window.controls.Combo1[1]), rowsOf(*window.controls.ListView1)}) {
        lines.insert(lines.end(), more.begin(), more.end());
    }
    return lines;
}

FilterOurs::FilterOurs(MeasuredShop& shop, int number) : shop_(shop), number_(number) {
    mainWindow().shop.filter.RefreshAll();
}

FilterOurs::~FilterOurs() {
    mainWindow().shop.filter.RefreshAll();
}

void FilterOurs::run() {
    bool ok = false;
    mainWindow().shop.filter.ApplyQuickFilter(number_, ok);
    if (!ok) {
        std::abort();
    }
}

Lines FilterOurs::result() {
    Lines lines = stagesOf(mainWindow());
    const std::string suffix = std::to_string(mainWindow().shop.stages.QuerySuffix);
    for (const char* name : {"QDCustomers", "QDComputers", "QDServices"}) {
        lines.push_back(shop_.ours().QueryDefs()[name + suffix].SQL());
    }
    return lines;
}
