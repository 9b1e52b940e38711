#pragma once

#include <QMainWindow>
#include <QString>

#include "records/filter_menu.h"
#include "records/listed_services.h"
#include "records/main_bars.h"
#include "records/main_choices.h"
#include "records/main_commands.h"
#include "records/main_controls.h"
#include "records/main_shape.h"
#include "records/main_start.h"
#include "records/main_status.h"
#include "records/main_surface.h"
#include "records/number_watch.h"
#include "records/report_run.h"
#include "records/shop_records.h"
#include "records/stage_panes.h"
#include "records/stage_switch.h"

class ProgramWindows;

// The main window: a client, the client's computers and the services of a computer, as three stages on one
// tab strip. It builds its parts, connects them, shows them and takes them down.
class frmMain : public QMainWindow {
    Q_OBJECT

 public:
    // `windows` outlives this one.
    explicit frmMain(ProgramWindows& windows, QWidget* parent = nullptr);

    // Builds, fills and shows the window. False where a piece failed without which the shop cannot work: the
    // reason has been shown then, and the window is unloaded.
    bool Display();
    // Closes the database with its backup, saves the settings, closes the help. Asks nothing. Once only.
    void unload();
    bool isUnloaded() const { return unloaded_; }

    // The parts, each before those that it is given to.
    MainStart start{*this};
    MainChoices choices;
    MainBars bars;
    MainStatus status{*this, start};

 private:
    MainSurface surface_{*this, status, bars, tabs, filters, services};

 public:
    ShopRecords shop{choices, surface_, this};
    StagePanes& panes;  // a child of the window
    ListedServices services{*this, *panes.list(), start, shop, choices, tabs, surface_};
    StageSwitch tabs{start, panes, shop, surface_};
    FilterMenu filters{shop.filter, bars, status, surface_};
    ReportRun report{*this, shop.stages, services.list, choices.report, status};
    MainShape shape{*this, bars, status, choices};
    MainCommands commands;
    const MainControls controls{shop, panes, tabs, bars, status};

 signals:
    void unloaded();

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    void connectParts();
    bool build(QString& errorText);
    void buildBars();
    bool fill(QString& errorText);
    void restartUnderAnotherNumber();
    void takeDown();

    ProgramWindows& windows_;
    NumberWatch watch_{[this] { restartUnderAnotherNumber(); }};
    bool unloaded_ = false;
};
