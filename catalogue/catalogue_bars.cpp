#include "catalogue/catalogue_bars.h"

#include <QAction>
#include <QKeyEvent>
#include <QToolBar>

#include "catalogue/catalogue_menus.h"
#include "catalogue/catalogue_pane.h"
#include "catalogue/catalogue_status.h"
#include "catalogue/pane_commands.h"
#include "common/modMain.h"
#include "platform/controls/pictures.h"

CatalogueBars::CatalogueBars(const std::array<Part, kPanes>& parts, WindowCommands& commands, QWidget* window,
                             CatalogueStatus& status, CatalogueMenus& menus)
    : parts_(parts), commands_(commands), window_(window), status_(status), menus_(menus) {
    build(window);
    connect(&menus_, &CatalogueMenus::chosen, this, [this](const MenuItem& item) {
        item.isProducts ? runOnProducts(item.command) : runOnList(item.command);
    });
    for (const Part& part : parts_) {
        connect(part.pane, &CataloguePane::changed, this, &CatalogueBars::update);
    }
}

// The toolbar -----------------------------------------------------------------------------------------------

void CatalogueBars::build(QWidget* window) {
    toolbar_ = new QToolBar(window);
    toolbar_->setObjectName(QStringLiteral("Toolbar1"));
    toolbar_->setAccessibleName(QStringLiteral("Komande"));
    toolbar_->setMovable(false);
    for (const std::optional<CatalogueCommand>& command : toolbarOrder()) {
        if (!command) {
            toolbar_->addSeparator();
            continue;
        }
        const CatalogueCommandRow& row = rowOf(*command);
        QAction* action =
            toolbar_->addAction(platform::icon(QLatin1String(row.icon)), QLatin1String(row.button));
        action->setObjectName(QLatin1String(row.key));
        action->setData(GetResString(row.text));
        action->setToolTip(GetResString(row.text));
        connect(action, &QAction::triggered, this, [this, &row] { runButton(row.command); });
        if (QWidget* widget = toolbar_->widgetForAction(action)) {
            widget->setFocusPolicy(Qt::NoFocus);  // the focus tells which pane the button works on
            widget->setAccessibleName(QLatin1String(row.button));
        }
    }
}

QAction* CatalogueBars::button(const QString& key) const {
    for (QAction* action : toolbar_->actions()) {
        if (!action->isSeparator() && action->objectName() == key) {
            return action;
        }
    }
    return nullptr;
}

void CatalogueBars::update() {
    const PaneState state = stateOf(activePane());
    for (const CatalogueCommandRow& row : catalogueCommands()) {
        if (row.button != nullptr && row.rule != nullptr) {
            button(QLatin1String(row.key))->setEnabled(row.rule(state));
        }
    }
}

void CatalogueBars::pointerMoved(const QObject* widget, const QPoint& globalPosition) {
    if (widget != toolbar_ && widget->parent() != toolbar_) {
        status_.showText(QString(), false);
        return;
    }
    const QAction* under = toolbar_->actionAt(toolbar_->mapFromGlobal(globalPosition));
    const bool tells = under && under->isEnabled() && !under->isSeparator();
    status_.showText(tells ? under->data().toString() : QStringLiteral(" "), false);
}

// Running ---------------------------------------------------------------------------------------------------

void CatalogueBars::run(CatalogueCommand command, int pane) {
    rowOf(command).action(*parts_[static_cast<size_t>(pane)].commands, commands_);
}

// Somebody who types in a search box means the list under it.
void CatalogueBars::runButton(CatalogueCommand command) {
    run(command, activePane());
}

void CatalogueBars::runOnList(CatalogueCommand command) {
    const int pane = focusedList(rowOf(command).alsoTyping);
    if (pane >= 0) {
        run(command, pane);
    }
}

void CatalogueBars::runOnProducts(CatalogueCommand command) {
    run(command, kProducts);
}

bool CatalogueBars::runKey(const QKeyEvent& key) {
    const bool inList = focusedList(false) >= 0;
    const bool inProducts = window_->focusWidget() == parts_[kProducts].pane->list();
    const auto here = [&](CatalogueCommand command) {
        if (inList) {
            runOnList(command);
        } else if (inProducts) {
            runOnProducts(command);
        }
        return inList || inProducts;
    };
    switch (key.key()) {
        case Qt::Key_Delete:
            return here(key.modifiers().testFlag(Qt::ShiftModifier) ? CatalogueCommand::DeleteAll
                                                                    : CatalogueCommand::Delete);
        case Qt::Key_F5:
            return here(CatalogueCommand::Refresh);
        case Qt::Key_F8:
            return here(CatalogueCommand::Unsort);
        case Qt::Key_N:
            if (key.modifiers() != Qt::ControlModifier) {
                return false;
            }
            inList ? runOnList(CatalogueCommand::New) : runOnProducts(CatalogueCommand::New);
            return true;
        default:
            return false;
    }
}

int CatalogueBars::focusedList(bool orSearchBox) const {
    const QWidget* focus = window_->focusWidget();
    for (int i = 0; focus && i < kProducts; ++i) {
        const Part& part = parts_[static_cast<size_t>(i)];
        if (focus == part.pane->list() || (orSearchBox && focus == part.searchBox)) {
            return i;
        }
    }
    return -1;
}

int CatalogueBars::activePane() const {
    const int list = focusedList(true);
    return list >= 0 ? list : kProducts;
}

PaneState CatalogueBars::stateOf(int pane) const {
    const CataloguePane& shown = *parts_[static_cast<size_t>(pane)].pane;
    return {.isProducts = pane == kProducts,
            .hasRows = shown.hasRows(),
            .hasSelection = shown.hasSelection(),
            .sort = shown.sort()};
}

void CatalogueBars::openMenu(int pane, const QPoint& at) {
    parts_[static_cast<size_t>(pane)].pane->takeFocus();
    menus_.open(pane, stateOf(pane), at);
}
