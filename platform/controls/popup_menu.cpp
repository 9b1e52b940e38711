#include "platform/controls/popup_menu.h"

#include <QAction>
#include <QMenu>
#include <QMouseEvent>

#include "platform/system/trap.h"

namespace platform {
namespace {

constexpr const char* kKey = "key";
constexpr const char* kHeader = "header";

QString headerText(const QString& caption) {
    return caption.mid(1);
}

}  // namespace

PopupMenu::PopupMenu(QWidget* owner) : QObject(owner), owner_(owner) {}

PopupMenu::~PopupMenu() {
    qDeleteAll(stored_);
    delete building_;
}

void PopupMenu::clear() {
    delete building_;
    building_ = new QMenu(owner_);
    building_->setToolTipsVisible(true);
    connect(building_, &QMenu::triggered, this, [this](QAction* action) {
        emit click(static_cast<int>(current_->actions().indexOf(action)) + 1);
    });
    connect(building_, &QMenu::hovered, this,
            [this, menu = building_](QAction* action) { tellHighlight(menu, action); });
    building_->installEventFilter(this);
}

void PopupMenu::tellHighlight(const QMenu* menu, QAction* action) {
    const int item = static_cast<int>(menu->actions().indexOf(action)) + 1;
    if (item == highlighted_) {
        return;
    }
    highlighted_ = item;
    emit itemHighlight(highlighted_, action->isEnabled(),
                       action->isSeparator() || action->property(kHeader).toBool());
}

// Most desktops do not light up what is off, and would leave the hint of another item standing.
bool PopupMenu::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        highlighted_ = 0;
    } else if (event->type() == QEvent::MouseMove) {
        const auto* menu = static_cast<QMenu*>(watched);
        QAction* under = menu->actionAt(static_cast<QMouseEvent*>(event)->position().toPoint());
        if (under && (under->isSeparator() || !under->isEnabled())) {
            tellHighlight(menu, under);
        }
    }
    return QObject::eventFilter(watched, event);
}

int PopupMenu::addItem(const QString& caption, const QString& helpText, const QIcon& icon, bool enabled,
                       const QString& key) {
    if (!building_) {
        clear();
    }
    const int index = static_cast<int>(building_->actions().size()) + 1;
    if (caption == QLatin1String("-")) {
        building_->addSeparator();
        return index;
    }
    QAction* action = building_->addAction(icon, caption);
    if (caption.startsWith(QLatin1Char('-'))) {
        action->setText(headerText(caption));
        action->setProperty(kHeader, true);
        QFont bold = action->font();
        bold.setBold(true);
        action->setFont(bold);
        enabled = false;
    }
    action->setEnabled(enabled);
    action->setStatusTip(helpText);
    action->setProperty(kKey, key);
    if (!key.isEmpty()) {
        action->setObjectName(key);
    }
    return index;
}

void PopupMenu::store(const QString& name) {
    if (!building_) {
        clear();
    }
    building_->setObjectName(name);
    if (QMenu* old = stored_.value(name)) {
        if (current_ == old) {
            current_ = nullptr;
        }
        delete old;
    }
    stored_.insert(name, building_);
    building_ = nullptr;
}

void PopupMenu::restore(const QString& name) {
    if (!stored_.contains(name)) {
        throw RunError(5, QStringLiteral("Invalid procedure call or argument: no menu \"%1\"").arg(name));
    }
    current_ = stored_.value(name);
}

QAction* PopupMenu::itemAt(int index) const {
    if (!current_ || index < 1 || index > current_->actions().size()) {
        return nullptr;
    }
    return current_->actions().at(index - 1);
}

int PopupMenu::indexOf(const QString& key) const {
    if (!current_ || key.isEmpty()) {
        return 0;
    }
    const QList<QAction*> items = current_->actions();
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (items[i]->property(kKey).toString() == key) {
            return static_cast<int>(i) + 1;
        }
    }
    return 0;
}

QString PopupMenu::keyOf(int index) const {
    const QAction* action = itemAt(index);
    return action ? action->property(kKey).toString() : QString();
}

void PopupMenu::setCaption(int index, const QString& caption) {
    if (QAction* action = itemAt(index)) {
        action->setText(action->property(kHeader).toBool() ? headerText(caption) : caption);
    }
}

void PopupMenu::setEnabled(int index, bool enabled) {
    if (QAction* action = itemAt(index)) {
        action->setEnabled(enabled);
    }
}

bool PopupMenu::isEnabled(int index) const {
    const QAction* action = itemAt(index);
    return action && action->isEnabled();
}

void PopupMenu::show(const QPoint& globalPosition) {
    if (current_) {
        current_->popup(globalPosition);
    }
}

}  // namespace platform
