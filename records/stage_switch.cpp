#include "records/stage_switch.h"

#include "common/modMain.h"
#include "platform/system/trap.h"
#include "records/main_view.h"
#include "records/shop_records.h"
#include "records/stage_panes.h"
#include "records/stage_tabs.h"

using platform::Trap;

namespace {

struct TabFacts {
    const char* onShow;  // pictures
    const char* behind;
    int captionId, tipId;
};
constexpr TabFacts kTabs[kStageCount] = {{"Clients", "ClientsX", 101, 104},
                                         {"Computers", "ComputersX", 102, 105},
                                         {"Services", "ServicesX", 103, 106}};

}  // namespace

StageSwitch::StageSwitch(const MainStart& start, StagePanes& panes, ShopRecords& shop, MainView& window)
    : start_(start), panes_(panes), shop_(shop), window_(window) {}

// --- The tabs.

bool StageSwitch::CreateTabImages(QString& errorText) {
    Trap step;
    step([&] {
        start_.begin(StartStep::TabImages);
        for (const TabFacts& tab : kTabs) {
            loadPicture(pictures_, tab.onShow);
            loadPicture(pictures_, tab.behind);
        }
    });
    TabImagesFailed = step.failed();
    return outcome(step, 107, errorText);
}

bool StageSwitch::CreateTabs(QString& errorText) {
    Trap step;
    step([&] {
        start_.begin(StartStep::Tabs);
        buildTabs();
    });
    return outcome(step, 108, errorText);
}

void StageSwitch::buildTabs() {
    auto* tabs = new StageTabs(&panes_);
    tabs->setObjectName(QStringLiteral("TabStrip1"));
    tabs->setAccessibleName(QStringLiteral("Stages"));
    for (int i = 0; i < kStageCount; ++i) {
        tabs->addTab(QString());
        tabs->setCaption(i, GetResString(kTabs[i].captionId));
        tabs->setTabToolTip(i, GetResString(kTabs[i].tipId));
    }
    panes_.putAbove(tabs);
    tabs_ = tabs;
    showPictures(1);
    QObject::connect(tabs, &QTabBar::currentChanged, tabs, [this](int tabIndex) { tabChanged(tabIndex); });
}

// The stage on show has its plain picture, the two others the crossed one.
void StageSwitch::showPictures(int stage) {
    if (TabImagesFailed) {
        return;
    }
    for (int i = 0; i < kStageCount; ++i) {
        const char* key = i + 1 == stage ? kTabs[i].onShow : kTabs[i].behind;
        tabs_->setTabIcon(i, pictures_.value(QLatin1String(key)));
    }
}

void StageSwitch::setCaption(int stage, const QString& caption) {
    if (tabs_ != nullptr) {
        tabs_->setCaption(stage - 1, caption);
    }
}

// --- From one stage to another.

void StageSwitch::showFirst() {
    tabs_->setCurrentIndex(0);
}

void StageSwitch::tabChanged(int tabIndex) {
    const int newStage = tabIndex + 1;
    const int oldStage = shop_.stages.CurrentStage;
    if (puttingBack_ || newStage == oldStage || newStage < 1) {
        return;
    }
    Trap step;
    bool ok = false;
    step([&] { shop_.editing.SaveRecord(oldStage, ok); });
    if (!ok) {
        puttingBack_ = true;
        tabs_->setCurrentIndex(shop_.stages.CurrentStage - 1);
        puttingBack_ = false;
        return;
    }
    shop_.stages.CurrentStage = newStage;
    showStage(newStage, step);
    shop_.reading.updateAhead(oldStage, newStage, step);
    step([&] { window_.UpdateServiceButtons(); });
    step([&] { window_.UpdateToolbarState(); });
    if (step.failed()) {
        window_.box(QStringLiteral("An unexpected error has occured - ") + step.line(),
                    platform::BoxIcon::Exclamation);
    }
}

void StageSwitch::showStage(int newStage, Trap& step) {
    step([&] { window_.UpdateServiceButtons(); });
    step([&] { showPictures(newStage); });
    step([&] { tabs_->repaint(); });
    step([&] { panes_.showPane(newStage - 1); });
    step([&] { window_.UpdateToolbarState(); });
}
