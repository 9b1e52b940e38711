#include "records/main_controls.h"

#include <QToolButton>

#include "common/window_helpers.h"
#include "records/main_bars.h"
#include "records/main_status.h"
#include "records/shop_records.h"
#include "records/stage_panes.h"
#include "records/stage_switch.h"

namespace {

QToolButton* opener(const StagePanes& panes, int index) {
    return panes.findChild<QToolButton*>(arrayName("Command1", index));
}

Stage& stageAt(ShopRecords& shop, std::size_t index) {
    return shop.stages[static_cast<int>(index)];
}

}  // namespace

MainControls::MainControls(ShopRecords& shop, const StagePanes& panes, const StageSwitch& tabs,
                           const MainBars& bars, const MainStatus& status)
    : Data1{&shop.stages[kClients].data(), &shop.stages[kComputers].data(), &shop.stages[kServices].data()},
      Combo1([&shop](std::size_t stage) { return &stageAt(shop, stage).entries.selector(); }),
      Text2{panes.typeAhead(kClients), panes.typeAhead(kComputers)},
      Text1(shop.fields.texts),
      DTPicker1(shop.fields.dates),
      Check1(shop.fields.firm),
      Command1{opener(panes, 0), opener(panes, 1)},
      Picture1{panes.pane(kClients), panes.pane(kComputers), panes.pane(kServices)},
      ListView1(panes.list()),
      TabStrip1(tabs.tabs()),
      Toolbar1(bars.toolbar.bar()),
      StatusBar1(status.bar()),
      StageDirty(
          {&shop.stages[kClients].dirty, &shop.stages[kComputers].dirty, &shop.stages[kServices].dirty}),
      RememberedIndex([&shop](std::size_t stage) -> int& {
          stageAt(shop, stage).entries.selector();
          return stageAt(shop, stage).entries.remembered;
      }) {}
