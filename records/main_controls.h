#pragma once

#include <array>

#include "common/array_view.h"
#include "platform/controls/data_control.h"
#include "platform/controls/date_field.h"
#include "platform/controls/list_view.h"
#include "platform/controls/selector.h"
#include "platform/controls/status_bar.h"
#include "records/entry_fields.h"
#include "records/stage_facts.h"
#include "records/stage_tabs.h"

class MainBars;
class MainStatus;
class QLineEdit;
class QToolBar;
class QToolButton;
class StagePanes;
class StageSwitch;
struct ShopRecords;

// The controls of the main window under the names that staff and tests know them by: a view of the parts that
// they belong to. Stages count from 0 here.
struct MainControls {
    // All of these outlive it.
    MainControls(ShopRecords& shop, const StagePanes& panes, const StageSwitch& tabs, const MainBars& bars,
                 const MainStatus& status);

    const std::array<platform::DataControl*, kStageCount> Data1;
    const AskedView<platform::Selector*> Combo1;
    const std::array<QLineEdit*, kSelectorCount> Text2;  // type-ahead boxes
    const std::array<QWidget*, EntryFields::kCount>& Text1;
    const std::array<platform::DateField*, 3>& DTPicker1;
    QCheckBox* const Check1;
    const std::array<QToolButton*, 2> Command1;        // e-mail, web
    const std::array<QWidget*, kStageCount> Picture1;  // panes
    platform::ListView* const ListView1;
    StageTabs* const& TabStrip1;             // nullptr until CreateTabs
    QToolBar* const& Toolbar1;               // nullptr until CreateToolbar
    platform::StatusBar* const& StatusBar1;  // nullptr until CreateStatusBar
    const ArrayView<bool, kStageCount> StageDirty;
    const AskedView<int&> RememberedIndex;
};
