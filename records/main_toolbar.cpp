#include "records/main_toolbar.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

#include "common/modMain.h"
#include "records/quick_filters.h"

MainToolbar::MainToolbar(QMainWindow& window, std::span<const CommandRow> rows)
    : QObject(&window), window_(window), rows_(rows) {}

void MainToolbar::make(const QString& title, const QHash<QString, QIcon>& pictures) {
    bar_ = window_.addToolBar(title);
    bar_->setObjectName(QStringLiteral("Toolbar1"));
    bar_->setMovable(false);
    bar_->setContextMenuPolicy(Qt::PreventContextMenu);
    const QList<const CommandRow*> buttons = rowsWithButton();
    int position = 0;
    for (const CommandRow* row : buttons) {
        for (; position < row->button.position; ++position) {
            bar_->addSeparator();
        }
        addButton(*row, pictures);
        ++position;
    }
    for (const CommandRow* row : buttons) {
        if (row->button.opensFilters) {
            addFilters(buttons_.value(row->name));
        }
    }
}

QList<const CommandRow*> MainToolbar::rowsWithButton() const {
    QList<const CommandRow*> buttons;
    for (const CommandRow& row : rows_) {
        if (row.button.key != nullptr) {
            buttons.append(&row);
        }
    }
    std::sort(buttons.begin(), buttons.end(), [](const CommandRow* one, const CommandRow* other) {
        return one->button.position < other->button.position;
    });
    return buttons;
}

void MainToolbar::addButton(const CommandRow& row, const QHash<QString, QIcon>& pictures) {
    const QString key = QLatin1String(row.button.key);
    const QString tip = GetResString(row.button.tipId);
    QAction* button = bar_->addAction(pictures.value(key), tip);
    button->setObjectName(key);
    button->setToolTip(tip);
    button->setEnabled(row.button.enabledAtStart);
    buttons_.insert(row.name, button);
    QWidget* face = bar_->widgetForAction(button);
    face->setObjectName(QStringLiteral("Toolbar1(%1)").arg(key));
    face->setAccessibleName(tip);
    connect(button, &QAction::triggered, this, [this, command = row.name] { emit given(command); });
}

void MainToolbar::addFilters(QAction* button) {
    auto* menu = new QMenu(&window_);
    menu->setObjectName(QStringLiteral("ApplyFilterMenu"));
    for (const CommandRow& row : rows_) {
        if (row.filter < 0) {
            continue;
        }
        QAction* entry = menu->addAction(GetResString(row.entry.textId));
        entry->setObjectName(
            QLatin1String(quick_filters::kFilters[static_cast<std::size_t>(row.filter)].key));
        filterEntries_.insert(entry->objectName(), entry);
        connect(entry, &QAction::triggered, this, [this, command = row.name] { emit given(command); });
    }
    button->setMenu(menu);
    qobject_cast<QToolButton*>(bar_->widgetForAction(button))->setPopupMode(QToolButton::MenuButtonPopup);
}

QAction* MainToolbar::button(const QString& key) const {
    for (const CommandRow& row : rows_) {
        if (row.button.key != nullptr && key == QLatin1String(row.button.key)) {
            return button(row.name);
        }
    }
    return nullptr;
}

void MainToolbar::renew(Renewal renewal, const CommandState& state) const {
    for (const CommandRow& row : rows_) {
        QAction* item = buttons_.value(row.name);
        if (item != nullptr && row.button.renewal == renewal && row.button.usable != nullptr) {
            item->setEnabled(row.button.usable(state));
        }
    }
}

void MainToolbar::setEnabled(Command command, bool enabled) const {
    if (QAction* item = button(command)) {
        item->setEnabled(enabled);
    }
}

void MainToolbar::allowFiltersBut(int number) const {
    for (int i = 0; i < static_cast<int>(quick_filters::kFilters.size()); ++i) {
        QAction* entry =
            filterEntries_.value(QLatin1String(quick_filters::kFilters[static_cast<std::size_t>(i)].key));
        if (entry != nullptr) {
            entry->setEnabled(i != number);
        }
    }
}
