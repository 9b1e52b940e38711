#include "records/main_bars.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <utility>

#include "common/modMain.h"
#include "platform/system/trap.h"

using platform::Trap;

MainBars::MainBars(QMainWindow& window, std::span<const CommandRow> rows, const MainStart& start,
                   std::function<CommandState()> state)
    : menus(window, rows),
      toolbar(window, rows),
      window_(window),
      rows_(rows),
      start_(start),
      state_(std::move(state)) {
    QObject::connect(&menus, &MainMenus::opening, &menus, [this](Menu menu) { renew(menu); });
}

bool MainBars::CreateToolbarImages(QString& errorText) {
    Trap step;
    step([&] {
        start_.begin(StartStep::ToolbarImages);
        for (const CommandRow& row : rows_) {
            if (row.button.key != nullptr) {
                loadPicture(pictures_, row.button.key);
            }
        }
    });
    picturesFailed_ = step.failed();
    return outcome(step, 149, errorText);
}

bool MainBars::CreateMenus(QString& errorText) {
    Trap step;
    step([&] {
        start_.begin(StartStep::Menus);
        menus.make();
        hangMenus();
        menus.entry(Command::ShowToolbar)->setVisible(!picturesFailed_);
        renew(Menu::View);
        renew(Menu::Database);
    });
    if (step.failed()) {
        window_.menuBar()->hide();
    }
    return outcome(step, 160, errorText);
}

void MainBars::hangMenus() {
    menus.menu(Menu::Popup)->setDefaultAction(menus.popupEntry(Command::EditService));
    for (Menu menu : {Menu::Database, Menu::View, Menu::Help}) {
        window_.menuBar()->addMenu(menus.menu(menu));
    }
}

bool MainBars::CreateToolbar(bool visible, QString& errorText) {
    Trap step;
    step([&] {
        start_.begin(StartStep::Toolbar);
        toolbar.make(GetResString(1), pictures_);
    });
    const bool usable = !step.failed() && !picturesFailed_;
    if (toolbar.bar() != nullptr) {
        toolbar.bar()->setVisible(usable && visible);
    }
    if (!usable) {
        menus.forbid(Command::ShowToolbar);
    }
    return outcome(step, 150, errorText);
}

void MainBars::renew(Renewal renewal) {
    const CommandState state = state_();
    toolbar.renew(renewal, state);
    menus.renewKeys(state);
}
