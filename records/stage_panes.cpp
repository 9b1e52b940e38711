#include "records/stage_panes.h"

#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "common/window_helpers.h"
#include "records/main_fields.h"
#include "records/record_pane.h"
#include "records/service_pane.h"

StagePanes::StagePanes(EntryFields& fields, QWidget* window)
    : QWidget(window), column_(new QVBoxLayout(this)), stack_(new QStackedWidget(this)) {
    column_->setContentsMargins(8, 8, 8, 8);  // 125 twips above the tab strip and below the panes
    column_->setSpacing(0);
    for (int i = 0; i < kSelectorCount; ++i) {
        records_[static_cast<size_t>(i)] = added(new RecordPane(i, fields, keys_, stack_), i);
    }
    services_ = added(new ServicePane(fields, keys_, stack_), kServices);
    setHelpContext(records_[kClients], kClientPaneHelp);
    column_->addWidget(stack_, 1);
    auto* help = new QShortcut(QKeySequence(Qt::Key_F1), window);
    connect(help, &QShortcut::activated, this, [] { showHelpOfFocus(kClientPaneHelp); });
}

template <typename Pane>
Pane* StagePanes::added(Pane* pane, int stageIndex) {
    pane->setObjectName(arrayName("Picture1", stageIndex));
    stack_->addWidget(pane);
    return pane;
}

void StagePanes::showPane(int stageIndex) {
    stack_->setCurrentIndex(stageIndex);
}

void StagePanes::putAbove(QWidget* widget) {
    column_->insertWidget(0, widget);
}

QWidget* StagePanes::pane(int stageIndex) const {
    return stack_->widget(stageIndex);
}

platform::Selector* StagePanes::selector(int stageIndex) const {
    return records_[static_cast<size_t>(stageIndex)]->selector();
}

QLineEdit* StagePanes::typeAhead(int stageIndex) const {
    return records_[static_cast<size_t>(stageIndex)]->typeAhead();
}

platform::ListView* StagePanes::list() const {
    return services_->list();
}
