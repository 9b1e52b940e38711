#include "records/stage_keys.h"

#include <QKeySequence>
#include <QLineEdit>
#include <QShortcut>

#include "platform/controls/list_view.h"
#include "records/stage_facts.h"
#include "records/stage_panes.h"
#include "records/stage_tabs.h"

namespace {

constexpr Qt::Key kStageKeys[kStageCount] = {Qt::Key_1, Qt::Key_2, Qt::Key_3};

// Where the work on a stage begins.
QWidget* entranceOf(const StagePanes& panes, int stageIndex) {
    return stageIndex == kServices ? static_cast<QWidget*>(panes.list()) : panes.typeAhead(stageIndex);
}

// The strip takes the focus first: a date that is just being typed counts before its record is left. Whoever
// has to mend something stays where the question has put them.
void goTo(int stageIndex, StageTabs& tabs, const StagePanes& panes) {
    if (stageIndex < 0 || stageIndex >= kStageCount || stageIndex == tabs.currentIndex()) {
        return;
    }
    tabs.setFocus(Qt::ShortcutFocusReason);
    tabs.setCurrentIndex(stageIndex);
    if (tabs.currentIndex() == stageIndex) {
        entranceOf(panes, stageIndex)->setFocus(Qt::ShortcutFocusReason);
    }
}

void find(const StageTabs& tabs, const StagePanes& panes) {
    if (tabs.currentIndex() != kServices) {
        panes.typeAhead(tabs.currentIndex())->setFocus(Qt::ShortcutFocusReason);
    }
}

template <typename Action>
void add(QWidget& window, QKeyCombination key, Action action) {
    QObject::connect(new QShortcut(QKeySequence(key), &window), &QShortcut::activated, &window, action);
}

}  // namespace

void addStageKeys(QWidget& window, StageTabs& tabs, const StagePanes& panes) {
    for (int i = 0; i < kStageCount; ++i) {
        add(window, Qt::ALT | kStageKeys[i], [i, &tabs, &panes] { goTo(i, tabs, panes); });
    }
    add(window, Qt::CTRL | Qt::Key_PageUp, [&tabs, &panes] { goTo(tabs.currentIndex() - 1, tabs, panes); });
    add(window, Qt::CTRL | Qt::Key_PageDown, [&tabs, &panes] { goTo(tabs.currentIndex() + 1, tabs, panes); });
    add(window, Qt::CTRL | Qt::Key_F, [&tabs, &panes] { find(tabs, panes); });
}
