// The tabs of the stages, the filters' place in the bars, and what else the window's parts show on it.

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <utility>

#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/quick_filters.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

const QString kFilterPanel = QStringLiteral("Filter");

}  // namespace

// --- Tabs and selectors.

void frmMain::setTabCaption(int stage, const QString& caption) {
    if (TabStrip1 != nullptr) {
        TabStrip1->setCaption(stage - 1, caption);
    }
}

void frmMain::showFirstStage() {
    TabStrip1->setCurrentIndex(0);
}

void frmMain::typeAheadChanged(int stageIndex) {
    const auto i = static_cast<size_t>(stageIndex);
    const int found = Combo1[i]->findPrefix(Text2[i]->text());
    if (found >= 0) {
        Combo1[i]->setCurrentIndex(found);
    }
}

void frmMain::tabChanged(int tabIndex) {
    const int newStage = tabIndex + 1;
    if (puttingTabBack_ || newStage == CurrentStage || newStage < 1) {
        return;
    }
    Trap step;
    bool ok = false;
    step([&] { SaveRecord(CurrentStage, ok); });
    if (!ok) {
        puttingTabBack_ = true;
        TabStrip1->setCurrentIndex(CurrentStage - 1);
        puttingTabBack_ = false;
        return;
    }
    const int oldStage = CurrentStage;
    CurrentStage = newStage;
    showStage(newStage, step);
    stages_.updateAhead(oldStage, newStage, step);
    step([&] { UpdateServiceButtons(); });
    step([&] { UpdateToolbarState(); });
    if (step.failed()) {
        box(QStringLiteral("An unexpected error has occured - ") + step.line(), BoxIcon::Exclamation);
    }
}

void frmMain::showStage(int newStage, Trap& step) {
    step([&] { UpdateServiceButtons(); });
    step([&] { showTabImages(newStage); });
    step([&] { TabStrip1->repaint(); });
    step([&] { panes_->setCurrentIndex(newStage - 1); });
    step([&] { UpdateToolbarState(); });
}

void frmMain::setWaiting(bool waiting) {
    if (waiting) {
        setCursor(Qt::WaitCursor);
    } else {
        unsetCursor();
    }
}

// --- The filters in the bars.

void frmMain::mnuQuickSearch_Click(int index) {
    if (index == 0) {
        return RemoveFilters();
    }
    const int number = index - quick_filters::kFirstPosition;
    if (!quick_filters::isFilter(number)) {
        return unknownIndex("mnuQuickSearch_Click", index);
    }
    bool ok = false;
    Trap step;
    step([&] { ApplyQuickFilter(number, ok); });
    if (step.failed()) {
        box(QStringLiteral("An unexpected error has occured - ") + step.line(), BoxIcon::Exclamation);
        return;
    }
    if (!ok) {
        return;
    }
    setButtonEnabled(QStringLiteral("RemoveFilter"), true);
    allowFiltersBut(number);
}

void frmMain::removeFilterClick() {
    setButtonEnabled(QStringLiteral("RemoveFilter"), false);
    if (ActiveFilter != ShopFilter::kNone) {
        RemoveFilters();
    }
}

void frmMain::showNoFilter() {
    setButtonEnabled(QStringLiteral("RemoveFilter"), false);
    ShowFilterCaption(ShopFilter::kNone, true);
    allowFiltersBut(-1);
}

void frmMain::ShowFilterCaption(int number, bool remove) {
    if (StatusBar1 == nullptr) {
        return;
    }
    if (remove) {
        if (StatusBar1->firstPanelKey() == kFilterPanel) {
            StatusBar1->removePanel(kFilterPanel);
        }
        return;
    }
    if (!quick_filters::isFilter(number)) {
        return;
    }
    if (StatusBar1->firstPanelKey() != kFilterPanel) {
        StatusBar1->addPanel(kFilterPanel, platform::StatusBar::AutoSize::Contents, 1);
    }
    StatusBar1->setPanelText(kFilterPanel, quick_filters::caption(number));
    StatusBar1->panel(kFilterPanel)->setFrameStyle(QFrame::NoFrame);
}
