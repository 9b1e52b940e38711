#include "platform/controls/column_menu.h"

#include <QHeaderView>
#include <QMenu>

#include "platform/controls/view_columns.h"

namespace platform {
namespace {

constexpr int kUsualWidth = 1440;  // twips

int shownCount(const ViewColumns& columns) {
    int shown = 0;
    for (int column = 1; column <= columns.count(); ++column) {
        shown += columns.width(column) > 0 ? 1 : 0;
    }
    return shown;
}

void addColumn(QMenu& menu, ViewColumns& columns, int column) {
    const bool isShown = columns.width(column) > 0;
    QString text = columns.text(column);
    QAction* action = menu.addAction(text.replace(QLatin1Char('&'), QStringLiteral("&&")));
    action->setCheckable(true);
    action->setChecked(isShown);
    action->setEnabled(!isShown || shownCount(columns) > 1);
    QObject::connect(action, &QAction::triggered, &menu,
                     [&columns, column](bool shown) { columns.setWidth(column, shown ? kUsualWidth : 0); });
}

void openMenu(ViewColumns& columns, QHeaderView& header, const QPoint& at) {
    auto* menu = new QMenu(&header);
    menu->setObjectName(QStringLiteral("ShowColumns"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setTitle(columns.menuTitle());
    menu->addSection(menu->title());
    for (int place = 0; place < columns.count(); ++place) {
        addColumn(*menu, columns, header.logicalIndex(place) + 1);
    }
    menu->popup(at);
}

}  // namespace

void offerColumns(ViewColumns& columns, QHeaderView& header) {
    header.setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(
        &header, &QWidget::customContextMenuRequested, &header,
        [&columns, &header](const QPoint& at) { openMenu(columns, header, header.mapToGlobal(at)); });
}

}  // namespace platform
