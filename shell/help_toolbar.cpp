#include "shell/help_toolbar.h"

#include <QAction>
#include <QKeySequence>
#include <QLineEdit>

#include "shell/help_controls.h"
#include "shell/help_history.h"

HelpToolbar::HelpToolbar(QWidget* window) : QToolBar(window) {
    named(this, "Toolbar", QStringLiteral("Help toolbar"));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    back_ = addStep("Back", QStyle::SP_ArrowBack, QKeySequence(Qt::ALT | Qt::Key_Left), -1);
    forward_ = addStep("Forward", QStyle::SP_ArrowForward, QKeySequence(Qt::ALT | Qt::Key_Right), 1);
    auto* space = new QWidget(this);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(space);
    addSearch();
}

QAction* HelpToolbar::makeCommand(const QKeySequence& keys) {
    auto* made = new QAction(parentWidget());
    made->setShortcut(keys);
    parentWidget()->addAction(made);
    return made;
}

QAction* HelpToolbar::addStep(const char* name, QStyle::StandardPixmap picture, const QKeySequence& keys,
                              int direction) {
    const QString text = QString::fromLatin1(name);
    QAction* step = makeCommand(keys);
    step->setObjectName(text);
    step->setText(text);
    step->setIcon(style()->standardIcon(picture));
    step->setToolTip(text + QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText)));
    step->setEnabled(false);
    connect(step, &QAction::triggered, this, [this, direction] { emit stepWanted(direction); });
    addAction(step);
    return step;
}

void HelpToolbar::addSearch() {
    search_ = named(new QLineEdit(this), "SearchField", QStringLiteral("Search in the help"));
    search_->setPlaceholderText(QStringLiteral("Search in the help (Ctrl+F)"));
    search_->setClearButtonEnabled(true);
    search_->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    connect(search_, &QLineEdit::textChanged, this, &HelpToolbar::searched);
    connect(search_, &QLineEdit::returnPressed, this, &HelpToolbar::searchEntered);
    addWidget(search_);
    connect(makeCommand(QKeySequence::Find), &QAction::triggered, search_,
            [this] { search_->setFocus(Qt::ShortcutFocusReason); });
}

void HelpToolbar::showSteps(const HelpHistory& history) {
    back_->setEnabled(history.canStep(-1));
    forward_->setEnabled(history.canStep(1));
}

void HelpToolbar::clearSearch() {
    search_->clear();
}
