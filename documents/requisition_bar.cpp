#include "documents/requisition_bar.h"

#include <QAction>
#include <QKeyEvent>
#include <QPoint>
#include <QToolBar>

#include "platform/controls/pictures.h"

RequisitionBar::RequisitionBar(QWidget& window, std::span<const RequisitionCommandRow> commands, Run run)
    : commands_(commands), run_(std::move(run)), toolbar_(new QToolBar(&window)) {
    toolbar_->setObjectName(QStringLiteral("Toolbar1"));
    toolbar_->setAccessibleName(window.windowTitle());
    toolbar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const RequisitionCommandRow& command : commands_) {
        if (*command.key != '\0') {
            addButton(command);
        }
    }
}

void RequisitionBar::addButton(const RequisitionCommandRow& command) {
    if (command.beginsGroup) {
        toolbar_->addSeparator();
    }
    const QString key = QString::fromLatin1(command.key);
    const QString caption = QString::fromLatin1(command.caption);
    QAction* action = toolbar_->addAction(platform::icon(QString::fromLatin1(command.picture)), caption);
    action->setObjectName(key);
    action->setToolTip(QString::fromLatin1(command.description));
    QWidget* face = toolbar_->widgetForAction(action);
    face->setObjectName(key);
    face->setAccessibleName(caption);
    QObject::connect(action, &QAction::triggered, toolbar_, [this, &command] { run_(command); });
    actions_.emplace(command.name, action);
}

QAction* RequisitionBar::action(RequisitionCommand command) const {
    const auto found = actions_.find(command);
    return found == actions_.end() ? nullptr : found->second;
}

QAction* RequisitionBar::button(const QString& key) const {
    for (const auto& [command, action] : actions_) {
        if (action->objectName() == key) {
            return action;
        }
    }
    return nullptr;
}

void RequisitionBar::update(const RequisitionState& state) {
    for (const RequisitionCommandRow& command : commands_) {
        if (QAction* const button = action(command.name); button && command.isUsable) {
            button->setEnabled(command.isUsable(state));
        }
    }
}

bool RequisitionBar::runKey(const QKeyEvent& key) const {
    const QKeyCombination pressed(key.modifiers() & ~Qt::KeypadModifier, static_cast<Qt::Key>(key.key()));
    for (const RequisitionCommandRow& command : commands_) {
        if (command.shortcut && *command.shortcut == pressed) {
            run_(command);
            return true;
        }
    }
    return false;
}

QString RequisitionBar::tipAt(const QPoint& place) const {
    const QAction* action = toolbar_->actionAt(place);
    return action && action->isEnabled() && !action->isSeparator() ? action->toolTip() : QString();
}
